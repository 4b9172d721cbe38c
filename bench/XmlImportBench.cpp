// The import of TMATS XML with as many measurements as the largest documents have.
#include "core/files/FileIo.h"
#include "xml/bridge/read/XmlToTmats.h"

#include <string>

#include <benchmark/benchmark.h>

namespace kavu {
namespace {

constexpr const char* kPath = "/tmp/kavu-xml-import-bench.xml";

std::string measurementText(long number) {
    const auto name = "MEASUREMENT-" + std::to_string(number);
    return "<Measurement Name=\"" + name +
           "\"><Length>16</Length><Parity>None</Parity><ParityTransferOrder>Default"
           "</ParityTransferOrder><LocationType>Word and Frame</LocationType><WordAndFrame>"
           "<MeasurementLocation><MeasurementFragments><StartWord>" +
           std::to_string(number % 8000 + 1) +
           "</StartWord><WordInterval>0</WordInterval><StartFrame>1</StartFrame><FrameInterval>0"
           "</FrameInterval><BitMask>Full Word</BitMask></MeasurementFragments>"
           "</MeasurementLocation></WordAndFrame></Measurement>\n";
}

std::string recordText(long number) {
    std::string text = "<Measurement Name=\"MEASUREMENT-" + std::to_string(number) +
                       "\"><Measurand><Description>Left wing</Description><EngineeringUnits>deg"
                       "</EngineeringUnits></Measurand><DataConversion Type=\"Coefficients\">"
                       "<Coefficients>";
    for (int term = 0; term < 4; ++term) {
        text += "<Coefficient N=\"" + std::to_string(term) + "\">1.5</Coefficient>";
    }
    return text + "</Coefficients></DataConversion></Measurement>\n";
}

void importMeasurements(benchmark::State& state, XmlDialect dialect) {
    std::string list;
    std::string records;
    for (long i = 0; i < state.range(0); ++i) {
        list += measurementText(i);
        records += recordText(i);
    }
    const auto text =
        "<Tmats><DataSource Name=\"S\" Type=\"RF\"><DataLink Name=\"L\"><PCMFormatAttributes>"
        "<PCMMeasurements><MeasurementList Name=\"ML\">" +
        list +
        "</MeasurementList></PCMMeasurements></PCMFormatAttributes><DataConversionAttributes>" +
        records + "</DataConversionAttributes></DataLink></DataSource></Tmats>";
    (void)writeWholeFile(kPath, text);
    for (auto _ : state) {
        XmlToTmats import({}, kPath, {}, dialect);
        (void)import.convert(nullptr);
        if (import.commands().size() < text.size() / 4) {
            state.SkipWithError("the commands are not complete");
        }
    }
    state.SetComplexityN(state.range(0));
    (void)deleteFile(kPath);
}
BENCHMARK_CAPTURE(importMeasurements, classic, XmlDialect::Classic)
    ->RangeMultiplier(2)
    ->Range(5'000, 40'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK_CAPTURE(importMeasurements, schema, XmlDialect::Schema)
    ->RangeMultiplier(2)
    ->Range(5'000, 40'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();

}  // namespace
}  // namespace kavu
