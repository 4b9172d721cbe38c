// The commands of a group file in memory: in file order, found by their codes, and with a mark
// for those that have been read. It belongs to one operation and is not a cache: the file
// stays the truth.
//
// A command takes its text and 12 bytes, and some 24 bytes more from the first look-up on: a
// walk over the commands does not pay for their codes. A file whose size only the disk limits
// (a D group) is not read whole, but command by command or in chunks.
#pragma once

#include "core/command/CommandPath.h"
#include "core/files/IoStatus.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class ByteSource;
class TmatsReader;
class UserInterface;

/// Whether commands that begin with "COMMENT:" are commands.
enum class Comments { Skip, Keep };

class CommandIndex {
  public:
    /// Adds the commands of a source from its position to its end. Keeps those whose field
    /// (the whole code, if it has no group part) begins with one of `wanted`, without regard
    /// to case; all if that is empty. The status is that of the source, or EFBIG if the
    /// commands take more than 4 GiB.
    IoStatus read(TmatsReader& reader, ByteSource& source, Comments comments = Comments::Skip,
                  std::span<const std::string_view> wanted = {});
    /// The same for a file. One that is missing or cannot be read has no commands, and
    /// the status says so.
    IoStatus readFile(TmatsReader& reader, const std::string& path,
                      Comments comments = Comments::Skip,
                      std::span<const std::string_view> wanted = {});
    /// Adds at most so many commands of a source, comments included. False once it has no more,
    /// or there is no room for the next one.
    bool readSome(TmatsReader& reader, ByteSource& source, std::size_t most);
    /// Makes room for so many bytes of commands at once.
    void reserve(std::size_t bytes) { text_.reserve(bytes); }
    /// Adds one command, whole, with its `;`. False if there is no room for it.
    bool add(std::string_view command);
    void clear();

    [[nodiscard]] std::size_t size() const { return entries_.size(); }
    /// The command at a place, counted from 0 in the order in which they were added. All
    /// views into the index live until a command is added. REQUIRES: place < size().
    [[nodiscard]] CommandView at(std::size_t place) const;

    struct Found {
        std::size_t place = 0;
        std::string_view code{};   ///< as the file spells it
        std::string_view value{};  ///< never empty
    };
    /// The first command of the code, without regard to case, that has a value, at or after the
    /// position, wrapping once around: exactly as a run of `TmatsReader::findField` on the open
    /// file. The position is then after it; it does not move if there is none.
    std::optional<Found> find(std::string_view code);
    /// The same, without moving the position.
    [[nodiscard]] std::optional<Found> peek(std::string_view code) const;
    /// The first command of the code, without regard to case, that has a value and the mark of
    /// those that have been read.
    [[nodiscard]] std::optional<Found> peekRead(std::string_view code) const;
    /// Moves the position to the front.
    void rewind() { position_ = 0; }

    /// `find` as the reader does it: the interface, which may be null, can paint at each
    /// call, and the reader reports and cuts a value over its limit.
    std::optional<std::string_view> findField(TmatsReader& reader, UserInterface* parent,
                                              std::string_view code, int limit);
    /// The value as a decimal number, a negative one as 0.
    std::optional<int> findIntField(UserInterface* parent, std::string_view code);

    // Marks. REQUIRES: place < size().
    void markRead(std::size_t place, bool isRead = true) {
        entries_[place].read = isRead ? 1U : 0U;
    }
    [[nodiscard]] bool isRead(std::size_t place) const { return entries_[place].read != 0; }

    /// The approximate size in bytes.
    [[nodiscard]] std::size_t memory() const {
        return text_.size() + entries_.size() * sizeof(Entry) + next_.size() * sizeof(next_[0]) +
               slots_.size() * sizeof(Slot);
    }

  private:
    static constexpr std::uint32_t kNone = 0xFFFFFFFFU;
    struct Entry {
        std::uint32_t start;
        std::uint32_t colon;  ///< counted from the start; `kNone` without one
        std::uint32_t size : 31;
        std::uint32_t read : 1;
    };
    struct Slot {
        std::uint32_t first = kNone;
        std::uint32_t last = kNone;
    };
    void hash() const;
    [[nodiscard]] std::string_view textOf(const Entry& entry) const {
        return std::string_view(text_).substr(entry.start, entry.size);
    }
    [[nodiscard]] std::string_view codeOf(const Entry& entry) const {
        return textOf(entry).substr(0, entry.colon);
    }
    [[nodiscard]] std::string_view valueOf(const Entry& entry) const;
    [[nodiscard]] Slot& slotOf(std::string_view code) const;
    [[nodiscard]] Found foundAt(std::size_t place) const {
        return {place, codeOf(entries_[place]), valueOf(entries_[place])};
    }

    std::string text_;  ///< the commands, without separators
    std::vector<Entry> entries_;
    std::size_t position_ = 0;
    // Made by look-ups, for the commands that have come since the last one.
    mutable std::vector<Slot> slots_;  ///< a power of two; of the commands that have a value
    /// The next entry of the same slot, in order; `kNone` at the end.
    mutable std::vector<std::uint32_t> next_;
};

}  // namespace kavu
