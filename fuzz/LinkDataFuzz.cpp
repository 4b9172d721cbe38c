// Reads any bytes as the message data, the packets or the buses of a link, writes what was read,
// and reads it again: what a group holds that was written must be written as the same bytes the
// next time, and whatever is pasted in between is refused or becomes part of it. The first byte of
// the input chooses the edition, the second the kind and the answers; the rest is the group.
#include "FuzzRun.h"
#include "bus/definition/BusFiles.h"
#include "bus/definition/BusUnpack.h"
#include "bus/message/MessageEdit.h"
#include "bus/packet/PacketEdit.h"
#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupFiles.h"

#include <string>
#include <string_view>

namespace {

using namespace kavu;
using fuzz::Run;

constexpr std::string_view kLink = "Link";

void putGroup(Run& run, char letter, std::string_view commands) {
    auto& files = run.application.context().files;
    const ChangeScope scope(files);
    const auto head = groupHead(letter, 1) + "DLN:" + std::string(kLink) + ";\r\n";
    KAVU_CHECK(files.put(groupFile(letter, 1), head + std::string(commands)).ok());
}

std::string groupOf(Run& run, char letter) {
    return fuzz::read(run.application.context().store.pathOf(groupFile(letter, 1)));
}

bool storeMessageData(Run& run, bool pastes) {
    auto& document = run.application.context();
    MessageGroup group;
    if (!loadMessages(document, &run.ui, kLink, group)) {
        return false;
    }
    if (pastes && !group.root.children.empty()) {
        MessageEdit edit(document, group, nullptr);
        (void)edit.paste(&run.ui, {}, group.root.children.front());
        KAVU_CHECK(!edit.paste(&run.ui, {1}, group.root.children.front()));
    }
    return storeMessages(document, &run.ui, group);
}

bool storePacketData(Run& run, bool pastes) {
    using Kind = PacketEdit::Node::Kind;
    auto& document = run.application.context();
    PacketGroup group;
    if (!loadPackets(document, &run.ui, kLink, group)) {
        return false;
    }
    PacketEdit edit(document, group, nullptr);
    if (const auto packet = edit.find({1}); pastes && packet.row != nullptr) {
        const auto row = *packet.row;
        (void)edit.paste(&run.ui, {}, Kind::Packet, nullptr, row);
        KAVU_CHECK(!edit.paste(&run.ui, {1}, Kind::Packet, nullptr, row));
    }
    return storePackets(document, &run.ui, group);
}

bool storeBuses(Run& run) {
    auto& document = run.application.context();
    const auto definition = openBusDefinition(document, &run.ui, kLink);
    const bool isStored = definition && storeBusDefinition(document, &run.ui, *definition);
    discardBusProfiles(document);
    return isStored;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr int kEditions[] = {1996, 1999, 2000, 2001, 2004, 2005, 2007, 2009, 2011};
    if (size < 2) {
        return 0;
    }
    static const auto folder = fuzz::makeScratch();
    Run run(folder);
    auto& document = run.application.context();
    document.document.version = kEditions[data[0] % 9];
    document.document.open = true;
    run.ui.otherwise = (data[1] & 4U) != 0 ? Button::Yes : Button::No;
    const bool pastes = (data[1] & 8U) != 0;
    const auto kind = data[1] % 3U;
    const char letter = kind == 2 ? 'B' : 'S';
    const auto store = [&](bool withPaste) {
        return kind == 0   ? storeMessageData(run, withPaste)
               : kind == 1 ? storePacketData(run, withPaste)
                           : storeBuses(run);
    };
    putGroup(run, letter, {reinterpret_cast<const char*>(data) + 2, size - 2});
    if (store(pastes)) {
        // What is dropped, or moved behind the rest, is gone or there after the first time.
        KAVU_CHECK(store(false));
        const auto written = groupOf(run, letter);
        KAVU_CHECK(store(false));
        KAVU_CHECK(groupOf(run, letter) == written);
    }
    return 0;
}
