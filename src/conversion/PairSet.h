// The pairs of telemetry and engineering-unit values of one measurement, as texts. The list
// of the pair set page is a view on this.
#pragma once

#include "vocabulary/CGroupFields.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavu {

class ProfileFile;

struct ValuePair {
    std::string telemetry;
    std::string engineering;
};

class PairSet {
  public:
    static constexpr std::size_t kMostPairs = c::kPsN.rows;
    static constexpr std::size_t kTelemetryLimit = c::kPs3.limit;    ///< characters
    static constexpr std::size_t kEngineeringLimit = c::kPs4.limit;  ///< characters

    // The texts of the two prompts and of the columns.
    static constexpr std::string_view kEnterTelemetry = "Enter Telemetry Value";
    static constexpr std::string_view kEnterEngineering = "Enter EU Value";

    /// With `sorted` every change sorts the pairs by ascending telemetry value.
    explicit PairSet(bool sorted = false) : sorted_(sorted) {}

    [[nodiscard]] const std::vector<ValuePair>& pairs() const { return pairs_; }
    [[nodiscard]] std::size_t size() const { return pairs_.size(); }
    /// True if Add is offered.
    [[nodiscard]] bool canAdd() const { return pairs_.size() < kMostPairs; }

    /// These return the place of the pair after the change, from 0; nothing if the list is
    /// full or there is no such pair. Texts are cut to their limits.
    std::optional<std::size_t> add(ValuePair pair);
    std::optional<std::size_t> edit(std::size_t index, ValuePair pair);
    bool remove(std::size_t index);
    void clear() { pairs_.clear(); }
    /// The former order of pairs that were sorted is lost. Returns the place of the pair that
    /// was at `followed`.
    std::size_t setSorted(bool sorted, std::size_t followed = 0);

    /// The values as numbers; a text that is not a number is 0.
    [[nodiscard]] std::vector<double> telemetryValues() const;
    [[nodiscard]] std::vector<double> engineeringValues() const;

    // --- Import ---------------------------------------------------------------------------

    /// What the two boxes of the import show at first: one value per line.
    [[nodiscard]] std::pair<std::string, std::string> boxTexts() const;
    /// Takes the lines of the boxes in pairs until either runs out; a pair counts if neither
    /// of its lines is empty. Decimal commas become points (`CommaRule`). Returns the text of an
    /// error, and then the list is as it was.
    [[nodiscard]] std::optional<std::string> import(std::string_view telemetryBox,
                                                    std::string_view engineeringBox);

    // --- The record -----------------------------------------------------------------------

    /// The pairs that "PS\N" states, or with those behind them.
    enum class Rows { Counted, All };
    /// Reads the pairs, at most 99, from a section; missing values are empty.
    [[nodiscard]] static PairSet read(const ProfileFile& file, std::string_view section,
                                      bool sorted = false, Rows rows = Rows::Counted);
    /// Writes "PS\N" and the pairs, and removes those left of a longer list.
    bool write(ProfileFile& file, std::string_view section) const;

  private:
    std::size_t sortAround(std::size_t index);

    std::vector<ValuePair> pairs_;
    bool sorted_;
};

}  // namespace kavu
