// Look-ups of vocabulary fields in the group file of a recorder, and the list of commands
// that takes its place.
#pragma once

#include "core/FieldIndex.h"
#include "core/Vocabulary.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kavu {

/// A code with its numbers: "AMN-n-m", 3 and 1 give "AMN-3-1".
[[nodiscard]] std::string indexedCode(std::string_view code, int n = 0, int m = 0);
/// The code without what stands for its numbers: "AMN".
[[nodiscard]] std::string_view plainCode(std::string_view code);

class FieldLookup {
  public:
    FieldLookup(FieldIndex& index, UserInterface* parent, std::string prefix, int edition)
        : index_(index), parent_(parent), prefix_(std::move(prefix)), edition_(edition) {}

    [[nodiscard]] int edition() const { return edition_; }
    /// The value, cut to the limit of the field; empty if the edition does not know the field
    /// or the file does not have it.
    [[nodiscard]] std::string value(const Field& field, int n = 0, int m = 0);
    /// A count, 0 to `most`.
    [[nodiscard]] int count(const Field& field, int most, int n = 0);
    /// A count that has no limit of its own, or nothing if the file does not have it: it is
    /// believed as long as at most `kBelieved` items more than the file has commands for are
    /// missing.
    [[nodiscard]] std::optional<int> openCount(const Field& field, std::span<const Field> items,
                                               int n);

    static constexpr int kBelieved = 256;

  private:
    [[nodiscard]] int commandsOf(std::span<const Field> items, int n);

    FieldIndex& index_;
    UserInterface* parent_;
    std::string prefix_;
    int edition_;
    /// The commands of each "CODE-n" in lower case; counted when it is first asked for.
    std::unordered_map<std::string, int> present_;
    bool counted_ = false;
};

/// A command behind the prefix of its group.
struct GroupCommand {
    std::string code{};
    std::string value{};
};

}  // namespace kavu
