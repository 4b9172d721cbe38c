// The names of data sources and links, and the rules for new ones.
#pragma once

#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "groups/GroupScan.h"

#include <optional>
#include <string>
#include <string_view>

namespace kavu {

/// The names of all data sources. False if a file could not be read, which is reported.
bool gatherSourceNames(DocumentContext& context, UserInterface* parent, LinkNames& names);
/// Every link name in the document: in M groups, in the stream groups, embedded in others,
/// on recorders. False as above.
bool gatherLinkNames(DocumentContext& context, UserInterface* parent, LinkNames& names);

/// The name, or, if it is taken, the name followed by " 2", "
/// 3", ...; cut to at most 32 characters.
[[nodiscard]] std::string uniqueName(std::string_view name, const LinkNames& taken);

/// True if a text can be the name of a data source or a link. If not, the reason is
/// reported: 402 ("not allowed to use a semi-colon"), or a text for an empty name, a line
/// break or more than 32 characters.
bool isAcceptableName(const DocumentContext& context, UserInterface* parent, std::string_view name,
                      const std::string& title);

/// Asks for a name until `accept`, which reports why it refuses one, takes it. Nothing for
/// Cancel, or if the same name is refused twice in a row, as from a script with only one
/// answer.
template <typename Accept>
[[nodiscard]] std::optional<std::string> askName(UserInterface* parent, const TextPrompt& prompt,
                                                 const Accept& accept) {
    std::optional<std::string> refused;
    auto again = prompt;
    while (parent != nullptr) {
        auto reply = parent->enterText(again);
        if (!reply) {
            return std::nullopt;
        }
        std::string name(trim(*reply));
        if (accept(name)) {
            return name;
        }
        if (refused == name) {
            return std::nullopt;
        }
        again.initial = name;
        refused = std::move(name);
    }
    return std::nullopt;
}

}  // namespace kavu
