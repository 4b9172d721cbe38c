#include "pcm/FrameAdjustStage.h"
#include "pcm/edit/CounterRefit.h"
#include "pcm/structure/SubframeEdit.h"

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::Places;
using test::plainFormat;
using test::wordFrame;
using test::operator+;

using CounterRefit = test::FrameAdjustTest;

/// Two counters, the first one at the last word.
Commands twoCounters(int frames) {
    auto commands = counterAt(15, frames);
    commands.front() = "ISF\\N:2";
    for (auto command : counterAt(4, frames)) {
        if (!command.starts_with("ISF\\N")) {
            command = replaceAll(replaceAll(command, "-1:", "-2:"), "SFID", "SFID2");
            commands.push_back(command);
        }
    }
    return commands;
}

TEST_F(CounterRefit, FewerWordsKeepTheCountersAndWhatIsInSomeFramesIfTheFirstCounterGoes) {
    for (const bool adjusts : {true, false}) {
        load(2011, plainFormat(16, 8) + twoCounters(8),
             {wordFrame("A", 5, 3, 0, 3), wordFrame("B", 6, 1, 1, 8)});
        f->ui.otherwise = adjusts ? Button::Yes : Button::No;
        ASSERT_TRUE(editFrameAttribute(format(), f->parent, "MF1", "15"));
        ASSERT_EQ(f->ui.boxes.size(), 1U);
        EXPECT_NE(question().text.find("A: lost"), std::string::npos) << question().text;
        EXPECT_NE(question().text.find("ID counter SFID2: lost. Adjusted: it is found"),
                  std::string::npos)
            << question().text;
        if (adjusts) {
            expectLoaded("A", {{5, 3}});
            EXPECT_EQ(format().idCounters[0].name, "SFID2");
            EXPECT_EQ(wordOfIdCounter(format(), 0), 4);
        } else {
            ASSERT_TRUE(savePcmFormat(format(), nullptr));
            f->ui.otherwise = Button::Cancel;
            ASSERT_TRUE(f->reload());
            EXPECT_FALSE(format().hasMeasurement("A")) << "the numbers of the file have a gap";
            EXPECT_EQ(countIdCounters(format()), 0);
        }
    }
}

TEST_F(CounterRefit, ACounterThatIsDeletedLeavesNoGapBeforeOthersAndTheirSubframes) {
    const auto subframes =
        Commands{"SF\\N-2:1", "SF1-2-1:T", "SF2-2-1:NO", "SF4-2-1-1:9", "SF6-2-1:8"};
    load(2004, plainFormat(16, 8) + twoCounters(8) + subframes,
         {{"MN@:A", "LT@:SF", "SF1@:T", "SF2@:5"}, {"MN@:B", "LT@:MF", "MF@:7"}});
    f->ui.otherwise = Button::Cancel;
    f->ui.byId[129] = Button::Yes;
    EXPECT_FALSE(deleteIdCounterAndAdjust(format(), f->parent, 15));
    EXPECT_EQ(countIdCounters(format()), 2);
    f->ui.otherwise = Button::Yes;
    ASSERT_TRUE(deleteIdCounterAndAdjust(format(), f->parent, 15));
    EXPECT_NE(question().text.find("A: elsewhere. Adjusted: the places of its subframe"),
              std::string::npos)
        << question().text;
    EXPECT_NE(question().text.find("ID counter SFID2"), std::string::npos) << question().text;
    EXPECT_EQ(question().text.find("B:"), std::string::npos) << question().text;
    expectLoaded("A", {{9, 5}});
    EXPECT_EQ(countIdCounters(format()), 1);
    EXPECT_EQ(format().idCounters[0].name, "SFID2");
}

TEST_F(CounterRefit, TheLastCounterIsDeletedWithoutAQuestionOfThisKind) {
    load(2004, plainFormat(16, 8) + counterAt(4, 8), {{"MN@:B", "LT@:MF", "MF@:7"}});
    f->ui.byId[129] = Button::Yes;
    ASSERT_TRUE(deleteIdCounterAndAdjust(format(), f->parent, 4));
    EXPECT_EQ(f->ui.boxes.size(), 1U);
    expectLoaded("B", {{7, 1}});
}

}  // namespace
}  // namespace kavu
