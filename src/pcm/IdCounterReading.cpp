#include "core/Text.h"
#include "pcm/PcmLoad.h"
#include "pcm/SubframeCodes.h"
#include "pcm/SubframeEdit.h"
#include "pcm/SubframeNumbers.h"
#include "pcm/SubframeReading.h"

#include <set>

namespace kavu {

namespace {

constexpr int kTitleFormat = 88;
constexpr int kTitleValue = 86;

/// Reads the commands of one counter into its entry, whose number counts from 1.
class CounterReader {
  public:
    CounterReader(PcmLoad& load, int number)
        : load_(load),
          format_(load.format),
          number_(number),
          counter_(format_.idCounters[static_cast<std::size_t>(number - 1)]) {}

    /// False if the rest of the counter's commands, its subframes among them, is left out.
    bool read() {
        if (!readName()) {
            return false;
        }
        readType();
        if (!readWord()) {
            return false;
        }
        readLengths();
        readFrames();
        checkEndValue();
        return true;
    }

  private:
    std::string code(std::string_view format) const { return PcmLoad::code(format, number_); }
    std::optional<std::string_view> text(std::string_view format, int limit) {
        return load_.text(format, limit, number_);
    }

    bool readName() {
        const auto found = text(subframe_code::kCounterName, 32);
        const auto name = found ? std::string(*found) : generateIdCounterName(format_);
        if (!found) {
            load_.log(202, title::kNote, load_.prefix, code(subframe_code::kCounterName), number_,
                      name);
        }
        if (idCounterNameExists(format_, name)) {
            load_.log(204, kTitleFormat, name, load_.prefix, code(subframe_code::kCounterName));
            return false;
        }
        counter_.name = name;
        return true;
    }

    void readType() {
        if (const auto type = text(subframe_code::kCounterType, 2)) {
            counter_.type = *type;
            return;
        }
        load_.log(200, kTitleFormat, load_.prefix, code(subframe_code::kCounterType));
        counter_.type = "ID";
        load_.corrected();
    }

    bool readWord() {
        const auto word = load_.number(subframe_code::kCounterWord, number_);
        if (!word) {
            return true;
        }
        if (!format_.isDataWord(*word)) {
            load_.log(179, kTitleFormat, counter_.name.view(), *word, format_.wordsPerMinorFrame,
                      format_.wordsPerMinorFrame - 1);
            load_.corrected();
            return false;
        }
        word_ = *word;
        format_.setWord(word_, WordType::IdCounter, number_ - 1, -1);
        return true;
    }

    void readLengths() {
        counter_.wordLength = text(subframe_code::kWordLength, 2).value_or("");
        counter_.msbStartBit = "1";
        if (const auto bit = text(subframe_code::kMsbStartBit, 2)) {
            if (leadingInt(*bit) < 1) {
                load_.log(210, kTitleValue, counter_.name.view(), load_.prefix,
                          code(subframe_code::kMsbStartBit), *bit);
                load_.corrected();
            } else {
                counter_.msbStartBit = *bit;
            }
        }
        if (const auto length = text(subframe_code::kCounterLength, 2)) {
            counter_.counterLength = *length;
        } else if (!counter_.wordLength.empty()) {
            counter_.counterLength = counter_.wordLength;
            load_.log(199, kTitleFormat, load_.prefix, code(subframe_code::kCounterLength),
                      counter_.counterLength.view());
        }
        counter_.transferOrder = text(subframe_code::kTransferOrder, 1).value_or("");
        counter_.initialValue = text(subframe_code::kInitialValue, 3).value_or("1");
    }

    /// A frame number of the file, or `fallback` in place of one that is not in the range.
    FixedText<3> readFrame(std::string_view format, std::string_view which, int least,
                           int fallback) {
        const auto found = text(format, 3);
        const int most = format_.numberOfFrames;
        if (found && leadingInt(*found) >= least && leadingInt(*found) <= most) {
            return *found;
        }
        load_.log(201, kTitleValue, counter_.name.view(), which, load_.prefix, code(format),
                  found.value_or("<none>"), least, most, fallback);
        load_.corrected();
        return std::to_string(fallback);
    }

    void readFrames() {
        counter_.startFrame = readFrame(subframe_code::kStartFrame, "starting", 1, 1);
        endValueFound_ = text(subframe_code::kEndValue, 3);
        counter_.endValue = endValueFound_.value_or("");
        counter_.endFrame = readFrame(subframe_code::kEndFrame, "ending",
                                      counter_.startFrame.number(), format_.numberOfFrames);
        counter_.countDirection = text(subframe_code::kCountDirection, 3).value_or("INC");
    }

    void checkEndValue() {
        // A direction that is neither up nor down compares with the word position; files are
        // in use that were written so.
        const int expected = expectedEndValue(counter_).value_or(word_);
        if (expected == counter_.endValue.number()) {
            return;
        }
        const int value = std::max(1, expected);
        load_.log(209, kTitleFormat, load_.prefix, code(subframe_code::kEndValue),
                  counter_.name.view(), endValueFound_.value_or("<none>"), value);
        counter_.endValue = std::to_string(value);
        load_.corrected();
    }

    PcmLoad& load_;
    PcmFormat& format_;
    int number_;
    IdCounter& counter_;
    int word_ = 0;
    std::optional<std::string_view> endValueFound_;
};

/// Which counters the commands of the file tell of.
class CounterNumbers {
  public:
    explicit CounterNumbers(const PcmLoad& load) {
        load.fields->forEach([&](std::string_view code, std::string_view) {
            if (!startsWithIgnoreCase(code, load.prefix)) {
                return;
            }
            code.remove_prefix(load.prefix.size());
            const auto hyphen = code.find('-');
            if (hyphen == std::string_view::npos ||
                !(startsWithIgnoreCase(code, subframe_code::kCounterHead) ||
                  startsWithIgnoreCase(code, subframe_code::kCounterFields))) {
                return;
            }
            numbers_.insert(leadingInt(code.substr(hyphen + 1)));
        });
    }
    /// A deleted counter leaves a gap in the numbers, while their count is that of the
    /// counters: the file goes on behind it. Such a gap is no counter without a name.
    [[nodiscard]] bool isGap(int number, int count) const {
        return !numbers_.contains(number) && !numbers_.empty() && *numbers_.rbegin() > count;
    }

  private:
    std::set<int> numbers_;
};

/// The number of counters that the file tells, at most as many as there can be.
int readCounterCount(PcmLoad& load) {
    const int count = load.number(subframe_code::kCounterCount).value_or(0);
    if (count <= kMostIdCounters) {
        return count;
    }
    load.log(177, title::kError, kMostIdCounters);
    load.corrected();
    return kMostIdCounters;
}

}  // namespace

bool readIdCounters(PcmLoad& load) {
    auto& format = load.format;
    const int count = readCounterCount(load);
    if (count > 0) {
        load.progress(30);
    }
    format.idCounters.assign(static_cast<std::size_t>(count), {});
    format.subframesChanged();
    const bool withSubframes = load.edition() < 2011 && count > 0;
    const auto numbers =
        withSubframes ? SubframeNumbers(*load.fields, load.prefix) : SubframeNumbers();
    const CounterNumbers present(load);
    for (int n = 1; n <= count; ++n) {
        if (load.cancelled()) {
            return false;
        }
        if (!present.isGap(n, count) && CounterReader(load, n).read() && withSubframes &&
            !readSubframes(load, n - 1, numbers)) {
            return false;
        }
    }
    // Counted before a question can make one: what the file lacks is meant.
    const int named = countIdCounters(format);
    if (load.edition() >= 2011) {
        makeHiddenSubframes(format, load.parent, &load.counterQuestion);
    }
    if (named != count) {
        load.log(203, kTitleFormat, count, named);
        load.corrected();
    }
    if (countIdCounters(format) != named) {
        load.corrected();
    }
    return true;
}

}  // namespace kavu
