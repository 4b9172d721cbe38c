#include "bus/definition/BusKeys.h"

#include "core/files/ProfileFile.h"
#include "core/text/Text.h"
#include "vocabulary/BGroupFields.h"

#include <algorithm>

namespace kavu {

namespace {

/// A `\` behind so many characters is part of a value of another program.
constexpr std::size_t kFarthestBackslash = 3200;
/// Counts up to this are taken as they are: an empty row costs little.
constexpr std::size_t kTrustedCount = 9999;
/// And so many rows of one file.
constexpr std::size_t kTrustedRows = 100'000;

}  // namespace

const GroupLists& busLists() {
    static const GroupLists kLists(busVocabulary());
    return kLists;
}

void BusKeys::add(std::size_t place) {
    const auto command = file_.commands().at(place);
    if (command.head.data() == nullptr || command.head.size() >= kFarthestBackslash) {
        return;
    }
    const auto key = trimBlanks(command.field);
    const auto value = trimBlanks(command.value);
    if (ProfileFile::canBeKey(key) && ProfileFile::canBeValue(value)) {
        keys_[lowerAscii(key)] = {place, key, value};
    }
}

std::string_view BusKeys::value(std::string_view pattern, const RowNumbers& at) const {
    code_.clear();
    appendField(code_, pattern, at.at);
    for (char& c : code_) {
        c = toLowerAscii(c);
    }
    const auto found = keys_.find(code_);
    return found == keys_.end() ? std::string_view() : found->second.value;
}

std::size_t BusKeys::rows(const Field& count, const RowNumbers& at) {
    const auto stated = static_cast<std::size_t>(std::max(0, leadingInt(value(count.code, at))));
    auto rows = stated;
    if (stated > kTrustedCount || rowsSoFar_ + stated > kTrustedRows) {
        rows = lastRow(count, at, std::min(stated, file_.commands().size()));
    }
    rowsSoFar_ += rows;
    return rows;
}

std::size_t BusKeys::lastRow(const Field& count, const RowNumbers& at, std::size_t most) {
    const auto& lists = busLists().all();
    const auto list = std::find_if(lists.begin(), lists.end(), [&](const GroupLists::List& each) {
        return each.count.code == count.code;
    });
    if (!numbers_) {
        numbers_.emplace(file_.commands(), busLists(), prefix_);
    }
    const auto& all = numbers_->of(*list, at);
    auto next = all.upper_bound(most);
    return next == all.begin() ? 0 : *std::prev(next);
}

std::optional<std::size_t> BusKeys::placeOf(std::string_view key) const {
    const auto found = keys_.find(lowerAscii(key));
    return found == keys_.end() ? std::nullopt : std::optional(found->second.place);
}

std::string BusKeys::profileText(std::string_view section) const {
    std::vector<const Entry*> entries;
    entries.reserve(keys_.size());
    for (const auto& [key, entry] : keys_) {
        entries.push_back(&entry);
    }
    std::sort(entries.begin(), entries.end(),
              [](const Entry* a, const Entry* b) { return a->place < b->place; });
    std::string text = "[" + std::string(section) + "]\r\n";
    for (const auto* const entry : entries) {
        text.append(entry->key).append("=").append(entry->value).append("\r\n");
    }
    return text;
}

}  // namespace kavu
