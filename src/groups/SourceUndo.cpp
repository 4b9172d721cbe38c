#include "groups/SourceUndo.h"

#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupFiles.h"
#include "core/files/FileIo.h"
#include "core/talk/FileReports.h"
#include "groups/GroupScan.h"

#include <algorithm>
#include <iterator>

namespace kavu {

namespace {

constexpr const char* kInFront = "TEMP";

// The chunks, the long comments, and raw commands that are not in chunks yet.
constexpr std::string_view kConversionPatterns[] = {"[kavu]*.C_O", "[kavu]*.C_COM",
                                                    "[kavu]*.C_RAW"};

}  // namespace

SourceUndo::~SourceUndo() {
    for (const auto& [name, copied] : kept_) {
        if (copied) {
            (void)deleteFile(context_.store.pathOf(kInFront + name));
        }
    }
}

IoStatus SourceUndo::keep(const std::string& name) {
    if (kept_.contains(name)) {
        return {};
    }
    const auto path = context_.store.pathOf(name);
    PathKind kind = PathKind::Missing;
    auto status = probePath(path, kind);
    const bool there = kind != PathKind::Missing;
    if (status.ok() && there) {
        status = copyFile(path, context_.store.pathOf(kInFront + name));
    }
    if (status.ok()) {
        kept_.emplace(name, there);
    }
    return status;
}

IoStatus SourceUndo::matchingFiles(const std::vector<std::string_view>& patterns,
                                   std::vector<std::string>& names) const {
    std::vector<FolderEntry> entries;
    auto status = listFolder(context_.store.folder(), entries);
    for (auto& entry : entries) {
        if (!entry.isFolder &&
            std::any_of(patterns.begin(), patterns.end(), [&](std::string_view pattern) {
                return matchesWildcard(entry.name, pattern);
            })) {
            names.push_back(std::move(entry.name));
        }
    }
    return status;
}

IoStatus SourceUndo::keepAll(std::vector<std::string_view> patterns) {
    std::vector<std::string> names;
    auto status = matchingFiles(patterns, names);
    for (std::size_t i = 0; status.ok() && i < names.size(); ++i) {
        status = keep(names[i]);
    }
    if (status.ok()) {
        families_.insert(families_.end(), patterns.begin(), patterns.end());
    }
    return status;
}

IoStatus SourceUndo::keepAllGroups() {
    std::vector<std::string_view> patterns;
    for (const auto& kind : groupKinds()) {
        patterns.push_back(kind.wildcard);
    }
    return keepAll(std::move(patterns));
}

IoStatus SourceUndo::keepConversions() {
    return keepAll({std::begin(kConversionPatterns), std::end(kConversionPatterns)});
}

IoStatus SourceUndo::deleteOthers() const {
    std::vector<std::string> names;
    auto status = matchingFiles(families_, names);
    for (const auto& name : names) {
        if (!kept_.contains(name)) {
            const auto deleted = context_.files.remove(name);
            status = status.ok() ? deleted : status;
        }
    }
    return status;
}

void SourceUndo::takeBack(UserInterface* parent) {
    IoStatus first = deleteOthers();
    for (auto it = kept_.begin(); it != kept_.end();) {
        auto status = it->second ? context_.files.adopt(context_.store.pathOf(kInFront + it->first),
                                                        it->first)
                                 : context_.files.remove(it->first);
        status = !it->second && isMissing(status) ? IoStatus() : status;
        first = first.ok() ? status : first;
        // A copy that could not be put back is all there is left of its file: it stays.
        it = kept_.erase(it);
    }
    if (!first.ok()) {
        reportUnableToWrite(parent, first);
    }
}

}  // namespace kavu
