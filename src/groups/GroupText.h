// The groups whose content nobody but its author knows (airborne hardware, vendor): a
// person edits their commands as one text.
#pragma once

#include "core/files/IoStatus.h"

#include <string>
#include <string_view>
#include <vector>

namespace kavu {

struct DocumentContext;
class UserInterface;

/// The vendor group is known from this edition on.
inline constexpr int kVendorEdition = 2004;

struct GroupText {
    char letter = 'H';
    int index = 0;         ///< 1 to 99; of no meaning for H
    std::string source{};  ///< the data source of a V group
    bool exists = false;   ///< has a file
    std::string text{};    ///< each command followed by CR and LF, real line breaks inside
};

/// Message 73 if the edition of the document does not know the group, and false.
[[nodiscard]] bool mayEditGroupText(DocumentContext& context, UserInterface* parent, char letter);

/// Finds the group (of a data source, for V) and reads its text. A file that is not there
/// gives message 85 and an empty text. False if it can not be read, or if all 99 numbers are
/// taken; that has been reported.
[[nodiscard]] bool readGroupText(DocumentContext& context, UserInterface* parent, char letter,
                                 const std::string& source, GroupText& group);

/// What stands behind the last `;`, without white space around it.
[[nodiscard]] std::string unfinishedCommand(std::string_view text);
/// The commands that belong to another group, and would move there when the file is opened
/// again. Comments belong to every group.
[[nodiscard]] std::vector<std::string> foreignCommands(const GroupText& group,
                                                       std::string_view text);

/// Writes the commands of a text, one on a line; a text without any removes the file. A V
/// group without an `ID` gets its data source's name, or it would not be found again.
/// `changed` of the document is set. False after a failure, which has been reported.
/// REQUIRES: nothing unfinished.
[[nodiscard]] bool storeGroupText(DocumentContext& context, UserInterface* parent,
                                  const GroupText& group, std::string_view text);

}  // namespace kavu
