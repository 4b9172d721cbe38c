#include "sdk/SdkGroup.h"

#include "core/text/Text.h"

#include <algorithm>

namespace kavu {

std::optional<std::string_view> SdkGroup::value(std::string_view field) const {
    const auto found = commands_.peek(prefix_ + std::string(field));
    return found ? std::optional(found->value) : std::nullopt;
}

std::optional<int> SdkGroup::number(std::string_view field) const {
    const auto text = value(field);
    return text ? std::optional(std::max(0, leadingInt(*text))) : std::nullopt;
}

}  // namespace kavu
