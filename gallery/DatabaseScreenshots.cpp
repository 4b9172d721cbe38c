// The windows of the measurement database, over a few records of their own.
#include "app/framework/Look.h"
#include "app/mdb/ChangesDialog.h"
#include "app/mdb/DatabaseWindow.h"
#include "app/mdb/ImportWindow.h"
#include "app/mdb/LocationDialog.h"
#include "app/mdb/ProfileDialog.h"
#include "app/mdb/UpdateStreamDialog.h"
#include "core/WorkingStore.h"
#include "core/files/FileIo.h"
#include "gallery/Makers.h"
#include "gallery/SampleDatabase.h"
#include "gallery/Screenshots.h"
#include "mdb/storage/MeasurementDatabase.h"

#include <memory>

#include <QLabel>
#include <QLineEdit>
#include <QTableView>

namespace kavu {

namespace {

/// A database with the edit of it, which a window needs as long as it lives.
struct EditedDatabase {
    EditedDatabase(DocumentContext& document, const std::string& path)
        : database(document.messages, path, MdbVersion::Xml, SampleRateOptions{}),
          edit(document, database) {}
    MeasurementDatabase database;
    DatabaseEdit edit;
};

std::unique_ptr<QWidget> makeWindow(ScreenshotStage& stage) {
    if (stage.document == nullptr) {
        return nullptr;
    }
    const auto parts = std::make_shared<EditedDatabase>(
        *stage.document, stage.document->store.pathOf("Gallery.mdb"));
    fillSampleDatabase(parts->database);
    if (!parts->edit.begin(nullptr)) {
        return nullptr;
    }
    auto window =
        std::make_unique<DatabaseWindow>(stage.form, parts->edit, parts->database, nullptr);
    QObject::connect(window.get(), &QObject::destroyed, [parts] {});
    // The path of this run says nothing to anybody.
    window->findChild<QLabel*>(QStringLiteral("database"))
        ->setText(QStringLiteral("Current Database: /home/kestrel/kavu.mdb"));
    window->goToNextFault();
    const auto at = window->view().currentIndex();
    window->view().setCurrentIndex(at.siblingAtRow(at.row() - 1));
    return window;
}

std::vector<ShownChange> sampleChanges() {
    return {{.name = "ENG1-N1",
             .field = "Measurement Description",
             .before = "Engine 1 fan speed",
             .after = "Engine 1 fan speed, new calibration"},
            {.name = "ENG1-N1",
             .field = "Eu Conversion Data",
             .before = "0 0.00167849",
             .after = "0.0 0.00167912",
             .isTicked = false},
            {.name = "ENG1-EGT", .field = "High Warning", .before = "", .after = "950"}};
}

std::unique_ptr<QWidget> makeImport(ScreenshotStage& stage) {
    if (stage.document == nullptr) {
        return nullptr;
    }
    const auto path = stage.document->store.pathOf("Gallery.csv");
    (void)writeWholeFile(path, "ENG1-N1,,16\nENG2-N1,,16\n,,8\n");
    ImportSettings settings;
    settings.input = path;
    settings.kind = ImportKind::Delimited;
    settings.output = stage.document->store.pathOf("GalleryTarget.mdb");
    settings.write(stage.form.settings);
    auto window = std::make_unique<ImportWindow>(stage.form, *stage.document, nullptr);
    window->findChild<QLineEdit*>(QStringLiteral("source"))
        ->setText(QStringLiteral("/home/kestrel/measurements.csv"));
    window->findChild<QLineEdit*>(QStringLiteral("target"))
        ->setText(QStringLiteral("/home/kestrel/kavu.mdb"));
    return window;
}

}  // namespace

void addDatabaseScreenshots(ScreenshotList& list) {
    list.add("EDITMEASUREMENTDATABASE", makeWindow);
    list.add("MDB_PASTE", [](ScreenshotStage& stage) {
        auto changes = sampleChanges();
        changes.back().remark = "Not allowed here";
        return std::make_unique<ChangesDialog>(stage.form,
                                               ChangesSetup{.resourceName = "MDB_PASTE",
                                                            .title = "Paste Into Database",
                                                            .text = "3 cells will change."},
                                               std::move(changes), nullptr);
    });
    list.add("MDB_LOCATION", [](ScreenshotStage& stage) {
        return std::make_unique<LocationDialog>(stage.form, "/home/kestrel/kavu.mdb",
                                                MdbVersion::Xml, nullptr);
    });
    list.add("MDB_UPDATE", [](ScreenshotStage& stage) {
        StreamUpdateChoice choice;
        choice.fields.set();
        return std::make_unique<UpdateStreamDialog>(stage.form, "/home/kestrel/kavu.mdb", choice,
                                                    nullptr);
    });
    list.add("MDB_UPDATE_PREVIEW", [](ScreenshotStage& stage) {
        return std::make_unique<ChangesDialog>(
            stage.form,
            ChangesSetup{.resourceName = "MDB_UPDATE_PREVIEW",
                         .title = "Update Stream From Database",
                         .text = "3 values of 2 measurements will change. What has no tick stays "
                                 "as it is. Measurements without an EU definition get one.",
                         .hasTicks = true},
            sampleChanges(), nullptr);
    });
    list.add("IMPORTDATABASE", makeImport);
    list.add("LOAD_IMPORT_PROFILE", [](ScreenshotStage& stage) {
        (void)saveImportProfile(stage.form.settings, {"Calibration list", {}}, MdbVersion::Xml);
        return std::make_unique<ProfileDialog>(stage.form, ProfileDialog::Purpose::Load, "",
                                               nullptr);
    });
    list.add("SAVE_IMPORT_PROFILE", [](ScreenshotStage& stage) {
        return std::make_unique<ProfileDialog>(stage.form, ProfileDialog::Purpose::Save, "",
                                               nullptr);
    });
}

}  // namespace kavu
