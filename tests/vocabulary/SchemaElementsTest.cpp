#include "vocabulary/SchemaElements.h"
#include "vocabulary/Vocabularies.h"

#include <algorithm>
#include <set>
#include <string>
#include <tuple>

#include <gtest/gtest.h>

namespace kavu {
namespace {

/// What the schema has a text for and TMATS has no command of its own for: the length of a
/// measurement is that of each of its locations, the pattern is stated with its length, and the
/// names of the measurements of a bus in a PCM stream have no command at all.
const std::set<std::string> kWithoutRow = {"D MeasurementList/Measurement/Length",
                                           "B Bus/MeasurementName",
                                           "C DataConversion/Coefficients/Coefficient/@N",
                                           "C DataConversion/NegativePowersOfX/Coefficient/@N"};

std::set<std::string> pathsOf(const GroupVocabulary& group) {
    std::set<std::string> paths;
    for (const auto& field : group.fields) {
        if (!schemaElement(field).empty()) {
            paths.insert(std::string(schemaElement(field)));
        }
    }
    return paths;
}

/// The name of the source or link around a group.
bool isOutside(std::string_view path, char letter) {
    return path == "../@Name" || (path == "@Name" && letter != 'C');
}

TEST(SchemaElements, HaveARowForEachPathOfTheVocabulary) {
    for (const auto& group : vocabularies()) {
        for (const auto& path : pathsOf(group)) {
            EXPECT_TRUE(isOutside(path, group.letter) ||
                        findSchemaElement(group.letter, path) != nullptr)
                << group.letter << " " << path;
        }
    }
}

TEST(SchemaElements, AreAllInTheVocabulary) {
    for (const auto& group : vocabularies()) {
        const auto paths = pathsOf(group);
        for (const auto& element : schemaElements(group.letter)) {
            const auto name = std::string(1, group.letter) + " " + std::string(element.path);
            EXPECT_TRUE(element.type == SchemaType::Group || kWithoutRow.contains(name) ||
                        paths.contains(std::string(element.path)))
                << name;
        }
    }
}

TEST(SchemaElements, AreChoicesWhereTheVocabularyHasTextsForThem) {
    for (const auto& group : vocabularies()) {
        for (const auto& field : group.fields) {
            const auto* const element = findSchemaElement(group.letter, schemaElement(field));
            if (element == nullptr || element->type != SchemaType::Choice ||
                !element->words.empty()) {
                continue;
            }
            EXPECT_TRUE(
                std::any_of(field.choices.begin(), field.choices.end(),
                            [](const Choice& choice) { return !schemaText(choice).empty(); }))
                << group.letter << " " << field.code;
        }
    }
}

TEST(SchemaElements, RepeatWhereACountOfTheVocabularySaysSo) {
    for (const auto& group : vocabularies()) {
        for (const auto& field : group.fields) {
            const auto* const element = findSchemaElement(group.letter, schemaElement(field));
            if (field.kind == FieldKind::Count && field.rows > 0 && element != nullptr &&
                element->path != "InflightCalibration" && element->path != "AmbientValue") {
                EXPECT_TRUE(element->repeats) << group.letter << " " << field.code;
            }
        }
    }
}

class SchemaText : public testing::TestWithParam<std::tuple<SchemaType, const char*, bool>> {};

TEST_P(SchemaText, IsTakenByItsType) {
    const auto& [type, text, taken] = GetParam();
    EXPECT_EQ(isSchemaText({.type = type}, text), taken) << text;
}

using Type = SchemaType;
INSTANTIATE_TEST_SUITE_P(
    OfEachType, SchemaText,
    testing::Values(
        std::tuple(Type::Date, "2009-01-02", true), std::tuple(Type::Date, "2009-13-02", false),
        std::tuple(Type::Date, "2009-02-30", false), std::tuple(Type::Date, "09-01-02", false),
        std::tuple(Type::DateTime, "2009-01-02T03:04:05", true),
        std::tuple(Type::DateTime, "2009-01-02T24:04:05", false),
        std::tuple(Type::DateTime, "2009-01-02", false), std::tuple(Type::Double, "1E3", true),
        std::tuple(Type::Double, "+1.5", true), std::tuple(Type::Double, "0x10", false),
        std::tuple(Type::Double, "inf", false), std::tuple(Type::Double, "", false),
        std::tuple(Type::Double, "1 V", false), std::tuple(Type::IntegerOrDouble, "65535", true),
        std::tuple(Type::IntegerOrDouble, "4294967296", false),
        std::tuple(Type::IntegerOrDouble, "99.5", true),
        std::tuple(Type::IntegerOrDouble, "100.5", false),
        std::tuple(Type::DoubleOrSign, "S", true), std::tuple(Type::DoubleOrSign, "T", false),
        std::tuple(Type::Integer, "-1", true), std::tuple(Type::NonNegative, "0", true),
        std::tuple(Type::NonNegative, "-0", true), std::tuple(Type::NonNegative, "-1", false),
        std::tuple(Type::Positive, "0", false), std::tuple(Type::Positive, "007", true),
        std::tuple(Type::Positive, "1.0", false), std::tuple(Type::Binary, "0101", true),
        std::tuple(Type::Binary, "0102", false), std::tuple(Type::BinaryOrAny, "01X", true),
        std::tuple(Type::Mask, "Full Word", true), std::tuple(Type::Mask, "FW", false),
        std::tuple(Type::HexBinary, "0F", true), std::tuple(Type::HexBinary, "F", false),
        std::tuple(Type::HexDigits, "2", false), std::tuple(Type::Text, "anything", true)));

TEST(SchemaElements, LimitNumbers) {
    const auto* const words = findSchemaElement('P', "Format/CommonWordLength");
    ASSERT_NE(words, nullptr);
    EXPECT_TRUE(isSchemaText(*words, "64"));
    EXPECT_FALSE(isSchemaText(*words, "65"));
    EXPECT_FALSE(isSchemaText(*words, "3"));
    const auto* const supercom = findSchemaElement('P', "AsyncEmbeddedFormat/Supercom");
    ASSERT_NE(supercom, nullptr);
    EXPECT_TRUE(isSchemaText(*supercom, "No"));
    EXPECT_TRUE(isSchemaText(*supercom, "12"));
    EXPECT_FALSE(isSchemaText(*supercom, "NO"));
    const auto* const delimiter = findSchemaElement('S', "Stream/Delimited/FieldDelimiter");
    ASSERT_NE(delimiter, nullptr);
    EXPECT_TRUE(isSchemaText(*delimiter, "Tab"));
    EXPECT_FALSE(isSchemaText(*delimiter, "Ta"));
}

}  // namespace
}  // namespace kavu
