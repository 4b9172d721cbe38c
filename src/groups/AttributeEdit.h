// Reads and sets commands of the attribute groups by their codes, without a sheet, for
// the command line. The rules of the vocabulary hold as they do in a sheet.
#pragma once

#include "groups/CommandCode.h"

#include <span>
#include <string>
#include <vector>

namespace kavu {

struct DocumentContext;
class UserInterface;

/// The values of all commands of each code, in the order of the file and with the line breaks
/// of the group file. A missing group has none. False if a file cannot be read, which has
/// been reported.
[[nodiscard]] bool readAttributes(DocumentContext& context, UserInterface* parent,
                                  std::span<const CommandCode> codes,
                                  std::vector<std::vector<std::string>>& values);

struct AttributeChange {
    CommandCode code{};
    std::string value{};  ///< empty removes; line breaks are real ones
};
/// Sets commands one after the other: each code then has only this value. A new command is
/// put where the group's writer would put it; every other command keeps its place. Nothing is
/// changed if one of them breaks a rule of the vocabulary (limit, choice, date, digits, rows,
/// edition), names what other groups refer to, or is of a missing group or row; the first of
/// these is reported with the reason.
[[nodiscard]] bool setAttributes(DocumentContext& context, UserInterface* parent,
                                 std::span<const AttributeChange> changes);

}  // namespace kavu
