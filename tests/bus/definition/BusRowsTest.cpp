#include "bus/BusStage.h"
#include "bus/definition/BusRows.h"

namespace kavu {
namespace {

using test::BusStage;
using Texts = std::vector<std::string>;

TEST(BusRows, TheTypeOfABusIsAColumnFrom2004On) {
    EXPECT_EQ(busColumns(BusLevel::Bus, 2001), (Texts{"Number", "Name"}));
    EXPECT_EQ(busColumns(BusLevel::Bus, 2004), (Texts{"Number", "Name", "Type"}));
    EXPECT_EQ(busColumns(BusLevel::Location, 1996),
              (Texts{"Word Number", "Bit Mask", "Transfer Order", "Fragment Position"}));
    EXPECT_TRUE(busColumns(BusLevel::Group, 2011).empty());
}

TEST(BusRows, CellsShowTheTextsOfChoicesAndWhatIsNoneAsItIs) {
    BusStage stage;
    const auto definition = stage.unpack(
        {"NBS\\N:1", "BID-1:000", "BNA-1:Left", "BT-1:1553", "NMS\\N-1:1", "MID-1-1:7",
         "TRA-1-1:00101", "STA-1-1:00010", "DWC-1-1:4", "MN\\N-1-1:1", "MN-1-1-1:A", "MT-1-1-1:S",
         "MN1-1-1-1:XX", "MN2-1-1-1:T", "NML\\N-1-1-1:1", "MTO-1-1-1-1:DEF"});
    const auto cells = [&](const BusPlace& place) {
        return busCells(levelOf(place), *busRowAt(definition, place), 2011);
    };
    EXPECT_EQ(cells({1}), (Texts{"000", "Left", "1553"}));
    EXPECT_EQ(cells({1, 1}), (Texts{"7", "", "Controller To RT", "00101", "00010", "4"}));
    EXPECT_EQ(cells({1, 1, 1}), (Texts{"A", "Status Word", "XX", "Trails Word"}));
    EXPECT_EQ(cells({1, 1, 1, 1}), (Texts{"", "", "Default", ""}));
    EXPECT_EQ(busCells(BusLevel::Measurement, *busRowAt(definition, {1, 1, 1}), 2005),
              (Texts{"A", "XX", "Trails Word"}));
}

TEST(BusRows, ABranchIsCalledByItsNumberAndNameElseByItsTitle) {
    BusStage stage;
    const auto definition =
        stage.unpack({"NBS\\N:2", "BID-1:000", "BNA-1:Left", "NMS\\N-1:1", "MNA-1-1:Name"});
    EXPECT_EQ(busRowLabel(BusLevel::Bus, *busRowAt(definition, {1}), 1), "000 Left");
    EXPECT_EQ(busRowLabel(BusLevel::Bus, *busRowAt(definition, {2}), 2), "Bus #2");
    EXPECT_EQ(busRowLabel(BusLevel::Message, *busRowAt(definition, {1, 1}), 1), "Name");
    EXPECT_EQ(busRowTitle(BusLevel::Message, 3), "Message #3");
}

}  // namespace
}  // namespace kavu
