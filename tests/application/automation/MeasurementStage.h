// The stage of the automation with measurements and conversions of a test's own.
#pragma once

#include "AutomationStage.h"
#include "application/automation/AutomationConversions.h"
#include "application/automation/AutomationMeasurements.h"
#include "conversion/ConversionStore.h"
#include "core/document/Transaction.h"
#include "core/text/Text.h"
#include "groups/MeasurementNames.h"

namespace kavu::test {

/// The commands of one measurement, with "@" for its list and number.
using MeasurementRows = std::vector<std::string>;

/// The usual document with these measurements in "ONE" in place of its own, and what follows them.
inline std::string documentWith(const std::vector<MeasurementRows>& measurements,
                                const std::string& rest = {}, const std::string& edition = "09") {
    std::string text = kAutomationDocument;
    text.resize(text.find("D-1\\DLN"));
    text.replace(text.find("106:09"), 6, "106:" + edition);
    text += "D-1\\DLN:ONE;D-1\\ML\\N:1;D-1\\MLN-1:L;D-1\\MN\\N-1:" +
            std::to_string(measurements.size()) + ";";
    int number = 0;
    for (const auto& rows : measurements) {
        ++number;
        for (const auto& row : rows) {
            text += "D-1\\" + replaceAll(row, "@", "-1-" + std::to_string(number)) + ";";
        }
    }
    return text + rest;
}

class MeasurementStage : public AutomationStage {
  protected:
    [[nodiscard]] AutomationMeasurements measurements() { return AutomationMeasurements(*session); }
    [[nodiscard]] AutomationConversions conversions() { return AutomationConversions(*session); }
    [[nodiscard]] ConversionStore& store() { return test.application.conversions(); }

    /// Creates a measurement with the default values.
    void create(int fwp, int fn, const std::string& name, int locations = 1, int interval = 0) {
        measurements().CreateMeasurement(0, fwp, fn, name, "", "", "", "", locations, interval);
    }
    /// The same, for the error.
    std::string creation(int fwp, int fn, const std::string& name, int locations = 1,
                         int interval = 0) {
        return errorOf([&] { create(fwp, fn, name, locations, interval); });
    }
    /// A measurement as it is at a place; an empty one if it is not there.
    [[nodiscard]] Measurement at(int fwp, int fn, std::string_view name) {
        const auto cell = format().findInCell(fwp, fn, name);
        return cell ? format().cells().measurement(cell) : Measurement{};
    }
    /// "FWP:FN" of all places of a name.
    [[nodiscard]] std::string placesOf(std::string_view name) {
        std::string all;
        for (const auto& place : format().cells().places(name)) {
            all += (all.empty() ? "" : " ") + std::to_string(place.word) + ":" +
                   std::to_string(place.index);
        }
        return all;
    }
    /// Takes back the only level of the stream, with the records that it has changed.
    void undoOneLevel() {
        Transaction operation(test.application.context(), "Undo");
        ASSERT_TRUE(session->history().undo());
        EXPECT_FALSE(session->history().canUndo()) << "the call was one level";
        ASSERT_TRUE(operation.commit().ok());
    }
    [[nodiscard]] bool hasRecord(const std::string& name) {
        const auto place = store().locateDefinition(name);
        return place.found && place.section == name;
    }
    /// A key of a record as the store has it.
    [[nodiscard]] std::string key(const std::string& record, std::string_view code) {
        const auto place = store().locateDefinition(record);
        return place.found ? store().chunk(place.chunk)->value(record, code, "") : "<no record>";
    }
};

}  // namespace kavu::test
