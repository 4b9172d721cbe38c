// A measurement name that another stream has, as all editors of streams refuse it.
#pragma once

#include <string_view>

namespace kavu {

struct DocumentContext;
class MeasurementNames;
class UserInterface;

/// The number of a link's stream in the order of `gatherDataLinks`, from 1; 0 for a link that no
/// data source has.
[[nodiscard]] int streamNumberOf(DocumentContext& context, UserInterface* parent,
                                 std::string_view link);
/// False, after message 455 ("already being used"), if names are checked and a stream other than
/// this one has the name.
[[nodiscard]] bool isFreeInOtherStreams(const DocumentContext& context, UserInterface* parent,
                                        const MeasurementNames& names, std::string_view name,
                                        int stream);

}  // namespace kavu
