#include "pcm/display/DisplayPlaces.h"

#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <array>
#include <optional>
#include <vector>

namespace kavu {

namespace {

struct KeptPlace {
    std::string_view entry;  ///< as it is stored
    std::string_view stream;
    std::array<int, 4> numbers{};
};

/// "12,3,10,0,NAME"
std::optional<KeptPlace> readPlace(std::string_view entry) {
    KeptPlace kept{.entry = entry, .stream = {}, .numbers = {}};
    for (auto& number : kept.numbers) {
        const auto comma = entry.find(',');
        if (comma == std::string_view::npos) {
            return std::nullopt;
        }
        number = leadingInt(entry.substr(0, comma));
        entry.remove_prefix(comma + 1);
    }
    kept.stream = entry;
    return kept;
}

std::vector<KeptPlace> readPlaces(std::string_view setting) {
    std::vector<KeptPlace> places;
    while (!setting.empty()) {
        const auto end = setting.find(';');
        if (const auto kept = readPlace(setting.substr(0, end))) {
            places.push_back(*kept);
        }
        setting.remove_prefix(end == std::string_view::npos ? setting.size() : end + 1);
    }
    return places;
}

}  // namespace

DisplayPlace displayPlace(std::string_view setting, std::string_view stream) {
    for (const auto& kept : readPlaces(setting)) {
        if (kept.stream == stream) {
            return {{kept.numbers[0], kept.numbers[1]}, kept.numbers[2], kept.numbers[3]};
        }
    }
    return {};
}

std::string withDisplayPlace(std::string_view setting, std::string_view stream,
                             const DisplayPlace& place) {
    std::string text;
    int count = 0;
    if (!stream.empty() && stream.find(';') == std::string_view::npos && isPrintable(stream)) {
        text = formatPrintf("%d,%d,%d,%d,%s", place.selected.word, place.selected.frame,
                            place.firstWord, place.scrolledRows, stream);
        count = 1;
    }
    for (const auto& kept : readPlaces(setting)) {
        if (kept.stream != stream && count < kMostDisplayPlaces) {
            text += (text.empty() ? "" : ";") + std::string(kept.entry);
            ++count;
        }
    }
    return text;
}

}  // namespace kavu
