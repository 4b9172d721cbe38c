// The head of a dBase table: its numbers, by hand from little-endian bytes, each checked against
// the size of the file, and its columns.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

inline constexpr char kDbaseHeaderEnd = 13;
inline constexpr char kDbaseFileEnd = 26;
inline constexpr char kDbaseDeletedMark = '*';
/// Where the number of rows is, in four bytes.
inline constexpr std::uint64_t kDbaseCountOffset = 4;
/// The length of a column is a signed byte.
inline constexpr int kMostDbaseLength = 127;
/// The header's length is a number of two bytes.
inline constexpr std::size_t kMostDbaseHeader = 0xFFFF;

struct DbaseColumn {
    std::string name;
    char type = 'C';
    int length = 0;
    std::size_t offset = 0;  ///< in a row, whose first byte is the mark of deletion
};

/// True for text, numbers, dates and truth values, which are text in the file; all other types
/// are binary or point into another file.
[[nodiscard]] bool isDbaseTextType(char type);

struct DbaseHeader {
    std::int64_t rowCount = 0;  ///< that are whole in the file, at most as many as it states
    std::size_t headerLength = 0;
    std::size_t rowLength = 0;
    std::vector<DbaseColumn> columns;

    /// Reads a header. `bytes` is the beginning of a file of `fileSize` bytes, at least its header
    /// if it has one. Nothing for what is no table; `reason` then says why, if there is more to
    /// say than that.
    [[nodiscard]] static std::optional<DbaseHeader> parse(std::string_view bytes,
                                                          std::uint64_t fileSize,
                                                          std::string& reason);
};

/// A number as the four bytes of a table.
[[nodiscard]] std::string dbaseNumber(std::uint32_t number);

}  // namespace kavu
