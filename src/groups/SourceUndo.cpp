#include "groups/SourceUndo.h"

#include "core/FileIo.h"
#include "core/FileReports.h"
#include "core/GroupFiles.h"
#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "groups/GroupScan.h"

#include <algorithm>
#include <vector>

namespace kavu {

namespace {

constexpr const char* kInFront = "TEMP";

bool isGroupFile(const FolderEntry& entry) {
    const auto kinds = groupKinds();
    return !entry.isFolder && std::any_of(kinds.begin(), kinds.end(), [&](const GroupKind& kind) {
        return matchesWildcard(entry.name, kind.wildcard);
    });
}

IoStatus listGroupFiles(const DocumentContext& context, std::vector<std::string>& names) {
    std::vector<FolderEntry> entries;
    auto status = listFolder(context.store.folder(), entries);
    for (auto& entry : entries) {
        if (isGroupFile(entry)) {
            names.push_back(std::move(entry.name));
        }
    }
    return status;
}

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

IoStatus SourceUndo::keepAllGroups() {
    std::vector<std::string> names;
    auto status = listGroupFiles(context_, names);
    for (std::size_t i = 0; status.ok() && i < names.size(); ++i) {
        status = keep(names[i]);
    }
    all_ = status.ok();
    return status;
}

IoStatus SourceUndo::deleteOthers() const {
    std::vector<std::string> names;
    auto status = listGroupFiles(context_, names);
    for (const auto& name : names) {
        if (!kept_.contains(name)) {
            const auto deleted = deleteFile(context_.store.pathOf(name));
            status = status.ok() ? deleted : status;
        }
    }
    return status;
}

void SourceUndo::takeBack(UserInterface* parent) {
    IoStatus first = all_ ? deleteOthers() : IoStatus();
    for (auto it = kept_.begin(); it != kept_.end();) {
        const auto path = context_.store.pathOf(it->first);
        auto status = it->second ? renameFile(context_.store.pathOf(kInFront + it->first), path)
                                 : deleteFile(path);
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
