#include "application/automation/AutomationConversions.h"

#include "application/Application.h"
#include "application/automation/AutomationConversionRecord.h"
#include "application/automation/AutomationSession.h"
#include "application/automation/AutomationValues.h"
#include "conversion/ConversionFields.h"
#include "conversion/DefinitionEdit.h"
#include "conversion/DefinitionSheet.h"
#include "core/TmatsDocument.h"
#include "core/text/Text.h"
#include "vocabulary/FieldRules.h"

namespace kavu {

namespace {

/// A text of a record for the methods that get and set it.
struct TextField {
    const Field& field;
    std::string_view what;
    bool isLimit = false;     ///< a number, and each low one is below its high one
    bool lineBreaks = false;  ///< has them
};
constexpr TextField kDescription{c::kMn1, "description", false, true};
constexpr TextField kUnits{c::kMn3, "units"};
constexpr TextField kSampleRate{c::kSr, "sample rate"};
constexpr TextField kHighValue{c::kMot1, "high value", true};
constexpr TextField kLowValue{c::kMot2, "low value", true};
constexpr TextField kHighLimit{c::kMot3, "high limit", true};
constexpr TextField kLowLimit{c::kMot4, "low limit", true};
constexpr TextField kHighWarning{c::kMot5, "high warning", true};
constexpr TextField kLowWarning{c::kMot6, "low warning", true};

std::string getText(AutomationSession& session, const std::string& name, const TextField& text) {
    const auto record = requireRecord(session, name);
    requireField(session, text.field, text.what);
    return shownText(record.value(text.field.code));
}

void requireLimits(const DefinitionEdit& edit, const DefinitionValues& values,
                   const std::string& given) {
    const auto refused = refusedLimit(edit, values.fields);
    if (!refused) {
        return;
    }
    if (!given.empty() && !parseDouble(given)) {
        throw AutomationError(AutomationFault::BadValue, refused->text);
    }
    throw AutomationError::refused(0, refused->text);
}

/// Stores a field of the sheet as the sheet does.
bool storeField(DefinitionEdit& edit, AutomationTalk& talk, std::string_view code,
                const std::string& value, bool isLimit) {
    auto values = readPages(edit);
    if (values.field(code) == value) {
        return false;
    }
    values.fields.insert_or_assign(std::string(code), value);
    if (isLimit) {
        requireLimits(edit, values, value);
    }
    if (!storePages(edit, &talk, values)) {
        throw talk.failure();
    }
    return true;
}

void setText(AutomationSession& session, const std::string& name, const TextField& text,
             const std::string& value) {
    const auto record = requireConvertible(session, name);
    requireField(session, text.field, text.what);
    auto before = valueOrNone(session, record, text.field.code);
    fromStoredForm(before);
    auto bytes = std::string(trimTrailingBlanks(storedText(value, before)));
    requireText(bytes, text.field.limit, text.lineBreaks, text.what);
    changeRecord(session, record, [&](DefinitionEdit& edit, AutomationTalk& talk) {
        return storeField(edit, talk, text.field.code, bytes, text.isLimit);
    });
}

/// A choice of the page of EU information, whose changes set the date of release.
void setChoice(AutomationSession& session, const std::string& name, const Field& field,
               const std::string& value, std::string_view what) {
    const auto record = requireConvertible(session, name);
    const auto code = requireCode(field.choices, session.context().document.version, value, what);
    changeRecord(session, record, [&](DefinitionEdit& edit, AutomationTalk& talk) {
        if (!storeField(edit, talk, field.code, code, false)) {
            return false;
        }
        if (!edit.stampRelease(&talk, false)) {
            throw talk.failure();
        }
        return true;
    });
}

}  // namespace

void AutomationConversions::ShowMeasurementEuDialog(std::int64_t hWnd, const std::string& mesName) {
    const auto record = requireConvertible(session_, mesName);
    if (!session_.requireWindows().editConversion(hWnd, record)) {
        throw AutomationError(AutomationFault::Cancelled, "The user has cancelled.");
    }
}

std::string AutomationConversions::GetMeasurementEuBinaryFormat(const std::string& mesName) {
    return shownText(requireRecord(session_, mesName).value(c::kBfm.code));
}

void AutomationConversions::SetMeasurementEuBinaryFormat(const std::string& mesName,
                                                         const std::string& format) {
    setChoice(session_, mesName, c::kBfm, format, "binary format");
}

std::string AutomationConversions::GetMeasurementEuConversionType(const std::string& mesName) {
    const auto record = requireRecord(session_, mesName);
    return shownText(shownType(record.file(), record.name(), session_.context().document.version));
}

void AutomationConversions::SetMeasurementEuConversionType(const std::string& mesName,
                                                           const std::string& type) {
    setChoice(session_, mesName, c::kDct, type, "conversion type");
}

std::string AutomationConversions::GetMeasurementEuDescription(const std::string& mesName) {
    return getText(session_, mesName, kDescription);
}

void AutomationConversions::SetMeasurementEuDescription(const std::string& mesName,
                                                        const std::string& description) {
    setText(session_, mesName, kDescription, description);
}

std::string AutomationConversions::GetMeasurementEuHiLimit(const std::string& mesName) {
    return getText(session_, mesName, kHighLimit);
}

void AutomationConversions::SetMeasurementEuHiLimit(const std::string& mesName,
                                                    const std::string& hiLimit) {
    setText(session_, mesName, kHighLimit, hiLimit);
}

std::string AutomationConversions::GetMeasurementEuHiValue(const std::string& mesName) {
    return getText(session_, mesName, kHighValue);
}

void AutomationConversions::SetMeasurementEuHiValue(const std::string& mesName,
                                                    const std::string& hiValue) {
    setText(session_, mesName, kHighValue, hiValue);
}

std::string AutomationConversions::GetMeasurementEuHiWarning(const std::string& mesName) {
    return getText(session_, mesName, kHighWarning);
}

void AutomationConversions::SetMeasurementEuHiWarning(const std::string& mesName,
                                                      const std::string& hiWarn) {
    setText(session_, mesName, kHighWarning, hiWarn);
}

std::string AutomationConversions::GetMeasurementEuLowLimit(const std::string& mesName) {
    return getText(session_, mesName, kLowLimit);
}

void AutomationConversions::SetMeasurementEuLowLimit(const std::string& mesName,
                                                     const std::string& lowLimit) {
    setText(session_, mesName, kLowLimit, lowLimit);
}

std::string AutomationConversions::GetMeasurementEuLowValue(const std::string& mesName) {
    return getText(session_, mesName, kLowValue);
}

void AutomationConversions::SetMeasurementEuLowValue(const std::string& mesName,
                                                     const std::string& lowValue) {
    setText(session_, mesName, kLowValue, lowValue);
}

std::string AutomationConversions::GetMeasurementEuLowWarning(const std::string& mesName) {
    return getText(session_, mesName, kLowWarning);
}

void AutomationConversions::SetMeasurementEuLowWarning(const std::string& mesName,
                                                       const std::string& lowWarn) {
    setText(session_, mesName, kLowWarning, lowWarn);
}

std::string AutomationConversions::GetMeasurementEuSampleRate(const std::string& mesName) {
    return getText(session_, mesName, kSampleRate);
}

void AutomationConversions::SetMeasurementEuSampleRate(const std::string& mesName,
                                                       const std::string& sampleRate) {
    setText(session_, mesName, kSampleRate, sampleRate);
}

std::string AutomationConversions::GetMeasurementEuUnits(const std::string& mesName) {
    return getText(session_, mesName, kUnits);
}

void AutomationConversions::SetMeasurementEuUnits(const std::string& mesName,
                                                  const std::string& units) {
    setText(session_, mesName, kUnits, units);
}

}  // namespace kavu
