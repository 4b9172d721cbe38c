#include "core/document/BuildDocument.h"

#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "core/document/Banner.h"
#include "core/document/ChangedFile.h"
#include "core/document/ConversionComments.h"
#include "core/document/DocumentFiles.h"
#include "core/document/DocumentHistory.h"
#include "core/document/DocumentVersion.h"
#include "core/document/GroupFiles.h"
#include "core/document/GroupRewrite.h"
#include "core/document/SaveTarget.h"
#include "core/document/Transaction.h"
#include "core/files/FileIo.h"
#include "core/talk/FilePrompts.h"
#include "core/talk/FileReports.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Clock.h"
#include "core/text/Edition.h"
#include "core/text/Text.h"

#include <cerrno>
#include <set>
#include <unordered_set>

namespace kavu {

namespace {

constexpr const char* kConversionGroup = "Data Conversion Attributes";

/// A group file of a crashed run may end within a command.
void noteCutOff(UserInterface* parent, const std::string& where) {
    if (parent != nullptr) {
        parent->loadRemark(where + ": the last command is cut off and is left out.");
    }
}

/// The name of a group in messages. From 2009 on an S group is message data, before that
/// packet data.
std::string nameOfGroup(const DocumentContext& context, const GroupKind& kind) {
    if (kind.letter == 'S') {
        return context.document.version > 2007 ? "Message Data Attributes" : "Packet Attributes";
    }
    return std::string(kind.messageName);
}

/// Reports a group file that was deleted from outside: the saved file would silently lose its
/// commands.
bool checkNoneVanished(const DocumentContext& context, UserInterface* parent) {
    for (const auto& name : context.files.missing()) {
        const auto& kind = groupKind(describeDocumentFile(name).letter);
        if (context.document.version >= kind.firstEdition) {
            const auto path = context.files.path(name);
            reportUnreadableGroup(context.messages, parent, IoStatus(path, ENOENT),
                                  nameOfGroup(context, kind), path);
            return false;
        }
    }
    return true;
}

/// Joins the group files, one table row after the other.
class Builder {
  public:
    Builder(DocumentContext& context, UserInterface* parent, FileWriter& target)
        : context_(context),
          parent_(parent),
          target_(target),
          keepComments_(context.settings.get(setting::kKeepComments)) {}

    bool run() {
        // One listing shows what is there. Trying every name would cost a call for each, and
        // a file that cannot be reached would pass for one that does not exist.
        if (const auto status = listStore(); !status.ok()) {
            reportUnableToRead(parent_, status, title::kErrorSaving);
            return false;
        }
        for (const auto& kind : groupKinds()) {
            // The C group has no file; it is generated before the H group.
            if (kind.letter == 'H' && !saveConversions()) {
                return false;
            }
            if (context_.document.version < kind.firstEdition) {
                noteLeftOut(kind);
            } else if (!saveGroup(kind)) {
                return false;
            }
        }
        return true;
    }

  private:
    IoStatus listStore() {
        std::vector<FolderEntry> entries;
        const auto status = listFolder(context_.store.folder(), entries);
        for (auto& entry : entries) {
            names_.insert(std::move(entry.name));
        }
        return status;
    }

    bool saveConversions() {
        const bool joined =
            keepComments_ && names_.contains(std::string(working::kConversionComments));
        if (!(joined ? saveConversionsWithComments() : writeConversions(target_))) {
            return false;
        }
        return !names_.contains(std::string(working::kUnsplitConversions)) ||
               copyFrom(working::kUnsplitConversions, "Saving Data Conversion Information",
                        kConversionGroup, keepComments_);
    }

    bool writeConversions(FileWriter& target) {
        return !context_.steps.saveConversions || context_.steps.saveConversions(parent_, target);
    }

    bool saveConversionsWithComments() {
        const auto path = context_.store.pathOf(working::kWrittenConversions);
        FileWriter group;
        auto status = group.open(path, WriteMode::Truncate);
        const bool written = status.ok() && writeConversions(group);
        status = group.close();
        if (written && status.ok()) {
            status = joinConversionComments(context_.files, context_.reader, path, target_);
        }
        (void)deleteFile(path);
        if (!status.ok()) {
            reportUnreadableGroup(context_.messages, parent_, status, kConversionGroup,
                                  status.path());
        }
        return written && status.ok() && target_.status().ok();
    }

    /// Groups that the edition does not know stay in the working store, and are in no file.
    void noteLeftOut(const GroupKind& kind) const {
        int count = 0;
        for (int index = kLeastGroupIndex; index <= kMostGroupIndex; ++index) {
            count += names_.contains(groupFile(kind.letter, index)) ? 1 : 0;
        }
        if (parent_ != nullptr && count > 0) {
            parent_->loadRemark(formatPrintf("An IRIG %s file has no %c groups: %d left out.",
                                             editionText(context_.document.version), kind.letter,
                                             count));
        }
    }

    bool saveGroup(const GroupKind& kind) {
        if (!kind.indexed) {
            const bool needed = kind.letter == 'G';
            return (!needed && !names_.contains(groupFile(kind.letter))) || saveFile(kind, 0);
        }
        for (int index = kLeastGroupIndex; index <= kMostGroupIndex; ++index) {
            if (names_.contains(groupFile(kind.letter, index)) && !saveFile(kind, index)) {
                return false;
            }
        }
        return true;
    }

    [[nodiscard]] std::string progressText(const GroupKind& kind, int index) const {
        if (kind.letter == 'S') {
            return formatPrintf(runtimeFormat(kind.saveTitle), nameOfGroup(context_, kind), index);
        }
        return kind.indexed ? formatPrintf(runtimeFormat(kind.saveTitle), index)
                            : std::string(kind.saveTitle);
    }

    bool saveFile(const GroupKind& kind, int index) {
        // The banner is in the G file.
        return copyFrom(groupFile(kind.letter, index), progressText(kind, index),
                        nameOfGroup(context_, kind), keepComments_ || kind.letter == 'G');
    }

    bool copyFrom(std::string_view file, const std::string& progress, const std::string& group,
                  bool withComments) {
        const auto path = context_.store.pathOf(file);
        ByteSource source;
        auto status = source.open(path);
        if (status.ok()) {
            if (!copyGroupFile(context_, parent_, source, target_, progress, lineCounter_,
                               withComments)) {
                return false;
            }
            status = source.status();
        }
        if (!status.ok()) {
            reportUnreadableGroup(context_.messages, parent_, status, group, path);
        }
        // A target that takes no more is reported when it is closed.
        return status.ok() && target_.status().ok();
    }

    DocumentContext& context_;
    UserInterface* parent_;
    FileWriter& target_;
    bool keepComments_;
    std::unordered_set<std::string> names_;
    unsigned lineCounter_ = 0;
};

/// Takes the banner of an earlier save out of the G file; other comments stay.
IoStatus dropBanner(DocumentContext& context) {
    ByteSource source;
    auto status = source.open(context.files.path(working::kGeneral));
    std::set<long> banner;  // the numbers of its commands
    BannerFilter filter;
    std::string command;
    const auto stays = [&banner](const std::vector<FileComment>& comments) {
        for (const auto& comment : comments) {
            banner.erase(comment.line);
        }
    };
    for (long number = 0; status.ok() && context.reader.nextRawCommand(source, command); ++number) {
        if (isComment(command)) {
            banner.insert(number);
            stays(filter.add({number, command}));
        } else if (filter.isWaiting()) {
            stays(filter.end());
        }
    }
    stays(filter.end());
    status = status.ok() ? source.status() : status;
    source.close();
    if (status.ok() && !banner.empty()) {
        long number = 0;
        rewriteGroup(
            context.files, context.reader, working::kGeneral, Cut::Commands,
            [&](CommandEdit& edit) {
                if (banner.contains(number++)) {
                    edit.erase();
                }
            },
            {}, status);
    }
    return status;
}

/// Inserts `head` at the front of the G file, or after the banner at its head.
bool putIntoGeneralFile(DocumentContext& context, UserInterface* parent, const std::string& head,
                        bool behindBanner) {
    bool placed = false;
    std::size_t passed = 0;
    const auto place = [&](CommandEdit& command) {
        const bool inBanner = behindBanner && passed < kBannerLines && isComment(command.text());
        passed += inBanner ? 1 : 0;
        if (!placed && !inBanner) {
            command.before(head);
            placed = true;
        }
    };
    const auto tail = [&](bool cutOff) {
        if (cutOff) {
            noteCutOff(parent, "General Information");
        }
        return placed ? std::string() : head;
    };
    IoStatus status;
    rewriteGroup(context.files, context.reader, working::kGeneral, Cut::Commands, place, tail,
                 status);
    if (!status.ok()) {
        reportUnableToWrite(parent, status, title::kErrorSaving);
    }
    return status.ok();
}

/// A document without any G command can be saved: its G file is made first.
bool ensureGeneralFile(DocumentContext& context, UserInterface* parent) {
    const auto path = context.store.pathOf(working::kGeneral);
    PathKind kind = PathKind::Missing;
    auto status = probePath(path, kind);
    if (status.ok() && kind != PathKind::Missing) {
        return true;
    }
    status = status.ok() ? context.files.put(working::kGeneral, {}) : status;
    if (!status.ok()) {
        reportUnableToWrite(parent, status, title::kErrorSaving);
    }
    return status.ok();
}

}  // namespace

bool writeBanner(DocumentContext& context, UserInterface* parent) {
    if (context.document.version < 1999) {
        return true;
    }
    IoStatus status;
    if (context.settings.get(setting::kKeepComments)) {
        status = dropBanner(context);
    } else {
        (void)rewriteCommands(context.files, working::kGeneral, "COMMENT", std::nullopt,
                              std::nullopt, &status,
                              changedByTextLog(context.messages, parent, title::kWarning));
    }
    if (!status.ok()) {
        reportUnableToWrite(parent, status, title::kErrorSaving);
        return false;
    }
    return putIntoGeneralFile(context, parent,
                              bannerText(context.clock.now(), context.document.created), false);
}

bool writeFileNameField(DocumentContext& context, UserInterface* parent, const std::string& path) {
    if (context.document.version < 2009) {
        return true;
    }
    // A semicolon would end the command within the name.
    std::string name = replaceAll(fileNameOf(path), ";", "_");
    toStoredForm(name);
    IoStatus status;
    const bool replaced =
        rewriteCommands(context.files, working::kGeneral, "G\\FN", std::nullopt, name, &status,
                        changedByTextLog(context.messages, parent, title::kWarning));
    if (!status.ok()) {
        reportUnableToWrite(parent, status, title::kErrorSaving);
        return false;
    }
    return replaced || putIntoGeneralFile(context, parent, "G\\FN:" + name + ";\r\n", true);
}

bool copyGroupFile(DocumentContext& context, UserInterface* parent, ByteSource& source,
                   FileWriter& target, const std::string& progressText, unsigned& lineCounter,
                   bool withComments) {
    setProgressText(parent, progressText);
    source.seek(0);
    if (cancelRequested(parent)) {
        return false;
    }
    auto& reader = context.reader;
    std::string room;
    std::size_t partial = 0;
    for (;;) {
        unsigned count = 0;
        if (!withComments) {
            // Up to the next look at what the user wants.
            target.write(reader.takeLines(source, kPollEvery - lineCounter % kPollEvery, count));
        }
        if (count == 0) {
            const auto command = withComments ? reader.viewNextRaw(source, room, nullptr, &partial)
                                              : reader.viewNext(source, room, nullptr, &partial);
            if (!command) {
                break;
            }
            std::string line(*command);
            fromStoredForm(line);
            target.write(line.append("\r\n"));
            count = 1;
        }
        lineCounter += count;
        if (lineCounter % kPollEvery != 0) {
            continue;
        }
        if (!target.status().ok() || cancelRequested(parent)) {
            return false;
        }
        if (parent != nullptr && context.ticker.secondElapsed()) {
            parent->setProgressText(formatPrintf("%s Line: %u", progressText, lineCounter));
            parent->setProgressBar(100.0 * static_cast<double>(source.position()) /
                                   static_cast<double>(source.size() + 1));
        }
    }
    if (partial > 0) {
        noteCutOff(parent, progressText);
    }
    return true;
}

namespace {

bool buildInto(DocumentContext& context, UserInterface* parent, SaveTarget& target) {
    if (!target.begin()) {
        return false;
    }
    ProgressScope progress(parent, ProgressMode::WithCancel);
    setProgressText(parent, "Building TMATS file");
    const bool built = Builder(context, parent, target.writer()).run();
    progress.close();
    setProgressBar(parent, -1);
    return target.end(built);
}

/// Joins the group files into the target.
bool buildTmatsFile(DocumentContext& context, UserInterface* parent, SaveTarget& target) {
    const bool built = buildInto(context, parent, target);
    if (!built && target.hasTouchedFile()) {
        context.history.markCutShort(absolutePath(target.path()));
    }
    return built;
}

enum class SaveOutcome { Saved, NotSaved, SaveElsewhere, Reopen };

/// The file is kept for this run from the look at it to its new state: no change by another one
/// comes between the two.
SaveOutcome saveUnder(DocumentContext& context, UserInterface* parent, const std::string& path) {
    const auto& steps = context.steps;
    const SaveScope scope(context.files);
    SaveTarget target(context, parent, path);
    if (!target.claim()) {
        return SaveOutcome::NotSaved;
    }
    if (isChangedByAnother(context.document, path)) {
        switch (askAboutChangedFile(context, parent, path)) {
            case ChangedFileChoice::Overwrite:
                break;
            case ChangedFileChoice::SaveElsewhere:
                return SaveOutcome::SaveElsewhere;
            case ChangedFileChoice::Reopen:
                return SaveOutcome::Reopen;
            case ChangedFileChoice::Cancel:
                return SaveOutcome::NotSaved;
        }
    }
    const bool saved = checkNoneVanished(context, parent) &&
                       (!steps.storeOpenEditor || steps.storeOpenEditor(parent)) &&
                       ensureGeneralFile(context, parent) && writeBanner(context, parent) &&
                       writeFileNameField(context, parent, path) &&
                       buildTmatsFile(context, parent, target);
    if (!saved) {
        return SaveOutcome::NotSaved;
    }
    context.document.path = absolutePath(path);
    // What it says of the file before is of no harm.
    (void)context.files.recordState(context.document.version, describeSource(path));
    context.history.markSaved();
    return SaveOutcome::Saved;
}

}  // namespace

bool saveDocument(DocumentContext& context, UserInterface* parent) {
    const auto& document = context.document;
    if (document.path.empty()) {
        return saveDocumentAs(context, parent);
    }
    if (document.readOnly) {
        context.messages.show(parent, -144, title::kWarning, kWarningBox, document.path);
        return saveDocumentAs(context, parent);
    }
    return saveDocumentTo(context, parent, document.path);
}

bool saveDocumentAs(DocumentContext& context, UserInterface* parent) {
    if (parent == nullptr) {
        return false;
    }
    const auto& document = context.document;
    const auto choice = parent->chooseFile(
        saveTmatsPrompt(document, context.settings, "Save TMATS File As", document.path));
    return choice && saveDocumentTo(context, parent, choice->path);
}

bool saveDocumentTo(DocumentContext& context, UserInterface* parent, const std::string& path) {
    if (context.history.isFrozen()) {
        reportFrozen(context, parent);
        return false;
    }
    switch (saveUnder(context, parent, path)) {
        case SaveOutcome::Saved:
            context.messages.showLog(parent, path);
            return true;
        case SaveOutcome::SaveElsewhere:
            return saveDocumentAs(context, parent);
        case SaveOutcome::Reopen:
            (void)context.steps.reopenDocument(parent);
            break;
        case SaveOutcome::NotSaved:
            break;
    }
    return false;
}

CloseResult closeDocument(DocumentContext& context, UserInterface* parent) {
    if (context.document.changed) {
        const BoxStyle style{Icon::Warning, Buttons::YesNoCancel, Button::Yes};
        const auto reply =
            context.messages.show(parent, -76, title::kWarning, style, "", "file", "file");
        const bool stopped =
            reply == Button::Cancel || (reply == Button::Yes && !saveDocument(context, parent));
        if (stopped) {
            return CloseResult::Cancelled;
        }
    }
    dropDocument(context, parent);
    return CloseResult::Closed;
}

void dropDocument(DocumentContext& context, UserInterface* parent) {
    if (context.steps.releasePcmFormat) {
        context.steps.releasePcmFormat();
    }
    context.files.clear(parent, context.document.version);
    context.history.markClosed(editionOfSettings(context.settings));
}

}  // namespace kavu
