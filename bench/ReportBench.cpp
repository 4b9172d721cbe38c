// The reports of a frame of 2047 words by 256 frames with 20,000 measurements, each with a
// conversion record: the time of each report in each form, the memory it takes, and how long a
// cancel waits at most.
#include "FullFrameText.h"
#include "StreamWorld.h"
#include "conversion/ConversionStore.h"
#include "reports/StreamReports.h"
#include "reports/layout/ReportLayout.h"
#include "reports/print/ReportPrinter.h"
#include "reports/writers/ExcelXmlWriter.h"
#include "reports/writers/HtmlWriter.h"
#include "reports/writers/ReportWorkbook.h"
#include "reports/writers/TextWriter.h"
#include "reports/writers/XlsxWriter.h"
#include "support/RecordingInterface.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <malloc.h>
#include <memory>
#include <string>

#include <benchmark/benchmark.h>

namespace kavu {
namespace {

using bench::filledData;
using bench::filledFormat;
using bench::kMostWordsFilled;
using bench::StreamWorld;

constexpr int kMeasurements = 20'000;

enum Form { kText, kDelimited, kWorkbook, kPages, kHtml, kXlsx };

/// Where the measurements are: each at one place; each in a tenth of the frames of a word, which
/// make one range; each in every tenth frame, so that no two places are neighbours and the list has
/// half a million rows.
enum Shape { kOnePlace, kRanges, kScattered };

std::string sampleRecords() {
    std::string text;
    for (int m = 1; m <= kMeasurements; ++m) {
        text += "[MEASUREMENT-" + std::to_string(m) +
                "]\r\nDCT=COE\r\nCO\\N=1\r\nCO=1.5\r\nCO-1=2.25\r\nMN1=Pressure of the line\r\n"
                "MN3=PSI\r\nMOT1=120\r\nMOT2=0\r\n";
    }
    return text;
}

struct ReportWorld : StreamWorld {
    explicit ReportWorld(Shape shape) {
        const bool isScattered = shape == kScattered;
        document.version = isScattered ? bench::kOlderEdition : bench::kWordFrameEdition;
        good = load(filledFormat(kMostWordsFilled),
                    isScattered ? filledData(kMeasurements)
                                : bench::rangesData(kMeasurements, shape == kOnePlace)) &&
               format.cells().nameCount() == kMeasurements;
        (void)writeWholeFile(store.pathOf("[kavu]00000001.C_O"), sampleRecords());
        conversions.forget();
        for (int column = 1; column <= 22; ++column) {
            (void)layout.set("M" + std::to_string(column), "1");
        }
    }
    [[nodiscard]] ReportSource source(UserInterface* parent = nullptr) {
        return {context, layout, conversions, parent, &format, nullptr};
    }

    bool good = false;
    ConversionStore conversions{context};
    ReportLayout layout{settings};
};

std::size_t bytesOf(ReportWorld& world, ReportKind kind, Form form) {
    const auto source = world.source();
    if (form == kDelimited) {
        return makeDelimitedReport(source, kind).value_or(std::string()).size();
    }
    std::vector<ReportContent> reports;
    if (auto made = makeReport(source, kind)) {
        reports.push_back(std::move(*made));
    }
    switch (form) {
        case kWorkbook: {
            ExcelXmlWriter workbook(nullptr);
            for (const auto& report : reports) {
                writeSheets(report, workbook);
            }
            return workbook.document().size();
        }
        case kPages:
            return printReportPages(world.context, world.layout, reports, 1, {.isLandscape = true},
                                    nullptr)
                .pdf.size();
        case kHtml:
            return htmlPage(reports).size();
        case kXlsx: {
            XlsxWriter workbook(world.folder, world.clock.now());
            for (const auto& report : reports) {
                writeSheets(report, workbook);
            }
            std::string bytes;
            (void)workbook.finish(bytes);
            return bytes.size();
        }
        default:
            return reportText(reports, {}).size();
    }
}

/// The stream of a shape, which the measurements of that shape share; there is never a second one
/// in memory. Null if it was not made.
ReportWorld* worldOf(benchmark::State& state, Shape shape) {
    static std::unique_ptr<ReportWorld> world;
    static Shape made{};
    if (world == nullptr || made != shape) {
        world.reset();
        world = std::make_unique<ReportWorld>(shape);
        made = shape;
    }
    if (!world->good) {
        state.SkipWithError("the stream was not made");
    }
    return world->good ? world.get() : nullptr;
}

/// Kilobytes of a line of what the system tells of this process; 0 if it does not.
double memoryOf(const std::string& line) {
    std::ifstream status("/proc/self/status");
    for (std::string text; std::getline(status, text);) {
        if (text.starts_with(line)) {
            return std::strtod(text.c_str() + line.size(), nullptr);
        }
    }
    return 0;
}

void FullFrameReport(benchmark::State& state) {
    auto* const world = worldOf(state, static_cast<Shape>(state.range(2)));
    if (world == nullptr) {
        return;
    }
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5";  // the peak begins again
    const double before = memoryOf("VmRSS:");
    std::size_t bytes = 0;
    for (auto _ : state) {
        bytes = bytesOf(*world, static_cast<ReportKind>(state.range(0)),
                        static_cast<Form>(state.range(1)));
    }
    state.counters["bytes"] = static_cast<double>(bytes);
    // Of the process, the stream included, and of the report alone.
    state.counters["most_mb"] = memoryOf("VmHWM:") / 1024;
    state.counters["report_mb"] = (memoryOf("VmHWM:") - before) / 1024;
}
BENCHMARK(FullFrameReport)
    ->ArgsProduct({{static_cast<long>(ReportKind::Frame),
                    static_cast<long>(ReportKind::Measurements)},
                   {kText, kDelimited, kWorkbook, kPages, kHtml, kXlsx},
                   {kOnePlace, kRanges, kScattered}})
    ->ArgNames({"kind", "form", "shape"})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

/// Measures how far its polls are apart.
class PollClock : public test::RecordingInterface {
  public:
    bool cancelRequested() override {
        const auto now = std::chrono::steady_clock::now();
        longest = std::max(longest, now - last);
        last = now;
        return false;
    }
    void yieldToInterface() override { (void)cancelRequested(); }

    std::chrono::steady_clock::time_point last = std::chrono::steady_clock::now();
    std::chrono::steady_clock::duration longest{};
};

void FullFrameReportCancel(benchmark::State& state) {
    auto* const world = worldOf(state, static_cast<Shape>(state.range(2)));
    if (world == nullptr) {
        return;
    }
    PollClock parent;
    for (auto _ : state) {
        parent.last = std::chrono::steady_clock::now();
        auto made = makeReport(world->source(&parent), static_cast<ReportKind>(state.range(0)));
        (void)parent.cancelRequested();
        if (made && state.range(1) != 0) {
            std::vector<ReportContent> reports;
            reports.push_back(std::move(*made));
            (void)printReportPages(world->context, world->layout, reports, 1, {.isLandscape = true},
                                   &parent);
            (void)parent.cancelRequested();
        }
    }
    state.counters["longest_wait_ms"] =
        std::chrono::duration<double, std::milli>(parent.longest).count();
}
BENCHMARK(FullFrameReportCancel)
    ->ArgsProduct({{static_cast<long>(ReportKind::Frame),
                    static_cast<long>(ReportKind::Measurements)},
                   {0, 1},
                   {kOnePlace, kRanges, kScattered}})
    ->ArgNames({"kind", "printed", "shape"})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kavu
