// One record of the measurement database: 36 texts in a fixed order.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace kavu {

/// The fields of a record, by their index.
namespace mdbfield {
inline constexpr std::size_t kName = 0;
inline constexpr std::size_t kRoot = 1;
inline constexpr std::size_t kWordLength = 2;
inline constexpr std::size_t kMask = 3;
inline constexpr std::size_t kTransferOrder = 4;
inline constexpr std::size_t kParityTransferOrder = 5;
inline constexpr std::size_t kParity = 6;
inline constexpr std::size_t kBusName = 7;
inline constexpr std::size_t kBusNumber = 8;
inline constexpr std::size_t kRemoteTerminalName = 9;
inline constexpr std::size_t kRemoteTerminalAddress = 10;
inline constexpr std::size_t kSubTerminalName = 11;
inline constexpr std::size_t kSubTerminalAddress = 12;
inline constexpr std::size_t kTransmitReceive = 13;
inline constexpr std::size_t kWordNumber = 14;
inline constexpr std::size_t kFirstConversion = 15;  ///< what goes to a conversion record
inline constexpr std::size_t kDescription = 26;
inline constexpr std::size_t kHighValue = 29;
inline constexpr std::size_t kHighWarning = 31;
inline constexpr std::size_t kInputFormat = 32;
inline constexpr std::size_t kSampleRate = 33;
inline constexpr std::size_t kType = 34;
inline constexpr std::size_t kData = 35;
inline constexpr std::size_t kCount = 36;
}  // namespace mdbfield

/// How a database is stored. The numbers are those of the setting `MDBVer`.
enum class MdbVersion {
    Basic = 0,    ///< delimited text of 28 columns, without the 1553 fields
    WithBus = 1,  ///< delimited text of 36 columns
    Xml = 2,
};

/// As the list of versions shows them, in the order of the numbers.
inline constexpr auto kMdbVersionNames = std::to_array<std::string_view>({
    "Version 1 - Measurement information only",
    "Version 2 - Measurement information, and additional 1553 fields",
    "Version 3 - XML (Recommended)",
});

/// The number of columns: 28, 36, 36.
[[nodiscard]] constexpr std::size_t columnCount(MdbVersion version) {
    return version == MdbVersion::Basic ? 28 : mdbfield::kCount;
}
/// The index of a column's field: a database without the 1553 fields leaves them out.
[[nodiscard]] constexpr std::size_t columnIndex(std::size_t column, MdbVersion version) {
    return version == MdbVersion::Basic && column >= mdbfield::kBusName
               ? column + mdbfield::kFirstConversion - mdbfield::kBusName
               : column;
}

/// Texts with line breaks in stored form (`toStoredForm`), without outer blanks.
class MdbRecord {
  public:
    MdbRecord() = default;
    explicit MdbRecord(std::string name) { texts_[mdbfield::kName] = std::move(name); }

    /// REQUIRES: at most `mdbfield::kCount`, which is an end mark that is always empty.
    [[nodiscard]] const std::string& operator[](std::size_t index) const { return texts_[index]; }
    [[nodiscard]] std::string& operator[](std::size_t index) { return texts_[index]; }
    [[nodiscard]] const std::string& name() const { return texts_[mdbfield::kName]; }
    [[nodiscard]] bool operator==(const MdbRecord&) const = default;

    /// True if a field is not empty that a database of 28 columns does not have.
    [[nodiscard]] bool hasBusFields() const;
    /// The index of the first field with a text that holds a semicolon, which no delimited file
    /// can hold; `mdbfield::kCount` if there is none. Fields that the version leaves out count.
    [[nodiscard]] std::size_t fieldWithSemicolon() const;

  private:
    std::array<std::string, mdbfield::kCount + 1> texts_;
};

}  // namespace kavu
