// What the operations between the database and the open document work with, and how a database is
// opened for them.
#pragma once

#include "mdb/storage/MeasurementDatabase.h"

#include <memory>
#include <string>

namespace kavu {

struct DocumentContext;
class ConversionStore;
class PcmFormat;
class ProfileSettings;

/// Of the questions before all records go.
inline constexpr const char* kDeleteDatabaseTitle = "Delete Measurement Database";

struct DatabaseWork {
    DocumentContext& context;
    ConversionStore& conversions;
    PcmFormat& format;  ///< the stream in memory
    MeasurementDatabase& database;
};

/// The form of the setting `MDBVer`.
[[nodiscard]] MdbVersion databaseVersion(const ProfileSettings& settings);
/// The database of the settings `MDB` and `MDBVer`, not read yet.
[[nodiscard]] std::unique_ptr<MeasurementDatabase> settingsDatabase(DocumentContext& context);

/// What to do with a file that is not there.
enum class IfMissing {
    Refuse,  ///< message 428
    Start,   ///< begin with an empty database, whose first change makes the file
};
/// What to do about a database that cannot be used, besides message 428.
enum class OnFailure { Report, SwitchOff };
/// Reads the database. Without a path message 430 ("not been defined yet"), and for one that
/// cannot be used message 428 ("Unable to open"); with `SwitchOff` the setting `MDBEnabled` goes
/// off then. False if there is nothing to work with.
bool openDatabase(DocumentContext& context, UserInterface* parent, MeasurementDatabase& database,
                  IfMissing missing, OnFailure failure);

/// Checks the database as the edition wants it, and shows what is wrong in the Messages window.
/// 1 clean or made new, 0 with faults, -1 if there is no usable database: messages 430 without a
/// path, 428. A file that is not there is made after question 429, and its folder with it.
int validateDatabase(DocumentContext& context, UserInterface* parent, MeasurementDatabase& database,
                     int edition, OnFailure failure);

/// Switches the database of the settings on and checks it. False if it is off again, as there is no
/// usable one: see `validateDatabase`.
bool switchDatabaseOn(DocumentContext& context, UserInterface* parent, int edition);
/// Makes another file, or another form of it, the database of the settings; one that is switched
/// on is checked, and switched off if it cannot be used.
void changeDatabase(DocumentContext& context, UserInterface* parent, const std::string& path,
                    MdbVersion version, int edition);

}  // namespace kavu
