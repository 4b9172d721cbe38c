#include "core/document/ConversionComments.h"
#include "core/document/DocumentFiles.h"
#include "support/TestContext.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

class ConversionCommentsTest : public ::testing::Test {
  protected:
    /// The written group with the comments.
    std::string joined(std::string_view group) {
        const auto in = t.folder / "group";
        const auto out = t.folder / "out";
        test::writeFile(in, group);
        FileWriter target;
        EXPECT_TRUE(target.open(out, WriteMode::Truncate).ok());
        EXPECT_TRUE(joinConversionComments(t.files, t.reader, in, target).ok());
        EXPECT_TRUE(target.close().ok());
        return test::readFile(out);
    }
    IoStatus store(const ConversionComments& comments) {
        const LoadScope scope(t.files);
        return comments.store(t.files);
    }

    test::TestContext t;
};

TEST_F(ConversionCommentsTest, StandInFrontOfTheirCommandWhateverItsNumber) {
    ConversionComments comments;
    comments.add("C-7\\CO-1:1;", "COMMENT: first;\r\n");
    comments.note("C-7\\CO-1:1;");
    comments.add("C-9\\DCN:B ;",
                 "COMMENT: a\x14\x15"
                 "b;\r\n");
    comments.note("C-9\\DCN:B ;");
    comments.note("C-7\\DCN:A;");
    comments.add("C-7\\GONE:1;", "COMMENT: gone;\r\n");
    comments.add("C-3\\DCT:NON;", "COMMENT: nameless;\r\n");
    comments.add({}, "COMMENT: end;\r\n");
    ASSERT_TRUE(store(comments).ok());
    EXPECT_EQ(
        joined("C-1\\DCN:A;\r\nC-1\\co-1:1;\r\nC-2\\DCN:B;\r\nC-2\\CO-1:2;\r\n"),
        "C-1\\DCN:A;\r\nCOMMENT: first;\r\nC-1\\co-1:1;\r\nCOMMENT: gone;\r\nCOMMENT: end;\r\n"
        "COMMENT: a\r\nb;\r\nC-2\\DCN:B;\r\nC-2\\CO-1:2;\r\nCOMMENT: nameless;\r\n");
}

TEST_F(ConversionCommentsTest, FollowARecordToItsNewName) {
    ConversionComments comments;
    comments.note("C-1\\DCN:A;");
    comments.add("C-1\\DCT:NON;", "COMMENT: NAME:A;\r\n");
    ASSERT_TRUE(store(comments).ok());
    const ChangeScope scope(t.files);
    EXPECT_TRUE(renameConversionComments(t.files, t.reader, "A", "New").ok());
    EXPECT_EQ(joined("C-1\\DCN:New;\r\nC-1\\DCT:NON;\r\n"),
              "C-1\\DCN:New;\r\nCOMMENT: NAME:A;\r\nC-1\\DCT:NON;\r\n");
}

TEST_F(ConversionCommentsTest, WithoutAnyThereIsNoFile) {
    EXPECT_TRUE(store(ConversionComments()).ok());
    EXPECT_FALSE(t.has("[kavu]CCOM.C"));
    EXPECT_TRUE(renameConversionComments(t.files, t.reader, "A", "B").ok());
    EXPECT_FALSE(t.has("[kavu]CCOM.C"));
}

}  // namespace
}  // namespace kavu
