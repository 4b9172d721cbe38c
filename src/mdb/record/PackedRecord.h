// A record in little more memory than its texts take, for lists of many records: most of the 36
// texts of a record are empty, and an empty one as an object of its own is four words.
#pragma once

#include "mdb/record/MdbRecord.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kavu {

class PackedRecord {
  public:
    PackedRecord() = default;
    /// Implicit, as it is the same record. REQUIRES: less than 4 GB of text.
    PackedRecord(const MdbRecord& record);
    [[nodiscard]] MdbRecord unpacked() const;

    /// Valid until the next change. REQUIRES: at most `mdbfield::kCount`, which is always empty.
    [[nodiscard]] std::string_view operator[](std::size_t index) const;
    [[nodiscard]] std::string_view name() const { return (*this)[mdbfield::kName]; }
    void set(std::size_t index, std::string_view text);
    [[nodiscard]] bool operator==(const PackedRecord&) const = default;

  private:
    [[nodiscard]] std::uint32_t endOf(std::size_t index) const;

    /// Where each text ends, as numbers of four bytes, then the texts; nothing at all for a record
    /// without any text.
    std::string bytes_;
};

}  // namespace kavu
