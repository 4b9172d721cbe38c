// The redraw of a curve through every count of a 16-bit word, painted as the window of pair sets
// paints it. 50 ms still feel immediate.
#include "app/conversion/QtSurface.h"
#include "conversion/PairSetFit.h"

#include <chrono>
#include <cmath>
#include <cstdlib>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QTextStream>

int main(int argc, char** argv) {
    using namespace kavu;
    const QApplication application(argc, argv);
    FitOptions options;
    options.curveAllPairs = true;
    QTextStream out(stdout);
    for (const int order : {1, 5, 10}) {
        FitInput input;
        input.order = order;
        input.bits = 16;
        for (int i = 0; i < 99; ++i) {
            input.x.push_back(650.0 * i);
            input.y.push_back(std::sin(i / 9.0) * 40 + i);
        }
        const auto result = refitPairs(input, options);
        constexpr int kRuns = 20;
        double total = 0;
        for (int run = 0; run < kRuns; ++run) {
            QImage image(900, 600, QImage::Format_RGB32);
            const auto start = std::chrono::steady_clock::now();
            {
                QPainter painter(&image);
                QtSurface surface(painter, QRectF(0, 0, 899, 599), QApplication::font());
                Plot plot;
                (void)drawFit(plot, surface, result, input, options, {});
            }
            const std::chrono::duration<double, std::milli> took =
                std::chrono::steady_clock::now() - start;
            total += took.count();
        }
        out << "order " << order << ": " << total / kRuns << " ms\n";
    }
    return EXIT_SUCCESS;
}
