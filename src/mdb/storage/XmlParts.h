// An XML document as runs of its bytes: what is before the children of the root, each child with
// what is before it, and the rest. So a document can lose, gain or exchange children, and all else
// keeps its bytes.
#pragma once

#include <string_view>
#include <vector>

namespace kavu {

struct XmlPart {
    std::string_view gap;      ///< comments and white space before the element
    std::string_view element;  ///< from its `<` to its last `>`
};

struct XmlParts {
    std::string_view rootName;
    std::string_view head;  ///< up to the end of the root's start tag
    bool isClosed = false;  ///< the root is one tag, `<Name/>`, and `head` ends before its "/>"
    std::vector<XmlPart> children;
    std::string_view tail;  ///< from the end of the last child on
};

/// REQUIRES: `checkXml` has found no fault in the text.
[[nodiscard]] XmlParts splitXml(std::string_view text);

}  // namespace kavu
