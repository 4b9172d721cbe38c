// Look-ups by code in a group file that is read once. It answers exactly as a run of
// `TmatsReader::findField` calls on the open file would: from the position behind the
// command found last, once around the file. A loader that asks for many fields, or for
// fields that may be missing, costs one pass over the file and not one for each.
#pragma once

#include "core/TmatsReader.h"
#include "core/files/FileIo.h"
#include "core/text/Text.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kavu {

class FieldIndex {
  public:
    /// Reads the file; of its commands only those are kept whose code, behind the group
    /// part, begins with one of `fields` (all, if that is empty). Compared without regard
    /// to case. A file that can not be read has no commands.
    FieldIndex(TmatsReader& reader, const std::string& path,
               const std::vector<std::string_view>& fields = {});

    [[nodiscard]] const IoStatus& status() const { return status_; }

    template <typename... Args>
    std::optional<std::string_view> findField(UserInterface* parent, std::string_view prefix,
                                              std::string_view code, int limit,
                                              const Args&... args) {
        return find(parent, std::string(prefix) + formatPrintf(code, {PrintfArg(args)...}), limit);
    }
    /// As `TmatsReader::findIntField`.
    template <typename... Args>
    bool findIntField(UserInterface* parent, std::string_view prefix, std::string_view code,
                      int& value, const Args&... args) {
        value = 0;
        const auto text =
            find(parent, std::string(prefix) + formatPrintf(code, {PrintfArg(args)...}), 0);
        value = text ? std::max(0, leadingInt(*text)) : 0;
        return text.has_value();
    }
    /// Calls `visit(code, value)` for every command in the order of the file, to know which
    /// of many fields there are without asking for each.
    template <typename Visit>
    void forEach(const Visit& visit) const {
        for (const auto& command : commands_) {
            visit(std::string_view(command.code), std::string_view(command.value));
        }
    }
    /// Back to the front of the file.
    void rewind() { position_ = 0; }

  private:
    std::optional<std::string_view> find(UserInterface* parent, const std::string& code, int limit);

    TmatsReader& reader_;
    IoStatus status_;
    struct Command {
        std::string code;   ///< as in the file
        std::string value;  ///< never empty
    };
    std::vector<Command> commands_;
    std::unordered_map<std::string, std::vector<std::size_t>> byCode_;  ///< lower case
    std::size_t position_ = 0;
};

}  // namespace kavu
