#include "mdb/operations/BusAdditions.h"
#include "mdb/operations/StreamStage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu::test {
namespace {

namespace f = mdbfield;

using BusFields = std::vector<std::pair<std::size_t, std::string>>;

MdbRecord busRecord(const std::string& name, BusFields more = {}) {
    BusFields fields = {{f::kBusNumber, "1"},
                        {f::kRemoteTerminalAddress, "101"},
                        {f::kSubTerminalAddress, "00010"},
                        {f::kTransmitReceive, "0"},
                        {f::kWordNumber, "3"}};
    fields.insert(fields.end(), more.begin(), more.end());
    return StreamStage::record(name, fields);
}

struct AdditionStage : StreamStage {
    explicit AdditionStage(MdbVersion version = MdbVersion::WithBus, int edition = 2011)
        : StreamStage(version) {
        definition.link = "Bus";
        definition.edition = edition;
        auto& bus = rowsOf(definition.group, BusLevel::Bus).emplace_back();
        setBusValue(bus, BusLevel::Bus, "BID", "001");
        addMessage(bus, "00100", "0");
        addMessage(bus, "00101", "1");
        addMessage(bus, "00101", "0");
        addMessage(bus, "00101", "0");
        EXPECT_TRUE(load("C-1\\DCN:Other;C-1\\DCT:NON;"));
    }
    static void addMessage(GroupRow& bus, std::string_view address, std::string_view mode) {
        auto& message = rowsOf(bus, BusLevel::Message).emplace_back();
        setBusValue(message, BusLevel::Message, "TRA", address);
        setBusValue(message, BusLevel::Message, "STA", "00010");
        setBusValue(message, BusLevel::Message, "TRM", mode);
    }
    BusAdditions add(Button answer = Button::Yes) {
        ui.byId[418] = answer;
        return addBusMeasurements(work, &ui, definition, nullptr);
    }
    [[nodiscard]] const std::vector<GroupRow>& measurements(std::size_t message) const {
        return rowsOf(*busRowAt(definition, {1, message}), BusLevel::Measurement);
    }

    BusDefinition definition;
};

std::string valueOf(const GroupRow& row, BusLevel level, std::string_view stem) {
    return std::string(busValue(row, level, stem));
}

TEST(BusAdditions, ARecordGoesToTheFirstMessageWithItsAddressesAndMode) {
    AdditionStage stage;
    stage.fill({busRecord("Alpha", {{f::kMask, "1111"},
                                    {f::kTransferOrder, "L"},
                                    {f::kParity, "EV"},
                                    {f::kParityTransferOrder, "T"},
                                    {f::kDescription, "the first"},
                                    {f::kType, "COE"},
                                    {f::kData, "0.0 1.5"}})});
    const auto result = stage.add();
    EXPECT_TRUE(result.done);
    EXPECT_EQ(result.added, std::vector<std::string>{"Alpha"});
    EXPECT_EQ(result.newDefinitions, 1);
    EXPECT_TRUE(stage.measurements(1).empty());
    EXPECT_TRUE(stage.measurements(2).empty());
    EXPECT_TRUE(stage.measurements(4).empty());
    ASSERT_EQ(stage.measurements(3).size(), 1U);
    const auto& row = stage.measurements(3).front();
    for (const auto& [stem, value] : std::vector<std::pair<std::string, std::string>>{
             {"MN", "Alpha"}, {"MT", "D"}, {"MN1", "EV"}, {"MN2", "T"}}) {
        EXPECT_EQ(valueOf(row, BusLevel::Measurement, stem), value) << stem;
    }
    ASSERT_EQ(rowsOf(row, BusLevel::Location).size(), 1U);
    const auto& location = rowsOf(row, BusLevel::Location).front();
    for (const auto& [stem, value] : std::vector<std::pair<std::string, std::string>>{
             {"MWN", "3"}, {"MBM", "1111"}, {"MTO", "LSB"}, {"MFP", "1"}}) {
        EXPECT_EQ(valueOf(location, BusLevel::Location, stem), value) << stem;
    }
    EXPECT_EQ(stage.value("Alpha", "MN1"), "the first");
    EXPECT_EQ(stage.value("Alpha", "CO-1"), "1.5");
    ASSERT_TRUE(stage.ui.hasBox(418));
    EXPECT_TRUE(stage.ui.hasText("1 measurements were added.\n1 new EU definitions"));
}

TEST(BusAdditions, EmptyFieldsBecomeTheDefaultsOfABus) {
    const auto row = busMeasurementOf(
        busRecord("A", {{f::kParity, "DE"}, {f::kParityTransferOrder, "D"}}), 2005);
    EXPECT_EQ(valueOf(row, BusLevel::Measurement, "MT"), "");
    EXPECT_EQ(valueOf(row, BusLevel::Measurement, "MN1"), "");
    EXPECT_EQ(valueOf(row, BusLevel::Measurement, "MN2"), "");
    const auto& location = rowsOf(row, BusLevel::Location).front();
    EXPECT_EQ(valueOf(location, BusLevel::Location, "MBM"), "FW");
    EXPECT_EQ(valueOf(location, BusLevel::Location, "MTO"), "DEF");
}

TEST(BusAdditions, ARecordThatMatchesNoMessageOrStatesTooLittleIsLeftOut) {
    AdditionStage stage;
    stage.fill({busRecord("Elsewhere", {{f::kBusNumber, "2"}}),
                busRecord("NoWord", {{f::kWordNumber, ""}}),
                busRecord("NoAddress", {{f::kSubTerminalAddress, ""}}),
                StreamStage::record("NoBus")});
    const auto result = stage.add();
    EXPECT_TRUE(result.done);
    EXPECT_TRUE(result.added.empty());
    EXPECT_EQ(stage.value("Elsewhere", "Chg"), "<no record>");
}

TEST(BusAdditions, WithoutAModeTheFirstMessageOfTheAddressesIsTaken) {
    AdditionStage stage;
    stage.fill({busRecord("A", {{f::kTransmitReceive, ""}})});
    EXPECT_EQ(stage.add().added.size(), 1U);
    EXPECT_EQ(stage.measurements(2).size(), 1U);
}

TEST(BusAdditions, AMeasurementThatIsThereInAnyCaseIsNotAddedAgain) {
    AdditionStage stage;
    stage.fill({busRecord("Alpha"), busRecord("ALPHA")});
    EXPECT_EQ(stage.add().added, std::vector<std::string>{"Alpha"});
    EXPECT_TRUE(stage.add().added.empty());
    EXPECT_EQ(stage.measurements(3).size(), 1U);
}

TEST(BusAdditions, AConversionThatIsThereStaysAsItIs) {
    AdditionStage stage;
    EXPECT_TRUE(stage.load("C-1\\DCN:Alpha;C-1\\MN1:kept;C-1\\DCT:NON;"));
    stage.fill({busRecord("Alpha", {{f::kDescription, "other"}})});
    EXPECT_EQ(stage.add().newDefinitions, 0);
    EXPECT_EQ(stage.value("Alpha", "MN1"), "kept");
}

TEST(BusAdditions, ADatabaseWithout1553FieldsIsRefusedBeforeTheQuestion) {
    AdditionStage stage(MdbVersion::Basic);
    stage.fill({StreamStage::record("Alpha")});
    EXPECT_FALSE(stage.add().done);
    EXPECT_TRUE(stage.ui.hasBox(417));
    EXPECT_FALSE(stage.ui.hasBox(418));
}

TEST(BusAdditions, NoToTheQuestionAndNoParentAddNothing) {
    AdditionStage stage;
    stage.fill({busRecord("Alpha")});
    EXPECT_FALSE(stage.add(Button::No).done);
    EXPECT_FALSE(addBusMeasurements(stage.work, nullptr, stage.definition, nullptr).done);
    EXPECT_TRUE(stage.measurements(3).empty());
}

TEST(BusAdditions, AnAdditionOfOneRecordIsRefusedWhereTheNameIsAlready) {
    AdditionStage stage;
    EXPECT_TRUE(addBusMeasurement(stage.work, &stage.ui, stage.definition, {1, 1},
                                  StreamStage::record("Alpha"), nullptr));
    EXPECT_EQ(stage.measurements(1).size(), 1U);
    EXPECT_FALSE(addBusMeasurement(stage.work, &stage.ui, stage.definition, {1, 1},
                                   StreamStage::record("alpha"), nullptr));
    EXPECT_TRUE(stage.ui.hasText("The message has a measurement 'alpha' already."));
    EXPECT_EQ(stage.measurements(1).size(), 1U);
}

}  // namespace
}  // namespace kavu::test
