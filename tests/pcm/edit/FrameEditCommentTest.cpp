#include "pcm/PcmLoad.h"
#include "pcm/StreamFixture.h"
#include "pcm/edit/FrameEditComment.h"
#include "pcm/undo/StreamUndo.h"

namespace kavu {
namespace {

using test::StreamFixture;

TEST(FrameEditComment, LinesAreKeptInOneCommand) {
    StreamFixture f;
    EXPECT_EQ(readMeasurementComment(f.format, f.parent), "");
    f.format.changed = false;
    ASSERT_TRUE(storeMeasurementComment(f.format, f.parent, "one\r\ntwo"));
    EXPECT_EQ(f.TestContext::read(kMeasurementComment), "one\x14\x15two");
    EXPECT_EQ(readMeasurementComment(f.format, f.parent), "one\r\ntwo");
    EXPECT_TRUE(f.format.changed);
    ASSERT_TRUE(storeMeasurementComment(f.format, f.parent, ""));
    EXPECT_FALSE(f.has(kMeasurementComment));
    EXPECT_TRUE(f.ui.boxes.empty());
}

TEST(FrameEditComment, ACommentThatIsTooLongIsNeitherShownNorKept) {
    StreamFixture f;
    const std::string text(kMostComment + 1, 'x');
    f.write(kMeasurementComment, text);
    f.format.changed = false;
    EXPECT_FALSE(readMeasurementComment(f.format, f.parent));
    EXPECT_TRUE(f.ui.hasBox(324));
    EXPECT_FALSE(storeMeasurementComment(f.format, f.parent, text));
    EXPECT_TRUE(f.ui.hasBox(332));
    EXPECT_FALSE(f.format.changed);
    EXPECT_FALSE(readMeasurementComment(f.format, nullptr));
}

TEST(FrameEditComment, AFileThatCanNotBeReadOrWrittenIsTold) {
    StreamFixture f;
    std::filesystem::create_directory(f.store.pathOf(kMeasurementComment));
    f.format.changed = false;
    EXPECT_FALSE(readMeasurementComment(f.format, f.parent));
    EXPECT_TRUE(f.ui.hasBox(325));
    EXPECT_FALSE(storeMeasurementComment(f.format, f.parent, "text"));
    EXPECT_TRUE(f.ui.hasBox(333));
    EXPECT_FALSE(f.format.changed);
}

TEST(FrameEditComment, ASemicolonIsRefused) {
    StreamFixture f;
    f.format.changed = false;
    EXPECT_FALSE(storeMeasurementComment(f.format, f.parent, "a; b"));
    EXPECT_TRUE(f.ui.hasBox(402));
    EXPECT_FALSE(f.format.changed);
}

TEST(FrameEditComment, AnEditCanBeUndone) {
    StreamFixture f;
    ASSERT_TRUE(storeMeasurementComment(f.format, f.parent, "old"));
    StreamUndo undo(f.format);
    ASSERT_TRUE(storeMeasurementComment(f.format, f.parent, "new"));
    ASSERT_TRUE(undo.commit());
    EXPECT_FALSE(undo.commit());
    ASSERT_TRUE(undo.undo());
    EXPECT_EQ(readMeasurementComment(f.format, f.parent), "old");
    ASSERT_TRUE(undo.redo());
    EXPECT_EQ(readMeasurementComment(f.format, f.parent), "new");
}

}  // namespace
}  // namespace kavu
