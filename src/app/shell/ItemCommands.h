// The commands of a group file, or the pairs of a conversion record, as rows of code and
// value for somebody who only looks at them. A file is read once, in slices; the text of a row
// is made when it is asked for.
#pragma once

#include "core/TmatsReader.h"
#include "core/document/CommandIndex.h"
#include "core/files/FileIo.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavu {

/// What a filter looks for: a text anywhere in the code or in the value, in any case.
class CommandFilter {
  public:
    CommandFilter() = default;
    explicit CommandFilter(std::string_view text);
    [[nodiscard]] bool empty() const { return lower_.empty(); }
    [[nodiscard]] bool matches(std::string_view text) const;

  private:
    std::string lower_;
    bool ascii_ = true;  ///< letters beyond the ASCII ones need the toolkit
};

class ItemCommands {
  public:
    /// A larger file is not shown (EFBIG).
    static constexpr std::uint64_t kMostBytes = std::uint64_t{1} << 30;

    ItemCommands() = default;
    ItemCommands(const ItemCommands&) = delete;
    ItemCommands& operator=(const ItemCommands&) = delete;

    /// Forgets all rows.
    void clear();
    /// Opens a file; its rows come by `findMore`.
    [[nodiscard]] IoStatus open(const std::string& path);
    /// The rows are these.
    void setPairs(std::vector<std::pair<std::string, std::string>> pairs);

    /// Finds at most so many commands more. False once all have been found, or the file cannot be
    /// read to its end, which `status` states.
    bool findMore(std::size_t most);
    [[nodiscard]] const IoStatus& status() const { return status_; }
    [[nodiscard]] bool complete() const { return complete_; }
    /// The rows found so far.
    [[nodiscard]] std::size_t size() const;

    // REQUIRES: row < size(). The value has its line breaks; the code is valid until the
    // next change.
    [[nodiscard]] std::string_view code(std::size_t row) const;
    [[nodiscard]] std::string value(std::size_t row) const;
    /// The number of lines of the value, at least 1.
    [[nodiscard]] int lines(std::size_t row) const;
    [[nodiscard]] bool matches(std::size_t row, const CommandFilter& filter) const;

  private:
    [[nodiscard]] std::string_view rawValue(std::size_t row) const;

    ByteSource source_;
    TmatsReader reader_;
    CommandIndex commands_;
    IoStatus status_;
    std::vector<std::pair<std::string, std::string>> pairs_;
    bool complete_ = true;
};

}  // namespace kavu
