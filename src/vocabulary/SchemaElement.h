// An element of the schema of IRIG 106-11, and what it takes for a text.
#pragma once

#include <cstdint>
#include <string_view>

namespace kavu {

/// What the schema takes for the text of an element.
enum class SchemaType : std::uint8_t {
    Group,  ///< elements, no text
    Text,
    Choice,  ///< a text of the field's choices, or of `words`
    Date,
    DateTime,
    Double,
    IntegerOrDouble,  ///< a 32-bit integer, or a number from -100 to 100
    DoubleOrSign,     ///< a number, or "S"
    Integer,
    NonNegative,
    Positive,
    Binary,        ///< "0" and "1"
    BinaryOrAny,   ///< "0", "1", "X" and "|"
    Mask,          ///< "0" and "1", or "Full Word"
    HexBinary,     ///< pairs of hexadecimal digits
    HexDigits,     ///< "0", "1" and "A" to "F"
    NumberOrWord,  ///< digits, or the one of `words`
};

struct SchemaElement {
    std::string_view path{};  ///< relative to the group's element; a step "@Name" is an attribute
    SchemaType type = SchemaType::Group;
    bool repeats = false;
    bool isRequired = false;  ///< where the element around it is
    std::uint16_t least = 0;  ///< of a number; 0 and 0 is no limit
    std::uint16_t most = 0;
    std::string_view words{};  ///< with a blank between
};

}  // namespace kavu
