#include "groups/GroupRewrite.h"

#include "core/text/Text.h"
#include "groups/GroupScan.h"

#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace kavu {

namespace {

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
        int second = 1;
        const int first = takeIndex(rest).value_or(0);
        if (rule_.indices == Indices::Two) {
            second = takeSecond(rest);
        }
        // At least one character in front of the semicolon.
        if (first > 0 && second > 0 && rest.size() > 2 && rest[0] == ':') {
            found_[first].insert(second);
        }
    }
    /// Counts up to where the indices end.
    void finish() {
        for (int first = 1; found_.contains(first) && found_[first].contains(1); ++first) {
            int second = 1;
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
        const auto first = static_cast<std::size_t>(takeIndex(rest).value_or(0));
        if (first < 1 || first > last_.size()) {
            return false;
        }
        if (rule_.indices == Indices::One) {
            return true;
        }
        const int second = takeSecond(rest);
        return second >= 1 && second <= last_[first - 1];
    }
    static int takeSecond(std::string_view& rest) {
        if (!rest.starts_with('-')) {
            return 0;
        }
        rest.remove_prefix(1);
        return takeIndex(rest).value_or(0);
    }

    ValueRule rule_;
    std::string stem_;
    std::unordered_map<int, std::unordered_set<int>> found_;
    /// For each first index, from 1, the last second index; 1 where there is no second.
    std::vector<int> last_;
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
        setValue(command, *newValue);
        result = Rewritten::Changed;
    }
    return result;
}

}  // namespace

bool applyRules(TmatsReader& reader, const std::string& path, char letter, int index,
                std::span<const ValueRule> rules, IoStatus& status) {
    const auto prefix = groupHead(letter, index);
    std::vector<RuleWalk> walks;
    for (const auto& rule : rules) {
        if (rule.letter == letter) {
            walks.emplace_back(rule, prefix);
        }
    }
    bool any = false;
    status = forEachCommand(reader, path, [&](const std::string& command) {
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
        reader, path, [&](std::string& command) { return applyTo(command, walks); }, {}, status);
}

bool rewriteGroupFile(TmatsReader& reader, const std::string& path,
                      const std::function<Rewritten(std::string& command)>& edit,
                      const std::function<std::string()>& tail, IoStatus& status) {
    const auto beside = path + ".new";
    ByteSource source;
    status = source.open(path);
    if (!status.ok()) {
        status = isMissing(status) ? IoStatus() : status;
        return false;
    }
    FileWriter writer;
    status = writer.open(beside, WriteMode::Truncate);
    bool changed = false;
    std::string command;
    while (status.ok() && reader.nextRawCommand(source, command)) {
        const auto result = edit(command);
        changed = changed || result != Rewritten::Same;
        if (result != Rewritten::Deleted) {
            writer.write(command);
            writer.write("\r\n");
        }
    }
    if (status.ok() && tail) {
        const auto text = tail();
        writer.write(text);
        changed = changed || !text.empty();
    }
    const auto closed = writer.close();
    status = !status.ok() ? status : source.status().ok() ? closed : source.status();
    if (status.ok() && changed) {
        status = renameFile(beside, path);
    }
    if (!status.ok() || !changed) {
        (void)deleteFile(beside);
    }
    return status.ok() && changed;
}

}  // namespace kavu
