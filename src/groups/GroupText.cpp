#include "groups/GroupText.h"

#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupFiles.h"
#include "core/document/Transaction.h"
#include "core/files/FileIo.h"
#include "core/talk/FileReports.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "core/text/Edition.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"

namespace kavu {

namespace {

constexpr int kNewerFeature = 73;
constexpr std::string_view kComment = "COMMENT:";

std::string sectionName(char letter) {
    return formatPrintf("TMATS %c-Section", letter);
}

std::string prefixOf(const GroupText& group) {
    return group.letter == 'V' ? formatPrintf("V-%d\\", group.index) : std::string("H\\");
}

/// Calls `visit` for each command and returns the bytes after the last one.
template <typename Visit>
std::string_view forEachCommandOf(std::string_view text, const Visit& visit) {
    auto source = ByteSource::fromMemory(text);
    TmatsReader reader;
    std::string command;
    std::uint64_t end = 0;
    while (reader.nextRawCommand(source, command)) {
        end = source.position();
        visit(command);
    }
    return trim(text.substr(static_cast<std::size_t>(end)));
}

std::string shownText(std::string_view bytes) {
    std::string text;
    const auto rest = forEachCommandOf(bytes, [&](const std::string& command) {
        text += command;
        text += "\r\n";
    });
    // Only the author knows what it is, so it must not be dropped.
    text += rest;
    fromStoredForm(text);
    return text;
}

}  // namespace

bool mayEditGroupText(DocumentContext& context, UserInterface* parent, char letter) {
    if (letter != 'V' || context.document.version >= kVendorEdition) {
        return true;
    }
    context.messages.show(parent, kNewerFeature, title::kError, kErrorBox,
                          editionNumber(context.document.version), editionNumber(kVendorEdition));
    return false;
}

bool readGroupText(DocumentContext& context, UserInterface* parent, char letter,
                   const std::string& source, GroupText& group) {
    group = GroupText{.letter = letter, .source = source};
    if (letter == 'V') {
        const int found = findGroupIndex(context, parent, letter, source);
        group.index = found > 0 ? found : -findGroupIndex(context, parent, letter, {});
        if (group.index > kMostGroupIndex) {
            context.messages.show(parent, message::kUnableToEdit, title::kError, kErrorBox,
                                  sectionName(letter));
            return false;
        }
    }
    std::string bytes;
    const auto status = readWholeFile(context.store.pathOf(groupFile(letter, group.index)), bytes);
    if (isMissing(status)) {
        context.messages.show(parent, message::kUnableToEdit, title::kNote, kNoteBox,
                              sectionName(letter) + " (File not found).");
        return true;
    }
    if (!status.ok()) {
        reportUnableToRead(parent, status);
        return false;
    }
    group.exists = true;
    group.text = shownText(bytes);
    return true;
}

std::string unfinishedCommand(std::string_view text) {
    return std::string(forEachCommandOf(text, [](const std::string&) {}));
}

std::vector<std::string> foreignCommands(const GroupText& group, std::string_view text) {
    std::vector<std::string> foreign;
    const auto prefix = prefixOf(group);
    forEachCommandOf(text, [&](const std::string& command) {
        if (!startsWithIgnoreCase(command, prefix) && !startsWithIgnoreCase(command, kComment)) {
            foreign.push_back(command);
        }
    });
    return foreign;
}

bool storeGroupText(DocumentContext& context, UserInterface* parent, const GroupText& group,
                    std::string_view text) {
    std::string bytes;
    bool named = group.letter != 'V';
    const auto idCode = prefixOf(group) + "ID:";
    forEachCommandOf(text, [&](std::string command) {
        named = named || startsWithIgnoreCase(command, idCode);
        toStoredForm(command);
        bytes += command;
        bytes += "\r\n";
    });
    const auto file = groupFile(group.letter, group.index);
    Transaction transaction(context, editOf(group.letter));
    IoStatus status;
    if (!bytes.empty()) {
        if (!named) {
            bytes.insert(0, idCode + group.source + ";\r\n");
        }
        status = context.files.put(file, bytes);
    } else {
        status = context.files.removeIfThere(file);
    }
    if (!status.ok()) {
        reportUnableToWrite(parent, status);
    }
    return endTransaction(transaction, parent, status.ok());
}

}  // namespace kavu
