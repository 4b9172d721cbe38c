#include "groups/Reindex.h"

#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupFiles.h"
#include "core/document/GroupRewrite.h"
#include "core/files/FileIo.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "groups/GroupScan.h"
#include "groups/LinkValidation.h"
#include "vocabulary/References.h"

#include <algorithm>
#include <functional>
#include <unordered_set>

namespace kavu {

namespace {

constexpr std::string_view kTemporaryFolder = "tmp";
/// The order in which the groups are renumbered.
constexpr std::string_view kRenumbered = "RTVMPABDS";

/// The index in the name of a group's file.
std::int64_t indexIn(std::string_view name) {
    return leadingInteger(name.substr(std::min(name.rfind('.') + 2, name.size())));
}

/// "M-3 'Old Radio'"
std::string titleOf(const std::string& file, const std::string& name) {
    return formatPrintf("%c-%d '%s'", file[file.rfind('.') + 1], static_cast<int>(indexIn(file)),
                        name);
}

/// True for the file of a group that a save would write. Those of other indices are not part of the
/// document: a new number would make them so.
bool hasSavedIndex(std::string_view name) {
    const auto index = indexIn(name);
    return index >= kLeastGroupIndex && index <= kMostGroupIndex;
}

/// Whether files of groups that are not saved count.
enum class Unsaved { Seen, Skipped };

/// The names of the files in the working store that match, sorted.
IoStatus matchingFiles(const DocumentContext& context, std::string_view wildcard, Unsaved unsaved,
                       std::vector<std::string>& names) {
    std::vector<FolderEntry> entries;
    auto status = listFolder(context.store.folder(), entries);
    for (auto& entry : entries) {
        if (!entry.isFolder && matchesWildcard(entry.name, wildcard) &&
            (unsaved == Unsaved::Seen || hasSavedIndex(entry.name))) {
            names.push_back(std::move(entry.name));
        }
    }
    return status;
}

class Reindexer {
  public:
    Reindexer(DocumentContext& context, UserInterface* parent)
        : context_(context), parent_(parent) {}

    bool run(std::span<const UnreferencedGroup> spared) {
        for (const auto& group : spared) {
            spared_.insert(group.file);
        }
        return remove() && renumber();
    }

    /// Only finds what would be removed.
    bool find(const std::string& source, std::vector<UnreferencedGroup>& found) {
        found_ = &found;
        sources_.add(source);
        return remove();
    }

  private:
    bool remove() { return gatherSources() && removeSources() && gatherLinks() && removeStreams(); }

    /// Calls `visit` for every file of a wildcard. A file that has vanished is skipped, and so is
    /// one that is only said to go.
    bool walk(std::string_view wildcard, Unsaved unsaved,
              const std::function<bool(const std::string&)>& visit) {
        std::vector<std::string> names;
        if (const auto status = matchingFiles(context_, wildcard, unsaved, names); !status.ok()) {
            reportUnableToRead(parent_, status);
            return false;
        }
        for (std::size_t i = 0; i < names.size(); ++i) {
            setProgressBar(parent_,
                           100.0 * static_cast<double>(i) / static_cast<double>(names.size()));
            yieldToInterface(parent_);
            // An existing file that cannot be read stops the pass: it may hold the home of a
            // stream, or a group that has none.
            const auto path = context_.files.path(names[i]);
            PathKind kind = PathKind::Missing;
            if (const auto status = probePath(path, kind); !status.ok()) {
                reportUnableToRead(parent_, status);
                return false;
            }
            if (kind != PathKind::Missing && !gone_.contains(names[i]) && !visit(names[i])) {
                return false;
            }
        }
        return true;
    }

    /// Adds the values of all commands of the files whose code is wanted. A home in a group that is
    /// not saved keeps its stream: only the user may decide to lose it.
    bool gather(std::string_view wildcard, const std::function<bool(std::string_view)>& wanted) {
        return walk(wildcard, Unsaved::Seen, [&](const std::string& file) {
            const auto status = forEachCommand(context_.reader, context_.files.path(file),
                                               [&](const std::string& command) {
                                                   const auto view = viewCommand(command);
                                                   if (wanted(view.field)) {
                                                       links_.add(view.value.substr(0, kNameLimit));
                                                   }
                                                   return true;
                                               });
            if (!status.ok()) {
                reportUnableToRead(parent_, status);
            }
            return status.ok();
        });
    }

    /// Removes the files of a wildcard whose name is not in the list.
    bool removeUnlisted(std::string_view wildcard, std::string_view code, const LinkNames& listed) {
        return walk(wildcard, Unsaved::Skipped, [&](const std::string& file) {
            ByteSource source;
            auto status = source.open(context_.files.path(file));
            std::string name;
            while (status.ok() && name.empty()) {
                const auto command = context_.reader.findCommandContaining(source, code);
                if (!command) {
                    status = source.status();
                    break;
                }
                // The text may also be inside the value of another command.
                const auto view = viewCommand(*command);
                name = equalsIgnoreCase(view.field, code) ? view.value.substr(0, kNameLimit)
                                                          : std::string_view();
            }
            if (!status.ok()) {
                reportUnableToRead(parent_, status);
                return false;
            }
            if (name.empty() || listed.has(name) || spared_.contains(file)) {
                return true;
            }
            source.close();
            return removeFile(file, name);
        });
    }

    bool removeFile(const std::string& file, const std::string& name) {
        if (found_ != nullptr) {
            gone_.insert(file);
            found_->push_back({file, titleOf(file, name)});
            return true;
        }
        const auto status = context_.files.remove(file);
        if (!status.ok()) {
            reportUnableToWrite(parent_, status);
        }
        return status.ok();
    }

    bool gatherSources() {
        setStatusText(parent_, "Searching for Data Source Definitions");
        const auto status =
            forEachCommand(context_.reader, context_.store.pathOf(working::kGeneral),
                           [this](const std::string& command) {
                               const auto view = viewCommand(command);
                               // All rows, whatever the count says: a source named in any row
                               // is kept.
                               if (refersTo('G', view.field) == Refers::SourceName) {
                                   sources_.add(view.value.substr(0, kNameLimit));
                               }
                               return true;
                           });
        if (!status.ok() && !isMissing(status)) {
            reportUnableToRead(parent_, status);
            return false;
        }
        return true;
    }

    void tellRemoval(const char* text) {
        if (found_ == nullptr) {
            setStatusText(parent_, text);
        }
    }

    bool removeSources() {
        tellRemoval("Removing unreferenced Data Sources");
        return removeUnlisted("[kavu]DSRCE.*", ownNameOf('T'), sources_) &&
               removeUnlisted(groupKind('M').wildcard, ownNameOf('M'), sources_) &&
               removeUnlisted(groupKind('V').wildcard, ownNameOf('V'), sources_);
    }

    /// Tests whether a code of a group gives a stream a home; a mere mention does not.
    static std::function<bool(std::string_view)> isHomeIn(char letter) {
        return [letter](std::string_view code) { return refersTo(letter, code) == Refers::Link; };
    }

    bool gatherLinks() {
        setStatusText(parent_, "Searching for Data Links in Tape definitions");
        // The recorders' own links count in every edition: a stream that a recorder names
        // must never be deleted.
        if (!gather("[kavu]DSRCE.*", isHomeIn('R'))) {
            return false;
        }
        setStatusText(parent_, "Searching for Data Links in Multiplex definitions");
        if (!gather(groupKind('M').wildcard, isHomeIn('M'))) {
            return false;
        }
        setStatusText(parent_, "Searching for Data Links in PCM definitions");
        // A stream that is merged into another has its home there.
        return gather(groupKind('P').wildcard, isHomeIn('P'));
    }

    bool removeStreams() {
        tellRemoval("Removing unreferenced Data Links");
        return removeUnlisted("[kavu]PCM*.*", ownNameOf('P'), links_);
    }

    bool renumber() {
        return std::all_of(kRenumbered.begin(), kRenumbered.end(), [this](char letter) {
            const auto& kind = groupKind(letter);
            return renumberGroup(context_, parent_, letter, kind.wildcard, kind.fileFormat);
        });
    }

    DocumentContext& context_;
    UserInterface* parent_;
    std::vector<UnreferencedGroup>* found_ = nullptr;  ///< null when the groups are removed
    std::unordered_set<std::string> gone_;             ///< what is only said to go
    std::unordered_set<std::string> spared_;
    LinkNames sources_;
    LinkNames links_;
};

/// Copies the files of a group into the folder, under their new names and with their new
/// index.
IoStatus copyRenumbered(const DocumentContext& context, const std::vector<std::string>& names,
                        const std::string& folder, std::string_view nameFormat,
                        std::vector<std::string>& newNames) {
    for (std::size_t i = 0; i < names.size(); ++i) {
        const int index = static_cast<int>(i) + 1;
        newNames.push_back(formatPrintf(runtimeFormat(nameFormat), index));
        const auto copy = folder + "/" + newNames.back();
        if (auto status = copyWithGroupIndex(context.store.pathOf(names[i]), copy, index);
            !status.ok()) {
            return status;
        }
    }
    return {};
}

/// Moves the copies into the working store, and removes the files that have no successor
/// of the same name. At every moment a file exists under its old or its new name.
IoStatus takeCopies(const DocumentContext& context, const std::vector<std::string>& oldNames,
                    const std::string& folder, const std::vector<std::string>& newNames) {
    for (const auto& name : newNames) {
        if (auto status = context.files.adopt(folder + "/" + name, name); !status.ok()) {
            return status;
        }
    }
    const std::unordered_set<std::string> kept(newNames.begin(), newNames.end());
    for (const auto& name : oldNames) {
        if (kept.contains(name)) {
            continue;
        }
        if (auto status = context.files.remove(name); !status.ok()) {
            return status;
        }
    }
    return {};
}

}  // namespace

bool reindexAllSections(DocumentContext& context, UserInterface* parent,
                        std::span<const UnreferencedGroup> spared) {
    const ProgressScope progress(parent, ProgressMode::WithoutCancel);
    setStatusText(parent, "Re-Indexing all TMATS sections");
    const bool done = Reindexer(context, parent).run(spared);
    setProgressBar(parent, -1);
    setStatusText(parent, {});
    return done;
}

bool findUnreferencedGroups(DocumentContext& context, UserInterface* parent,
                            const std::string& source, std::vector<UnreferencedGroup>& found) {
    const ProgressScope progress(parent, ProgressMode::WithoutCancel);
    const bool done = Reindexer(context, parent).find(source, found);
    setProgressBar(parent, -1);
    setStatusText(parent, {});
    return done;
}

bool renumberGroup(DocumentContext& context, UserInterface* parent, char letter,
                   std::string_view wildcard, std::string_view nameFormat) {
    setStatusText(parent, formatPrintf("Renumbering TMATS %c group indexes", letter));
    std::vector<std::string> names;
    auto status = matchingFiles(context, wildcard, Unsaved::Skipped, names);
    if (!status.ok()) {
        reportUnableToRead(parent, status);
        return false;
    }
    if (names.empty()) {
        return true;
    }
    const auto folder = context.store.pathOf(kTemporaryFolder);
    if (!makeFolder(folder, 0700).ok()) {
        return true;
    }
    std::vector<std::string> newNames;
    status = copyRenumbered(context, names, folder, nameFormat, newNames);
    status = status.ok() ? takeCopies(context, names, folder, newNames) : status;
    status = status.ok() ? deleteFolder(folder) : status;
    if (!status.ok()) {
        reportUnableToWrite(parent, status);
    }
    return status.ok();
}

}  // namespace kavu
