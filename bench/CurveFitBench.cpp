// The refit after a change of one of 99 pairs, and the redraw of a curve through every count
// of a 16-bit word. A user drags a value and watches the curve: 5 ms and 50 ms still feel
// immediate.
#include "conversion/PairSetFit.h"
#include "drawing/SvgSurface.h"

#include <cmath>

#include <benchmark/benchmark.h>

namespace kavu {
namespace {

/// A surface that only counts, so that the engine is measured and no device.
class CountingSurface : public DrawingSurface {
  public:
    [[nodiscard]] DrawingRect area() const override { return {0, 0, 1200, 800}; }
    [[nodiscard]] double pixelsPerInch() const override { return 96; }
    bool setPen(const DrawingPen&) override { return true; }
    void setHollowBrush() override {}
    void setSolidBrush(DrawingColour) override {}
    void line(DrawingPoint, DrawingPoint) override { ++lines; }
    void rectangle(const DrawingRect&) override {}
    void ellipse(const DrawingRect&) override {}
    void polygon(std::span<const DrawingPoint>) override {}
    [[nodiscard]] DrawingSize textSize(std::string_view, const DrawingFont&) const override {
        return {50, 12};
    }
    void text(DrawingPoint, std::string_view, const DrawingFont&) override {}
    void clip(const DrawingRect&) override {}
    void releaseClip() override {}

    std::size_t lines = 0;
};

FitInput pairs(int count, int order) {
    FitInput input;
    input.order = order;
    input.bits = 16;
    for (int i = 0; i < count; ++i) {
        input.x.push_back(650.0 * i);
        input.y.push_back(std::sin(i / 9.0) * 40 + i);
    }
    return input;
}

void refitAfterAChange(benchmark::State& state) {
    auto input = pairs(99, 10);
    FitOptions options;
    options.maxOrder = 10;
    for (auto _ : state) {
        input.y[50] += 0.001;
        auto result = refitPairs(input, options);
        benchmark::DoNotOptimize(result);
    }
}
BENCHMARK(refitAfterAChange)->Unit(benchmark::kMillisecond);

void fitOfOrder10(benchmark::State& state) {
    const auto input = pairs(99, 10);
    for (auto _ : state) {
        auto x = input.x;
        FitCoefficients c{};
        benchmark::DoNotOptimize(leastSquaresFit(x, input.y, 10, c));
    }
}
BENCHMARK(fitOfOrder10)->Unit(benchmark::kMillisecond);

void judgement(benchmark::State& state) {
    const auto input = pairs(99, 10);
    const auto result = refitPairs(input, {});
    for (auto _ : state) {
        auto trust = judgeResult(result, input, {});
        benchmark::DoNotOptimize(trust);
    }
}
BENCHMARK(judgement)->Unit(benchmark::kMillisecond);

/// All that a page computes after a change, for a fit that holds with no precision or order.
void refitAsAPageDoesIt(benchmark::State& state) {
    auto input = pairs(99, 10);
    for (std::size_t i = 0; i < input.x.size(); ++i) {  // high in the word
        input.x[i] = 30000 + 40.0 * static_cast<double>(i);
    }
    FitOptions options;
    options.maxOrder = 10;
    for (auto _ : state) {
        input.y[50] += 0.001;
        auto result = refitPairs(input, options);
        auto trust = judgeResult(result, input, options);
        benchmark::DoNotOptimize(trustNote(trust, result.order, options.precision));
        benchmark::DoNotOptimize(fitRows(result));
    }
}
BENCHMARK(refitAsAPageDoesIt)->Unit(benchmark::kMillisecond);

void curveThroughEveryCount(benchmark::State& state) {
    const auto input = pairs(99, static_cast<int>(state.range(0)));
    FitOptions options;
    options.curveAllPairs = true;
    const auto result = refitPairs(input, options);
    CountingSurface surface;
    for (auto _ : state) {
        Plot plot;
        benchmark::DoNotOptimize(drawFit(plot, surface, result, input, options, {}));
    }
    state.counters["lines"] =
        static_cast<double>(surface.lines) / static_cast<double>(state.iterations());
}
BENCHMARK(curveThroughEveryCount)->Arg(1)->Arg(5)->Arg(10)->Unit(benchmark::kMillisecond);

void pictureOfEveryCount(benchmark::State& state) {
    const auto input = pairs(99, 5);
    FitOptions options;
    options.curveAllPairs = true;
    const auto result = refitPairs(input, options);
    for (auto _ : state) {
        SvgSurface surface(900, 600);
        Plot plot;
        (void)drawFit(plot, surface, result, input, options, {});
        benchmark::DoNotOptimize(surface.document());
    }
}
BENCHMARK(pictureOfEveryCount)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kavu
