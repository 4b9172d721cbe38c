// The rows of a group of message data or packets, as they are read from its file: counts and
// texts in the order of a vocabulary table, each command marked that becomes part of the model.
#pragma once

#include "core/command/CommandPath.h"
#include "groups/GroupLists.h"
#include "vocabulary/Field.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace kavu {

class GroupFile;
class TmatsReader;
class UserInterface;

class RowReader {
  public:
    /// A count up to this makes rows, whether the file has commands of them or not.
    static constexpr std::size_t kMostEmptyRows = 9999;

    /// Everything must outlive the object; `prefix` is the head of the group's codes.
    RowReader(TmatsReader& reader, UserInterface* parent, CommandIndex& commands,
              std::string prefix, std::span<const Field> table);

    /// The value of a field; empty if the command is missing. Look-ups run around the file as those
    /// of `CommandIndex`.
    [[nodiscard]] std::string text(const Field& field, RowNumbers at = {});
    /// The same; a value over the limit of the field is reported and kept.
    [[nodiscard]] std::string warnedText(const Field& field, RowNumbers at = {});
    /// The rows that a count states. A count above 9999 goes only as far as a number that a command
    /// of the list has, and is not above the number of commands; so does every count once the file
    /// has stated far more rows than it has commands.
    [[nodiscard]] std::size_t count(const Field& field, RowNumbers at = {});
    /// Lets the interface paint; true once the user has cancelled.
    [[nodiscard]] bool cancelled();

  private:
    [[nodiscard]] std::string codeOf(const Field& field, const RowNumbers& at) const;
    [[nodiscard]] std::size_t numberInFile(const Field& field, const RowNumbers& at,
                                           std::size_t stated);

    TmatsReader& reader_;
    UserInterface* parent_;
    CommandIndex& commands_;
    std::string prefix_;
    GroupLists lists_;
    std::optional<RowNumbersInFile> inFile_{};  ///< made when a count needs it
    std::size_t rows_ = 0;
    unsigned polls_ = 0;
};

}  // namespace kavu
