// The rows of a file that is imported, each as a record of the database.
#pragma once

#include "mdb/import/ImportLayout.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace kavu {

class IoStatus;
class Messages;
class UserInterface;

/// Why a row gives no record.
enum class ImportSkip {
    None,
    Deleted,   ///< marked so in its table
    TooShort,  ///< a field of fixed columns begins beyond the end of the line
    Blank,
};

struct ImportRow {
    std::int64_t number = 0;  ///< the row or line of the file, from 1
    ImportSkip skip = ImportSkip::None;
    MdbRecord record;
};

class ImportSource {
  public:
    ImportSource() = default;
    ImportSource(const ImportSource&) = delete;
    ImportSource& operator=(const ImportSource&) = delete;
    virtual ~ImportSource() = default;

    /// The next row; false at the end, or after a failure.
    virtual bool next(ImportRow& row) = 0;
    /// What was read of the file, from 0 to 100.
    [[nodiscard]] virtual double percent() const = 0;
    /// Why there is no next row; ok at the end.
    [[nodiscard]] virtual IoStatus status() const = 0;
};

/// The file that is imported.
struct ImportInput {
    std::string path;
    const ImportLayout& layout;
    MdbVersion version;  ///< of the target, whose list of fields the messages name
};

/// Opens a file to import and checks the layout against it, in this order: message 425 (no
/// measurement name), the file cannot be opened, 419 (no fields), 421 (a starting column without a
/// size), 423 (not a column of the table) or a column whose values are no text, 425 (a name that
/// the file does not have), and question 420 about other fields that it does not have. Null if
/// the file cannot be imported.
[[nodiscard]] std::unique_ptr<ImportSource> openImport(const Messages& messages,
                                                       UserInterface* parent,
                                                       const ImportInput& input);
/// The same without a message, and with whatever fields the file has.
[[nodiscard]] std::unique_ptr<ImportSource> openImportQuietly(const Messages& messages,
                                                              const ImportInput& input);

/// The names that a mapping can be made by: those of a table's columns, or of the first line of a
/// delimited file. Empty for a file of fixed columns, or one that cannot be read.
[[nodiscard]] std::vector<std::string> importNames(const Messages& messages,
                                                   const std::string& path, ImportKind kind,
                                                   char delimiter);

/// Shows the columns of a table in the Messages window "Database Contents".
void showDbaseFields(const Messages& messages, UserInterface* parent, const std::string& path);

}  // namespace kavu
