// The multiplex/modulation group of a data source, which ties its signals to data links
// and measurements.
#pragma once

#include "groups/GroupRecord.h"
#include "vocabulary/MGroupFields.h"

#include <string>
#include <string_view>

namespace kavu {

struct MultiplexGroup {
    std::string source{};  ///< name of the data source
    int index = 0;         ///< 1 to 99; a save refuses any other
    /// A baseband signal's name is under `BB\DLN` or `BB\MN`, a subcarrier's under `SI\DLN-n`
    /// or `SI\MN-n`, depending on `signalNameOf` its type.
    GroupRow record{};
    GroupFile kept{};
    bool isNew = false;  ///< has no file yet; OK writes it, edited or not
};

/// The index of the M group of a data source, or of the file that would be made for it.
[[nodiscard]] int multiplexIndex(DocumentContext& context, UserInterface* parent,
                                 const std::string& source);

/// Reads the group. A missing file is reported by message 145 ("not found") and leaves
/// the fields empty; a signal type without an entry becomes PCM, with message 300
/// ("Setting default to PCM").
void loadMultiplex(DocumentContext& context, UserInterface* parent, const std::string& source,
                   int index, MultiplexGroup& group);

/// Writes the group file, with message 301 ("This field will be ignored") for a signal
/// without a type. False, after message 307 ("Unable to open Multiplex"), if the file cannot
/// be written.
[[nodiscard]] bool storeMultiplex(DocumentContext& context, UserInterface* parent,
                                  const MultiplexGroup& group);

/// The name of a baseband signal of this type, or of a subcarrier.
[[nodiscard]] std::string_view basebandName(const MultiplexGroup& group);
[[nodiscard]] std::string_view subcarrierName(const GroupRow& row);
/// Sets the name under the code of the type, and removes the one under the other code.
void setBasebandName(MultiplexGroup& group, std::string_view name);
void setSubcarrierName(GroupRow& row, std::string_view name);
/// Renames a link wherever the group names it.
void replaceLinkName(MultiplexGroup& group, std::string_view oldName, std::string_view newName);

/// True if a data link may get this name; false, after message 306 ("already exists"), if
/// a P group has it.
[[nodiscard]] bool mayNameLink(DocumentContext& context, UserInterface* parent,
                               std::string_view name);

}  // namespace kavu
