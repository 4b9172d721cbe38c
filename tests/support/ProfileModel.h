// The sectioned format as the simplest model: lists that are searched from the front. The
// profile files with their indices and hashes must have the same results.
#pragma once

#include "core/files/ProfileFile.h"
#include "core/text/Text.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavu::test {

class ProfileModel {
  public:
    void set(std::string_view section, std::string_view key, std::string_view value) {
        if (find(section) == nullptr) {
            append(section);
        }
        auto& pairs = find(section)->pairs;
        for (auto& [name, text] : pairs) {
            if (equalsIgnoreCase(name, key)) {
                text = value;
                return;
            }
        }
        pairs.emplace_back(key, value);
    }
    void removeKey(std::string_view section, std::string_view key) {
        auto* const found = find(section);
        for (std::size_t i = 0; found != nullptr && i < found->pairs.size(); ++i) {
            if (equalsIgnoreCase(found->pairs[i].first, key)) {
                found->pairs.erase(found->pairs.begin() + static_cast<std::ptrdiff_t>(i));
                return;
            }
        }
    }
    void removeSection(std::string_view section) {
        if (auto* const found = find(section)) {
            sections_.erase(sections_.begin() + (found - sections_.data()));
        }
    }
    bool rename(std::string_view section, std::string_view newName) {
        auto* const found = find(section);
        if (found != nullptr) {
            found->name = newName;
        }
        return found != nullptr;
    }
    void append(std::string_view section) { sections_.push_back({std::string(section), {}}); }

    [[nodiscard]] std::optional<std::string> value(std::string_view section, std::string_view key) {
        if (const auto* const found = find(section)) {
            for (const auto& [name, text] : found->pairs) {
                if (equalsIgnoreCase(name, key)) {
                    return text;
                }
            }
        }
        return std::nullopt;
    }
    [[nodiscard]] std::vector<std::string> sectionNames() const {
        std::vector<std::string> names;
        for (const auto& section : sections_) {
            names.push_back(section.name);
        }
        return names;
    }
    [[nodiscard]] std::string text() const {
        std::string text;
        for (const auto& section : sections_) {
            text += "[" + section.name + "]\r\n";
            for (const auto& [key, value] : section.pairs) {
                text.append(key).append("=").append(value).append("\r\n");
            }
        }
        return text;
    }

  private:
    struct Section {
        std::string name;
        std::vector<std::pair<std::string, std::string>> pairs;
    };

    Section* find(std::string_view name) {
        for (auto& section : sections_) {
            if (section.name == name) {
                return &section;
            }
        }
        for (auto& section : sections_) {
            if (equalsIgnoreCase(section.name, name)) {
                return &section;
            }
        }
        return nullptr;
    }

    std::vector<Section> sections_;
};

/// True if both profiles have the same sections with the same lines.
inline bool sameSections(const ProfileFile& one, const ProfileFile& other) {
    const auto& a = one.sections();
    const auto& b = other.sections();
    bool same = a.size() == b.size();
    for (std::size_t i = 0; same && i < a.size(); ++i) {
        same = a[i].name() == b[i].name() && a[i].lines().size() == b[i].lines().size();
        for (std::size_t k = 0; same && k < a[i].lines().size(); ++k) {
            same = a[i].lines()[k].key == b[i].lines()[k].key &&
                   a[i].lines()[k].text == b[i].lines()[k].text;
        }
    }
    return same;
}

}  // namespace kavu::test
