// A file of the classic sectioned form: `[section]`, `key=value`. It is parsed once, read
// from memory, and written back as a whole by `flush`. The settings, the conversion
// chunks and the key/value store all stand on it.
//
// Section and key names compare without regard to case; of two sections whose names
// differ only in case, a look-up takes the one that is spelled exactly as asked, else the
// first. Values are trimmed of outer blanks on read. Lines that are neither a section
// head nor a pair (comments, blank lines) are kept where they stand.
#pragma once

#include "core/IoStatus.h"

#include <cstdint>
#include <deque>
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

    /// The profile in the file at `path`; a missing file is an empty profile.
    explicit ProfileFile(std::string path, LineEnd lineEnd = LineEnd::CrLf);

    /// Reads the file if it has not been read yet. Every operation below does so itself; a
    /// file that can not be read counts as empty, and its status is kept.
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
    /// True if a section of exactly this name is there and has a key.
    [[nodiscard]] bool hasExactSection(std::string_view section) const;
    /// True if a look-up of the section finds one that has a key.
    [[nodiscard]] bool hasSection(std::string_view section) const;

    /// Sets a key, making the section if needed. A name that the form can not hold (a line
    /// break, a key with `=` or a leading `[` or `;`, an empty name) is refused.
    bool setValue(std::string_view section, std::string_view key, std::string_view value);
    void removeKey(std::string_view section, std::string_view key);
    void removeSection(std::string_view section);
    /// Gives the section a new name in its place; false if it is not there or the new name
    /// can not be held.
    bool renameSection(std::string_view section, std::string_view newName);
    /// Adds a section behind all others even if one of that name exists.
    void appendSection(std::string_view section);

    /// Writes the file if anything has changed. A file without any line stays unwritten
    /// only if it does not exist yet.
    IoStatus flush();
    [[nodiscard]] bool changed() const { return changed_; }
    [[nodiscard]] const std::string& path() const { return path_; }
    /// The bytes that `flush` writes.
    [[nodiscard]] std::string serialise() const;
    /// Replaces the contents by those of a text in this form.
    void parse(std::string_view text);
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
        void reindex();

        std::string name_;
        std::vector<Line> lines_;
        std::size_t keyCount_ = 0;
        /// Lower-case key to line; only kept for sections with many keys.
        std::unordered_map<std::string, std::size_t> index_;
    };
    /// All sections in file order; the first has an empty name and holds what stands in
    /// front of the first section head. A deque: references stay valid while sections are
    /// appended.
    [[nodiscard]] const std::deque<Section>& sections() const;

  private:
    [[nodiscard]] Section* findSection(std::string_view name);
    [[nodiscard]] const Section* findSection(std::string_view name) const;
    void touch() { changed_ = true; }
    void rebuildIndex();
    void parseLine(std::string_view line);
    Section& addSection(std::string_view name);
    void addLine(Section& section, std::string_view key, std::string_view text);
    [[nodiscard]] std::size_t lineEndSize() const { return lineEnd_ == LineEnd::CrLf ? 2 : 1; }
    [[nodiscard]] std::size_t lineSize(const Line& line) const;

    std::string path_;
    LineEnd lineEnd_;
    bool loaded_ = false;
    bool changed_ = false;
    std::uint64_t bytes_ = 0;  ///< of what `serialise` gives
    IoStatus status_;
    std::deque<Section> sections_;
    /// Lower-case name to the positions of the sections of that name, in file order.
    std::unordered_map<std::string, std::vector<std::size_t>> index_;
};

}  // namespace kavu
