// The database as the windows of a stream use it: read when it is first needed, and again for
// each operation that the user begins, as others may write it.
#pragma once

#include "app/framework/FormContext.h"
#include "bus/definition/BusDefinition.h"
#include "mdb/operations/DatabaseFamily.h"

#include <functional>
#include <memory>
#include <optional>

class QWidget;

namespace kavu {

class Application;
struct PcmFormSteps;
struct WordSteps;

class StreamDatabase {
  public:
    /// Both must outlive the object. Nothing is read yet.
    StreamDatabase(FormContext& form, Application& application);

    /// The setting `MDBEnabled`: also false once the database could not be used.
    [[nodiscard]] bool isOn() const;
    /// Reads the database. Null without a usable one, which is message 428 and switches its
    /// functions off. What was returned before is not valid any more.
    DatabaseWork* reopen();
    /// The same if it has not been read yet.
    DatabaseWork* opened() { return work_ ? &*work_ : reopen(); }

  private:
    FormContext& form_;
    Application& application_;
    std::unique_ptr<MeasurementDatabase> database_;
    std::optional<DatabaseWork> work_;
};

/// Gives the edit of a measurement the database of the settings, if it is switched on.
void installDatabaseSteps(WordSteps& steps, FormContext& form, Application& application);
/// What the buttons of a bus group do, "Add New Measurements From Database" for the whole group (a
/// place without numbers), "Add Measurement From Database" for a message; null while the database
/// is off. All must outlive the step.
[[nodiscard]] std::function<bool(QWidget& window, const BusPlace& owner)> busDatabaseStep(
    FormContext& form, Application& application, BusDefinition& definition);
/// Gives the display of a stream its entries of the database, if it is switched on.
void installDatabaseEntries(PcmFormSteps& steps, FormContext& form, Application& application);

}  // namespace kavu
