#include "pcm/IdCounterFields.h"

#include "core/Printf.h"
#include "core/Text.h"
#include "pcm/PcmFormatFields.h"
#include "pcm/SubframeCodes.h"
#include "pcm/SubframeEdit.h"

#include <array>
#include <functional>

namespace kavu {

namespace {

struct CounterText {
    std::string_view code;  ///< as it is printed
    std::string_view (*text)(const IdCounter&);
    void (*setText)(IdCounter&, std::string_view);
};

template <auto Member>
constexpr CounterText textOf(std::string_view code) {
    return {code, [](const IdCounter& counter) { return (counter.*Member).view(); },
            [](IdCounter& counter, std::string_view text) { counter.*Member = text; }};
}

constexpr auto kTexts = std::to_array<CounterText>({
    textOf<&IdCounter::name>(subframe_code::kCounterName),
    textOf<&IdCounter::type>(subframe_code::kCounterType),
    textOf<&IdCounter::wordLength>(subframe_code::kWordLength),
    textOf<&IdCounter::msbStartBit>(subframe_code::kMsbStartBit),
    textOf<&IdCounter::counterLength>(subframe_code::kCounterLength),
    textOf<&IdCounter::transferOrder>(subframe_code::kTransferOrder),
    textOf<&IdCounter::initialValue>(subframe_code::kInitialValue),
    textOf<&IdCounter::startFrame>(subframe_code::kStartFrame),
    textOf<&IdCounter::endValue>(subframe_code::kEndValue),
    textOf<&IdCounter::endFrame>(subframe_code::kEndFrame),
    textOf<&IdCounter::countDirection>(subframe_code::kCountDirection),
});

const CounterText* findText(std::string_view code) {
    for (const auto& row : kTexts) {
        if (row.code.substr(0, row.code.find("-%d")) == code) {
            return &row;
        }
    }
    return nullptr;
}

}  // namespace

std::string idCounterValue(const IdCounter& counter, std::string_view code) {
    const auto* const row = findText(code);
    return row == nullptr ? std::string() : std::string(row->text(counter));
}

FieldValues idCounterValues(const IdCounter& counter) {
    FieldValues values;
    for (const auto& field : idCounterFields()) {
        if (auto value = idCounterValue(counter, field.code); !value.empty()) {
            values[std::string(field.code)] = std::move(value);
        }
    }
    return values;
}

bool editIdCounterField(PcmFormat& format, UserInterface* parent, IdCounter& counter,
                        std::string_view code, std::string_view value) {
    const auto* const row = findText(code);
    if (row == nullptr) {
        return false;
    }
    const int number = leadingInt(value);
    if (row->code == subframe_code::kMsbStartBit) {
        return setMsbStartBit(format, parent, counter, number);
    }
    if (row->code == subframe_code::kStartFrame) {
        return setStartFrame(format, parent, counter, number);
    }
    if (row->code == subframe_code::kEndFrame) {
        return setEndFrame(format, parent, counter, number);
    }
    row->setText(counter, value);
    if (row->code == subframe_code::kInitialValue || row->code == subframe_code::kCountDirection) {
        updateEndValue(counter);
    }
    return true;
}

std::string definitionTitle(std::string_view what, bool isNew, int fwp) {
    return formatPrintf("%s%s (FWP: %d)", isNew ? "Create New " : "Edit ", what, fwp);
}

}  // namespace kavu
