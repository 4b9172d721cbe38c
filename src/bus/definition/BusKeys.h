// The commands of a bus group by their keys: what is behind the `\` of a code, without regard to
// case and to outer blanks. Of repeated commands the last one holds.
#pragma once

#include "core/document/GroupFile.h"
#include "groups/GroupLists.h"
#include "vocabulary/Field.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class BusKeys {
  public:
    /// The file must outlive the object and stay as it is. `prefix` is the head of the group.
    BusKeys(const GroupFile& file, std::string prefix) : file_(file), prefix_(std::move(prefix)) {
        entries_.reserve(file.commands().size());
        slots_.resize(std::bit_ceil(2 * file.commands().size() + 1), kNoEntry);
    }
    BusKeys(const BusKeys&) = delete;
    BusKeys& operator=(const BusKeys&) = delete;

    /// Adds the command at a place of the file. One without a `\` in its code or without a `:`, and
    /// one whose key no profile file can hold, belongs to no page and is passed over.
    void add(std::size_t place);

    /// The value of a field; empty without one.
    [[nodiscard]] std::string_view value(std::string_view pattern, const RowNumbers& at) const;
    /// The rows of a list: what its count says. From a certain size on, rows behind the last one
    /// that the file has anything of are no rows: a number of a file must not fill the memory.
    [[nodiscard]] std::size_t rows(const Field& count, const RowNumbers& at);
    /// The command that gave a field its value.
    [[nodiscard]] std::optional<std::size_t> placeOf(std::string_view key) const;

    /// The keys with their values as the section of a profile file.
    [[nodiscard]] std::string profileText(std::string_view section) const;

  private:
    struct Entry {
        std::size_t place = 0;
        std::string_view key{};
        std::string_view value{};
        std::size_t hash = 0;
    };
    static constexpr std::uint32_t kNoEntry = ~std::uint32_t{0};
    [[nodiscard]] static std::size_t hash(std::string_view key);
    /// The slot of a key, or the free one that it would take.
    [[nodiscard]] std::size_t slotOf(std::string_view key, std::size_t hash) const;
    [[nodiscard]] const Entry* find(std::string_view key) const;
    [[nodiscard]] std::size_t lastRow(const Field& count, const RowNumbers& at, std::size_t most);

    const GroupFile& file_;
    std::string prefix_;
    // A group has tens of thousands of keys, which are asked for in about the order of the file.
    std::vector<Entry> entries_;
    std::vector<std::uint32_t> slots_;  ///< places in `entries_` by hash
    bool repeats_ = false;              ///< some entry is not where its command is
    std::optional<RowNumbersInFile> numbers_{};
    std::size_t rowsSoFar_ = 0;
    mutable std::string code_{};
};

/// The lists of the bus group.
[[nodiscard]] const GroupLists& busLists();

}  // namespace kavu
