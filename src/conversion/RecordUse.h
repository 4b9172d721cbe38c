// What a save does not write of the records of a chunk, and the counts that do not say what is
// there.
#pragma once

#include "conversion/RecordText.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace kavu {

struct RawCommand;

class RecordUse {
  public:
    explicit RecordUse(int edition) : record_(edition, SampleRateOptions{}) {}

    /// What there is to tell of one group index. Views are into the bytes of the chunk.
    struct Finding {
        std::int64_t index = 0;
        std::size_t leftOut = 0;     ///< commands that no save of the record writes
        std::string_view example{};  ///< the first of them
        std::size_t restyled = 0;    ///< commands that are written in another spelling
        std::string_view restyledExample{};
        std::vector<RecordText::CountFault> counts{};
    };

    /// Begins with a chunk.
    void clear() { fields_.clear(); }
    /// Takes the next command that is not a name. `row` is that of its code; null for a code that
    /// no record has, and for a command without a value, which no record keeps.
    void add(const RawCommand& command, const ConversionCode* row);
    /// Adds the findings of all indices, which rise.
    void find(std::vector<Finding>& findings);

  private:
    struct Field {
        std::int64_t index;
        std::string_view line;
        std::string_view code;  ///< without outer blanks
        std::string_view value;
        const ConversionCode* row;  ///< null for one that no record has
    };
    [[nodiscard]] Finding findingOf(std::span<const Field> fields);
    void take(const Field& field, Finding& finding);
    /// An item of a list that another one with its code takes the place of; null if there is none.
    [[nodiscard]] const Field* findRepeated() const;

    RecordText record_;
    std::vector<Field> fields_;
    std::vector<const Field*> taken_;
};

}  // namespace kavu
