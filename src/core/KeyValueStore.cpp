#include "core/KeyValueStore.h"

#include "core/Printf.h"
#include "core/Text.h"
#include "core/UserInterface.h"
#include "core/WorkingStore.h"

namespace kavu {

namespace {

constexpr const char* kTitle = "KAVU Database Error";
constexpr const char* kFormat = "KVU%5.5d.sdk";

std::size_t digitCount(int number) {
    return std::to_string(number).size();
}

}  // namespace

bool KeyValueStore::checkName(UserInterface* parent, std::string_view name) {
    if (name.find(';') == std::string_view::npos) {
        return true;
    }
    showBox(parent,
            "Invalid Key passed to KAVU-Database function. Names cannot contain a semi-colon",
            kTitle);
    return false;
}

void KeyValueStore::startFamily(UserInterface* parent) {
    if (!format_.empty()) {
        return;
    }
    // Another instance in the same folder has the first family; the next one that is free
    // has a digit in the third place of its names.
    format_ = kFormat;
    for (char digit = '1'; fileExists(filePath(0)); ++digit) {
        if (digit > '9') {
            showBox(parent, "Unable to create database files", kTitle);
            return;
        }
        format_[2] = digit;
    }
}

std::string KeyValueStore::filePath(int number) const {
    return store_.path(format_, number);
}

std::optional<std::size_t> KeyValueStore::find(std::string_view name) const {
    const auto it = places_.find(std::string(name));
    return it == places_.end() ? std::nullopt : std::optional(it->second);
}

void KeyValueStore::addEntry(std::string_view name) {
    sizes_[static_cast<std::size_t>(currentFile_)] += name.size() + 4;
    // A name that is added again stays found in its first file.
    places_.try_emplace(std::string(name), directory_.size());
    directory_.push_back({std::string(name), currentFile_});
    directoryLength_ +=
        (directoryLength_ == 0 ? 1 : 0) + name.size() + 2 + digitCount(currentFile_);
    ++sectionCount_;
}

void KeyValueStore::removeEntry(std::size_t at) {
    auto& entry = directory_[at];
    places_.erase(entry.name);
    entry.name.assign(entry.name.size(), ' ');
    --sectionCount_;
}

bool KeyValueStore::advance(UserInterface* parent) {
    if (currentFile_ + 1 >= kMostFiles) {
        showBox(parent, "ERROR: Too many Database files", kTitle);
        return false;
    }
    ++currentFile_;
    sizes_[static_cast<std::size_t>(currentFile_)] = 0;
    return true;
}

void KeyValueStore::closeWriteFile() {
    if (writeFile_.isOpen()) {
        (void)writeFile_.close();
    }
}

ProfileFile& KeyValueStore::profileOf(int number) {
    if (profile_ == nullptr || profileNumber_ != number) {
        if (profile_ != nullptr) {
            (void)profile_->flush();
        }
        profile_ = std::make_unique<ProfileFile>(filePath(number));
        profileNumber_ = number;
    }
    return *profile_;
}

bool KeyValueStore::writeSection(UserInterface* parent, std::string_view name,
                                 std::span<const Pair> pairs) {
    if (!checkName(parent, name)) {
        return false;
    }
    startFamily(parent);
    if (!writeFile_.isOpen()) {
        // What the ordinary writes have behind belongs in front of the bulk.
        if (profile_ != nullptr) {
            (void)profile_->flush();
            profile_.reset();
        }
        if (!writeFile_.open(filePath(currentFile_), WriteMode::Append).ok()) {
            showBox(parent, "ERROR: Unable to open Database file", kTitle);
            return false;
        }
    }
    writeFile_.write("\r\n[" + std::string(name) + "]\r\n");
    addEntry(name);
    for (const auto& [key, value] : pairs) {
        if (!key.empty() && !value.empty()) {
            writeFile_.write(std::string(key) + "=" + std::string(value) + "\r\n");
        }
    }
    if (!writeFile_.status().ok()) {
        return false;
    }
    if (writeFile_.position() > kFullSize) {
        closeWriteFile();
        return advance(parent);
    }
    return true;
}

bool KeyValueStore::sectionExists(std::string_view name) const {
    return find(name).has_value();
}

bool KeyValueStore::setValue(UserInterface* parent, std::string_view name,
                             std::optional<std::string_view> key,
                             std::optional<std::string_view> value) {
    if (!checkName(parent, name)) {
        return false;
    }
    startFamily(parent);
    closeWriteFile();
    const auto place = find(name);
    const int number = place ? directory_[*place].file : currentFile_;
    auto& profile = profileOf(number);
    if (!profile.load().ok()) {
        return false;
    }
    if (!key) {
        profile.removeSection(name);
        if (place) {
            removeEntry(*place);
        }
        return true;
    }
    bool good = true;
    if (value) {
        // A name that differs from another one only in case has a section of its own.
        if (!place) {
            profile.appendSection(name);
        }
        good = profile.setValue(name, *key, *value);
    } else {
        profile.removeKey(name, *key);
    }
    if (!place) {
        addEntry(name);
    }
    auto& size = sizes_[static_cast<std::size_t>(number)];
    size += good ? key->size() + value.value_or(std::string_view()).size() + 6 : 0;
    return !place && size > kFullSize ? advance(parent) && good : good;
}

std::string KeyValueStore::getText(std::string_view name, std::string_view key,
                                   std::string_view otherwise, std::size_t size) {
    return getString(name, key, otherwise).substr(0, size);
}

std::string KeyValueStore::getString(std::string_view name, std::string_view key,
                                     std::string_view otherwise) {
    const auto place = find(name);
    if (!place || name.find(';') != std::string_view::npos) {
        return std::string(otherwise);
    }
    closeWriteFile();
    return profileOf(directory_[*place].file).value(name, key, otherwise);
}

int KeyValueStore::getInt(std::string_view name, std::string_view key, int otherwise) {
    const auto text = getString(name, key);
    return text.empty() ? otherwise : leadingInt(text);
}

void KeyValueStore::closeStore(UserInterface* parent) {
    if (!directory_.empty()) {
        if (profile_ != nullptr) {
            (void)profile_->flush();
        }
        if (writeFile_.isOpen() && !writeFile_.close().ok()) {
            showBox(parent, "ERROR: Unable to close database file", kTitle);
        }
        bool tooLarge = false;
        for (int number = 0; number < kMostFiles; ++number) {
            const auto path = filePath(number);
            if (!fileExists(path)) {
                break;
            }
            tooLarge = tooLarge || fileSize(path) > kTooLarge;
            (void)deleteFile(path);
        }
        if (tooLarge) {
            showBox(parent,
                    "Warning: One or more Database files were too large. Data may have been lost.",
                    kTitle, Icon::Warning);
        }
    }
    profile_.reset();
    profileNumber_ = -1;
    format_.clear();
    currentFile_ = 0;
    directory_.clear();
    places_.clear();
    directoryLength_ = 0;
    sectionCount_ = 0;
    sizes_.fill(0);
}

std::optional<std::string> KeyValueStore::sectionName(int index) const {
    if (index < 0 || index >= sectionCount_) {
        return std::nullopt;
    }
    return directory_[static_cast<std::size_t>(index)].name;
}

std::string readValue(std::string_view section, std::string_view key, std::string_view otherwise,
                      const std::string& path) {
    return ProfileFile(path).value(section, key, otherwise);
}

bool renameSection(std::string_view section, std::string_view newName, const std::string& path) {
    ProfileFile profile(path);
    return !section.empty() && profile.renameSection(section, newName) && profile.flush().ok();
}

bool copySection(std::string_view source, std::string_view target, const std::string& path) {
    ProfileFile profile(path);
    std::vector<std::pair<std::string, std::string>> pairs;
    for (const auto& key : profile.keyNames(source)) {
        pairs.emplace_back(key, profile.value(source, key, ""));
    }
    if (pairs.empty()) {
        return false;
    }
    if (source != target) {
        profile.removeSection(target);
        profile.appendSection(target);
    }
    for (const auto& [key, value] : pairs) {
        if (!value.empty()) {
            profile.setValue(target, key, value);
        }
    }
    return profile.flush().ok();
}

std::vector<std::string> sectionNames(const std::string& path) {
    return ProfileFile(path).sectionNames();
}

}  // namespace kavu
