// No command of a stream's groups gets lost in a load and a save: each is in the saved groups, was
// said in a message, or is in the list of the question.
#include "core/command/CommandPath.h"
#include "pcm/LoadFixture.h"
#include "pcm/StreamGenerator.h"
#include "support/Seeds.h"

#include <map>
#include <random>

namespace kavu {
namespace {

using test::Commands;
using test::LoadFixture;
using test::operator+;

/// Groups of a stream in whose commands much is wrong.
class Groups {
  public:
    Groups(int edition, unsigned seed) : edition_(edition), random_(seed) {}

    Commands format() {
        auto commands = test::plainFormat(kWords, kFrames);
        if (coin()) {
            commands = commands + test::counterAt(1, kFrames, subframes());
        }
        if (coin()) {
            commands = commands + asyncFormats();
        }
        for (int i = number(0, 4); i > 0; --i) {
            commands.push_back(unknownOfFormat());
        }
        return shuffled(commands);
    }

    Commands measurements() {
        const int lists = number(1, 2);
        Commands commands = {"ML\\N:" + std::to_string(coin(4) ? lists - 1 : lists)};
        for (int l = 1; l <= lists; ++l) {
            const auto list = std::to_string(l);
            const int rows = number(0, 9);
            const int stated = coin(4) ? number(0, rows) : rows;
            commands.push_back("MLN-" + list + ":List " + list);
            commands.push_back("MN\\N-" + list + ":" + (coin(9) ? "none" : std::to_string(stated)));
            for (int m = 1; m <= rows; ++m) {
                addRow(commands, "-" + list + "-" + std::to_string(m));
            }
        }
        for (int i = number(0, 3); i > 0; --i) {
            commands.push_back("VND" + std::to_string(number(1, 3)) + numbers(number(0, 4)) +
                               unique());
        }
        return shuffled(commands);
    }

  private:
    static constexpr int kWords = 24;
    static constexpr int kFrames = 8;

    int number(int least, int most) {
        return std::uniform_int_distribution<int>(least, most)(random_);
    }
    bool coin(int sides = 2) { return number(1, sides) == 1; }
    std::string unique() { return ":v" + std::to_string(++values_); }
    std::string numbers(int count) {
        std::string text;
        for (int i = 0; i < count; ++i) {
            text += "-" + std::to_string(number(1, 12));
        }
        return text;
    }
    std::string word() {
        return std::to_string(coin(4) ? number(kWords, 99) : number(2, kWords - 1));
    }

    /// Of a word of 16 bits.
    std::string mask() { return coin() ? "FW" : coin() ? "1111111100000000" : "0000000011111111"; }

    Commands shuffled(Commands commands) {
        // What a file has in another order is read the same.
        for (int i = coin() ? 3 : 0; i > 0 && commands.size() > 1; --i) {
            const auto last = static_cast<int>(commands.size()) - 1;
            std::swap(commands[static_cast<std::size_t>(number(0, last))],
                      commands[static_cast<std::size_t>(number(0, last))]);
        }
        return commands;
    }

    Commands subframes() {
        const int rows = number(0, 3);
        Commands commands = {"SF\\N-1:" + std::to_string(coin(4) ? number(0, rows) : rows)};
        for (int m = 1; m <= rows; ++m) {
            commands = commands + test::subframeAt(m, coin(9) ? "SUB1" : "SUB" + std::to_string(m),
                                                   std::stoi(word()), kFrames);
            if (coin(4)) {
                commands.push_back("SF4-1-" + std::to_string(m) + "-2:" + word());
            }
        }
        return commands;
    }

    Commands asyncFormats() {
        const int rows = number(0, 3);
        Commands commands = {"AEF\\N:" + std::to_string(coin(4) ? number(0, rows) : rows)};
        for (int n = 1; n <= rows; ++n) {
            const auto row = "-" + std::to_string(n);
            commands = commands + Commands{"AEF\\DLN" + row + ":ASYNC" + std::to_string(n),
                                           "AEF1" + row + ":NO", "AEF5" + row + "-1:16",
                                           "AEF6" + row + "-1:1111111111111111"};
            if (!coin(5)) {
                commands.push_back("AEF3" + row + "-1:" + word());
            }
        }
        return commands;
    }

    std::string unknownOfFormat() {
        static const std::vector<std::string> kStems = {
            "VND", "ISF9", "AEF\\OWN", "SF1", "IDC5", "MFW1", "MLC1", "ADM\\DMN", "MFF\\MFN"};
        const auto& stem =
            kStems[static_cast<std::size_t>(number(0, static_cast<int>(kStems.size()) - 1))];
        const int indices = stem == "SF1" ? 2 : stem == "VND" ? number(0, 3) : 1;
        // Rows that no count includes; a value that is no word would be one of the others.
        std::string text = stem;
        for (int i = 0; i < indices; ++i) {
            text += "-" + std::to_string(number(20, 40));
        }
        return text + unique();
    }

    void addRow(Commands& commands, const std::string& at) {
        if (!coin(12)) {
            commands.push_back("MN" + at + ":" +
                               (coin(6) ? "TWICE" : "M" + std::to_string(++values_)));
            commands =
                commands + Commands{"MN1" + at + ":DE", "MN2" + at + ":D", "MN3" + at + ":D"};
        }
        for (auto& command : location()) {
            commands.push_back(replaceAll(command, "@", at));
        }
        for (int i = coin() ? number(1, 3) : 0; i > 0; --i) {
            commands.push_back("VND" + std::to_string(number(1, 3)) + at + numbers(number(0, 2)) +
                               unique());
        }
    }

    Commands location() {
        switch (number(0, 6)) {
            case 0:
                return {"LT@:MF", "MF@:" + word(), "MFM@:" + mask()};
            case 1:
                return {"LT@:SF", "SF1@:SUB" + std::to_string(number(1, 4)),
                        "SF2@:" + std::to_string(number(1, kFrames)), "SFM@:" + mask()};
            case 2: {
                Commands commands = {"LT@:MFSC", "MFS\\N@:" + std::to_string(number(0, 4)),
                                     "MFS1@:E"};
                for (int k = number(1, 5); k > 0; --k) {
                    commands.push_back("MFSW@-" + std::to_string(k) + ":" + word());
                    commands.push_back("MFSM@-" + std::to_string(k) + ":" + mask());
                }
                return commands;
            }
            case 3:
                return {"LT@:OWN", "OWN@" + unique()};
            case 4:
                return {"LT@:TD",    "TD\\N@:1", "TD1@:16", "TD2@-1:7",
                        "TD3@-1:FW", "TD4@-1:D", "TD5@-1:1"};
            default:
                return ranges();
        }
    }

    Commands ranges() {
        const int places = number(1, 2);
        Commands commands = {"LT@:WDFR",
                             "MML\\N@:" + std::to_string(coin(5) ? number(0, 9) : places)};
        for (int k = 1; k <= places; ++k) {
            const auto at = "@-" + std::to_string(k);
            commands.push_back("MNF\\N" + at + ":1");
            const auto fwp = word();
            const auto frame = coin(8) ? "99" : "1";
            commands = commands + Commands{"WP" + at + "-1:" + fwp,     "WI" + at + "-1:0",
                                           "FP" + at + "-1:" + frame,   "FI" + at + "-1:1",
                                           "WFM" + at + "-1:" + mask(), "WFT" + at + "-1:D",
                                           "WFP" + at + "-1:1"};
            if (edition_ >= 2009) {
                commands = commands + Commands{"EWP" + at + "-1:" + fwp,
                                               "EFP" + at + "-1:" + std::to_string(kFrames)};
            }
        }
        return commands;
    }

    int edition_;
    std::mt19937 random_;
    int values_ = 0;
};

/// The commands by what they say, without the numbers of rows, which a save gives again. A count
/// says that there is one: its value follows from the rows.
std::map<std::string, std::vector<std::string>> saidIn(const std::string& text) {
    std::map<std::string, std::vector<std::string>> said;
    for (const auto& line : splitLines(replaceAll(text, "\r", ""))) {
        const auto command = viewCommand(line);
        const auto path = parseField(command.field);
        if (!path) {
            continue;
        }
        const bool isCount = path->stem.ends_with("\\N");
        said[std::string(path->stem).append(":").append(isCount ? "" : command.value)].emplace_back(
            line);
    }
    return said;
}

/// The masks of a measurement that is in every frame, in a list of words, are written as those of
/// the first measurement of each word, as files in use have them.
class MasksOfOthers {
  public:
    MasksOfOthers(const PcmFormat& format, const std::string& groups) : format_(format) {
        for (const auto& line : splitLines(replaceAll(groups, "\r", ""))) {
            const auto command = viewCommand(line);
            values_.emplace(command.code, command.value);
        }
    }
    [[nodiscard]] bool has(const std::string& line) const {
        const auto command = viewCommand(line);
        const auto path = parseField(command.field);
        if (!path || path->stem != "MFSM") {
            return false;
        }
        const auto word = values_.find(replaceAll(command.code, "MFSM", "MFSW"));
        const auto name = values_.find("D-1\\" + fieldCode("MN-l-m", {path->at[0], path->at[1]}));
        const int fwp = word == values_.end() ? 0 : leadingInt(word->second);
        if (fwp < 1 || fwp >= format_.wordsPerMinorFrame || name == values_.end()) {
            return false;
        }
        const auto head = format_.cellAt(fwp, 1);
        return head && format_.cells().measurement(head).name.view() != name->second;
    }

  private:
    const PcmFormat& format_;
    std::map<std::string, std::string, std::less<>> values_;
};

class KeptPropertyTest : public ::testing::TestWithParam<int> {
  protected:
    /// The groups, loaded.
    static void load(LoadFixture& t, unsigned seed) {
        Groups groups(GetParam(), seed);
        t.steps_.chooseDefinitionMode = [](UserInterface&, bool) { return true; };
        t.ui.byId = {{245, Button::Yes}};  // else a position beyond its subframe fails the load
        ASSERT_TRUE(t.load(groups.format(), groups.measurements())) << saidBy(t);
    }
    static std::string saidBy(const LoadFixture& t) {
        std::string text;
        for (const auto& box : t.ui.boxes) {
            text += box.text + "\n";
        }
        for (const auto& log : t.ui.logs) {
            text += log.text + "\n";
        }
        return text;
    }
    static std::string groupsOf(LoadFixture& t) {
        return t.read("[kavu]PCMFMT.P01") + t.read("[kavu]PCMMEAS.D01");
    }
    static void save(LoadFixture& t, Button reply) {
        t.ui.otherwise = reply;
        t.format.changed = true;
        ASSERT_TRUE(savePcmFormat(t.format, t.parent));
    }
    /// True if there are as many commands that say the same, but for masks of other measurements.
    static bool isThere(const std::map<std::string, Commands>& now, const std::string& said,
                        const Commands& lines, const MasksOfOthers& masks) {
        const auto it = now.find(said);
        const auto there = it == now.end() ? 0 : it->second.size();
        const auto ofOthers =
            std::count_if(lines.begin(), lines.end(),
                          [&masks](const std::string& line) { return masks.has(line); });
        return there + static_cast<std::size_t>(ofOthers) >= lines.size();
    }
    /// True if a command was said, by its code or its value.
    static bool isSaid(const LoadFixture& t, const std::string& line) {
        const auto holds = [&line](const std::string& text) {
            return text.find(line) != std::string::npos;
        };
        return std::any_of(t.ui.boxes.begin(), t.ui.boxes.end(), [&](const MessageBox& box) {
            return holds(box.text) || holds(box.details);
        });
    }
    static constexpr unsigned kSeeds = test::seeds(150);
};

TEST_P(KeptPropertyTest, NothingIsLostWithYes) {
    for (unsigned seed = 0; seed < kSeeds; ++seed) {
        LoadFixture t(GetParam());
        load(t, seed);
        const auto before = groupsOf(t);
        const MasksOfOthers masks(t.format, before);
        save(t, Button::Yes);
        const auto after = groupsOf(t);
        const auto now = saidIn(after);
        for (const auto& [said, lines] : saidIn(before)) {
            EXPECT_TRUE(isThere(now, said, lines, masks))
                << "seed " << seed << ": " << lines.back() << "\n"
                << before << "---\n"
                << after;
        }
        if (HasFailure()) {
            return;
        }
    }
}

TEST_P(KeptPropertyTest, WhatIsLostWithNoIsInTheQuestion) {
    for (unsigned seed = 0; seed < kSeeds; ++seed) {
        LoadFixture t(GetParam());
        load(t, seed);
        const auto before = groupsOf(t);
        const MasksOfOthers masks(t.format, before);
        t.ui.boxes.clear();
        save(t, Button::No);
        const auto now = saidIn(groupsOf(t));
        for (const auto& [said, lines] : saidIn(before)) {
            const bool isCount = said.ends_with(':');
            const auto told =
                isCount ? said.substr(0, said.size() - 1) + "-" : said.substr(said.find(':')) + ";";
            EXPECT_TRUE(isThere(now, said, lines, masks) || isSaid(t, told)) << lines.back();
        }
        if (HasFailure()) {
            return;
        }
    }
}

TEST_P(KeptPropertyTest, ASecondSaveChangesNothing) {
    for (unsigned seed = 0; seed < kSeeds; ++seed) {
        LoadFixture t(GetParam());
        load(t, seed);
        save(t, Button::Yes);
        t.ui.otherwise = Button::No;  // the questions of the load
        ASSERT_TRUE(t.reload());
        save(t, Button::Yes);
        const auto once = groupsOf(t);
        ASSERT_TRUE(t.reload());
        save(t, Button::Yes);
        ASSERT_EQ(groupsOf(t), once) << seed;
    }
}

INSTANTIATE_TEST_SUITE_P(Editions, KeptPropertyTest,
                         ::testing::Values(1996, 1999, 2001, 2004, 2007, 2009, 2011));

}  // namespace
}  // namespace kavu
