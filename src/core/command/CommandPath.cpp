#include "core/command/CommandPath.h"

#include "core/text/Text.h"

#include <algorithm>

namespace kavu {

namespace {

/// Nine digits always fit an int.
constexpr std::size_t kMostDigits = 9;

}  // namespace

CommandView viewCommand(std::string_view command) {
    CommandView view;
    view.text = command;
    const auto colon = command.find(':');
    if (colon == std::string_view::npos) {
        return view;
    }
    view.hasColon = true;
    view.code = command.substr(0, colon);
    view.value = command.substr(colon + 1);
    view.value.remove_suffix(view.value.ends_with(';') ? 1 : 0);
    const auto backslash = view.code.find('\\');
    if (backslash != std::string_view::npos) {
        view.head = view.code.substr(0, backslash);
        view.field = view.code.substr(backslash + 1);
    }
    return view;
}

std::string_view afterHead(std::string_view command) {
    const auto backslash = command.find('\\');
    return backslash == std::string_view::npos ? std::string_view() : command.substr(backslash + 1);
}

std::string_view keyOf(const CommandView& command) {
    return trimRight(command.hasColon ? command.code : command.text);
}

void setValue(std::string& command, std::string_view value) {
    const auto colon = command.find(':');
    command.resize(colon == std::string::npos ? command.size() : colon + 1);
    command.append(value).append(";");
}

std::optional<int> takeIndex(std::string_view& text) {
    std::size_t digits = 0;
    while (digits < text.size() && isDigit(text[digits])) {
        ++digits;
    }
    if (digits == 0 || digits > kMostDigits || text.front() == '0') {
        return std::nullopt;
    }
    const int index = leadingInt(text.substr(0, digits));
    text.remove_prefix(digits);
    return index;
}

std::optional<FieldPath> parseField(std::string_view field) {
    FieldPath path;
    path.stem = field;
    for (auto dash = field.rfind('-'); dash != std::string_view::npos && dash > 0;
         dash = path.stem.rfind('-')) {
        auto number = path.stem.substr(dash + 1);
        const auto index = takeIndex(number);
        if (!index || !number.empty()) {
            break;
        }
        if (path.count == FieldPath::kMostIndices) {
            return std::nullopt;
        }
        path.at[static_cast<std::size_t>(path.count++)] = *index;
        path.stem = path.stem.substr(0, dash);
    }
    std::reverse(path.at.begin(), path.at.begin() + path.count);
    return path;
}

std::optional<CommandPath> parsePath(std::string_view code) {
    CommandPath path;
    if (code.empty() || toLowerAscii(code.front()) < 'a' || toLowerAscii(code.front()) > 'z') {
        return std::nullopt;
    }
    path.letter = toUpperAscii(code.front());
    code.remove_prefix(1);
    if (code.starts_with('-')) {
        code.remove_prefix(1);
        const auto group = takeIndex(code);
        if (!group) {
            return std::nullopt;
        }
        path.group = *group;
    }
    if (code.size() < 2 || code.front() != '\\') {
        return std::nullopt;
    }
    const auto field = parseField(code.substr(1));
    if (!field) {
        return std::nullopt;
    }
    static_cast<FieldPath&>(path) = *field;
    return path;
}

bool dropLeadingZeros(std::string& text, std::size_t from) {
    auto end = std::min(text.find(':', from), text.size());
    if (from < end && std::string_view("HVhv").find(text[from]) != std::string_view::npos) {
        end = std::min(end, text.find('\\', from));
    }
    bool changed = false;
    for (auto at = from + 1; at < end; ++at) {
        if (text[at] != '0' || text[at - 1] != '-') {
            continue;
        }
        auto after = at;
        while (after < end && isDigit(text[after])) {
            ++after;
        }
        const bool isIndex = after == end || text[after] == '-' || text[after] == '\\';
        // One digit stays, be it a 0.
        const auto first = std::min(text.find_first_not_of('0', at), after - 1);
        if (isIndex && first > at) {
            text.erase(at, first - at);
            end -= first - at;
            changed = true;
        }
    }
    return changed;
}

std::optional<RowCut> cutAtRow(std::string_view code, std::size_t from) {
    const auto dash = code.find('-', from);
    if (dash == std::string_view::npos) {
        return std::nullopt;
    }
    return RowCut{code.substr(0, dash + 1), code.substr(dash + 1)};
}

std::string withRow(const RowCut& cut, std::size_t row) {
    std::string code(cut.front);
    appendNumber(code, static_cast<std::int64_t>(row));
    return code.append(std::find_if_not(cut.rest.begin(), cut.rest.end(), isDigit), cut.rest.end());
}

void appendHead(std::string& out, char letter, int group) {
    out += letter;
    if (letter != 'G' && letter != 'H') {
        out += '-';
        appendNumber(out, group);
    }
    out += '\\';
}

std::string groupHead(char letter, int group) {
    std::string head;
    appendHead(head, letter, group);
    return head;
}

bool isOfPattern(std::string_view field, std::string_view pattern) {
    const auto stem = stemOf(pattern);
    if (stem.size() == pattern.size()) {
        return equalsIgnoreCase(field, pattern);
    }
    return field.size() > stem.size() && field[stem.size()] == '-' &&
           startsWithIgnoreCase(field, stem);
}

void appendField(std::string& out, std::string_view pattern, std::span<const int> numbers) {
    const auto indices = static_cast<std::size_t>(indexCountOf(pattern));
    out += stemOf(pattern);
    for (const int number : numbers.first(std::min(indices, numbers.size()))) {
        out += '-';
        appendNumber(out, number);
    }
}

std::string fieldCode(std::string_view pattern, std::span<const int> numbers) {
    std::string code;
    appendField(code, pattern, numbers);
    return code;
}

std::string fieldCode(std::string_view pattern, std::initializer_list<int> numbers) {
    return fieldCode(pattern, std::span(numbers.begin(), numbers.size()));
}

void appendCode(std::string& out, char letter, int group, std::string_view pattern,
                std::span<const int> numbers) {
    appendHead(out, letter, group);
    appendField(out, pattern, numbers);
}

}  // namespace kavu
