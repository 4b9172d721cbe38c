#include "vocabulary/Vocabularies.h"

#include "core/text/Text.h"
#include "vocabulary/AGroupFields.h"
#include "vocabulary/BGroupFields.h"
#include "vocabulary/CGroupFields.h"
#include "vocabulary/DGroupFields.h"
#include "vocabulary/GGroupFields.h"
#include "vocabulary/MGroupFields.h"
#include "vocabulary/PGroupFields.h"
#include "vocabulary/RGroupFields.h"
#include "vocabulary/SGroupFields.h"
#include "vocabulary/TGroupFields.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kavu {

namespace {

/// The first of the fields around a place that have at least so many indices.
std::size_t firstOfRun(std::span<const Field> table, std::size_t place, int indices) {
    while (place > 0 && indexCountOf(table[place - 1].code) >= indices) {
        --place;
    }
    return place;
}

}  // namespace

std::span<const GroupVocabulary> vocabularies() {
    static const auto kVocabularies = std::to_array<GroupVocabulary>({
        {'G', "General information", generalVocabulary()},
        {'T', "Transmission", transmissionFields()},
        {'R', "Recorder/reproducer", recorderVocabulary()},
        {'M', "Multiplex/modulation", multiplexFields()},
        {'P', "PCM format", pcmVocabulary()},
        {'D', "Measurement description", measurementVocabulary()},
        {'B', "Bus data", busVocabulary()},
        {'S', "Message data", streamDataVocabulary()},
        {'A', "PAM", pamVocabulary()},
        {'C', "Data conversion", conversionVocabulary()},
    });
    return kVocabularies;
}

const GroupVocabulary* findVocabulary(char letter) {
    const auto all = vocabularies();
    const auto it = std::find_if(all.begin(), all.end(),
                                 [letter](const auto& row) { return row.letter == letter; });
    return it == all.end() ? nullptr : &*it;
}

std::vector<VocabularyMatch> matchVocabulary(std::span<const Field> table, std::string_view field) {
    constexpr int kMostNumber = 999'999;
    const auto path = parseField(field);
    if (!path || std::any_of(path->at.begin(), path->at.begin() + path->count,
                             [](int number) { return number > kMostNumber; })) {
        return {};
    }
    std::vector<VocabularyMatch> matches;
    for (const auto& row : table) {
        if (indexCountOf(row.code) == path->count &&
            equalsIgnoreCase(stemOf(row.code), path->stem)) {
            matches.push_back({&row, *path});
        }
    }
    return matches;
}

std::vector<VocabularyMatch> matchVocabulary(char letter, std::string_view field) {
    const auto* const vocabulary = findVocabulary(letter);
    return vocabulary == nullptr ? std::vector<VocabularyMatch>()
                                 : matchVocabulary(vocabulary->fields, field);
}

bool isWrittenBefore(std::span<const Field> table, const VocabularyMatch& first,
                     const VocabularyMatch& second) {
    const auto places = std::to_array({static_cast<std::size_t>(first.field - table.data()),
                                       static_cast<std::size_t>(second.field - table.data())});
    // From the outermost list to the innermost one that both are in: which list, then which row.
    const int levels = std::min(first.path.count, second.path.count);
    for (int level = 0; level < levels; ++level) {
        const auto list = firstOfRun(table, places[0], level + 1);
        const auto other = firstOfRun(table, places[1], level + 1);
        const auto row = static_cast<std::size_t>(level);
        if (list != other || first.path.at[row] != second.path.at[row]) {
            return std::pair(list, first.path.at[row]) < std::pair(other, second.path.at[row]);
        }
    }
    return places[0] < places[1];
}

}  // namespace kavu
