#include "xml/XmlText.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>

namespace kavu::test {
namespace {

TEST(XmlTextTest, LeavesOutWhatXmlCannotHold) {
    EXPECT_EQ(xmlCharacters("a\tb\r\nc"), "a\tb\r\nc");
    EXPECT_EQ(xmlCharacters(std::string("a\0b\x14\x15\x1F", 6)), "ab");
    EXPECT_EQ(xmlCharacters("a\xEF\xBF\xBE\xEF\xBF\xBF\xEF\xBF\xBD!"), "a\xEF\xBF\xBD!");
    EXPECT_EQ(xmlCharacters("\xEF\xBF"), "\xC3\xAF\xC2\xBF");
    EXPECT_EQ(xmlCharacters("K\xF6ln"), "K\xC3\xB6ln");
}

TEST(XmlTextTest, KnowsNamesOfElements) {
    for (const char* const name : {"a", "_", "A-1.b", "a:b", "\xC3\xA4"}) {
        EXPECT_TRUE(isXmlName(name)) << name;
    }
    for (const char* const name : {"", "1", "-a", ".a", "a b", "a/b", "a\"", "a>"}) {
        EXPECT_FALSE(isXmlName(name)) << name;
    }
}

TEST(XmlTextTest, LiteralsHoldEveryQuote) {
    for (const char* const value : {"", "a", "a'b", "a\"b", "\"'\"", "\"", "//a\"//b"}) {
        pugi::xml_document document;
        document.append_child("r").append_child(pugi::node_pcdata).set_value(value);
        const auto path = "/r[.=" + xpathLiteral(value) + "]";
        EXPECT_EQ(document.select_nodes(path.c_str()).size(), 1U) << path;
    }
}

}  // namespace
}  // namespace kavu::test
