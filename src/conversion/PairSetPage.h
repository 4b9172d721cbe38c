// What the pair set page does with the record that is being edited: its pairs, its fit, the
// values of its series.
#pragma once

#include "conversion/PairSetFit.h"

#include <functional>
#include <string>
#include <string_view>

namespace kavu {

struct DocumentContext;
class ConversionStore;
class ProfileFile;
class UserInterface;

/// The private pairs that hold the series.
namespace seriespair {
inline constexpr std::string_view kZero = "ZeroCal";
inline constexpr std::string_view kCal = "RCal";
}  // namespace seriespair

/// The zero and the cal value of the series plot, kept in the record's private pairs.
struct SeriesValues {
    std::string zero;
    std::string cal;
    bool on = false;
};

/// What a refit of a record works on, without its series: pairs, order, limits, binary format.
/// `bits` is the word length of the measurement, 0 if it is not known.
[[nodiscard]] FitInput fitInputOf(const ProfileFile& file, const std::string& name, bool sorted,
                                  int bits);

class PairSetPage {
  public:
    static constexpr std::size_t kSeriesLimit = 20;  ///< characters of a value

    /// REQUIRES: the record `name` has a working copy.
    PairSetPage(DocumentContext& context, ConversionStore& store, std::string name)
        : context_(context), store_(store), name_(std::move(name)) {}

    /// What a refit works on, from the working copy: pairs, order, limits, binary format and
    /// series. `bits` is the word length of the measurement, 0 if it is not known.
    [[nodiscard]] FitInput input(int bits) const;
    /// The pairs of the working copy, sorted if the settings want it.
    [[nodiscard]] PairSet pairs() const;
    /// "MN3"
    [[nodiscard]] std::string units() const;
    /// True if the record defines a curve: "PS1" is "Y".
    [[nodiscard]] bool definesCurve() const;

    // These store in the working copy. False if a file failed, which is reported by message 313
    // ("Unable to").
    bool storePairs(UserInterface* parent, const PairSet& pairs);
    bool storeCurve(UserInterface* parent, bool defined);
    bool storeOrder(UserInterface* parent, int order);

    /// Refits if the record defines a curve ("PS1" is "Y"), and stores the coefficients of a
    /// fit that succeeded; otherwise the stored ones stay.
    FitResult refresh(UserInterface* parent, const FitInput& input);
    /// The same for the window of coefficients if it is set to "derived from pair set": the
    /// pairs of the record are fitted, whatever "PS1" says. False without a fit.
    bool deriveCoefficients(UserInterface* parent);

    /// What to tell about coefficients that the record keeps from an earlier fit, although its
    /// pairs give none (any more); empty if there are none.
    [[nodiscard]] std::string staleNote(const FitResult& result) const;

    /// The series as the page opens: on only if `DoRCal` is set and one of the values exists.
    [[nodiscard]] SeriesValues openSeries() const;
    /// Turns the series on or off: stores `DoRCal`; an empty value becomes "0" when it is
    /// turned on.
    bool enableSeries(UserInterface* parent, bool on, SeriesValues& series);
    /// Stores values that were entered.
    bool storeSeries(UserInterface* parent, const SeriesValues& series);

    /// Asks "Are You Sure?" under "Delete This Entry?".
    [[nodiscard]] bool confirmDelete(UserInterface* parent) const;

  private:
    bool change(UserInterface* parent, const std::function<bool(ProfileFile&)>& edit);

    DocumentContext& context_;
    ConversionStore& store_;
    std::string name_;
};

}  // namespace kavu
