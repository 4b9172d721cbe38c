// How fast a bus group is unpacked and packed, by measurements.
#include "BusGroupText.h"
#include "StreamWorld.h"
#include "bus/definition/BusPack.h"
#include "bus/definition/BusUnpack.h"
#include "core/files/FileIo.h"

#include <benchmark/benchmark.h>

namespace kavu {
namespace {

void putGroup(const bench::StreamWorld& world, int messages) {
    (void)writeWholeFile(world.store.pathOf(kBusGroupFile), bench::busGroup(messages));
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
