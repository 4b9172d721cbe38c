// The type of a bus message. No command states it: it follows from the addresses of the message,
// and from whether it has a receive command.
#pragma once

#include "bus/definition/BusDefinition.h"

#include <array>
#include <optional>
#include <string_view>

namespace kavu {

enum class BusMessageType {
    BroadcastMode,
    RtToRtBroadcast,
    ControllerBroadcast,
    ReceiveMode,
    TransmitMode,
    RtToRt,
    RtToController,
    ControllerToRt,
};
/// In the order of the list.
inline constexpr auto kBusMessageTypes = std::to_array(
    {BusMessageType::BroadcastMode, BusMessageType::RtToRtBroadcast,
     BusMessageType::ControllerBroadcast, BusMessageType::ReceiveMode, BusMessageType::TransmitMode,
     BusMessageType::RtToRt, BusMessageType::RtToController, BusMessageType::ControllerToRt});

struct BusMessageFlags {
    bool broadcast = false;     ///< the remote terminal address is that of all terminals
    bool mode = false;          ///< the sub terminal address is one of the two of mode commands
    bool transmit = false;      ///< the remote terminal transmits
    bool hasReceive = false;    ///< there is a receive command; from 106-99 on always
    bool allBroadcast = false;  ///< every receive command goes to all terminals
    bool modeFree = false;      ///< no receive command has an address of mode commands
};

/// Nothing if no type fits, as for a message that transmits to the controller from 106-99 on.
[[nodiscard]] std::optional<BusMessageType> messageTypeOf(const BusMessageFlags& flags);
[[nodiscard]] BusMessageFlags messageFlags(const GroupRow& message, int edition);
[[nodiscard]] inline std::optional<BusMessageType> messageTypeOf(const GroupRow& message,
                                                                 int edition) {
    return messageTypeOf(messageFlags(message, edition));
}

/// As the list shows it.
[[nodiscard]] std::string_view messageTypeText(BusMessageType type);
/// The same; empty for no type.
[[nodiscard]] std::string_view messageTypeText(std::optional<BusMessageType> type);
/// The type of a text of the list, in any case.
[[nodiscard]] std::optional<BusMessageType> findMessageType(std::string_view text);

[[nodiscard]] constexpr bool isRtToRt(BusMessageType type) {
    return type == BusMessageType::RtToRt || type == BusMessageType::RtToRtBroadcast;
}
[[nodiscard]] constexpr bool isModeCommand(BusMessageType type) {
    return type == BusMessageType::BroadcastMode || type == BusMessageType::ReceiveMode ||
           type == BusMessageType::TransmitMode;
}
/// The stored T/R mode that a type demands; empty for a broadcast mode command, which has either.
[[nodiscard]] std::string_view modeOfType(BusMessageType type);

/// True for the texts that stand for a mode command as a sub terminal address.
[[nodiscard]] bool isModeAddress(std::string_view address);
/// The binary digits at the front of an address as a number: 0 for an empty one.
[[nodiscard]] int addressNumber(std::string_view address);
inline constexpr int kBroadcastNumber = 31;

}  // namespace kavu
