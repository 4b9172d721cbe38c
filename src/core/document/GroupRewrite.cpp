#include "core/document/GroupRewrite.h"

#include "core/TmatsReader.h"
#include "core/command/CommandPath.h"
#include "core/document/DocumentFiles.h"
#include "core/files/FileIo.h"
#include "core/text/Text.h"

#include <cerrno>
#include <unordered_map>
#include <unordered_set>

namespace kavu {

namespace {

/// The next of `Cut::Runs`. False at the end.
bool nextRun(ByteSource& source, std::string& run) {
    run.clear();
    bool any = false;
    for (auto window = source.window(); !window.empty(); window = source.window()) {
        const auto semicolon = window.find(';');
        const bool complete = semicolon != std::string_view::npos;
        const auto count = complete ? semicolon + 1 : window.size();
        run.append(window.substr(0, count));
        source.take(count);
        any = true;
        if (complete) {
            break;
        }
    }
    run.resize(trimRight(run).size());
    run.erase(0, run.size() - trim(run).size());
    return any;
}

template <typename Writer>
void writeLine(Writer& writer, std::string_view command) {
    if (!command.empty()) {
        writer.write(command);
        writer.write("\r\n");
    }
}

/// One rule for one group file, and the indices that a pass finds there.
class RuleWalk {
  public:
    RuleWalk(const ValueRule& rule, const std::string& head)
        : rule_(rule), stem_(head + std::string(rule.code)) {}

    /// Notes the indices of a command of the rule's code. Codes of commands are compared
    /// without regard to case; a command without a value does not count.
    void note(std::string_view command) {
        if (rule_.indices == Indices::None || !startsWithIgnoreCase(command, stem_)) {
            return;
        }
        auto rest = command.substr(stem_.size());
        const int first = takeIndex(rest).value_or(0);
        const int second = rule_.indices == Indices::Two ? takeSecond(rest) : 1;
        // At least one character before the semicolon.
        if (first > 0 && second > 0 && rest.size() > 2 && rest[0] == ':') {
            found_[first].insert(second);
        }
    }
    /// Finds the last index of each unbroken run.
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
    /// The code of the rule in the group, without indices.
    [[nodiscard]] const std::string& stem() const { return stem_; }
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

/// Sets the new value, or erases the command if there is none; no further change then applies.
bool change(CommandEdit& command, const std::optional<std::string_view>& newValue) {
    if (newValue) {
        command.setValue(*newValue);
    } else {
        command.erase();
    }
    return newValue.has_value();
}

}  // namespace

void CommandEdit::replace(std::string text) {
    text_ = std::move(text);
    changed_ = true;
}

void CommandEdit::setValue(std::string_view value) {
    kavu::setValue(text_, value);
    changed_ = true;
}

void CommandEdit::before(std::string_view lines) {
    before_.append(lines);
    changed_ = true;
}

bool rewriteGroup(DocumentFiles& files, TmatsReader& reader, std::string_view name, Cut cut,
                  const Visit& visit, const Tail& tail, IoStatus& status) {
    ByteSource source;
    status = source.open(files.path(name));
    if (!status.ok()) {
        return false;
    }
    auto writer = files.writer(name);
    bool changed = false;
    std::size_t partial = 0;
    std::string command;
    while (writer.status().ok() &&
           (cut == Cut::Runs ? nextRun(source, command)
                             : reader.nextRawCommand(source, command, nullptr, &partial))) {
        CommandEdit edit(command);
        visit(edit);
        changed = changed || edit.changed();
        writer.write(edit.linesBefore());
        writeLine(writer, command);
    }
    if (writer.status().ok() && tail) {
        const auto lines = tail(partial > 0);
        writer.write(lines);
        changed = changed || !lines.empty();
    }
    status = source.status();
    if (status.ok()) {
        status = changed || cut == Cut::Runs ? writer.close() : writer.status();
    }
    return status.ok() && changed;
}

bool rewriteValues(
    DocumentFiles& files, TmatsReader& reader, std::string_view name,
    const std::function<std::optional<std::string>(std::string_view field, std::string_view value)>&
        newValue,
    IoStatus& status) {
    return rewriteGroup(
        files, reader, name, Cut::Commands,
        [&](CommandEdit& command) {
            const auto view = viewCommand(command.text());
            if (view.field.empty() || view.value.empty()) {
                return;
            }
            if (const auto value = newValue(view.field, view.value)) {
                command.setValue(*value);
            }
        },
        {}, status);
}

bool rewriteCommands(DocumentFiles& files, std::string_view name,
                     const std::vector<CommandRewrite>& rewrites, IoStatus* status,
                     const OtherCommand& other) {
    TmatsReader reader;
    IoStatus ignored;
    return rewriteGroup(
        files, reader, name, Cut::Runs,
        [&](CommandEdit& command) {
            for (const auto& rewrite : rewrites) {
                const auto code = viewCommand(rewrite.pattern).code;
                if (command.text().find(rewrite.pattern) == std::string::npos ||
                    (isComment(command.text()) && !equalsIgnoreCase(code, "COMMENT"))) {
                    continue;
                }
                if (other && !equalsIgnoreCase(viewCommand(command.text()).code, code)) {
                    other(code, command.text());
                }
                if (!change(command, rewrite.newValue)) {
                    return;
                }
            }
        },
        {}, status == nullptr ? ignored : *status);
}

bool rewriteCommands(DocumentFiles& files, std::string_view name, std::string_view code,
                     std::optional<std::string_view> oldValue,
                     std::optional<std::string_view> newValue, IoStatus* status,
                     const OtherCommand& other) {
    if (name.empty() || code.empty()) {
        return false;
    }
    CommandRewrite rewrite;
    rewrite.pattern.append(code).append(":").append(oldValue.value_or(std::string_view()));
    if (newValue) {
        rewrite.newValue = std::string(*newValue);
    }
    return rewriteCommands(files, name, {rewrite}, status, other);
}

bool applyRules(TmatsReader& reader, DocumentFiles& files, std::string_view name, char letter,
                int index, std::span<const ValueRule> rules, IoStatus& status,
                const OtherCommand& other) {
    const auto head = groupHead(letter, index);
    std::vector<RuleWalk> walks;
    for (const auto& rule : rules) {
        if (rule.letter == letter) {
            walks.emplace_back(rule, head);
        }
    }
    ByteSource source;
    status = source.open(files.path(name));
    bool any = false;
    std::string command;
    while (status.ok() && reader.nextCommand(source, command)) {
        for (auto& walk : walks) {
            // Cheaper than `matches`, and enough to know whether a second pass is worth
            // it.
            any = any || command.find(walk.rule().code) != std::string::npos;
            walk.note(command);
        }
    }
    status = status.ok() ? source.status() : status;
    if (!status.ok() || !any) {
        status = status.code() == ENOENT ? IoStatus() : status;
        return false;
    }
    source.close();
    for (auto& walk : walks) {
        walk.finish();
    }
    return rewriteGroup(
        files, reader, name, Cut::Commands,
        [&](CommandEdit& edit) {
            for (const auto& walk : walks) {
                const auto view = viewCommand(edit.text());
                if (view.head.empty() || !walk.matches(view.text)) {
                    continue;
                }
                if (other && !startsWithIgnoreCase(view.code, walk.stem())) {
                    other(walk.stem(), view.text);
                }
                if (!change(edit, walk.rule().newValue)) {
                    return;
                }
            }
        },
        {}, status);
}

IoStatus copyWithGroupIndex(const std::string& from, const std::string& to, int index) {
    ByteSource source;
    if (auto status = source.open(from); !status.ok()) {
        return status;
    }
    FileWriter writer;
    if (auto status = writer.open(to, WriteMode::Truncate); !status.ok()) {
        return status;
    }
    TmatsReader reader;
    std::string command;
    std::string head;
    while (reader.nextRawCommand(source, command)) {
        if (viewCommand(command).head.empty()) {  // in no model
            writeLine(writer, command);
            continue;
        }
        const auto parts = splitCommand(command);
        if (parts.group.size() >= 3 && parts.group[1] == '-') {
            head.assign(1, parts.group[0]).append("-");
            appendNumber(head, index);
            writer.write(head.append("\\"));
            writer.write(parts.code);
            writer.write(":");
            writer.write(parts.value);
            writer.write(";\r\n");
        }
    }
    const auto written = writer.close();
    return source.status().ok() ? written : source.status();
}

}  // namespace kavu
