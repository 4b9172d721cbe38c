// Tables for tests, byte by byte.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kavu::test {

struct TableColumn {
    std::string name;
    int length = 0;
    char type = 'C';
    int decimals = 0;
};

inline std::string littleEndian(std::uint64_t number, int width) {
    std::string bytes;
    for (int i = 0; i < width; ++i) {
        bytes += static_cast<char>(number >> (8 * i) & 0xFF);
    }
    return bytes;
}

/// A table of rows that begin with their mark, as in " A  1 ".
inline std::string tableBytes(const std::vector<TableColumn>& columns,
                              const std::vector<std::string>& rows) {
    std::size_t rowLength = 1;
    for (const auto& column : columns) {
        rowLength += static_cast<std::size_t>(column.length);
    }
    std::string bytes("\x03\x7E\x01\x02", 4);
    bytes += littleEndian(rows.size(), 4) + littleEndian(32 + 32 * columns.size() + 1, 2) +
             littleEndian(rowLength, 4);
    bytes.resize(32, '\0');
    for (const auto& column : columns) {
        std::string descriptor = column.name;
        descriptor.resize(11, '\0');
        descriptor += column.type;
        descriptor.resize(16, '\0');
        descriptor += static_cast<char>(column.length % 256);
        descriptor += static_cast<char>(column.decimals);
        descriptor.resize(32, '\0');
        bytes += descriptor;
    }
    bytes += '\x0D';
    for (auto row : rows) {
        row.resize(rowLength, ' ');
        bytes += row;
    }
    return bytes + '\x1A';
}

}  // namespace kavu::test
