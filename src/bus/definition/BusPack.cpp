#include "bus/definition/BusPack.h"

#include "bus/definition/BusKeys.h"
#include "bus/definition/BusText.h"
#include "bus/definition/BusTitles.h"
#include "bus/definition/BusUnpack.h"
#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/document/CarriedCommands.h"
#include "core/document/DocumentFiles.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "groups/KeptCommands.h"

#include <algorithm>
#include <new>
#include <unordered_set>

namespace kavu {

namespace {

std::string keyOfCommand(std::string_view command) {
    return lowerAscii(keyOf(viewCommand(command)));
}

std::unordered_set<std::string> writtenKeys(std::string_view text) {
    std::unordered_set<std::string> keys;
    auto source = ByteSource::fromMemory(text);
    TmatsReader reader;
    std::string command;
    while (reader.nextCommand(source, command)) {
        keys.insert(keyOfCommand(command));
    }
    return keys;
}

/// True if the file has nothing but what the definition has: the usual case, which is then quick.
bool isAllRead(const GroupFile& file) {
    const auto& commands = file.commands();
    for (std::size_t place = 0; place < commands.size(); ++place) {
        if (!commands.isRead(place)) {
            return false;
        }
    }
    return true;
}

/// The commands that would be lost, those of the file in its order.
std::vector<std::string> droppedBy(const BusText& written, const GroupFile& kept) {
    auto dropped = kept.leftovers(written.text);
    std::unordered_set<std::string> known;
    for (const auto& command : dropped) {
        known.insert(keyOfCommand(command));
    }
    for (const auto& command : written.omitted) {
        if (known.insert(keyOfCommand(command)).second) {
            dropped.push_back(command);
        }
    }
    return dropped;
}

/// With the commands that are kept. Of a command that is repeated the last one holds, but of the
/// name of the link the first.
std::string withKept(const std::string& text, const std::vector<std::string>& dropped, int index) {
    const auto written = writtenKeys(text);
    const auto name = lowerAscii(groupHead('B', index) + "DLN");
    std::string front;
    std::string back;
    for (const auto& command : dropped) {
        const auto key = keyOfCommand(command);
        auto& place = key != name && written.contains(key) ? front : back;
        place.append(command).append("\r\n");
    }
    return front + text + back;
}

bool showNoMemory(const DocumentContext& context, UserInterface* parent) {
    context.messages.show(parent, 77, title::kUnableToSaveBus, kErrorBox);
    return false;
}

}  // namespace

std::string packedBusText(UserInterface* parent, const BusDefinition& definition) {
    const auto written = busText(definition, parent);
    if (isAllRead(definition.kept) && written.omitted.empty()) {
        return written.text;
    }
    // What belongs to a row follows it.
    const auto kept =
        keptAtRows(definition.kept, busLists(), groupHead('B', definition.index), definition.group);
    const auto dropped = droppedBy(written, kept);
    const auto text = askToKeep(parent, dropped) ? withKept(written.text, dropped, definition.index)
                                                 : written.text;
    CarriedCommands carried(CarriedCommands::Follow::Codes);
    for (std::size_t place = 0; place < kept.commands().size(); ++place) {
        carried.add(kept.commands().at(place));
    }
    return withCarried(text, carried);
}

bool packBusGroup(DocumentContext& context, UserInterface* parent,
                  const BusDefinition& definition) {
    setStatusText(parent, "Saving Bus Information...");
    std::string text;
    try {
        text = packedBusText(parent, definition);
    } catch (const std::bad_alloc&) {
        return showNoMemory(context, parent);
    }
    const ChangeScope scope(context.files);
    auto group = context.files.writer(kBusGroupFile);
    group.write(text);
    if (const auto status = group.close(); !status.ok()) {
        context.messages.showFailure(parent, status, 322, title::kNote, kErrorBox);
        return false;
    }
    discardBusProfiles(context);
    setProgressBar(parent, -1);
    setStatusText(parent, {});
    return true;
}

}  // namespace kavu
