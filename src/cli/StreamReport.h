// A stream in memory as a JSON document and as readable text.
#pragma once

#include "cli/JsonReport.h"

#include <string>

namespace kavu {
class PcmFormat;
}

namespace kavu::cli {

/// Adds the members of the model, from "implicitSubframes" to "wordFrameDefinitions".
void addStreamMembers(Json& members, const PcmFormat& format);

/// The model in aligned tables.
[[nodiscard]] std::string streamText(const PcmFormat& format);

}  // namespace kavu::cli
