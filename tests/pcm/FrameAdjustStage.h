// A stream in group files of which an edit of the frame would leave something behind.
#pragma once

#include "pcm/LoadFixture.h"
#include "pcm/edit/FrameAdjust.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace kavu::test {

/// A stream that is loaded, edited with one answer to the question, and stored.
class FrameAdjustTest : public ::testing::Test {
  protected:
    void load(int edition, const Commands& pGroup, const std::vector<Commands>& measurements) {
        f = std::make_unique<LoadFixture>(edition);
        ASSERT_TRUE(f->load(pGroup, listOf(measurements)));
        ASSERT_TRUE(f->ui.logs.empty()) << f->ui.logs.front().text;
        f->format.changed = false;
        f->ui.otherwise = Button::Yes;
    }
    /// Stores the stream; the commands of its D group, without numbers of list and measurement.
    Commands stored() {
        EXPECT_TRUE(savePcmFormat(f->format, nullptr));
        return f->saved("[kavu]PCMMEAS.D01");
    }
    [[nodiscard]] bool holds(const Commands& lines, const std::string& command) const {
        return std::find(lines.begin(), lines.end(), "D-1\\" + command + ";") != lines.end();
    }
    void expectStored(const Commands& wanted) {
        const auto lines = stored();
        for (const auto& command : wanted) {
            EXPECT_TRUE(holds(lines, command)) << command;
        }
    }
    /// After the next load a measurement is at these places, and nothing is reported.
    void expectLoaded(const std::string& name, const Places& places) {
        EXPECT_EQ(f->places(name), places) << name << " before the load";
        ASSERT_TRUE(savePcmFormat(f->format, nullptr));
        ASSERT_TRUE(f->reload());
        EXPECT_EQ(f->places(name), places) << name << " after the load";
        EXPECT_TRUE(f->ui.logs.empty()) << f->ui.logs.front().text;
    }
    [[nodiscard]] const MessageBox& question() const { return f->ui.boxes.back(); }
    PcmFormat& format() { return f->format; }

    std::unique_ptr<LoadFixture> f;
};

inline Commands ranges(const std::string& name, const std::vector<Commands>& locations) {
    Commands commands = {"MN@:" + name, "LT@:WDFR", "MML\\N@:" + std::to_string(locations.size())};
    for (const auto& location : locations) {
        commands = commands + location;
    }
    return commands;
}
inline Commands fragment(int k, int f, int word, int wordStep, int endWord, int frame,
                         int frameStep, int endFrame, const std::string& mask = "FW") {
    const auto at = "@-" + std::to_string(k) + "-" + std::to_string(f) + ":";
    return {"WP" + at + std::to_string(word),
            "WI" + at + std::to_string(wordStep),
            "EWP" + at + std::to_string(endWord),
            "FP" + at + std::to_string(frame),
            "FI" + at + std::to_string(frameStep),
            "EFP" + at + std::to_string(endFrame),
            "WFM" + at + mask,
            "WFP" + at + std::to_string(f)};
}
inline Commands supercom(const std::string& name, int first, int interval, int count) {
    return {"MN@:" + name,
            "LT@:MFSC",
            "MFS\\N@:" + std::to_string(count),
            "MFS1@:I",
            "MFS2@:" + std::to_string(first),
            "MFS3@:FW",
            "MFS4@:" + std::to_string(interval)};
}

}  // namespace kavu::test
