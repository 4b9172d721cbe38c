#include "conversion/RawChunk.h"

#include "conversion/ConversionFields.h"

namespace kavu {

std::string_view measurementNameIn(const RawCommand& command) {
    return startsWithIgnoreCase(command.code, kNameCode) ? trimRight(command.value)
                                                         : std::string_view();
}

}  // namespace kavu
