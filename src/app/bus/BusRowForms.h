// The forms of a bus group: the sheets of a bus and of a message, and the dialogs of a
// measurement and of its location.
#pragma once

#include "app/framework/FormContext.h"
#include "bus/definition/BusEdit.h"

#include <functional>
#include <optional>
#include <string>

class QWidget;

namespace kavu {

/// What every form of a bus group is given. All of it outlives the form.
struct BusFormSetup {
    FormContext& form;
    DocumentContext& document;
    BusDefinition& definition;
    BusEdit& edit;
    /// The form of the conversion record of a measurement; without it its button is disabled.
    std::function<void(QWidget& window, const std::string& name)> editConversion{};
    /// Adds measurements of the measurement database: to a message, or to all messages of the
    /// group, which is a place without numbers. True if any was added. Without it its buttons are
    /// disabled.
    std::function<bool(QWidget& window, const BusPlace& owner)> addFromDatabase{};
    /// False once the database has been switched off; without it it is on.
    std::function<bool()> databaseIsOn{};

    [[nodiscard]] bool hasDatabase() const {
        return addFromDatabase && (!databaseIsOn || databaseIsOn());
    }
};

/// The form of a row. True if it was left with OK and something has changed; with Cancel the row is
/// as it was. REQUIRES: the row of a bus, a message, a measurement or a location.
bool editBusRow(const BusFormSetup& setup, const BusPlace& place, QWidget* parent);
/// The form of a new row behind those of `owner`. Its place; nothing if it was cancelled, and then
/// there is no new row.
std::optional<BusPlace> addBusRow(const BusFormSetup& setup, const BusPlace& owner,
                                  QWidget* parent);

}  // namespace kavu
