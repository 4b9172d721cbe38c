// The export of TMATS XML with as many measurements as the largest documents
// have. The opening of the session is part of the time.
#include "core/files/Environment.h"
#include "core/files/FileIo.h"
#include "core/text/Clock.h"
#include "sdk/TranslatorSdk.h"
#include "xml/bridge/write/XmlExport.h"

#include <string>

#include <benchmark/benchmark.h>

namespace kavu {
namespace {

constexpr const char* kTmatsPath = "/tmp/kavu-xml-export-bench.tma";
constexpr int kWordsOfFrame = 4000;

std::string definitionText(long number) {
    const auto row = std::to_string(number + 1);
    const auto at = "-1-" + row;
    const auto place = at + "-1-1:";
    const auto word = std::to_string(number % (kWordsOfFrame - 2) + 1);
    return "D-1\\MN" + at + ":MEASUREMENT-" + row + ";\nD-1\\MN1" + at + ":NO;\nD-1\\MN2" + at +
           ":D;\nD-1\\MN3" + at + ":M;\nD-1\\LT" + at + ":WDFR;\nD-1\\MML\\N" + at +
           ":1;\nD-1\\MNF\\N" + at + "-1:1;\nD-1\\WP" + place + word + ";\nD-1\\WI" + place +
           "0;\nD-1\\FP" + place + "1;\nD-1\\FI" + place + "1;\nD-1\\WFM" + place +
           "FW;\nD-1\\WFP" + place + "1;\n";
}

std::string recordText(long number) {
    const auto head = "C-" + std::to_string(number + 1) + "\\";
    return head + "DCN:MEASUREMENT-" + std::to_string(number + 1) + ";\n" + head + "MN1:wing;\n" +
           head + "MN3:deg;\n" + head + "DCT:COE;\n" + head + "CO\\N:1;\n" + head + "CO:1.5;\n" +
           head + "CO-1:2.5;\n";
}

void exportMeasurements(benchmark::State& state, XmlDialect dialect) {
    const auto count = std::to_string(state.range(0));
    std::string text =
        "G\\106:11;\nG\\DSI\\N:1;\nG\\DSI-1:S;\nG\\DST-1:RF;\nM-1\\ID:S;\nM-1\\BB\\DLN:L;\n"
        "P-1\\DLN:L;\nP-1\\D2:1000;\nP-1\\F1:16;\nP-1\\MF\\N:1;\nP-1\\MF1:" +
        std::to_string(kWordsOfFrame) +
        ";\nD-1\\DLN:L;\nD-1\\ML\\N:1;\nD-1\\MLN-1:ML;\nD-1\\MN\\N-1:" + count + ";\n";
    for (long i = 0; i < state.range(0); ++i) {
        text += definitionText(i);
    }
    for (long i = 0; i < state.range(0); ++i) {
        text += recordText(i);
    }
    (void)writeWholeFile(kTmatsPath, text);
    const SystemClock clock;
    SystemRandomSource random;
    for (auto _ : state) {
        TranslatorSdk session(Environment::ofProcess(), clock, random);
        XmlExportReport report;
        std::size_t bytes = 0;
        if (!session.open(kTmatsPath, nullptr) ||
            !tmatsToXml(
                session, nullptr, {.dialect = dialect},
                [&](std::string_view piece) { bytes += piece.size(); }, report) ||
            bytes < text.size() / 4) {
            state.SkipWithError("the document is not complete");
        }
    }
    state.SetComplexityN(state.range(0));
    (void)deleteFile(kTmatsPath);
}
BENCHMARK_CAPTURE(exportMeasurements, classic, XmlDialect::Classic)
    ->RangeMultiplier(2)
    ->Range(5'000, 40'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK_CAPTURE(exportMeasurements, schema, XmlDialect::Schema)
    ->RangeMultiplier(2)
    ->Range(5'000, 40'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();

}  // namespace
}  // namespace kavu
