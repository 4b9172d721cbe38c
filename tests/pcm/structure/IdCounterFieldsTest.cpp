#include "pcm/StreamFixture.h"
#include "pcm/model/PcmFormatFields.h"
#include "pcm/structure/IdCounterFields.h"

namespace kavu {
namespace {

using test::StreamFixture;

class IdCounterFieldsTest : public ::testing::Test, public StreamFixture {
  protected:
    IdCounterFieldsTest() {
        createIdCounter(format, nullptr, 3);
        counter = *format.idCounterOfWord(3);
    }
    bool edit(std::string_view code, std::string_view value) {
        return editIdCounterField(format, parent, counter, code, value);
    }
    IdCounter counter;
};

TEST_F(IdCounterFieldsTest, EveryFieldOfTheFormIsOneOfTheCounter) {
    for (const auto& field : idCounterFields()) {
        // The end frame is above the start frame, which comes first.
        const std::string value = field.code == "IDC9" ? "3" : "2";
        EXPECT_TRUE(edit(field.code, value)) << field.code;
        EXPECT_EQ(idCounterValue(counter, field.code), value);
    }
    EXPECT_FALSE(edit("IDC1", "2")) << "the word is not in the record";
    EXPECT_EQ(idCounterValue(counter, "XX"), "");
}

TEST_F(IdCounterFieldsTest, ValuesOfANewCounter) {
    const auto values = idCounterValues(counter);
    EXPECT_EQ(values.at("ISF1"), "SFID");
    EXPECT_EQ(values.at("IDC9"), "8");
    EXPECT_FALSE(values.contains("IDC5")) << "a transfer order is chosen by nobody";
}

TEST_F(IdCounterFieldsTest, TheEndValueFollows) {
    EXPECT_TRUE(edit("IDC6", "10"));
    EXPECT_EQ(counter.endValue, "17");
    EXPECT_TRUE(edit("IDC10", "DEC"));
    EXPECT_EQ(counter.endValue, "3");
    EXPECT_TRUE(edit("IDC9", "5"));
    EXPECT_EQ(counter.endValue, "6");
    EXPECT_TRUE(edit("IDC7", "2"));
    EXPECT_EQ(counter.endValue, "7");
    EXPECT_TRUE(edit("IDC6", "1"));
    EXPECT_EQ(counter.endValue, "1") << "a counter sends nothing below 1";
}

TEST_F(IdCounterFieldsTest, RefusedValuesLeaveTheCounter) {
    const auto before = counter;
    EXPECT_FALSE(edit("IDC3", "0"));
    EXPECT_FALSE(edit("IDC7", "0"));
    EXPECT_FALSE(edit("IDC7", "8"));
    EXPECT_FALSE(edit("IDC9", "9"));
    EXPECT_FALSE(edit("IDC9", "1"));
    EXPECT_EQ(ui.countBoxes(366), 1);
    EXPECT_EQ(ui.countBoxes(363), 2);
    EXPECT_EQ(ui.countBoxes(364), 2);
    EXPECT_EQ(counter, before);
}

TEST_F(IdCounterFieldsTest, TheTitleTellsTheWord) {
    EXPECT_EQ(definitionTitle("ID Counter Definition", true, 3),
              "Create New ID Counter Definition (FWP: 3)");
    EXPECT_EQ(definitionTitle("Subframe Definition", false, 12),
              "Edit Subframe Definition (FWP: 12)");
}

}  // namespace
}  // namespace kavu
