#include "app/framework/Refusals.h"

#include "core/talk/Messages.h"
#include "core/text/Printf.h"
#include "vocabulary/FieldRules.h"

#include <array>
#include <charconv>
#include <limits>

namespace kavu {

ValueCheck textCheck(std::size_t limit) {
    return [limit](const std::string& value) -> std::optional<std::string> {
        if (limit == 0 || value.size() <= limit) {
            return std::nullopt;
        }
        return formatPrintf("This string must be no more than %d characters long.", limit);
    };
}

ValueCheck integerCheck(long least, long most) {
    return [least, most](const std::string& value) -> std::optional<std::string> {
        const auto number = parseInteger(value);
        if (!number) {
            return "Value entered is not a valid integer. Please re-enter.";
        }
        if (*number < least || *number > most) {
            return formatPrintf(
                "Integer number out of range. You must enter a number between %ld and %ld", least,
                most);
        }
        return std::nullopt;
    };
}

ValueCheck doubleCheck(double least, double most) {
    return [least, most](const std::string& value) -> std::optional<std::string> {
        const auto number = parseDouble(value);
        if (!number) {
            return "Value entered is not a valid floating point number. Please re-enter.";
        }
        if (*number < least || *number > most) {
            return formatPrintf(
                "Floating point number out of range. You must enter a number between %s and %s",
                numberText(least), numberText(most));
        }
        return std::nullopt;
    };
}

std::string limitText(std::size_t limit) {
    return limit == 0   ? std::string()
           : limit == 1 ? std::string("At most 1 character")
                        : formatPrintf("At most %lu characters", limit);
}

std::string rangeText(long least, long most) {
    const bool isAbove = least > std::numeric_limits<long>::min();
    const bool isBelow = most < std::numeric_limits<long>::max();
    if (isAbove && isBelow) {
        return formatPrintf("A whole number from %ld to %ld", least, most);
    }
    return isAbove   ? formatPrintf("A whole number, at least %ld", least)
           : isBelow ? formatPrintf("A whole number, at most %ld", most)
                     : std::string("A whole number");
}

std::string rangeText(double least, double most) {
    // The ends of the type are no limits that a person has set.
    constexpr double kEndless = 1e300;
    if (least > -kEndless && most < kEndless) {
        return formatPrintf("A number from %s to %s", numberText(least), numberText(most));
    }
    return least > -kEndless ? formatPrintf("A number, at least %s", numberText(least))
           : most < kEndless ? formatPrintf("A number, at most %s", numberText(most))
                             : std::string("A number");
}

std::string numberText(double number) {
    std::array<char, 64> buffer{};
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    return error == std::errc() ? std::string(buffer.data(), end) : std::string();
}

void showSemicolonRefused(UserInterface& ui) {
    MessageBox box;
    box.id = message::kNoSemicolon;
    box.titleId = title::kIllegalCharacter;
    box.title = loadText(title::kIllegalCharacter).value_or("");
    box.text = loadText(message::kNoSemicolon).value_or("");
    box.icon = Icon::Warning;
    ui.message(box);
}

}  // namespace kavu
