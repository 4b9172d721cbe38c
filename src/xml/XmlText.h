// Texts and names as an XML file can hold them.
#pragma once

#include <string>
#include <string_view>

namespace kavu {

/// A text as XML can hold it: UTF-8 (other bytes are read as Windows-1252), without the control
/// characters that have no place there even as a reference. Line breaks and tabs stay.
[[nodiscard]] std::string xmlCharacters(std::string_view bytes);

/// True if XML can hold this character, given by its number.
[[nodiscard]] bool isXmlCharacter(unsigned long number);

/// True for the name of an element or attribute. Letters beyond ASCII are all allowed.
[[nodiscard]] bool isXmlName(std::string_view name);
/// The length of the name at the front of a text, 0 if there is none.
[[nodiscard]] std::size_t xmlNameLength(std::string_view text);

/// A text as a literal of XPath, whatever quotes it holds.
[[nodiscard]] std::string xpathLiteral(std::string_view text);

}  // namespace kavu
