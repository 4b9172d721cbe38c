#include "application/automation/AutomationError.h"

#include "core/text/Printf.h"

#include <array>

namespace kavu {

namespace {

/// In the order of the enumeration.
constexpr auto kErrorNames = std::to_array<std::string_view>({
    "Kavu.Error.NoDocument",
    "Kavu.Error.NoFormat",
    "Kavu.Error.NotFound",
    "Kavu.Error.OutOfRange",
    "Kavu.Error.BadValue",
    "Kavu.Error.NotANumber",
    "Kavu.Error.WrongType",
    "Kavu.Error.NotInEdition",
    "Kavu.Error.Refused",
    "Kavu.Error.Unsaved",
    "Kavu.Error.Cancelled",
    "Kavu.Error.NoDisplay",
    "Kavu.Error.Busy",
    "Kavu.Error.FileError",
});
static_assert(kErrorNames.size() == static_cast<std::size_t>(AutomationFault::FileError) + 1);

}  // namespace

std::string_view automationErrorName(AutomationFault fault) {
    return kErrorNames.at(static_cast<std::size_t>(fault));
}

AutomationError AutomationError::refused(int message, const std::string& text) {
    return {AutomationFault::Refused,
            formatPrintf("%d: %s", message < 0 ? -message : message, text)};
}

}  // namespace kavu
