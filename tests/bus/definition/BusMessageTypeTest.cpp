#include "bus/definition/BusMessageType.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

/// The conditions of a type in the order in which they are tested; what is not named is either.
struct TypeCondition {
    std::string text;
    BusMessageType type;
};
constexpr auto kBroadcast = 'b';
// Letters stand for flags that hold, in capitals for flags that do not: b broadcast, m mode,
// t transmit, r has receive, a all broadcast, f mode-free.
const std::vector<TypeCondition> kConditions = {
    {"BMT", BusMessageType::ControllerToRt},     {"BMtR", BusMessageType::RtToController},
    {"BMtrAf", BusMessageType::RtToRt},          {"Bmt", BusMessageType::TransmitMode},
    {"BmT", BusMessageType::ReceiveMode},        {"bMT", BusMessageType::ControllerBroadcast},
    {"BMtraf", BusMessageType::RtToRtBroadcast}, {"bm", BusMessageType::BroadcastMode},
};

bool holds(const BusMessageFlags& flags, char letter) {
    switch (letter) {
        case kBroadcast:
            return flags.broadcast;
        case 'm':
            return flags.mode;
        case 't':
            return flags.transmit;
        case 'r':
            return flags.hasReceive;
        case 'a':
            return flags.allBroadcast;
        default:
            return flags.modeFree;
    }
}

std::optional<BusMessageType> expectedType(const BusMessageFlags& flags) {
    for (const auto& [text, type] : kConditions) {
        bool fits = true;
        for (const char c : text) {
            const bool isWanted = c >= 'a';
            fits = fits && holds(flags, isWanted ? c : static_cast<char>(c + 32)) == isWanted;
        }
        if (fits) {
            return type;
        }
    }
    return std::nullopt;
}

GroupRow messageOf(unsigned bits, int edition) {
    GroupRow row;
    setBusValue(row, BusLevel::Message, "TRA", (bits & 1U) != 0 ? "11111" : "00001");
    setBusValue(row, BusLevel::Message, "STA", (bits & 2U) != 0 ? "00000" : "00001");
    setBusValue(row, BusLevel::Message, "TRM", (bits & 4U) != 0 ? "1" : "0");
    if ((bits & 8U) != 0 || edition >= kOneReceiveEdition) {
        auto& command = receiveOf(row);
        setBusValue(command, BusLevel::Receive, "RTRA", (bits & 16U) != 0 ? "11111" : "00010");
        setBusValue(command, BusLevel::Receive, "RSTA", (bits & 32U) != 0 ? "00011" : "11111");
    }
    return row;
}

TEST(BusMessageType, EveryCombinationOfFlagsHasTheTypeOfTheFirstConditionThatHolds) {
    for (unsigned bits = 0; bits < 64; ++bits) {
        const BusMessageFlags flags{.broadcast = (bits & 1U) != 0,
                                    .mode = (bits & 2U) != 0,
                                    .transmit = (bits & 4U) != 0,
                                    .hasReceive = (bits & 8U) != 0,
                                    .allBroadcast = (bits & 16U) != 0,
                                    .modeFree = (bits & 32U) != 0};
        EXPECT_EQ(messageTypeOf(flags), expectedType(flags)) << bits;
    }
}

TEST(BusMessageType, TheFlagsOfEveryMessageFollowFromItsFieldsOnBothSidesOf1999) {
    for (const int edition : {1996, 1999, 2011}) {
        for (unsigned bits = 0; bits < 64; ++bits) {
            const auto flags = messageFlags(messageOf(bits, edition), edition);
            const bool hasCommand = edition >= 1999 || (bits & 8U) != 0;
            EXPECT_EQ(flags.broadcast, (bits & 1U) != 0) << bits;
            EXPECT_EQ(flags.mode, (bits & 2U) != 0) << bits;
            EXPECT_EQ(flags.transmit, (bits & 4U) != 0) << bits;
            EXPECT_EQ(flags.hasReceive, hasCommand) << edition << " " << bits;
            // Without a receive command none of them breaks the condition.
            EXPECT_EQ(flags.allBroadcast, !hasCommand || (bits & 16U) != 0) << bits;
            EXPECT_EQ(flags.modeFree, !hasCommand || (bits & 32U) != 0) << bits;
            EXPECT_EQ(messageTypeOf(messageOf(bits, edition), edition), expectedType(flags));
        }
    }
}

TEST(BusMessageType, RtToControllerIsOutOfReachFrom1999On) {
    GroupRow row;
    setBusValue(row, BusLevel::Message, "TRA", "00101");
    setBusValue(row, BusLevel::Message, "STA", "00010");
    setBusValue(row, BusLevel::Message, "TRM", "1");
    EXPECT_EQ(messageTypeOf(row, 1996), BusMessageType::RtToController);
    EXPECT_EQ(messageTypeOf(row, 1999), std::nullopt);
    EXPECT_EQ(messageTypeOf(row, 2011), std::nullopt);
}

TEST(BusMessageType, AddressesOfTheMessageCompareAsTextsAndThoseOfTheReceiveCommandAsNumbers) {
    GroupRow row;
    setBusValue(row, BusLevel::Message, "TRA", "00101");
    setBusValue(row, BusLevel::Message, "STA", "0");
    setBusValue(row, BusLevel::Message, "TRM", "1");
    EXPECT_FALSE(messageFlags(row, 2011).mode) << "\"0\" is not \"00000\"";
    auto& command = receiveOf(row);
    setBusValue(command, BusLevel::Receive, "RTRA", "1X111");
    setBusValue(command, BusLevel::Receive, "RSTA", "11");
    EXPECT_EQ(messageTypeOf(row, 2011), BusMessageType::RtToRt);
    setBusValue(command, BusLevel::Receive, "RTRA", "11111");
    EXPECT_EQ(messageTypeOf(row, 2011), BusMessageType::RtToRtBroadcast);
    setBusValue(command, BusLevel::Receive, "RSTA", "");
    EXPECT_EQ(messageTypeOf(row, 2011), std::nullopt) << "an empty address is 0";
    EXPECT_EQ(addressNumber("1X111"), 1);
    EXPECT_EQ(addressNumber(""), 0);
    EXPECT_EQ(addressNumber("11111"), 31);
}

TEST(BusMessageType, TheTextsOfTheListAreFoundInItsOrder) {
    std::vector<std::string> texts;
    for (const auto type : kBusMessageTypes) {
        texts.emplace_back(messageTypeText(type));
        EXPECT_EQ(findMessageType(texts.back()), type);
    }
    EXPECT_EQ(texts,
              (std::vector<std::string>{"Broadcast Mode Command", "RT To RT(s) Broadcast",
                                        "Controller To RT(s) Broadcast", "Receive Mode Command",
                                        "Transmit Mode Command", "RT To RT", "RT To Controller",
                                        "Controller To RT"}));
    EXPECT_EQ(findMessageType("RT To"), std::nullopt);
    EXPECT_EQ(messageTypeText(std::optional<BusMessageType>()), "");
}

}  // namespace
}  // namespace kavu
