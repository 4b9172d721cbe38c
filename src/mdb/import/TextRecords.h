// The lines of a text file, and the fields of a delimited one.
#pragma once

#include "core/files/FileIo.h"

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// Lines without their ends, of any kind. A mark of the byte order at the begin and an end byte 26
/// at the end are no part of them.
class LineReader {
  public:
    /// A longer line is none of a text file.
    static constexpr std::size_t kMostBytes = std::size_t{1} << 24;

    /// The source must be open, and outlive the reader.
    explicit LineReader(ByteSource& source) : source_(source) {}

    /// The line that is `distance` lines ahead, read as far as that; null beyond the end.
    [[nodiscard]] const std::string* ahead(std::size_t distance);
    /// Takes the line at the front. REQUIRES: `ahead(0)` is not null.
    std::string take();
    /// A read error, or EFBIG for a line that is too long; nothing follows it.
    [[nodiscard]] const IoStatus& status() const { return status_; }
    /// What was read of the file, from 0 to 100.
    [[nodiscard]] double percent() const;

  private:
    bool readLine();

    ByteSource& source_;
    std::deque<std::string> lines_;
    IoStatus status_;
    bool isAtBegin_ = true;
};

/// Takes one record of a delimited file, its fields without outer blanks; false at the end.
///
/// A field in double quotes may hold delimiters, quotes (each doubled) and line breaks, which are
/// LF, over at most 100 lines. A quote that is not closed in front of a delimiter or the end of a
/// line is a plain character. A run of blanks is one delimiter. A blank line has no fields.
bool takeDelimited(LineReader& lines, char delimiter, std::vector<std::string>& fields);

/// The characters of a line from a column, counted from 1: those of UTF-8, in any other line
/// bytes. Nothing if the line ends before the column.
[[nodiscard]] std::optional<std::string_view> cutColumns(std::string_view line, std::size_t start,
                                                         std::size_t size);

}  // namespace kavu
