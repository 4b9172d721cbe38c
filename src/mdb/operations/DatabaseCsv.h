// Records as comma separated values, for spreadsheets and for an import.
#pragma once

#include "core/files/IoStatus.h"

#include <cstddef>
#include <string>
#include <vector>

namespace kavu {

class DatabaseEdit;

/// A line with its end. A value with a comma, a quote, a line break or outer blanks is in double
/// quotes.
[[nodiscard]] std::string csvLine(const std::vector<std::string>& values);

/// Writes these fields of these rows of an edit, with their labels as the first line. The file
/// is the former or the new one as a whole.
[[nodiscard]] IoStatus writeDatabaseCsv(const std::string& path, const DatabaseEdit& edit,
                                        const std::vector<std::size_t>& rows,
                                        const std::vector<std::size_t>& fields);

}  // namespace kavu
