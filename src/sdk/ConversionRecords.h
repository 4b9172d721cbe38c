// Where the conversion records of a session are in its file of C commands, so that each can be
// found by its number or its name and be read later.
#pragma once

#include "core/document/CommandIndex.h"
#include "core/files/FileIo.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kavu {

class TmatsReader;

class ConversionRecords {
  public:
    /// Notes the records of a file, from then on that is read: all commands of one number are a
    /// record, wherever they are; its name is that of its `DCN`, wherever in it that is. A second
    /// `DCN` under the same number begins another record. A missing file has no records.
    IoStatus index(TmatsReader& reader, const std::string& path);
    void clear();

    [[nodiscard]] std::size_t size() const { return records_.size(); }
    // REQUIRES: place < size(), counted from 0 in the order of the file.
    [[nodiscard]] std::int64_t number(std::size_t place) const { return records_[place].number; }
    [[nodiscard]] const std::string& name(std::size_t place) const { return records_[place].name; }

    /// The first record of a number, or of exactly this name.
    [[nodiscard]] std::optional<std::size_t> findNumber(std::int64_t number) const;
    [[nodiscard]] std::optional<std::size_t> findName(const std::string& name) const;

    /// Reads the commands of a record through `reader`. REQUIRES: place < size().
    IoStatus read(TmatsReader& reader, std::size_t place, CommandIndex& commands);

  private:
    struct Run {
        std::uint64_t start;
        std::uint64_t end;
    };
    struct Record {
        std::int64_t number = 0;
        std::string name;
        std::vector<Run> runs;
    };
    void add(std::string_view command, Run place);
    [[nodiscard]] std::size_t recordOf(std::int64_t number);
    void begin(std::int64_t number);

    std::string path_;
    ByteSource source_;
    std::vector<Record> records_;
    std::size_t current_ = 0;  ///< the record of the command that came last
    std::unordered_map<std::int64_t, std::size_t> first_;  ///< of a number
    std::unordered_map<std::int64_t, std::size_t> last_;
    std::unordered_map<std::string, std::size_t> names_;
};

}  // namespace kavu
