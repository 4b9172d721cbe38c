#include "app/shell/ItemCommands.h"

#include "app/framework/QtText.h"
#include "core/command/CommandPath.h"
#include "core/text/Text.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace kavu {

namespace {

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool startsWithLower(const char* text, std::string_view lower) {
    for (const char c : lower) {
        if (toLowerAscii(*text++) != c) {
            return false;
        }
    }
    return true;
}

/// The end of a value is its `;`, which is not shown.
std::string_view withoutEnd(std::string_view command) {
    return command.ends_with(';') ? command.substr(0, command.size() - 1) : command;
}

}  // namespace

CommandFilter::CommandFilter(std::string_view text) : ascii_(isAscii(text)) {
    lower_ = ascii_ ? lowerAscii(text) : toBytes(toQString(text).toLower());
}

bool CommandFilter::matches(std::string_view text) const {
    if (lower_.empty()) {
        return true;
    }
    if (!ascii_) {
        return !isAscii(text) && toQString(text).contains(toQString(lower_), Qt::CaseInsensitive);
    }
    if (text.size() < lower_.size()) {
        return false;
    }
    // The rarer work first: most places differ in the first letter.
    const char low = lower_.front();
    const char high = toUpperAscii(low);
    const char* const last = text.data() + (text.size() - lower_.size());
    const std::string_view rest = std::string_view(lower_).substr(1);
    for (const char* at = text.data(); at <= last; ++at) {
        if ((*at == low || *at == high) && startsWithLower(at + 1, rest)) {
            return true;
        }
    }
    return false;
}

void ItemCommands::clear() {
    source_ = ByteSource();
    commands_.clear();
    status_ = {};
    pairs_ = {};
    complete_ = true;
}

IoStatus ItemCommands::open(const std::string& path) {
    clear();
    std::uint64_t size = 0;
    if (auto status = probeSize(path, size); !status.ok()) {
        return status;
    }
    if (size > kMostBytes) {
        return {path, EFBIG};
    }
    if (auto status = source_.open(path); !status.ok()) {
        return status;
    }
    commands_.reserve(static_cast<std::size_t>(size));
    complete_ = false;
    return {};
}

void ItemCommands::setPairs(std::vector<std::pair<std::string, std::string>> pairs) {
    clear();
    pairs_ = std::move(pairs);
}

bool ItemCommands::findMore(std::size_t most) {
    if (!complete_ && !commands_.readSome(reader_, source_, most)) {
        complete_ = true;
        status_ = source_.status();
        source_.close();
    }
    return !complete_;
}

std::size_t ItemCommands::size() const {
    return pairs_.empty() ? commands_.size() : pairs_.size();
}

std::string_view ItemCommands::code(std::size_t row) const {
    if (!pairs_.empty()) {
        return pairs_[row].first;
    }
    const auto command = commands_.at(row);
    return command.hasColon ? command.code : withoutEnd(command.text);
}

std::string_view ItemCommands::rawValue(std::size_t row) const {
    if (!pairs_.empty()) {
        return pairs_[row].second;
    }
    return commands_.at(row).value;
}

std::string ItemCommands::value(std::size_t row) const {
    std::string text(rawValue(row));
    fromStoredForm(text);
    return replaceAll(text, "\r\n", "\n");
}

int ItemCommands::lines(std::size_t row) const {
    const auto text = rawValue(row);
    return 1 + static_cast<int>(std::count_if(text.begin(), text.end(), [](char c) {
               return c == '\n' || c == kStoredLineFeed;
           }));
}

bool ItemCommands::matches(std::size_t row, const CommandFilter& filter) const {
    return filter.matches(code(row)) || filter.matches(rawValue(row));
}

}  // namespace kavu
