// Which commands of a P or D group belong to a row of a list: the rows of a count are those whose
// fields have its stem and one number more.
#pragma once

#include "core/command/CommandPath.h"
#include "groups/CountCheck.h"

#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kavu {

/// A list that a field belongs to: the number of its row is at the index `depth` of the field,
/// counted from 0. Codes of one list have one `list`.
struct RowUse {
    int list = 0;
    int depth = 0;
    [[nodiscard]] bool operator==(const RowUse&) const = default;
};

class RowRules {
  public:
    /// The lists of a rule are known by its place among `rules`.
    explicit RowRules(std::span<const CountRule> rules);

    /// The lists of a field, the outermost first; none for one that is in no list.
    [[nodiscard]] std::span<const RowUse> usesOf(std::string_view stem) const;

    /// Names a list by the numbers of the rows that it is in, and one of its rows.
    [[nodiscard]] static std::string listKey(const RowUse& use, const RowNumbers& at) {
        return key(use, at, use.depth);
    }
    [[nodiscard]] static std::string rowKey(const RowUse& use, const RowNumbers& at) {
        return key(use, at, use.depth + 1);
    }

  private:
    [[nodiscard]] static std::string key(const RowUse& use, const RowNumbers& at, int numbers);

    std::unordered_map<std::string, std::vector<RowUse>> uses_;  ///< by the lower-case stem
};

/// The lists of a P group, and those within a measurement of a D group.
[[nodiscard]] const RowRules& pcmRowRules();
[[nodiscard]] const RowRules& measurementRowRules();

// The lists of `pcmRowRules` whose rows the model numbers.
inline constexpr int kCounterRows = 0;
inline constexpr int kSubframeRows = 1;
inline constexpr int kEmbeddedRows = 2;
inline constexpr int kMergeRows = 3;

}  // namespace kavu
