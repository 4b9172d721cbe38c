// Whether a text is XML that may be given to the parser. The parser is lenient: it takes more
// than one root, an attribute twice and entities that nobody has declared. It also goes as deep
// as a file does when it frees what it has read.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kavu {

/// Elements within each other in any XML file that is read or written.
inline constexpr std::size_t kMostXmlDepth = 256;

struct XmlFault {
    std::size_t line = 0;  ///< from 1
    std::string reason;
};

/// What a parser must know of a document before it reads it.
struct XmlShape {
    std::optional<XmlFault> fault;
    /// An element holds text and elements side by side, or asks to keep its white space: then
    /// white space is part of the text.
    bool keepsWhiteSpace = false;
};

/// Checks a document: well-formed, one root, no document type (so there are neither entities of
/// its own nor anything external), at most `kMostXmlDepth` deep. `text` is UTF-8 without a mark
/// of the byte order. Takes time in proportion to the text.
[[nodiscard]] XmlShape checkXml(std::string_view text);

}  // namespace kavu
