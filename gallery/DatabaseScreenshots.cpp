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
#include "gallery/Screenshots.h"
#include "mdb/storage/MeasurementDatabase.h"

#include <memory>

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

MdbRecord wordRecord(const std::string& name, const std::string& description,
                     const std::string& type, const std::string& data) {
    MdbRecord record(name);
    record[mdbfield::kWordLength] = "16";
    record[mdbfield::kMask] = "FW";
    record[mdbfield::kTransferOrder] = "M";
    record[mdbfield::kParity] = "DE";
    record[mdbfield::kDescription] = description;
    record[mdbfield::kInputFormat] = "UNS";
    record[mdbfield::kType] = type;
    record[mdbfield::kData] = data;
    return record;
}

void fillDatabase(MeasurementDatabase& database) {
    (void)database.open();
    MeasurementDatabase::Batch batch(database, nullptr);
    (void)database.remove(nullptr, {});
    for (const auto& record :
         {wordRecord("ENG1-N1", "Engine 1 fan speed", "COE", "0.0 0.00167912"),
          wordRecord("ENG1-N2", "Engine 1 core speed", "COE", "0.0 0.00175"),
          wordRecord("ENG1-EGT", "Engine 1 exhaust gas temperature", "PRS",
                     "0 -40 32768 560 65535 1200"),
          wordRecord("EVENT-PILOT", "Event mark of the pilot", "DIS", "0 No_mark 1 Mark")}) {
        (void)database.add(nullptr, record);
    }
    auto faulty = wordRecord("OIL-PRESS", "Oil pressure", "COE", "0.0 1.0");
    faulty[mdbfield::kParity] = "XX";
    (void)database.add(nullptr, faulty);
    (void)batch.commit(nullptr);
}

std::unique_ptr<QWidget> makeWindow(ScreenshotStage& stage) {
    if (stage.document == nullptr) {
        return nullptr;
    }
    const auto parts = std::make_shared<EditedDatabase>(
        *stage.document, stage.document->store.pathOf("Gallery.mdb"));
    fillDatabase(parts->database);
    if (!parts->edit.begin(nullptr)) {
        return nullptr;
    }
    auto window =
        std::make_unique<DatabaseWindow>(stage.form, parts->edit, parts->database, nullptr);
    QObject::connect(window.get(), &QObject::destroyed, [parts] {});
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
    return std::make_unique<ImportWindow>(stage.form, *stage.document, nullptr);
}

}  // namespace

void addDatabaseScreenshots(ScreenshotList& list) {
    list.add("EDITMEASUREMENTDATABASE", makeWindow);
    list.add("MDB_PASTE", [](ScreenshotStage& stage) {
        auto changes = sampleChanges();
        changes.back().remark = "Not allowed here";
        return std::make_unique<ChangesDialog>(
            stage.form,
            ChangesSetup{.resourceName = "MDB_PASTE",
                         .title = "Paste Into Database",
                         .text = "3 cells will change, and 0 records will be added."},
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
