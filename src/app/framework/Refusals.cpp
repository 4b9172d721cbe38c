#include "app/framework/Refusals.h"

#include "core/talk/Messages.h"
#include "core/text/Printf.h"
#include "vocabulary/FieldRules.h"

#include <array>
#include <charconv>

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
