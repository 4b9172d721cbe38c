#include "pcm/structure/IdCounterFields.h"

#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "pcm/model/SubframeFields.h"
#include "pcm/structure/SubframeEdit.h"

#include <algorithm>
#include <array>

namespace kavu {

namespace {

constexpr bool isShown(const CounterField& row) {
    return !row.field.label.empty();
}
constexpr auto kShown = [] {
    std::array<Field, std::count_if(kCounterFields.begin(), kCounterFields.end(), isShown)> shown{};
    std::size_t count = 0;
    for (const auto& row : kCounterFields) {
        if (isShown(row)) {
            shown[count] = row.field;
            shown[count].code = codeHead(row.field.code);
            shown[count++].list = {};  // a single counter is not in a list
        }
    }
    return shown;
}();

const CounterField* findText(std::string_view code) {
    const auto* const row = std::find_if(
        kCounterFields.begin(), kCounterFields.end(),
        [code](const CounterField& each) { return codeHead(each.field.code) == code; });
    return row == kCounterFields.end() || row->text == nullptr ? nullptr : row;
}

/// Both are rows of the same table.
bool isField(const CounterField& row, const CounterField& field) {
    return row.field.code == field.field.code;
}

}  // namespace

std::span<const Field> idCounterFields() {
    return kShown;
}

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
    if (isField(*row, counter_field::kMsbStartBit)) {
        return setMsbStartBit(format, parent, counter, number);
    }
    if (isField(*row, counter_field::kStartFrame)) {
        return setStartFrame(format, parent, counter, number);
    }
    if (isField(*row, counter_field::kEndFrame)) {
        return setEndFrame(format, parent, counter, number);
    }
    row->setText(counter, value);
    if (isField(*row, counter_field::kInitialValue) ||
        isField(*row, counter_field::kCountDirection)) {
        updateEndValue(counter);
    }
    return true;
}

std::string definitionTitle(std::string_view what, bool isNew, int fwp) {
    return formatPrintf("%s%s (FWP: %d)", isNew ? "Create New " : "Edit ", what, fwp);
}

}  // namespace kavu
