#include "core/text/Text.h"
#include "pcm/PcmLoad.h"
#include "pcm/model/SubframeFields.h"
#include "pcm/model/SubframeNumbers.h"
#include "pcm/read/SubframeReading.h"
#include "pcm/structure/SubframeEdit.h"

#include <set>

namespace kavu {

namespace {

/// Reads the commands of one counter into its entry, whose number counts from 1.
class CounterReader {
  public:
    CounterReader(PcmLoad& load, int number)
        : load_(load),
          format_(load.format),
          number_(number),
          counter_(format_.idCounters[static_cast<std::size_t>(number - 1)]) {}

    /// False if the rest of the counter's commands, including its subframes, is skipped.
    bool read() {
        const auto from = load_.readSoFar();
        if (!readName()) {
            load_.leaveOut(from);
            return false;
        }
        counter_.fileRow = number_;
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
    std::string code(const CounterField& row) const { return fieldCode(row.field.code, {number_}); }
    std::optional<std::string_view> text(const CounterField& row) {
        return load_.text(code(row), static_cast<int>(row.field.limit));
    }
    void take(const CounterField& row, std::string_view missing) {
        row.setText(counter_, text(row).value_or(missing));
    }

    bool readName() {
        const auto found = text(counter_field::kName);
        const auto name = found ? std::string(*found) : generateIdCounterName(format_);
        if (!found) {
            load_.log(202, title::kNote, load_.prefix, code(counter_field::kName), number_, name);
        }
        if (idCounterNameExists(format_, name)) {
            load_.log(204, title::kErrorReadingFormat, name, load_.prefix,
                      code(counter_field::kName));
            return false;
        }
        counter_.name = name;
        return true;
    }

    void readType() {
        if (const auto type = text(counter_field::kType)) {
            counter_.type = *type;
            return;
        }
        load_.log(200, title::kErrorReadingFormat, load_.prefix, code(counter_field::kType));
        counter_.type = kIdCounterType;
        load_.corrected();
    }

    bool readWord() {
        const auto word = load_.number(code(counter_field::kWord));
        if (!word) {
            return true;
        }
        if (!format_.isDataWord(*word)) {
            load_.log(179, title::kErrorReadingFormat, counter_.name.view(), *word,
                      format_.wordsPerMinorFrame, format_.wordsPerMinorFrame - 1);
            load_.corrected();
            return false;
        }
        word_ = *word;
        format_.setWord(word_, WordType::IdCounter, number_ - 1, -1);
        return true;
    }

    void readLengths() {
        take(counter_field::kWordLength, "");
        counter_.msbStartBit = "1";
        if (const auto bit = text(counter_field::kMsbStartBit)) {
            if (leadingInt(*bit) < 1) {
                load_.log(210, title::kIllegalValueFound, counter_.name.view(), load_.prefix,
                          code(counter_field::kMsbStartBit), *bit);
                load_.corrected();
            } else {
                counter_.msbStartBit = *bit;
            }
        }
        if (const auto length = text(counter_field::kCounterLength)) {
            counter_.counterLength = *length;
        } else if (!counter_.wordLength.empty()) {
            counter_.counterLength = counter_.wordLength;
            load_.log(199, title::kErrorReadingFormat, load_.prefix,
                      code(counter_field::kCounterLength), counter_.counterLength.view());
        }
        take(counter_field::kTransferOrder, "");
        take(counter_field::kInitialValue, "1");
    }

    /// A frame number of the file, or `fallback` in place of one that is not in the range.
    void readFrame(const CounterField& row, std::string_view which, int least, int fallback) {
        const auto found = text(row);
        const int most = format_.numberOfFrames;
        if (found && leadingInt(*found) >= least && leadingInt(*found) <= most) {
            row.setText(counter_, *found);
            return;
        }
        load_.log(201, title::kIllegalValueFound, counter_.name.view(), which, load_.prefix,
                  code(row), found.value_or("<none>"), least, most, fallback);
        load_.corrected();
        row.setText(counter_, std::to_string(fallback));
    }

    void readFrames() {
        readFrame(counter_field::kStartFrame, "starting", 1, 1);
        endValueFound_ = text(counter_field::kEndValue);
        counter_.endValue = endValueFound_.value_or("");
        readFrame(counter_field::kEndFrame, "ending", counter_.startFrame.number(),
                  format_.numberOfFrames);
        take(counter_field::kCountDirection, kCountsUp);
    }

    void checkEndValue() {
        // A direction that is neither up nor down is compared with the word position; files
        // in use were written like this.
        const int expected = expectedEndValue(counter_).value_or(word_);
        if (expected == counter_.endValue.number()) {
            return;
        }
        const int value = std::max(1, expected);
        load_.log(209, title::kErrorReadingFormat, load_.prefix, code(counter_field::kEndValue),
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

/// The counters for which the file has commands.
class CounterNumbers {
  public:
    explicit CounterNumbers(const PcmLoad& load) {
        for (std::size_t place = 0; place < load.fields->size(); ++place) {
            const auto command = load.fields->at(place);
            if (command.value.empty() || !startsWithIgnoreCase(command.code, load.prefix)) {
                continue;
            }
            const auto field = command.code.substr(load.prefix.size());
            const auto head = codeHead(field);
            if (head.size() < field.size() && isOfCounter(head)) {
                numbers_.insert(leadingInt(field.substr(head.size() + 1)));
            }
        }
    }
    /// A deleted counter leaves a gap in the numbers, which go on after it, while the
    /// count does not include it. Such a gap is not a counter without a name.
    [[nodiscard]] bool isGap(int number, int count) const {
        return !numbers_.contains(number) && !numbers_.empty() && *numbers_.rbegin() > count;
    }

  private:
    static bool isOfCounter(std::string_view head) {
        return std::any_of(kCounterFields.begin(), kCounterFields.end(), [head](const auto& row) {
            return equalsIgnoreCase(codeHead(row.field.code), head);
        });
    }
    std::set<int> numbers_;
};

/// The number of counters that the file states, limited to the maximum.
int readCounterCount(PcmLoad& load) {
    const int count = load.number(counter_field::kCount.field.code).value_or(0);
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
    // Counted before a question can make one: only those of the file count.
    const int named = countIdCounters(format);
    if (load.edition() >= 2011) {
        makeHiddenSubframes(format, load.parent, &load.counterQuestion);
    }
    if (named != count) {
        load.log(203, title::kErrorReadingFormat, count, named);
        load.corrected();
    }
    if (countIdCounters(format) != named) {
        load.corrected();
    }
    return true;
}

}  // namespace kavu
