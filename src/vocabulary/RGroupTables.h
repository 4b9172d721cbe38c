// The lists of the recorder group, each preceded by its count. Only for the tables; other
// code includes `RGroupFields.h`.
#pragma once

#include "vocabulary/Field.h"

#include <span>

namespace kavu::recorder {

[[nodiscard]] std::span<const Field> moduleFields();
[[nodiscard]] std::span<const Field> mediaFields();
[[nodiscard]] std::span<const Field> eventFields();
/// The measurements to process of an event: "-n" is the event.
[[nodiscard]] std::span<const Field> eventMeasurementFields();
[[nodiscard]] std::span<const Field> referenceFields();

}  // namespace kavu::recorder
