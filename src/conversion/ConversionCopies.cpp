#include "conversion/ConversionCopies.h"

#include "conversion/ConversionStore.h"
#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/files/FileIo.h"
#include "core/talk/FileReports.h"
#include "core/talk/UserInterface.h"

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace kavu {

namespace {

constexpr std::string_view kFiles = "[kavu]*.C_*";
constexpr unsigned kPrivate = 0700;

std::string copiesFolder(const DocumentContext& context) {
    return context.store.pathOf(working::kEuDefinitions);
}

IoStatus listFiles(const std::string& folder, std::vector<std::string>& names) {
    std::vector<FolderEntry> entries;
    auto status = listFolder(folder, entries);
    for (auto& entry : entries) {
        if (!entry.isFolder && matchesWildcard(entry.name, kFiles)) {
            names.push_back(std::move(entry.name));
        }
    }
    return status;
}

void keepFirst(IoStatus& first, const IoStatus& status) {
    if (first.ok()) {
        first = status;
    }
}

}  // namespace

bool copyConversionFiles(DocumentContext& context, ConversionStore& conversions,
                         UserInterface* parent) {
    deleteConversionCopies(context, parent);
    auto status = conversions.writeOut();
    const auto folder = copiesFolder(context);
    if (status.ok()) {
        status = makeFolder(folder, kPrivate);
    }
    std::vector<std::string> names;
    if (status.ok()) {
        status = listFiles(context.store.folder(), names);
    }
    for (std::size_t i = 0; status.ok() && i < names.size(); ++i) {
        status = copyFile(context.store.pathOf(names[i]), folder + "/" + names[i]);
    }
    if (!status.ok()) {
        // A part of the files would be taken for all of them.
        deleteConversionCopies(context, nullptr);
        reportUnableToWrite(parent, status);
    }
    return status.ok();
}

bool restoreConversionFiles(DocumentContext& context, ConversionStore& conversions,
                            UserInterface* parent) {
    const auto folder = copiesFolder(context);
    if (!folderExists(folder)) {
        return true;
    }
    setStatusText(parent, "Restoring EU files");
    std::vector<std::string> copies;
    std::vector<std::string> present;
    auto status = listFiles(folder, copies);
    if (status.ok()) {
        status = listFiles(context.store.folder(), present);
    }
    bool restored = status.ok();
    if (restored) {
        const std::unordered_set<std::string> wanted(copies.begin(), copies.end());
        for (const auto& name : present) {
            if (!wanted.contains(name)) {
                keepFirst(status, context.files.remove(name));
            }
        }
        for (const auto& name : copies) {
            const auto moved = context.files.adopt(folder + "/" + name, name);
            keepFirst(status, moved);
            restored = restored && moved.ok();
        }
    }
    conversions.forget();
    setStatusText(parent, {});
    if (!status.ok()) {
        reportUnableToWrite(parent, status);
    }
    if (restored) {
        deleteConversionCopies(context, parent);
    }
    return status.ok();
}

void deleteConversionCopies(DocumentContext& context, UserInterface* parent) {
    const auto folder = copiesFolder(context);
    if (!folderExists(folder)) {
        return;
    }
    if (const auto status = deleteFolder(folder); !status.ok()) {
        reportUnableToWrite(parent, status);
    }
}

}  // namespace kavu
