// Commands of a group file changed without the group's parser.
#include "core/TmatsReader.h"
#include "core/command/CommandPath.h"
#include "core/text/Text.h"

namespace kavu {

namespace {

/// Writes a file anew beside the old one, which it replaces once it is complete: a failure
/// leaves the old file whole.
class Rewriter {
  public:
    explicit Rewriter(const std::string& path) : path_(path), beside_(path + ".new") {}

    IoStatus open() {
        auto status = source.open(path_);
        return status.ok() ? writer.open(beside_, WriteMode::Truncate) : status;
    }
    IoStatus finish() {
        auto status = source.status().ok() ? writer.close() : source.status();
        source.close();
        if (status.ok()) {
            status = renameFile(beside_, path_);
        }
        if (!status.ok()) {
            (void)writer.close();
            (void)deleteFile(beside_);
        }
        return status;
    }

    ByteSource source;
    FileWriter writer;

  private:
    std::string path_;
    std::string beside_;
};

/// The characters up to and including the next `;`, or up to the end, without the white
/// space at both ends. False at the end.
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

/// Applies the rewrites to one command; true if any matched.
bool rewriteOne(std::string& command, const std::vector<CommandRewrite>& rewrites) {
    bool matched = false;
    for (const auto& rewrite : rewrites) {
        if (command.find(rewrite.pattern) == std::string::npos) {
            continue;
        }
        matched = true;
        if (!rewrite.newValue) {
            command.clear();
            break;
        }
        setValue(command, *rewrite.newValue);
    }
    return matched;
}

}  // namespace

bool rewriteCommands(const std::string& path, const std::vector<CommandRewrite>& rewrites,
                     IoStatus* status) {
    Rewriter rewriter(path);
    IoStatus result = rewriter.open();
    bool matched = false;
    if (result.ok()) {
        std::string command;
        while (nextRun(rewriter.source, command)) {
            matched = rewriteOne(command, rewrites) || matched;
            if (!command.empty()) {
                rewriter.writer.write(command);
                rewriter.writer.write("\r\n");
            }
        }
        result = rewriter.finish();
    }
    if (status != nullptr) {
        *status = result;
    }
    return matched && result.ok();
}

bool rewriteCommands(const std::string& path, std::string_view code,
                     std::optional<std::string_view> oldValue,
                     std::optional<std::string_view> newValue, IoStatus* status) {
    if (path.empty() || code.empty()) {
        return false;
    }
    CommandRewrite rewrite;
    rewrite.pattern.append(code).append(":").append(oldValue.value_or(std::string_view()));
    if (newValue) {
        rewrite.newValue = std::string(*newValue);
    }
    return rewriteCommands(path, {rewrite}, status);
}

IoStatus rewriteGroupIndex(const std::string& path, int index) {
    Rewriter rewriter(path);
    if (auto status = rewriter.open(); !status.ok()) {
        return status;
    }
    TmatsReader reader;
    std::string command;
    std::string prefix;
    while (reader.nextCommand(rewriter.source, command)) {
        const auto parts = splitCommand(command);
        if (parts.group.size() >= 3 && parts.group[1] == '-') {
            prefix.assign(1, parts.group[0]);
            prefix += "-";
            appendNumber(prefix, index);
            prefix += "\\";
            rewriter.writer.write(prefix);
            rewriter.writer.write(parts.code);
            rewriter.writer.write(":");
            rewriter.writer.write(parts.value);
            rewriter.writer.write(";\r\n");
        }
    }
    return rewriter.finish();
}

}  // namespace kavu
