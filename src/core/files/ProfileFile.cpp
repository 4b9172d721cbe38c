#include "core/files/ProfileFile.h"

#include "core/files/FileIo.h"
#include "core/text/Text.h"
#include "core/text/TextEncoding.h"

#include <algorithm>
#include <cerrno>

namespace kavu {

namespace {

constexpr std::size_t kMissing = PlaceIndex::kNone;
constexpr std::size_t kIndexFrom = 32;  // keys of a section from which on a hash pays

/// True for a key that would be something else when it is read again.
bool beginsOtherwise(std::string_view key) {
    return key.front() == '[' || key.front() == ';' || key.starts_with(kByteOrderMark);
}

/// A hash of a key that is equal for keys that differ only in case, and never 0.
std::uint32_t markOf(std::string_view key) {
    std::uint32_t mark = 2166136261U;
    for (const char c : key) {
        mark = (mark ^ static_cast<unsigned char>(toLowerAscii(c))) * 16777619U;
    }
    return mark | 1U;
}

/// Reads a plain file within the bounds; `bytes` holds what was read before a failure.
IoStatus readProfile(const std::string& path, std::string& bytes) {
    PathKind kind = PathKind::Missing;
    if (auto status = probePath(path, kind); !status.ok() || kind == PathKind::Missing) {
        return status;
    }
    if (kind == PathKind::Other) {
        return {path, EINVAL};  // a device may never come to an end
    }
    ByteSource source;
    if (auto status = source.open(path); !status.ok()) {
        return status;
    }
    if (source.size() > ProfileFile::kMostBytes) {
        return {path, EFBIG};
    }
    bytes.reserve(source.size());
    std::uint64_t lines = 0;
    for (auto window = source.window(); !window.empty(); window = source.window()) {
        lines += static_cast<std::uint64_t>(std::count(window.begin(), window.end(), '\n'));
        if (bytes.size() + window.size() > ProfileFile::kMostBytes ||
            lines > ProfileFile::kMostLines) {
            return {path, EFBIG};
        }
        bytes.append(window);
        source.take(window.size());
    }
    return source.status();
}

}  // namespace

bool ProfileFile::canBeSection(std::string_view name) {
    return !name.empty() && !holdsLineBreak(name);
}

bool ProfileFile::canBeKey(std::string_view key) {
    return !key.empty() && !beginsOtherwise(key) && !holdsLineBreak(key) &&
           key.find('=') == std::string_view::npos && trimBlanks(key) == key;
}

bool ProfileFile::canBeValue(std::string_view value) {
    return !holdsLineBreak(value);
}

// --- Section ---------------------------------------------------------------------------

std::size_t ProfileFile::Section::indexOf(std::string_view key) const {
    if (key.empty()) {
        return kMissing;
    }
    if (!index_.empty()) {
        return findIndexed(foldedHash(key), key);
    }
    const auto mark = markOf(key);
    for (std::size_t i = 0; i < marks_.size(); ++i) {
        if (marks_[i] == mark && equalsIgnoreCase(lines_[i].key, key)) {
            return i;
        }
    }
    return kMissing;
}

void ProfileFile::Section::add(std::string_view key, std::string_view value) {
    lines_.push_back({std::string(key), std::string(value)});
    marks_.push_back(key.empty() ? 0 : markOf(key));
    if (key.empty()) {
        return;
    }
    ++keyCount_;
    if (!index_.empty()) {
        indexLine(lines_.size() - 1);
    } else if (keyCount_ > kIndexFrom) {
        makeIndex();
    }
}

void ProfileFile::Section::remove(std::size_t line) {
    const auto at = static_cast<std::ptrdiff_t>(line);
    keyCount_ -= lines_[line].key.empty() ? 0 : 1;
    lines_.erase(lines_.begin() + at);
    marks_.erase(marks_.begin() + at);
    if (!index_.empty()) {
        makeIndex();
    }
}

void ProfileFile::Section::makeIndex() {
    index_.clear();
    for (std::size_t i = 0; keyCount_ > kIndexFrom && i < lines_.size(); ++i) {
        if (!lines_[i].key.empty()) {
            indexLine(i);
        }
    }
}

std::size_t ProfileFile::Section::findIndexed(std::size_t hash, std::string_view key) const {
    return index_.find(hash,
                       [&](std::size_t line) { return equalsIgnoreCase(lines_[line].key, key); });
}

void ProfileFile::Section::indexLine(std::size_t line) {
    const auto& key = lines_[line].key;
    if (const auto hash = foldedHash(key); findIndexed(hash, key) == kMissing) {
        index_.add(hash, line);
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

// --- Contents --------------------------------------------------------------------------

void ProfileFile::Contents::parse(std::string_view text) {
    dropIndex();
    sections.clear();
    sections.emplace_back();
    bytes = 0;
    while (text.starts_with(kByteOrderMark)) {
        text.remove_prefix(kByteOrderMark.size());
    }
    while (!text.empty()) {
        const auto end = text.find('\n');
        auto line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        while (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        parseLine(line);
    }
}

void ProfileFile::Contents::parseLine(std::string_view line) {
    if (!line.empty() && line.front() == '[') {
        auto name = trimRight(line.substr(1));
        if (!name.empty() && name.back() == ']') {
            name.remove_suffix(1);
        }
        addSection(name);
        return;
    }
    const auto equals = line.find('=');
    const auto key =
        equals == std::string_view::npos ? std::string_view() : trimBlanks(line.substr(0, equals));
    if (key.empty() || beginsOtherwise(key)) {
        addLine(sections.back(), {}, line);
    } else {
        addLine(sections.back(), key, line.substr(equals + 1));
    }
}

ProfileFile::Section& ProfileFile::Contents::addSection(std::string_view name) {
    const auto at = sections.size();
    auto& section = sections.emplace_back();
    section.name_ = std::string(name);
    exact.try_emplace(section.name_, at);
    folded.try_emplace(lowerAscii(name), at);
    bytes += name.size() + 2 + lineEndSize;
    return section;
}

void ProfileFile::Contents::addLine(Section& section, std::string_view key, std::string_view text) {
    section.add(key, text);
    bytes += sizeOf(section.lines_.back());
}

std::size_t ProfileFile::Contents::sizeOf(const Line& line) const {
    return line.key.size() + (line.key.empty() ? 0 : 1) + line.text.size() + lineEndSize;
}

ProfileFile::Section* ProfileFile::Contents::find(std::string_view name) {
    if (const auto it = exact.find(name); it != exact.end()) {
        return &sections[it->second];
    }
    const auto it = folded.find(lowerAscii(name));
    return it == folded.end() ? nullptr : &sections[it->second];
}

void ProfileFile::Contents::dropIndex() {
    exact.clear();
    folded.clear();
}

void ProfileFile::Contents::makeIndex() {
    for (std::size_t i = 1; i < sections.size(); ++i) {
        exact.try_emplace(sections[i].name_, i);
        folded.try_emplace(lowerAscii(sections[i].name_), i);
    }
}

// --- ProfileFile -----------------------------------------------------------------------

ProfileFile::ProfileFile(std::string path, LineEnd lineEnd)
    : path_(std::move(path)), lineEnd_(lineEnd), contents_(lineEnd == LineEnd::CrLf ? 2 : 1) {}

const IoStatus& ProfileFile::load() const {
    if (!loaded_) {
        loaded_ = true;
        std::string bytes;
        status_ = path_.empty() ? IoStatus() : readProfile(path_, bytes);
        contents_.parse(status_.ok() ? std::string_view(bytes) : std::string_view());
    }
    return status_;
}

void ProfileFile::discard() {
    loaded_ = false;
    changed_ = false;
}

void ProfileFile::parse(std::string_view text) {
    adopt(text);
    changed_ = true;
}

void ProfileFile::adopt(std::string_view text) {
    loaded_ = true;
    changed_ = false;
    status_ = {};
    contents_.parse(text);
}

ProfileFile::Section* ProfileFile::findSection(std::string_view name) const {
    load();
    return contents_.find(name);
}

std::optional<std::string> ProfileFile::value(std::string_view section,
                                              std::string_view key) const {
    const auto* const found = findSection(section);
    const auto text = found == nullptr ? std::nullopt : found->find(key);
    return text ? std::optional<std::string>(*text) : std::nullopt;
}

std::string ProfileFile::value(std::string_view section, std::string_view key,
                               std::string_view otherwise) const {
    const auto* const found = findSection(section);
    return std::string(found == nullptr ? otherwise : found->get(key, otherwise));
}

int ProfileFile::integer(std::string_view section, std::string_view key, int otherwise) const {
    const auto* const found = findSection(section);
    return found == nullptr ? otherwise : found->integer(key, otherwise);
}

std::vector<std::string> ProfileFile::sectionNames() const {
    const auto& all = sections();
    std::vector<std::string> names;
    names.reserve(all.size() - 1);
    for (std::size_t i = 1; i < all.size(); ++i) {
        names.push_back(all[i].name_);
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

bool ProfileFile::containsExactly(std::string_view section) const {
    const auto* const found = findSection(section);
    return found != nullptr && found->name_ == section;
}

bool ProfileFile::setValue(std::string_view section, std::string_view key, std::string_view value) {
    if (!canBeKey(key) || !canBeSection(section) || !canBeValue(value)) {
        return false;
    }
    auto* found = findSection(section);
    if (found == nullptr) {
        found = &contents_.addSection(section);
    }
    const auto at = found->indexOf(key);
    if (at == kMissing) {
        contents_.addLine(*found, key, value);
        changed_ = true;
    } else if (auto& text = found->lines_[at].text; text != value) {
        contents_.bytes = contents_.bytes - text.size() + value.size();
        text = std::string(value);
        changed_ = true;
    }
    return true;
}

void ProfileFile::removeKey(std::string_view section, std::string_view key) {
    auto* const found = findSection(section);
    const auto at = found == nullptr ? kMissing : found->indexOf(key);
    if (at == kMissing) {
        return;
    }
    contents_.bytes -= contents_.sizeOf(found->lines_[at]);
    found->remove(at);
    changed_ = true;
}

void ProfileFile::removeSection(std::string_view section) {
    const auto* const found = findSection(section);
    if (found == nullptr) {
        return;
    }
    contents_.bytes -= found->name_.size() + 2 + contents_.lineEndSize;
    for (const auto& line : found->lines_) {
        contents_.bytes -= contents_.sizeOf(line);
    }
    // A look-up finds the first section of its name, and that is the one in the index.
    const auto at = contents_.exact.find(found->name_)->second;
    contents_.dropIndex();
    contents_.sections.erase(contents_.sections.begin() + static_cast<std::ptrdiff_t>(at));
    contents_.makeIndex();
    changed_ = true;
}

bool ProfileFile::renameSection(std::string_view section, std::string_view newName) {
    auto* const found = findSection(section);
    if (found == nullptr || !canBeSection(newName)) {
        return false;
    }
    contents_.bytes = contents_.bytes - found->name_.size() + newName.size();
    contents_.dropIndex();
    found->name_ = std::string(newName);
    contents_.makeIndex();
    changed_ = true;
    return true;
}

void ProfileFile::appendSection(std::string_view section) {
    load();
    if (canBeSection(section)) {
        contents_.addSection(section);
        changed_ = true;
    }
}

const std::deque<ProfileFile::Section>& ProfileFile::sections() const {
    load();
    return contents_.sections;
}

std::string ProfileFile::serialise() const {
    const std::string_view end = lineEnd_ == LineEnd::CrLf ? "\r\n" : "\n";
    std::string text;
    text.reserve(serialisedSize());
    for (const auto& section : contents_.sections) {
        if (&section != &contents_.sections.front()) {
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
    return contents_.bytes;
}

IoStatus ProfileFile::flush(Flush how) {
    return flush([&](std::string_view bytes) {
        return how == Flush::Kept ? replaceUserFile(path_, bytes)
                                  : replaceWorkingFile(path_, bytes);
    });
}

IoStatus ProfileFile::flush(const std::function<IoStatus(std::string_view bytes)>& replace) {
    if (!changed_ || path_.empty()) {
        return {};
    }
    if (!status_.ok()) {
        return status_;  // what could not be read is not overwritten either
    }
    const auto bytes = serialise();
    PathKind kind = PathKind::Missing;
    auto status = bytes.empty() ? probePath(path_, kind) : IoStatus();
    if (status.ok() && (!bytes.empty() || kind != PathKind::Missing)) {
        status = replace(bytes);
    }
    changed_ = !status.ok();
    return status;
}

}  // namespace kavu
