// Renames data sources and data links wherever they are named.
#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupFiles.h"
#include "core/document/GroupRewrite.h"
#include "core/document/Transaction.h"
#include "core/talk/BoxLines.h"
#include "core/talk/Messages.h"
#include "core/talk/QuestionNames.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"
#include "groups/SourceEdit.h"
#include "groups/SourceList.h"
#include "groups/SourceNames.h"
#include "vocabulary/References.h"

#include <algorithm>
#include <array>

namespace kavu {

namespace {

constexpr const char* kNewLink = "Enter New Data Link Name";
constexpr const char* kNewSource = "Enter New Data Source Name";

/// A group that names links, and the status text while its files are searched.
struct LinkingGroup {
    char letter;
    PrintfFormat<int> status;
    bool ownName = false;  ///< the name of its own link, not of one it refers to
};
constexpr auto kLinkingGroups = std::to_array<LinkingGroup>({
    {'M', "Updating Multiplex Data link Names (M-%d)"},
    {'P', "Updating Data link Names (P-%d)", true},
    {'D', "Updating Data link Names (D-%d)", true},
    {'B', "Updating Data link Names (B-%d)", true},
    {'S', "Updating Data link Names (S-%d)", true},
    {'A', "Updating Data link Names (A-%d)", true},
    {'P', "Updating Async Data link Names (P-%d)"},
    {'R', "Updating Tape Data Link Names (R-%d)"},
});

/// A value as a name: look-ups cut it to the limit of names.
std::string_view asName(std::string_view value) {
    return trimTrailingBlanks(value.substr(0, kNameLimit));
}

/// Renames one name in all files that hold it.
class Renaming {
  public:
    Renaming(DocumentContext& context, UserInterface* parent, OperationId operation,
             const std::string& oldName, const std::string& newName)
        : context_(context),
          parent_(parent),
          transaction_(context, operation),
          oldName_(asName(oldName)),
          newName_(newName) {}

    /// Replaces the name in the values of `wanted(code)` of one file. False after a failure
    /// or a cancel, after which nothing more is done.
    template <typename Wanted>
    bool inFile(char letter, int index, const Wanted& wanted) {
        if (!good_ || cancelRequested(parent_)) {
            good_ = false;
            return false;
        }
        const auto name = groupFile(letter, index);
        // Searched first: most files do not hold the name, and need not be written.
        bool holds = false;
        auto status = forEachCommand(
            context_.reader, context_.files.path(name), [&](const std::string& command) {
                const auto view = viewCommand(command);
                holds = !view.field.empty() && wanted(view.field) && matches(view.value);
                return !holds;
            });
        if (isMissing(status)) {
            return true;
        }
        if (status.ok() && holds) {
            rewriteValues(
                context_.files, context_.reader, name,
                [&](std::string_view code, std::string_view value) {
                    return wanted(code) && matches(value) ? std::optional(newName_) : std::nullopt;
                },
                status);
        }
        if (!status.ok()) {
            reportUnableToWrite(parent_, status);
            good_ = false;
        }
        return good_;
    }

    /// True if all went well; else everything is as it was.
    bool finish() { return endTransaction(transaction_, parent_, good_); }

  private:
    [[nodiscard]] bool matches(std::string_view value) const { return asName(value) == oldName_; }

    DocumentContext& context_;
    UserInterface* parent_;
    Transaction transaction_;
    std::string oldName_;
    std::string newName_;
    bool good_ = true;
};

/// References that a rename leaves as they are unless the user wants them renamed, too.
class OtherReferences {
  public:
    /// `refers` is OtherSource or OtherLink.
    OtherReferences(const Refers refers, const std::string& name)
        : refers_(refers), name_(asName(name)) {}

    /// Finds them and asks. False if a file could not be read, which is reported, or for Cancel.
    /// Without a parent they stay.
    bool ask(DocumentContext& context, UserInterface* parent, const char* title) {
        std::vector<std::string> codes;
        if (parent == nullptr || !gather(context, parent, codes)) {
            return parent == nullptr;
        }
        if (codes.empty()) {
            return true;
        }
        const auto reply = askAboutLines(
            *parent,
            {.name = question::kAllReferences,
             .title = title,
             .before =
                 formatPrintf("These commands name '%s' as well, and are left as they are:", name_),
             .after = "Do you want to rename it there, too?",
             .yes = "&Rename There, Too",
             .no = "&Leave Them"},
            codes);
        wanted_ = reply == Button::Yes;
        return wanted_ || reply == Button::No;
    }

    /// Renames them if they are wanted.
    void rename(Renaming& renaming) const {
        if (wanted_) {
            forEachFile([&](char letter, int index) {
                return renaming.inFile(letter, index, [&](std::string_view code) {
                    return refersTo(letter, code) == refers_;
                });
            });
        }
    }

  private:
    /// Calls `visit(letter, index)` for the files that may hold such references, until it returns
    /// false; false then.
    template <typename Visit>
    bool forEachFile(const Visit& visit) const {
        for (const auto& kind : groupKinds()) {
            if (!hasReferences(kind.letter, refers_)) {
                continue;
            }
            for (int index = kLeastGroupIndex; index <= kMostGroupIndex; ++index) {
                if (!visit(kind.letter, index)) {
                    return false;
                }
            }
        }
        return true;
    }

    bool gather(DocumentContext& context, UserInterface* parent,
                std::vector<std::string>& codes) const {
        return forEachFile([&](char letter, int index) {
            const auto status = forEachCommand(
                context.reader, context.files.path(groupFile(letter, index)),
                [&](const std::string& command) {
                    const auto view = viewCommand(command);
                    if (refersTo(letter, view.field) == refers_ && asName(view.value) == name_) {
                        codes.emplace_back(view.code);
                    }
                    return true;
                });
            if (!status.ok() && !isMissing(status)) {
                reportUnableToRead(parent, status);
                return false;
            }
            return true;
        });
    }

    Refers refers_;
    std::string name_;
    bool wanted_ = false;
};

/// Refuses an impossible or existing name.
bool mayRename(const DocumentContext& context, UserInterface* parent, const std::string& newName,
               const LinkNames& taken, MessageFor<> refusal, const std::string& title) {
    if (!isAcceptableName(context, parent, newName, title)) {
        return false;
    }
    if (taken.has(newName)) {
        context.messages.show(parent, refusal, title::kError, kErrorBox);
        return false;
    }
    return true;
}

bool renameInLinkingGroups(Renaming& renaming, UserInterface* parent) {
    int step = 0;
    for (const auto& group : kLinkingGroups) {
        setProgressBar(parent, 100.0 * step++ / static_cast<double>(kLinkingGroups.size()));
        const bool own = group.ownName;
        for (int index = kLeastGroupIndex; index <= kMostGroupIndex; ++index) {
            setStatusText(parent, formatPrintf(group.status, index));
            const auto wanted = [&](std::string_view code) {
                const auto refers = refersTo(group.letter, code);
                return own ? refers == Refers::LinkName
                           : refers == Refers::Link || refers == Refers::LinkMention;
            };
            if (!renaming.inFile(group.letter, index, wanted)) {
                return false;
            }
        }
    }
    return true;
}

}  // namespace

bool renameDataLink(SourceParts& parts, UserInterface* parent, const std::string& oldName,
                    const std::string& newName) {
    auto& context = parts.context;
    LinkNames taken;
    if (!gatherLinkNames(context, parent, taken)) {
        return false;
    }
    if (!taken.has(oldName)) {
        showBox(parent, formatPrintf("There is no data link '%s' in this document.", oldName),
                kNewLink);
        return false;
    }
    if (!mayRename(context, parent, newName, taken, 374, kNewLink)) {
        return false;
    }
    OtherReferences others(Refers::OtherLink, oldName);
    if (!others.ask(context, parent, kNewLink)) {
        return false;
    }
    ProgressScope progress(parent, ProgressMode::WithCancel);
    Renaming renaming(context, parent, OperationId::RenameLink, oldName, newName);
    if (renameInLinkingGroups(renaming, parent)) {
        others.rename(renaming);
    }
    const bool done = renaming.finish();
    progress.close();
    setProgressBar(parent, -1);
    setStatusText(parent, {});
    if (done) {
        releaseStream(context);
    }
    return done;
}

bool askRenameDataLink(SourceParts& parts, UserInterface* parent, const std::string& oldName) {
    LinkNames taken;
    if (!gatherLinkNames(parts.context, parent, taken)) {
        return false;
    }
    const TextPrompt prompt{kNewLink, kNewLink, oldName, kNameLimit};
    const auto name = askName(parent, prompt, [&](const std::string& entered) {
        return mayRename(parts.context, parent, entered, taken, 374, kNewLink);
    });
    return name && renameDataLink(parts, parent, oldName, *name);
}

bool renameDataSource(SourceParts& parts, UserInterface* parent, const std::string& oldName,
                      const std::string& newName) {
    auto& context = parts.context;
    setStatusText(parent, "Validating Data Source Names");
    LinkNames taken;
    if (!gatherSourceNames(context, parent, taken)) {
        return false;
    }
    if (!taken.has(oldName)) {
        showBox(parent, formatPrintf("There is no data source '%s' in this document.", oldName),
                kNewSource);
        return false;
    }
    OtherReferences others(Refers::OtherSource, oldName);
    if (!mayRename(context, parent, newName, taken, 141, kNewSource) ||
        !others.ask(context, parent, kNewSource)) {
        return false;
    }
    ProgressScope progress(parent, ProgressMode::WithCancel);
    setStatusText(parent, "Changing Data Source Names");
    Renaming renaming(context, parent, OperationId::RenameSource, oldName, newName);
    renaming.inFile(
        'G', 0, [](std::string_view code) { return refersTo('G', code) == Refers::SourceName; });
    for (const char letter : {'T', 'R', 'M', 'V'}) {
        for (int index = kLeastGroupIndex; index <= kMostGroupIndex; ++index) {
            if (!renaming.inFile(letter, index, [letter](std::string_view code) {
                    return refersTo(letter, code) == Refers::Source;
                })) {
                break;
            }
        }
    }
    others.rename(renaming);
    const bool done = renaming.finish();
    progress.close();
    setStatusText(parent, {});
    if (done) {
        releaseStream(context);
    }
    return done;
}

bool askRenameDataSource(SourceParts& parts, UserInterface* parent, const std::string& oldName) {
    LinkNames taken;
    if (!gatherSourceNames(parts.context, parent, taken)) {
        return false;
    }
    const TextPrompt prompt{kNewSource, kNewSource, oldName, kNameLimit};
    const auto name = askName(parent, prompt, [&](const std::string& entered) {
        return mayRename(parts.context, parent, entered, taken, 141, kNewSource);
    });
    return name && renameDataSource(parts, parent, oldName, *name);
}

}  // namespace kavu
