// Many small sections of pairs in a family of profile files of the working store, with a
// directory in memory of which file holds which section. A look-up reads at most one
// file, and none for a name that is not in the directory.
#pragma once

#include "core/files/FileIo.h"
#include "core/files/ProfileFile.h"
#include "core/text/PlaceIndex.h"

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavu {

class UserInterface;
class WorkingStore;

class KeyValueStore {
  public:
    static constexpr int kMostFiles = 500;
    /// A file takes no new section once its estimated size is over this many bytes.
    static constexpr std::size_t kFullSize = 40000;
    static constexpr std::size_t kTooLarge = 65500;

    using Pair = std::pair<std::string_view, std::string_view>;

    explicit KeyValueStore(const WorkingStore& store) : store_(store) {}
    KeyValueStore(const KeyValueStore&) = delete;
    KeyValueStore& operator=(const KeyValueStore&) = delete;

    // A name cannot hold `;`: writing one is reported and fails, and reading one gives the
    // default. Nor can a name, key or value hold what a profile file cannot: such a write
    // fails. Boxes about files name the path and the reason.

    /// Adds a section in bulk, without checking what exists. Pairs with an empty part are
    /// left out. The pairs are buffered until another operation needs them or the file is
    /// full; false on failure.
    bool writeSection(UserInterface* parent, std::string_view name, std::span<const Pair> pairs);
    /// Reads no file.
    [[nodiscard]] bool sectionExists(std::string_view name) const;
    /// The ordinary write. Without a value the key is deleted, without a key the section.
    /// Changes stay in memory until another file is needed; fails if the file in memory
    /// cannot be written then.
    bool setValue(UserInterface* parent, std::string_view name, std::optional<std::string_view> key,
                  std::optional<std::string_view> value);
    /// At most `size` characters of a value.
    [[nodiscard]] std::string getText(std::string_view name, std::string_view key,
                                      std::string_view otherwise, std::size_t size);
    [[nodiscard]] std::string getString(std::string_view name, std::string_view key,
                                        std::string_view otherwise = {});
    /// The decimal value of a key; a text without digits is 0.
    [[nodiscard]] int getInt(std::string_view name, std::string_view key, int otherwise);
    /// Deletes all files and forgets everything. Warns if a file had become too large.
    void closeStore(UserInterface* parent);

    [[nodiscard]] int sectionCount() const { return sectionCount_; }
    /// The name at a place of the directory; the places of deleted sections count and have
    /// a blank name. Nothing for an index that is not below the section count.
    [[nodiscard]] std::optional<std::string> sectionName(int index) const;
    /// The length of the directory as one text, `;` and for each section its name, `;`, the
    /// number of its file, `;`. A deleted section, whose name becomes blanks, does not
    /// shorten it.
    [[nodiscard]] std::size_t directoryLength() const { return directoryLength_; }

  private:
    static constexpr std::size_t kNone = PlaceIndex::kNone;

    struct Name {
        std::string text;
        std::size_t first = kNone;  ///< its first entry; none once all are deleted
        std::size_t last = kNone;
    };
    struct Entry {
        std::size_t name = 0;
        int file = 0;
        std::size_t next = kNone;  ///< the next entry of the same name
        bool isDeleted = false;
    };

    static bool checkName(UserInterface* parent, std::string_view name);
    bool start(UserInterface* parent);
    [[nodiscard]] std::string filePath(int number) const;
    /// The place of a name that is or was in the directory.
    [[nodiscard]] std::size_t findName(std::string_view name) const;
    /// The first entry of a name, as a search from the front finds it.
    [[nodiscard]] std::size_t find(std::string_view name) const;
    [[nodiscard]] int fileOf(std::size_t place) const;
    void addEntry(std::string_view name);
    void removeEntry(std::size_t at);
    bool advance(UserInterface* parent);
    bool openWriteFile(UserInterface* parent);
    bool closeWriteFile(UserInterface* parent);
    bool flushProfile(UserInterface* parent);
    ProfileFile* profileToChange(UserInterface* parent, int number);
    void deleteFiles(UserInterface* parent);

    const WorkingStore& store_;
    char family_ = 'U';  ///< in the third place of the names of the files
    bool started_ = false;
    FileWriter writeFile_;
    int currentFile_ = 0;
    std::vector<Entry> directory_;
    std::vector<Name> names_;
    PlaceIndex places_;  ///< of the names
    std::size_t directoryLength_ = 0;
    int sectionCount_ = 0;
    std::array<std::size_t, kMostFiles> sizes_{};
    /// The file used last, with the ordinary writes that are still pending.
    std::optional<ProfileFile> profile_;
    int profileNumber_ = -1;
    std::string text_;  ///< of the section that is written
};

// --- Helpers for any profile file -------------------------------------------------------

// They read and write the file immediately. A file that is written keeps its links and
// mode.

/// The value of a key, of any length, without its outer blanks.
[[nodiscard]] std::string readValue(std::string_view section, std::string_view key,
                                    std::string_view otherwise, const std::string& path);
/// Renames a section; false if it was not found, the new name is not possible, or the
/// file cannot be written.
bool renameSection(std::string_view section, std::string_view newName, const std::string& path);
/// Replaces the section of exactly the target's name by a copy of another one, without the
/// keys that have no value; false if the source has no keys or the file cannot be written.
bool copySection(std::string_view source, std::string_view target, const std::string& path);
[[nodiscard]] std::vector<std::string> sectionNames(const std::string& path);

}  // namespace kavu
