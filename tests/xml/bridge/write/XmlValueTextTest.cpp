#include "xml/bridge/write/XmlValueText.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

std::string classic(std::string_view text) {
    return xmlValueText(text, XmlDialect::Classic);
}
std::string schema(std::string_view text) {
    return xmlValueText(text, XmlDialect::Schema);
}

TEST(XmlValueText, EscapesTheAmpersandThatTheSessionHasEscaped) {
    EXPECT_EQ(classic("a&amp;b"), "a&amp;amp;b");
    EXPECT_EQ(classic("a&lt;b"), "a&amp;lt;b");
}

TEST(XmlValueText, NamesUmlautsBeforeItEscapesTheAmpersand) {
    EXPECT_EQ(classic("öäüÖÄÜß"),
              "&amp;ouml;&amp;auml;&amp;uuml;&amp;Ouml;&amp;Auml;&amp;Uuml;&amp;szlig;");
    EXPECT_EQ(classic("é"), "é");
}

TEST(XmlValueText, EscapesMarkupQuotesAndBreaks) {
    EXPECT_EQ(classic("<>\"'"), "&lt;&gt;&quot;&apos;");
    EXPECT_EQ(classic("a\r\nb"), "a &#10;b");
}

TEST(XmlValueText, ReadsBytesThatAreNotUtf8AsWindows1252) {
    EXPECT_EQ(classic("\xF6"), "&amp;ouml;");
    EXPECT_EQ(classic("\x80"), "€");
}

TEST(XmlValueText, ReplacesWhatXmlCannotHold) {
    EXPECT_EQ(classic(std::string_view("a\x01"
                                       "b\0c",
                                       5)),
              "a\xEF\xBF\xBD"
              "b\xEF\xBF\xBD"
              "c");
    EXPECT_EQ(classic("\xEF\xBF\xBF"), "\xEF\xBF\xBD");
}

TEST(XmlValueText, EscapesOnceInTheSchemasDialect) {
    EXPECT_EQ(schema("a&b<ö'\r\n\t"), "a&amp;b&lt;ö'&#13;&#10;&#9;");
}

TEST(XmlValueText, KeepsACommentFromEnding) {
    EXPECT_EQ(xmlCommentText("a--b"), "a- -b");
    EXPECT_EQ(xmlCommentText("a---b"), "a- - -b");
    EXPECT_EQ(xmlCommentText("a<&b"), "a<&b");
}

}  // namespace
}  // namespace kavu
