// What the question of an edit of the frame costs on a frame of full size whose every cell holds
// one of 20,440 measurements, all of which are located by ranges that an inserted word breaks.
#include "StreamWorld.h"
#include "core/talk/QuestionNames.h"
#include "pcm/edit/FrameEditWords.h"
#include "support/RecordingInterface.h"

#include <algorithm>
#include <string>

#include <benchmark/benchmark.h>

namespace kavu {
namespace {

using bench::kFrames;
using bench::StreamWorld;

constexpr int kPairs = 1022;  // of words, half a frame apart; before them sync word and counter
constexpr int kWordsOfPairs = 2 + 2 * kPairs;
constexpr int kSharingWord = 20;

std::string commands(const std::string& head, std::initializer_list<const char*> texts) {
    std::string text;
    for (const auto* const each : texts) {
        text += head + each + ";\r\n";
    }
    return text;
}

std::string frame() {
    return commands("P-1\\", {"DLN:S", "D2:20000000", "TF:TWO", "F1:16", "MF\\N:256", "MF4:24",
                              "MF5:111110101111001100100000", "ISF\\N:1", "ISF1-1:SFID",
                              "ISF2-1:ID", "IDC1-1:1", "IDC2-1:16", "IDC4-1:8", "IDC6-1:1",
                              "IDC7-1:1", "IDC8-1:256", "IDC9-1:256", "IDC10-1:INC"}) +
           "P-1\\MF1:" + std::to_string(kWordsOfPairs) +
           ";\r\nP-1\\MF2:" + std::to_string(24 + 16 * (kWordsOfPairs - 1)) + ";\r\n";
}

std::string data() {
    std::string text = commands("D-1\\", {"DLN:S", "ML\\N:1", "MLN-1:L"}) +
                       "D-1\\MN\\N-1:" + std::to_string(kPairs * kSharingWord) + ";\r\n";
    for (int m = 1; m <= kPairs * kSharingWord; ++m) {
        const auto at = "-1-" + std::to_string(m);
        const auto add = [&](const std::string& code, const std::string& value) {
            text += "D-1\\" + code + ":" + value + ";\r\n";
        };
        const int word = 2 + (m - 1) / kSharingWord;
        add("MN" + at, "MEASUREMENT-" + std::to_string(m));
        add("LT" + at, "WDFR");
        add("MML\\N" + at, "1");
        add("MNF\\N" + at + "-1", "1");
        add("WP" + at + "-1-1", std::to_string(word));
        add("WI" + at + "-1-1", std::to_string(kPairs));
        add("EWP" + at + "-1-1", std::to_string(word + kPairs));
        add("FP" + at + "-1-1", std::to_string(1 + m % kSharingWord));
        add("FI" + at + "-1-1", std::to_string(kSharingWord));
        add("EFP" + at + "-1-1", std::to_string(kFrames));
        add("WFM" + at + "-1-1", "FW");
        add("WFP" + at + "-1-1", "1");
    }
    return text;
}

void FullFrameAdjust(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        bool asked = false;
        {
            StreamWorld world;
            world.document.version = bench::kWordFrameEdition;
            test::RecordingInterface ui;
            ui.otherwise = Button::Yes;
            const bool loaded = world.load(frame(), data());
            state.ResumeTiming();
            const bool done = insertFwps(world.format, &ui, kPairs + 1, 1);
            state.PauseTiming();
            asked = loaded && done &&
                    std::any_of(ui.boxes.begin(), ui.boxes.end(), [](const MessageBox& box) {
                        return box.name == question::kAdjust;
                    });
        }
        state.ResumeTiming();
        if (!asked) {
            state.SkipWithError("nothing was asked");
        }
    }
}
BENCHMARK(FullFrameAdjust)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kavu
