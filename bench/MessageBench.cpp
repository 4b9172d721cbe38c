// The read and the write of message data and of packets with many measurements.
#include "StreamWorld.h"
#include "bus/message/MessageGroup.h"
#include "bus/packet/PacketGroup.h"
#include "core/document/GroupFiles.h"
#include "core/document/Transaction.h"

#include <string>

#include <benchmark/benchmark.h>

namespace kavu {
namespace {

/// Five commands a measurement.
std::string messages(long measurements) {
    std::string text = "S-1\\DLN:S;\r\nS-1\\NS\\N:1;\r\nS-1\\NMS\\N-1:1;\r\nS-1\\MN\\N-1-1:" +
                       std::to_string(measurements) + ";\r\n";
    for (long i = 1; i <= measurements; ++i) {
        const auto at = "-1-1-" + std::to_string(i);
        text += "S-1\\MN" + at + ":M;\r\nS-1\\MN1" + at + ":NO;\r\nS-1\\MN2" + at +
                ":T;\r\nS-1\\NML\\N" + at + ":1;\r\nS-1\\MFN" + at + "-1:1;\r\n";
    }
    return text;
}

std::string packets(long measurements) {
    std::string text =
        "S-1\\DLN:S;\r\nS-1\\SP\\N:1;\r\nS-1\\SNMS\\N-1:" + std::to_string(measurements) + ";\r\n";
    for (long i = 1; i <= measurements; ++i) {
        const auto at = "-1-" + std::to_string(i);
        text += "S-1\\SMN" + at + ":M;\r\nS-1\\SPAR" + at + ":NO;\r\nS-1\\SPTO" + at +
                ":L;\r\nS-1\\SNML\\N" + at + ":1;\r\nS-1\\SWP" + at + "-1:1;\r\n";
    }
    return text;
}

/// One measurement of a group: how it is read or written, of a file with so many measurements.
template <class Group, class Step>
void measure(benchmark::State& state, int edition, std::string (*textOf)(long), const Step& step) {
    bench::StreamWorld world;
    world.document.version = edition;
    (void)writeWholeFile(world.store.pathOf(groupFile('S', 1)), textOf(state.range(0)));
    Group group;
    step(world, group, true);
    for (auto _ : state) {
        step(world, group, false);
    }
    state.SetComplexityN(state.range(0));
}

void readMessages(benchmark::State& state) {
    measure<MessageGroup>(state, 2009, messages, [](auto& world, auto& group, bool) {
        benchmark::DoNotOptimize(loadMessages(world.context, nullptr, "S", group));
    });
}
BENCHMARK(readMessages)->RangeMultiplier(10)->Range(100, 10'000)->Complexity(benchmark::oN);

void writeMessages(benchmark::State& state) {
    measure<MessageGroup>(state, 2009, messages, [](auto& world, auto& group, bool isFirst) {
        benchmark::DoNotOptimize(isFirst ? loadMessages(world.context, nullptr, "S", group)
                                         : storeMessages(world.context, nullptr, group));
    });
}
BENCHMARK(writeMessages)->RangeMultiplier(10)->Range(100, 10'000)->Complexity(benchmark::oN);

void readPackets(benchmark::State& state) {
    measure<PacketGroup>(state, 2007, packets, [](auto& world, auto& group, bool) {
        benchmark::DoNotOptimize(loadPackets(world.context, nullptr, "S", group));
    });
}
BENCHMARK(readPackets)->RangeMultiplier(10)->Range(100, 10'000)->Complexity(benchmark::oN);

void writePackets(benchmark::State& state) {
    measure<PacketGroup>(state, 2007, packets, [](auto& world, auto& group, bool isFirst) {
        benchmark::DoNotOptimize(isFirst ? loadPackets(world.context, nullptr, "S", group)
                                         : storePackets(world.context, nullptr, group));
    });
}
BENCHMARK(writePackets)->RangeMultiplier(10)->Range(100, 10'000)->Complexity(benchmark::oN);

}  // namespace
}  // namespace kavu
