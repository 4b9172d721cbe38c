#include "mdb/operations/DatabaseWork.h"

#include "core/TmatsDocument.h"
#include "core/files/FileIo.h"
#include "core/talk/FileReports.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"

namespace kavu {

namespace {

constexpr const char* kValidating = "Validating Measurement Database";

void reportUnusable(DocumentContext& context, UserInterface* parent,
                    const MeasurementDatabase& database, OnFailure failure) {
    if (failure == OnFailure::SwitchOff) {
        context.settings.set(setting::kDatabaseEnabled, false);
    }
    context.messages.showFailure(parent, database.status(), 428, title::kError, kErrorBox,
                                 database.path());
}

/// The folder of the settings, where the default is, is not there in a run with settings of its
/// own.
bool makeDatabase(UserInterface* parent, MeasurementDatabase& database) {
    const auto folder = folderOf(database.path());
    if (const auto status = folderExists(folder) ? IoStatus() : makeFolders(folder); !status.ok()) {
        reportUnableToWrite(parent, status);
        return false;
    }
    return database.makeFile(parent);
}

}  // namespace

MdbVersion databaseVersion(const ProfileSettings& settings) {
    return static_cast<MdbVersion>(settings.get(setting::kDatabaseVersion));
}

std::unique_ptr<MeasurementDatabase> settingsDatabase(DocumentContext& context) {
    return std::make_unique<MeasurementDatabase>(
        context.messages, context.settings.get(setting::kDatabasePath),
        databaseVersion(context.settings), sampleRateOptions(context.settings));
}

bool openDatabase(DocumentContext& context, UserInterface* parent, MeasurementDatabase& database,
                  IfMissing missing, OnFailure failure) {
    if (database.path().empty()) {
        if (failure == OnFailure::SwitchOff) {
            context.settings.set(setting::kDatabaseEnabled, false);
        }
        context.messages.show(parent, 430, title::kError, kErrorBox);
        return false;
    }
    const auto opening = database.open();
    if (opening == MeasurementDatabase::Opening::Ready ||
        (opening == MeasurementDatabase::Opening::Missing && missing == IfMissing::Start)) {
        return true;
    }
    reportUnusable(context, parent, database, failure);
    return false;
}

int validateDatabase(DocumentContext& context, UserInterface* parent, MeasurementDatabase& database,
                     int edition, OnFailure failure) {
    if (database.path().empty()) {
        context.messages.show(parent, 430, title::kError, kErrorBox);
        return -1;
    }
    const auto opening = database.open();
    if (opening == MeasurementDatabase::Opening::Missing) {
        if (context.messages.show(parent, 429, title::kError, kYesNoBox, database.path()) ==
                Button::Yes &&
            makeDatabase(parent, database)) {
            return 1;
        }
        reportUnusable(context, parent, database, failure);
        return -1;
    }
    if (opening == MeasurementDatabase::Opening::Failed) {
        reportUnusable(context, parent, database, failure);
        return -1;
    }
    setStatusText(parent, kValidating);
    (void)deleteFile(context.messages.logPath());
    const auto found = database.validate(parent, edition);
    setStatusText(parent, {});
    context.messages.showDialog(parent, "KAVU-9 Error Messages",
                                "Measurement Database: " + database.path(),
                                context.messages.logPath());
    return found.hasFaults ? 0 : 1;
}

bool switchDatabaseOn(DocumentContext& context, UserInterface* parent, int edition) {
    context.settings.set(setting::kDatabaseEnabled, true);
    const auto database = settingsDatabase(context);
    if (validateDatabase(context, parent, *database, edition, OnFailure::SwitchOff) < 0) {
        context.settings.set(setting::kDatabaseEnabled, false);
    }
    return context.settings.get(setting::kDatabaseEnabled);
}

void changeDatabase(DocumentContext& context, UserInterface* parent, const std::string& path,
                    MdbVersion version, int edition) {
    context.settings.set(setting::kDatabasePath, path);
    context.settings.set(setting::kDatabaseVersion, static_cast<int>(version));
    if (context.settings.get(setting::kDatabaseEnabled)) {
        (void)switchDatabaseOn(context, parent, edition);
    }
}

}  // namespace kavu
