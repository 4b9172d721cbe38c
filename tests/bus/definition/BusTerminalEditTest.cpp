#include "bus/BusStage.h"
#include "bus/definition/BusTerminalEdit.h"

namespace kavu {
namespace {

using test::BusStage;
using Terminals = std::vector<Terminal>;

class BusTerminalEditing : public testing::Test {
  protected:
    BusTerminalEditing() {
        definition = stage.unpack({"DLN:Bus 1", "NBS\\N:1", "NMS\\N-1:1", "TRN-1-1:RT5",
                                   "TRA-1-1:00101", "STA-1-1:00001"});
    }
    bool enter(TerminalKind kind, const Terminal& terminal, std::size_t number = 0) {
        return enterTerminal(stage.t.context, &stage.t.ui, definition, 1, kind, terminal, number);
    }
    [[nodiscard]] const BusTerminals& lists() const { return definition.listKnownTerminals(1); }
    std::string defaultOf(const std::string& section, const std::string& key) {
        return stage.t.settings.profileText(section, key, "-");
    }

    BusStage stage;
    BusDefinition definition;
};

TEST_F(BusTerminalEditing, ATerminalIsAddedAndChanged) {
    EXPECT_TRUE(enter(TerminalKind::Remote, {"RT6", "110"}));
    EXPECT_TRUE(enter(TerminalKind::Sub, {"Sub", ""}));
    EXPECT_EQ(lists().remote, (Terminals{{"RT5", "00101"}, {"RT6", "00110"}}));
    EXPECT_EQ(lists().sub, (Terminals{{"", "00001"}, {"Sub", "00000"}}));
    EXPECT_TRUE(enter(TerminalKind::Remote, {"RT6", "00111"}, 2));
    EXPECT_EQ(lists().remote[1], (Terminal{"RT6", "00111"}));
}

TEST_F(BusTerminalEditing, WrongTerminalsAreRefused) {
    EXPECT_FALSE(enter(TerminalKind::Remote, {"A", "00x01"}));
    EXPECT_FALSE(enter(TerminalKind::Remote, {"A;B", "1"}));
    EXPECT_FALSE(enter(TerminalKind::Remote, {"RT5", "1"}));
    EXPECT_FALSE(enter(TerminalKind::Remote, {"Other", "101"}));
    EXPECT_EQ(stage.shown(), (std::vector<int>{376, 402, 321, 321}));
    EXPECT_FALSE(enter(TerminalKind::Remote, {std::string(33, 'x'), "1"}));
    EXPECT_FALSE(enter(TerminalKind::Remote, {"A", "111111"}));
    EXPECT_FALSE(enter(TerminalKind::Remote, {}));
    EXPECT_FALSE(enter(TerminalKind::Remote, {"A", "1"}, 7));
    EXPECT_FALSE(
        enterTerminal(stage.t.context, &stage.t.ui, definition, 2, TerminalKind::Sub, {"A", "1"}));
    EXPECT_EQ(lists().remote.size(), 1U);
}

TEST_F(BusTerminalEditing, AMessageMakesItsTerminalsKnown) {
    auto form = test::goodMessage();
    form.values.emplace_back("TRN", "RT7");
    form.values[1].second = "00111";
    ASSERT_TRUE(stage.edit(definition).add({1}, form));
    EXPECT_EQ(lists().remote, (Terminals{{"RT5", "00101"}, {"RT7", "00111"}}));
    EXPECT_EQ(lists().sub, (Terminals{{"", "00001"}, {"", "00010"}}));
}

TEST_F(BusTerminalEditing, SavedDefaultsReplaceTheFormerOnes) {
    stage.t.settings.writeProfile("DefaultRemoteTerminals", "N7", "Former");
    EXPECT_FALSE(saveTerminalsAsDefaults(stage.t.context, &stage.t.ui, definition, 1));
    EXPECT_EQ(defaultOf("DefaultRemoteTerminals", "N7"), "Former");
    stage.t.ui.byId[394] = Button::Yes;
    EXPECT_TRUE(saveTerminalsAsDefaults(stage.t.context, &stage.t.ui, definition, 1));
    EXPECT_EQ(stage.shown(), (std::vector<int>{394, 394}));
    EXPECT_EQ(defaultOf("DefaultRemoteTerminals", "N7"), "-");
    EXPECT_EQ(defaultOf("DefaultRemoteTerminals", "N0"), "RT5");
    EXPECT_EQ(defaultOf("DefaultRemoteTerminals", "A0"), "00101");
    EXPECT_EQ(defaultOf("DefaultSubTerminals", "A0"), "00001");
}

TEST_F(BusTerminalEditing, DefaultsThatAreMissingAreAddedAfterAQuestion) {
    auto& settings = stage.t.settings;
    settings.writeProfile("DefaultRemoteTerminals", "N0", "RT5");
    settings.writeProfile("DefaultRemoteTerminals", "A0", "11110");
    settings.writeProfile("DefaultRemoteTerminals", "N1", "RT8");
    settings.writeProfile("DefaultRemoteTerminals", "A1", "01000");
    settings.writeProfile("DefaultRemoteTerminals", "A2", "01001");
    settings.writeProfile("DefaultRemoteTerminals", "N4", "behind a gap");
    EXPECT_FALSE(loadDefaultTerminals(stage.t.context, &stage.t.ui, definition, 1));
    EXPECT_EQ(lists().remote.size(), 1U);
    ASSERT_EQ(stage.shown(), std::vector<int>{393});
    EXPECT_NE(stage.t.ui.boxes[0].text.find("Sub Terminals:\n\n\t(none)\n\n"), std::string::npos);
    EXPECT_NE(
        stage.t.ui.boxes[0].text.find("Remote Terminals:\n\n\tRT8\t01000\n\t\t01001\n\nContinue?"),
        std::string::npos)
        << stage.t.ui.boxes[0].text;
    stage.t.ui.otherwise = Button::Yes;
    EXPECT_TRUE(loadDefaultTerminals(stage.t.context, &stage.t.ui, definition, 1));
    EXPECT_EQ(lists().remote, (Terminals{{"RT5", "00101"}, {"RT8", "01000"}, {"", "01001"}}))
        << "names are compared, not addresses";
}

TEST_F(BusTerminalEditing, DefaultsThatAreAllThereGiveTheNoteAndAddNothing) {
    stage.t.ui.otherwise = Button::Yes;
    ASSERT_TRUE(saveTerminalsAsDefaults(stage.t.context, &stage.t.ui, definition, 1));
    stage.t.ui.boxes.clear();
    const auto before = lists();
    EXPECT_FALSE(loadDefaultTerminals(stage.t.context, &stage.t.ui, definition, 1));
    EXPECT_EQ(lists(), before);
    ASSERT_EQ(stage.t.ui.boxes.size(), 1U);
    EXPECT_EQ(stage.t.ui.boxes[0].text,
              "No new default terminal definitions existed, or they are already defined");
}

}  // namespace
}  // namespace kavu
