// The import of a table of another tool into a measurement database, and what it would do.
#pragma once

#include "mdb/import/ImportSource.h"
#include "mdb/storage/MeasurementDatabase.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace kavu {

struct DocumentContext;

struct ImportResult {
    std::size_t converted = 0;
    std::vector<std::string> skipped{};  ///< names that the database had already
    std::vector<std::string> refused{};  ///< names of records that its form cannot hold
};

/// Imports the rows of a file, and reports how many. All checks (see `openImport`) come before the
/// database is opened. With `overwrites` what is in it goes first. A record without a name is
/// dropped, one whose name is there already is skipped; one that the form of the database cannot
/// hold is refused with message 402 ("semi-colon"), once. A cancel keeps what was done until then.
/// At the end message 422 ("past the end of the line"), if lines were too short, and 424
/// ("Conversion complete"): a box, or the window "Import Results" with the names that were skipped.
/// A database that is the one of the settings, and enabled, is validated again then.
/// Nothing if nothing was imported because of a failure, which has been reported: message 428 for
/// a database that cannot be opened, 411 ("cancelled") if its names were not read.
std::optional<ImportResult> importFile(DocumentContext& context, UserInterface* parent,
                                       const ImportInput& input, MeasurementDatabase& database,
                                       bool overwrites);

/// Why a row of a preview is not imported; empty if it is.
struct ImportPreviewRow {
    std::int64_t number = 0;  ///< of the row or line in the file, from 1
    MdbRecord record;
    std::string skipped;
};

inline constexpr std::size_t kImportPreviewRows = 20;

/// The first rows of a file as an import into this database would take them, in silence. Empty for
/// what cannot be imported. `database` may be null: then no name is there already.
[[nodiscard]] std::vector<ImportPreviewRow> previewImport(DocumentContext& context,
                                                          const ImportInput& input,
                                                          MeasurementDatabase* database,
                                                          bool overwrites,
                                                          std::size_t count = kImportPreviewRows);

}  // namespace kavu
