#include "cli/OutputFile.h"

#include "core/files/FileIo.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"

namespace kavu::cli {

namespace {

constexpr const char* kOutputTitle = "Unable To Write File";
constexpr const char* kSettingsTitle = "Unable To Read Settings";
/// No settings of ours are larger by far.
constexpr std::uint64_t kMostSettings = std::uint64_t{16} << 20;

bool refuse(UserInterface* ui, std::string text, const char* title) {
    showBox(ui, std::move(text), title);
    return false;
}

/// True for text of which every line but blank ones and comments stands below a heading.
bool hasSections(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF")) {
        text.remove_prefix(3);
    }
    if (text.find('\0') != std::string_view::npos) {
        return false;
    }
    while (!text.empty()) {
        const auto end = text.find_first_of("\r\n");
        const auto line = trim(text.substr(0, end));
        if (!line.empty() && line.front() != ';' && line.front() != '#') {
            return line.front() == '[' && line.find(']') != std::string_view::npos;
        }
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return true;
}

}  // namespace

bool mayWriteOutput(UserInterface* ui, const CommandLine& line, const std::string& path) {
    for (const auto& input : {line.file, line.otherFile, line.settingsPath, line.report.layout}) {
        bool same = false;
        if (const auto status = probeSameFile(path, input, same); status.ok() && same) {
            return refuse(ui, formatPrintf("'%s' is an input; it is not overwritten.", path),
                          kOutputTitle);
        }
    }
    PathKind kind = PathKind::Missing;
    if (const auto status = probePath(path, kind); !status.ok()) {
        return refuse(ui, formatPrintf("Unable to write '%s'\n\nReason: %s", path, status.reason()),
                      kOutputTitle);
    }
    if (kind == PathKind::Missing || line.overwrite) {
        return true;
    }
    return refuse(ui, formatPrintf("'%s' exists. With --overwrite it would be replaced.", path),
                  kOutputTitle);
}

bool isSettingsFile(UserInterface* ui, const std::string& path) {
    PathKind kind = PathKind::Missing;
    auto status = probePath(path, kind);
    if (status.ok() && kind == PathKind::Missing) {
        return true;
    }
    std::string text;
    const bool isReadable = status.ok() && kind == PathKind::PlainFile;
    if (isReadable && fileSize(path) <= kMostSettings) {
        status = readWholeFile(path, text);
    }
    if (!status.ok()) {
        return refuse(ui, formatPrintf("Unable to read '%s'\n\nReason: %s", path, status.reason()),
                      kSettingsTitle);
    }
    if (!isReadable || fileSize(path) > kMostSettings || !hasSections(text)) {
        return refuse(ui, formatPrintf("'%s' is no settings file.", path), kSettingsTitle);
    }
    return true;
}

}  // namespace kavu::cli
