#include "app/bus/BusFormFields.h"

#include "core/command/CommandPath.h"

namespace kavu {

namespace {

Field formField(const Field& field, std::string_view label) {
    auto shown = field;
    shown.code = stemOf(field.code);
    shown.label = label.empty() ? field.label : label;
    shown.list = {};
    shown.box = {};
    return shown;
}

/// The levels whose values the form of a level shows.
std::vector<BusLevel> levelsOfForm(BusLevel level) {
    return level == BusLevel::Message ? std::vector{level, BusLevel::Receive} : std::vector{level};
}

}  // namespace

std::vector<Field> busFormFields(BusLevel level, std::string_view page) {
    std::vector<Field> fields;
    for (const auto& field : busFields(level)) {
        if (page.empty() || field.page == page) {
            fields.push_back(formField(field, {}));
        }
    }
    return fields;
}

Field busFormField(BusLevel level, std::string_view stem, std::string_view label) {
    return formField(*findBusField(level, stem), label);
}

FieldValues busFormValues(const GroupRow& row, BusLevel level) {
    FieldValues values;
    for (const auto each : levelsOfForm(level)) {
        const auto& holder = each == level ? row : receiveOf(row);
        for (const auto& field : busFields(each)) {
            if (const auto value = holder.value(field.code); !value.empty()) {
                values.emplace(stemOf(field.code), value);
            }
        }
    }
    return values;
}

BusForm changedBusForm(BusLevel level, const FieldValues& before, const FieldValues& now) {
    BusForm form;
    for (const auto each : levelsOfForm(level)) {
        for (const auto& field : busFields(each)) {
            const auto stem = stemOf(field.code);
            if (const auto value = valueOf(now, stem); value != valueOf(before, stem)) {
                form.values.emplace_back(stem, value);
            }
        }
    }
    return form;
}

std::string_view valueOf(const FieldValues& values, std::string_view code) {
    const auto found = values.find(code);
    return found == values.end() ? std::string_view() : std::string_view(found->second);
}

}  // namespace kavu
