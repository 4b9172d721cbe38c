#include "conversion/PairSet.h"

#include "conversion/EuNumbers.h"
#include "conversion/PairText.h"
#include "core/files/ProfileFile.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "vocabulary/CGroupFields.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>
#include <numeric>

namespace kavu {

namespace {

ValuePair cutToLimits(ValuePair pair) {
    pair.telemetry = cutToBytes(pair.telemetry, PairSet::kTelemetryLimit);
    pair.engineering = cutToBytes(pair.engineering, PairSet::kEngineeringLimit);
    return pair;
}

/// The next line of a text, which ends with a line feed; nothing after the last one.
std::optional<std::string_view> takeLine(std::string_view& text) {
    const auto end = text.find('\n');
    if (end == std::string_view::npos) {
        return std::nullopt;
    }
    const auto line = text.substr(0, end);
    text.remove_prefix(end + 1);
    return trim(line);
}

/// The lines of two boxes in step, until either runs out.
class BoxLines {
  public:
    BoxLines(std::string_view first, std::string_view second)
        : firstText_(std::string(first) + "\n"),
          secondText_(std::string(second) + "\n"),
          first_(firstText_),
          second_(secondText_) {}
    BoxLines(const BoxLines&) = delete;
    BoxLines& operator=(const BoxLines&) = delete;

    /// The next two lines that both hold something.
    bool next() {
        for (;;) {
            const auto telemetry = takeLine(first_);
            const auto engineering = takeLine(second_);
            if (!telemetry || !engineering) {
                return false;
            }
            ++row;
            if (!telemetry->empty() && !engineering->empty()) {
                x = *telemetry;
                y = *engineering;
                return true;
            }
        }
    }

    int row = 0;  ///< from 1
    std::string_view x;
    std::string_view y;

  private:
    std::string firstText_;
    std::string secondText_;
    std::string_view first_;
    std::string_view second_;
};

/// Takes a value of the import; the text of what is wrong with it, or nothing.
std::optional<std::string> takeValue(const CommaRule& commas, int row, const char* axis,
                                     std::string_view text, std::size_t limit, std::string& value) {
    auto number = commas.numberText(text);
    if (!number) {
        return pairValueError(row, axis, text);
    }
    // A truncated number may lose its exponent and become another one.
    if (number->size() > limit) {
        return formatPrintf("Error in row #%d. %s Value found is longer than %d characters", row,
                            axis, limit);
    }
    value = std::move(*number);
    return std::nullopt;
}

/// No text gives NaN, so this is a strict order.
bool comesFirst(const ValuePair& a, const ValuePair& b) {
    return leadingDouble(a.telemetry) < leadingDouble(b.telemetry);
}

std::string pairKey(const char* code, std::size_t index) {
    return code + std::to_string(index + 1);
}

}  // namespace

std::size_t PairSet::sortAround(std::size_t index) {
    if (!sorted_) {
        return index;
    }
    std::vector<std::size_t> order(pairs_.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
        return comesFirst(pairs_[a], pairs_[b]);
    });
    std::vector<ValuePair> sorted;
    sorted.reserve(pairs_.size());
    std::size_t place = index;
    for (const auto from : order) {
        if (from == index) {
            place = sorted.size();
        }
        sorted.push_back(std::move(pairs_[from]));
    }
    pairs_ = std::move(sorted);
    return place;
}

std::optional<std::size_t> PairSet::add(ValuePair pair) {
    if (!canAdd()) {
        return std::nullopt;
    }
    pairs_.push_back(cutToLimits(std::move(pair)));
    return sortAround(pairs_.size() - 1);
}

std::optional<std::size_t> PairSet::edit(std::size_t index, ValuePair pair) {
    if (index >= pairs_.size()) {
        return std::nullopt;
    }
    pairs_[index] = cutToLimits(std::move(pair));
    return sortAround(index);
}

bool PairSet::remove(std::size_t index) {
    if (index >= pairs_.size()) {
        return false;
    }
    pairs_.erase(pairs_.begin() + static_cast<std::ptrdiff_t>(index));
    return true;
}

std::size_t PairSet::setSorted(bool sorted, std::size_t followed) {
    sorted_ = sorted;
    return sortAround(followed);
}

std::vector<double> PairSet::telemetryValues() const {
    std::vector<double> values;
    for (const auto& pair : pairs_) {
        values.push_back(leadingDouble(pair.telemetry));
    }
    return values;
}

std::vector<double> PairSet::engineeringValues() const {
    std::vector<double> values;
    for (const auto& pair : pairs_) {
        values.push_back(leadingDouble(pair.engineering));
    }
    return values;
}

// --- Import ------------------------------------------------------------------------------

std::pair<std::string, std::string> PairSet::boxTexts() const {
    std::pair<std::string, std::string> texts;
    for (const auto& pair : pairs_) {
        texts.first += pair.telemetry + "\n";
        texts.second += pair.engineering + "\n";
    }
    return texts;
}

std::optional<std::string> PairSet::import(std::string_view telemetryBox,
                                           std::string_view engineeringBox) {
    CommaRule commas;
    for (BoxLines lines(telemetryBox, engineeringBox); lines.next();) {
        commas.see(lines.x);
        commas.see(lines.y);
    }
    std::vector<ValuePair> found;
    std::size_t count = 0;
    for (BoxLines lines(telemetryBox, engineeringBox); lines.next();) {
        ValuePair pair;
        auto error = takeValue(commas, lines.row, "X", lines.x, kTelemetryLimit, pair.telemetry);
        if (!error) {
            error = takeValue(commas, lines.row, "Y", lines.y, kEngineeringLimit, pair.engineering);
        }
        if (error) {
            return error;
        }
        if (++count <= kMostPairs) {
            found.push_back(std::move(pair));
        }
    }
    if (count > kMostPairs) {
        return formatPrintf("There are %d pairs. A pair set cannot have more than %d.", count,
                            kMostPairs);
    }
    pairs_ = std::move(found);
    (void)sortAround(0);
    return std::nullopt;
}

// --- The record --------------------------------------------------------------------------

PairSet PairSet::read(const ProfileFile& file, std::string_view section, bool sorted, Rows rows) {
    PairSet set(sorted);
    auto count = static_cast<std::size_t>(
        std::clamp(file.integer(section, c::kPsN.code, 0), 0, static_cast<int>(kMostPairs)));
    for (auto i = count; rows == Rows::All && i < kMostPairs; ++i) {
        const bool isThere = !file.value(section, pairKey("PS3-", i), "").empty() ||
                             !file.value(section, pairKey("PS4-", i), "").empty();
        count = isThere ? i + 1 : count;
    }
    for (std::size_t i = 0; i < count; ++i) {
        set.pairs_.push_back({file.value(section, pairKey("PS3-", i), ""),
                              file.value(section, pairKey("PS4-", i), "")});
    }
    (void)set.sortAround(0);
    return set;
}

bool PairSet::write(ProfileFile& file, std::string_view section) const {
    bool good = file.setValue(section, c::kPsN.code, std::to_string(pairs_.size()));
    for (std::size_t i = 0; i < kMostPairs; ++i) {
        if (i < pairs_.size()) {
            good = file.setValue(section, pairKey("PS3-", i), pairs_[i].telemetry) && good;
            good = file.setValue(section, pairKey("PS4-", i), pairs_[i].engineering) && good;
        } else {
            file.removeKey(section, pairKey("PS3-", i));
            file.removeKey(section, pairKey("PS4-", i));
        }
    }
    return good;
}

}  // namespace kavu
