// The list of the measurements that an acquisition filters or overwrites. It is held in a
// working file of the D group.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kavu {

class PcmFormat;
class UserInterface;

/// One measurement of the list. A measurement that the stream does not have stays in it.
struct FilterRow {
    std::string name;
    /// Of 106-09: "Yes" or "No", for being selected. From 106-11 on: "Overwrite", "Filter" or
    /// "Neither", and empty for one that the file does not list.
    std::string setting;
    [[nodiscard]] bool operator==(const FilterRow&) const = default;
};

/// True if the edition has such a list: 106-09 and later.
[[nodiscard]] bool hasFilterList(const PcmFormat& format);
/// The settings of a row, as they are shown.
[[nodiscard]] std::vector<std::string> filterSettings(const PcmFormat& format);

/// One row for each measurement of the stream, then those that only the file names. Nothing
/// with message 340 ("There are no measurements") while the stream has no measurements, and
/// for an edition without the list. A file that cannot be read is reported.
[[nodiscard]] std::optional<std::vector<FilterRow>> readFilterList(PcmFormat& format,
                                                                   UserInterface* parent);
/// Writes the list: of 106-09 the rows with "Yes", from 106-11 on all rows. The format
/// then counts as changed. False if the file cannot be written, which has been reported.
bool storeFilterList(PcmFormat& format, UserInterface* parent, const std::vector<FilterRow>& rows);

}  // namespace kavu
