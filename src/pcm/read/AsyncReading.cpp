#include "pcm/read/AsyncReading.h"

#include "core/text/Text.h"
#include "pcm/PcmLoad.h"
#include "pcm/model/AsyncCodes.h"
#include "pcm/structure/AsyncEdit.h"
#include "vocabulary/DGroupFields.h"
#include "vocabulary/SubframeCodes.h"

namespace kavu {

namespace {

constexpr int kMostMaskBits = 64;
constexpr int kDuplicateLocation = 373;

/// Reads the commands of one record; `number` counts those of its kind in the file.
class AsyncReader {
  public:
    AsyncReader(PcmLoad& load, const AsyncCodes& codes, int number)
        : load_(load), format_(load.format), codes_(codes), n_(number) {}

    /// False on a cancel.
    bool read() {
        format_.asyncFormats.emplace_back();
        format_.asyncFormats.back().isDataMerge = codes_.isDataMerge;
        record_ = format_.asyncCount();
        const auto from = load_.readSoFar();
        if (readRecord()) {
            record().fileRow = n_;
        } else {
            removeAsyncFormat(format_, nullptr, record_, -1, -1);
            load_.leaveOut(from);
        }
        return !cancelled_;
    }

  private:
    AsyncFormat& record() { return format_.asyncFormats[static_cast<std::size_t>(record_ - 1)]; }
    std::string name() { return record().dataLinkName.str(); }
    std::string code(const Field& field) const { return fieldCode(field.code, {n_}); }
    std::string code(const Field& field, int k) const { return fieldCode(field.code, {n_, k}); }
    static int limitOf(const Field& field) { return static_cast<int>(field.limit); }
    std::optional<std::string_view> text(const Field& field) {
        return load_.text(code(field), limitOf(field));
    }

    bool readRecord() {
        readName();
        if (codes_.isDataMerge) {
            readMerge(kMergeTexts);
        }
        if (!readKind() || !readLocations()) {
            return false;
        }
        if (codes_.isDataMerge) {
            readMerge(kMergeValues);
        }
        return true;
    }

    void readName() {
        if (const auto link = text(codes_.name)) {
            record().dataLinkName = *link;
            return;
        }
        record().dataLinkName = formatPrintf(codes_.defaultName, n_);
        load_.log(191, title::kErrorReadingFormat, codes_.streamWord, load_.prefix,
                  code(codes_.name));
    }

    void readMerge(std::span<const MergeField> fields) {
        const AsyncFormat fresh;
        for (const auto& row : fields) {
            if (row.number != nullptr) {
                record().*row.number = load_.number(code(row.field)).value_or(fresh.*row.number);
                continue;
            }
            // Kept whole: the limit is that of the dialog.
            const auto value = load_.text(code(row.field), 0).value_or("");
            record().*row.text = value.empty() ? fresh.*row.text : std::string(value);
        }
    }

    bool readKind() {
        count_ = std::max(0, leadingInt(text(codes_.supercom).value_or(kNotSupercommutated)));
        record().supercom = count_ == 0 ? std::string(kNotSupercommutated) : std::to_string(count_);
        record().locationMode = kNoLocationMode;
        if (count_ == 0) {
            count_ = 1;
            return true;
        }
        const auto mode = text(codes_.mode).value_or(kNoLocationMode);
        if (equalsIgnoreCase(mode, kNoLocationMode)) {
            load_.log(192, title::kErrorReadingFormat, codes_.lowerWord, n_, name(), load_.prefix,
                      code(codes_.mode));
            return false;
        }
        record().locationMode = mode;
        for (const auto known : {kFirstAndInterval, kEveryLocation}) {
            if (equalsIgnoreCase(mode, known)) {
                record().locationMode = known;
            }
        }
        return true;
    }

    /// The word of a location from its command; nothing with message 194.
    std::optional<int> readWord(int k) {
        const auto word = load_.number(code(codes_.location, k));
        if (!word && !load_.logIsFull()) {
            load_.log(194, title::kErrorReadingFormat, load_.prefix, code(codes_.location, k),
                      codes_.word, n_, name());
        }
        return word;
    }

    bool readLocations() {
        const auto first = readWord(1);
        if (!first || !checkAsyncWord(*first)) {
            return false;
        }
        const bool stepped = record().locationMode == kFirstAndInterval;
        if (stepped) {
            const auto interval = load_.number(code(codes_.interval));
            if (!interval) {
                load_.log(193, title::kErrorReadingFormat, codes_.word, n_, name(), load_.prefix,
                          code(codes_.interval));
                return false;
            }
            record().interval = *interval;
        }
        if (!readLocation(*first, 1)) {
            return false;
        }
        const bool every = record().locationMode == kEveryLocation;
        for (int k = 2; k <= count_ && (every || stepped); ++k) {
            if (load_.cancelled()) {
                cancelled_ = true;
                return false;
            }
            const auto from = load_.readSoFar();
            const auto word = every ? readWord(k) : steppedWord(*first, k);
            // A later location where the stream cannot be is left out.
            if (!word || !checkAsyncWord(*word) || !isNew(*word)) {
                load_.leaveOut(from);
            } else if (!readLocation(*word, k)) {
                return false;
            }
        }
        // The slots are found again by ascending word when they are written.
        std::stable_sort(record().locations.begin(), record().locations.end(),
                         [](const auto& a, const auto& b) { return a.fwp < b.fwp; });
        return true;
    }

    std::optional<int> steppedWord(int first, int k) {
        const auto word = first + static_cast<std::int64_t>(k - 1) * record().interval;
        return static_cast<int>(std::min<std::int64_t>(word, INT32_MAX));
    }

    /// A record takes a word once.
    bool isNew(int fwp) {
        for (const auto& location : record().locations) {
            if (location.fwp == fwp) {
                load_.log(kDuplicateLocation, title::kErrorReadingFormat);
                return false;
            }
        }
        return true;
    }

    bool isPlainWord(int fwp) const {
        const auto type = format_.wordType(fwp);
        const auto* const subframe = format_.subframeOfWord(fwp);
        return type == WordType::Minor ||
               (type == WordType::Subframe && subframe != nullptr && subframe->hidden);
    }

    bool checkAsyncWord(int fwp) {
        if (!format_.isDataWord(fwp)) {
            load_.log(195, title::kErrorReadingFormat, codes_.word, fwp, n_, name());
            return false;
        }
        if (!isPlainWord(fwp)) {
            load_.log(196, title::kErrorReadingFormat, codes_.word, fwp, n_, name());
            return false;
        }
        return true;
    }

    bool readLocation(int fwp, int k) {
        const auto mask = codes_.isDataMerge ? FixedText<64>(kFullWord) : readMask(fwp, k);
        AsyncLocation location;
        location.fwp = fwp;
        location.frames = readRanges(k);
        const bool placed = placeSlots(location, mask);
        if (!placed) {
            const auto& range = location.frames.front();
            load_.log(197, title::kErrorReadingFormat, codes_.word, fwp, range.start,
                      range.interval, range.end);
            return false;
        }
        record().locations.push_back(std::move(location));
        return true;
    }

    FixedText<64> readMask(int fwp, int k) {
        const int most = format_.wordLength(fwp);
        int length = load_.number(code(codes_.length, k)).value_or(most);
        if (length < 1 || length > most) {
            load_.log(207, title::kErrorReadingFormat, load_.prefix, code(codes_.length, k), length,
                      most);
            load_.corrected();
            length = most;
        }
        const auto mask = load_.text(code(codes_.mask, k), limitOf(codes_.mask));
        if (mask && mask->find_first_not_of("01") == std::string_view::npos) {
            return *mask;
        }
        if (mask) {
            load_.corrected();
        }
        return std::string(static_cast<std::size_t>(std::clamp(length, 0, kMostMaskBits)), '1');
    }

    std::vector<FrameRange> readRanges(int k) {
        const FrameRange all{1, 1, format_.numberOfFrames};
        const auto text = isKnownIn(load_.edition(), codes_.ranges)
                              ? load_.text(code(codes_.ranges, k), 0)
                              : std::nullopt;
        int count = text ? leadingInt(*text) : 0;
        if (count > format_.numberOfFrames) {
            count = format_.numberOfFrames;
            load_.corrected();
        }
        std::vector<FrameRange> ranges;
        for (int j = 1; j <= count; ++j) {
            ranges.push_back(readRange(k, j, all));
        }
        return ranges.empty() ? std::vector{all} : ranges;
    }

    std::optional<int> signedNumber(const Field& field, int k, int j) {
        const auto value = load_.text(fieldCode(field.code, {n_, k, j}), 0);
        return value ? std::optional(leadingInt(*value)) : std::nullopt;
    }

    FrameRange readRange(int k, int j, const FrameRange& all) {
        auto range = all;
        range.start = signedNumber(codes_.start, k, j).value_or(1);
        if (range.start < 1 || range.start > all.end) {
            replaced(codes_.start, k, j,
                     "Start frame can not be less than 1, or greater than the number of frames in "
                     "this format",
                     range.start, 1);
        }
        range.interval = signedNumber(codes_.frameStep, k, j).value_or(1);
        if (range.interval < 0) {
            replaced(codes_.frameStep, k, j, "Frame interval can not be less than 0",
                     range.interval, 1);
        }
        range.end = signedNumber(codes_.end, k, j).value_or(all.end);
        if (range.end < range.start) {
            replaced(codes_.end, k, j, "End frame can not be less than start frame", range.end,
                     all.end);
        } else if (range.end > all.end) {
            replaced(codes_.end, k, j,
                     "End frame can not be greater than the number of frames in this format",
                     range.end, all.end);
        }
        return range;
    }

    void replaced(const Field& field, int k, int j, std::string_view reason, int& value,
                  int replacement) {
        load_.log(214, title::kIllegalValueFound, name(), reason, load_.prefix,
                  fieldCode(field.code, {n_, k, j}), value, replacement);
        load_.corrected();
        value = replacement;
    }

    /// A plain word has its slot in frame 1. A word with a hidden subframe has one in each
    /// frame that a range names.
    bool placeSlots(const AsyncLocation& location, const FixedText<64>& mask) {
        return placeAsyncSlots(format_, load_.parent, record_, location, mask);
    }

    PcmLoad& load_;
    PcmFormat& format_;
    const AsyncCodes& codes_;
    int n_;
    int record_ = 0;
    int count_ = 1;
    bool cancelled_ = false;
};

bool readRecords(PcmLoad& load, const AsyncCodes& codes, int count) {
    for (int n = 1; n <= count; ++n) {
        if (load.cancelled() || !AsyncReader(load, codes, n).read()) {
            return false;
        }
    }
    return true;
}

}  // namespace

bool readAsyncEmbedded(PcmLoad& load) {
    const int count = load.number(kAsyncEmbeddedCodes.count.code).value_or(0);
    if (count > kMostAsyncFormats) {
        load.log(187, title::kError, kMostAsyncFormats);
        return true;
    }
    return readRecords(load, kAsyncEmbeddedCodes, count);
}

bool readDataMerge(PcmLoad& load) {
    const int count = load.number(kDataMergeCodes.count.code).value_or(0);
    if (count == 0) {
        return true;
    }
    // One less than the limit: a file of 18 records is refused as soon as one of them is a
    // merge, as it always was.
    if (std::int64_t{load.format.asyncCount()} + count + 1 > kMostAsyncFormats) {
        load.log(215, title::kError, kMostAsyncFormats);
        return true;
    }
    return readRecords(load, kDataMergeCodes, count);
}

}  // namespace kavu
