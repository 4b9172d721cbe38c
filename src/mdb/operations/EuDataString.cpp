#include "mdb/operations/EuDataString.h"

#include "conversion/ConversionFields.h"
#include "conversion/ConversionStore.h"
#include "core/files/ProfileFile.h"
#include "core/talk/FileReports.h"
#include "core/text/Text.h"
#include "mdb/record/DiscreteText.h"
#include "vocabulary/CGroupFields.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>

namespace kavu {

namespace {

/// No list of a record is longer; a count from a file is not believed beyond it.
constexpr int kMostItems = 100'000;

class SectionReader {
  public:
    SectionReader(const ProfileFile& chunk, const std::string& section)
        : chunk_(chunk), section_(section) {}

    [[nodiscard]] std::string value(std::string_view key) const {
        return chunk_.value(section_, key, "");
    }
    [[nodiscard]] std::string item(const Field& row, int number) const {
        return value(fieldCode(row.code, {number}));
    }
    [[nodiscard]] int count(const Field& row) const {
        return std::clamp(leadingInt(value(row.code)), 0, kMostItems);
    }

  private:
    const ProfileFile& chunk_;
    const std::string& section_;
};

void addWord(std::string& text, std::string_view word) {
    text += text.empty() ? "" : " ";
    text += word;
}

std::string pairsOf(const SectionReader& record) {
    std::string text;
    for (int i = 1; i <= kMostItems; ++i) {
        const auto x = record.item(c::kPs3, i);
        const auto y = record.item(c::kPs4, i);
        if (x.empty() || y.empty()) {
            break;
        }
        addWord(text, x);
        addWord(text, y);
    }
    return text;
}

std::string coefficientsOf(const SectionReader& record) {
    const auto orZero = [](std::string value) { return value.empty() ? "0" : value; };
    const int order = record.count(c::kCoN);
    auto text = record.value(c::kCo.code);
    if (text.empty() && order == 0) {
        return text;
    }
    text = orZero(std::move(text));
    for (int i = 1; i <= order; ++i) {
        addWord(text, orZero(record.item(c::kCoTerm, i)));
    }
    return text;
}

std::string eventsOf(const SectionReader& record) {
    std::vector<DiscretePair> pairs;
    for (int i = 1; i <= record.count(c::kDicN); ++i) {
        auto value = record.item(c::kDicc, i);
        auto event = record.item(c::kDicp, i);
        if (!value.empty() && !event.empty()) {
            pairs.emplace_back(std::move(value), std::move(event));
        }
    }
    return writeDiscrete(pairs);
}

class SectionWriter {
  public:
    SectionWriter(ProfileFile& chunk, const std::string& section)
        : chunk_(chunk), section_(section) {}

    void put(std::string_view key, std::string_view value) {
        chunk_.setValue(section_, key, value);
    }
    void putItem(const Field& row, std::size_t number, std::string_view value) {
        put(fieldCode(row.code, {static_cast<int>(number)}), value);
    }
    /// Items of the former data beyond the new count would be read, and written by a save, as if
    /// they were of the new one.
    void putCount(const Field& row, std::size_t count, std::initializer_list<const Field*> items) {
        const int former = SectionReader(chunk_, section_).count(row);
        for (int i = static_cast<int>(count) + 1; i <= former; ++i) {
            for (const auto* const item : items) {
                chunk_.removeKey(section_, fieldCode(item->code, {i}));
            }
        }
        put(row.code, std::to_string(count));
    }

  private:
    ProfileFile& chunk_;
    const std::string& section_;
};

bool putPairs(SectionWriter& record, std::string_view text) {
    const auto words = blankSeparated(text);
    const auto count = words.size() / 2;
    for (std::size_t i = 0; i < count; ++i) {
        record.putItem(c::kPs3, i + 1, words[2 * i]);
        record.putItem(c::kPs4, i + 1, words[2 * i + 1]);
    }
    if (count > 0) {
        record.putCount(c::kPsN, count, {&c::kPs3, &c::kPs4});
    }
    return count > 0;
}

bool putCoefficients(SectionWriter& record, std::string_view text) {
    const auto words = blankSeparated(text);
    if (words.empty()) {
        return false;
    }
    record.put(c::kCo.code, words.front());
    for (std::size_t i = 1; i < words.size(); ++i) {
        record.putItem(c::kCoTerm, i, words[i]);
    }
    record.putCount(c::kCoN, words.size() - 1, {&c::kCoTerm});
    return true;
}

bool putEvents(SectionWriter& record, std::string_view text) {
    const auto pairs = readDiscrete(text);
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        record.putItem(c::kDicc, i + 1, pairs[i].first);
        record.putItem(c::kDicp, i + 1, pairs[i].second);
    }
    if (!pairs.empty()) {
        record.putCount(c::kDicN, pairs.size(), {&c::kDicc, &c::kDicp});
    }
    return !pairs.empty();
}

bool putText(SectionWriter& record, std::string_view key, std::string_view text) {
    record.put(key, text);
    return true;
}

}  // namespace

std::string euDataOf(const ProfileFile& chunk, const std::string& section, std::string_view type) {
    const SectionReader record(chunk, section);
    if (equalsIgnoreCase(type, "PRS")) {
        return pairsOf(record);
    }
    if (equalsIgnoreCase(type, "COE")) {
        return coefficientsOf(record);
    }
    if (equalsIgnoreCase(type, "DIS")) {
        return eventsOf(record);
    }
    if (equalsIgnoreCase(type, "OTH")) {
        return record.value(c::kOth.code);
    }
    return equalsIgnoreCase(type, "DER") ? record.value(c::kDpa.code) : std::string();
}

std::string euDataString(ConversionStore& store, const std::string& name, std::string_view type) {
    const auto place = store.locateDefinition(name);
    if (!place.found) {
        return {};
    }
    if (equalsIgnoreCase(type, kCommentType)) {
        auto comment = store.readEuComment(name, false);
        toStoredForm(comment);
        return comment;
    }
    return euDataOf(*store.chunk(place.chunk), place.section, type);
}

bool putEuData(ProfileFile& chunk, const std::string& section, std::string_view type,
               std::string_view text) {
    std::string stored(trimBlanks(text));
    toStoredForm(stored);
    SectionWriter record(chunk, section);
    bool isPut = false;
    if (stored.empty()) {
        return false;
    }
    if (equalsIgnoreCase(type, "PRS")) {
        isPut = putPairs(record, stored);
    } else if (equalsIgnoreCase(type, "COE")) {
        isPut = putCoefficients(record, stored);
    } else if (equalsIgnoreCase(type, "DIS")) {
        isPut = putEvents(record, stored);
    } else if (equalsIgnoreCase(type, "OTH")) {
        isPut = putText(record, c::kOth.code, stored);
    } else if (equalsIgnoreCase(type, "DER")) {
        isPut = putText(record, c::kDpa.code, stored);
    }
    if (isPut) {
        record.put(kTypeCode, type);
    }
    return isPut;
}

bool applyEuDataString(ConversionStore& store, UserInterface* parent, const std::string& name,
                       std::string_view type, std::string_view text) {
    const auto place = store.locateDefinition(name);
    if (!place.found || trimBlanks(text).empty()) {
        return false;
    }
    const bool isComment = equalsIgnoreCase(type, kCommentType);
    if (isComment) {
        std::string comment(text);
        fromStoredForm(comment);
        if (!store.writeEuComment(parent, name, std::move(comment), false)) {
            return false;
        }
    }
    const auto chunk = store.chunk(place.chunk);
    if (isComment) {
        chunk->setValue(place.section, kTypeCode, type);
    } else if (!putEuData(*chunk, place.section, type, text)) {
        return false;
    }
    const auto status = store.store(place.chunk, *chunk);
    if (!status.ok()) {
        reportUnableToWrite(parent, status, title::kErrorReadingConversion);
    }
    return status.ok();
}

}  // namespace kavu
