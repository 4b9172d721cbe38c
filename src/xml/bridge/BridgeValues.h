// What both directions between TMATS and TMATS XML know of values: their texts, dates and masks.
#pragma once

#include "vocabulary/Field.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kavu {

/// The two ways to write TMATS as XML.
enum class XmlDialect {
    Classic,  ///< the default form, whose two directions are not inverse
    Schema    ///< as the public schema of IRIG 106-11 has it
};

/// The namespace of documents in the schema's dialect.
inline constexpr std::string_view kSchemaNamespace =
    "https://wsmrc2vger.wsmr.army.mil/rcc/manuals/106-11";

/// The elements of what its makers define themselves: the V group of a source, and the H group.
inline constexpr std::string_view kVendorElement = "VendorSpecificAttributes";
inline constexpr std::string_view kHardwareElement = "AirborneHardwareAttributes";

/// The characters of a date and time with its seconds: 2009-01-02T03:04:05.
inline constexpr std::size_t kDateTimeWidth = 19;

/// The text of XML for a stored value, by the field's choices; without regard to case and to white
/// space around the value. Nothing if the choices do not have the value, or there are none.
[[nodiscard]] std::optional<std::string_view> xmlTextFor(const Field& field, std::string_view value,
                                                         XmlDialect dialect);
/// The stored value for a text of XML, as above. Of two values that have the same text it is the
/// one that newer editions know.
[[nodiscard]] std::optional<std::string_view> valueForXmlText(const Field& field,
                                                              std::string_view text,
                                                              XmlDialect dialect);

/// "01-02-2009" as "2009-01-02", and the way back. Only the places of the "-" are looked at.
/// Empty for any other text, white space around it aside.
[[nodiscard]] std::string xmlDate(std::string_view tmatsDate);
[[nodiscard]] std::string tmatsDate(std::string_view xmlDate);
/// "01-02-2009-03-04-05" as "2009-01-02T03:04:05", and the way back, which leaves out what follows
/// the seconds. Empty for any other text, white space around it aside.
[[nodiscard]] std::string xmlDateTime(std::string_view tmatsDateTime);
[[nodiscard]] std::string tmatsDateTime(std::string_view xmlDateTime);

/// How XML writes the mask "FW" of all bits.
inline constexpr std::string_view kXmlFullWord = "Full Word";
/// True for an element that holds a mask in which all bits have a name.
[[nodiscard]] bool isMaskElement(std::string_view path);

}  // namespace kavu
