#include "conversion/RecordText.h"

#include "core/command/CommandPath.h"
#include "core/text/Text.h"

#include <algorithm>
#include <limits>

namespace kavu {

namespace {

constexpr std::string_view kEnd = ";\r\n";  // of a command
constexpr unsigned kColumnBits = 8;
constexpr unsigned kNumberBits = 32;
constexpr std::uint64_t kMostNumber = std::numeric_limits<int>::max();

std::uint64_t orderOf(std::size_t list, std::uint64_t number, std::size_t column) {
    return (static_cast<std::uint64_t>(list) << (kNumberBits + kColumnBits)) |
           (number << kColumnBits) | column;
}

}  // namespace

RecordText::RecordText(int edition, const SampleRateOptions& rates)
    : edition_(edition),
      rates_(rates),
      common_(stepsOf(commonConversionFields())),
      typeHead_(std::string(kTypeCode) + ":"),
      commentHead_(std::string(kCommentCode) + ":"),
      typePlace_(findConversionCode(kTypeCode)->value),
      formatPlace_(findConversionCode(c::kBfm.code)->value),
      values_(conversionValueCount()) {}

RecordText::Steps RecordText::stepsOf(std::span<const ConversionField> fields) const {
    Steps steps;
    for (const auto& field : fields) {
        if (edition_ < field.from || edition_ > field.until) {
            continue;
        }
        Step step{&field, std::string(field.code) + ":", findConversionCode(field.code)->value,
                  ConversionCode::kNone, ConversionCode::kNone};
        if (!field.needs.empty()) {
            step.needs = findConversionCode(field.needs)->value;
        }
        if (field.form == WrittenForm::List) {
            step.list = findConversionCode(field.items.front())->list;
        }
        steps.push_back(std::move(step));
    }
    return steps;
}

const RecordText::Steps& RecordText::stepsOfType(std::string_view type) {
    const auto fields = typeConversionFields(type, edition_);
    const auto known = std::find_if(types_.begin(), types_.end(), [&](const TypeSteps& each) {
        return each.fields.data() == fields.data();
    });
    return known != types_.end() ? known->steps
                                 : types_.emplace_back(TypeSteps{fields, stepsOf(fields)}).steps;
}

void RecordText::clear() {
    std::fill(values_.begin(), values_.end(), std::string_view());
    items_.clear();
}

void RecordText::put(std::string_view code, std::string_view value) {
    if (const auto* const row = findConversionCode(codeHead(code))) {
        put(*row, code, value);
    }
}

void RecordText::put(const ConversionCode& row, std::string_view code, std::string_view value) {
    const auto cut = cutAtRow(code, 0);
    if (!cut) {
        if (row.value != ConversionCode::kNone) {
            values_[row.value] = value.data() == nullptr ? std::string_view("") : value;
        }
        return;
    }
    // An item has one number as a format writes it: any other code is another one.
    const auto number = cut->rest;
    if (row.column == ConversionCode::kNone || number.empty() || number.front() == '0') {
        return;
    }
    std::uint64_t index = 0;
    for (const char digit : number) {
        if (!isDigit(digit) || index > kMostNumber) {
            return;
        }
        index = index * 10 + static_cast<std::uint64_t>(digit - '0');
    }
    if (index <= kMostNumber) {
        items_.push_back({orderOf(row.list, index, row.column), value});
    }
}

std::string_view RecordText::value(std::string_view code) const {
    return values_[findConversionCode(code)->value];
}

const std::string& RecordText::write(std::int64_t index, std::string_view name,
                                     std::string_view comment) {
    const auto byOrder = [](const Item& a, const Item& b) { return a.order < b.order; };
    if (!std::is_sorted(items_.begin(), items_.end(), byOrder)) {
        std::stable_sort(items_.begin(), items_.end(), byOrder);
    }
    prefix_ = "C-";
    appendNumber(prefix_, index);
    prefix_ += '\\';
    // The only value that keeps its line breaks in stored form.
    std::string stored(trimTrailingBlanks(name));
    toStoredForm(stored);
    text_.assign(prefix_).append(kNameCode).append(":").append(stored).append(kEnd);
    const auto afterName = text_.size();
    writeSteps(common_);
    const auto type = values_[typePlace_].data() == nullptr ? kNoType : values_[typePlace_];
    command(typeHead_, type);
    writeSteps(stepsOfType(type));
    command(commentHead_, comment);
    fromStoredForm(text_, afterName);
    return text_;
}

void RecordText::command(std::string_view head, std::string_view value) {
    if (!value.empty()) {
        text_.append(prefix_).append(head).append(value).append(kEnd);
    }
}

std::string_view RecordText::valueOf(const Step& step) const {
    const auto value = values_[step.value];
    return value.data() == nullptr ? step.field->otherwise : value;
}

int RecordText::numberAt(std::size_t place) const {
    return leadingInt(values_[place]);
}

void RecordText::writeSteps(const Steps& steps) {
    for (const auto& step : steps) {
        const bool isCounted = step.needs == ConversionCode::kNone || numberAt(step.needs) > 0;
        if (isCounted &&
            (!step.field->bitWeights || equalsIgnoreCase(values_[formatPlace_], "BWT"))) {
            writeStep(step);
        }
    }
}

void RecordText::writeStep(const Step& step) {
    const auto value = valueOf(step);
    switch (step.field->form) {
        case WrittenForm::Value:
            command(step.head, value);
            break;
        case WrittenForm::Count:
            command(step.head, leadingInt(value) < 0 ? "0" : value);
            break;
        case WrittenForm::IntegerCount:
            command(step.head, std::to_string(leadingInt(value)));
            break;
        case WrittenForm::SampleRate: {
            std::string rate(value);
            trimSampleRate(rate, rates_);
            command(step.head, rate);
            break;
        }
        case WrittenForm::List:
            writeItems(step, leadingInt(value));
            break;
    }
}

void RecordText::writeItems(const Step& step, int count) {
    if (count <= 0) {
        return;
    }
    const auto isBefore = [](const Item& item, std::uint64_t order) { return item.order < order; };
    const auto last = orderOf(step.list, static_cast<std::uint64_t>(count) + 1, 0);
    std::string head;
    for (auto item =
             std::lower_bound(items_.begin(), items_.end(), orderOf(step.list, 0, 0), isBefore);
         item != items_.end() && item->order < last; ++item) {
        const auto next = item + 1;
        if (next != items_.end() && next->order == item->order) {
            continue;  // the later one counts
        }
        const auto column = item->order & ((1U << kColumnBits) - 1);
        head.assign(step.field->items[column]).append("-");
        appendNumber(head, static_cast<std::int64_t>((item->order >> kColumnBits) &
                                                     ((std::uint64_t{1} << kNumberBits) - 1)));
        command(head.append(":"), item->value);
    }
}

}  // namespace kavu
