#include "xml/bridge/write/TagWriter.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

template <class Write>
std::string written(Write&& write) {
    std::string text;
    {
        TagWriter tags([&](std::string_view piece) { text += piece; });
        write(tags);
    }
    return text;
}

TEST(TagWriter, WritesNothingOfAnElementWithoutContent) {
    EXPECT_EQ(written([](TagWriter& tags) {
                  tags.open("A Name=\"x\"");
                  tags.open("B");
                  tags.close();
                  tags.close();
              }),
              "");
}

TEST(TagWriter, WritesTheWaitingTagsBeforeTheFirstValue) {
    EXPECT_EQ(written([](TagWriter& tags) {
                  tags.open("A Name=\"x\"");
                  tags.open("B");
                  tags.value("C", "1");
                  tags.close();
                  tags.open("D");
                  tags.close();
                  tags.close();
              }),
              "<A Name=\"x\">\n\t<B>\n\t\t<C>1</C>\n\t</B>\n</A>\n");
}

TEST(TagWriter, LeavesOutAValueOfBlanksButKeepsTheBlanksOfOthers) {
    EXPECT_EQ(written([](TagWriter& tags) {
                  tags.value("A", " \t ");
                  tags.value("B", " x ");
              }),
              "<B> x </B>\n");
}

TEST(TagWriter, WritesAnEmptyValueThatHasAnAttribute) {
    EXPECT_EQ(written([](TagWriter& tags) { tags.value("A N=\"0\"", ""); }), "<A N=\"0\" />\n");
}

TEST(TagWriter, WritesAnEmptyElementThatIsKept) {
    EXPECT_EQ(written([](TagWriter& tags) {
                  tags.open("A");
                  tags.open("B Type=\"x\"");
                  tags.close(true);
                  tags.close();
              }),
              "<A>\n\t<B Type=\"x\" />\n</A>\n");
}

TEST(TagWriter, MakesBlankLinesOfLineFeedsInFrontOfATagOrComment) {
    EXPECT_EQ(written([](TagWriter& tags) {
                  tags.open("A");
                  tags.comment("\n\nnote");
                  tags.open("\nB");
                  tags.value("C", "1");
                  tags.close();
                  tags.close();
              }),
              "<A>\n\n\n\t<!-- note -->\n\n\t<B>\n\t\t<C>1</C>\n\t</B>\n</A>\n");
}

TEST(TagWriter, WritesTheCommentOfAnElementOnlyWithIt) {
    EXPECT_EQ(written([](TagWriter& tags) {
                  tags.open("A", "\nA Group");
                  tags.close();
                  tags.open("B", "\nB Group");
                  tags.value("C", "1");
                  tags.close();
              }),
              "\n<!-- B Group -->\n<B>\n\t<C>1</C>\n</B>\n");
}

TEST(TagWriter, WritesOfACheckedPartWhatTheSchemaAllows) {
    std::vector<std::string> lost;
    const SchemaTree schema('T', {}, [&](const std::string& code) { lost.push_back(code); });
    EXPECT_EQ(written([&](TagWriter& tags) {
                  tags.open("TransmissionAttributes");
                  tags.beginChecked();
                  tags.open("SourceRFAttributes");
                  tags.value("Frequency", "2", "T-1\\RF1");
                  tags.value("Unknown", "3", "T-1\\X");
                  tags.open("Subcarrier");
                  tags.value("Number", "0.5", "T-1\\SCO1-1");
                  tags.close();
                  tags.close();
                  tags.endChecked(schema);
                  tags.close();
              }),
              "<TransmissionAttributes>\n\t<SourceRFAttributes>\n\t\t<Frequency>2</Frequency>\n"
              "\t</SourceRFAttributes>\n</TransmissionAttributes>\n");
    EXPECT_EQ(lost, (std::vector<std::string>{"T-1\\X", "T-1\\SCO1-1"}));
}

}  // namespace
}  // namespace kavu
