// Many small sections of pairs in a family of profile files of the working store, with a
// directory in memory that tells which file holds which section. A look-up reads one file
// at most, and none for a name that is not in the directory.
#pragma once

#include "core/FileIo.h"
#include "core/ProfileFile.h"

#include <array>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
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

    /// Adds a section in bulk, without a look at what is there. Pairs with an empty part
    /// are left out. False on failure.
    bool writeSection(UserInterface* parent, std::string_view name, std::span<const Pair> pairs);
    [[nodiscard]] bool sectionExists(std::string_view name) const;
    /// The ordinary write. Without a value the key goes, without a key the section.
    bool setValue(UserInterface* parent, std::string_view name, std::optional<std::string_view> key,
                  std::optional<std::string_view> value);
    /// At most `size` characters of a value.
    [[nodiscard]] std::string getText(std::string_view name, std::string_view key,
                                      std::string_view otherwise, std::size_t size);
    [[nodiscard]] std::string getString(std::string_view name, std::string_view key,
                                        std::string_view otherwise = {});
    [[nodiscard]] int getInt(std::string_view name, std::string_view key, int otherwise);
    /// Deletes all files and forgets everything. Warns if a file had become too large.
    void closeStore(UserInterface* parent);

    [[nodiscard]] int sectionCount() const { return sectionCount_; }
    /// The name at a place of the directory; the places of deleted sections count and have
    /// a blank name. Nothing for an index that is not below the section count.
    [[nodiscard]] std::optional<std::string> sectionName(int index) const;
    /// The length of the directory's text, which a deleted section does not shorten.
    [[nodiscard]] std::size_t directoryLength() const { return directoryLength_; }

  private:
    struct Entry {
        std::string name;  ///< blanks once it is deleted
        int file = 0;
    };

    static bool checkName(UserInterface* parent, std::string_view name);
    void startFamily(UserInterface* parent);
    [[nodiscard]] std::string filePath(int number) const;
    [[nodiscard]] std::optional<std::size_t> find(std::string_view name) const;
    void addEntry(std::string_view name);
    void removeEntry(std::size_t at);
    bool advance(UserInterface* parent);
    void closeWriteFile();
    /// The profile of a file; the one used last stays open, with its writes behind.
    ProfileFile& profileOf(int number);

    const WorkingStore& store_;
    std::string format_;
    FileWriter writeFile_;
    int currentFile_ = 0;
    std::vector<Entry> directory_;
    std::unordered_map<std::string, std::size_t> places_;
    std::size_t directoryLength_ = 0;
    int sectionCount_ = 0;
    std::array<std::size_t, kMostFiles> sizes_{};
    std::unique_ptr<ProfileFile> profile_;
    int profileNumber_ = -1;
};

// --- Helpers for any profile file -------------------------------------------------------

/// The value of a key without its trailing blanks.
[[nodiscard]] std::string readValue(std::string_view section, std::string_view key,
                                    std::string_view otherwise, const std::string& path);
/// Gives a section another name; false if it was not found or the file can not be written.
bool renameSection(std::string_view section, std::string_view newName, const std::string& path);
/// Replaces a section by a copy of another one; false if the source has no keys.
bool copySection(std::string_view source, std::string_view target, const std::string& path);
[[nodiscard]] std::vector<std::string> sectionNames(const std::string& path);

}  // namespace kavu
