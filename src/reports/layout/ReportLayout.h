// What the reports of a stream are made by: the keys of the settings, or those of a layout file.
// A file is worked on in a copy in the working store, and written back when it is saved.
#pragma once

#include "core/files/ProfileFile.h"
#include "reports/layout/LayoutKeys.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

struct DocumentContext;
class Messages;
class ProfileSettings;
class UserInterface;

/// The working copy of the layout file that is open.
inline constexpr std::string_view kLayoutCopy = "ReportLayout.rpt";

class ReportLayout {
  public:
    /// The layout of the settings, which must outlive it.
    explicit ReportLayout(ProfileSettings& settings);
    /// The layout in a profile, which must outlive it.
    explicit ReportLayout(ProfileFile& file);

    /// The value as it is stored; nothing if the key is missing.
    [[nodiscard]] std::optional<std::string> stored(std::string_view key) const {
        return read_(key);
    }
    /// The value that counts, with real line breaks: that of the key, else its default. So does a
    /// number that the key cannot have. Empty for a key that is none.
    [[nodiscard]] std::string text(std::string_view key) const;
    /// The same of a number key; 0 for a key that is none.
    [[nodiscard]] int number(std::string_view key) const;
    [[nodiscard]] bool isChecked(std::string_view key) const { return number(key) != 0; }
    /// The value of a key without which a report is not made: message 404 ("Unable able to detect")
    /// if it is there and cannot be read.
    [[nodiscard]] std::optional<int> option(std::string_view key, const Messages& messages,
                                            UserInterface* parent) const;
    /// Stores a value; line breaks become their stored bytes. False if no file can hold it.
    bool set(std::string_view key, std::string_view value);

  private:
    std::function<std::optional<std::string>(std::string_view)> read_;
    std::function<bool(std::string_view, std::string_view)> write_;
};

/// A layout file that is open.
class LayoutFile {
  public:
    /// The context must outlive it.
    explicit LayoutFile(DocumentContext& context);
    LayoutFile(const LayoutFile&) = delete;
    LayoutFile& operator=(const LayoutFile&) = delete;
    /// Deletes the working copy.
    ~LayoutFile();

    /// Makes the copy and reads it. False if the file could not be read, which is reported: nothing
    /// is open then.
    bool open(UserInterface* parent, const std::string& path);
    /// Begins a new file at a path, with the defaults of all keys; it is on the disk once saved.
    bool create(UserInterface* parent, const std::string& path);
    /// Writes the copy, and copies it back to the file, or to another one, which is then the open
    /// one. False if that failed, which is reported.
    bool save(UserInterface* parent);
    bool saveAs(UserInterface* parent, const std::string& path);
    void close();

    [[nodiscard]] bool isOpen() const { return copy_.has_value(); }
    [[nodiscard]] const std::string& path() const { return path_; }
    /// True if a key was set since it was opened or saved.
    [[nodiscard]] bool isChanged() const { return isChanged_; }
    /// REQUIRES: open.
    [[nodiscard]] ReportLayout layout();
    /// Stores a value in the copy. REQUIRES: open.
    bool set(UserInterface* parent, std::string_view key, std::string_view value);

    /// A key or value of the file that means nothing.
    struct Problem {
        enum class Kind { Value, Column, Unknown };
        std::string key{};
        std::string value{};
        Kind kind = Kind::Value;
    };
    /// In the order of the file. REQUIRES: open.
    [[nodiscard]] std::vector<Problem> problems() const;

  private:
    [[nodiscard]] std::string copyPath() const;
    bool report(UserInterface* parent, const IoStatus& status, const char* action) const;

    DocumentContext& context_;
    std::string path_{};
    std::optional<ProfileFile> copy_{};
    bool isChanged_ = false;
};

}  // namespace kavu
