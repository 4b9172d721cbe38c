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
#include "support/RecordingInterface.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <sys/resource.h>

#include <benchmark/benchmark.h>

namespace kavu {
namespace {

using bench::filledData;
using bench::filledFormat;
using bench::kInEachWord;
using bench::kMostWordsFilled;
using bench::StreamWorld;

constexpr int kMeasurements = 20'000;

enum Form { kText, kDelimited, kWorkbook, kPages, kHtml };

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
    ReportWorld() {
        document.version = bench::kOlderEdition;
        const int words = (kMeasurements + kInEachWord - 1) / kInEachWord;
        good = load(filledFormat(kMostWordsFilled),
                    filledData(std::min(kMeasurements, words * kInEachWord)));
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
        default:
            return reportText(reports, {}).size();
    }
}

void FullFrameReport(benchmark::State& state) {
    static ReportWorld world;
    if (!world.good) {
        state.SkipWithError("the stream was not made");
        return;
    }
    std::size_t bytes = 0;
    for (auto _ : state) {
        bytes = bytesOf(world, static_cast<ReportKind>(state.range(0)),
                        static_cast<Form>(state.range(1)));
    }
    rusage used{};
    (void)getrusage(RUSAGE_SELF, &used);
    state.counters["bytes"] = static_cast<double>(bytes);
    // Of the whole run until now, the stream in memory included.
    state.counters["most_mb"] = static_cast<double>(used.ru_maxrss) / 1024;
}
BENCHMARK(FullFrameReport)
    ->ArgsProduct({{static_cast<long>(ReportKind::Frame),
                    static_cast<long>(ReportKind::Measurements)},
                   {kText, kDelimited, kWorkbook, kPages, kHtml}})
    ->ArgNames({"kind", "form"})
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
    static ReportWorld world;
    if (!world.good) {
        state.SkipWithError("the stream was not made");
        return;
    }
    PollClock parent;
    for (auto _ : state) {
        parent.last = std::chrono::steady_clock::now();
        auto made = makeReport(world.source(&parent), static_cast<ReportKind>(state.range(0)));
        (void)parent.cancelRequested();
        if (made && state.range(1) != 0) {
            std::vector<ReportContent> reports;
            reports.push_back(std::move(*made));
            (void)printReportPages(world.context, world.layout, reports, 1, {.isLandscape = true},
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
                   {0, 1}})
    ->ArgNames({"kind", "printed"})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kavu
