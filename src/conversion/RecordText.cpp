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

std::int64_t numberOf(std::uint64_t order) {
    return static_cast<std::int64_t>((order >> kColumnBits) &
                                     ((std::uint64_t{1} << kNumberBits) - 1));
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
      commentPlace_(findConversionCode(kCommentCode)->value),
      values_(conversionValueCount()) {}

RecordText::Steps RecordText::stepsOf(std::span<const ConversionField> fields) const {
    Steps steps;
    for (const auto& field : fields) {
        if (edition_ < field.from || edition_ > field.until) {
            continue;
        }
        Step step{&field,
                  std::string(field.code) + ":",
                  findConversionCode(field.code)->value,
                  ConversionCode::kNone,
                  ConversionCode::kNone,
                  ConversionCode::kNone};
        if (!field.needs.empty()) {
            step.needs = findConversionCode(field.needs)->value;
        }
        if (field.form == WrittenForm::List) {
            step.list = findConversionCode(field.items.front())->list;
        }
        steps.push_back(std::move(step));
    }
    for (auto& step : steps) {
        for (const auto& other : steps) {
            if (step.needs != ConversionCode::kNone && other.value == step.needs &&
                other.list != ConversionCode::kNone) {
                step.counted = other.list;
            }
        }
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

bool RecordText::put(std::string_view code, std::string_view value) {
    const auto* const row = findConversionCode(codeHead(code));
    return row != nullptr && put(*row, code, value);
}

bool RecordText::put(const ConversionCode& row, std::string_view code, std::string_view value) {
    const auto cut = cutAtRow(code, 0);
    if (!cut) {
        if (row.value == ConversionCode::kNone) {
            return false;
        }
        const bool isNew = values_[row.value].data() == nullptr;
        values_[row.value] = value.data() == nullptr ? std::string_view("") : value;
        return isNew;
    }
    // An item has one number as a format writes it: any other code is another one.
    const auto number = cut->rest;
    if (row.column == ConversionCode::kNone || number.empty() || number.front() == '0') {
        return false;
    }
    std::uint64_t index = 0;
    for (const char digit : number) {
        if (!isDigit(digit) || index > kMostNumber) {
            return false;
        }
        index = index * 10 + static_cast<std::uint64_t>(digit - '0');
    }
    if (index > kMostNumber) {
        return false;
    }
    items_.push_back({orderOf(row.list, index, row.column), value});
    return true;
}

std::string_view RecordText::value(std::string_view code) const {
    return values_[findConversionCode(code)->value];
}

void RecordText::sortItems() {
    const auto byOrder = [](const Item& a, const Item& b) { return a.order < b.order; };
    if (!std::is_sorted(items_.begin(), items_.end(), byOrder)) {
        std::stable_sort(items_.begin(), items_.end(), byOrder);
    }
}

std::string_view RecordText::type() const {
    return values_[typePlace_].data() == nullptr ? kNoType : values_[typePlace_];
}

void RecordText::findWritten() {
    sortItems();
    writtenValues_.assign(values_.size(), false);
    writtenLists_.clear();
    writtenSteps_.clear();
    writtenValues_[typePlace_] = true;
    writtenValues_[commentPlace_] = true;
    for (const Steps* const steps : {static_cast<const Steps*>(&common_), &stepsOfType(type())}) {
        for (const auto& step : *steps) {
            if (!isTaken(step)) {
                continue;
            }
            writtenSteps_.push_back(&step);
            if (step.list == ConversionCode::kNone) {
                writtenValues_[step.value] = true;
            } else {
                writtenLists_.resize(std::max(writtenLists_.size(), step.list + 1));
                writtenLists_[step.list] = true;
            }
        }
    }
}

bool RecordText::writes(const ConversionCode& row, std::string_view code) const {
    return cutAtRow(code, 0) ? row.list < writtenLists_.size() && writtenLists_[row.list]
                             : row.value < writtenValues_.size() && writtenValues_[row.value];
}

std::size_t RecordText::repeatedItems() const {
    std::size_t repeated = 0;
    for (std::size_t i = 1; i < items_.size(); ++i) {
        repeated += items_[i].order == items_[i - 1].order ? 1 : 0;
    }
    return repeated;
}

int RecordText::highestOf(std::size_t list) const {
    const auto after =
        std::lower_bound(items_.begin(), items_.end(), orderOf(list + 1, 0, 0), isBeforeOrder);
    const auto order = after == items_.begin() ? 0 : (after - 1)->order;
    return order < orderOf(list, 0, 0) ? 0 : static_cast<int>(numberOf(order));
}

std::vector<RecordText::CountFault> RecordText::countFaults() const {
    std::vector<CountFault> faults;
    for (const auto* const step : writtenSteps_) {
        if (step->list == ConversionCode::kNone) {
            continue;
        }
        const auto stated = values_[step->value];
        const int highest = highestOf(step->list);
        // "N" is how some counts say that there is nothing.
        const bool isNumber =
            std::all_of(stated.begin(), stated.end(), isDigit) || startsWithIgnoreCase(stated, "N");
        if (highest > std::max(0, leadingInt(stated)) || !isNumber) {
            faults.push_back({step->field->code, stated, highest});
        }
    }
    return faults;
}

const std::string& RecordText::write(std::int64_t index, std::string_view name,
                                     std::string_view comment) {
    sortItems();
    prefix_ = "C-";
    appendNumber(prefix_, index);
    prefix_ += '\\';
    // The only value that keeps its line breaks in stored form.
    std::string stored(trimTrailingBlanks(name));
    toStoredForm(stored);
    text_.assign(prefix_).append(kNameCode).append(":").append(stored).append(kEnd);
    const auto afterName = text_.size();
    writeSteps(common_);
    command(typeHead_, type());
    writeSteps(stepsOfType(type()));
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

bool RecordText::isTaken(const Step& step) const {
    const bool isCounted = step.needs == ConversionCode::kNone || numberAt(step.needs) > 0 ||
                           (step.counted != ConversionCode::kNone && highestOf(step.counted) > 0);
    return isCounted && (!step.field->bitWeights || equalsIgnoreCase(values_[formatPlace_], "BWT"));
}

void RecordText::writeSteps(const Steps& steps) {
    for (const auto& step : steps) {
        if (isTaken(step)) {
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
            writeItems(step);
            break;
    }
}

/// Those beyond the count as well: it may be wrong, and they are all that there is of them.
void RecordText::writeItems(const Step& step) {
    const auto last = orderOf(step.list + 1, 0, 0);
    std::string head;
    for (auto item = std::lower_bound(items_.begin(), items_.end(), orderOf(step.list, 0, 0),
                                      isBeforeOrder);
         item != items_.end() && item->order < last; ++item) {
        const auto next = item + 1;
        if (next != items_.end() && next->order == item->order) {
            continue;  // the later one counts
        }
        const auto column = item->order & ((1U << kColumnBits) - 1);
        head.assign(step.field->items[column]).append("-");
        appendNumber(head, numberOf(item->order));
        command(head.append(":"), item->value);
    }
}

}  // namespace kavu
