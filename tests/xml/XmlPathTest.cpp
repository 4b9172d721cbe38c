#include "xml/XmlPath.h"

#include <gtest/gtest.h>

namespace kavu::test {
namespace {

TEST(XmlPathTest, PutsTheRootInFront) {
    const std::pair<const char*, const char*> paths[] = {
        {"/A", "//R/A"},   {"/A/", "//R/A"},   {"A", "//R/A"},
        {"/", "//R"},      {"//R/A", "//R/A"}, {"//R", "//R"},
        {"[1]", "//R[1]"}, {"//A", "//R//A"},  {"/A[.=\"x//y\"]", "//R/A[.=\"x//y\"]"},
    };
    for (const auto& [path, full] : paths) {
        EXPECT_EQ(fullXmlPath(path, "//R"), full) << path;
    }
}

TEST(XmlPathTest, RefusesASecondDoubleSlash) {
    for (const char* const path :
         {"", "///A", "/A///B", "/A//B", "//R//A", "/A//", "/A[.='x//y']", "/A[.=\"x///y\"]"}) {
        EXPECT_FALSE(fullXmlPath(path, "//R")) << path;
    }
}

TEST(XmlPathTest, FindsTheLastStepOutsideQuotesAndBrackets) {
    EXPECT_EQ(lastXmlStep("//R"), std::string::npos);
    EXPECT_EQ(lastXmlStep("//R/A"), 3U);
    EXPECT_EQ(lastXmlStep("//R/A[B/C=\"/\"]"), 3U);
    EXPECT_EQ(lastXmlStep("//R/A[.='\"/']/B"), 13U);
}

TEST(XmlPathTest, AStepIsANameWithAttributes) {
    const auto step = parseXmlStep("A[@b=\"1\"][@c='x' and @d = \"y\"]");
    ASSERT_TRUE(step);
    EXPECT_EQ(step->name, "A");
    const std::vector<std::pair<std::string, std::string>> attributes{
        {"b", "1"}, {"c", "x"}, {"d", "y"}};
    EXPECT_EQ(step->attributes, attributes);
    for (const char* const text :
         {"", "*", "@a", ".", "..", "A[1]", "A[B='x']", "A[@b]", "A[@b='x'", "A[@b='x' or @c='y']",
          "text()", "child::A", "A[@b='x']x"}) {
        EXPECT_FALSE(parseXmlStep(text)) << text;
    }
}

}  // namespace
}  // namespace kavu::test
