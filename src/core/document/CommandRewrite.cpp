// Commands of a group file changed without the group's parser.
#include "core/TmatsReader.h"
#include "core/document/DocumentFiles.h"
#include "core/files/FileIo.h"
#include "core/text/Text.h"

namespace kavu {

namespace {

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
        const auto colon = command.find(':');
        command.resize(colon == std::string::npos ? command.size() : colon + 1);
        command += *rewrite.newValue + ";";
    }
    return matched;
}

}  // namespace

bool rewriteCommands(DocumentFiles& files, std::string_view name,
                     const std::vector<CommandRewrite>& rewrites, IoStatus* status) {
    ByteSource source;
    auto result = source.open(files.path(name));
    bool matched = false;
    if (result.ok()) {
        auto writer = files.writer(name);
        std::string command;
        while (nextRun(source, command)) {
            matched = rewriteOne(command, rewrites) || matched;
            if (!command.empty()) {
                writer.write(command);
                writer.write("\r\n");
            }
        }
        result = source.status().ok() ? writer.close() : source.status();
    }
    if (status != nullptr) {
        *status = result;
    }
    return matched && result.ok();
}

bool rewriteCommands(DocumentFiles& files, std::string_view name, std::string_view code,
                     std::optional<std::string_view> oldValue,
                     std::optional<std::string_view> newValue, IoStatus* status) {
    if (name.empty() || code.empty()) {
        return false;
    }
    CommandRewrite rewrite;
    rewrite.pattern.append(code).append(":").append(oldValue.value_or(std::string_view()));
    if (newValue) {
        rewrite.newValue = std::string(*newValue);
    }
    return rewriteCommands(files, name, {rewrite}, status);
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
    std::string prefix;
    while (reader.nextCommand(source, command)) {
        const auto parts = splitCommand(command);
        if (parts.group.size() >= 3 && parts.group[1] == '-') {
            prefix.assign(1, parts.group[0]);
            prefix += "-";
            appendNumber(prefix, index);
            prefix += "\\";
            writer.write(prefix);
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
