// A file in the classic sectioned format: `[section]`, `key=value`. It is parsed once,
// read from memory, and written back as a whole by `flush`. The settings, the conversion
// chunks and the key/value store are all based on it.
//
// Section and key names compare without regard to case; of two sections whose names
// differ only in case, a look-up takes the one that is spelled exactly as asked, else the
// first. Of two sections of one name the first answers, and both are kept. Values are
// trimmed of outer blanks on read. Lines that are neither a section head nor a pair
// (comments, blank lines) are kept in place. All other bytes pass through, including NUL
// and the two that stand for line breaks.
#pragma once

#include "core/files/IoStatus.h"
#include "core/text/PlaceIndex.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kavu {

class ProfileFile {
  public:
    /// The line end that `serialise` writes.
    enum class LineEnd { CrLf, Lf };

    /// How `flush` replaces the file.
    enum class Flush {
        Scratch,  ///< a working file of the program: through a file next to it
        Kept,     ///< a file of the user: link, mode and owner stay, complete on the disk
    };

    /// A file of more bytes or more lines is not read (EFBIG): it is not a profile.
    static constexpr std::uint64_t kMostBytes = std::uint64_t{1} << 30;
    static constexpr std::uint64_t kMostLines = std::uint64_t{1} << 23;

    /// The profile in the file at `path`; a missing file is an empty profile. An empty path
    /// is a profile that is only in memory.
    explicit ProfileFile(std::string path, LineEnd lineEnd = LineEnd::CrLf);
    ProfileFile(const ProfileFile&) = delete;
    ProfileFile& operator=(const ProfileFile&) = delete;
    ProfileFile(ProfileFile&&) = default;
    ProfileFile& operator=(ProfileFile&&) = default;
    ~ProfileFile() = default;

    // What the format can hold; a line break is possible nowhere.
    [[nodiscard]] static bool canBeSection(std::string_view name);  ///< not empty
    /// Not empty, without outer blanks, without `=`, not beginning as a head or a comment.
    [[nodiscard]] static bool canBeKey(std::string_view key);
    [[nodiscard]] static bool canBeValue(std::string_view value);

    /// Reads the file if it has not been read yet. Every operation below does so itself; a
    /// file that cannot be read counts as empty, its status is kept, and `flush` leaves it
    /// as it is.
    const IoStatus& load() const;
    /// Forgets what was read and not flushed; the next operation reads the file again.
    void discard();

    /// The value of a key, with outer blanks removed; nothing if the key or the section is
    /// missing.
    [[nodiscard]] std::optional<std::string> value(std::string_view section,
                                                   std::string_view key) const;
    [[nodiscard]] std::string value(std::string_view section, std::string_view key,
                                    std::string_view otherwise) const;
    /// The decimal value of a key; a text without digits is 0.
    [[nodiscard]] int integer(std::string_view section, std::string_view key, int otherwise) const;

    /// Section names in file order, spelled as in the file.
    [[nodiscard]] std::vector<std::string> sectionNames() const;
    /// Key names of a section in file order.
    [[nodiscard]] std::vector<std::string> keyNames(std::string_view section) const;
    /// True if a section of exactly this name exists and has a key.
    [[nodiscard]] bool hasExactSection(std::string_view section) const;
    /// True if a look-up of the section finds one that has a key.
    [[nodiscard]] bool hasSection(std::string_view section) const;
    /// True if a section of exactly this name exists, with or without keys.
    [[nodiscard]] bool containsExactly(std::string_view section) const;

    /// Sets a key, making the section if needed; an existing key keeps its place and its
    /// spelling. False if the format cannot hold the names or the value.
    bool setValue(std::string_view section, std::string_view key, std::string_view value);
    void removeKey(std::string_view section, std::string_view key);
    /// Removes the section that a look-up finds; another one of that name then answers.
    void removeSection(std::string_view section);
    /// Renames the section, which keeps its place; false if it is missing or the new name
    /// is not possible.
    bool renameSection(std::string_view section, std::string_view newName);
    /// Adds a section after all others even if one of that name exists.
    void appendSection(std::string_view section);

    /// Writes the file if anything has changed, as a whole or not at all. A file without
    /// any line stays unwritten only if it does not exist yet. After a failure the changes
    /// are still there.
    IoStatus flush(Flush how = Flush::Scratch);
    /// The same, with the file replaced by `replace`.
    IoStatus flush(const std::function<IoStatus(std::string_view bytes)>& replace);
    [[nodiscard]] bool changed() const { return changed_; }
    [[nodiscard]] const std::string& path() const { return path_; }
    /// The bytes that `flush` writes.
    [[nodiscard]] std::string serialise() const;
    /// Replaces the contents by those of a text in this format.
    void parse(std::string_view text);
    /// Takes a text in this format as what the file holds, instead of reading it.
    void adopt(std::string_view text);
    /// The size in bytes of what `flush` writes, kept up to date without writing.
    [[nodiscard]] std::uint64_t serialisedSize() const;

    /// One pair or one kept line (then the key is empty and `text` is the line).
    struct Line {
        std::string key;
        std::string text;
    };

    /// A section as a whole, for passes that go through all of a profile.
    class Section {
      public:
        [[nodiscard]] const std::string& name() const { return name_; }
        /// The value of a key with outer blanks removed, or nothing. Valid until the
        /// profile changes.
        [[nodiscard]] std::optional<std::string_view> find(std::string_view key) const;
        [[nodiscard]] std::string_view get(std::string_view key,
                                           std::string_view otherwise = {}) const;
        [[nodiscard]] int integer(std::string_view key, int otherwise = 0) const;
        [[nodiscard]] bool hasKeys() const { return keyCount_ > 0; }
        [[nodiscard]] const std::vector<Line>& lines() const { return lines_; }

      private:
        friend class ProfileFile;
        [[nodiscard]] std::size_t indexOf(std::string_view key) const;
        void add(std::string_view key, std::string_view value);
        void remove(std::size_t line);
        void makeIndex();
        [[nodiscard]] std::size_t findIndexed(std::size_t hash, std::string_view key) const;
        void indexLine(std::size_t line);

        std::string name_;
        std::vector<Line> lines_;
        /// A hash of each line's key without regard to case, 0 for a kept line: a look-up
        /// runs over these and touches a line only when it may be the one.
        std::vector<std::uint32_t> marks_;
        std::size_t keyCount_ = 0;
        /// The first line of each key; only kept for sections with many keys.
        PlaceIndex index_;
    };
    /// All sections in file order; the first has an empty name and holds what precedes
    /// the first section head. A deque: references stay valid while sections are
    /// appended.
    [[nodiscard]] const std::deque<Section>& sections() const;

  private:
    /// The sections with their index, the result of parsing a file.
    struct Contents {
        explicit Contents(std::size_t lineEnd) : lineEndSize(lineEnd) { sections.emplace_back(); }

        void parse(std::string_view text);
        void parseLine(std::string_view line);
        Section& addSection(std::string_view name);
        void addLine(Section& section, std::string_view key, std::string_view text);
        [[nodiscard]] std::size_t sizeOf(const Line& line) const;
        [[nodiscard]] Section* find(std::string_view name);
        void dropIndex();
        void makeIndex();

        std::size_t lineEndSize;
        std::uint64_t bytes = 0;  ///< of what `serialise` gives
        std::deque<Section> sections;
        /// The first section of each name; the keys are the sections' own names.
        std::unordered_map<std::string_view, std::size_t> exact;
        /// The first section of each lower-case name.
        std::unordered_map<std::string, std::size_t> folded;
    };

    [[nodiscard]] Section* findSection(std::string_view name) const;

    std::string path_;
    LineEnd lineEnd_;
    bool changed_ = false;
    // The file is read only when something is asked for.
    mutable bool loaded_ = false;
    mutable IoStatus status_;
    mutable Contents contents_;
};

}  // namespace kavu
