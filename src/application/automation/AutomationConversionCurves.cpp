// The numbers of a conversion: its coefficients, and the pairs that they may be fitted to.
#include "application/Application.h"
#include "application/automation/AutomationConversionRecord.h"
#include "application/automation/AutomationConversions.h"
#include "application/automation/AutomationSession.h"
#include "application/automation/AutomationValues.h"
#include "conversion/DefinitionEdit.h"
#include "conversion/EuNumbers.h"
#include "conversion/EuVocabulary.h"
#include "conversion/PairSetPage.h"
#include "core/TmatsDocument.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kavu {

namespace {

constexpr std::int32_t kHighestTerm = 10;

/// The fields that hold the coefficients of a type.
struct CoefficientFields {
    const Field& count;
    const Field& offset;
    const Field& term;

    [[nodiscard]] std::string codeOf(int number) const {
        return number == 0 ? std::string(offset.code) : fieldCode(term.code, {number});
    }
};
constexpr CoefficientFields kPositivePowers{c::kCoN, c::kCo, c::kCoTerm};
constexpr CoefficientFields kNegativePowers{c::kNpcN, c::kNpc, c::kNpcTerm};

bool isOfType(std::string_view type, std::string_view wanted) {
    return startsWithIgnoreCase(type, wanted);
}

[[noreturn]] void throwWrongType(std::string_view type, std::string_view what) {
    throw AutomationError(
        AutomationFault::WrongType,
        formatPrintf("The conversion is of the type '%s', which has no %s.", type, what));
}

const CoefficientFields& requireCoefficients(AutomationSession& session, std::string_view type) {
    if (isOfType(type, "COE") || isOfType(type, "PRS")) {
        return kPositivePowers;
    }
    if (!isOfType(type, "NPC")) {
        throwWrongType(type, "coefficients");
    }
    requireField(session, c::kNpcN, "coefficients of negative powers");
    return kNegativePowers;
}

void requirePairs(std::string_view type) {
    if (!isOfType(type, "PRS") && !isOfType(type, "COE")) {
        throwWrongType(type, "pairs");
    }
}

std::string typeOf(AutomationSession& session, const FoundRecord& record) {
    return shownType(record.file(), record.name(), session.context().document.version);
}

double realOfText(std::string_view text, std::string_view what) {
    if (const auto number = parseDouble(text)) {
        return *number;
    }
    throw AutomationError(
        AutomationFault::NotANumber,
        formatPrintf("The %s is '%s', which is no number.", what, shownText(text)));
}

void requireFinite(double value, std::string_view what) {
    if (!std::isfinite(value)) {
        throw AutomationError(AutomationFault::BadValue,
                              formatPrintf("The %s is no finite number.", what));
    }
}

/// Telemetry values of files may have a fraction, as long as it is 0.
std::int32_t wholeOfText(std::string_view text, std::string_view what) {
    const double number = realOfText(text, what);
    if (number != std::trunc(number) || number < std::numeric_limits<std::int32_t>::min() ||
        number > std::numeric_limits<std::int32_t>::max()) {
        throw AutomationError(
            AutomationFault::NotANumber,
            formatPrintf("The %s is '%s', which is no whole number.", what, shownText(text)));
    }
    return static_cast<std::int32_t>(number);
}

/// The pairs of the record with all that the sheet shows. Throws `NotANumber`.
PairSet pairsOf(const ProfileFile& file, const std::string& record) {
    if (const auto count = file.value(record, c::kPsN.code, ""); !count.empty()) {
        (void)numberOfText(count, "number of pairs");
    }
    return PairSet::read(file, record, false, PairSet::Rows::All);
}

bool isNumber(std::string_view text, double value) {
    const auto number = parseDouble(text);
    return number && *number == value;
}

std::string coefficientText(AutomationSession& session, double value) {
    return readableExponentText(value, floatPrecision(session.context().settings), c::kCo.limit);
}

/// The coefficient and what a higher order needs. Nothing if it is there already.
DefinitionEdit::Values coefficientValues(AutomationSession& session, const DefinitionEdit& edit,
                                         const CoefficientFields& fields, int term, double value) {
    const int count = leadingInt(edit.value(fields.count.code));
    const auto code = fields.codeOf(term);
    if (term <= count && isNumber(edit.value(code), value)) {
        return {};
    }
    DefinitionEdit::Values values{{code, coefficientText(session, value)}};
    // A file has the offset only together with a term.
    const int wanted = std::max(term, 1);
    if (count < wanted) {
        values.emplace_back(fields.count.code, std::to_string(wanted));
        for (int i = 0; i <= wanted; ++i) {
            const bool isHeld = i <= count && !edit.value(fields.codeOf(i)).empty();
            const bool isOffset = i == 0 && !edit.value(fields.codeOf(i)).empty();
            if (i != term && !isHeld && !isOffset) {
                values.emplace_back(fields.codeOf(i), coefficientText(session, 0));
            }
        }
    }
    return values;
}

bool storeValues(DefinitionEdit& edit, AutomationTalk& talk, const DefinitionEdit::Values& values) {
    if (!values.empty() && !edit.setValues(&talk, values)) {
        throw talk.failure();
    }
    return !values.empty();
}

}  // namespace

std::int32_t AutomationConversions::GetMeasurementEuCoefficientOrderOfFit(
    const std::string& mesName) {
    const auto record = requireRecord(session_, mesName);
    const auto& fields = requireCoefficients(session_, typeOf(session_, record));
    return numberOfText(record.value(fields.count.code), "order of fit");
}

double AutomationConversions::GetMeasurementEuCoefficient(const std::string& mesName,
                                                          std::int32_t term) {
    const auto record = requireRecord(session_, mesName);
    requireRange(term, 0, kHighestTerm, "term");
    const auto& fields = requireCoefficients(session_, typeOf(session_, record));
    const auto count = record.value(fields.count.code);
    requireRange(term, 0, count.empty() ? 0 : numberOfText(count, "order of fit"), "term");
    return realOfText(record.value(fields.codeOf(term)), "coefficient");
}

void AutomationConversions::SetMeasurementEuCoefficient(const std::string& mesName,
                                                        std::int32_t term, double coefficient) {
    const auto record = requireConvertible(session_, mesName);
    requireRange(term, 0, kHighestTerm, "term");
    requireFinite(coefficient, "coefficient");
    changeRecord(session_, record, [&](DefinitionEdit& edit, AutomationTalk& talk) {
        const auto& fields = requireCoefficients(
            session_, shownType(edit.copy(), edit.name(), session_.context().document.version));
        return storeValues(edit, talk,
                           coefficientValues(session_, edit, fields, term, coefficient));
    });
}

std::int32_t AutomationConversions::GetMeasurementEuPairSetNumberOfPairs(
    const std::string& mesName) {
    const auto record = requireRecord(session_, mesName);
    requirePairs(typeOf(session_, record));
    return static_cast<std::int32_t>(pairsOf(record.file(), record.name()).size());
}

ConversionPair AutomationConversions::GetMeasurementEuPairSet(const std::string& mesName,
                                                              std::int32_t pair) {
    const auto record = requireRecord(session_, mesName);
    requirePairs(typeOf(session_, record));
    const auto pairs = pairsOf(record.file(), record.name());
    requireRange(pair, 1, static_cast<std::int64_t>(pairs.size()), "pair");
    const auto& found = pairs.pairs()[static_cast<std::size_t>(pair) - 1];
    return {wholeOfText(found.telemetry, "telemetry value"),
            realOfText(found.engineering, "EU value")};
}

void AutomationConversions::SetMeasurementEuPairSet(const std::string& mesName, std::int32_t pair,
                                                    std::int32_t x, double y) {
    const auto record = requireConvertible(session_, mesName);
    requireRange(pair, 1, static_cast<std::int64_t>(PairSet::kMostPairs), "pair");
    requireFinite(y, "EU value");
    changeRecord(session_, record, [&](DefinitionEdit& edit, AutomationTalk& talk) {
        const auto file = edit.copy();
        requirePairs(shownType(file, edit.name(), edit.edition()));
        const auto pairs = pairsOf(file, edit.name());
        const auto count = static_cast<std::int32_t>(pairs.size());
        requireRange(pair, 1, count + 1, "pair");
        if (pair <= count) {
            const auto& held = pairs.pairs()[static_cast<std::size_t>(pair) - 1];
            if (isNumber(held.telemetry, x) && isNumber(held.engineering, y)) {
                return false;
            }
        }
        const auto& settings = session_.context().settings;
        (void)storeValues(edit, talk,
                          {{std::string(c::kPsN.code), std::to_string(std::max(count, pair))},
                           {fieldCode(c::kPs3.code, {pair}), std::to_string(x)},
                           {fieldCode(c::kPs4.code, {pair}),
                            readableExponentText(y, floatPrecision(settings), c::kPs4.limit)}});
        PairSetPage page(session_.context(), session_.application().conversions(), edit.name());
        // Does nothing for a record that defines no curve.
        (void)page.refresh(&talk, page.input(0));
        return true;
    });
}

}  // namespace kavu
