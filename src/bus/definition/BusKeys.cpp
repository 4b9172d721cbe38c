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
    if (!ProfileFile::canBeKey(key) || !ProfileFile::canBeValue(value)) {
        return;
    }
    const Entry entry{place, key, value, hash(key)};
    auto& slot = slots_[slotOf(key, entry.hash)];
    if (slot == kNoEntry) {
        slot = static_cast<std::uint32_t>(entries_.size());
        entries_.push_back(entry);
        return;
    }
    entries_[slot] = entry;
    repeats_ = true;
}

std::size_t BusKeys::hash(std::string_view key) {
    constexpr std::uint64_t kOffset = 14695981039346656037U;
    constexpr std::uint64_t kPrime = 1099511628211U;
    auto hash = kOffset;
    for (const char c : key) {
        hash = (hash ^ static_cast<unsigned char>(toLowerAscii(c))) * kPrime;
    }
    // The low bits, which choose the slot, know little of the first characters.
    return static_cast<std::size_t>(hash ^ (hash >> 32U));
}

std::size_t BusKeys::slotOf(std::string_view key, std::size_t hash) const {
    const auto mask = slots_.size() - 1;
    auto slot = hash & mask;
    while (slots_[slot] != kNoEntry && (entries_[slots_[slot]].hash != hash ||
                                        !equalsIgnoreCase(entries_[slots_[slot]].key, key))) {
        slot = (slot + 1) & mask;
    }
    return slot;
}

const BusKeys::Entry* BusKeys::find(std::string_view key) const {
    const auto entry = slots_[slotOf(key, hash(key))];
    return entry == kNoEntry ? nullptr : &entries_[entry];
}

std::string_view BusKeys::value(std::string_view pattern, const RowNumbers& at) const {
    code_.clear();
    appendField(code_, pattern, at.at);
    const auto* const found = find(code_);
    return found == nullptr ? std::string_view() : found->value;
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
    const auto* const found = find(key);
    return found == nullptr ? std::nullopt : std::optional(found->place);
}

std::string BusKeys::profileText(std::string_view section) const {
    auto entries = entries_;
    if (repeats_) {
        std::sort(entries.begin(), entries.end(),
                  [](const Entry& a, const Entry& b) { return a.place < b.place; });
    }
    std::string text = "[" + std::string(section) + "]\r\n";
    for (const auto& entry : entries) {
        text.append(entry.key).append("=").append(entry.value).append("\r\n");
    }
    return text;
}

}  // namespace kavu
