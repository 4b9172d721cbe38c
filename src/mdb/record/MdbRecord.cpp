#include "mdb/record/MdbRecord.h"

namespace kavu {

bool MdbRecord::hasBusFields() const {
    for (auto i = mdbfield::kBusName; i < mdbfield::kFirstConversion; ++i) {
        if (!texts_[i].empty()) {
            return true;
        }
    }
    return false;
}

std::size_t MdbRecord::fieldWithSemicolon() const {
    std::size_t index = 0;
    while (index < mdbfield::kCount && texts_[index].find(';') == std::string::npos) {
        ++index;
    }
    return index;
}

}  // namespace kavu
