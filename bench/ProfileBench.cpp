// How fast profile files are parsed, looked up in and written, and how the store of
// sections grows.
#include "core/WorkingStore.h"
#include "core/document/KeyValueStore.h"
#include "core/files/Environment.h"
#include "core/files/ProfileFile.h"
#include "core/text/Clock.h"

#include <string>
#include <string_view>

#include <benchmark/benchmark.h>

namespace kavu {
namespace {

constexpr std::size_t kChunkBytes = 20 * 1024;

/// Twenty fields, as most conversion records have them.
constexpr std::string_view kFields[] = {"TRD1", "TRD4", "TRD5",  "POC1",  "POC2", "POC3", "POC4",
                                        "MN4",  "BFM",  "MC\\N", "MA\\N", "MOT1", "MOT2", "SR",
                                        "CRT",  "DCT",  "CO\\N", "CO1",   "CO",   "CO-1"};

std::string recordName(int number) {
    return "MEASUREMENT_" + std::to_string(100000 + number);
}

std::string recordText(int number) {
    std::string text = "[" + recordName(number) + "]\r\n";
    for (const auto field : kFields) {
        text.append(field).append("=a value of a field\r\n");
    }
    return text;
}

/// A chunk of conversion records.
const std::string& chunkText() {
    static const std::string text = [] {
        std::string records;
        for (int i = 0; records.size() < kChunkBytes; ++i) {
            records += recordText(i);
        }
        return records;
    }();
    return text;
}

void ProfileParse(benchmark::State& state) {
    for (auto _ : state) {
        ProfileFile profile("");
        profile.parse(chunkText());
        benchmark::DoNotOptimize(profile.serialisedSize());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(chunkText().size()));
}
BENCHMARK(ProfileParse);

void ProfileSerialise(benchmark::State& state) {
    ProfileFile profile("");
    profile.parse(chunkText());
    for (auto _ : state) {
        benchmark::DoNotOptimize(profile.serialise().size());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(chunkText().size()));
}
BENCHMARK(ProfileSerialise);

/// The save of one record asks for some ninety keys, most of which are not there.
void SectionFind(benchmark::State& state) {
    ProfileFile profile("");
    std::string text = "[A]\r\n";
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        text += "PS3-" + std::to_string(i) + "=1.5\r\n";
    }
    profile.parse(text);
    const auto& section = profile.sections()[1];
    const std::string there = "PS3-" + std::to_string(state.range(0) / 2);
    for (auto _ : state) {
        benchmark::DoNotOptimize(section.find(there));
        benchmark::DoNotOptimize(section.find("VOI\\D"));
    }
    state.SetItemsProcessed(2 * state.iterations());
}
BENCHMARK(SectionFind)->Arg(5)->Arg(20)->Arg(32)->Arg(33)->Arg(500);

void ProfileValue(benchmark::State& state) {
    ProfileFile profile("");
    profile.parse(chunkText());
    const auto name = recordName(10);
    for (auto _ : state) {
        benchmark::DoNotOptimize(profile.value(name, "BFM"));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(ProfileValue);

/// The load of a conversion group: each name is looked up and then added.
void KeyValueStoreFill(benchmark::State& state) {
    SystemRandomSource random;
    WorkingStore store(Environment::ofProcess());
    if (!store.activate(nullptr, "KAVU-BENCH", random)) {
        state.SkipWithError("no working store");
        return;
    }
    KeyValueStore values(store);
    const KeyValueStore::Pair pair{"N", "1"};
    for (auto _ : state) {
        for (int i = 0; i < state.range(0); ++i) {
            const auto name = recordName(i);
            if (!values.sectionExists(name)) {
                values.writeSection(nullptr, name, {&pair, 1});
            }
        }
        values.closeStore(nullptr);
    }
    store.deactivate(nullptr);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(KeyValueStoreFill)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

/// The same by ordinary writes.
void KeyValueStoreSet(benchmark::State& state) {
    SystemRandomSource random;
    WorkingStore store(Environment::ofProcess());
    if (!store.activate(nullptr, "KAVU-BENCH", random)) {
        state.SkipWithError("no working store");
        return;
    }
    KeyValueStore values(store);
    for (auto _ : state) {
        for (int i = 0; i < state.range(0); ++i) {
            values.setValue(nullptr, recordName(i), "N", "1");
        }
        values.closeStore(nullptr);
    }
    store.deactivate(nullptr);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(KeyValueStoreSet)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kavu
