// What is taken from a table of another tool, and how: the kind of the file, and for each field
// of a database record where its value is.
#pragma once

#include "mdb/record/MdbRecord.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// The numbers are those of the settings and profiles.
enum class ImportKind { Dbase = 0, Delimited = 1, Fixed = 2 };

struct ImportKindName {
    std::string_view name;
    std::string_view word;  ///< of the command line
};
[[nodiscard]] std::span<const ImportKindName, 3> importKinds();
[[nodiscard]] std::optional<ImportKind> importKindOf(std::string_view word);
/// By the extension of a file: .dbf; .csv, .txt, .prn; .asc. Nothing for any other.
[[nodiscard]] std::optional<ImportKind> importKindOfFile(std::string_view path);

struct ImportDelimiter {
    char character;
    std::string_view name;  ///< as the list of the form shows it
};
[[nodiscard]] std::span<const ImportDelimiter> importDelimiters();
/// By the extension of a delimited file: a comma, for .txt a tab, for .prn a blank.
[[nodiscard]] char importDelimiterOfFile(std::string_view path);

/// Where the value of one field is.
struct ImportReference {
    std::size_t field = 0;  ///< the index in the record
    /// The name of a dBase column, the number of a field from 1 or its name in the header, or the
    /// column from 1 at which it starts.
    std::string first;
    std::string second{};  ///< characters, in a file of fixed columns
};

struct ImportLayout {
    ImportKind kind = ImportKind::Delimited;
    char delimiter = ',';
    bool hasHeader = false;  ///< the first line of a delimited file holds names
    std::vector<ImportReference> references{};

    /// Null for a field without a reference.
    [[nodiscard]] const ImportReference* referenceOf(std::size_t field) const;
};

/// The number of a field's row in the list of the form, from 1; 0 for a field that the version
/// does not hold.
[[nodiscard]] std::size_t importRowOf(std::size_t field, MdbVersion version);

/// For each field whose label is one of `names`, in any case and with any signs between its
/// letters, the reference to it; a column "Name" is that of the measurement.
[[nodiscard]] std::vector<ImportReference> matchImportNames(const std::vector<std::string>& names,
                                                            MdbVersion version);

}  // namespace kavu
