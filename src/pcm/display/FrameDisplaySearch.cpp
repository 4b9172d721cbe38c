#include "pcm/display/FrameDisplaySearch.h"

#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <algorithm>
#include <charconv>

namespace kavu {

namespace {

/// Removes a number, with blanks before it, from the front of a text.
std::optional<int> takeNumber(std::string_view& text) {
    const auto begin = text.find_first_not_of(" \t\r\n");
    if (begin == std::string_view::npos) {
        return std::nullopt;
    }
    text.remove_prefix(begin);
    if (text.size() > 1 && text.front() == '+' && isDigit(text[1])) {
        text.remove_prefix(1);
    }
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc()) {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return value;
}

bool isBefore(FramePlace a, FramePlace b) {
    return a.word != b.word ? a.word < b.word : a.frame < b.frame;
}

bool holdsText(std::string_view name, std::string_view text) {
    return std::search(name.begin(), name.end(), text.begin(), text.end(), [](char a, char b) {
               return toUpperAscii(a) == toUpperAscii(b);
           }) != name.end();
}

/// One walk through the frame for all async formats of such names.
void addAsyncPlaces(const PcmFormat& format, std::string_view text,
                    std::vector<FoundPlace>& found) {
    std::vector<bool> wanted(static_cast<std::size_t>(format.asyncCount()) + 1);
    for (int record = 1; record <= format.asyncCount(); ++record) {
        const auto at = static_cast<std::size_t>(record);
        wanted[at] = holdsText(format.asyncFormats[at - 1].dataLinkName.view(), text);
    }
    if (std::find(wanted.begin(), wanted.end(), true) == wanted.end()) {
        return;
    }
    const auto& cells = format.cells();
    for (int fwp = 1; fwp < format.wordsPerMinorFrame; ++fwp) {
        const int depth = std::min(cells.cellCount(fwp), format.numberOfFrames);
        for (int index = 1; index <= depth; ++index) {
            for (auto cell = cells.cell(fwp, index); cell; cell = cells.next(cell)) {
                const int record = cells.asyncNumber(cell);
                if (record >= 1 && record <= format.asyncCount() &&
                    wanted[static_cast<std::size_t>(record)]) {
                    const auto& async = format.asyncFormats[static_cast<std::size_t>(record - 1)];
                    found.push_back({{fwp, index}, async.dataLinkName.str()});
                }
            }
        }
    }
}

}  // namespace

std::optional<FramePlace> parseGoTo(std::string_view text, bool isWordField, FramePlace present) {
    const auto first = takeNumber(text);
    if (!first) {
        return std::nullopt;
    }
    if (const auto second = takeNumber(text)) {
        return FramePlace{*first, *second};
    }
    return isWordField ? FramePlace{*first, present.frame} : FramePlace{present.word, *first};
}

FramePlace findMeasurement(const PcmFormat& format, std::string_view name) {
    const auto hit = Occurrences(format, name).next();
    return hit ? FramePlace{hit->fwp, hit->fn} : FramePlace{};
}

FramePlace findSubframeWord(const PcmFormat& format, std::string_view name) {
    for (int fwp = 1; fwp < format.wordsPerMinorFrame; ++fwp) {
        const auto type = format.wordType(fwp);
        const auto* const counter = format.idCounterOfWord(fwp);
        const auto* const subframe = format.subframeOfWord(fwp);
        if ((type == WordType::IdCounter && counter != nullptr && counter->name == name) ||
            (type == WordType::Subframe && subframe != nullptr && subframe->name == name)) {
            return {fwp, 1};
        }
    }
    return {};
}

std::vector<MeasurementRow> measurementRows(const PcmFormat& format) {
    std::vector<MeasurementRow> rows;
    format.forEachMeasurement([&](CellRef cell, int fwp, int index) {
        const auto& measurement = format.cells().measurement(cell);
        rows.push_back({measurement.name.str(), measurement.locationType.str(), {fwp, index}});
        return true;
    });
    return rows;
}

std::optional<std::string> goToProblem(const FrameDisplay& display,
                                       const std::optional<FramePlace>& to) {
    if (!to) {
        return "Enter a number, or two: word and frame.";
    }
    if (to->word < 0 || to->word >= display.words()) {
        return formatPrintf("There is no FWP %d: this frame has the words 0 to %d.", to->word,
                            display.words() - 1);
    }
    if (to->frame < 1 || to->frame > display.frames()) {
        return formatPrintf("There is no FN %d: this stream has the frames 1 to %d.", to->frame,
                            display.frames());
    }
    if (display.depth(to->word) < 1) {
        return formatPrintf("FWP %d has no cells.", to->word);
    }
    return std::nullopt;
}

std::vector<FoundPlace> findPlaces(const PcmFormat& format, std::string_view text) {
    std::vector<FoundPlace> found;
    if (text.empty()) {
        return found;
    }
    const auto& cells = format.cells();
    const auto takePlaces = [&](const std::string& name) {
        auto places = cells.places(name);
        places.erase(std::unique(places.begin(), places.end()), places.end());
        for (const auto& place : places) {
            if (place.index <= format.numberOfFrames) {
                found.push_back({{place.word, place.index}, name});
            }
        }
    };
    for (const auto& row : measurementRows(format)) {
        if (holdsText(row.name, text)) {
            takePlaces(row.name);
        }
    }
    addAsyncPlaces(format, text, found);
    std::stable_sort(found.begin(), found.end(),
                     [](const auto& a, const auto& b) { return isBefore(a.at, b.at); });
    return found;
}

std::optional<std::size_t> nextPlace(const std::vector<FoundPlace>& places, FramePlace from,
                                     bool includeFrom, bool forward) {
    if (places.empty()) {
        return std::nullopt;
    }
    // Several names may have one place: then the next one is elsewhere.
    const auto first =
        std::partition_point(places.begin(), places.end(),
                             [&](const FoundPlace& place) { return isBefore(place.at, from); });
    const auto behind = std::partition_point(
        first, places.end(), [&](const FoundPlace& place) { return !isBefore(from, place.at); });
    const auto position = [&](auto at) { return static_cast<std::size_t>(at - places.begin()); };
    if (!forward) {
        return first == places.begin() ? places.size() - 1 : position(first) - 1;
    }
    const auto next = includeFrom ? first : behind;
    return next == places.end() ? 0 : position(next);
}

}  // namespace kavu
