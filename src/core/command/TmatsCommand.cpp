// Splitting commands, the private record in a comment, and writing commands.
#include "core/TmatsReader.h"
#include "core/text/Text.h"

namespace kavu {

namespace {

constexpr std::string_view kRecordHead = "[KAVU:";

/// Reads one `%d` of a scan: white space, a sign, digits. `text` is then what follows it.
bool scanInteger(std::string_view& text, int& number) {
    const auto first = text.find_first_not_of(" \t\r\n\v\f");
    if (first == std::string_view::npos) {
        return false;
    }
    std::size_t at = first;
    at += text[at] == '-' || text[at] == '+' ? 1 : 0;
    const auto digits = at;
    while (at < text.size() && isDigit(text[at])) {
        ++at;
    }
    if (at == digits) {
        return false;
    }
    number = leadingInt(text.substr(first));
    text.remove_prefix(at);
    return true;
}

struct RecordPair {
    std::string_view key;
    std::string_view value;
};

/// The next pair of a record after its head, or nothing at its end.
std::optional<RecordPair> nextPair(std::string_view& rest) {
    while (!rest.empty() && rest.front() == ' ') {
        rest.remove_prefix(1);
    }
    // A `]` before the `=` ends the record: what follows it is the user's text.
    const auto equals = rest.find_first_of("=]");
    if (equals == std::string_view::npos || rest[equals] == ']') {
        return std::nullopt;
    }
    RecordPair pair;
    pair.key = rest.substr(0, equals);
    rest.remove_prefix(equals + 1);
    pair.value = rest.substr(0, rest.find_first_of(" ]"));
    rest.remove_prefix(pair.value.size());
    return pair;
}

void appendPair(std::string& record, std::string_view key, std::string_view value) {
    record.append(" ").append(key).append("=").append(value);
}

bool writeLine(FileWriter& writer, std::string_view prefix, std::string_view code,
               std::string_view value) {
    writer.write(prefix);
    writer.write(code);
    writer.put(':');
    writer.write(value);
    writer.write(";\r\n");
    return true;
}

}  // namespace

CommandIndices parseCommandIndices(std::string_view command) {
    CommandIndices indices;
    command = command.substr(0, command.find(':'));
    if (command.empty()) {
        return indices;
    }
    indices.letter = command[0];
    if (command.size() > 2 && command[1] == '-') {
        indices.group = leadingInteger(command.substr(2));
    }
    const auto backslash = command.find('\\');
    const auto hyphen =
        backslash == std::string_view::npos ? backslash : command.find('-', backslash);
    if (hyphen == std::string_view::npos) {
        return indices;
    }
    auto rest = command.substr(hyphen + 1);
    while (indices.count < 4 && scanInteger(rest, indices.fields[indices.count])) {
        ++indices.count;
        if (rest.empty() || rest.front() != '-') {
            break;
        }
        rest.remove_prefix(1);
    }
    return indices;
}

CommandParts splitCommand(std::string_view command) {
    CommandParts parts;
    const auto backslash = command.find('\\');
    parts.group = std::string(command.substr(0, backslash));
    if (backslash == std::string_view::npos) {
        return parts;
    }
    const auto rest = command.substr(backslash + 1);
    const auto colon = rest.find(':');
    parts.code = std::string(rest.substr(0, colon));
    if (colon != std::string_view::npos) {
        parts.value = std::string(rest.substr(colon + 1));
        std::erase(parts.value, ';');
    }
    return parts;
}

CommentRecord splitCommentRecord(std::string_view comment) {
    CommentRecord parts;
    const auto head = comment.find(kRecordHead);
    parts.plain = std::string(comment.substr(0, head));
    if (head == std::string_view::npos) {
        return parts;
    }
    const auto end = comment.find(']', head);
    const auto length = end == std::string_view::npos ? comment.size() - head : end + 1 - head;
    parts.record = std::string(comment.substr(head, length));
    parts.plain += comment.substr(head + length);
    return parts;
}

std::optional<std::string> commentRecordValue(std::string_view comment, std::string_view key) {
    const auto head = comment.find(kRecordHead);
    if (head == std::string_view::npos) {
        return std::nullopt;
    }
    auto rest = comment.substr(head + kRecordHead.size());
    while (const auto pair = nextPair(rest)) {
        if (pair->key == key) {
            return std::string(pair->value);
        }
    }
    return std::nullopt;
}

void setCommentRecordValue(std::string& record, std::string_view key, std::string_view value) {
    if (record.empty()) {
        record = "[KAVU:]";
    }
    if (!record.starts_with(kRecordHead)) {
        return;
    }
    std::string changed(kRecordHead);
    bool found = false;
    auto rest = std::string_view(record).substr(kRecordHead.size());
    while (const auto pair = nextPair(rest)) {
        const bool matches = pair->key == key;
        found = found || matches;
        if (!matches) {
            appendPair(changed, pair->key, pair->value);
        } else if (!value.empty()) {
            appendPair(changed, key, value);
        }
    }
    if (!found && !value.empty()) {
        appendPair(changed, key, value);
    }
    const bool hasPairs = changed.size() > kRecordHead.size();
    record = hasPairs ? changed + "]" : std::string();
}

bool writeCommand(FileWriter& writer, std::string_view prefix, std::string_view code,
                  std::string_view value) {
    if (value.empty()) {
        return false;
    }
    std::string stored(value);
    toStoredForm(stored);
    return writeLine(writer, prefix, code, trimTrailingBlanks(stored));
}

bool writeCommandPlain(FileWriter& writer, std::string_view prefix, std::string_view code,
                       std::string_view value) {
    if (value.empty()) {
        return false;
    }
    std::string plain(value);
    fromStoredForm(plain);
    return writeLine(writer, prefix, code, plain);
}

void writeIntCommand(FileWriter& writer, std::string_view prefix, std::string_view code,
                     long value) {
    std::string digits;
    appendNumber(digits, value);
    writeLine(writer, prefix, code, digits);
}

}  // namespace kavu
