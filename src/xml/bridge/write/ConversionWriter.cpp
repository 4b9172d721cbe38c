#include "xml/bridge/write/ConversionWriter.h"

#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "vocabulary/MGroupFields.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace kavu {

namespace {

/// True for a command that defines a measurement, by the letter of its group.
bool definesMeasurement(char letter, const FieldPath& path) {
    if (equalsIgnoreCase(path.stem, "MN")) {
        return path.count == (letter == 'D' ? 2 : 3);
    }
    return letter == 'B' && path.count == 1 && path.stem.size() == 4 &&
           startsWithIgnoreCase(path.stem, "UMN");
}

}  // namespace

const Field& ConversionWriter::fieldOf(std::string_view code) const {
    static constexpr Field kPlain{};
    const auto* const field = xmlField('C', code, run_.options.dialect);
    return field == nullptr ? kPlain : *field;
}

ConversionWriter::ConversionWriter(ExportRun& run) : run_(run) {
    hasLink_.resize(run_.session.conversionCount());
    isWritten_.resize(hasLink_.size());
    if (hasLink_.empty()) {
        return;
    }
    for (const auto& link : run_.session.links()) {
        findRecords(link);
    }
}

void ConversionWriter::findRecords(const SdkLink& link) {
    auto& records = ofLink_[link.name];
    std::vector<bool> isFound(hasLink_.size());
    for (const char letter : {'D', 'B', 'S'}) {
        const int number = link.group(letter);
        if (number == 0) {
            continue;
        }
        if (const auto group = run_.session.openGroup(letter, number)) {
            findRecordsIn(*group, records, isFound);
        }
    }
}

void ConversionWriter::findRecordsIn(const SdkGroup& group, std::vector<std::size_t>& records,
                                     std::vector<bool>& isFound) {
    for (std::size_t place = 0; place < group.size(); ++place) {
        const auto command = group.at(place);
        const auto path = parseField(command.field);
        if (command.value.empty() || !path || !definesMeasurement(group.letter(), *path)) {
            continue;
        }
        const auto record = run_.session.findConversion(run_.values.original(command.value));
        if (record && !isFound[*record]) {
            isFound[*record] = true;
            hasLink_[*record] = true;
            records.push_back(*record);
        }
    }
}

std::vector<std::size_t> ConversionWriter::withoutLink() const {
    std::vector<std::size_t> records;
    for (std::size_t record = 0; record < hasLink_.size(); ++record) {
        const auto& name = run_.session.conversionName(record);
        if (!hasLink_[record] && !name.empty() && run_.session.findConversion(name) == record) {
            records.push_back(record);
        }
    }
    return records;
}

bool ConversionWriter::isNamedBy(const std::string& source, const std::string& measurement) {
    const auto [it, isNew] = ofSource_.try_emplace(source);
    if (isNew) {
        if (const auto group = run_.session.openGroup('M', source)) {
            for (std::size_t place = 0; place < group->size(); ++place) {
                const auto command = group->at(place);
                if (isOfPattern(command.field, kBasebandMeasurement) ||
                    isOfPattern(command.field, kSubcarrierMeasurement)) {
                    it->second.insert(run_.values.original(command.value));
                }
            }
        }
    }
    return it->second.contains(measurement);
}

bool ConversionWriter::writeLink(const SdkLink& link) {
    const auto it = ofLink_.find(link.name);
    return it == ofLink_.end() || writeRecords(it->second);
}

bool ConversionWriter::writeRecords(const std::vector<std::size_t>& records) {
    if (records.empty()) {
        return true;
    }
    run_.status("Converting TMATS 'C' group to XML...");
    run_.tags.open("DataConversionAttributes", "\nC Group");
    bool isDone = true;
    for (std::size_t i = 0; i < records.size() && isDone; ++i) {
        if (i % kPollEvery == 0) {
            run_.progress(formatPrintf("Converting Data Conversion definitions #%d of %d",
                                       static_cast<int>(i + 1), static_cast<int>(records.size())),
                          i, records.size());
            isDone = !run_.isCancelled();
        }
        writeRecord(records[i]);
    }
    run_.tags.close();
    return isDone;
}

void ConversionWriter::writeRecord(std::size_t record) {
    auto group = run_.session.openConversion(record);
    if (!group) {
        return;
    }
    GroupRows rows(std::move(*group));
    (void)rows.take(rows.stem("DCN"), {});
    run_.tags.open("Measurement" + run_.attribute("Name", run_.session.conversionName(record)));
    {
        const CheckedPart part(run_, 'C');
        PlanWriter(run_.tags, run_.values, rows, run_.plan('C', conversionPlan()),
                   [&](PlanWriter& plan, const ElementStep& step, const RowNumbers&) {
                       return writeSpecial(plan, step);
                   })
            .run();
    }
    if (!isWritten_[record]) {
        isWritten_[record] = true;
        run_.loseRest(rows, "DCN");
    }
    run_.closeNamed(rows.code("DCN", {}));
}

bool ConversionWriter::writeSpecial(PlanWriter& plan, const ElementStep& step) {
    if (step.code == "DCT") {
        plan.closeTo(0);
        writeConversion(plan.rows(), step);
    } else if (step.code == "DPA") {
        writeWithAttribute(plan, step, "Type", "DPAT");
    } else if (step.code == "DPTM") {
        writeWithAttribute(plan, step, "NumberOfOccurrences", "DPNO");
    } else if (step.code == "CO-n" || step.code == "NPC-n") {
        writeTerms(plan, step);
    } else {
        writeCalibration(plan, step);
    }
    return true;
}

/// One element for each row; without a count the values without a number. The schema has one
/// element with the rows side by side, at most five of a calibration.
void ConversionWriter::writeCalibration(PlanWriter& plan, const ElementStep& count) {
    static constexpr std::array<std::string_view, 3> kElements{"Stimulus", "TelemetryValue",
                                                               "DataValue"};
    static constexpr int kMostSchemaRows = 5;
    auto& rows = plan.rows();
    const std::string kind(count.code.substr(0, 2));
    const bool isInFlight = kind == "MC";
    const auto element = isInFlight ? "InflightCalibration" : "AmbientValue";
    const auto stems =
        std::to_array({rows.stem(kind + "1"), rows.stem(kind + "2"), rows.stem(kind + "3")});
    const int rowsStated = rows.takeCount(rows.stem(count.stem), {});
    const auto writeRow = [&](const RowNumbers& at) {
        for (std::size_t i = 0; i < stems.size(); ++i) {
            if (const auto value = rows.take(stems[i], at)) {
                run_.tags.value(kElements[i], run_.values.plain(*value),
                                rows.code(kind + std::to_string(i + 1), at));
            }
        }
    };
    plan.closeTo(0);
    if (rowsStated == 0) {
        run_.tags.open(element);
        writeRow({});
        run_.tags.close();
        return;
    }
    const bool isOne = run_.isSchema();
    const int most = isOne && isInFlight ? std::min(rowsStated, kMostSchemaRows) : rowsStated;
    if (isOne) {
        run_.tags.open(element);
    }
    for (int row = rows.nextRow(stems, {}, 0); row != 0 && row <= most;
         row = rows.nextRow(stems, {}, row)) {
        if (!isOne) {
            run_.tags.open(element);
        }
        writeRow({static_cast<std::size_t>(row)});
        if (!isOne) {
            run_.tags.close();
        }
    }
    if (isOne) {
        run_.tags.close();
    }
}

/// The offset has the number 0.
void ConversionWriter::writeTerms(PlanWriter& plan, const ElementStep& term) {
    auto& rows = plan.rows();
    const auto stem = rows.stem(term.stem);
    const int count = rows.takeCount(rows.stem(std::string(term.stem) + "\\N"), {});
    const auto writeTerm = [&](int number, const RowNumbers& at) {
        if (const auto value = rows.take(stem, at)) {
            plan.moveAround(term);
            run_.tags.value(std::string(term.path.back()) + " N=\"" + std::to_string(number) + "\"",
                            run_.values.plain(*value), rows.code(term.stem, at));
        }
    };
    writeTerm(0, {});
    const std::array<int, 1> stems{stem};
    for (int row = rows.nextRow(stems, {}, 0); row != 0 && row <= count;
         row = rows.nextRow(stems, {}, row)) {
        writeTerm(row, {static_cast<std::size_t>(row)});
    }
}

/// An element whose attribute is a command of its own.
void ConversionWriter::writeWithAttribute(PlanWriter& plan, const ElementStep& step,
                                          std::string_view attribute, std::string_view code) {
    auto& rows = plan.rows();
    const auto text = rows.take(rows.stem(step.stem), {});
    const auto beside = rows.take(rows.stem(code), {});
    if (!text && !beside) {
        return;
    }
    std::string tag(step.path.back());
    if (beside) {
        tag += run_.attribute(attribute, fieldOf(code), *beside, rows.code(code, {}));
    }
    plan.moveAround(step);
    run_.tags.value(tag, text ? run_.values.plain(*text) : std::string(),
                    rows.code(text ? step.stem : code, {}));
}

/// The one group that is written although it is empty, with its attributes.
void ConversionWriter::writeConversion(GroupRows& rows, const ElementStep& step) {
    std::string tag = "DataConversion";
    bool hasAttribute = false;
    const auto add = [&](std::string_view name, std::string_view code) {
        const auto value = rows.take(rows.stem(code), {});
        if (!value) {
            return;
        }
        const auto text = run_.attribute(name, fieldOf(code), *value, rows.code(code, {}));
        tag += text;
        hasAttribute = hasAttribute || !text.empty();
    };
    add("Type", step.code);
    add("DateAndTimeReleased", "CRT");
    run_.tags.open(tag);
    PlanWriter(run_.tags, run_.values, rows, run_.plan('C', conversionTypePlan(), "DataConversion"),
               [&](PlanWriter& inner, const ElementStep& special, const RowNumbers&) {
                   return writeSpecial(inner, special);
               })
        .run();
    run_.tags.close(hasAttribute);
}

void ConversionWriter::loseRest() {
    for (std::size_t record = 0; record < isWritten_.size(); ++record) {
        if (!isWritten_[record]) {
            run_.lose("C-" + std::to_string(run_.session.conversionNumber(record)) + "\\DCN");
        }
    }
}

}  // namespace kavu
