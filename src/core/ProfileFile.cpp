#include "core/ProfileFile.h"

#include "core/FileIo.h"
#include "core/Text.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr std::size_t kMissing = static_cast<std::size_t>(-1);
constexpr std::size_t kIndexFrom = 32;  // keys of a section from which a hash pays

std::string_view trimBlanks(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

bool holdsLineBreak(std::string_view text) {
    return text.find_first_of("\r\n") != std::string_view::npos;
}

bool canBeKey(std::string_view key) {
    return !key.empty() && key[0] != '[' && key[0] != ';' && !holdsLineBreak(key) &&
           key.find('=') == std::string_view::npos && trimBlanks(key) == key;
}

bool canBeSection(std::string_view name) {
    return !name.empty() && !holdsLineBreak(name) && trimRight(name) == name;
}

}  // namespace

// --- Section ---------------------------------------------------------------------------

std::size_t ProfileFile::Section::indexOf(std::string_view key) const {
    if (!index_.empty()) {
        const auto it = index_.find(lowerAscii(key));
        return it == index_.end() ? kMissing : it->second;
    }
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        if (lines_[i].key.size() == key.size() && equalsIgnoreCase(lines_[i].key, key) &&
            !key.empty()) {
            return i;
        }
    }
    return kMissing;
}

void ProfileFile::Section::add(std::string_view key, std::string_view value) {
    lines_.push_back({std::string(key), std::string(value)});
    if (key.empty()) {
        return;
    }
    ++keyCount_;
    if (!index_.empty()) {
        index_.try_emplace(lowerAscii(key), lines_.size() - 1);
    } else if (keyCount_ > kIndexFrom) {
        for (std::size_t i = 0; i < lines_.size(); ++i) {
            if (!lines_[i].key.empty()) {
                index_.try_emplace(lowerAscii(lines_[i].key), i);
            }
        }
    }
}

std::optional<std::string_view> ProfileFile::Section::find(std::string_view key) const {
    const auto at = indexOf(key);
    if (at == kMissing) {
        return std::nullopt;
    }
    return trimBlanks(lines_[at].text);
}

std::string_view ProfileFile::Section::get(std::string_view key, std::string_view otherwise) const {
    return find(key).value_or(otherwise);
}

int ProfileFile::Section::integer(std::string_view key, int otherwise) const {
    const auto text = find(key);
    return text ? leadingInt(*text) : otherwise;
}

// --- ProfileFile -----------------------------------------------------------------------

ProfileFile::ProfileFile(std::string path, LineEnd lineEnd)
    : path_(std::move(path)), lineEnd_(lineEnd) {
    sections_.emplace_back();
}

const IoStatus& ProfileFile::load() const {
    if (!loaded_) {
        auto& self = const_cast<ProfileFile&>(*this);
        self.loaded_ = true;
        self.status_ = {};
        std::string bytes;
        PathKind kind = PathKind::Missing;
        if (!path_.empty()) {
            self.status_ = probePath(path_, kind);
        }
        if (kind != PathKind::Missing) {
            self.status_ = readWholeFile(path_, bytes);
        }
        self.parse(bytes);
        self.changed_ = false;
    }
    return status_;
}

void ProfileFile::discard() {
    loaded_ = false;
    changed_ = false;
}

void ProfileFile::parse(std::string_view text) {
    loaded_ = true;
    changed_ = true;
    sections_.clear();
    sections_.emplace_back();
    index_.clear();
    bytes_ = 0;
    while (!text.empty()) {
        const auto end = text.find('\n');
        auto line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        parseLine(line);
    }
}

void ProfileFile::parseLine(std::string_view line) {
    if (!line.empty() && line.front() == '[') {
        auto name = trimRight(line.substr(1));
        if (!name.empty() && name.back() == ']') {
            name.remove_suffix(1);
        }
        addSection(name);
        return;
    }
    const auto equals = line.find('=');
    const auto key = equals == std::string_view::npos || line.front() == ';'
                         ? std::string_view()
                         : trimBlanks(line.substr(0, equals));
    addLine(sections_.back(), key, key.empty() ? line : line.substr(equals + 1));
}

ProfileFile::Section& ProfileFile::addSection(std::string_view name) {
    sections_.emplace_back().name_ = std::string(name);
    index_[lowerAscii(name)].push_back(sections_.size() - 1);
    bytes_ += name.size() + 2 + lineEndSize();
    return sections_.back();
}

void ProfileFile::addLine(Section& section, std::string_view key, std::string_view text) {
    section.add(key, text);
    bytes_ += lineSize(section.lines_.back());
}

std::size_t ProfileFile::lineSize(const Line& line) const {
    return line.key.size() + (line.key.empty() ? 0 : 1) + line.text.size() + lineEndSize();
}

const ProfileFile::Section* ProfileFile::findSection(std::string_view name) const {
    load();
    const auto it = index_.find(lowerAscii(name));
    if (it == index_.end() || it->second.empty()) {
        return nullptr;
    }
    for (const auto at : it->second) {
        if (sections_[at].name_ == name) {
            return &sections_[at];
        }
    }
    return &sections_[it->second.front()];
}

ProfileFile::Section* ProfileFile::findSection(std::string_view name) {
    return const_cast<Section*>(std::as_const(*this).findSection(name));
}

std::optional<std::string> ProfileFile::value(std::string_view section,
                                              std::string_view key) const {
    const auto* const found = findSection(section);
    const auto text = found == nullptr ? std::nullopt : found->find(key);
    return text ? std::optional<std::string>(*text) : std::nullopt;
}

std::string ProfileFile::value(std::string_view section, std::string_view key,
                               std::string_view otherwise) const {
    return value(section, key).value_or(std::string(otherwise));
}

int ProfileFile::integer(std::string_view section, std::string_view key, int otherwise) const {
    const auto* const found = findSection(section);
    return found == nullptr ? otherwise : found->integer(key, otherwise);
}

std::vector<std::string> ProfileFile::sectionNames() const {
    load();
    std::vector<std::string> names;
    for (std::size_t i = 1; i < sections_.size(); ++i) {
        names.push_back(sections_[i].name_);
    }
    return names;
}

std::vector<std::string> ProfileFile::keyNames(std::string_view section) const {
    std::vector<std::string> names;
    if (const auto* const found = findSection(section)) {
        for (const auto& line : found->lines_) {
            if (!line.key.empty()) {
                names.push_back(line.key);
            }
        }
    }
    return names;
}

bool ProfileFile::hasExactSection(std::string_view section) const {
    const auto* const found = findSection(section);
    return found != nullptr && found->name_ == section && found->hasKeys();
}

bool ProfileFile::hasSection(std::string_view section) const {
    const auto* const found = findSection(section);
    return found != nullptr && found->hasKeys();
}

bool ProfileFile::setValue(std::string_view section, std::string_view key, std::string_view value) {
    if (!canBeKey(key) || !canBeSection(section) || holdsLineBreak(value)) {
        return false;
    }
    auto* found = findSection(section);
    if (found == nullptr || (found->name_ != section && found->name_.empty())) {
        found = &addSection(section);
    }
    const auto at = found->indexOf(key);
    if (at == kMissing) {
        addLine(*found, key, value);
    } else {
        auto& text = found->lines_[at].text;
        bytes_ = bytes_ - text.size() + value.size();
        text = std::string(value);
    }
    touch();
    return true;
}

void ProfileFile::removeKey(std::string_view section, std::string_view key) {
    auto* const found = findSection(section);
    const auto at = found == nullptr ? kMissing : found->indexOf(key);
    if (at == kMissing) {
        return;
    }
    bytes_ -= lineSize(found->lines_[at]);
    found->lines_.erase(found->lines_.begin() + static_cast<std::ptrdiff_t>(at));
    found->reindex();
    touch();
}

void ProfileFile::Section::reindex() {
    index_.clear();
    keyCount_ = 0;
    std::vector<Line> lines;
    lines.swap(lines_);
    lines_.reserve(lines.size());
    for (auto& line : lines) {
        add(line.key, line.text);
    }
}

void ProfileFile::removeSection(std::string_view section) {
    const auto* const found = findSection(section);
    if (found == nullptr || found == &sections_.front()) {
        return;
    }
    const auto at = std::find_if(sections_.begin(), sections_.end(),
                                 [found](const Section& s) { return &s == found; });
    bytes_ -= at->name_.size() + 2 + lineEndSize();
    for (const auto& line : at->lines_) {
        bytes_ -= lineSize(line);
    }
    sections_.erase(at);
    rebuildIndex();
    touch();
}

bool ProfileFile::renameSection(std::string_view section, std::string_view newName) {
    auto* const found = findSection(section);
    if (found == nullptr || !canBeSection(newName)) {
        return false;
    }
    bytes_ = bytes_ - found->name_.size() + newName.size();
    found->name_ = std::string(newName);
    rebuildIndex();
    touch();
    return true;
}

void ProfileFile::appendSection(std::string_view section) {
    load();
    if (canBeSection(section)) {
        addSection(section);
        touch();
    }
}

void ProfileFile::rebuildIndex() {
    index_.clear();
    for (std::size_t i = 1; i < sections_.size(); ++i) {
        index_[lowerAscii(sections_[i].name_)].push_back(i);
    }
}

const std::deque<ProfileFile::Section>& ProfileFile::sections() const {
    load();
    return sections_;
}

std::string ProfileFile::serialise() const {
    load();
    const std::string_view end = lineEnd_ == LineEnd::CrLf ? "\r\n" : "\n";
    std::string text;
    text.reserve(bytes_);
    for (const auto& section : sections_) {
        if (&section != &sections_.front()) {
            text.append("[").append(section.name_).append("]").append(end);
        }
        for (const auto& line : section.lines_) {
            if (!line.key.empty()) {
                text.append(line.key).append("=");
            }
            text.append(line.text).append(end);
        }
    }
    return text;
}

std::uint64_t ProfileFile::serialisedSize() const {
    load();
    return bytes_;
}

IoStatus ProfileFile::flush() {
    load();
    if (!changed_ || path_.empty()) {
        return {};
    }
    const auto bytes = serialise();
    PathKind kind = PathKind::Missing;
    auto status = bytes.empty() ? probePath(path_, kind) : IoStatus();
    if (status.ok() && bytes.empty() && kind == PathKind::Missing) {
        changed_ = false;
        return {};
    }
    status = status.ok() ? replaceFile(path_, bytes) : status;
    changed_ = !status.ok();
    return status;
}

}  // namespace kavu
