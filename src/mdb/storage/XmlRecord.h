// A record as an element `Measurement` of the XML form.
#pragma once

#include "mdb/record/MdbRecord.h"

#include <string>
#include <string_view>

namespace kavu {

inline constexpr std::string_view kXmlDatabaseRoot = "MeasurementDatabase";
inline constexpr std::string_view kXmlRecordElement = "Measurement";

/// The record of an element; an empty one for an element that cannot be read.
[[nodiscard]] MdbRecord readXmlRecord(std::string_view element);
/// Only its name.
[[nodiscard]] std::string readXmlRecordName(std::string_view element);

/// The element in UTF-8, indented by one tab, without a line break at its end. An empty field
/// gives no element, but for the name. Line breaks are real ones, and characters that XML cannot
/// hold are left out.
[[nodiscard]] std::string writeXmlRecord(const MdbRecord& record);

}  // namespace kavu
