#include "sdk/MeasurementRows.h"

#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "vocabulary/DGroupFields.h"
#include "vocabulary/LocationTypes.h"

#include <algorithm>
#include <tuple>
#include <unordered_set>

namespace kavu {

namespace {

constexpr PrintfFormat<std::string, std::string, std::string, int> kInvalidPlace =
    "ERROR: An invalid '%s%s' field was found in the TMATS file for measurement '%s'\n"
    "Value found: %d\n";
constexpr PrintfFormat<std::string, std::string, std::string, std::string, int, int>
    kInvalidFragment =
        "ERROR: An invalid '%s%s' field found in TMATS file for %s measurement\n'%s'. "
        "Value found: %d\nThis value must be a number between 1 and %d\n\n";
constexpr PrintfFormat<std::string, std::string, int, int> kInvalidNumber =
    "An error was found with TMATS command: '%s%s'.\n"
    "Invalid fragment number found (%d). This number must be between 1 and %d.\n";

/// The counted rows of a list; all of them without a count, of which the load says so.
int rowsOfList(const SdkGroup& group, int list) {
    return group.number(fieldCode(measurement_field::kCount.code, {list})).value_or(0);
}

class PlaceCheck {
  public:
    PlaceCheck(const SdkGroup& group, const SdkRow& row, const FrameExtent& frame,
               const SessionReport& report)
        : group_(group), row_(row), frame_(frame), report_(report) {}

    void run() {
        if (is(location_type::kWordFrame)) {
            checkWordFrame();
        } else if (is(location_type::kMinorFrame)) {
            place(minor_word_field::kWord, {row_.list, row_.number}, lastWord());
        } else if (is(location_type::kMinorFrameFragments)) {
            checkMinorFragments();
        } else if (is(location_type::kSubframeFragments)) {
            checkSubframeFragments();
        }
    }

  private:
    [[nodiscard]] bool is(std::string_view type) const {
        return equalsIgnoreCase(row_.locationType, type);
    }
    [[nodiscard]] int lastWord() const { return frame_.words - 1; }
    /// Counts are not believed: a loop ends where the commands do.
    [[nodiscard]] bool has(const Field& field, std::initializer_list<int> numbers) const {
        return group_.value(field.code, numbers).has_value();
    }
    [[nodiscard]] std::optional<int> numberAt(const Field& field,
                                              std::initializer_list<int> numbers) const {
        const auto text = group_.value(field.code, numbers);
        return text ? std::optional(leadingInt(*text)) : std::nullopt;
    }
    [[nodiscard]] int count(const Field& field, std::initializer_list<int> numbers,
                            int otherwise) const {
        return std::max(numberAt(field, numbers).value_or(otherwise), otherwise);
    }

    void place(const Field& field, std::initializer_list<int> numbers, int most) const {
        if (const auto value = numberAt(field, numbers); value && (*value < 1 || *value > most)) {
            report_(formatPrintf(kInvalidPlace, group_.prefix(), fieldCode(field.code, numbers),
                                 row_.name, *value));
        }
    }
    void fragment(const Field& field, std::initializer_list<int> numbers, int most) const {
        if (const auto value = numberAt(field, numbers); value && (*value < 1 || *value > most)) {
            report_(formatPrintf(kInvalidFragment, group_.prefix(), fieldCode(field.code, numbers),
                                 row_.locationType, row_.name, *value, most));
        }
    }
    void fragmentNumber(const Field& field, std::initializer_list<int> numbers, int most) const {
        if (const auto value = numberAt(field, numbers); value && (*value < 1 || *value > most)) {
            report_(formatPrintf(kInvalidNumber, group_.prefix(), fieldCode(field.code, numbers),
                                 *value, most));
        }
    }

    void checkWordFrame() const {
        const int l = row_.list;
        const int m = row_.number;
        const int locations = count(word_frame_field::kCount, {l, m}, 0);
        for (int k = 1; k <= locations; ++k) {
            const int fragments = count(word_frame_field::kFragments, {l, m, k}, 1);
            for (int f = 1; f <= fragments; ++f) {
                if (!has(word_frame_field::kWord, {l, m, k, f})) {
                    return;  // the load says what lacks
                }
                place(word_frame_field::kWord, {l, m, k, f}, lastWord());
                place(word_frame_field::kFrame, {l, m, k, f}, frame_.frames);
            }
        }
    }

    void checkMinorFragments() const {
        const int l = row_.list;
        const int m = row_.number;
        const int fragments = count(minor_fragment_field::kCount, {l, m}, 0);
        fragment(minor_fragment_field::kFirst, {l, m}, lastWord());
        for (int k = 1; k <= fragments && has(minor_fragment_field::kWord, {l, m, k}); ++k) {
            fragment(minor_fragment_field::kWord, {l, m, k}, lastWord());
            fragmentNumber(minor_fragment_field::kFragment, {l, m, k}, fragments);
        }
    }

    void checkSubframeFragments() const {
        const int l = row_.list;
        const int m = row_.number;
        const int fragments = count(subframe_fragment_field::kCount, {l, m}, 0);
        const int subframes = count(subframe_fragment_field::kSubframes, {l, m}, 0);
        for (int s = 1; s <= subframes && has(subframe_fragment_field::kSubframe, {l, m, s}); ++s) {
            for (int j = 1; has(subframe_fragment_field::kPosition, {l, m, s, j}); ++j) {
                fragmentNumber(subframe_fragment_field::kFragment, {l, m, s, j}, fragments);
            }
        }
    }

    const SdkGroup& group_;
    const SdkRow& row_;
    const FrameExtent& frame_;
    const SessionReport& report_;
};

}  // namespace

std::vector<SdkRow> readSdkRows(const SdkGroup& group, const SessionReport& report) {
    const int lists = std::max(1, group.number(measurement_field::kListCount.code).value_or(1));
    const auto stem = stemOf(measurement_field::kName.code);
    std::vector<SdkRow> rows;
    for (std::size_t place = 0; place < group.size(); ++place) {
        const auto command = group.at(place);
        const auto path = parseField(command.field);
        if (!path || path->count != 2 || !equalsIgnoreCase(path->stem, stem) ||
            path->at[0] > lists || path->at[1] > rowsOfList(group, path->at[0])) {
            continue;
        }
        if (trim(command.value).empty()) {
            report(formatPrintf("WARNING:  Error reading TMATS file line: '%s%s'\n", group.prefix(),
                                command.field));
            continue;
        }
        rows.push_back({path->at[0], path->at[1], std::string(command.value), {}, 0});
    }
    std::stable_sort(rows.begin(), rows.end(), [](const auto& a, const auto& b) {
        return std::tie(a.list, a.number) < std::tie(b.list, b.number);
    });
    std::unordered_set<std::string> known;
    std::erase_if(rows, [&](const SdkRow& row) {
        const bool isNew = known.insert(lowerAscii(row.name)).second;
        if (!isNew) {
            report(
                formatPrintf("Measurement '%s' was previously defined.\n"
                             "This definition will be ignored.",
                             row.name));
        }
        return !isNew;
    });
    for (auto& row : rows) {
        const auto code = [&](const Field& field) {
            return fieldCode(field.code, {row.list, row.number});
        };
        row.locationType =
            group.value(code(measurement_field::kLocationType)).value_or(std::string_view());
        if (equalsIgnoreCase(row.locationType, location_type::kMinorFrameFragments)) {
            row.fragments = group.number(code(minor_fragment_field::kCount)).value_or(0);
        } else if (equalsIgnoreCase(row.locationType, location_type::kSubframeFragments)) {
            row.fragments = group.number(code(subframe_fragment_field::kCount)).value_or(0);
        }
    }
    return rows;
}

bool checkMeasurementPlaces(const SdkGroup& group, const SdkRow& row, const FrameExtent& frame,
                            const SessionReport& report) {
    bool isReported = false;
    const SessionReport note = [&](std::string text) {
        isReported = true;
        report(std::move(text));
    };
    PlaceCheck(group, row, frame, note).run();
    return isReported;
}

}  // namespace kavu
