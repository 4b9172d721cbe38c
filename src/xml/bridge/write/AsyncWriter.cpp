#include "xml/bridge/write/AsyncWriter.h"

#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <array>
#include <string>

namespace kavu {

/// The stems of one of the two kinds.
struct AsyncWriter::Codes {
    std::string_view supercom;
    std::string_view definition;
    std::string_view location;
    std::string_view ranges;
    std::array<std::string_view, 3> range;  ///< start, interval, end
    const char* text;                       ///< as errors call it
};

namespace {

constexpr std::array<std::string_view, 3> kRangeElements{"StartFrame", "FrameInterval", "EndFrame"};

/// The same numbers with another one in the place of the second index.
RowNumbers atLocation(const RowNumbers& at, int location) {
    auto numbers = at;
    numbers.at[1] = location;
    return numbers;
}

}  // namespace

bool AsyncWriter::write(PlanWriter& plan, const ElementStep& step, const RowNumbers& at) {
    static constexpr Codes kEmbedded{
        "AEF1", "AEF2", "AEF3", "AEF7", {"AEF8", "AEF9", "AEF10"}, "Async Embedded"};
    static constexpr Codes kMerge{"ADM1",      "ADM2", "ADM3", "ADM8", {"ADM9", "ADM10", "ADM11"},
                                  "Data Merge"};
    const auto& codes = step.stem.starts_with("AEF") ? kEmbedded : kMerge;
    if (step.stem == codes.location) {
        return writeLocations(plan, step, codes, at);
    }
    if (step.stem == codes.ranges) {
        writeRanges(plan, step, codes, at);
    } else if (step.stem == "ADM\\MP") {
        writePatterns(plan, step, at);
    } else {
        writeColumn(plan, step, at);
    }
    return true;
}

/// A definition names every location when it says so, and the first one otherwise.
bool AsyncWriter::writeLocations(PlanWriter& plan, const ElementStep& step, const Codes& codes,
                                 const RowNumbers& at) {
    auto& rows = plan.rows();
    const auto definition = rows.peek(rows.stem(codes.definition), at);
    const auto supercom = rows.peek(rows.stem(codes.supercom), at);
    const bool isEvery = definition && equalsIgnoreCase(trim(*definition), "EL");
    const int wanted = isEvery && supercom ? std::max(leadingInt(*supercom), 1) : 1;
    plan.moveAround(step);
    const int stem = rows.stem(codes.location);
    for (int location = 1; location <= wanted; ++location) {
        const auto value = rows.take(stem, at.row(static_cast<std::size_t>(location)));
        if (!value) {
            run_.say(
                formatPrintf("ERROR: Unable to determine location for %s definition in PCM "
                             "stream #%d. \"%s%s-%d-%d\" command not found.",
                             codes.text, stream_, rows.prefix(), std::string(codes.location),
                             at.last(), location));
            return false;
        }
        run_.tags.value(step.path.back(), run_.values.plain(*value),
                        rows.code(codes.location, at.row(static_cast<std::size_t>(location))));
    }
    return true;
}

/// One element for each location, up to the first without: those after it would take its place.
void AsyncWriter::writeColumn(PlanWriter& plan, const ElementStep& step, const RowNumbers& at) {
    auto& rows = plan.rows();
    plan.moveAround(step);
    const int stem = rows.stem(step.stem);
    for (std::size_t location = 1;; ++location) {
        const auto value = rows.take(stem, at.row(location));
        if (!value) {
            return;
        }
        run_.tags.value(step.path.back(), run_.values.plain(*value),
                        rows.code(step.stem, at.row(location)));
    }
}

/// "Y" is what it means that there are patterns.
void AsyncWriter::writePatterns(PlanWriter& plan, const ElementStep& step, const RowNumbers& at) {
    auto& rows = plan.rows();
    const auto stated = rows.peek(rows.stem(step.stem), at);
    bool hasPattern = false;
    for (const auto* const stem : {"ADM\\OHM", "ADM\\FDP", "ADM\\DOP", "ADM\\SDP", "ADM\\UDP"}) {
        hasPattern = hasPattern || rows.peek(rows.stem(stem), at);
    }
    const bool saysSo = stated && equalsIgnoreCase(trim(*stated), "Y");
    const bool isKept = run_.isSchema() && saysSo && !hasPattern;
    if (stated && (saysSo == hasPattern || isKept)) {
        (void)rows.take(rows.stem(step.stem), at);
    }
    if (isKept) {
        plan.moveAround(step);
        run_.tags.open(std::string(step.path.back()));
        run_.tags.close(true);
    }
}

void AsyncWriter::writeRange(PlanWriter& plan, const ElementStep& step, const Codes& codes,
                             const RowNumbers& range) {
    auto& rows = plan.rows();
    run_.tags.open(std::string(step.path.back()));
    for (std::size_t part = 0; part < codes.range.size(); ++part) {
        if (const auto value = rows.take(rows.stem(codes.range[part]), range)) {
            run_.tags.value(kRangeElements[part], run_.values.plain(*value),
                            rows.code(codes.range[part], range));
        }
    }
    run_.tags.close();
}

/// The document has one list of ranges for all locations: that of the first one. Other locations
/// with the same list have nothing to lose.
void AsyncWriter::writeRanges(PlanWriter& plan, const ElementStep& step, const Codes& codes,
                              const RowNumbers& at) {
    auto& rows = plan.rows();
    plan.moveAround(step);
    std::array<int, 3> stems{};
    for (std::size_t part = 0; part < stems.size(); ++part) {
        stems[part] = rows.stem(codes.range[part]);
    }
    const int ranges = rows.stem(codes.ranges);
    const auto first = at.row(1);
    const auto stated = rows.take(ranges, first);
    const int count = stated ? std::max(leadingInt(*stated), 0) : 0;
    for (int range = rows.nextRow(stems, first, 0); range != 0 && range <= count;
         range = rows.nextRow(stems, first, range)) {
        writeRange(plan, step, codes, first.row(static_cast<std::size_t>(range)));
    }
    const auto locations = std::to_array({ranges, stems[0], stems[1], stems[2]});
    for (int location = rows.nextRow(locations, at, 1); location != 0;
         location = rows.nextRow(locations, at, location)) {
        const auto other = at.row(static_cast<std::size_t>(location));
        if (rows.peek(ranges, other) == stated) {
            (void)rows.take(ranges, other);
        }
        for (const int stem : stems) {
            const std::array<int, 1> one{stem};
            for (int range = rows.nextRow(one, other, 0); range != 0;
                 range = rows.nextRow(one, other, range)) {
                const auto numbers = other.row(static_cast<std::size_t>(range));
                if (rows.peek(stem, numbers) == rows.peek(stem, atLocation(numbers, 1))) {
                    (void)rows.take(stem, numbers);
                }
            }
        }
    }
}

}  // namespace kavu
