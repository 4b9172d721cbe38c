// What a vocabulary table says of a command: its code, how a person sees it, its limits and
// its editions. A group has one `constexpr` table of these, in the order in which its
// commands are written; its reader, writer, form, XML elements and manual page walk it.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace kavu {

enum class FieldKind { Text, Choice, Date, DateTime, Count, Digits, Comment };

/// One entry of a choice. An edition of 0 is no gate.
struct Choice {
    std::string_view value{};  ///< as stored in the file
    std::string_view text{};   ///< as shown; empty if only XML knows it
    std::string_view xml{};    ///< as written to XML
    int firstEdition = 0;
    int lastEdition = 0;
};

struct Field {
    std::string_view code{};   ///< with "-n", "-m" where the command has indices
    std::string_view label{};  ///< as on the page; empty if the page does not show it
    std::string_view box{};    ///< title of the box of the page in which it stands, or empty
    std::string_view page{};   ///< resource name of its page
    std::size_t limit = 0;     ///< characters; 0 is no limit
    FieldKind kind = FieldKind::Text;
    int firstEdition = 0;            ///< 0 is from the first
    int lastEdition = 0;             ///< 0 is still in use
    std::string_view element{};      ///< XML path that is written, relative to the group's
    std::string_view elementRead{};  ///< XML path that is read, if it differs
    std::span<const Choice> choices{};
    std::string_view prompt{};  ///< title of the prompt that edits it, of a field of a list
};

[[nodiscard]] constexpr bool isKnownIn(int edition, int firstEdition, int lastEdition) {
    return edition >= firstEdition && (lastEdition == 0 || edition <= lastEdition);
}
[[nodiscard]] constexpr bool isKnownIn(int edition, const Field& field) {
    return isKnownIn(edition, field.firstEdition, field.lastEdition);
}
[[nodiscard]] constexpr bool isKnownIn(int edition, const Choice& choice) {
    return isKnownIn(edition, choice.firstEdition, choice.lastEdition);
}

}  // namespace kavu
