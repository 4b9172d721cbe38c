#include "core/talk/FilePrompts.h"

#include "core/TmatsDocument.h"
#include "core/files/FileIo.h"
#include "core/talk/RecentFiles.h"
#include "core/text/Clock.h"
#include "core/text/Printf.h"

#include <sys/stat.h>

namespace kavu {

namespace {

constexpr std::string_view kExtension = ".tma";

bool isFolder(const std::string& path) {
    PathKind kind = PathKind::Missing;
    return probePath(path, kind).ok() && kind == PathKind::Folder;
}

/// Where the user works: empty if that is not known.
std::string workingFolder(const TmatsDocument& document, const ProfileSettings& settings) {
    if (document.open && !document.path.empty() && isFolder(folderOf(document.path))) {
        return folderOf(document.path);
    }
    for (const auto& file : recentFiles(settings)) {
        if (isFolder(folderOf(file))) {
            return folderOf(file);
        }
    }
    return {};
}

FilePrompt tmatsPrompt(const TmatsDocument& document, const ProfileSettings& settings,
                       std::string title) {
    FilePrompt prompt;
    prompt.title = std::move(title);
    prompt.filters = {{"TMATS Files (*.tma;*.tmt)", "*.tma;*.tmt"}, {"All Files (*)", "*"}};
    prompt.folder = workingFolder(document, settings);
    return prompt;
}

}  // namespace

FilePrompt openTmatsPrompt(const TmatsDocument& document, const ProfileSettings& settings,
                           std::string title) {
    return tmatsPrompt(document, settings, std::move(title));
}

FilePrompt saveTmatsPrompt(const TmatsDocument& document, const ProfileSettings& settings,
                           std::string title, std::string path) {
    auto prompt = tmatsPrompt(document, settings, std::move(title));
    prompt.path = std::move(path);
    prompt.forSaving = true;
    prompt.extension = kExtension;
    prompt.confirmsOverwrite = true;
    prompt.own = document.open ? document.path : std::string();
    return prompt;
}

std::string withExtension(const std::string& path, std::string_view extension) {
    const auto name = fileNameOf(path);
    const auto dot = name.rfind('.');
    const bool has = dot != std::string::npos && dot != 0 && dot + 1 != name.size();
    PathKind kind = PathKind::Missing;
    if (name.empty() || has || extension.empty() || !probePath(path, kind).ok() ||
        kind != PathKind::Missing) {
        return path;
    }
    return path + std::string(name.ends_with('.') ? extension.substr(1) : extension);
}

std::string withOtherExtension(const std::string& path, std::string_view extension) {
    const auto name = fileNameOf(path);
    const auto dot = name.rfind('.');
    const auto ending = dot == std::string::npos || dot == 0 ? 0 : name.size() - dot;
    return path.substr(0, path.size() - ending) + std::string(extension);
}

std::optional<std::string> overwriteQuestion(const std::string& path, const std::string& own) {
    bool same = false;
    if (!own.empty() && probeSameFile(path, own, same).ok() && same) {
        return std::nullopt;
    }
    struct stat info {};
    if (::lstat(path.c_str(), &info) != 0) {
        return std::nullopt;
    }
    // A link shows what it leads to.
    if (struct stat target{}; ::stat(path.c_str(), &target) == 0) {
        info = target;
    }
    const auto changed = localTime(info.st_mtime);
    return formatPrintf(
        "The file: '%s' already exists\n\n%d bytes, last changed on %s at %s"
        "\n\nOverwrite?",
        path, info.st_size, dateText(changed), timeText(changed));
}

}  // namespace kavu
