// A read handle on one group of a translator session: its commands in the order of the file, and
// look-ups by field. It is a copy: it stays valid when the session is closed.
#pragma once

#include "core/command/CommandPath.h"
#include "core/document/CommandIndex.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kavu {

class SdkGroup {
  public:
    SdkGroup() = default;
    SdkGroup(char letter, std::int64_t number, CommandIndex commands)
        : letter_(letter), number_(number), commands_(std::move(commands)) {
        prefix_ = letter == 'G' || letter == 'H' ? std::string{letter, '\\'}
                                                 : letter + ("-" + std::to_string(number) + "\\");
    }

    [[nodiscard]] char letter() const { return letter_; }
    [[nodiscard]] std::int64_t number() const { return number_; }
    /// What all codes begin with: "P-1\".
    [[nodiscard]] const std::string& prefix() const { return prefix_; }

    [[nodiscard]] std::size_t size() const { return commands_.size(); }
    /// A command by its place from 0, in the order of the file. Values are in stored form (see
    /// `fromStoredForm`). REQUIRES: place < size().
    [[nodiscard]] CommandView at(std::size_t place) const { return commands_.at(place); }
    [[nodiscard]] const CommandIndex& commands() const { return commands_; }

    /// The first value of a field ("MF1", "MN-1-2") that is not empty, the code without regard to
    /// case. Lives as long as the handle.
    [[nodiscard]] std::optional<std::string_view> value(std::string_view field) const;
    /// The same for a pattern of the vocabulary with its numbers: "MN-n-m" and {1, 2}.
    [[nodiscard]] std::optional<std::string_view> value(std::string_view pattern,
                                                        std::initializer_list<int> numbers) const {
        return value(fieldCode(pattern, numbers));
    }
    /// The value as a decimal number, a negative one as 0; nothing without a value.
    [[nodiscard]] std::optional<int> number(std::string_view field) const;

  private:
    char letter_ = 0;
    std::int64_t number_ = 0;
    std::string prefix_;
    CommandIndex commands_;
};

}  // namespace kavu
