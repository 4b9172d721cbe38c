// The store of sections as the simplest model: one list of entries in the order in which
// they were added, and the directory as one text that is searched from the front.
#pragma once

#include "core/text/Text.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavu::test {

class KeyValueModel {
  public:
    using Pair = std::pair<std::string_view, std::string_view>;

    void writeSection(std::string_view name, std::span<const Pair> pairs) {
        auto& entry = add(name);
        for (const auto& [key, value] : pairs) {
            if (!key.empty() && !value.empty()) {
                entry.pairs.emplace_back(key, value);
            }
        }
    }
    void setValue(std::string_view name, std::optional<std::string_view> key,
                  std::optional<std::string_view> value) {
        auto* found = find(name);
        if (!key) {
            if (found != nullptr) {
                blank(*found);
            }
            return;
        }
        auto& entry = found == nullptr ? add(name) : *found;
        for (std::size_t i = 0; i < entry.pairs.size(); ++i) {
            if (equalsIgnoreCase(entry.pairs[i].first, *key)) {
                if (value) {
                    entry.pairs[i].second = *value;
                } else {
                    entry.pairs.erase(entry.pairs.begin() + static_cast<std::ptrdiff_t>(i));
                }
                return;
            }
        }
        if (value) {
            entry.pairs.emplace_back(*key, *value);
        }
    }
    [[nodiscard]] std::optional<std::string> value(std::string_view name, std::string_view key) {
        if (const auto* const found = find(name)) {
            for (const auto& [k, v] : found->pairs) {
                if (equalsIgnoreCase(k, key)) {
                    return v;
                }
            }
        }
        return std::nullopt;
    }
    [[nodiscard]] bool exists(std::string_view name) { return find(name) != nullptr; }
    [[nodiscard]] int count() const {
        int count = 0;
        for (const auto& entry : entries_) {
            count += entry.deleted ? 0 : 1;
        }
        return count;
    }
    /// The index-th name of the directory's text, over names and numbers from its front.
    [[nodiscard]] std::optional<std::string> name(int index) const {
        if (index < 0 || index >= count()) {
            return std::nullopt;
        }
        std::size_t at = 1;
        for (int i = 0; i < 2 * index; ++i) {
            at = directory_.find(';', at) + 1;
        }
        return directory_.substr(at, directory_.find(';', at) - at);
    }
    /// The directory while all sections are in the first file.
    [[nodiscard]] const std::string& directory() const { return directory_; }

  private:
    struct Entry {
        std::string name;
        std::size_t at = 0;  ///< of the name in the directory
        bool deleted = false;
        std::vector<std::pair<std::string, std::string>> pairs;
    };

    Entry* find(std::string_view name) {
        for (auto& entry : entries_) {
            if (!entry.deleted && entry.name == name) {
                return &entry;
            }
        }
        return nullptr;
    }
    Entry& add(std::string_view name) {
        if (directory_.empty()) {
            directory_ = ";";
        }
        entries_.push_back({std::string(name), directory_.size(), false, {}});
        directory_ += std::string(name) + ";0;";
        return entries_.back();
    }
    void blank(Entry& entry) {
        entry.deleted = true;
        for (std::size_t i = entry.at; directory_[i] != ';'; ++i) {
            directory_[i] = ' ';
        }
    }

    std::vector<Entry> entries_;
    std::string directory_;
};

}  // namespace kavu::test
