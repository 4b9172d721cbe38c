#include "core/document/KeyValueStore.h"

#include "core/WorkingStore.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <cerrno>

namespace kavu {

namespace {

constexpr const char* kStoreTitle = "KAVU Database Error";

std::size_t digitCount(int number) {
    return std::to_string(number).size();
}

void showFileBox(UserInterface* parent, std::string text, const IoStatus& status) {
    showBox(parent, text + "\n\n" + status.path() + "\n\nReason: " + status.reason(), kStoreTitle);
}

}  // namespace

bool KeyValueStore::checkName(UserInterface* parent, std::string_view name) {
    if (name.find(';') == std::string_view::npos) {
        return ProfileFile::canBeSection(name);
    }
    showBox(parent,
            "Invalid Key passed to KAVU-Database function. Names cannot contain a semi-colon",
            kStoreTitle);
    return false;
}

bool KeyValueStore::start(UserInterface* parent) {
    if (started_) {
        return true;
    }
    // Another instance in the same folder has the first family; the next one that is free
    // has a digit in the third place of its names. With none free, the last is shared.
    for (char digit = '1'; fileExists(filePath(0)); ++digit) {
        if (digit > '9') {
            showBox(parent, "Unable to create database files", kStoreTitle);
            break;
        }
        family_ = digit;
    }
    // The first file is made now: pending writes in memory must not leave the family free.
    started_ = openWriteFile(parent);
    return started_;
}

std::string KeyValueStore::filePath(int number) const {
    return store_.path("KV%c%5.5d.sdk", family_, number);
}

// --- The directory ---------------------------------------------------------------------

std::size_t KeyValueStore::findName(std::string_view name) const {
    return places_.find(textHash(name),
                        [&](std::size_t place) { return names_[place].text == name; });
}

std::size_t KeyValueStore::find(std::string_view name) const {
    const auto place = findName(name);
    return place == kNone ? kNone : names_[place].first;
}

int KeyValueStore::fileOf(std::size_t place) const {
    return place == kNone ? currentFile_ : directory_[place].file;
}

void KeyValueStore::addEntry(std::string_view name) {
    sizes_[static_cast<std::size_t>(currentFile_)] += name.size() + 4;
    const auto at = directory_.size();
    auto place = findName(name);
    if (place == kNone) {
        place = names_.size();
        places_.add(textHash(name), place);
        names_.push_back({std::string(name)});
    }
    auto& known = names_[place];
    // A name that is added again is found at its first place.
    (known.first == kNone ? known.first : directory_[known.last].next) = at;
    known.last = at;
    directory_.push_back({place, currentFile_});
    directoryLength_ +=
        (directoryLength_ == 0 ? 1 : 0) + name.size() + 2 + digitCount(currentFile_);
    ++sectionCount_;
}

void KeyValueStore::removeEntry(std::size_t at) {
    auto& entry = directory_[at];
    names_[entry.name].first = entry.next;
    entry.isDeleted = true;
    --sectionCount_;
}

bool KeyValueStore::advance(UserInterface* parent) {
    if (currentFile_ + 1 >= kMostFiles) {
        showBox(parent, "ERROR: Too many Database files", kStoreTitle);
        return false;
    }
    ++currentFile_;
    sizes_[static_cast<std::size_t>(currentFile_)] = 0;
    return true;
}

std::optional<std::string> KeyValueStore::sectionName(int index) const {
    if (index < 0 || index >= sectionCount_) {
        return std::nullopt;
    }
    const auto& entry = directory_[static_cast<std::size_t>(index)];
    const auto& name = names_[entry.name].text;
    return entry.isDeleted ? std::string(name.size(), ' ') : name;
}

// --- The files -------------------------------------------------------------------------

bool KeyValueStore::openWriteFile(UserInterface* parent) {
    if (writeFile_.isOpen()) {
        return true;
    }
    // Pending ordinary writes come before the bulk, and a profile that was read does not
    // hold the bulk.
    if (!flushProfile(parent)) {
        return false;
    }
    profile_.reset();
    const auto path = filePath(currentFile_);
    // Without an active store the file would end up in the current folder.
    const auto status =
        store_.active() ? writeFile_.open(path, WriteMode::Append) : IoStatus(path, ENOENT);
    if (!status.ok()) {
        (void)writeFile_.close();
        showFileBox(parent, "ERROR: Unable to open Database file", status);
    }
    return status.ok();
}

bool KeyValueStore::closeWriteFile(UserInterface* parent) {
    if (!writeFile_.isOpen()) {
        return true;
    }
    const auto status = writeFile_.close();
    if (!status.ok()) {
        showFileBox(parent, "ERROR: Unable to close database file", status);
    }
    return status.ok();
}

bool KeyValueStore::flushProfile(UserInterface* parent) {
    const auto status = profile_ ? profile_->flush() : IoStatus();
    if (!status.ok()) {
        showFileBox(parent, "ERROR: Unable to write Database file", status);
    }
    return status.ok();
}

ProfileFile* KeyValueStore::profileToChange(UserInterface* parent, int number) {
    if (profile_ && profileNumber_ == number) {
        return &*profile_;
    }
    if (!flushProfile(parent)) {
        return nullptr;
    }
    profile_.emplace(filePath(number));
    profileNumber_ = number;
    if (const auto& status = profile_->load(); !status.ok()) {
        showFileBox(parent, "ERROR: Unable to open Database file", status);
        profile_.reset();
        return nullptr;
    }
    return &*profile_;
}

// --- Writes ----------------------------------------------------------------------------

bool KeyValueStore::writeSection(UserInterface* parent, std::string_view name,
                                 std::span<const Pair> pairs) {
    if (!checkName(parent, name)) {
        return false;
    }
    text_.assign("\r\n[").append(name).append("]\r\n");
    for (const auto& [key, value] : pairs) {
        if (key.empty() || value.empty()) {
            continue;
        }
        if (!ProfileFile::canBeKey(key) || !ProfileFile::canBeValue(value)) {
            return false;
        }
        text_.append(key).append("=").append(value).append("\r\n");
    }
    if (!start(parent) || !openWriteFile(parent)) {
        return false;
    }
    writeFile_.write(text_);
    addEntry(name);
    if (writeFile_.position() > kFullSize) {
        return closeWriteFile(parent) && advance(parent);
    }
    return writeFile_.status().ok();
}

bool KeyValueStore::sectionExists(std::string_view name) const {
    return find(name) != kNone;
}

bool KeyValueStore::setValue(UserInterface* parent, std::string_view name,
                             std::optional<std::string_view> key,
                             std::optional<std::string_view> value) {
    if (!checkName(parent, name) ||
        (key && (!ProfileFile::canBeKey(*key) ||
                 !ProfileFile::canBeValue(value.value_or(std::string_view()))))) {
        return false;
    }
    const auto place = find(name);
    if (!key && place == kNone) {
        return true;  // there is nothing, and a name of another case must not be deleted instead
    }
    if (!start(parent) || !closeWriteFile(parent)) {
        return false;
    }
    const int number = fileOf(place);
    auto* const profile = profileToChange(parent, number);
    if (profile == nullptr) {
        return false;
    }
    if (!key) {
        profile->removeSection(name);
        removeEntry(place);
        return true;
    }
    if (place == kNone) {
        // A name that differs from another one only in case has a section of its own.
        profile->appendSection(name);
        addEntry(name);
    }
    if (value) {
        profile->setValue(name, *key, *value);
    } else {
        profile->removeKey(name, *key);
    }
    auto& size = sizes_[static_cast<std::size_t>(number)];
    size += key->size() + value.value_or(std::string_view()).size() + 6;
    return place != kNone || size <= kFullSize || advance(parent);
}

// --- Reads -----------------------------------------------------------------------------

std::string KeyValueStore::getText(std::string_view name, std::string_view key,
                                   std::string_view otherwise, std::size_t size) {
    return getString(name, key, otherwise).substr(0, size);
}

std::string KeyValueStore::getString(std::string_view name, std::string_view key,
                                     std::string_view otherwise) {
    const auto place = find(name);
    if (place == kNone) {
        return std::string(otherwise);
    }
    // A bulk that cannot be written is kept open: the next write or the close reports it.
    if (writeFile_.isOpen() && writeFile_.flush().ok()) {
        (void)closeWriteFile(nullptr);
    }
    const int number = fileOf(place);
    if (!profile_ || profileNumber_ != number) {
        ProfileFile other(filePath(number));
        if (!flushProfile(nullptr)) {
            return other.value(name, key, otherwise);  // pending writes stay in memory
        }
        profile_ = std::move(other);
        profileNumber_ = number;
    }
    return profile_->value(name, key, otherwise);
}

int KeyValueStore::getInt(std::string_view name, std::string_view key, int otherwise) {
    return leadingInt(getString(name, key, std::to_string(otherwise)));
}

// --- The end ---------------------------------------------------------------------------

void KeyValueStore::closeStore(UserInterface* parent) {
    if (started_) {
        (void)closeWriteFile(parent);
        deleteFiles(parent);
    }
    profile_.reset();
    profileNumber_ = -1;
    started_ = false;
    currentFile_ = 0;
    directory_.clear();
    names_.clear();
    places_.clear();
    directoryLength_ = 0;
    sectionCount_ = 0;
    sizes_.fill(0);
}

void KeyValueStore::deleteFiles(UserInterface* parent) {
    // Pending writes are not written any more, but they count.
    bool tooLarge = profile_ && profile_->serialisedSize() > kTooLarge;
    for (int number = 0; number <= currentFile_; ++number) {
        const auto path = filePath(number);
        if (fileExists(path)) {
            tooLarge = tooLarge || fileSize(path) > kTooLarge;
            (void)deleteFile(path);
        }
    }
    if (tooLarge) {
        showBox(parent,
                "Warning: One or more Database files were too large. Data may have been lost.",
                kStoreTitle, Icon::Warning);
    }
}

// --- Helpers for any profile file ------------------------------------------------------

std::string readValue(std::string_view section, std::string_view key, std::string_view otherwise,
                      const std::string& path) {
    return ProfileFile(path).value(section, key, otherwise);
}

bool renameSection(std::string_view section, std::string_view newName, const std::string& path) {
    ProfileFile profile(path);
    return profile.renameSection(section, newName) && profile.flush(ProfileFile::Flush::Kept).ok();
}

bool copySection(std::string_view source, std::string_view target, const std::string& path) {
    ProfileFile profile(path);
    std::vector<std::pair<std::string, std::string>> pairs;
    for (const auto& key : profile.keyNames(source)) {
        pairs.emplace_back(key, profile.value(source, key, ""));
    }
    if (pairs.empty() || !ProfileFile::canBeSection(target)) {
        return false;
    }
    // Another section whose name differs only in case is not the target.
    if (profile.containsExactly(target)) {
        profile.removeSection(target);
    }
    profile.appendSection(target);
    for (const auto& [key, value] : pairs) {
        if (!value.empty()) {
            profile.setValue(target, key, value);
        }
    }
    return profile.flush(ProfileFile::Flush::Kept).ok();
}

std::vector<std::string> sectionNames(const std::string& path) {
    return ProfileFile(path).sectionNames();
}

}  // namespace kavu
