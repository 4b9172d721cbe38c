// Commands of the attribute groups read and set by their codes, without a form: what the
// command line does. The rules of the vocabulary hold as they do in a form.
#pragma once

#include "groups/CommandCode.h"

#include <span>
#include <string>
#include <vector>

namespace kavu {

struct DocumentContext;
class UserInterface;

/// The values of all commands of each code, in the order of the file and with the line breaks
/// of the group file. A group that is not there has none. False if a file can not be read,
/// which has been reported.
[[nodiscard]] bool readAttributes(DocumentContext& context, UserInterface* parent,
                                  std::span<const CommandCode> codes,
                                  std::vector<std::vector<std::string>>& values);

struct AttributeChange {
    CommandCode code{};
    std::string value{};  ///< empty removes; line breaks are real ones
};
/// Sets commands one after the other: the code has this one value then. A new command stands
/// where the group's writer would put it, every other command stays where it is. Nothing is
/// changed if one of them breaks a rule of the vocabulary (limit, choice, date, digits, rows,
/// edition), if it names what other groups refer to, or if its group or its row is not there;
/// the first that does is reported with the reason.
[[nodiscard]] bool setAttributes(DocumentContext& context, UserInterface* parent,
                                 std::span<const AttributeChange> changes);

}  // namespace kavu
