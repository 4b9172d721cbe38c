#include "pcm/LoadFixture.h"
#include "pcm/read/MeasurementPlacing.h"

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::listOf;
using test::LoadFixture;
using test::Logged;
using test::Places;
using test::plainFormat;
using test::subframeAt;
using test::operator+;

/// A stream of 16 words and 4 frames with a counter in word 15.
struct WordFrameStream : LoadFixture {
    WordFrameStream(int edition, const std::vector<Commands>& measurements,
                    const Commands& subframes = {}, int frames = 4)
        : LoadFixture(edition) {
        loaded =
            load(plainFormat(16, frames) + counterAt(15, frames, subframes), listOf(measurements));
    }
    [[nodiscard]] const WordFrameFragment& fragment(std::size_t k = 1, std::size_t f = 1) const {
        return format.wordFrameDefinitions.at(0).locations.at(k - 1).fragments.at(f - 1);
    }
    bool loaded = false;
};

/// A measurement of one fragment.
Commands one(const std::string& name, const Commands& fragment) {
    Commands commands = {"MN@:" + name, "LT@:WDFR", "MML\\N@:1"};
    for (const auto& field : fragment) {
        const auto colon = field.find(':');
        commands.push_back(field.substr(0, colon) + "@-1-1" + field.substr(colon));
    }
    return commands;
}

TEST(WordFrameReader, AFragmentWithoutEndFrameAndIntervalEndsWhereItStarts) {
    WordFrameStream f(2009, {one("A", {"WP:3", "FP:2"})});
    EXPECT_EQ(f.fragment().endFrame, 2);
    EXPECT_EQ(f.fragment().endWord, 3);
    EXPECT_EQ(f.places("A"), (Places{{3, 2}}));
}

TEST(WordFrameReader, AFragmentWithoutEndFrameAndAnIntervalRunsToTheLastFrame) {
    for (const int edition : {2004, 2009}) {
        WordFrameStream f(edition, {one("A", {"WP:3", "FP:2", "FI:1"})});
        EXPECT_EQ(f.fragment().endFrame, 4);
        EXPECT_EQ(f.places("A"), (Places{{3, 2}, {3, 3}, {3, 4}}));
        LoadFixture g(edition);
        ASSERT_TRUE(g.load(plainFormat(16, 4) + counterAt(2, 4),
                           listOf({one("A", {"WP:3", "WI:4", "FP:1", "FI:1"})})));
        EXPECT_EQ(g.format.wordFrameDefinitions[0].locations[0].fragments[0].endWord, 15);
        EXPECT_EQ(g.places("A"), (Places{{3, 1}, {7, 1}, {11, 1}, {15, 1}}));
    }
}

TEST(WordFrameReader, EndsAreReadFrom10609On) {
    const auto lines = one("A", {"WP:3", "WI:2", "EWP:7", "FP:2", "FI:2", "EFP:3"});
    WordFrameStream f(2009, {lines});
    EXPECT_EQ(f.fragment().endWord, 7);
    EXPECT_EQ(f.fragment().endFrame, 3);
    EXPECT_EQ(f.places("A"), (Places{{3, 2}, {5, 2}, {7, 2}}));
    EXPECT_EQ(f.result(), 0);
    WordFrameStream g(2007, {lines});
    EXPECT_EQ(g.ui.countLogs(287), 1) << "without its end it runs into the counter's word";
}

TEST(WordFrameReader, ANegativeEndTakesTheLastWordOrFrame) {
    LoadFixture f(2009);
    ASSERT_TRUE(f.load(
        plainFormat(16, 4) + counterAt(2, 4),
        listOf({one("A", {"WP:13", "WI:1", "EWP:-1", "FP:2", "FI:1", "EFP:-99999999999"})})));
    const auto& fragment = f.format.wordFrameDefinitions.at(0).locations.at(0).fragments.at(0);
    EXPECT_EQ(fragment.endWord, 15);
    EXPECT_EQ(fragment.endFrame, 4);
    EXPECT_EQ(f.places("A").size(), 9U);
    EXPECT_EQ(f.result(), 1);
}

TEST(WordFrameReader, AMeasurementInEveryFrameOfAPlainWordHasOneCell) {
    WordFrameStream f(2007, {one("A", {"WP:3", "FP:1", "FI:1", "WFM:0011", "WFT:M", "WFP:1"})});
    EXPECT_EQ(f.places("A"), (Places{{3, 1}}));
    EXPECT_EQ(f.format.wordType(3), WordType::Minor);
    EXPECT_EQ(f.fragment().mask, "0011");
    EXPECT_EQ(f.fragment().transferOrder, 'M');
    EXPECT_EQ(f.fragment().fragmentPosition, 1);
    EXPECT_EQ(f.first("A").wordFrameIndex, 1);
    EXPECT_EQ(f.first("A").locationCount, 1);
    EXPECT_EQ(f.first("A").mask, "0011") << "each place has the mask of its fragment";
    EXPECT_EQ(f.format.wordFrameDefinitions[0].locations[0].wordLength, 16);
    EXPECT_TRUE(f.ui.logs.empty());
    EXPECT_EQ(f.result(), 0);
}

TEST(WordFrameReader, From10609OnFrame1AloneOfPlainWordsStandsForEveryFrame) {
    WordFrameStream f(
        2009, {one("A", {"WP:3", "FP:1", "FI:0", "EFP:1"}), Commands{"MN@:B", "LT@:MF", "MF@:9"}});
    EXPECT_EQ(f.fragment().frameInterval, 1);
    EXPECT_EQ(f.fragment().endFrame, 4);
    EXPECT_EQ(f.places("A"), (Places{{3, 1}}));
    EXPECT_EQ(f.result(), 1) << "the file's values were replaced";
    WordFrameStream g(
        2007, {one("A", {"WP:3", "FP:1", "FI:0", "EFP:1"}), Commands{"MN@:B", "LT@:MF", "MF@:9"}});
    EXPECT_EQ(g.fragment().frameInterval, 0);
    EXPECT_EQ(g.fragment().endFrame, 1);
}

TEST(WordFrameReader, ASubcommutatedFragmentGetsItsHiddenSubframe) {
    WordFrameStream f(2007, {one("A", {"WP:3", "FP:2", "FI:2"})});
    ASSERT_EQ(f.format.wordType(3), WordType::Subframe);
    EXPECT_TRUE(f.format.subframeOfWord(3)->hidden);
    EXPECT_EQ(f.format.subframeOfWord(3)->depth, "4");
    EXPECT_EQ(f.places("A"), (Places{{3, 2}, {3, 4}}));
    EXPECT_EQ(f.format.countMeasurementOccurences("A"), 2);
    EXPECT_FALSE(f.format.changed);
}

TEST(WordFrameReader, WithoutACounterTheQuestionIsAskedOncePerLoad) {
    LoadFixture f(2007);
    f.ui.byId[358] = Button::No;
    ASSERT_TRUE(
        f.load(plainFormat(16, 4), listOf({one("A", {"WP:3", "FP:2"}), one("B", {"WP:4", "FP:2"}),
                                           one("C", {"WP:5", "FP:1", "FI:1"})})));
    EXPECT_EQ(f.ui.countBoxes(358), 1);
    EXPECT_NE(f.boxText(358).find("Error reading measurement 'A'."), std::string::npos);
    EXPECT_FALSE(f.format.hasMeasurement("A"));
    EXPECT_FALSE(f.format.hasMeasurement("B"));
    EXPECT_TRUE(f.format.hasMeasurement("C"));
    EXPECT_EQ(f.result(), 1);
}

TEST(WordFrameReader, ACounterMadeForAMeasurementIsAChange) {
    LoadFixture f(2007);
    f.ui.byId[358] = Button::Yes;
    f.ui.integers = {12L};
    f.ui.choices = {11};
    f.ui.rows = {11};
    f.ui.texts = {std::string("12")};
    ASSERT_TRUE(f.load(plainFormat(16, 4), listOf({one("A", {"WP:3", "FP:2"})})));
    EXPECT_TRUE(f.format.hasMeasurement("A"));
    EXPECT_EQ(f.format.idCounters.size(), 1U);
    EXPECT_TRUE(f.format.changed);
}

TEST(WordFrameReader, NoLocationsAreNothingAndAreReported) {
    WordFrameStream f(2007, {Commands{"MN@:A", "LT@:WDFR"}});
    EXPECT_FALSE(f.format.hasMeasurement("A"));
    EXPECT_TRUE(f.format.wordFrameDefinitions.empty());
    ASSERT_EQ(f.ui.logs.size(), 1U);
    EXPECT_EQ(f.ui.logs[0].id, 0);
    EXPECT_EQ(f.ui.logs[0].text,
              "Measurement 'A' has no place in the frame: D-1\\MML\\N-1-1 is ''.");
}

TEST(WordFrameReader, MissingStartsAreToldOfWithTheCommandsThatWereRead) {
    LoadFixture f(2007);
    f.writeGroup('P', plainFormat(16, 4) + counterAt(15, 4));
    f.writeGroup('D', listOf({one("A", {"FP:2"}), one("B", {"WP:3", "WI:0"})}));
    ASSERT_TRUE(f.reload());
    EXPECT_EQ(f.logged(), (Logged{{284, 89}, {284, 89}}));
    EXPECT_EQ(f.ui.logs[0].text,
              "Error reading TMATS definition for measurement 'A'. Unable to locate the 'Start "
              "Word' TMATS command (D-1\\WP-1-1-1-1). This measurement will not be processed.");
    EXPECT_NE(f.ui.logs[1].text.find("'Start Frame' TMATS command (D-1\\FP-1-2-1-1)"),
              std::string::npos);
    std::string shown;
    for (const auto& line : f.ui.shown.at(0).lines) {
        shown += line + "\n";
    }
    EXPECT_NE(shown.find("Last TMATS commands read:\n\nD-1\\MN-1-2:B;\nD-1\\LT-1-2:WDFR;\n"
                         "D-1\\MML\\N-1-2:1;\nD-1\\WP-1-2-1-1:3;\nD-1\\WI-1-2-1-1:0;\n"),
              std::string::npos)
        << shown;
    EXPECT_EQ(f.result(), 1);
}

TEST(WordFrameReader, RangesAreChecked) {
    struct Row {
        Commands fragment;
        int message;
        int title;
        const char* text;
    };
    const Commands subframe =
        Commands{"SF\\N-1:2"} + subframeAt(1, "S", 10, 2) +
        Commands{"SF1-1-2:SC", "SF2-1-2:2", "SF3-1-2:FI", "SF4-1-2-1:11", "SF5-1-2:1", "SF6-1-2:4"};
    for (const auto& row : {
             Row{{"WP:5", "EWP:3", "FP:1"},
                 292,
                 78,
                 "Unable to define measurement 'A'. End word (3) can not be less than start word "
                 "(5)."},
             Row{{"WP:3", "WI:0", "EWP:5", "FP:1"},
                 293,
                 78,
                 "Unable to define measurement 'A'. When the 'End Word' value is greater than the "
                 "'Start Word' value, 'Word Increment' must be a number greater than zero."},
             Row{{"WP:3", "FP:1", "FI:0", "EFP:3"},
                 293,
                 78,
                 "Unable to define measurement 'A'. When the 'End Frame' value is greater than the "
                 "'Start Frame' value, 'Frame Increment' must be a number greater than zero."},
             Row{{"WP:14", "WI:1", "EWP:17", "FP:1", "FI:1"}, 287, 78, nullptr},
             Row{{"WP:16", "FP:1", "FI:1"},
                 276,
                 78,
                 "Illegal Frame Word Position definition for measurement 'A' at Frame Word "
                 "Position:16 Frame Number:1.\n\nThis PCM format is defined with 16 maximum words "
                 "per minor frame."},
             Row{{"WP:0", "FP:1", "FI:1"}, 276, 78, nullptr},
             Row{{"WP:12", "FP:1", "FI:1"},
                 285,
                 78,
                 "Unable to define measurement 'A'. Measurements defined using the 'Word/Frame' "
                 "method, can not be assigned to supercommutated subframes. Frame word position 12 "
                 "is part of supercommutated subframe 'SC'."},
             Row{{"WP:3", "FP:0"},
                 286,
                 89,
                 "Unable to define measurement 'A' at frame word position 3, frame number 0.  "
                 "'Start Frame' and 'End Frame' values must be between 1 and 4 and 'End Frame' can "
                 "not be less than 'Start Frame'."},
             Row{{"WP:3", "FP:3", "FI:1", "EFP:2"}, 286, 89, nullptr},
             Row{{"WP:3", "FP:3", "FI:1", "EFP:5"}, 286, 89, nullptr},
             Row{{"WP:10", "FP:1", "FI:1", "EFP:3"}, 286, 89, nullptr},
         }) {
        WordFrameStream f(2009, {one("A", row.fragment)}, subframe);
        ASSERT_TRUE(f.loaded);
        EXPECT_EQ(f.logged(), (Logged{{row.message, row.title}})) << row.fragment[0];
        if (row.text != nullptr) {
            EXPECT_EQ(f.logText(row.message), row.text);
        }
        EXPECT_FALSE(f.format.hasMeasurement("A"));
        EXPECT_EQ(f.result(), 1);
    }
}

TEST(WordFrameReader, ACounterWordTakesAMeasurementOfEveryFrameOnly) {
    WordFrameStream f(2009, {one("A", {"WP:15", "FP:1", "FI:1"}), one("B", {"WP:15", "FP:2"})});
    EXPECT_EQ(f.places("A"), (Places{{15, 1}}));
    EXPECT_FALSE(f.format.hasMeasurement("B"));
    EXPECT_EQ(f.logged(), (Logged{{287, 78}}));
}

TEST(WordFrameReader, SeveralFragmentsMakeALocation) {
    const Commands lines = {
        "MN@:A",     "LT@:WDFR",      "MML\\N@:1",   "MNF\\N@-1:3", "MWL@-1:20", "WP@-1-1:3",
        "FP@-1-1:1", "FI@-1-1:1",     "WFM@-1-1:FW", "WFP@-1-1:2",  "WP@-1-2:7", "FP@-1-2:1",
        "FI@-1-2:1", "WFM@-1-2:1100", "WFP@-1-2:1",  "WFT@-1-2:L",  "WP@-1-3:3", "FP@-1-3:1",
        "FI@-1-3:1", "WFM@-1-3:0011", "WFP@-1-3:3",  "WFT@-1-3:X"};
    WordFrameStream f(2007, {lines});
    EXPECT_EQ(f.places("A"), (Places{{3, 1}, {3, 1}, {7, 1}}));
    const auto& location = f.format.wordFrameDefinitions[0].locations[0];
    EXPECT_EQ(location.wordLength, 20);
    ASSERT_EQ(location.fragmentCount(), 3);
    EXPECT_EQ(location.fragments[0].startWord, 7) << "sorted by their positions";
    EXPECT_EQ(location.fragments[0].transferOrder, 'L');
    EXPECT_EQ(location.fragments[2].transferOrder, 'D') << "any other letter";
    EXPECT_TRUE(f.ui.logs.empty());
    EXPECT_EQ(f.format.countMeasurementOccurences("A"), 4) << "fragments are not counted";
}

TEST(WordFrameReader, AWordLengthThatTheMasksDoNotGiveBecomesTheirSum) {
    const Commands lines = {"MN@:A",     "LT@:WDFR",  "MML\\N@:1", "MNF\\N@-1:2", "MWL@-1:30",
                            "WP@-1-1:3", "FP@-1-1:1", "FI@-1-1:1", "WFM@-1-1:FW", "WFP@-1-1:1",
                            "WP@-1-2:4", "FP@-1-2:1", "FI@-1-2:1", "WFM@-1-2:1",  "WFP@-1-2:2"};
    WordFrameStream f(2007, {lines});
    EXPECT_EQ(f.logged(), (Logged{{294, 89}}));
    EXPECT_EQ(f.format.wordFrameDefinitions[0].locations[0].wordLength, 17);
    EXPECT_EQ(f.result(), 1);
    auto without = lines;
    std::erase(without, "MWL@-1:30");
    WordFrameStream g(2007, {without});
    EXPECT_EQ(g.format.wordFrameDefinitions[0].locations[0].wordLength, 17);
    EXPECT_EQ(g.result(), 0);
}

TEST(WordFrameReader, ALocationOfOneFragmentTakesTheLengthOfItsStartWord) {
    WordFrameStream f(2007, {one("A", {"WP:3", "FP:1", "FI:1", "WFM:0011"})});
    EXPECT_EQ(f.format.wordFrameDefinitions[0].locations[0].wordLength, 16);
}

TEST(WordFrameReader, PositionsOutOfOrderAreNumberedAnew) {
    const Commands lines = {"MN@:A",     "LT@:WDFR",  "MML\\N@:1", "MNF\\N@-1:3",
                            "WP@-1-1:3", "FP@-1-1:1", "FI@-1-1:1", "WFP@-1-1:4",
                            "WP@-1-2:4", "FP@-1-2:1", "FI@-1-2:1", "WFP@-1-2:4",
                            "WP@-1-3:5", "FP@-1-3:1", "FI@-1-3:1", "WFP@-1-3:0"};
    WordFrameStream f(2007, {lines});
    EXPECT_EQ(f.logged(), (Logged{{288, 89}}));
    EXPECT_NE(f.logText(288).find("Location #1 has invalid 'Fragment Number' values defined for "
                                  "fragment definition #2."),
              std::string::npos);
    EXPECT_EQ(f.fragment(1, 1).startWord, 5) << "a position of 0 is 1 on the last fragment";
    EXPECT_EQ(f.fragment(1, 2).startWord, 3);
    EXPECT_EQ(f.fragment(1, 2).fragmentPosition, 2);
    EXPECT_EQ(f.fragment(1, 3).fragmentPosition, 3);
    EXPECT_EQ(f.result(), 1);
}

TEST(WordFrameReader, ABadFragmentIsLeftOutOfItsLocation) {
    const Commands lines = {"MN@:A",      "LT@:WDFR",  "MML\\N@:1", "MNF\\N@-1:2",
                            "WP@-1-1:99", "FP@-1-1:1", "FI@-1-1:1", "WFP@-1-1:1",
                            "WP@-1-2:4",  "FP@-1-2:1", "FI@-1-2:1", "WFP@-1-2:2"};
    WordFrameStream f(2007, {lines});
    EXPECT_EQ(f.ui.countLogs(276), 1);
    EXPECT_EQ(f.format.wordFrameDefinitions[0].locations[0].fragmentCount(), 1);
    EXPECT_EQ(f.places("A"), (Places{{4, 1}}));
}

TEST(WordFrameReader, SeveralLocationsShareOneDefinition) {
    WordFrameStream f(2007, {{"MN@:A", "LT@:WDFR", "MML\\N@:2", "WP@-1-1:3", "FP@-1-1:1",
                              "FI@-1-1:1", "WP@-2-1:9", "FP@-2-1:1", "FI@-2-1:1"}});
    EXPECT_EQ(f.places("A"), (Places{{3, 1}, {9, 1}}));
    EXPECT_EQ(f.first("A").locationCount, 2);
    EXPECT_EQ(f.format.wordFrameDefinitions[0].locationCount(), 2);
}

TEST(WordFrameReader, TheEndFrameIsLoweredToTheDepthOfTheWordWhenItIsPlaced) {
    WordFrameStream f(2007, {one("A", {"WP:10", "FP:1", "FI:1"})},
                      Commands{"SF\\N-1:1"} + subframeAt(1, "S", 10, 4));
    EXPECT_EQ(f.places("A").size(), 4U);
    LoadFixture g(2007);
    ASSERT_TRUE(g.load(plainFormat(16, 4), listOf({})));
    PcmLoad load(g.format, g.parent);
    Measurement measurement;
    measurement.name = "B";
    measurement.locationType = "WDFR";
    placeWordFrameFragment(load, measurement, {3, 0, 3, 1, 1, 4, "FW", 'D', 1});
    EXPECT_EQ(g.places("B"), (Places{{3, 1}}));
}

TEST(WordFrameReader, TheNameOfTheCounterIsReadFrom10611OnWithSeveralCounters) {
    auto lines = one("A", {"WP:3", "FP:1", "FI:1"});
    lines.push_back("IDCN@:C2");
    const auto second = Commands{"ISF1-2:C2", "ISF2-2:ID", "IDC1-2:14", "IDC2-2:16", "IDC4-2:16",
                                 "IDC6-2:1",  "IDC7-2:1",  "IDC8-2:4",  "IDC9-2:4",  "IDC10-2:INC"};
    for (const auto& [edition, several, name] :
         {std::tuple(2011, true, "C2"), std::tuple(2011, false, ""), std::tuple(2009, true, "")}) {
        LoadFixture f(edition);
        auto format = plainFormat(16, 4) + counterAt(15, 4);
        if (several) {
            std::erase(format, "ISF\\N:1");
            format = format + Commands{"ISF\\N:2"} + second;
        }
        ASSERT_TRUE(f.load(format, listOf({lines})));
        EXPECT_EQ(f.format.wordFrameDefinitions.at(0).idCounterName, name);
    }
}

TEST(WordFrameReader, SubcommutatedIsWhatIsNotInEveryFrame) {
    struct Row {
        int edition;
        int start;
        int interval;
        int end;
        bool expected;
    };
    LoadFixture f(2009);
    ASSERT_TRUE(f.load(plainFormat(8, 4)));
    for (const auto& row :
         {Row{2007, 1, 1, 4, false}, Row{2007, 2, 1, 4, true}, Row{2007, 1, 2, 4, true},
          Row{2007, 1, 1, 3, false}, Row{2007, 1, 0, 1, false}, Row{2009, 1, 1, 3, true},
          Row{2009, 1, 1, 4, false}, Row{2009, 1, 0, 4, true}}) {
        f.document.version = row.edition;
        EXPECT_EQ(isSubcommutated(f.format, row.start, row.interval, row.end), row.expected)
            << row.edition << " " << row.start << " " << row.interval << " " << row.end;
    }
}

TEST(WordFrameReader, CountsAndRangesWithoutMeasureStayBounded) {
    WordFrameStream f(
        2011, {{"MN@:A", "LT@:WDFR", "MML\\N@:1000000000", "WP@-1-1:3", "FP@-1-1:1", "FI@-1-1:1"},
               {"MN@:B", "LT@:WDFR", "MML\\N@:1", "MNF\\N@-1:1000000000", "WP@-1-1:3", "FP@-1-1:1",
                "FI@-1-1:1"},
               one("C", {"WP:1", "WI:1", "EWP:14", "FP:1", "FI:1"}),
               one("D", {"WP:1", "WI:2147483647", "EWP:2147483647", "FP:1", "FI:1"}),
               one("E", {"WP:1", "FP:1", "FI:2147483647", "EFP:4"})});
    ASSERT_TRUE(f.loaded);
    EXPECT_EQ(f.format.wordFrameDefinitions[0].locationCount(), 1);
    EXPECT_EQ(f.first("A").locationCount, 1);
    EXPECT_EQ(f.places("A").size(), 4U);
    EXPECT_EQ(f.places("B").size(), 4U);
    EXPECT_EQ(f.places("C").size(), 14U * 4U);
    EXPECT_EQ(f.places("D").size(), 4U) << "only the words of its steps count";
    EXPECT_EQ(f.places("E"), (Places{{1, 1}}));
    EXPECT_LT(f.ui.logs.size(), 300U);
    EXPECT_EQ(f.result(), 1);
}

TEST(WordFrameReader, WithoutAParentTheCheckIsSilent) {
    LoadFixture f(2009);
    ASSERT_TRUE(f.load(plainFormat(8, 4)));
    PcmLoad load(f.format, nullptr);
    EXPECT_FALSE(checkWordFrameFragment(load, "A", {9, 0, 9, 1, 1, 4, "FW", 'D', 1}));
    EXPECT_TRUE(checkWordFrameFragment(load, "A", {3, 0, 3, 1, 1, 4, "FW", 'D', 1}));
    EXPECT_TRUE(f.ui.logs.empty());
    PcmLoad loud(f.format, f.parent);
    EXPECT_FALSE(checkWordFrameFragment(loud, "", {5, 0, 3, 1, 1, 4, "FW", 'D', 1}));
    EXPECT_NE(f.logText(292).find("'<no name defined>'"), std::string::npos);
}

}  // namespace
}  // namespace kavu
