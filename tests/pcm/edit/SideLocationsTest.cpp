#include "pcm/FrameAdjustStage.h"
#include "pcm/edit/FrameEditWords.h"
#include "pcm/edit/SideLocations.h"
#include "pcm/undo/StreamUndo.h"

namespace kavu {
namespace {

using test::Commands;
using test::plainFormat;
using test::operator+;

using SideLocationsTest = test::FrameAdjustTest;

TEST_F(SideLocationsTest, TheFormatIdentifierAndTheFirstTagMoveWithTheirWords) {
    const auto side = Commands{"FFI1:5", "FFI2:FW", "ALT\\N:2", "ALT1:4", "ALT2:8", "ALT3:73"};
    load(2009, plainFormat(16, 4) + side, {});
    // The tag begins with word 4: 24 bits of the sync word, and three words of 16.
    ASSERT_TRUE(insertFwps(format(), f->parent, 3, 1));
    ASSERT_EQ(f->ui.boxes.size(), 1U);
    EXPECT_NE(question().text.find("Frame format identifier, word 5: elsewhere. Adjusted: 6\n"),
              std::string::npos)
        << question().text;
    EXPECT_NE(question().text.find("First tag, bit 73: elsewhere. Adjusted: 89\n"),
              std::string::npos)
        << question().text;
    const auto lines = [&] {
        EXPECT_TRUE(savePcmFormat(format(), nullptr));
        return f->saved("[kavu]PCMFMT.P01");
    };
    const auto has = [](const Commands& all, const std::string& line) {
        return std::find(all.begin(), all.end(), "P-1\\" + line + ";") != all.end();
    };
    EXPECT_TRUE(has(lines(), "FFI1:6"));
    EXPECT_TRUE(has(lines(), "ALT3:89"));
    EXPECT_TRUE(has(lines(), "FFI2:FW"));

    // 105 has no place in the two digits of the field.
    ASSERT_TRUE(insertFwps(format(), f->parent, 3, 1));
    EXPECT_NE(question().text.find("First tag, bit 89: elsewhere. Cannot be adjusted\n"),
              std::string::npos)
        << question().text;
    EXPECT_TRUE(has(lines(), "FFI1:7"));
    EXPECT_TRUE(has(lines(), "ALT3:89"));

    f->ui.otherwise = Button::Cancel;
    EXPECT_FALSE(insertFwps(format(), f->parent, 3, 1));
    EXPECT_TRUE(has(lines(), "FFI1:7")) << "taken back with the words";
    f->ui.otherwise = Button::No;
    ASSERT_TRUE(insertFwps(format(), f->parent, 3, 1));
    EXPECT_TRUE(has(lines(), "FFI1:7")) << "left";
    f->ui.otherwise = Button::Yes;
    EXPECT_TRUE(editFrameAttribute(format(), f->parent, "MF1", "7"));
    EXPECT_NE(question().text.find("Frame format identifier, word 7: elsewhere. Cannot be "),
              std::string::npos)
        << question().text;
}

TEST_F(SideLocationsTest, AnUndoPutsTheFormatIdentifierBack) {
    load(2009, plainFormat(16, 4) + Commands{"FFI1:5"}, {});
    StreamUndo undo(format());
    ASSERT_TRUE(insertFwps(format(), f->parent, 3, 2));
    undo.commit();
    EXPECT_EQ(readSideRecords(format(), nullptr).formatSwitch.value("FFI1"), "7");
    ASSERT_TRUE(undo.undo());
    EXPECT_EQ(readSideRecords(format(), nullptr).formatSwitch.value("FFI1"), "5");
    ASSERT_TRUE(undo.redo());
    EXPECT_EQ(readSideRecords(format(), nullptr).formatSwitch.value("FFI1"), "7");
}

}  // namespace
}  // namespace kavu
