#include "groups/GroupRewrite.h"

#include "core/text/Text.h"
#include "groups/GroupScan.h"

#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace kavu {

namespace {

/// The decimal number at the front of `text` as a format would write it (no leading zero),
/// which is taken off; 0 if there is none.
std::int64_t takeIndex(std::string_view& text) {
    std::size_t digits = 0;
    while (digits < text.size() && isDigit(text[digits])) {
        ++digits;
    }
    if (digits == 0 || digits > 9 || text[0] == '0') {
        return 0;
    }
    const auto number = leadingInteger(text.substr(0, digits));
    text.remove_prefix(digits);
    return number;
}

/// One rule for one group file, and the indices that its walk finds there.
class RuleWalk {
  public:
    RuleWalk(const ValueRule& rule, const std::string& prefix)
        : rule_(rule), stem_(prefix + std::string(rule.code)) {}

    /// Notes the indices of a command of the rule's code. Codes of commands are compared
    /// without regard to case, and a command without a value is none.
    void note(std::string_view command) {
        if (rule_.indices == Indices::None || !startsWithIgnoreCase(command, stem_)) {
            return;
        }
        auto rest = command.substr(stem_.size());
        std::int64_t second = 1;
        const auto first = takeIndex(rest);
        if (rule_.indices == Indices::Two) {
            second = rest.starts_with('-') ? (rest.remove_prefix(1), takeIndex(rest)) : 0;
        }
        // At least one character in front of the semicolon.
        if (first > 0 && second > 0 && rest.size() > 2 && rest[0] == ':') {
            found_[first].insert(second);
        }
    }
    /// Counts up to where the indices end.
    void finish() {
        for (std::int64_t first = 1; found_.contains(first) && found_[first].contains(1); ++first) {
            std::int64_t second = 1;
            while (found_[first].contains(second + 1)) {
                ++second;
            }
            last_.push_back(second);
        }
        found_.clear();
    }

    [[nodiscard]] const ValueRule& rule() const { return rule_; }
    /// True if the pattern of the rule, with any of the indices, is in the command.
    [[nodiscard]] bool matches(std::string_view command) const {
        for (auto at = command.find(stem_); at != std::string_view::npos;
             at = command.find(stem_, at + 1)) {
            auto rest = command.substr(at + stem_.size());
            if (takeIndices(rest) && rest.starts_with(':') &&
                rest.substr(1).starts_with(rule_.oldValue)) {
                return true;
            }
        }
        return false;
    }

  private:
    [[nodiscard]] bool takeIndices(std::string_view& rest) const {
        if (rule_.indices == Indices::None) {
            return true;
        }
        const auto first = takeIndex(rest);
        if (first < 1 || first > static_cast<std::int64_t>(last_.size())) {
            return false;
        }
        if (rule_.indices == Indices::One) {
            return true;
        }
        if (!rest.starts_with('-')) {
            return false;
        }
        rest.remove_prefix(1);
        const auto second = takeIndex(rest);
        return second >= 1 && second <= last_[static_cast<std::size_t>(first) - 1];
    }

    ValueRule rule_;
    std::string stem_;
    std::unordered_map<std::int64_t, std::unordered_set<std::int64_t>> found_;
    /// For each first index, from 1, the last second index; 1 where there is no second.
    std::vector<std::int64_t> last_;
};

Rewritten applyTo(std::string& command, const std::vector<RuleWalk>& walks) {
    auto result = Rewritten::Same;
    for (const auto& walk : walks) {
        if (!walk.matches(command)) {
            continue;
        }
        const auto& newValue = walk.rule().newValue;
        if (!newValue) {
            return Rewritten::Deleted;
        }
        command.resize(command.find(':') + 1);
        command.append(*newValue).append(";");
        result = Rewritten::Changed;
    }
    return result;
}

}  // namespace

bool applyRules(TmatsReader& reader, DocumentFiles& files, std::string_view name, char letter,
                int index, std::span<const ValueRule> rules, IoStatus& status) {
    const auto prefix = groupPrefix(letter, index);
    std::vector<RuleWalk> walks;
    for (const auto& rule : rules) {
        if (rule.letter == letter) {
            walks.emplace_back(rule, prefix);
        }
    }
    bool any = false;
    status = forEachCommand(reader, files.path(name), [&](const std::string& command) {
        for (auto& walk : walks) {
            // Cheaper than a search, and enough to know whether a second pass is worth it.
            any = any || command.find(walk.rule().code) != std::string::npos;
            walk.note(command);
        }
        return true;
    });
    if (!status.ok() || !any) {
        status = isMissing(status) ? IoStatus() : status;
        return false;
    }
    for (auto& walk : walks) {
        walk.finish();
    }
    return rewriteGroupFile(
        reader, files, name, [&](std::string& command) { return applyTo(command, walks); }, {},
        status);
}

bool rewriteGroupFile(TmatsReader& reader, DocumentFiles& files, std::string_view name,
                      const std::function<Rewritten(std::string& command)>& edit,
                      const std::function<std::string()>& tail, IoStatus& status) {
    ByteSource source;
    status = source.open(files.path(name));
    if (!status.ok()) {
        status = isMissing(status) ? IoStatus() : status;
        return false;
    }
    auto writer = files.writer(name);
    bool changed = false;
    std::string command;
    while (writer.status().ok() && reader.nextRawCommand(source, command)) {
        const auto result = edit(command);
        changed = changed || result != Rewritten::Same;
        if (result != Rewritten::Deleted) {
            writer.write(command);
            writer.write("\r\n");
        }
    }
    if (writer.status().ok() && tail) {
        const auto text = tail();
        writer.write(text);
        changed = changed || !text.empty();
    }
    status = source.status();
    if (status.ok()) {
        status = changed ? writer.close() : writer.status();
    }
    return status.ok() && changed;
}

}  // namespace kavu
