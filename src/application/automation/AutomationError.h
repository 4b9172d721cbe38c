// How a call of the automation fails: one of the named errors of the bus, with a text.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace kavu {

enum class AutomationFault {
    NoDocument,
    NoFormat,
    NotFound,
    OutOfRange,
    BadValue,
    NotANumber,
    WrongType,
    NotInEdition,
    Refused,
    Unsaved,
    Cancelled,
    NoDisplay,
    Busy,
    FileError
};

/// The name on the bus: "Kavu.Error.NotFound".
[[nodiscard]] std::string_view automationErrorName(AutomationFault fault);

/// Thrown by the methods of the automation; a call that throws has changed nothing, unless its
/// method says otherwise.
class AutomationError : public std::runtime_error {
  public:
    AutomationError(AutomationFault fault, const std::string& text)
        : std::runtime_error(text), fault_(fault) {}
    /// A rule of the model: the text becomes "NUMBER: TEXT". Number 0 for a rule without message.
    [[nodiscard]] static AutomationError refused(int message, const std::string& text);

    [[nodiscard]] AutomationFault fault() const { return fault_; }

  private:
    AutomationFault fault_;
};

}  // namespace kavu
