// The commands of one group, found by the stem and the indices of their fields, and with a mark for
// those that were taken. A list is walked by the rows that the file has, never by its count: a
// count of 999999999 costs nothing.
#pragma once

#include "core/command/CommandPath.h"
#include "sdk/SdkGroup.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kavu {

class GroupRows {
  public:
    explicit GroupRows(SdkGroup group);

    [[nodiscard]] const std::string& prefix() const { return group_.prefix(); }
    [[nodiscard]] char letter() const { return group_.letter(); }
    [[nodiscard]] std::int64_t number() const { return group_.number(); }
    /// The whole code of a stem at a row.
    [[nodiscard]] std::string code(std::string_view stem, const RowNumbers& at) const;

    /// The number of a stem ("MN" of "MN-n-m"), in any case; `kNoStem` if no command has it.
    static constexpr int kNoStem = -1;
    [[nodiscard]] int stem(std::string_view stem) const;

    /// The first value of a field that is not empty, in stored form; marks its command as taken.
    std::optional<std::string_view> take(int stem, const RowNumbers& at);
    /// The same without the mark.
    [[nodiscard]] std::optional<std::string_view> peek(int stem, const RowNumbers& at) const;
    /// Marks every command of a stem in a row and its rows as taken.
    void takeBelow(int stem, const RowNumbers& at);
    /// The value as a decimal number, 0 for a negative one and without one.
    int takeCount(int stem, const RowNumbers& at);

    /// The smallest number above `after` of a row below `parents` that a command of one of these
    /// stems has, or 0.
    [[nodiscard]] int nextRow(std::span<const int> stems, const RowNumbers& parents,
                              int after) const;

    /// Calls with the field of each command that has a value and was not taken.
    void forEachLeft(
        const std::function<void(std::string_view field, std::string_view value)>& visit) const;

  private:
    struct Entry {
        int stem = 0;
        RowNumbers at;
        std::uint32_t place = 0;
        bool isTaken = false;
    };
    [[nodiscard]] std::size_t lowerBound(int stem, const RowNumbers& at) const;

    SdkGroup group_;
    std::unordered_map<std::string, int> stems_;
    std::vector<Entry> entries_;  ///< by stem, numbers and place
};

}  // namespace kavu
