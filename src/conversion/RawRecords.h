// The records of one chunk of raw commands: the fields of each group index that a load has
// taken for a record, in the order in which the chunk has them.
#pragma once

#include "conversion/RawGroup.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kavu {

struct ConversionCode;
struct RawCommand;

/// The indices of a chunk, found by number; most commands belong to the index of the command
/// before them. The entries keep their places until `clear`.
template <typename Entry>
class ByGroupIndex {
  public:
    Entry& operator[](std::int64_t index) {
        if (last_ == nullptr || lastIndex_ != index) {
            last_ = &entries_[index];
            lastIndex_ = index;
        }
        return *last_;
    }
    void clear() {
        entries_.clear();
        last_ = nullptr;
    }
    [[nodiscard]] const std::unordered_map<std::int64_t, Entry>& all() const { return entries_; }

  private:
    std::unordered_map<std::int64_t, Entry> entries_;
    Entry* last_ = nullptr;
    std::int64_t lastIndex_ = 0;
};

class RawRecords {
  public:
    struct Field {
        std::string_view code;                  ///< one that can be a key of a record
        std::string_view value;                 ///< cut to its limit, with its outer blanks
        const ConversionCode* known = nullptr;  ///< of the code without indices, if it is known
    };
    /// The texts are views into the bytes of the chunk.
    struct Record {
        std::int64_t index = 0;
        std::string_view name;
        std::vector<Field> fields;  ///< in the order of the file, those that come again among them
        std::size_t at = 0;         ///< the command by which it is ordered
    };

    /// Takes the records from the commands of a chunk that has been checked, whose bytes must
    /// outlive them. `edition` rules the limits.
    void gather(std::string& bytes, const RawGroup::Chunk& chunk, int edition);

    [[nodiscard]] std::size_t size() const { return named_.size(); }
    /// Records are in the order of their first fields; one without a field is where its name is.
    [[nodiscard]] const Record& operator[](std::size_t place) const { return *named_[place]; }

  private:
    Record& of(std::int64_t index);
    void takeName(const RawCommand& command, std::size_t at);
    void takeField(const RawCommand& command, int edition, std::size_t at);

    std::vector<Record> records_;  ///< those beyond `count_` keep their memory for the next chunk
    std::size_t count_ = 0;
    ByGroupIndex<std::size_t> places_;  ///< of an index in `records_`, and 1 more
    std::vector<const Record*> named_;
};

/// Tells if a code can be the key of a record; one that cannot is none that records know.
[[nodiscard]] bool canBeRecordKey(std::string_view code);

}  // namespace kavu
