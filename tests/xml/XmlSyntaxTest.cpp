#include "xml/XmlSyntax.h"

#include <gtest/gtest.h>

namespace kavu::test {
namespace {

TEST(XmlSyntaxTest, TakesWhatIsWellFormed) {
    for (const char* const text :
         {"<a/>", "<a></a>", "<?xml version=\"1.0\"?>\n<a/>\n", "<!-- x --><a/><!-- y --><?p q?>",
          "<a b='1' c=\"2\"/>", "<a b = '>' />", "<a>&amp;&lt;&gt;&quot;&apos;&#65;&#x1F600;</a>",
          "<a><![CDATA[<]]></a>", "<a:b xmlns:a='u'/>", "<a\n\tb='1'\n/>", "<a>]] ></a>",
          "<?xml-stylesheet href='x'?><a/>", "<\xC3\xA4/>"}) {
        EXPECT_FALSE(checkXml(text).fault) << text;
    }
}

struct Fault {
    const char* text;
    std::size_t line;
    const char* reason;
};

TEST(XmlSyntaxTest, StatesLineAndReasonOfAFault) {
    const Fault faults[] = {
        {"", 1, "no element"},
        {" \n", 2, "no element"},
        {"<a/>\n<b/>", 2, "more than one root element"},
        {"<a b='1'\n b='2'/>", 2, "the attribute 'b' twice"},
        {"<a>\n\x01</a>", 2, "a character that XML does not allow"},
        {"<a>\xEF\xBF\xBF</a>", 1, "a character that XML does not allow"},
        {"<a>\xF6</a>", 1, "not UTF-8"},
        {"<!DOCTYPE a><a/>", 1, "a document type is not read"},
        {"<a>&b;</a>", 1, "an unknown entity"},
        {"<a>&#0;</a>", 1, "an unknown entity"},
        {"<a>&#xD800;</a>", 1, "an unknown entity"},
        {"<a>& </a>", 1, "an unknown entity"},
        {"<a b='&c;'/>", 1, "'<' or an unknown entity in the attribute 'b'"},
        {"<a b='<'/>", 1, "'<' or an unknown entity in the attribute 'b'"},
        {"<a>\n<b>\n</a>", 3, "mismatched tag"},
        {"</a>", 1, "mismatched tag"},
        {"<a>", 1, "the element 'a' is not closed"},
        {"<a", 1, "the tag of 'a' does not end"},
        {"<a b='1'c='2'/>", 1, "no blank before the attribute 'c'"},
        {"<a b/>", 1, "the attribute 'b' has no value in quotes"},
        {"<a b=1/>", 1, "the attribute 'b' has no value in quotes"},
        {"<1/>", 1, "'<' is not followed by a name"},
        {"<a/>x", 1, "text outside the root element"},
        {"<a>]]></a>", 1, "']]>' in a text"},
        {"<a><!-- -- --></a>", 1, "a comment does not end, or holds '--'"},
        {"<![CDATA[x]]><a/>", 1, "a CDATA section outside the root, or without its end"},
        {"<a/><?xml version='1.0'?>", 1,
         "a processing instruction without a name or end, or a second declaration"},
        {"<?xml version='1.0'><a/>", 1, "the declaration does not end"},
        {"<?", 1, "a processing instruction without a name or end, or a second declaration"},
        {"<?xml", 1, "a processing instruction without a name or end, or a second declaration"},
    };
    for (const auto& expected : faults) {
        const auto fault = checkXml(expected.text).fault;
        ASSERT_TRUE(fault) << expected.text;
        EXPECT_EQ(fault->reason, expected.reason) << expected.text;
        EXPECT_EQ(fault->line, expected.line) << expected.text;
    }
}

std::string nested(std::size_t depth) {
    std::string text;
    for (std::size_t i = 0; i < depth; ++i) {
        text += "<a>";
    }
    for (std::size_t i = 0; i < depth; ++i) {
        text += "</a>";
    }
    return text;
}

TEST(XmlSyntaxTest, TakesElements256DeepAndNoDeeper) {
    EXPECT_FALSE(checkXml(nested(256)).fault);
    const auto fault = checkXml(nested(257)).fault;
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->reason, "elements more than 256 deep");
}

TEST(XmlSyntaxTest, ManyAttributesTakeTimeInProportion) {
    std::string text = "<a";
    for (int i = 0; i < 200000; ++i) {
        text += " b" + std::to_string(i) + "=''";
    }
    EXPECT_FALSE(checkXml(text + "/>").fault);
    EXPECT_TRUE(checkXml(text + " b0=''/>").fault);
}

TEST(XmlSyntaxTest, WhiteSpaceIsTextWhereTextAndElementsStandSideBySide) {
    EXPECT_FALSE(checkXml("<a> <b>x</b> </a>").keepsWhiteSpace);
    EXPECT_TRUE(checkXml("<a>x<b/></a>").keepsWhiteSpace);
    EXPECT_TRUE(checkXml("<a><b/>x</a>").keepsWhiteSpace);
    EXPECT_TRUE(checkXml("<a xml:space='preserve'> </a>").keepsWhiteSpace);
}

}  // namespace
}  // namespace kavu::test
