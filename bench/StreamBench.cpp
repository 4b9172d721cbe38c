// How fast a stream is loaded, written and converted, in measurements per second, and what a
// level of its undo costs.
#include "StreamWorld.h"
#include "pcm/edit/FrameEditWords.h"
#include "pcm/undo/StreamUndo.h"
#include "pcm/write/PcmSave.h"
#include "pcm/write/WordFrameConversion.h"

#include <functional>
#include <optional>
#include <string>

#include <benchmark/benchmark.h>

namespace kavu {
namespace {

using bench::kFrames;
using bench::kOlderEdition;
using bench::kWordFrameEdition;
using bench::StreamWorld;

constexpr int kWords = 2047;

std::string formatGroup() {
    std::string text;
    for (const char* const command : {"DLN:S",      "D2:20000000", "TF:TWO",
                                      "F1:16",      "MF\\N:256",   "MF1:2047",
                                      "MF2:32760",  "MF4:24",      "MF5:111110101111001100100000",
                                      "ISF\\N:1",   "ISF1-1:SFID", "ISF2-1:ID",
                                      "IDC1-1:1",   "IDC2-1:16",   "IDC4-1:8",
                                      "IDC6-1:1",   "IDC7-1:1",    "IDC8-1:256",
                                      "IDC9-1:256", "IDC10-1:INC"}) {
        text += std::string("P-1\\") + command + ";\r\n";
    }
    return text;
}

/// A measurement in every frame, one in a single frame, and so on; in an older edition they are
/// minor words, supercommutated or not.
std::string dataGroup(int count, int edition) {
    std::string text =
        "D-1\\DLN:S;\r\nD-1\\ML\\N:1;\r\nD-1\\MLN-1:L;\r\nD-1\\MN\\N-1:" + std::to_string(count) +
        ";\r\n";
    for (int m = 1; m <= count; ++m) {
        const auto at = "-1-" + std::to_string(m);
        const auto add = [&](const std::string& code, const std::string& value) {
            text += "D-1\\" + code + ":" + value + ";\r\n";
        };
        const int word = 2 + m % (kWords - 40);
        add("MN" + at, "MEASUREMENT-" + std::to_string(m));
        if (edition < kWordFrameEdition) {
            add("LT" + at, m % 2 == 0 ? "MF" : "MFSC");
            add("MF" + at, std::to_string(word));
            add("MFS\\N" + at, "4");
            add("MFS1" + at, "I");
            add("MFS2" + at, std::to_string(word));
            add("MFS4" + at, "8");
            continue;
        }
        const bool every = m % 4 == 0;
        const auto frame = std::to_string(every ? 1 : 1 + m % kFrames);
        add("LT" + at, "WDFR");
        add("MML\\N" + at, "1");
        add("WP" + at + "-1-1", std::to_string(word));
        add("WI" + at + "-1-1", "0");
        add("FP" + at + "-1-1", frame);
        add("FI" + at + "-1-1", every ? "1" : "0");
        add("EFP" + at + "-1-1", every ? std::to_string(kFrames) : frame);
        add("WFM" + at + "-1-1", "FW");
    }
    return text;
}

void makeStream(StreamWorld& world, int count, int edition) {
    world.document.version = edition;
    (void)writeWholeFile(world.store.pathOf("[kavu]PCMFMT.P01"), formatGroup());
    (void)writeWholeFile(world.store.pathOf("[kavu]PCMMEAS.D01"), dataGroup(count, edition));
}

void StreamLoad(benchmark::State& state) {
    StreamWorld world;
    const auto count = static_cast<int>(state.range(0));
    makeStream(world, count, kWordFrameEdition);
    for (auto _ : state) {
        if (!world.load() || world.format.cells().nameCount() != count) {
            state.SkipWithError("the stream did not load");
        }
    }
    state.SetItemsProcessed(state.iterations() * count);
    state.counters["bytes"] = static_cast<double>(world.format.cells().memory());
    state.SetComplexityN(count);
}
BENCHMARK(StreamLoad)->RangeMultiplier(2)->Range(5000, 40000)->Complexity(benchmark::oN);

void StreamWrite(benchmark::State& state) {
    StreamWorld world;
    const auto count = static_cast<int>(state.range(0));
    makeStream(world, count, kWordFrameEdition);
    const bool loaded = world.load();
    for (auto _ : state) {
        world.format.changed = true;
        if (!loaded || !savePcmFormat(world.format, nullptr)) {
            state.SkipWithError("the stream was not written");
        }
    }
    state.SetItemsProcessed(state.iterations() * count);
    state.SetComplexityN(count);
}
BENCHMARK(StreamWrite)->RangeMultiplier(2)->Range(5000, 40000)->Complexity(benchmark::oN);

void StreamToWordFrame(benchmark::State& state) {
    StreamWorld world;
    const auto count = static_cast<int>(state.range(0));
    makeStream(world, count, kOlderEdition);
    for (auto _ : state) {
        state.PauseTiming();
        const bool loaded = world.load();
        state.ResumeTiming();
        if (!loaded || !convertToWordFrame(world.format, nullptr)) {
            state.SkipWithError("the stream was not converted");
        }
    }
    state.SetItemsProcessed(state.iterations() * count);
    state.SetComplexityN(count);
}
BENCHMARK(StreamToWordFrame)->RangeMultiplier(2)->Range(5000, 40000)->Complexity(benchmark::oN);

/// One edit of a full-sized stream as a level of its undo: time of the level, and its bytes.
/// What the edit itself takes is left out.
void undoLevels(benchmark::State& state, int edition, const std::function<void(PcmFormat&)>& edit) {
    StreamWorld world;
    makeStream(world, 20000, edition);
    if (!world.load()) {
        state.SkipWithError("the stream did not load");
        return;
    }
    double levels = 0;
    std::size_t bytes = 0;
    StreamUndo undo(world.format);
    for (auto _ : state) {
        state.PauseTiming();
        edit(world.format);
        state.ResumeTiming();
        const bool isLevel = undo.commit();
        state.PauseTiming();
        bytes += undo.bytes();  // the former redo has been dropped
        levels += isLevel ? 1 : 0;
        if (!undo.undo()) {
            state.SkipWithError("the edit was not undone");
        }
        state.ResumeTiming();
    }
    state.counters["bytes/level"] = levels > 0 ? static_cast<double>(bytes) / levels : 0;
}

void changeOneWord(PcmFormat& format) {
    const auto at = format.getFreeCell(nullptr, 1000, 1);
    Measurement measurement;
    measurement.name = "NEW";
    format.cells().store(at, measurement);
}
void deleteWord(PcmFormat& format) {
    (void)deleteFwps(format, nullptr, {}, 2, 2);
}

void UndoLevelOfOneWord(benchmark::State& state) {
    undoLevels(state, static_cast<int>(state.range(0)), changeOneWord);
}
BENCHMARK(UndoLevelOfOneWord)->Arg(kOlderEdition)->Arg(kWordFrameEdition)->Iterations(50);

void UndoLevelOfAllWords(benchmark::State& state) {
    undoLevels(state, static_cast<int>(state.range(0)), deleteWord);
}
BENCHMARK(UndoLevelOfAllWords)->Arg(kOlderEdition)->Arg(kWordFrameEdition)->Iterations(5);

/// The overhead of an edit of all words while its undo listens, the level included.
void EditAllWords(benchmark::State& state) {
    const bool listens = state.range(1) != 0;
    StreamWorld world;
    makeStream(world, 20000, static_cast<int>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        if (!world.load()) {
            state.SkipWithError("the stream did not load");
        }
        std::optional<StreamUndo> undo;
        if (listens) {
            undo.emplace(world.format);
        }
        state.ResumeTiming();
        deleteWord(world.format);
        if (undo) {
            undo->commit();
        }
        state.PauseTiming();
        undo.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(EditAllWords)->ArgsProduct({{kOlderEdition, kWordFrameEdition}, {0, 1}})->Iterations(3);

}  // namespace
}  // namespace kavu
