#include "xml/bridge/write/PlanWriter.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace kavu {

PlanWriter::PlanWriter(TagWriter& tags, XmlValues& values, GroupRows& rows, const XmlPlan& plan,
                       Special special)
    : tags_(tags), values_(values), rows_(rows), plan_(plan), special_(std::move(special)) {
    for (const auto& step : plan_) {
        stems_.push_back(step.stem.empty() ? GroupRows::kNoStem : rows_.stem(step.stem));
        auto& inside = inside_.emplace_back();
        for (const auto stem : step.stems) {
            if (const int number = rows_.stem(stem); number != GroupRows::kNoStem) {
                inside.push_back(number);
            }
        }
    }
}

void PlanWriter::run() {
    writeSteps(0, plan_.size(), {});
    closeTo(0);
}

void PlanWriter::closeTo(std::size_t depth) {
    while (path_.size() > depth) {
        tags_.close();
        path_.pop_back();
    }
}

void PlanWriter::moveTo(std::span<const std::string_view> path) {
    const auto same = std::mismatch(path_.begin(), path_.end(), path.begin(), path.end()).first;
    closeTo(static_cast<std::size_t>(same - path_.begin()));
    for (std::size_t depth = path_.size(); depth < path.size(); ++depth) {
        tags_.open(std::string(path[depth]));
        path_.push_back(path[depth]);
    }
}

void PlanWriter::write(std::string_view element, const Field& field, std::string_view code,
                       const RowNumbers& at) {
    const auto value = rows_.take(rows_.stem(stemOf(code)), at);
    if (!value) {
        return;
    }
    const auto full = rows_.code(stemOf(code), at);
    tags_.value(element, values_.text(field, element, *value, full), full);
}

void PlanWriter::writeValue(std::size_t place, const RowNumbers& at) {
    const auto& step = plan_[place];
    if (step.field == nullptr || step.path.back().starts_with('@')) {
        return;
    }
    auto numbers = at;
    if (!rows_.peek(stems_[place], numbers)) {
        numbers = numbers.row(1);
        if (step.kind != PlanStep::Kind::ValueOrFirst || !rows_.peek(stems_[place], numbers)) {
            return;
        }
    }
    moveAround(step);
    write(step.path.back(), *step.field, step.code, numbers);
}

/// The rows that a list has. A count that the default form knows by a spelling of its own has that
/// of the standard in the schema's dialect as well: what an import by the schema writes comes back.
int PlanWriter::takeCountOf(std::size_t place, const RowNumbers& at) {
    const auto& list = plan_[place];
    if (list.kind == PlanStep::Kind::Rows) {
        return std::numeric_limits<int>::max();
    }
    if (list.kind == PlanStep::Kind::First) {
        return 1;
    }
    const int count = rows_.takeCount(stems_[place], at);
    const bool hasOther =
        values_.isSchema() && list.field != nullptr && !list.field->codeToXml.empty();
    return count == 0 && hasOther ? rows_.takeCount(rows_.stem(stemOf(list.field->code)), at)
                                  : count;
}

void PlanWriter::writeList(std::size_t place, const RowNumbers& at) {
    const auto& list = plan_[place];
    const int count = takeCountOf(place, at);
    const auto depth = list.rowDepth;
    for (int row = rows_.nextRow(inside_[place], at, 0); row != 0 && row <= count;
         row = rows_.nextRow(inside_[place], at, row)) {
        closeTo(std::min(path_.size(), depth));
        writeSteps(place + 1, list.end, at.row(static_cast<std::size_t>(row)));
    }
    closeTo(std::min(path_.size(), depth));
}

void PlanWriter::writeSteps(std::size_t from, std::size_t to, const RowNumbers& at) {
    for (std::size_t place = from; place < to; ++place) {
        switch (plan_[place].kind) {
            case PlanStep::Kind::Value:
            case PlanStep::Kind::ValueOrFirst:
                writeValue(place, at);
                break;
            case PlanStep::Kind::List:
            case PlanStep::Kind::Rows:
            case PlanStep::Kind::First:
                writeList(place, at);
                place = plan_[place].end;
                break;
            case PlanStep::Kind::Special:
                if (special_ && !special_(*this, plan_[place], at)) {
                    return;
                }
                break;
            case PlanStep::Kind::End:
                break;
        }
    }
}

}  // namespace kavu
