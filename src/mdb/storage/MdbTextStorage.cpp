#include "mdb/storage/MdbTextStorage.h"

#include "core/files/FileIo.h"
#include "core/text/Text.h"
#include "mdb/record/MdbFields.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr std::size_t kComparedName = 32;

std::string_view withoutEnd(std::string_view line) {
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) {
        line.remove_suffix(1);
    }
    return line;
}

}  // namespace

MdbStorage::Reading MdbTextStorage::read(std::string bytes) {
    clear();
    texts_.push_back(std::move(bytes));
    std::string_view rest = texts_.back();
    lines_.reserve(static_cast<std::size_t>(std::count(rest.begin(), rest.end(), '\n')) + 1);
    while (!rest.empty()) {
        const auto end = rest.find('\n');
        const auto size = end == std::string_view::npos ? rest.size() : end + 1;
        lines_.push_back(lineAt(rest.substr(0, size)));
        rest.remove_prefix(size);
    }
    return Reading::Database;
}

void MdbTextStorage::write(FileWriter& writer) const {
    for (const auto& line : lines_) {
        writer.write(line.bytes);
    }
}

std::string_view MdbTextStorage::name(std::size_t entry) const {
    const auto line = lines_[entry].text;
    return trimBlanks(line.substr(0, line.find(';')));
}

std::string_view MdbTextStorage::readName(std::size_t entry) const {
    const auto line = lines_[entry].text;
    return trimBlanks(line.substr(0, line.find(';')).substr(0, kComparedName));
}

MdbRecord MdbTextStorage::record(std::size_t entry) const {
    MdbRecord record;
    auto line = lines_[entry].text;
    for (std::size_t column = 0; column < columnCount(version_); ++column) {
        const auto end = line.find(';');
        record[columnIndex(column, version_)] = trimBlanks(line.substr(0, end));
        if (end == std::string_view::npos) {
            break;
        }
        line.remove_prefix(end + 1);
    }
    return record;
}

std::size_t MdbTextStorage::columns(std::size_t entry) const {
    const auto line = lines_[entry].text;
    return static_cast<std::size_t>(std::count(line.begin(), line.end(), ';')) + 1;
}

bool MdbTextStorage::canHold(const MdbRecord& record) const {
    return record.fieldWithSemicolon() == mdbfield::kCount;
}

std::string MdbTextStorage::lineOf(const MdbRecord& record) const {
    std::string line;
    for (std::size_t column = 0; column < columnCount(version_); ++column) {
        line += column == 0 ? "" : ";";
        line += record[columnIndex(column, version_)];
    }
    // A field may come from anywhere; a line break in it would make two lines.
    toStoredForm(line);
    return line + "\r\n";
}

std::string_view MdbTextStorage::keep(std::string line) {
    return texts_.emplace_back(std::move(line));
}

MdbTextStorage::Line MdbTextStorage::lineAt(std::string_view bytes) {
    auto text = withoutEnd(bytes);
    if (text.find('\r') != std::string_view::npos) {
        std::string stored(text);
        toStoredForm(stored);
        text = keep(std::move(stored));
    }
    return {bytes, text};
}

void MdbTextStorage::append(const MdbRecord& record) {
    if (!lines_.empty() && !lines_.back().bytes.ends_with('\n')) {
        lines_.back().bytes = keep(std::string(lines_.back().bytes) + "\r\n");
    }
    lines_.push_back(lineAt(keep(lineOf(record))));
}

bool MdbTextStorage::replace(const MdbRecord& record) {
    std::string_view line;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        if (const auto found = name(i); !found.empty() && equalsIgnoreCase(found, record.name())) {
            line = line.empty() ? keep(lineOf(record)) : line;
            lines_[i] = lineAt(line);
        }
    }
    return !line.empty();
}

bool MdbTextStorage::remove(std::string_view removed) {
    const auto before = lines_.size();
    std::size_t kept = 0;
    for (std::size_t i = 0; i < before; ++i) {
        if (const auto found = name(i); found.empty() || !equalsIgnoreCase(found, removed)) {
            lines_[kept++] = lines_[i];
        }
    }
    lines_.resize(kept);
    return kept < before;
}

void MdbTextStorage::replaceAt(std::size_t entry, const MdbRecord& record) {
    lines_[entry] = lineAt(keep(lineOf(record)));
}

void MdbTextStorage::removeAt(const std::vector<std::size_t>& entries) {
    std::size_t kept = 0;
    auto next = entries.begin();
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        if (next != entries.end() && *next == i) {
            ++next;
        } else {
            lines_[kept++] = lines_[i];
        }
    }
    lines_.resize(kept);
}

void MdbTextStorage::clear() {
    lines_.clear();
    texts_.clear();
}

}  // namespace kavu
