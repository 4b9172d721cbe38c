#include "app/mdb/StreamDatabase.h"

#include "app/mdb/DatabasePane.h"
#include "app/mdb/UpdateStreamDialog.h"
#include "app/pcm/PcmFormSteps.h"
#include "app/pcm/WordSteps.h"
#include "application/Application.h"
#include "core/talk/ProfileSettings.h"
#include "mdb/operations/BusAdditions.h"
#include "mdb/operations/StreamSave.h"

namespace kavu {

StreamDatabase::StreamDatabase(FormContext& form, Application& application)
    : form_(form), application_(application) {}

bool StreamDatabase::isOn() const {
    return application_.context().settings.get(setting::kDatabaseEnabled);
}

DatabaseWork* StreamDatabase::reopen() {
    auto& document = application_.context();
    work_.reset();
    database_.reset();
    if (!isOn()) {
        return nullptr;
    }
    database_ = settingsDatabase(document);
    if (!openDatabase(document, &form_.ui, *database_, IfMissing::Refuse, OnFailure::SwitchOff)) {
        return nullptr;
    }
    work_.emplace(
        DatabaseWork{document, application_.conversions(), application_.pcmFormat(), *database_});
    return &*work_;
}

namespace {

/// Calls a step of the opened database; `otherwise` without one.
template <class Result, class Call>
Result ifOpened(StreamDatabase& database, Result otherwise, const Call& call) {
    auto* const work = database.opened();
    return work == nullptr ? otherwise : call(databaseSteps(*work));
}

}  // namespace

void installDatabaseSteps(WordSteps& steps, FormContext& form, Application& application) {
    const auto database = std::make_shared<StreamDatabase>(form, application);
    if (!database->isOn()) {
        return;
    }
    auto& lookUps = steps.save.database;
    lookUps.isOn = [database] { return database->isOn(); };
    lookUps.find = [database](UserInterface* parent, std::string_view name) {
        return ifOpened(*database, std::optional<DatabaseRecord>(),
                        [&](const DatabaseSteps& opened) { return opened.find(parent, name); });
    };
    lookUps.forEachChild = [database](UserInterface* parent, std::string_view root,
                                      const std::function<bool(const DatabaseRecord&)>& visit) {
        return ifOpened(*database, false, [&](const DatabaseSteps& opened) {
            return opened.forEachChild(parent, root, visit);
        });
    };
    lookUps.addConversion = [database](UserInterface* parent, std::string_view name) {
        if (auto* const work = database->opened()) {
            databaseSteps(*work).addConversion(parent, name);
        }
    };
    lookUps.select = [database](UserInterface* parent) -> std::optional<DatabaseRecord> {
        auto* const work = database->reopen();
        return work == nullptr ? std::nullopt : databaseSteps(*work).select(parent);
    };
    steps.save.storeInDatabase = [database](UserInterface* parent, std::string_view name) {
        if (auto* const work = database->reopen()) {
            (void)storeMeasurementInDatabase(*work, parent, std::string(name));
        }
    };
}

std::function<bool(QWidget& window, const BusPlace& owner)> busDatabaseStep(
    FormContext& form, Application& application, BusDefinition& definition) {
    const auto database = std::make_shared<StreamDatabase>(form, application);
    if (!database->isOn()) {
        return {};
    }
    return [database, &form, &application, &definition](QWidget&, const BusPlace& owner) {
        auto* const work = database->reopen();
        if (work == nullptr) {
            return false;
        }
        const auto* const names = &application.measurementNames();
        if (owner.empty()) {
            return !addBusMeasurements(*work, &form.ui, definition, names).added.empty();
        }
        const auto record = selectDatabaseRecord(*work, &form.ui);
        return record && addBusMeasurement(*work, &form.ui, definition, owner, *record, names);
    };
}

void installDatabaseEntries(PcmFormSteps& steps, FormContext& form, Application& application) {
    const auto database = std::make_shared<StreamDatabase>(form, application);
    if (!database->isOn()) {
        return;
    }
    steps.databaseIsOn = [database] { return database->isOn(); };
    steps.databaseEntries.push_back(
        {"&Update Stream From Database...", [database, &form](QWidget& window) {
             auto* const work = database->reopen();
             return work != nullptr && runStreamUpdate(form, *work, &window);
         }});
    steps.databaseEntries.push_back(
        {"&Save Measurements To Database...", [database, &form](QWidget&) {
             if (auto* const work = database->reopen()) {
                 (void)saveStreamToDatabase(*work, &form.ui);
             }
             return false;  // the stream stays as it is
         }});
    const auto shown = std::make_shared<StreamDatabase>(form, application);
    steps.makeDatabasePane = [shown, &form](QSplitter& parts) -> QWidget* {
        return new DatabasePane(form, shown, parts);
    };
}

}  // namespace kavu
