#include "pcm/read/SubframeReading.h"

#include "core/text/Text.h"
#include "pcm/PcmLoad.h"
#include "pcm/model/SubframeFields.h"
#include "pcm/model/SubframeNumbers.h"
#include "pcm/structure/SubframeEdit.h"

#include <charconv>

namespace kavu {

namespace {

/// This many missing subframes are reported one by one; a count far beyond the file must not
/// crowd out other messages.
constexpr int kMostAbsentReported = 100;

/// Removes a hyphen and a number from the front of `text`; 0 if there is none.
int takeHyphenated(std::string_view& text) {
    int number = 0;
    if (text.starts_with('-')) {
        const auto [end, error] =
            std::from_chars(text.data() + 1, text.data() + text.size(), number);
        number = error == std::errc() ? number : 0;
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    }
    return number;
}

/// A keyword of the file in the spelling used for comparisons.
std::string keyword(std::string_view value) {
    for (const auto known :
         {kNotSupercommutated, kFirstAndInterval, kEveryLocation, kNoLocationMode}) {
        if (equalsIgnoreCase(value, known)) {
            return std::string(known);
        }
    }
    return std::string(value);
}

/// Reads the commands of one subframe; all numbers count from 1.
class SubframeReader {
  public:
    SubframeReader(PcmLoad& load, int counter, int subframe, const SubframeNumbers& numbers,
                   bool quiet)
        : load_(load),
          format_(load.format),
          n_(counter),
          m_(subframe),
          present_(numbers.has(counter, subframe)),
          quiet_(quiet),
          locations_(numbers.locations(counter, subframe)),
          counter_(format_.idCounters[static_cast<std::size_t>(counter - 1)]),
          record_(counter_.subframes[static_cast<std::size_t>(subframe - 1)]) {}

    void read() {
        const auto from = load_.readSoFar();
        if (!readName()) {
            load_.leaveOut(from);
            return;
        }
        readKind();
        readLocations();
        if (isInterval() && firstWord_ > 0) {
            readInterval();
        }
        readDepth();
        if (firstWord_ > 0) {
            record_.fileCounter = n_;
            record_.fileRow = m_;
        } else {
            load_.leaveOut(from);  // one without words is not written
        }
    }

  private:
    bool isQuiet() const { return quiet_ || load_.logIsFull(); }
    std::string code(const SubframeField& row) const { return fieldCode(row.field.code, {n_, m_}); }
    std::optional<std::string_view> text(const SubframeField& row) {
        return present_ ? load_.text(code(row), static_cast<int>(row.field.limit)) : std::nullopt;
    }
    bool isInterval() const {
        return record_.isSupercommutated() && record_.locationMode == kFirstAndInterval;
    }

    bool readName() {
        const auto found = text(subframe_field::kName);
        const auto name = found ? std::string(*found) : formatPrintf("SF#%d", m_);
        if (!found && !isQuiet()) {
            load_.log(208, title::kErrorReadingFormat, load_.prefix, code(subframe_field::kName),
                      m_);
        }
        if (subframeNameExists(format_, name)) {
            if (!isQuiet()) {
                load_.log(205, title::kErrorReadingFormat, name, load_.prefix,
                          code(subframe_field::kName));
            }
            load_.corrected();
            return false;
        }
        record_.name = name;
        format_.subframeNamed({n_ - 1, m_ - 1});
        return true;
    }

    void readKind() {
        auto supercom =
            keyword(text(subframe_field::kSupercommutated).value_or(kNotSupercommutated));
        auto mode = keyword(text(subframe_field::kLocationMode).value_or(kNoLocationMode));
        const bool single = supercom == kNotSupercommutated;
        const bool unplaced = mode == kNoLocationMode;
        if (single && !unplaced) {
            load_.log(182, title::kErrorReadingFormat, record_.name.view(), load_.prefix,
                      code(subframe_field::kLocationMode));
            mode = kNoLocationMode;
            load_.corrected();
        } else if (!single && unplaced) {
            load_.log(183, title::kErrorReadingFormat, record_.name.view(), load_.prefix,
                      code(subframe_field::kLocationMode));
            supercom = kNotSupercommutated;
            load_.corrected();
        }
        record_.supercommutated = supercom;
        record_.locationMode = mode;
    }

    void readLocations() {
        const bool one = !record_.isSupercommutated() || isInterval();
        const int wanted = one ? 1 : std::max(0, record_.supercommutated.number());
        // After the last location in the file only missing ones can follow.
        const int last = locations_.empty() ? 0 : locations_.back().location;
        const int end = std::min(wanted, std::max(kMostSupercomLocations, last));
        int left = end;
        auto at = locations_.begin();
        for (int k = 1; k <= end; ++k) {
            while (at != locations_.end() && at->location < k) {
                ++at;
            }
            const bool there = at != locations_.end() && at->location == k;
            left -= readLocation(k, there) ? 0 : 1;
        }
        if (wanted > end) {
            load_.corrected();
        }
        if (record_.locationMode == kEveryLocation) {
            setCount(left);
        }
    }

    void setCount(int left) {
        if (left == 1) {
            record_.supercommutated = kNotSupercommutated;
            record_.locationMode = kNoLocationMode;
        } else {
            record_.supercommutated = std::to_string(left);
        }
    }

    bool readLocation(int k, bool there) {
        const auto from = load_.readSoFar();
        const auto command = fieldCode(subframe_field::kLocation.field.code, {n_, m_, k});
        const auto given = there ? load_.number(command) : std::nullopt;
        const bool isGiven = given.has_value();
        const int word = given.value_or(0);
        const auto type = isGiven ? format_.wordType(word) : WordType::Minor;
        const bool taken = type == WordType::IdCounter || type == WordType::Subframe;
        if (isGiven && format_.isDataWord(word) && !taken) {
            format_.setWord(word, WordType::Subframe, n_ - 1, m_ - 1);
            firstWord_ = firstWord_ > 0 ? firstWord_ : word;
            return true;
        }
        load_.corrected();
        load_.leaveOut(from);
        if (isQuiet()) {
            return false;
        }
        if (!isGiven) {
            load_.log(186, title::kErrorReadingFormat, load_.prefix, command, record_.name.view());
        } else if (!format_.isDataWord(word)) {
            load_.log(184, title::kErrorReadingFormat, record_.name.view(), word,
                      format_.wordsPerMinorFrame, format_.wordsPerMinorFrame - 1);
        } else {
            load_.log(185, title::kErrorReadingFormat, load_.prefix, command, record_.name.view(),
                      word, word);
        }
        return false;
    }

    void readInterval() {
        record_.interval = text(subframe_field::kInterval).value_or("");
        const int interval = record_.interval.number();
        int word = firstWord_;
        for (int i = 1; i < record_.supercommutated.number() && interval > 0; ++i) {
            word += interval;
            if (!format_.isDataWord(word)) {
                return;
            }
            if (format_.wordType(word) == WordType::IdCounter) {
                load_.log(211, title::kErrorReadingFormat, record_.name.view(), word);
            } else {
                format_.setWord(word, WordType::Subframe, n_ - 1, m_ - 1);
            }
        }
    }

    void readDepth() {
        const auto found = text(subframe_field::kDepth);
        const int depth = counter_.depth();
        if (found && leadingInt(*found) > 1) {
            record_.depth = *found;
            return;
        }
        if (found) {
            load_.log(212, title::kIllegalValueFound, record_.name.view(), leadingInt(*found),
                      depth);
            load_.corrected();
        } else if (!isQuiet()) {
            load_.log(213, title::kIllegalValueFound, record_.name.view(), depth);
        }
        record_.depth = std::to_string(depth);
    }

    PcmLoad& load_;
    PcmFormat& format_;
    int n_;
    int m_;
    bool present_;
    bool quiet_;
    std::span<const SubframeNumbers::Number> locations_;
    IdCounter& counter_;
    Subframe& record_;
    int firstWord_ = 0;
};

}  // namespace

SubframeNumbers::SubframeNumbers(const CommandIndex& fields, std::string_view prefix) {
    const auto beginning = std::string(prefix).append(subframe_field::kHead);
    const auto location = codeHead(subframe_field::kLocation.field.code).back();
    for (std::size_t place = 0; place < fields.size(); ++place) {
        const auto command = fields.at(place);
        const auto code = command.code;
        if (command.value.empty() || !startsWithIgnoreCase(code, beginning) ||
            code.size() == beginning.size()) {
            continue;
        }
        const bool isLocation = code[beginning.size()] == location;
        auto rest = code.substr(beginning.size() + 1);
        Number number{};
        number.counter = takeHyphenated(rest);
        number.subframe = takeHyphenated(rest);
        number.location = isLocation ? takeHyphenated(rest) : 0;
        numbers_.push_back(number);
    }
    std::sort(numbers_.begin(), numbers_.end());
}

bool SubframeNumbers::has(int counter, int subframe) const {
    const auto at =
        std::lower_bound(numbers_.begin(), numbers_.end(), Number{counter, subframe, 0});
    return at != numbers_.end() && at->counter == counter && at->subframe == subframe;
}

std::span<const SubframeNumbers::Number> SubframeNumbers::locations(int counter,
                                                                    int subframe) const {
    const auto from =
        std::lower_bound(numbers_.begin(), numbers_.end(), Number{counter, subframe, 1});
    const auto to =
        std::lower_bound(numbers_.begin(), numbers_.end(), Number{counter, subframe + 1, 0});
    return from < to ? std::span(from, to) : std::span<const Number>();
}

bool readSubframes(PcmLoad& load, int counter) {
    return readSubframes(load, counter, SubframeNumbers(*load.fields, load.prefix));
}

bool readSubframes(PcmLoad& load, int counter, const SubframeNumbers& numbers) {
    auto& subframes = load.format.idCounters[static_cast<std::size_t>(counter)].subframes;
    const int n = counter + 1;
    int count = load.number(fieldCode(subframe_field::kCount.field.code, {n})).value_or(0);
    if (count > kMostSubframes) {
        load.log(180, title::kError, kMostSubframes);
        load.corrected();
        count = kMostSubframes;
    }
    subframes.assign(static_cast<std::size_t>(count), {});
    int absent = 0;
    for (int m = 1; m <= count; ++m) {
        if (load.cancelled()) {
            return false;
        }
        load.status("Initializing ID Counter: #%d - Subframe: #%d", n, m);
        absent += numbers.has(n, m) ? 0 : 1;
        SubframeReader(load, n, m, numbers, absent > kMostAbsentReported).read();
    }
    return true;
}

}  // namespace kavu
