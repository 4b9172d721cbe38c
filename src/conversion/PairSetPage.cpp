#include "conversion/PairSetPage.h"

#include "conversion/ConversionStore.h"
#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/files/ProfileFile.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Text.h"
#include "vocabulary/CGroupFields.h"

namespace kavu {

namespace {

constexpr std::string_view kZero = seriespair::kZero;
constexpr std::string_view kCal = seriespair::kCal;

}  // namespace

FitInput fitInputOf(const ProfileFile& file, const std::string& name, bool sorted, int bits) {
    const auto pairs = PairSet::read(file, name, sorted, PairSet::Rows::All);
    FitInput input;
    input.x = pairs.telemetryValues();
    input.y = pairs.engineeringValues();
    input.order = file.integer(name, c::kPs2.code, 1);
    input.limits = {file.value(name, c::kMot1.code, ""), file.value(name, c::kMot2.code, ""),
                    file.value(name, c::kMot3.code, ""), file.value(name, c::kMot4.code, "")};
    input.bits = bits;
    input.binaryFormat = file.value(name, c::kBfm.code, "");
    return input;
}

FitInput PairSetPage::input(int bits) const {
    const ProfileFile file(context_.store.pathOf(working::kData1));
    auto input = fitInputOf(file, name_, FitOptions::read(context_.settings).sorted, bits);
    const auto series = openSeries();
    input.series = series.on;
    input.zero = series.zero;
    input.cal = series.cal;
    return input;
}

PairSet PairSetPage::pairs() const {
    const ProfileFile file(context_.store.pathOf(working::kData1));
    return PairSet::read(file, name_, FitOptions::read(context_.settings).sorted,
                         PairSet::Rows::All);
}

std::string PairSetPage::units() const {
    return ProfileFile(context_.store.pathOf(working::kData1)).value(name_, c::kMn3.code, "");
}

bool PairSetPage::definesCurve() const {
    const ProfileFile file(context_.store.pathOf(working::kData1));
    return startsWithIgnoreCase(file.value(name_, c::kPs1.code, c::kPs1.missing), "Y");
}

bool PairSetPage::change(UserInterface* parent, const std::function<bool(ProfileFile&)>& edit) {
    ProfileFile file(context_.store.pathOf(working::kData1));
    const auto report = [&](const IoStatus& status, std::string_view action) {
        if (!status.ok()) {
            context_.messages.showFailure(parent, status, 313, title::kErrorReadingConversion,
                                          kErrorBox, action, status.path());
        }
        return status.ok();
    };
    return report(file.load(), "Read") && file.containsExactly(name_) && edit(file) &&
           report(file.flush(), "Write/Create");
}

bool PairSetPage::storePairs(UserInterface* parent, const PairSet& pairs) {
    return change(parent, [&](ProfileFile& file) { return pairs.write(file, name_); });
}

bool PairSetPage::storeCurve(UserInterface* parent, bool defined) {
    return change(parent, [&](ProfileFile& file) {
        return file.setValue(name_, c::kPs1.code, defined ? "Y" : "N");
    });
}

bool PairSetPage::storeOrder(UserInterface* parent, int order) {
    return change(parent, [&](ProfileFile& file) {
        return file.setValue(name_, c::kPs2.code, std::to_string(order));
    });
}

FitResult PairSetPage::refresh(UserInterface* parent, const FitInput& input) {
    if (!definesCurve()) {
        return {};
    }
    auto result = refitPairs(input, FitOptions::read(context_.settings));
    if (result.fitted) {
        (void)store_.writeFitCoefficients(parent, name_, result.order, result.fittedCoefficients());
    }
    return result;
}

bool PairSetPage::deriveCoefficients(UserInterface* parent) {
    const auto result = refitPairs(input(0), FitOptions::read(context_.settings));
    return result.fitted &&
           store_.writeFitCoefficients(parent, name_, result.order, result.fittedCoefficients());
}

std::string PairSetPage::staleNote(const FitResult& result) const {
    const ProfileFile file(context_.store.pathOf(working::kData1));
    const bool derived = startsWithIgnoreCase(file.value(name_, c::kCo1.code, ""), "Y");
    const bool isLeft = derived && !file.value(name_, c::kCo.code, "").empty() && !result.fitted &&
                        (definesCurve() || pairs().size() == 0);
    return isLeft
               ? "The record keeps the coefficients of an earlier fit, which its pair sets do not "
                 "give any more."
               : std::string();
}

SeriesValues PairSetPage::openSeries() const {
    SeriesValues series;
    series.zero = store_.commentRecordGet(name_, kZero);
    series.cal = store_.commentRecordGet(name_, kCal);
    series.on = context_.settings.get(setting::kShowSeries) &&
                (!series.zero.empty() || !series.cal.empty());
    return series;
}

bool PairSetPage::enableSeries(UserInterface* parent, bool on, SeriesValues& series) {
    context_.settings.set(setting::kShowSeries, on);
    series.on = on;
    if (!on) {
        return true;
    }
    series.zero = series.zero.empty() ? "0" : series.zero;
    series.cal = series.cal.empty() ? "0" : series.cal;
    return storeSeries(parent, series);
}

bool PairSetPage::storeSeries(UserInterface* parent, const SeriesValues& series) {
    // A blank would end the pair where they are kept.
    const auto held = [](std::string_view text) {
        return replaceAll(cutToBytes(trim(text), kSeriesLimit), " ", "");
    };
    return store_.commentRecordSet(parent, name_, kZero, held(series.zero)) &&
           store_.commentRecordSet(parent, name_, kCal, held(series.cal));
}

bool PairSetPage::confirmDelete(UserInterface* parent) const {
    return context_.messages.show(parent, -message::kAreYouSure, title::kDeleteEntry, kYesNoBox) ==
           Button::Yes;
}

}  // namespace kavu
