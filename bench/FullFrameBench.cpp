// A frame of full size whose every cell holds a measurement: its conversion to word/frame
// locations, a word that is inserted before all others, and the making of its measurements.
#include "FullFrameText.h"
#include "StreamWorld.h"
#include "conversion/ConversionStore.h"
#include "pcm/edit/FrameEditGenerate.h"
#include "pcm/edit/FrameEditWords.h"
#include "pcm/undo/StreamUndo.h"
#include "pcm/write/WordFrameConversion.h"

#include <functional>
#include <string>

#include <benchmark/benchmark.h>

namespace kavu {
namespace {

using bench::filledData;
using bench::filledFormat;
using bench::kFrames;
using bench::kInEachWord;
using bench::kMostWordsFilled;
using bench::kOlderEdition;
using bench::StreamWorld;

void FullFrameToWordFrame(benchmark::State& state) {
    StreamWorld world;
    world.document.version = kOlderEdition;
    const auto count = static_cast<int>(state.range(0));
    const auto frame = filledFormat((count + kInEachWord - 1) / kInEachWord);
    const auto data = filledData(count);
    for (auto _ : state) {
        state.PauseTiming();
        const bool loaded = world.load(frame, data);
        state.ResumeTiming();
        if (!loaded || world.format.cells().nameCount() != count ||
            !convertToWordFrame(world.format, nullptr)) {
            state.SkipWithError("the stream was not converted");
        }
    }
    state.SetItemsProcessed(state.iterations() * count);
    state.SetComplexityN(count);
}
BENCHMARK(FullFrameToWordFrame)
    ->Arg(5000)
    ->Arg(10000)
    ->Arg(20000)
    ->Iterations(1)
    ->Repetitions(5)
    ->Unit(benchmark::kMillisecond);

const DataWordDefaults kDefaults = {"NO", "", "", "FW", "", ""};

/// 20,000 measurements, or one for each cell.
bool fill(StreamWorld& world, bool apart) {
    world.document.version = kOlderEdition;
    const int count = apart ? 0 : kMostWordsFilled * kInEachWord;
    if (!world.load(filledFormat(kMostWordsFilled), filledData(count))) {
        return false;
    }
    return !apart || createDataWords(world.format, nullptr, {}, kDefaults);
}

enum Step { kInsert, kUndo, kRedo };

/// A word that is inserted before all others, with its level; its undo; its redo.
void FullFrameInsert(benchmark::State& state) {
    StreamWorld world;
    if (!fill(world, state.range(0) != 0)) {
        state.SkipWithError("the stream was not made");
        return;
    }
    const auto measured = static_cast<Step>(state.range(1));
    StreamUndo undo(world.format);
    std::size_t bytes = 0;
    const auto run = [&](Step step, const std::function<bool()>& act) {
        if (step != measured) {
            state.PauseTiming();
        }
        const bool done = act();
        if (step != measured) {
            state.ResumeTiming();
        }
        if (!done) {
            state.SkipWithError("a step failed");
        }
    };
    for (auto _ : state) {
        run(kInsert, [&] { return insertFwps(world.format, nullptr, 0, 1) && undo.commit(); });
        run(kUndo, [&] { return undo.undo(); });
        run(kRedo, [&] { return undo.redo(); });
        bytes = std::max(bytes, undo.bytes());
        state.PauseTiming();
        undo.undo();
        state.ResumeTiming();
    }
    state.counters["level_bytes"] = static_cast<double>(bytes);
}
BENCHMARK(FullFrameInsert)
    ->ArgsProduct({{0, 1}, {kInsert, kUndo, kRedo}})
    ->ArgNames({"apart", "step"})
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond);

/// 35,000 measurements with their conversion records.
void FullFrameGenerate(benchmark::State& state) {
    constexpr int kWords = 137;  // by 256 frames
    for (auto _ : state) {
        state.PauseTiming();
        {
            StreamWorld world;
            world.document.version = kOlderEdition;
            ConversionStore conversions(world.context);
            bool done = world.load(filledFormat(kWords), filledData(0));
            GenerateSteps steps;
            steps.conversions = &conversions;
            steps.createConversion = [&](UserInterface* parent, std::string_view name,
                                         const DataWordDefaults&) {
                conversions.createDefaultDefinition(parent, std::string(name), false);
            };
            state.ResumeTiming();
            const auto made = createDataWords(world.format, nullptr, steps, kDefaults);
            state.PauseTiming();
            done = done && made == kWords * kFrames &&
                   conversions.definitionNames(-1)->size() ==
                       static_cast<std::size_t>(kWords * kFrames);
            if (!done) {
                state.SkipWithError("the measurements were not made");
            }
        }
        state.ResumeTiming();
    }
}
BENCHMARK(FullFrameGenerate)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kavu
