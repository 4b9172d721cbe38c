// The way of a bus group between the document and its editor: its group file is copied to
// "1553.TMP" when the stream is loaded, and back when it is saved.
#pragma once

#include "bus/definition/BusDefinition.h"

#include <optional>
#include <string>
#include <string_view>

namespace kavu {

struct DocumentContext;
class UserInterface;

/// True for the link of a stream: one that a source or a group of the document names, with or
/// without a group of its own.
[[nodiscard]] bool isDataLink(DocumentContext& context, UserInterface* parent,
                              std::string_view link);

/// Copies the bus group of a link; a link without one leaves no copy. False if it could not be
/// copied, which is reported.
[[nodiscard]] bool loadBusGroup(DocumentContext& context, UserInterface* parent,
                                std::string_view link);
/// Copies it back, to the first free group if the link has none; nothing without a copy of it.
/// False if there is no group left or it could not be written, which is reported.
[[nodiscard]] bool storeBusGroup(DocumentContext& context, UserInterface* parent,
                                 std::string_view link);

/// The definition of a link, unpacked from its group: an empty one without a group. Nothing if the
/// user has cancelled, or something could not be read, which is reported.
[[nodiscard]] std::optional<BusDefinition> openBusDefinition(DocumentContext& context,
                                                             UserInterface* parent,
                                                             std::string_view link);
/// The same from the copy that was made when the stream was loaded: another editor may have written
/// it since.
[[nodiscard]] std::optional<BusDefinition> reopenBusDefinition(DocumentContext& context,
                                                               UserInterface* parent,
                                                               std::string_view link);
/// Packs a definition and copies it to its group. False as in `packBusGroup` and `storeBusGroup`.
[[nodiscard]] bool storeBusDefinition(DocumentContext& context, UserInterface* parent,
                                      const BusDefinition& definition);

}  // namespace kavu
