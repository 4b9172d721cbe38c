// The commands of one measurement of the D group, and what is built from them.
#pragma once

#include "core/TmatsReader.h"
#include "core/text/Text.h"
#include "pcm/PcmLoad.h"
#include "pcm/model/Measurement.h"
#include "pcm/model/RecordField.h"
#include "pcm/read/DataChunks.h"
#include "vocabulary/DGroupFields.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <climits>

namespace kavu {

class MeasurementInput {
  public:
    MeasurementInput(PcmLoad& state, CommandIndex& commands, int list, int number)
        : load(state), format(state.format), fields_(commands), list_(list), number_(number) {}
    MeasurementInput(const MeasurementInput&) = delete;
    MeasurementInput& operator=(const MeasurementInput&) = delete;

    PcmLoad& load;
    PcmFormat& format;
    Measurement cell;  ///< what is copied into each location

    [[nodiscard]] std::string_view name() const { return cell.name; }
    [[nodiscard]] int list() const { return list_; }
    [[nodiscard]] int row() const { return number_; }

    /// The search for locations and fragments ends after this many missing ones in a row: a
    /// count from a damaged file would never end.
    static constexpr int kMostMissing = 99;

    /// The code as messages name it: "MFSW-1-2-3".
    [[nodiscard]] std::string code(const Field& field,
                                   std::initializer_list<int> indices = {}) const {
        std::string text;
        append(text, field, indices);
        return text;
    }
    /// A value of this measurement; the code gets the numbers of list and measurement, and
    /// then `indices`.
    [[nodiscard]] std::optional<std::string_view> text(const Field& field,
                                                       std::initializer_list<int> indices = {}) {
        return find(field, static_cast<int>(field.limit), indices);
    }
    /// The same, however long it is.
    [[nodiscard]] std::optional<std::string_view> wholeText(
        const Field& field, std::initializer_list<int> indices = {}) {
        return find(field, 0, indices);
    }
    /// The same; if the command is missing, the value that the field has then, or nothing.
    [[nodiscard]] std::string_view textOrMissing(const Field& field,
                                                 std::initializer_list<int> indices = {}) {
        return text(field, indices).value_or(field.missing);
    }
    /// A negative number counts as 0.
    [[nodiscard]] std::optional<int> number(const Field& field,
                                            std::initializer_list<int> indices = {}) {
        const auto value = wholeText(field, indices);
        return value ? std::optional(std::max(0, leadingInt(*value))) : std::nullopt;
    }
    /// The number of places that a value states. One that is 0 or no number is logged: the
    /// measurement has no place then, and is nowhere.
    [[nodiscard]] int places(const Field& field, std::string_view value) {
        const int count = std::max(0, leadingInt(value));
        if (count < 1) {
            load.logLeftOut(
                title::kErrorReadingMeasurement,
                formatPrintf("Measurement '%s' has no place in the frame: %s%s is '%s'.", name(),
                             load.prefix, code(field), value));
        }
        return count;
    }
    [[nodiscard]] std::optional<int> places(const Field& field) {
        const auto value = wholeText(field);
        return value ? std::optional(places(field, *value)) : std::nullopt;
    }
    [[nodiscard]] std::optional<int> signedNumber(const Field& field,
                                                  std::initializer_list<int> indices = {}) {
        const auto value = wholeText(field, indices);
        return value ? std::optional(leadingInt(*value)) : std::nullopt;
    }
    /// How much has been read, for `leaveOut`.
    [[nodiscard]] std::size_t readSoFar() const { return read_.size(); }
    /// What has been read since then is not in the model: a save keeps it as it is.
    void leaveOut(std::size_t from = 0) {
        for (; read_.size() > from; read_.pop_back()) {
            fields_.markRead(read_.back(), false);
        }
    }
    /// Sets the number of locations of every copy.
    void setLocationCount(int count) {
        cell.locationCount = count;
        format.cells().updateAll(name(),
                                 [count](Measurement& copy) { copy.locationCount = count; });
    }

  private:
    std::optional<std::string_view> find(const Field& field, int limit,
                                         std::initializer_list<int> indices) {
        code_.assign(load.prefix);
        append(code_, field, indices);
        const auto found = fields_.find(code_);
        if (!found) {
            return std::nullopt;
        }
        fields_.markRead(found->place);
        read_.push_back(found->place);
        return load.format.context().reader.applyLimit(load.parent, found->code, found->value,
                                                       limit);
    }
    /// REQUIRES: as many indices as the field has beyond list and measurement.
    void append(std::string& text, const Field& field, std::initializer_list<int> indices) const {
        std::array<int, FieldPath::kMostIndices> numbers{list_, number_};
        std::copy(indices.begin(), indices.end(), numbers.begin() + 2);
        appendField(text, field.code, std::span(numbers).first(2 + indices.size()));
    }

    CommandIndex& fields_;
    int list_;
    int number_;
    std::string code_;
    std::vector<std::size_t> read_;  ///< the places of the commands
};

// Each of these places the measurement of one location type; an invalid measurement is
// reported and left out.

void readMinorWord(MeasurementInput& input);
void readMinorFrameSupercom(MeasurementInput& input);
void readMinorFrameFragments(MeasurementInput& input);
void readSubframeWord(MeasurementInput& input);
void readSubframeSupercom(MeasurementInput& input);
void readSubframeFragments(MeasurementInput& input);
void readWordFrame(MeasurementInput& input);

/// The i-th place by an interval: first + i x interval, kept within the range of an int.
[[nodiscard]] inline int stepped(int first, int i, int interval) {
    return static_cast<int>(
        std::min<std::int64_t>(first + static_cast<std::int64_t>(i) * interval, INT_MAX));
}

/// Adds a copy of the measurement at a place of a subframe, whatever it holds already. False
/// with message 271 ("No measurement defined at") if the place has no cell, or if there can
/// be no more cells.
bool placeInSubframe(MeasurementInput& input, std::string_view subframe, int fwp, int fn);

/// Message 280 ("reconstructed word length") for a fragmented measurement whose masks do
/// not add up.
void checkReconstructedLength(MeasurementInput& input, std::string_view kind, long bits);

}  // namespace kavu
