#include "app/bus/BusRowForms.h"

#include "app/bus/BusLocationDialog.h"
#include "app/bus/BusMeasurementDialog.h"
#include "app/bus/BusMessageSheet.h"
#include "app/bus/BusSheet.h"
#include "app/framework/DialogDoor.h"

namespace kavu {

namespace {

/// Runs the form of a row; true if it was left with OK and has changed something.
bool runForm(const BusFormSetup& setup, const BusPlace& place, bool isNew, QWidget* parent) {
    const auto runSheet = [&](PropertySheet& sheet) {
        return runPropertySheet(setup.form, sheet) == SheetResult::Stored;
    };
    const auto run = [&](QDialog& dialog) {
        return runDialog(setup.form.door, dialog) == QDialog::Accepted;
    };
    switch (levelOf(place)) {
        case BusLevel::Bus: {
            BusSheet sheet(setup, place, isNew, parent);
            return runSheet(sheet);
        }
        case BusLevel::Message: {
            BusMessageSheet sheet(setup, place, isNew, parent);
            return runSheet(sheet);
        }
        case BusLevel::Measurement: {
            BusMeasurementDialog dialog(setup, place, isNew, parent);
            return run(dialog);
        }
        default: {
            BusLocationDialog dialog(setup, place, isNew, parent);
            return run(dialog);
        }
    }
}

}  // namespace

bool editBusRow(const BusFormSetup& setup, const BusPlace& place, QWidget* parent) {
    const auto row = *busRowAt(setup.definition, place);
    const auto terminals = setup.definition.terminals;
    if (runForm(setup, place, false, parent)) {
        return true;
    }
    *busRowAt(setup.definition, place) = row;
    setup.definition.terminals = terminals;
    return false;
}

std::optional<BusPlace> addBusRow(const BusFormSetup& setup, const BusPlace& owner,
                                  QWidget* parent) {
    const auto terminals = setup.definition.terminals;
    auto place = setup.edit.append(owner);
    if (!place || runForm(setup, *place, true, parent)) {
        return place;
    }
    setup.edit.takeBack(owner);
    setup.definition.terminals = terminals;
    return std::nullopt;
}

}  // namespace kavu
