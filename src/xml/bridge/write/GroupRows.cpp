#include "xml/bridge/write/GroupRows.h"

#include "core/text/Text.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace kavu {

GroupRows::GroupRows(SdkGroup group) : group_(std::move(group)) {
    entries_.reserve(group_.size());
    for (std::size_t place = 0; place < group_.size(); ++place) {
        const auto command = group_.at(place);
        if (command.value.empty() || command.field.empty()) {
            continue;
        }
        auto path = parseField(command.field);
        if (!path) {
            path.emplace();
            path->stem = command.field;
        }
        const auto stem =
            stems_.try_emplace(lowerAscii(path->stem), static_cast<int>(stems_.size())).first;
        entries_.push_back({stem->second, *path, static_cast<std::uint32_t>(place), false});
    }
    std::sort(entries_.begin(), entries_.end(), [](const Entry& a, const Entry& b) {
        return std::tie(a.stem, a.at.at, a.place) < std::tie(b.stem, b.at.at, b.place);
    });
}

std::string GroupRows::code(std::string_view stem, const RowNumbers& at) const {
    std::string text = group_.prefix();
    text += stem;
    for (int i = 0; i < at.count; ++i) {
        text += '-';
        appendNumber(text, at.at[static_cast<std::size_t>(i)]);
    }
    return text;
}

int GroupRows::stem(std::string_view stem) const {
    const auto it = stems_.find(lowerAscii(stem));
    return it == stems_.end() ? kNoStem : it->second;
}

std::size_t GroupRows::lowerBound(int stem, const RowNumbers& at) const {
    const auto it = std::lower_bound(entries_.begin(), entries_.end(), std::tie(stem, at.at),
                                     [](const Entry& entry, const auto& key) {
                                         return std::tie(entry.stem, entry.at.at) < key;
                                     });
    return static_cast<std::size_t>(it - entries_.begin());
}

std::optional<std::string_view> GroupRows::peek(int stem, const RowNumbers& at) const {
    const auto i = lowerBound(stem, at);
    if (i == entries_.size() || entries_[i].stem != stem || entries_[i].at.at != at.at) {
        return std::nullopt;
    }
    return group_.at(entries_[i].place).value;
}

std::optional<std::string_view> GroupRows::take(int stem, const RowNumbers& at) {
    const auto value = peek(stem, at);
    if (value) {
        entries_[lowerBound(stem, at)].isTaken = true;
    }
    return value;
}

void GroupRows::takeBelow(int stem, const RowNumbers& at) {
    for (auto i = lowerBound(stem, at);
         i < entries_.size() && entries_[i].stem == stem &&
         std::equal(at.at.begin(), at.at.begin() + at.count, entries_[i].at.at.begin());
         ++i) {
        entries_[i].isTaken = true;
    }
}

int GroupRows::takeCount(int stem, const RowNumbers& at) {
    const auto value = take(stem, at);
    return value ? std::max(leadingInt(*value), 0) : 0;
}

int GroupRows::nextRow(std::span<const int> stems, const RowNumbers& parents, int after) const {
    int next = 0;
    const auto level = static_cast<std::size_t>(parents.count);
    for (const int stem : stems) {
        if (stem == kNoStem) {
            continue;
        }
        const auto i = lowerBound(stem, parents.row(static_cast<std::size_t>(after) + 1));
        if (i == entries_.size() || entries_[i].stem != stem) {
            continue;
        }
        const auto& at = entries_[i].at.at;
        if (std::equal(at.begin(), at.begin() + parents.count, parents.at.begin()) &&
            (next == 0 || at[level] < next)) {
            next = at[level];
        }
    }
    return next;
}

void GroupRows::forEachLeft(
    const std::function<void(std::string_view field, std::string_view value)>& visit) const {
    std::vector<std::uint32_t> places;
    for (const auto& entry : entries_) {
        if (!entry.isTaken) {
            places.push_back(entry.place);
        }
    }
    std::sort(places.begin(), places.end());
    for (const auto place : places) {
        const auto command = group_.at(place);
        visit(command.field, command.value);
    }
}

}  // namespace kavu
