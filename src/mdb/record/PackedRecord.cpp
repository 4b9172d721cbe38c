#include "mdb/record/PackedRecord.h"

#include <cstring>

namespace kavu {

namespace {

constexpr std::size_t kEndBytes = sizeof(std::uint32_t);
constexpr std::size_t kHeadBytes = mdbfield::kCount * kEndBytes;

}  // namespace

PackedRecord::PackedRecord(const MdbRecord& record) {
    std::size_t size = 0;
    for (std::size_t i = 0; i < mdbfield::kCount; ++i) {
        size += record[i].size();
    }
    if (size == 0) {
        return;
    }
    bytes_.reserve(kHeadBytes + size);
    bytes_.resize(kHeadBytes);
    for (std::size_t i = 0; i < mdbfield::kCount; ++i) {
        bytes_ += record[i];
        const auto end = static_cast<std::uint32_t>(bytes_.size());
        std::memcpy(bytes_.data() + i * kEndBytes, &end, kEndBytes);
    }
}

MdbRecord PackedRecord::unpacked() const {
    MdbRecord record;
    for (std::size_t i = 0; i < mdbfield::kCount; ++i) {
        record[i] = (*this)[i];
    }
    return record;
}

std::uint32_t PackedRecord::endOf(std::size_t index) const {
    std::uint32_t end = 0;
    std::memcpy(&end, bytes_.data() + index * kEndBytes, kEndBytes);
    return end;
}

std::string_view PackedRecord::operator[](std::size_t index) const {
    if (bytes_.empty() || index >= mdbfield::kCount) {
        return {};
    }
    const std::size_t begin = index == 0 ? kHeadBytes : endOf(index - 1);
    return std::string_view(bytes_).substr(begin, endOf(index) - begin);
}

void PackedRecord::set(std::size_t index, std::string_view text) {
    auto record = unpacked();
    record[index] = text;
    *this = PackedRecord(record);
}

}  // namespace kavu
