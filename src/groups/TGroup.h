// The transmission group of a data source of type RF: its radio link and the ground station
// that receives it.
#pragma once

#include "groups/GGroup.h"

#include <optional>
#include <string>

namespace kavu {

/// Reads the group of a data source. Without a file it is a new one with the next free number,
/// which message 145 ("Creating new definition") reports. Nothing if the user has cancelled,
/// if the file cannot be read or if all 99 numbers are taken (85 "Unable To Edit"); the latter
/// two have been reported.
[[nodiscard]] std::optional<EditedGroup> readTransmission(DocumentContext& context,
                                                          UserInterface* parent,
                                                          const std::string& source);

/// The text of the group file as `storeTransmission` writes it for rows of the record alone,
/// without the kept commands.
[[nodiscard]] std::string transmissionText(const EditedGroup& group, int edition);
/// Writes the group file; see `storeTable`.
[[nodiscard]] bool storeTransmission(DocumentContext& context, UserInterface* parent,
                                     const EditedGroup& group);

}  // namespace kavu
