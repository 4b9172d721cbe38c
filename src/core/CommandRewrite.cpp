// Commands of a group file changed without the group's parser.
#include "core/Text.h"
#include "core/TmatsReader.h"

#include <algorithm>
#include <cstring>

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
    IoStatus finish(bool changed) {
        auto status = source.status().ok() ? writer.close() : source.status();
        source.close();
        if (status.ok() && changed) {
            status = renameFile(beside_, path_);
            if (status.ok()) {
                return status;
            }
        }
        (void)writer.close();
        (void)deleteFile(beside_);
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
        const auto* const hit =
            static_cast<const char*>(std::memchr(window.data(), ';', window.size()));
        const auto count =
            hit == nullptr ? window.size() : static_cast<std::size_t>(hit - window.data()) + 1;
        run.append(window.data(), count);
        source.take(count);
        any = true;
        if (hit != nullptr) {
            break;
        }
    }
    const auto trimmed = trim(run);
    if (trimmed.size() != run.size()) {
        run = std::string(trimmed);
    }
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
        const auto colon = command.find(':');
        command.resize(colon == std::string::npos ? command.size() : colon + 1);
        command += *rewrite.newValue + ";";
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
        result = rewriter.finish(matched);
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
    while (reader.nextCommand(rewriter.source, command)) {
        const auto parts = splitCommand(command);
        if (parts.group.size() >= 3 && parts.group[1] == '-') {
            rewriter.writer.write(
                formatPrintf("%c-%d\\%s:%s;\r\n", parts.group[0], index, parts.code, parts.value));
        }
    }
    return rewriter.finish(true);
}

}  // namespace kavu
