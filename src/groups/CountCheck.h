// Counts of a group that are smaller than what is there: a read ends at the count, so that
// the commands beyond it would be lost without a word.
#pragma once

#include "core/TmatsReader.h"
#include "vocabulary/Field.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kavu {

struct DocumentContext;
class UserInterface;

/// A count, and the fields that it counts: those have one index more, which is the number.
struct CountRule {
    Field count;
    std::vector<Field> rows;
    int otherwise = 0;  ///< what a missing count stands for
};
/// The fields of a table that a count governs.
[[nodiscard]] std::vector<Field> countedFields(std::span<const Field> table, const Field& count);
/// The counts of a table.
[[nodiscard]] std::vector<CountRule> countRules(std::span<const Field> table);

class CountCheck {
  public:
    /// Rules of counts that the edition does not have do not hold.
    CountCheck(std::span<const CountRule> rules, int edition);

    /// Takes the next command of the group; `head` is its field up to the first index.
    void add(std::string_view head, const CommandIndices& indices, std::string_view value);
    /// The same of a large group: only what a count of 1 would not allow is kept. A count that is
    /// missing is then one of 1.
    void addBeyondOne(std::string_view head, const CommandIndices& indices, std::string_view value);
    /// Takes a row of a list of lists: the first rule counts these lists, the second one their
    /// rows.
    void addRow(int list, int row) {
        if (highest_ == nullptr || list != list_) {
            list_ = list;
            highest_ = &lists_[list];
        }
        *highest_ = std::max(*highest_, row);
    }
    /// Reports each count that is too small. `prefix` is the head of the group's codes.
    void report(const std::string& prefix, const std::function<void(const std::string&)>& tell);

  private:
    /// A rule, and the indices that its count has.
    using Place = std::pair<std::size_t, std::array<int, 3>>;
    struct Numbers {
        int stated = 0;
        bool isStated = false;
        int highest = 0;
    };
    struct Use {
        std::size_t rule;
        bool isCount;
    };
    [[nodiscard]] std::string statedText(const Numbers& numbers) const;

    std::span<const CountRule> rules_;
    std::unordered_map<std::string, std::vector<Use>> uses_;  ///< by the lower-case head
    std::map<Place, Numbers> places_;
    std::string head_;
    bool onlyBeyondOne_ = false;
    std::map<int, int> lists_;  ///< the highest row of each
    int list_ = 0;
    int* highest_ = nullptr;
};

/// Logs, without a number, each count of the attribute groups that is too small.
void checkGroupCounts(DocumentContext& context, UserInterface* parent);

}  // namespace kavu
