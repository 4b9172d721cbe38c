#include "pcm/write/KeptGroup.h"

#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/text/Text.h"
#include "groups/GroupScan.h"
#include "pcm/PcmFormat.h"

#include <algorithm>

namespace kavu {

namespace {

/// A command "XYZ-1-3:5;", split before its `:`.
std::pair<std::string_view, std::string_view> splitText(std::string_view text) {
    const auto code = viewCommand(text).code;
    return {trimRight(code), text.substr(code.size())};
}

void appendNumbers(std::string& code, const RowNumbers& at) {
    for (int i = 0; i < at.count; ++i) {
        code += '-';
        appendNumber(code, at.at[static_cast<std::size_t>(i)]);
    }
}

/// What a command says: nothing without a value.
bool saysTheSame(std::string_view kept, std::string_view written) {
    const auto value = trim(kept.substr(1, kept.size() - 1 - (kept.ends_with(';') ? 1U : 0U)));
    return value.empty() || value == trim(written);
}

}  // namespace

std::string withNumbers(std::string_view text, const RowNumbers& numbers) {
    const auto [code, value] = splitText(text);
    const auto path = parseField(code);
    std::string result(path ? path->stem : code);
    appendNumbers(result, numbers);
    return result.append(value);
}

void KeptGroup::add(const KeptCommand& command, const RowNumbers& numbers) {
    const auto [code, value] = splitText(command.text);
    const auto path = parseField(code);
    Entry entry{.stem = std::string(path ? path->stem : code),
                .at = numbers,
                .value = std::string(value),
                .missingRow = command.missingRow,
                .isRepeat = command.isRepeat};
    entry.list = listOf(entry);
    commands_.push_back(std::move(entry));
}

std::string KeptGroup::codeOf(const Entry& entry) {
    auto code = entry.stem;
    appendNumbers(code, entry.at);
    return code;
}

std::string KeptGroup::listOf(const Entry& entry) const {
    for (const auto& use : rules_.usesOf(entry.stem)) {
        if (use.depth == entry.missingRow) {
            return RowRules::listKey(use, entry.at);
        }
    }
    return {};
}

/// Rows keep their distance to each other.
void KeptGroup::moveRows(const std::unordered_map<std::string, int>& highest) {
    std::unordered_map<std::string, int> lowest;
    const auto numberOf = [](Entry& entry) -> int& {
        return entry.at.at[static_cast<std::size_t>(entry.missingRow)];
    };
    for (auto& entry : commands_) {
        if (!entry.list.empty()) {
            const int number = numberOf(entry);
            const auto it = lowest.try_emplace(entry.list, number).first;
            it->second = std::min(it->second, number);
        }
    }
    for (auto& entry : commands_) {
        const auto written = entry.list.empty() ? highest.end() : highest.find(entry.list);
        if (written != highest.end() && lowest[entry.list] <= written->second) {
            numberOf(entry) += written->second + 1 - lowest[entry.list];
        }
    }
}

IoStatus KeptGroup::compare(const std::string& path) {
    std::unordered_map<std::string, std::string> written;  // by the lower-case code
    std::unordered_map<std::string, int> highest;          // by the list
    std::unordered_map<std::string, int> copies;           // of the commands that were repeated
    for (const auto& entry : commands_) {
        written.try_emplace(lowerAscii(codeOf(entry)));
        if (!entry.list.empty()) {
            highest.try_emplace(entry.list, 0);
        }
        if (entry.isRepeat) {
            copies.try_emplace(lowerAscii(codeOf(entry)) + entry.value, -1);
        }
    }
    std::unordered_set<std::string> found;
    const auto status =
        forEachCommand(format_.context().reader, path, [&](const std::string& text) {
            const auto command = viewCommand(text);
            const auto key = lowerAscii(trimRight(command.field));
            if (const auto it = written.find(key); it != written.end()) {
                found.insert(key);
                it->second = command.value;
                if (const auto copy = copies.find(key + ":" + std::string(command.value) + ";");
                    copy != copies.end()) {
                    ++copy->second;
                }
            }
            const auto numbers = highest.empty() ? std::nullopt : parseField(command.field);
            for (const auto& use :
                 numbers ? rules_.usesOf(numbers->stem) : std::span<const RowUse>()) {
                const auto row = highest.find(RowRules::listKey(use, *numbers));
                if (use.depth < numbers->count && row != highest.end()) {
                    row->second =
                        std::max(row->second, numbers->at[static_cast<std::size_t>(use.depth)]);
                }
            }
            return true;
        });
    if (!status.ok()) {
        return status;
    }
    moveRows(highest);
    for (const auto& entry : commands_) {
        const auto code = codeOf(entry);
        const auto key = lowerAscii(code);
        const bool isWritten = entry.list.empty() && found.contains(key);
        // Of tagged data in several lists the writer repeats the commands itself.
        if (entry.isRepeat && isWritten && copies[key + entry.value]-- > 0) {
            continue;
        }
        if (isWritten == entry.isRepeat || !entry.list.empty()) {
            lost_.push_back(code + entry.value);
        } else if (isWritten && !saysTheSame(entry.value, written[key])) {
            replaced_.push_back(code + entry.value);
        }
    }
    return status;
}

}  // namespace kavu
