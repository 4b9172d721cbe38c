// The subframes and locations for which a P group has commands.
#pragma once

#include <span>
#include <string_view>
#include <vector>

namespace kavu {

class CommandIndex;

/// A file can claim many more subframes and locations than it has; a reader that knows which
/// exist does not search for the others one by one.
class SubframeNumbers {
  public:
    SubframeNumbers() = default;
    SubframeNumbers(const CommandIndex& fields, std::string_view prefix);

    /// True if there is any command of the subframe.
    [[nodiscard]] bool has(int counter, int subframe) const;

    struct Number {
        int counter;
        int subframe;
        int location;  ///< 0 for a command that is not one of a location
        [[nodiscard]] auto operator<=>(const Number&) const = default;
    };
    /// The locations of a subframe, ascending.
    [[nodiscard]] std::span<const Number> locations(int counter, int subframe) const;

  private:
    std::vector<Number> numbers_;
};

}  // namespace kavu
