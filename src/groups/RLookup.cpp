#include "groups/RLookup.h"

#include <algorithm>

namespace kavu {

std::string_view plainCode(std::string_view code) {
    for (const std::string_view end : {"-n-m", "-n"}) {
        if (code.ends_with(end)) {
            return code.substr(0, code.size() - end.size());
        }
    }
    return code;
}

std::string indexedCode(std::string_view code, int n, int m) {
    std::string indexed(plainCode(code));
    const auto rest = code.substr(indexed.size());
    if (!rest.empty()) {
        indexed += "-" + std::to_string(n);
    }
    if (rest.size() > 2) {
        indexed += "-" + std::to_string(m);
    }
    return indexed;
}

std::string FieldLookup::value(const Field& field, int n, int m) {
    if (!isKnownIn(edition_, field)) {
        return {};
    }
    const int limit = static_cast<int>(limitIn(edition_, field));
    const auto found = index_.findField(parent_, prefix_, indexedCode(field.code, n, m), limit);
    return std::string(found.value_or(std::string_view()));
}

int FieldLookup::count(const Field& field, int most, int n) {
    int number = 0;
    if (isKnownIn(edition_, field)) {
        index_.findIntField(parent_, prefix_, indexedCode(field.code, n), number);
    }
    return std::min(number, most);
}

std::optional<int> FieldLookup::openCount(const Field& field, std::span<const Field> items, int n) {
    int number = 0;
    if (!isKnownIn(edition_, field) ||
        !index_.findIntField(parent_, prefix_, indexedCode(field.code, n), number)) {
        return std::nullopt;
    }
    return number <= kBelieved ? number : std::min(number, kBelieved + commandsOf(items, n));
}

int FieldLookup::commandsOf(std::span<const Field> items, int n) {
    if (!counted_) {
        index_.forEach([&](std::string_view code, std::string_view) {
            const auto dash = code.rfind('-');
            ++present_[lowerAscii(code.substr(0, dash == std::string_view::npos ? 0 : dash))];
        });
        counted_ = true;
    }
    int present = 0;
    for (const auto& item : items) {
        const auto code = prefix_ + std::string(plainCode(item.code)) + "-" + std::to_string(n);
        const auto it = present_.find(lowerAscii(code));
        present += it == present_.end() ? 0 : it->second;
    }
    return present;
}

}  // namespace kavu
