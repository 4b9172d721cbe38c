#include "groups/CommandCode.h"

#include "core/command/CommandPath.h"
#include "core/document/GroupFiles.h"
#include "core/text/Text.h"

#include <algorithm>

namespace kavu {

std::string CommandCode::text() const {
    return groupHead(letter, index) + field;
}

std::optional<CommandCode> parseCommandCode(std::string_view typed) {
    std::string code(typed);
    dropLeadingZeros(code);
    const auto backslash = code.find('\\');
    if (backslash == 0 || backslash == std::string_view::npos || backslash + 1 == code.size() ||
        code.find_first_of(":; \t\r\n") != std::string_view::npos) {
        return std::nullopt;
    }
    CommandCode parsed;
    parsed.letter = toUpperAscii(code.front());
    parsed.field = code.substr(backslash + 1);
    const auto kinds = groupKinds();
    const auto kind = std::find_if(kinds.begin(), kinds.end(), [&](const GroupKind& each) {
        return each.letter == parsed.letter;
    });
    if (kind == kinds.end()) {
        return std::nullopt;
    }
    const auto head = std::string_view(code).substr(1, backslash - 1);
    if (!kind->indexed) {
        return head.empty() ? std::optional(parsed) : std::nullopt;
    }
    if (!head.starts_with('-') || head.size() < 2 || head.size() > 3 ||
        !std::all_of(head.begin() + 1, head.end(), isDigit)) {
        return std::nullopt;
    }
    parsed.index = leadingInt(head.substr(1));
    return parsed.index >= kLeastGroupIndex ? std::optional(parsed) : std::nullopt;
}

}  // namespace kavu
