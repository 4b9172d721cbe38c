// Look-ups of conversion records, and the load and the save of a whole group.
#include "conversion/ConversionLoader.h"
#include "conversion/ConversionStore.h"
#include "conversion/ConversionWriter.h"
#include "core/document/DocumentParts.h"
#include "core/document/KeyValueStore.h"
#include "core/files/FileIo.h"

#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace kavu {
namespace {

/// An open document with an empty C group, in a working store of its own.
struct Ground {
    SystemClock clock;
    SystemRandomSource random;
};
struct Document : Ground, DocumentParts {
    Document() : DocumentParts(environment(), clock, random, {}) {
        store.activate(nullptr, kApplicationName, random);
    }
    ~Document() { store.deactivate(nullptr); }

    static Environment environment() {
        Environment made;
        made.variable = [](const std::string&) { return std::nullopt; };
        made.programFolder = "/tmp";
        return made;
    }
    void load(const std::string& commands) {
        (void)writeWholeFile(store.pathOf(working::kData1), commands);
        (void)loadConversionGroup(context, names, conversions, nullptr, 2011);
    }

    KeyValueStore names{store};
    ConversionStore conversions{context};
};

/// Records of 20 fields.
std::string group(long records) {
    std::string text;
    for (long i = 1; i <= records; ++i) {
        const auto prefix = "C-" + std::to_string(i) + "\\";
        text += prefix + "DCN:MEAS" + std::to_string(i) + ";\r\n" + prefix + "DCT:PRS;\r\n" +
                prefix + "PS\\N:8;\r\n" + prefix + "PS1:N;\r\n";
        for (int pair = 1; pair <= 8; ++pair) {
            const auto number = std::to_string(pair);
            text += prefix + "PS3-" + number + ":" + number + ";\r\n" + prefix + "PS4-" + number +
                    ":" + number + "0.5;\r\n";
        }
    }
    return text;
}

void locateInTurn(benchmark::State& state) {
    Document document;
    document.load(group(state.range(0)));
    (void)document.conversions.locateDefinition("MEAS1");
    long next = 0;
    for (auto _ : state) {
        next = next % state.range(0) + 1;
        auto place = document.conversions.locateDefinition("MEAS" + std::to_string(next));
        benchmark::DoNotOptimize(place);
    }
}
BENCHMARK(locateInTurn)->Arg(1000)->Arg(10000);

void locateMissing(benchmark::State& state) {
    Document document;
    document.load(group(state.range(0)));
    for (auto _ : state) {
        auto place = document.conversions.locateDefinition("NOT THERE");
        benchmark::DoNotOptimize(place);
    }
}
BENCHMARK(locateMissing)->Arg(1000)->Arg(10000);

void loadGroup(benchmark::State& state) {
    const auto text = group(state.range(0));
    for (auto _ : state) {
        Document document;
        document.load(text);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}
BENCHMARK(loadGroup)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void saveGroup(benchmark::State& state) {
    Document document;
    const auto text = group(state.range(0));
    document.load(text);
    for (auto _ : state) {
        FileWriter output;
        (void)output.open("/dev/null", WriteMode::Truncate);
        (void)saveConversionGroup(document.context, document.conversions, nullptr, output);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}
BENCHMARK(saveGroup)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kavu
