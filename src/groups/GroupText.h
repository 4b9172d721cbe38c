// The groups whose contents only their author defines (airborne hardware, vendor): the
// user edits their commands as one text.
#pragma once

#include "core/files/IoStatus.h"

#include <string>
#include <string_view>
#include <vector>

namespace kavu {

struct DocumentContext;
class UserInterface;

/// The first edition with the vendor group.
inline constexpr int kVendorEdition = 2004;

struct GroupText {
    char letter = 'H';
    int index = 0;         ///< 1 to 99; unused for H
    std::string source{};  ///< the data source of a V group
    bool exists = false;   ///< has a file
    std::string text{};    ///< each command followed by CR and LF, real line breaks inside
};

/// False, after message 73 ("not introduced until"), if the edition of the document does
/// not know the group.
[[nodiscard]] bool mayEditGroupText(DocumentContext& context, UserInterface* parent, char letter);

/// Finds the group (of a data source, for V) and reads its text. A missing file gives
/// message 85 ("Unable To Edit") and an empty text. False if it cannot be read, or if all 99
/// numbers are taken, which has been reported.
[[nodiscard]] bool readGroupText(DocumentContext& context, UserInterface* parent, char letter,
                                 const std::string& source, GroupText& group);

/// What follows the last `;`, without white space around it.
[[nodiscard]] std::string unfinishedCommand(std::string_view text);
/// The commands of other groups, which would move there when the file is opened again.
/// Comments belong to every group.
[[nodiscard]] std::vector<std::string> foreignCommands(const GroupText& group,
                                                       std::string_view text);

/// Writes the commands of a text, one per line; a text without any removes the file. A V
/// group without an `ID` gets its data source's name, or it would not be found again. The
/// document then counts as changed. False after a failure, which has been reported.
/// REQUIRES: no unfinished command.
[[nodiscard]] bool storeGroupText(DocumentContext& context, UserInterface* parent,
                                  const GroupText& group, std::string_view text);

}  // namespace kavu
