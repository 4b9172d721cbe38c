#include "core/talk/ProfileSettings.h"

#include "core/files/FileIo.h"
#include "core/files/FolderLock.h"
#include "core/text/Text.h"

#include <algorithm>

namespace kavu {

ProfileSettings::ProfileSettings(std::string path) : file_(std::move(path)) {}

void ProfileSettings::refresh() const {
    if (file_.path().empty()) {
        return;
    }
    auto stamp = fileStamp(file_.path());
    if (stamp != stamp_) {
        file_.discard();
        stamp_ = std::move(stamp);
    }
}

int ProfileSettings::get(const IntKey& key) const {
    return std::clamp(profileInteger(key.section, key.name, key.otherwise), key.least, key.most);
}

bool ProfileSettings::get(const FlagKey& key) const {
    return profileInteger(key.section, key.name, key.otherwise ? 1 : 0) != 0;
}

std::string ProfileSettings::get(const TextKey& key) const {
    return profileText(key.section, key.name, key.otherwise);
}

std::optional<int> ProfileSettings::stored(const IntKey& key) const {
    if (const auto* const hidden = overrideOf(key.section, key.name)) {
        return leadingInt(*hidden);
    }
    refresh();
    const auto text = file_.value(key.section, key.name);
    return text ? std::optional(leadingInt(*text)) : std::nullopt;
}

void ProfileSettings::set(const IntKey& key, int value) {
    writeProfile(key.section, key.name, std::to_string(value));
}

void ProfileSettings::set(const FlagKey& key, bool value) {
    writeProfile(key.section, key.name, value ? "1" : "0");
}

void ProfileSettings::set(const TextKey& key, std::string_view value) {
    writeProfile(key.section, key.name, value);
}

int ProfileSettings::integer(std::string_view key, int otherwise) const {
    return profileInteger(kApplicationName, key, otherwise);
}

std::string ProfileSettings::text(std::string_view key, std::string_view otherwise) const {
    return profileText(kApplicationName, key, otherwise);
}

void ProfileSettings::write(std::string_view key, std::string_view value) {
    writeProfile(kApplicationName, key, value);
}

void ProfileSettings::writeInteger(std::string_view key, long value) {
    std::string text;
    appendNumber(text, value);
    write(key, text);
}

int ProfileSettings::profileInteger(std::string_view section, std::string_view key,
                                    int otherwise) const {
    if (const auto* const hidden = overrideOf(section, key)) {
        return leadingInt(*hidden);
    }
    refresh();
    return file_.integer(section, key, otherwise);
}

std::string ProfileSettings::profileText(std::string_view section, std::string_view key,
                                         std::string_view otherwise) const {
    if (const auto* const hidden = overrideOf(section, key)) {
        return *hidden;
    }
    refresh();
    return file_.value(section, key, otherwise);
}

void ProfileSettings::writeProfile(std::string_view section, std::optional<std::string_view> key,
                                   std::optional<std::string_view> value) {
    // Another process may write between the read and the write, and its key would be lost.
    std::optional<FolderLock> lock;
    if (!file_.path().empty()) {
        lock.emplace(folderOf(file_.path()));
    }
    refresh();
    if (!key) {
        file_.removeSection(section);
    } else if (!value) {
        file_.removeKey(section, *key);
    } else {
        file_.setValue(section, *key, *value);
    }
    // A settings file that cannot be written is no error: the next run has the former
    // values.
    (void)file_.flush(ProfileFile::Flush::Kept);
    stamp_ = file_.path().empty() ? std::string() : fileStamp(file_.path());
}

std::vector<std::string> ProfileSettings::profileKeys(std::string_view section) const {
    refresh();
    return file_.keyNames(section);
}

void ProfileSettings::overrideForThisRun(std::string_view key, std::string_view value) {
    overrides_.insert_or_assign(lowerAscii(key), std::string(value));
}

void ProfileSettings::overrideForThisRun(const IntKey& key, int value) {
    overrideForThisRun(key.name, std::to_string(value));
}

void ProfileSettings::overrideForThisRun(const TextKey& key, std::string_view value) {
    overrideForThisRun(key.name, value);
}

void ProfileSettings::endOverride(const TextKey& key) {
    overrides_.erase(lowerAscii(key.name));
}

const std::string* ProfileSettings::overrideOf(std::string_view section,
                                               std::string_view key) const {
    if (overrides_.empty() || !equalsIgnoreCase(section, kApplicationName)) {
        return nullptr;
    }
    const auto found = overrides_.find(lowerAscii(key));
    return found == overrides_.end() ? nullptr : &found->second;
}

}  // namespace kavu
