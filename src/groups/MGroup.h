// The multiplex/modulation group of a data source: what ties its signals to data links and
// measurements.
#pragma once

#include "groups/GroupRecord.h"
#include "vocabulary/MGroupFields.h"

#include <string>
#include <string_view>

namespace kavu {

struct MultiplexGroup {
    std::string source{};  ///< name of the data source
    int index = 0;         ///< 1 to 99, or what a save refuses
    /// A baseband signal's name is under `BB\DLN` or `BB\MN`, a subcarrier's under `SI\DLN-n`
    /// or `SI\MN-n`, as `signalNameOf` its type tells.
    GroupRow record{};
    KeptCommands kept{};
};

/// The index of the M group of a data source, or of the file that would be made for it.
[[nodiscard]] int multiplexIndex(DocumentContext& context, UserInterface* parent,
                                 const std::string& source);

/// Reads the group. A file that is not there is told by message 145 and leaves the fields
/// empty; a signal type that no entry answers to becomes PCM, with message 300.
void loadMultiplex(DocumentContext& context, UserInterface* parent, const std::string& source,
                   int index, MultiplexGroup& group);

/// Writes the group file: message 301 for a signal without a type, 307 if the file can not be
/// written, and then false.
[[nodiscard]] bool storeMultiplex(DocumentContext& context, UserInterface* parent,
                                  const MultiplexGroup& group);

/// The name of a baseband signal of this type, or of a subcarrier.
[[nodiscard]] std::string_view basebandName(const MultiplexGroup& group);
[[nodiscard]] std::string_view subcarrierName(const GroupRow& row);
/// Sets the name under the code of the type, and drops the one under the other code.
void setBasebandName(MultiplexGroup& group, std::string_view name);
void setSubcarrierName(GroupRow& row, std::string_view name);
/// Gives a link another name wherever the group names it.
void replaceLinkName(MultiplexGroup& group, std::string_view oldName, std::string_view newName);

/// Whether a name may be given to a data link: not if a P group bears it, which is told by
/// message 306.
[[nodiscard]] bool mayNameLink(DocumentContext& context, UserInterface* parent,
                               std::string_view name);

}  // namespace kavu
