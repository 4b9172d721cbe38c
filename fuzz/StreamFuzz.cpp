// Loads any bytes as the groups of a stream, with replies, a cancel and an edition that the input
// chooses, and writes it back. What was loaded must be written, and what was written must load
// again: as a frame in which no count, depth or index is out of range, and in the end as the same
// bytes. In between it may be converted to word/frame locations.
#include "Check.h"
#include "FuzzScratch.h"
#include "LostCommands.h"
#include "core/document/DocumentParts.h"
#include "core/files/FileIo.h"
#include "core/text/Edition.h"
#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"
#include "pcm/write/PcmSave.h"
#include "pcm/write/WordFrameConversion.h"
#include "vocabulary/DGroupFields.h"
#include "vocabulary/PGroupFields.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace {

using namespace kavu;
using fuzz::FileCommand;

class FixedRandom : public RandomSource {
  public:
    std::optional<std::array<std::uint8_t, 16>> bytes16() override {
        return std::array<std::uint8_t, 16>{7};
    }
};

/// A parent that gives every question the same answer, and may cancel.
class Parent : public test::RecordingInterface {
  public:
    explicit Parent(bool yes) : yes_(yes) { otherwise = yes ? Button::Yes : Button::No; }

    std::optional<long> enterInteger(const IntegerPrompt& prompt) override {
        return yes_ ? std::optional(prompt.initial) : std::nullopt;
    }
    int chooseFromList(const std::string&, const std::vector<std::string>&) override {
        return yes_ ? 0 : -1;
    }

  private:
    bool yes_;
};

/// What the parts of a document stand on, in a folder that stays for the whole run.
struct Ground {
    std::string folder = fuzz::makeScratch();
    FixedClock clock{CivilTime{2026, 1, 2, 3, 4, 5}};
    FixedRandom random;
};

/// All that a load needs.
struct World : Ground, DocumentParts {
    World() : DocumentParts(environment(folder), clock, random, folder + "/kavu.ini") {
        KAVU_CHECK(store.activate(nullptr, "KAVU-9", random));
        settings.overrideForThisRun(setting::kDefinitionMode, 1);
    }
    static Environment environment(const std::string& folder) {
        Environment environment;
        environment.variable = [folder](const std::string& name) {
            return name == "TEMP" || name == "HOME" ? std::optional(folder) : std::nullopt;
        };
        environment.userName = "fuzz";
        return environment;
    }

    PcmFormat format{context};
};

constexpr std::string_view kFormatFile = "[kavu]PCMFMT.P01";
constexpr std::string_view kDataFile = "[kavu]PCMMEAS.D01";
constexpr std::string_view kLink = "PCM 1";

void checkFrame(const PcmFormat& format) {
    KAVU_CHECK(format.wordsPerMinorFrame >= 1 && format.wordsPerMinorFrame <= kMostWords);
    KAVU_CHECK(format.numberOfFrames >= 1 && format.numberOfFrames <= kMostFrames);
    KAVU_CHECK(format.cells().wordCount() >= format.wordsPerMinorFrame);
    KAVU_CHECK(format.asyncCount() <= kMostAsyncFormats);
    KAVU_CHECK(format.idCounters.size() <= kMostIdCounters);
    for (int fwp = 0; fwp < format.wordsPerMinorFrame; ++fwp) {
        const auto& word = format.word(fwp);
        KAVU_CHECK(word.idCounterIndex < static_cast<int>(format.idCounters.size()));
        for (int index = 1; index <= format.cells().cellCount(fwp); ++index) {
            for (auto at = format.cells().cell(fwp, index); at; at = format.next(at)) {
                KAVU_CHECK(format.cells().asyncNumber(at) <= format.asyncCount());
                const int entry = format.cells().measurement(at).wordFrameIndex;
                KAVU_CHECK(entry >= 0 &&
                           entry <= static_cast<int>(format.wordFrameDefinitions.size()));
            }
        }
    }
}

std::string readFile(const World& world, std::string_view name) {
    std::string bytes;
    const auto path = world.store.pathOf(name);
    KAVU_CHECK(!fileExists(path) || readWholeFile(path, bytes).ok());
    return bytes;
}

/// A text as messages show it.
std::string shownText(std::string text) {
    std::erase(text, '\r');
    return text;
}

bool isOfModel(const FileCommand& command) {
    const auto table = command.letter == 'P' ? pcmVocabulary() : measurementVocabulary();
    return std::any_of(table.begin(), table.end(), [&command](const Field& field) {
        return isOfPattern(command.field, field.code);
    });
}

std::string groupsOf(const World& world) {
    return readFile(world, kFormatFile) + readFile(world, kDataFile);
}

/// The command whatever the numbers of its rows are, which a save gives again.
struct Said {
    explicit Said(const FileCommand& command) {
        const auto path = parseField(command.field);
        stem = command.letter + lowerAscii(path ? path->stem : command.field);
        whole = stem + ":" + command.value;
    }
    std::string stem;
    std::string whole;
};

/// What was told of commands that go: a question whose answer was to keep them is no word of it.
std::string toldOfLoss(Parent& parent) {
    if (parent.otherwise == Button::Yes) {
        std::erase_if(parent.boxes,
                      [](const MessageBox& box) { return box.title == "Keep Commands?"; });
    }
    return shownText(fuzz::everythingTold(parent));
}

/// True if the user was told of a command: of its code, or of what it says. A question shows the
/// beginning of a long one.
bool isTold(const std::string& told, const FileCommand& command) {
    const auto text = shownText(command.text);
    const auto code = text.substr(0, text.find(':'));
    for (auto at = told.find(code); at != std::string::npos; at = told.find(code, at + 1)) {
        const auto end = at + code.size();
        if (end == told.size() || (!isDigit(told[end]) && told[end] != '-')) {
            return true;
        }
    }
    // No length and no pattern are written as nothing.
    if (lowerAscii(command.field) == "mf4" && trimBlanks(command.value) == "0") {
        return true;
    }
    // Some messages name a field without its group: "(MF4)".
    if (told.find("(" + std::string(command.field) + ")") != std::string::npos) {
        return true;
    }
    // A counter on a word that the frame does not have is told of by its place.
    if (startsWithIgnoreCase(command.field, "idc1-") &&
        told.find("at Frame Word Position " + std::string(trim(command.value))) !=
            std::string::npos) {
        return true;
    }
    const auto said = shownText(":" + command.value + ";");
    return told.find(said.substr(0, 40)) != std::string::npos;
}

/// Checks that each command of the groups is in those that were written, or that the user was told
/// of it. What the model reads may be written in other words, but not with fewer commands.
void checkNothingLost(const std::string& before, const std::string& after, Parent& parent) {
    std::map<std::string, long> left;
    std::map<std::string, long>
        fewer;  // by the stem: commands that are neither written nor told of
    for (const auto& command : fuzz::commandsOf(after)) {
        const Said said(command);
        ++left[said.whole];
        --fewer[said.stem];
    }
    const auto told = toldOfLoss(parent);
    std::set<std::string> seen;
    for (const auto& command : fuzz::commandsOf(before)) {
        if (!seen.insert(command.text).second) {
            continue;  // the same command twice says no more than once
        }
        const Said said(command);
        const bool isThere = --left[said.whole] >= 0;
        const bool isExcused = !isThere && isTold(told, command);
        fewer[said.stem] += isExcused ? 0 : 1;
        if (!isThere && !isExcused && (!isOfModel(command) || fewer[said.stem] > 0)) {
            std::fprintf(stderr, "lost: %s\nof\n%swritten\n%stold\n%s", command.text.c_str(),
                         before.c_str(), after.c_str(), fuzz::everythingTold(parent).c_str());
            KAVU_CHECK(false);
        }
    }
    for (const auto& [stem, count] : fewer) {
        if (count > 0) {
            std::fprintf(stderr, "lost: %ld of %s\nof\n%swritten\n%s", count, stem.c_str(),
                         before.c_str(), after.c_str());
            KAVU_CHECK(false);
        }
    }
}

/// Loads the stream and writes it; false if it did not load.
bool roundTrip(World& world, Parent& parent, bool convert) {
    world.format.closeFormat();
    if (!loadPcmFormat(world.format, &parent, {}, kLink)) {
        KAVU_CHECK(!world.format.loaded());
        return false;
    }
    checkFrame(world.format);
    if (convert && !convertToWordFrame(world.format, &parent)) {
        return false;
    }
    checkFrame(world.format);
    world.format.changed = true;
    KAVU_CHECK(savePcmFormat(world.format, &parent));
    return true;
}

/// The bytes as commands of one group: preceded by a link name, so that the stream is
/// found.
void writeGroup(World& world, char letter, std::string_view name, std::string_view bytes) {
    const auto prefix = std::string(1, letter) + "-1\\";
    std::string text = prefix + "DLN:" + std::string(kLink) + ";\r\n";
    // Each line is a command without its prefix, which is most of what a mutation would break.
    while (!bytes.empty()) {
        const auto end = bytes.find('\n');
        text += prefix;
        text += bytes.substr(0, end);
        text += ";\r\n";
        bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
    }
    KAVU_CHECK(writeWholeFile(world.store.pathOf(name), text).ok());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static World world;
    if (size < 3) {
        return 0;
    }
    world.document.version = kEditions[data[0] % kEditions.size()];
    const bool convert = data[0] >= 128;
    const bool yes = data[1] % 2 == 0;
    Parent parent(yes);
    parent.cancelAtPoll = data[2] < 200 ? 0 : data[2] - 199;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 3, size - 3);
    // A line of one hyphen ends the P group.
    const auto border = bytes.find("\n-\n");
    writeGroup(world, 'P', kFormatFile, bytes.substr(0, border));
    writeGroup(world, 'D', kDataFile,
               border == std::string_view::npos ? std::string_view() : bytes.substr(border + 3));

    const auto read = groupsOf(world);
    if (roundTrip(world, parent, convert)) {
        if (!convert) {
            checkNothingLost(read, groupsOf(world), parent);
        }
        Parent patient(yes);
        std::string before;
        // What a load corrects and a write leaves out settles after a few rounds.
        for (int round = 0; round < 6; ++round) {
            if (!roundTrip(world, patient, false)) {
                break;
            }
            const auto now = groupsOf(world);
            KAVU_CHECK(now.size() < 100'000'000);
            if (now == before) {
                break;
            }
            before = now;
        }
    }
    world.format.closeFormat();
    world.store.deleteFiles(nullptr, "[kavu]*");
    return 0;
}
