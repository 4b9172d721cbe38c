// A stream without a load: words and frames as the test needs them, and the commands of a
// P group for the readers and from the writers of its parts.
#pragma once

#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"
#include "pcm/PlaceFragments.h"
#include "pcm/StreamCommands.h"
#include "pcm/read/AsyncReading.h"
#include "pcm/read/SubframeReading.h"
#include "pcm/structure/AsyncEdit.h"
#include "pcm/structure/SubframeEdit.h"
#include "pcm/write/AsyncWriting.h"
#include "pcm/write/SubframeWriting.h"
#include "support/TestContext.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace kavu::test {

class StreamFixture : public TestContext {
  public:
    explicit StreamFixture(int edition = 2009, int words = 32, int frames = 8, int length = 16)
        : TestContext(edition) {
        start(words, frames, length);
    }

    void start(int words, int frames, int length = 16) {
        format.clear();
        format.commonWordLength = length;
        format.raiseNumberOfFrames({}, frames);
        EXPECT_TRUE(format.allocateWords({}, words));
        format.setWord(0, WordType::Sync, -1, -1);
    }

    /// Reads counters, subframes and async formats of these commands ("P-1\" is put in front
    /// of each), as a load does. False on a cancel.
    bool read(const std::vector<std::string>& commands) {
        std::string text;
        for (const auto& command : commands) {
            text += "P-1\\" + command + ";\r\n";
        }
        return readText(text);
    }
    bool readText(const std::string& text) {
        write("[kavu]PCMFMT.P01", text);
        fields_ = std::make_unique<CommandIndex>();
        (void)fields_->readFile(reader, store.pathOf("[kavu]PCMFMT.P01"));
        load = std::make_unique<PcmLoad>(format, parent);
        load->fields = fields_.get();
        load->prefix = "P-1\\";
        const bool done = readIdCounters(*load) && readAsyncEmbedded(*load) && readDataMerge(*load);
        for (int fwp = 0; fwp < format.wordsPerMinorFrame; ++fwp) {
            EXPECT_TRUE(format.allocateCells(parent, fwp));
        }
        return done;
    }
    /// The commands of counters, subframes and async formats, without prefix.
    [[nodiscard]] std::vector<std::string> written() {
        const auto text = writtenText();
        std::vector<std::string> lines;
        for (auto line : splitLines(text)) {
            const auto end = line.find(';');
            if (end != std::string::npos) {
                EXPECT_TRUE(line.starts_with("P-1\\")) << line;
                lines.push_back(line.substr(4, end - 4));
            }
        }
        return lines;
    }
    [[nodiscard]] std::string writtenText() {
        FileWriter writer;
        EXPECT_TRUE(writer.open(store.pathOf("written"), WriteMode::Truncate).ok());
        writeIdCounters(format, writer, "P-1\\");
        writeAsyncEmbedded(format, parent, writer, "P-1\\");
        writeDataMerge(format, parent, writer, "P-1\\");
        EXPECT_TRUE(writer.close().ok());
        return TestContext::read("written");
    }
    [[nodiscard]] static bool holds(const std::vector<std::string>& lines,
                                    const std::string& line) {
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    }
    [[nodiscard]] static int countStarting(const std::vector<std::string>& lines,
                                           const std::string& head) {
        return static_cast<int>(std::count_if(
            lines.begin(), lines.end(), [&](const auto& line) { return line.starts_with(head); }));
    }

    /// Puts a measurement at a place.
    CellRef place(int fwp, int fn, const std::string& name, const std::string& type = "MF") {
        Measurement measurement;
        measurement.name = name;
        measurement.locationType = type;
        measurement.mask = "FW";
        return place(fwp, fn, measurement);
    }
    CellRef place(int fwp, int fn, const Measurement& measurement) {
        const auto cell = format.getFreeCell(parent, fwp, fn);
        EXPECT_TRUE(cell);
        format.cells().store(cell, measurement);
        return cell;
    }
    /// A word/frame measurement in every minor frame.
    CellRef placeInEveryFrame(int fwp, const std::string& name) {
        const int entry = format.addWordFrameDefinition(-1, 1);
        format.setWordFrameFragments(entry, 1, 1);
        auto& fragment = format.wordFrameDefinition(entry)->locations[0].fragments[0];
        fragment = {fwp, 0, fwp, 1, 1, format.numberOfFrames, "FW", 'D', 1};
        Measurement measurement;
        measurement.name = name;
        measurement.locationType = "WDFR";
        measurement.wordFrameIndex = entry;
        return place(fwp, 1, measurement);
    }

    void placeFragments(const std::string& name, const std::vector<WordFrameFragment>& fragments) {
        test::placeFragments(format, parent, name, fragments);
    }

    [[nodiscard]] std::vector<int> wordsOf(const std::string& subframe) const {
        const auto ref = format.findSubframe(subframe);
        return ref ? format.wordsOf(*ref) : std::vector<int>();
    }
    [[nodiscard]] const Subframe& subframe(int counter, int index) const {
        return format.idCounters.at(static_cast<std::size_t>(counter))
            .subframes.at(static_cast<std::size_t>(index));
    }
    [[nodiscard]] const IdCounter& counter(int index) const {
        return format.idCounters.at(static_cast<std::size_t>(index));
    }
    /// Text of the only log entry or box with this number.
    [[nodiscard]] std::string logText(int id) const {
        std::string text;
        for (const auto& log : ui.logs) {
            text += log.id == id ? log.text : "";
        }
        return text;
    }
    [[nodiscard]] int boxTitle(int id) const {
        for (const auto& box : ui.boxes) {
            if (std::abs(box.id) == id) {
                return box.titleId;
            }
        }
        return -1;
    }
    [[nodiscard]] int result() const { return load->result; }

    PcmFormat format{context};
    UserInterface* parent = &ui;
    std::unique_ptr<PcmLoad> load;

  private:
    std::unique_ptr<CommandIndex> fields_;
};

/// The commands of a counter in the words of its number: up from 1 over all frames.
inline std::vector<std::string> plainCounter(int n, int word, int frames, const std::string& name) {
    const auto number = std::to_string(n);
    return {"ISF1-" + number + ":" + name,
            "ISF2-" + number + ":ID",
            "IDC1-" + number + ":" + std::to_string(word),
            "IDC2-" + number + ":16",
            "IDC3-" + number + ":1",
            "IDC4-" + number + ":16",
            "IDC5-" + number + ":M",
            "IDC6-" + number + ":1",
            "IDC7-" + number + ":1",
            "IDC8-" + number + ":" + std::to_string(frames),
            "IDC9-" + number + ":" + std::to_string(frames),
            "IDC10-" + number + ":INC"};
}

/// The name of the first measurement at a place.
inline std::string nameAt(const StreamFixture& f, int fwp, int index = 1) {
    return f.format.cells().measurement(f.format.cellAt(fwp, index)).name.str();
}

}  // namespace kavu::test
