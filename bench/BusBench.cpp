// How fast a bus group is unpacked and packed, by measurements.
#include "StreamWorld.h"
#include "bus/definition/BusPack.h"
#include "bus/definition/BusUnpack.h"
#include "core/files/FileIo.h"

#include <string>

#include <benchmark/benchmark.h>

namespace kavu {
namespace {

constexpr int kMeasurementsOfMessage = 32;

/// Messages of 32 measurements with one location each, with all fields of the latest edition.
std::string busGroup(int messages) {
    std::string text =
        "B-1\\DLN:Bus;\r\nB-1\\NBS\\N:1;\r\nB-1\\BID-1:000;\r\nB-1\\BT-1:1553;\r\n"
        "B-1\\TK\\N-1:0;\r\nB-1\\NMS\\N-1:" +
        std::to_string(messages) + ";\r\n";
    const auto add = [&](const char* code, const std::string& at, const std::string& value) {
        text.append("B-1\\").append(code).append(at).append(":").append(value).append(";\r\n");
    };
    for (int m = 1; m <= messages; ++m) {
        const auto at = "-1-" + std::to_string(m);
        add("MID", at, std::to_string(m));
        add("MNA", at, "MESSAGE " + std::to_string(m));
        add("TRN", at, "RT" + std::to_string(m % 31));
        add("TRA", at, "00101");
        add("STA", at, "00010");
        add("TRM", at, "0");
        add("DWC", at, "32");
        add("MN\\N", at, std::to_string(kMeasurementsOfMessage));
        for (int n = 1; n <= kMeasurementsOfMessage; ++n) {
            const auto place = at + "-" + std::to_string(n);
            add("MN", place, "MEASUREMENT" + place);
            add("MT", place, "D");
            add("MN1", place, "NO");
            add("NML\\N", place, "1");
            add("MWN", place + "-1", std::to_string(n));
            add("MBM", place + "-1", "FW");
            add("MTO", place + "-1", "MSB");
            add("MFP", place + "-1", "1");
        }
    }
    return text;
}

void putGroup(const bench::StreamWorld& world, int messages) {
    (void)writeWholeFile(world.store.pathOf(kBusGroupFile), busGroup(messages));
}

BusDefinition unpacked(bench::StreamWorld& world) {
    BusDefinition definition{.link = "Bus", .index = 1};
    (void)unpackBusGroup(world.context, nullptr, definition);
    return definition;
}

/// Runs `work` on the group of so many messages.
template <typename Work>
void measureBus(benchmark::State& state, const Work& work) {
    bench::StreamWorld world;
    putGroup(world, static_cast<int>(state.range(0)));
    const auto definition = unpacked(world);
    if (definition.buses().empty()) {
        state.SkipWithError("the group cannot be unpacked");
    }
    for (auto _ : state) {
        work(world, definition);
    }
    state.SetComplexityN(state.range(0));
}

void unpackBus(benchmark::State& state) {
    measureBus(state, [](bench::StreamWorld& world, const BusDefinition&) {
        benchmark::DoNotOptimize(unpacked(world));
    });
}
void packBus(benchmark::State& state) {
    measureBus(state, [](bench::StreamWorld& world, const BusDefinition& definition) {
        benchmark::DoNotOptimize(packBusGroup(world.context, nullptr, definition));
    });
}

/// 200 messages, and then 10,000, 20,000 and 40,000 measurements.
void sizes(benchmark::internal::Benchmark* bench) {
    bench->Arg(200)->Arg(313)->Arg(626)->Arg(1252)->Unit(benchmark::kMillisecond)->Complexity();
}
BENCHMARK(unpackBus)->Apply(sizes);
BENCHMARK(packBus)->Apply(sizes);

}  // namespace
}  // namespace kavu
