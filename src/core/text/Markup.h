// Characters that are markup in XML and HTML.
#pragma once

#include <string_view>

namespace kavu {

/// The entity of a character that is markup: `&`, `<`, `>` and the double quote. Empty for all
/// others. What a line break becomes is for each kind of file to say.
[[nodiscard]] constexpr std::string_view markupEntity(char c) {
    switch (c) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '"':
            return "&quot;";
        default:
            return {};
    }
}

}  // namespace kavu
