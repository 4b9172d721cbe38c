// The settings of the program, `kavu.ini`. A setting is read where it is needed and
// written at once when it changes; a settings file that cannot be written is no error:
// the next run has the former values.
#pragma once

#include "core/files/ProfileFile.h"
#include "core/talk/SettingKeys.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace kavu {

class ProfileSettings {
  public:
    /// `path` may be empty: then every key has its default at first, and what is written
    /// stays in memory. The same holds for a file that cannot be read or written.
    explicit ProfileSettings(std::string path);

    /// The value of a key: that of `overrideForThisRun`, else that of the file. A number is
    /// within the range of its key.
    [[nodiscard]] int get(const IntKey& key) const;
    [[nodiscard]] bool get(const FlagKey& key) const;
    [[nodiscard]] std::string get(const TextKey& key) const;
    /// The number as it is in the file, whatever the range; nothing if the key is not there.
    [[nodiscard]] std::optional<int> stored(const IntKey& key) const;
    void set(const IntKey& key, int value);
    void set(const FlagKey& key, bool value);
    void set(const TextKey& key, std::string_view value);

    /// The decimal value of a key of the main section; a text without digits is 0.
    [[nodiscard]] int integer(std::string_view key, int otherwise) const;
    [[nodiscard]] std::string text(std::string_view key, std::string_view otherwise = {}) const;
    void write(std::string_view key, std::string_view value);
    void writeInteger(std::string_view key, long value);

    /// The same for any section. A write without a value removes the key, without a key
    /// the section.
    [[nodiscard]] int profileInteger(std::string_view section, std::string_view key,
                                     int otherwise) const;
    [[nodiscard]] std::string profileText(std::string_view section, std::string_view key,
                                          std::string_view otherwise = {}) const;
    void writeProfile(std::string_view section, std::optional<std::string_view> key,
                      std::optional<std::string_view> value);
    [[nodiscard]] std::vector<std::string> profileKeys(std::string_view section) const;

    /// A value of the main section for this run only: it hides the one in the file and is
    /// never written.
    void overrideForThisRun(std::string_view key, std::string_view value);
    /// REQUIRES: the key is one of the main section.
    void overrideForThisRun(const IntKey& key, int value);
    void overrideForThisRun(const TextKey& key, std::string_view value);
    /// From here on the value of the file counts again.
    void endOverride(const TextKey& key);

    [[nodiscard]] const std::string& path() const { return file_.path(); }

  private:
    /// Reads the file again if another program has written it since.
    void refresh() const;
    /// The value for this run of a key, or null.
    [[nodiscard]] const std::string* overrideOf(std::string_view section,
                                                std::string_view key) const;

    mutable ProfileFile file_;
    mutable std::string stamp_;  ///< of the file when it was read or written last
    std::map<std::string, std::string> overrides_;  ///< by lower-case key
};

}  // namespace kavu
