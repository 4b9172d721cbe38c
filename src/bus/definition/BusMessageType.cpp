#include "bus/definition/BusMessageType.h"

#include "core/text/Text.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr std::string_view kFirstModeAddress = "00000";
constexpr std::string_view kTransmits = "1";
constexpr std::string_view kReceives = "0";

struct TypeRow {
    BusMessageType type;
    std::string_view text;
    std::string_view mode;
};
constexpr auto kTypeRows = std::to_array<TypeRow>({
    {BusMessageType::BroadcastMode, "Broadcast Mode Command", {}},
    {BusMessageType::RtToRtBroadcast, "RT To RT(s) Broadcast", kTransmits},
    {BusMessageType::ControllerBroadcast, "Controller To RT(s) Broadcast", kReceives},
    {BusMessageType::ReceiveMode, "Receive Mode Command", kReceives},
    {BusMessageType::TransmitMode, "Transmit Mode Command", kTransmits},
    {BusMessageType::RtToRt, "RT To RT", kTransmits},
    {BusMessageType::RtToController, "RT To Controller", kTransmits},
    {BusMessageType::ControllerToRt, "Controller To RT", kReceives},
});

const TypeRow& rowOfType(BusMessageType type) {
    return kTypeRows[static_cast<std::size_t>(type)];
}

}  // namespace

std::optional<BusMessageType> messageTypeOf(const BusMessageFlags& flags) {
    if (flags.broadcast && flags.mode) {
        return BusMessageType::BroadcastMode;
    }
    if (flags.broadcast) {
        return flags.transmit ? std::nullopt : std::optional(BusMessageType::ControllerBroadcast);
    }
    if (flags.mode) {
        return flags.transmit ? BusMessageType::TransmitMode : BusMessageType::ReceiveMode;
    }
    if (!flags.transmit) {
        return BusMessageType::ControllerToRt;
    }
    if (!flags.hasReceive) {
        return BusMessageType::RtToController;
    }
    if (!flags.modeFree) {
        return std::nullopt;
    }
    return flags.allBroadcast ? BusMessageType::RtToRtBroadcast : BusMessageType::RtToRt;
}

BusMessageFlags messageFlags(const GroupRow& message, int edition) {
    const auto value = [&](std::string_view stem) {
        return busValue(message, BusLevel::Message, stem);
    };
    const auto& commands = rowsOf(message, BusLevel::Receive);
    BusMessageFlags flags;
    flags.broadcast = value("TRA") == kBroadcastAddress;
    flags.mode = isModeAddress(value("STA"));
    flags.transmit = value("TRM") == kTransmits;
    flags.hasReceive = edition >= kOneReceiveEdition || !commands.empty();
    const auto goesToAll = [](const GroupRow& command) {
        return addressNumber(busValue(command, BusLevel::Receive, "RTRA")) == kBroadcastNumber;
    };
    const auto isMode = [](const GroupRow& command) {
        const int number = addressNumber(busValue(command, BusLevel::Receive, "RSTA"));
        return number == 0 || number == kBroadcastNumber;
    };
    if (edition >= kOneReceiveEdition) {
        flags.allBroadcast = goesToAll(receiveOf(message));
        flags.modeFree = !isMode(receiveOf(message));
    } else {
        flags.allBroadcast = std::all_of(commands.begin(), commands.end(), goesToAll);
        flags.modeFree = std::none_of(commands.begin(), commands.end(), isMode);
    }
    return flags;
}

std::string_view messageTypeText(BusMessageType type) {
    return rowOfType(type).text;
}

std::string_view messageTypeText(std::optional<BusMessageType> type) {
    return type ? messageTypeText(*type) : std::string_view();
}

std::optional<BusMessageType> findMessageType(std::string_view text) {
    for (const auto& row : kTypeRows) {
        if (equalsIgnoreCase(row.text, text)) {
            return row.type;
        }
    }
    return std::nullopt;
}

std::string_view modeOfType(BusMessageType type) {
    return rowOfType(type).mode;
}

bool isModeAddress(std::string_view address) {
    return address == kFirstModeAddress || address == kBroadcastAddress;
}

int addressNumber(std::string_view address) {
    constexpr int kLargest = 1'000'000;
    int number = 0;
    for (const char c : address) {
        if ((c != '0' && c != '1') || number > kLargest) {
            break;
        }
        number = 2 * number + (c - '0');
    }
    return number;
}

}  // namespace kavu
