// Reading the word/frame locations of a measurement.
#include "pcm/read/MeasurementInput.h"
#include "pcm/read/MeasurementPlacing.h"
#include "pcm/structure/SubframeEdit.h"

#include <algorithm>

namespace kavu {

namespace {

class WordFrameReader {
  public:
    explicit WordFrameReader(MeasurementInput& input)
        : input_(input), load_(input.load), format_(input.format) {
        record(measurement_field::kName, {}, input.name());
        record(measurement_field::kLocationType, {}, input.cell.locationType);
        head_ = commands_.size();
    }

    void read();

  private:
    /// Adds a command to the record of what was read.
    void record(const Field& field, std::initializer_list<int> indices, std::string_view value) {
        commands_.append(load_.prefix).append(input_.code(field, indices));
        commands_.append(":").append(value).append(";");
        if (commands_.size() > kLongestRecord) {
            // Of an endless measurement the first two commands and the last ones are enough.
            const auto cut = commands_.find(';', commands_.size() - kLongestRecord / 2);
            commands_.erase(head_, cut + 1 - head_);
        }
    }
    std::optional<std::string_view> text(const Field& field, std::initializer_list<int> indices) {
        const auto value = input_.text(field, indices);
        if (value) {
            record(field, indices, *value);
        }
        return value;
    }
    std::optional<int> number(const Field& field, std::initializer_list<int> indices) {
        const auto value = text(field, indices);
        return value ? std::optional(std::max(0, leadingInt(*value))) : std::nullopt;
    }
    std::optional<int> signedNumber(const Field& field, std::initializer_list<int> indices) {
        const auto value = text(field, indices);
        return value ? std::optional(leadingInt(*value)) : std::nullopt;
    }

    /// True if there was any command of the location.
    bool readLocation(int k, WordFrameLocation& location);
    bool readFragments(int k, int count, bool hasLength, WordFrameLocation& location);
    std::optional<WordFrameFragment> readFragment(int k, int f);
    bool readWords(int k, int f, WordFrameFragment& fragment);
    bool readFrames(int k, int f, WordFrameFragment& fragment);
    void reportMissing(std::string_view what, const Field& field, int k, int f);
    void takeEveryFrame(WordFrameFragment& fragment);
    [[nodiscard]] int sumOfMasks(const WordFrameLocation& location) const;
    /// False if a subframe cannot be made; the location then has no place.
    bool makeSubframes(WordFrameLocation& location);
    void order(int k, WordFrameLocation& location);

    MeasurementInput& input_;
    PcmLoad& load_;
    PcmFormat& format_;
    static constexpr std::size_t kLongestRecord = 64 * 1024;
    std::string commands_;
    std::size_t head_ = 0;
    bool present_ = false;  ///< a fragment of the location has been found
};

void WordFrameReader::reportMissing(std::string_view what, const Field& field, int k, int f) {
    load_.log(284, title::kErrorReadingMeasurement, input_.name(), what, load_.prefix,
              input_.code(field, {k, f}));
    load_.logLastCommands(commands_);
    load_.corrected();
}

bool WordFrameReader::readWords(int k, int f, WordFrameFragment& fragment) {
    const auto start = number(word_frame_field::kWord, {k, f});
    if (!start) {
        reportMissing("Start Word", word_frame_field::kWord, k, f);
        return false;
    }
    present_ = true;
    fragment.startWord = *start;
    fragment.wordInterval = number(word_frame_field::kWordInterval, {k, f}).value_or(0);
    const int last = format_.wordsPerMinorFrame - 1;
    fragment.endWord = fragment.wordInterval > 0 ? last : *start;
    if (load_.edition() >= 2009) {
        if (const auto end = signedNumber(word_frame_field::kEndWord, {k, f})) {
            fragment.endWord = *end < 0 ? last : *end;
            load_.result = *end < 0 ? 1 : load_.result;
        }
    }
    return true;
}

bool WordFrameReader::readFrames(int k, int f, WordFrameFragment& fragment) {
    const auto start = number(word_frame_field::kFrame, {k, f});
    if (!start) {
        reportMissing("Start Frame", word_frame_field::kFrame, k, f);
        return false;
    }
    fragment.startFrame = *start;
    fragment.frameInterval = number(word_frame_field::kFrameInterval, {k, f}).value_or(0);
    fragment.endFrame = fragment.frameInterval > 0 ? format_.numberOfFrames : *start;
    if (load_.edition() >= 2009) {
        if (const auto end = signedNumber(word_frame_field::kEndFrame, {k, f})) {
            fragment.endFrame = *end < 0 ? format_.numberOfFrames : *end;
            load_.result = *end < 0 ? 1 : load_.result;
        }
    }
    return true;
}

/// A plain word is the same in every frame, so frame 1 alone means all of them.
void WordFrameReader::takeEveryFrame(WordFrameFragment& fragment) {
    if (load_.edition() < 2009 || fragment.startFrame != 1 || fragment.frameInterval != 0 ||
        fragment.endFrame != 1) {
        return;
    }
    for (int fwp = fragment.startWord; fwp <= fragment.endWord; fwp += fragment.wordInterval) {
        if (format_.wordType(fwp) != WordType::Minor) {
            return;
        }
        if (fragment.wordInterval < 1) {
            break;
        }
    }
    fragment.frameInterval = 1;
    fragment.endFrame = format_.numberOfFrames;
    load_.corrected();
}

std::optional<WordFrameFragment> WordFrameReader::readFragment(int k, int f) {
    WordFrameFragment fragment;
    if (!readWords(k, f, fragment) || !readFrames(k, f, fragment)) {
        return std::nullopt;
    }
    if (!checkWordFrameFragment(load_, input_.name(), fragment)) {
        load_.logLastCommands(commands_);
        load_.corrected();
        return std::nullopt;
    }
    fragment.mask = text(word_frame_field::kMask, {k, f}).value_or(std::string_view());
    const auto order = text(word_frame_field::kTransferOrder, {k, f}).value_or(std::string_view());
    fragment.transferOrder = order.starts_with('M') || order.starts_with('L') ? order[0] : 'D';
    fragment.fragmentPosition = number(word_frame_field::kPosition, {k, f}).value_or(0);
    takeEveryFrame(fragment);
    return fragment;
}

int WordFrameReader::sumOfMasks(const WordFrameLocation& location) const {
    std::int64_t sum = 0;
    for (const auto& fragment : location.fragments) {
        sum += format_.maskBits(fragment.startWord, fragment.mask, false);
    }
    return static_cast<int>(std::min<std::int64_t>(sum, INT32_MAX));
}

bool WordFrameReader::readFragments(int k, int count, bool hasLength, WordFrameLocation& location) {
    int missing = 0;
    for (int f = 1; f <= count && missing < MeasurementInput::kMostMissing; ++f) {
        if (load_.cancelled()) {
            return false;
        }
        present_ = false;
        const auto from = input_.readSoFar();
        const auto fragment = readFragment(k, f);
        missing = present_ ? 0 : missing + 1;
        if (load_.abort) {
            return false;
        }
        if (fragment) {
            location.fragments.push_back(*fragment);
        } else {
            input_.leaveOut(from);
        }
    }
    const int sum = count > 1 ? sumOfMasks(location) : 0;
    if (count > 1 && !hasLength) {
        location.wordLength = sum;
    } else if (count == 1 && !location.fragments.empty()) {
        // The length is written only for several fragments; for one it is the word's.
        location.wordLength = format_.wordLength(location.fragments.front().startWord);
    }
    if (location.fragmentCount() > 1 && hasLength && sum != location.wordLength) {
        load_.log(294, title::kErrorReadingMeasurement, input_.name(), sum);
        location.wordLength = sum;
        load_.corrected();
    }
    return true;
}

bool WordFrameReader::makeSubframes(WordFrameLocation& location) {
    for (const auto& fragment : location.fragments) {
        if (!giveHiddenSubframes(load_, input_.name(), fragment)) {
            location.fragments.clear();
            return false;
        }
    }
    return true;
}

/// Sorts the fragments by position, and renumbers the positions 1, 2, 3 and so on.
void WordFrameReader::order(int k, WordFrameLocation& location) {
    auto& fragments = location.fragments;
    if (fragments.empty()) {
        return;
    }
    if (fragments.back().fragmentPosition <= 0) {
        fragments.back().fragmentPosition = 1;
    }
    std::stable_sort(fragments.begin(), fragments.end(), [](const auto& a, const auto& b) {
        return a.fragmentPosition < b.fragmentPosition;
    });
    bool reported = false;
    int position = 0;
    for (auto& fragment : fragments) {
        ++position;
        if (fragment.fragmentPosition != position && !reported) {
            load_.log(288, title::kErrorReadingMeasurement, input_.name(), k, position);
            load_.corrected();
            reported = true;
        }
        fragment.fragmentPosition = position;
    }
}

bool WordFrameReader::readLocation(int k, WordFrameLocation& location) {
    const auto from = input_.readSoFar();
    const auto told = number(word_frame_field::kFragments, {k});
    const int count = std::max(1, told.value_or(1));
    const auto length = count > 1 ? number(word_frame_field::kLength, {k}) : std::nullopt;
    location.wordLength = length.value_or(0);
    if (!readFragments(k, count, length.has_value(), location)) {
        return true;
    }
    if (!makeSubframes(location)) {
        input_.leaveOut(from);
    }
    order(k, location);
    for (const auto& fragment : location.fragments) {
        placeWordFrameFragment(load_, input_.cell, fragment);
        if (load_.abort) {
            break;
        }
    }
    return told.has_value() || present_;
}

void WordFrameReader::read() {
    std::string counter;
    if (load_.edition() >= 2011 && countIdCounters(format_) > 1) {
        counter = text(word_frame_field::kCounter, {}).value_or(std::string_view());
    }
    const auto stated = text(word_frame_field::kCount, {});
    const int count = input_.places(word_frame_field::kCount, stated.value_or(std::string_view()));
    if (count < 1) {
        return;
    }
    const int entry = format_.addWordFrameDefinition(-1, 0);
    format_.wordFrameDefinition(entry)->idCounterName = counter;
    input_.cell.wordFrameIndex = entry;
    input_.cell.locationCount = count;
    int missing = 0;
    int present = 0;
    for (int k = 1; k <= count && missing < MeasurementInput::kMostMissing && !load_.abort; ++k) {
        WordFrameLocation location;
        const bool found = readLocation(k, location);
        missing = found ? 0 : missing + 1;
        present = found ? k : present;
        format_.wordFrameDefinition(entry)->locations.push_back(std::move(location));
    }
    auto& locations = format_.wordFrameDefinition(entry)->locations;
    if (static_cast<int>(locations.size()) < count && !load_.abort) {
        // The count was far beyond what the file holds.
        locations.resize(static_cast<std::size_t>(std::max(1, present)));
        input_.setLocationCount(static_cast<int>(locations.size()));
        load_.corrected();
    }
}

}  // namespace

void readWordFrame(MeasurementInput& input) {
    WordFrameReader(input).read();
}

}  // namespace kavu
