// An XML document as text.
#pragma once

#include <string>

#include <pugixml.hpp>

namespace kavu {

enum class XmlLineEnd { Lf, CrLf };

/// The document in UTF-8. Each element has a line of its own, indented by a tab for each level;
/// where text and elements stand side by side everything is left as it is. The same tree always
/// gives the same bytes.
[[nodiscard]] std::string writeXml(const pugi::xml_document& document, XmlLineEnd lineEnd);

/// True for a node of text; `blank` asks for one of white space alone.
[[nodiscard]] bool isXmlText(pugi::xml_node node);
[[nodiscard]] bool isBlankXmlText(pugi::xml_node node);
/// True if text that is not blank is directly in the element.
[[nodiscard]] bool holdsXmlText(pugi::xml_node element);

/// The text of an element with that of all elements in it. White space between elements is none.
[[nodiscard]] std::string xmlTextOf(pugi::xml_node element);

}  // namespace kavu
