#include "conversion/RawChunk.h"

namespace kavu {

std::string_view measurementNameIn(const RawCommand& command) {
    return isNaming(command) ? trimRight(command.value) : std::string_view();
}

std::string_view recordNameIn(const RawCommand& command) {
    const auto name = measurementNameIn(command);
    return name.size() > kLongestMeasurementName
               ? trimRight(cutToBytes(name, kLongestMeasurementName))
               : name;
}

}  // namespace kavu
