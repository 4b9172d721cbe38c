// A stream in group files, loaded as a whole.
#pragma once

#include "core/text/Text.h"
#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"
#include "pcm/StreamCommands.h"
#include "pcm/write/PcmSave.h"
#include "support/TestContext.h"

#include <string>
#include <vector>

namespace kavu::test {

/// A clean format of class 1 words of 16 bits, the sync word of 24 bits.
inline Commands plainFormat(int words, int frames, const std::string& type = "TWO") {
    return {"TF:" + type,
            "F1:16",
            "MF\\N:" + std::to_string(frames),
            "MF1:" + std::to_string(words),
            "MF2:" + std::to_string(24 + 16 * (words - 1)),
            "MF4:24",
            "MF5:111110101111001100100000"};
}

/// A counter over all frames; with `subframes` its commands, from "SF\N-1" on.
inline Commands counterAt(int word, int frames, const Commands& subframes = {}) {
    const auto last = std::to_string(frames);
    return Commands{"ISF\\N:1",   "ISF1-1:SFID", "ISF2-1:ID",      "IDC1-1:" + std::to_string(word),
                    "IDC2-1:16",  "IDC3-1:1",    "IDC4-1:16",      "IDC5-1:M",
                    "IDC6-1:1",   "IDC7-1:1",    "IDC8-1:" + last, "IDC9-1:" + last,
                    "IDC10-1:INC"} +
           subframes;
}

/// An ordinary subframe, the m-th of the first counter.
inline Commands subframeAt(int m, const std::string& name, int word, int depth) {
    const auto index = "-1-" + std::to_string(m);
    return {"SF1" + index + ":" + name, "SF2" + index + ":NO",
            "SF4" + index + "-1:" + std::to_string(word),
            "SF6" + index + ":" + std::to_string(depth)};
}

/// One list of measurements; each is given by its commands behind the numbers of list and
/// measurement, which `@` stands for: "MN@:A", "MFSW@-1:5".
inline Commands listOf(const std::vector<Commands>& measurements, int list = 1) {
    Commands commands = {
        "ML\\N:1", "MLN-" + std::to_string(list) + ":List",
        "MN\\N-" + std::to_string(list) + ":" + std::to_string(measurements.size())};
    int m = 0;
    for (const auto& measurement : measurements) {
        ++m;
        for (const auto& command : measurement) {
            commands.push_back(
                replaceAll(command, "@", "-" + std::to_string(list) + "-" + std::to_string(m)));
        }
    }
    return commands;
}

/// A word/frame measurement of one fragment, for `listOf`.
inline Commands wordFrame(const std::string& name, int word, int start, int interval, int end) {
    return {"MN@:" + name,
            "LT@:WDFR",
            "MML\\N@:1",
            "MNF\\N@-1:1",
            "WP@-1-1:" + std::to_string(word),
            "WI@-1-1:0",
            "EWP@-1-1:" + std::to_string(word),
            "FP@-1-1:" + std::to_string(start),
            "FI@-1-1:" + std::to_string(interval),
            "EFP@-1-1:" + std::to_string(end),
            "WFM@-1-1:FW",
            "WFP@-1-1:1"};
}

class LoadFixture : public TestContext {
  public:
    explicit LoadFixture(int edition = 2009) : TestContext(edition) {}

    void writeGroup(char letter, const Commands& commands, const std::string& link = "PCM 1",
                    int index = 1) {
        const auto prefix = std::string(1, letter) + "-" + std::to_string(index) + "\\";
        std::string text = prefix + "DLN:" + link + ";\r\n";
        for (const auto& command : commands) {
            text += prefix + command + ";\r\n";
        }
        write(letter == 'P' ? formatPrintf("[kavu]PCMFMT.P%2.2d", index)
                            : formatPrintf("[kavu]PCMMEAS.D%2.2d", index),
              text);
    }
    /// Loads the stream of these groups.
    bool load(const Commands& pGroup, const Commands& dGroup = listOf({})) {
        writeGroup('P', pGroup);
        writeGroup('D', dGroup);
        return reload();
    }
    bool reload() {
        format.closeFormat();
        ui.logs.clear();
        ui.boxes.clear();
        const bool loaded = loadPcmFormat(format, parent, steps_, "PCM 1", &report);
        return loaded;
    }
    [[nodiscard]] int result() const { return report.result; }

    /// The places of a measurement, word and cell index, in rising order.
    [[nodiscard]] std::vector<std::pair<int, int>> places(const std::string& name) const {
        std::vector<std::pair<int, int>> result;
        for (const auto& place : format.cells().places(name)) {
            result.emplace_back(place.word, place.index);
        }
        return result;
    }
    /// The measurement as it is met first.
    [[nodiscard]] Measurement first(const std::string& name) const {
        const auto hit = Occurrences(format, name).next();
        return hit ? format.cells().measurement(hit->cell) : Measurement{};
    }
    [[nodiscard]] std::string logText(int id) const {
        std::string text;
        for (const auto& log : ui.logs) {
            text += log.id == id ? log.text : "";
        }
        return text;
    }
    /// Numbers and titles of all log entries.
    [[nodiscard]] std::vector<std::pair<int, int>> logged() const {
        std::vector<std::pair<int, int>> result;
        for (const auto& log : ui.logs) {
            result.emplace_back(log.id, log.titleId);
        }
        return result;
    }
    [[nodiscard]] std::string boxText(int id) const {
        std::string text;
        for (const auto& box : ui.boxes) {
            text += std::abs(box.id) == id ? box.text : "";
        }
        return text;
    }
    [[nodiscard]] Commands saved(const std::string& file) {
        Commands lines;
        for (const auto& line : splitLines(read(file))) {
            lines.push_back(replaceAll(line, "\r", ""));
        }
        return lines;
    }

    PcmFormat format{context};
    PcmSteps steps_;
    UserInterface* parent = &ui;
    PcmLoadReport report;
};

using Places = std::vector<std::pair<int, int>>;
using Logged = std::vector<std::pair<int, int>>;

}  // namespace kavu::test
