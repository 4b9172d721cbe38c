#include "mdb/dbase/DbaseHeader.h"

#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr std::size_t kDescriptor = 32;
constexpr std::size_t kNameLength = 11;
constexpr std::size_t kTypeAt = 11;
constexpr std::size_t kLengthAt = 16;
constexpr std::size_t kDecimalsAt = 17;

std::uint32_t byteAt(std::string_view bytes, std::size_t at) {
    return static_cast<unsigned char>(bytes[at]);
}

std::uint32_t numberAt(std::string_view bytes, std::size_t at, std::size_t width) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < width; ++i) {
        number |= byteAt(bytes, at + i) << (8 * i);
    }
    return number;
}

DbaseColumn columnOf(std::string_view descriptor, std::size_t offset) {
    DbaseColumn column;
    const auto name = descriptor.substr(0, kNameLength);
    column.name = trimBlanks(name.substr(0, name.find('\0')));
    column.type = descriptor[kTypeAt];
    column.length = static_cast<int>(byteAt(descriptor, kLengthAt));
    // Texts of more than 255 characters have the rest of their length where numbers have the
    // digits after the point.
    if (column.type == 'C') {
        column.length += static_cast<int>(byteAt(descriptor, kDecimalsAt)) * 256;
    }
    column.offset = offset;
    return column;
}

}  // namespace

bool isDbaseTextType(char type) {
    return std::string_view("CNFDL").find(type) != std::string_view::npos;
}

std::optional<DbaseHeader> DbaseHeader::parse(std::string_view bytes, std::uint64_t fileSize,
                                              std::string& reason) {
    if (bytes.size() < kDescriptor) {
        return std::nullopt;
    }
    DbaseHeader header;
    header.headerLength = numberAt(bytes, 8, 2);
    header.rowLength = numberAt(bytes, 10, 2);
    if (header.headerLength < kDescriptor || header.headerLength > fileSize) {
        return std::nullopt;
    }
    std::size_t at = kDescriptor;
    std::size_t offset = 1;
    // Some tables have more in their header than columns; the end byte says where those end.
    for (; at + kDescriptor <= std::min(header.headerLength, bytes.size()) &&
           bytes[at] != kDbaseHeaderEnd;
         at += kDescriptor) {
        auto column = columnOf(bytes.substr(at, kDescriptor), offset);
        offset += static_cast<std::size_t>(column.length);
        if (column.length > kMostDbaseLength || offset > header.rowLength) {
            reason = column.length > kMostDbaseLength
                         ? formatPrintf(
                               "Column '%s' has a length of %d; no more than %d are "
                               "supported.",
                               column.name, column.length, kMostDbaseLength)
                         : formatPrintf("Column '%s' does not fit into a row of %d bytes.",
                                        column.name, header.rowLength);
            return std::nullopt;
        }
        header.columns.push_back(std::move(column));
    }
    if (at >= bytes.size() || bytes[at] != kDbaseHeaderEnd) {
        return std::nullopt;
    }
    const auto whole =
        header.rowLength == 0 ? 0 : (fileSize - header.headerLength) / header.rowLength;
    header.rowCount =
        static_cast<std::int64_t>(std::min<std::uint64_t>(numberAt(bytes, 4, 4), whole));
    return header;
}

std::string dbaseNumber(std::uint32_t number) {
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8) {
        bytes += static_cast<char>(number >> shift & 0xFFU);
    }
    return bytes;
}

}  // namespace kavu
