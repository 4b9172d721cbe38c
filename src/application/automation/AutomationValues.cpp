#include "application/automation/AutomationValues.h"

#include "application/automation/AutomationTalk.h"
#include "core/talk/Messages.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "core/text/TextEncoding.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>
#include <limits>

namespace kavu {

namespace {

constexpr int kSemicolonMessage = 402;

/// The one-byte characters beyond ASCII as UTF-8, by their byte less 0x80; empty for the five that
/// Windows-1252 does not have.
const std::vector<std::string>& windowsCharacters() {
    static const auto characters = [] {
        std::vector<std::string> all;
        for (int byte = 0x80; byte <= 0xFF; ++byte) {
            auto text = toUtf8(std::string(1, static_cast<char>(byte)));
            all.push_back(text == "\xEF\xBF\xBD" ? std::string() : std::move(text));
        }
        return all;
    }();
    return characters;
}

bool isControl(char c, bool lineBreaks) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte < 0x20 || byte == 0x7F) && !(lineBreaks && (c == '\n' || c == '\r'));
}

[[noreturn]] void throwBadValue(const std::string& text) {
    throw AutomationError(AutomationFault::BadValue, text);
}

void refuseSemicolon(std::string_view bytes) {
    if (holdsSemicolon(bytes)) {
        throw AutomationError::refused(kSemicolonMessage,
                                       std::string(loadText(kSemicolonMessage).value_or("")));
    }
}

}  // namespace

std::string toWindows1252(std::string_view utf8) {
    std::string bytes;
    for (std::size_t at = 0; at < utf8.size();) {
        if (static_cast<unsigned char>(utf8[at]) < 0x80) {
            bytes.push_back(utf8[at++]);
            continue;
        }
        const auto& characters = windowsCharacters();
        const auto it = std::find_if(characters.begin(), characters.end(), [&](const auto& text) {
            return !text.empty() && utf8.substr(at, text.size()) == text;
        });
        if (it == characters.end()) {
            return {};
        }
        bytes.push_back(static_cast<char>(0x80 + (it - characters.begin())));
        at += it->size();
    }
    return bytes;
}

std::vector<std::string> storedForms(std::string_view utf8) {
    std::vector<std::string> forms{std::string(utf8)};
    auto bytes = toWindows1252(utf8);
    if (!bytes.empty() && bytes != utf8 && toUtf8(bytes) == utf8) {
        forms.push_back(std::move(bytes));
    }
    return forms;
}

std::string shownText(std::string_view stored) {
    std::string text(stored);
    fromStoredForm(text);
    return toUtf8(text);
}

std::string storedText(std::string_view utf8, std::string_view before) {
    if (shownText(before) == utf8) {
        return std::string(before);
    }
    if (!isValidUtf8(before)) {
        if (auto bytes = toWindows1252(utf8); !bytes.empty()) {
            return bytes;
        }
    }
    return std::string(utf8);
}

void throwNotFound(std::string_view what, std::string_view name) {
    throw AutomationError(AutomationFault::NotFound,
                          formatPrintf("There is no %s '%s'.", what, name));
}

std::int32_t numberOfText(std::string_view text, std::string_view what) {
    const auto number = parseInteger(text);
    if (!number || *number < std::numeric_limits<std::int32_t>::min() ||
        *number > std::numeric_limits<std::int32_t>::max()) {
        throw AutomationError(
            AutomationFault::NotANumber,
            formatPrintf("The %s is '%s', which is no number.", what, shownText(text)));
    }
    return static_cast<std::int32_t>(*number);
}

void requireRange(std::int64_t value, std::int64_t least, std::int64_t most,
                  std::string_view what) {
    if (value < least || value > most) {
        throw AutomationError(
            AutomationFault::OutOfRange,
            formatPrintf("The %s is %s; it must be %s to %s.", what, std::to_string(value),
                         std::to_string(least), std::to_string(most)));
    }
}

std::string requireCode(std::span<const Choice> choices, int edition, std::string_view text,
                        std::string_view what) {
    std::string known;
    for (const auto& choice : choices) {
        if (!isKnownIn(edition, choice) || choice.value.empty()) {
            continue;
        }
        if (equalsIgnoreCase(choice.value, text)) {
            return std::string(choice.value);
        }
        known += (known.empty() ? "" : ", ") + std::string(choice.value);
    }
    throwBadValue(formatPrintf("'%s' is no %s. It can be: %s.", text, what, known));
}

void requireText(std::string_view bytes, std::size_t limit, bool lineBreaks,
                 std::string_view what) {
    if (std::any_of(bytes.begin(), bytes.end(), [&](char c) { return isControl(c, lineBreaks); })) {
        throwBadValue(formatPrintf("The %s has a control character.", what));
    }
    if (limit != 0 && bytes.size() > limit) {
        throwBadValue(formatPrintf("The %s has more than %d bytes.", what, limit));
    }
    refuseSemicolon(bytes);
}

void requireNewName(AutomationTalk& talk, const Messages& messages, std::string_view bytes,
                    int messageForEmpty) {
    const auto refuse = [&](int message, MessageTitle titleId) {
        messages.show(&talk, chosenMessage(message), titleId, kErrorBox);
        throw talk.failure();
    };
    if (bytes.empty()) {
        refuse(messageForEmpty, title::kIllegalValueEntered);
    }
    const bool hasSemicolon = holdsSemicolon(bytes);
    requireNewName(hasSemicolon ? replaceAll(bytes, ";", ".") : std::string(bytes),
                   messageForEmpty);
    if (hasSemicolon) {
        refuse(kSemicolonMessage, title::kIllegalCharacter);
    }
}

void requireNewName(std::string_view bytes, int messageForEmpty) {
    if (bytes.empty()) {
        throw AutomationError::refused(messageForEmpty,
                                       std::string(loadText(messageForEmpty).value_or("")));
    }
    if (trim(bytes).size() != bytes.size()) {
        throwBadValue("The name begins or ends with a blank.");
    }
    requireText(bytes, kMostNameBytes, false, "name");
}

}  // namespace kavu
