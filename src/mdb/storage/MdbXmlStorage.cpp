#include "mdb/storage/MdbXmlStorage.h"

#include "core/files/FileIo.h"
#include "core/text/Text.h"
#include "core/text/TextEncoding.h"
#include "mdb/storage/MdbTextStorage.h"
#include "mdb/storage/XmlRecord.h"
#include "xml/XmlSyntax.h"

#include <algorithm>
#include <numeric>

namespace kavu {

namespace {

constexpr std::string_view kGap = "\n\t";

/// From the begin of one run of bytes to the begin of a later one of the same text.
std::string_view runBetween(const char* begin, const char* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

}  // namespace

std::unique_ptr<MdbStorage> MdbStorage::make(MdbVersion version) {
    if (version == MdbVersion::Xml) {
        return std::make_unique<MdbXmlStorage>();
    }
    return std::make_unique<MdbTextStorage>(version);
}

MdbXmlStorage::MdbXmlStorage() {
    startEmpty();
}

std::string_view MdbXmlStorage::keep(std::string text) {
    return texts_.emplace_back(std::move(text));
}

void MdbXmlStorage::startEmpty() {
    entries_.clear();
    texts_.clear();
    head_ = keep("<" + std::string(kXmlDatabaseRoot) + ">");
    tail_ = keep("\n</" + std::string(kXmlDatabaseRoot) + ">\n");
}

MdbStorage::Reading MdbXmlStorage::read(std::string bytes) {
    startEmpty();
    if (trim(bytes).empty()) {
        return Reading::Database;
    }
    if (!isValidUtf8(bytes)) {
        bytes = toUtf8(bytes);
    }
    const auto text = keep(std::move(bytes));
    const auto mark = text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
    if (checkXml(text.substr(mark)).fault) {
        startEmpty();
        return Reading::Unreadable;
    }
    const auto parts = splitXml(text);
    if (parts.rootName != kXmlDatabaseRoot) {
        startEmpty();
        return Reading::NoDatabase;
    }
    take(parts);
    return Reading::Database;
}

void MdbXmlStorage::take(const XmlParts& parts) {
    if (parts.isClosed) {
        head_ = keep(std::string(trimRight(parts.head)) + ">");
        tail_ = keep(std::string(trimRight(tail_)) +
                     (parts.tail.empty() ? "\n" : std::string(parts.tail)));
        return;
    }
    head_ = parts.head;
    entries_.reserve(parts.children.size());
    const auto* gap = parts.head.data() + parts.head.size();
    for (const auto& child : parts.children) {
        const auto tag = child.element.substr(1, kXmlRecordElement.size() + 1);
        const bool isRecord =
            tag.starts_with(kXmlRecordElement) &&
            std::string_view(" \t\r\n/>").find(tag.back()) != std::string_view::npos;
        if (!isRecord) {
            continue;  // it is part of what is before the next record
        }
        entries_.push_back({{runBetween(gap, child.element.data()), child.element},
                            readXmlRecordName(child.element)});
        gap = child.element.data() + child.element.size();
    }
    tail_ = runBetween(gap, parts.tail.data() + parts.tail.size());
}

void MdbXmlStorage::write(FileWriter& writer) const {
    writer.write(head_);
    for (const auto& entry : entries_) {
        writer.write(entry.part.gap);
        writer.write(entry.part.element);
    }
    writer.write(tail_);
}

MdbRecord MdbXmlStorage::record(std::size_t entry) const {
    return readXmlRecord(entries_[entry].part.element);
}

std::size_t MdbXmlStorage::find(std::string_view name) const {
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [name](const Entry& entry) { return entry.name == name; });
    return static_cast<std::size_t>(found - entries_.begin());
}

void MdbXmlStorage::append(const MdbRecord& record) {
    const auto element = keep(writeXmlRecord(record));
    entries_.push_back({{kGap, element}, readXmlRecordName(element)});
}

bool MdbXmlStorage::replace(const MdbRecord& record) {
    const auto element = keep(writeXmlRecord(record));
    auto name = readXmlRecordName(element);
    const auto place = find(name);
    if (place == entries_.size()) {
        texts_.pop_back();
        return false;
    }
    entries_[place].part.element = element;
    entries_[place].name = std::move(name);
    return true;
}

void MdbXmlStorage::replaceAt(std::size_t entry, const MdbRecord& record) {
    entries_[entry].part.element = keep(writeXmlRecord(record));
    entries_[entry].name = readXmlRecordName(entries_[entry].part.element);
}

void MdbXmlStorage::removeAt(const std::vector<std::size_t>& entries) {
    std::size_t kept = 0;
    std::string gap;  // what is before entries that go, and more than white space
    auto next = entries.begin();
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        auto& entry = entries_[i];
        if (next != entries.end() && *next == i) {
            ++next;
            gap += trim(entry.part.gap).empty() ? std::string_view() : entry.part.gap;
            continue;
        }
        if (!gap.empty()) {
            entry.part.gap = keep(gap + std::string(entry.part.gap));
            gap.clear();
        }
        if (kept != i) {
            entries_[kept] = std::move(entry);
        }
        ++kept;
    }
    entries_.resize(kept);
    if (!gap.empty()) {
        tail_ = keep(gap + std::string(tail_));
    }
}

bool MdbXmlStorage::remove(std::string_view removed) {
    const auto place = find(removed);
    if (place == entries_.size()) {
        return false;
    }
    removeAt({place});
    std::stable_sort(entries_.begin(), entries_.end(),
                     [](const Entry& a, const Entry& b) { return a.name < b.name; });
    return true;
}

void MdbXmlStorage::clear() {
    std::vector<std::size_t> all(entries_.size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    removeAt(all);
}

}  // namespace kavu
