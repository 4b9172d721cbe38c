#include "conversion/ConversionFields.h"

#include "core/command/CommandPath.h"
#include "core/text/Text.h"

namespace kavu {

namespace {

/// No edition: for rows that end in front of the one named.
constexpr int before(int edition) {
    return edition - 1;
}
constexpr int after(int edition) {
    return edition + 1;
}

// Sorted by byte but for "DP\N" and "DPNO" (see conversionLimit). The order is part of the
// behaviour: do not mend it.
constexpr auto kLimits = std::to_array<ConversionLimit>({
    {"BFM", 3},     {"BTM", 1},      {"CO", 32},        {"CO1", 1},   {"COM", 0},
    {"CO\\N", 2},   {"CRT", 19},     {"DCT", 3},        {"DICC", 16}, {"DICI\\N", 2},
    {"DICP", 240},  {"DIC\\N", 2},   {"DP", 32},        {"DPA", 0},   {"DPAT", 1},
    {"DPC", 32},    {"DPC\\N", 2},   {"DP\\N", 2, 1},   {"DPNO", 2},  {"DPTM", 32},
    {"FPF", 0},     {"MA1", 32},     {"MA2", 16},       {"MA3", 32},  {"MA\\N", 1},
    {"MC1", 32},    {"MC2", 16},     {"MC3", 32},       {"MC\\N", 1}, {"MN1", 0},
    {"MN2", 0},     {"MN3", 0},      {"MN4", 3},        {"MNA", 0},   {"MOT1", 32},
    {"MOT2", 32},   {"MOT3", 32},    {"MOT4", 32},      {"MOT5", 32}, {"MOT6", 32},
    {"OTH", 0},     {"POC1", 0},     {"POC2", 0},       {"POC3", 0},  {"POC4", 0},
    {"PS1", 1},     {"PS2", 2},      {"PS3", 16},       {"PS4", 32},  {"PS\\N", 2},
    {"PTM", 1},     {"SR", 0},       {"TRD1", 0},       {"TRD2", 0},  {"TRD3", 0},
    {"TRD4", 2, 4}, {"TRD5", 0},     {"TRD6", 0},       {"TRD7", 0},  {"VID\\D", 640},
    {"VID\\E", 64}, {"VOI\\D", 640}, {"VOI\\E", 4, 64},
});
static_assert(kLimits.size() == 63);

constexpr std::size_t kFirstRow = 31;

constexpr const ConversionLimit* findLimit(std::string_view code) {
    std::size_t lower = 0;
    std::size_t upper = kLimits.size();
    for (std::size_t row = kFirstRow; lower < upper; row = (lower + upper) / 2) {
        if (kLimits[row].code == code) {
            return &kLimits[row];
        }
        if (kLimits[row].code < code) {
            lower = row + 1;
        } else {
            upper = row;
        }
    }
    return nullptr;
}

static_assert(findLimit("DP\\N") == nullptr && findLimit("DPNO") == nullptr);

constexpr auto kCommon = std::to_array<ConversionField>({
    {.code = "TRD1"},
    {.code = "TRD2"},
    {.code = "TRD3"},
    {.code = "TRD4"},
    {.code = "TRD5"},
    {.code = "TRD6"},
    {.code = "TRD7"},
    {.code = "POC1"},
    {.code = "POC2"},
    {.code = "POC3"},
    {.code = "POC4"},
    {.code = "MN1"},
    {.code = "MN2"},
    {.code = "MN3"},
    {.code = "MN4"},
    {.code = "BFM"},
    {.code = "FPF", .from = 2000},
    {.code = "BWT\\N", .otherwise = "0", .from = 2007, .bitWeights = true},
    {.code = "BWT\\N",
     .form = WrittenForm::List,
     .from = 2007,
     .bitWeights = true,
     .items = {"BWTB", "BWTV"}},
    {.code = "MC\\N", .form = WrittenForm::Count, .otherwise = "N"},
    {.code = "MC\\N", .form = WrittenForm::List, .items = {"MC1", "MC2", "MC3"}},
    {.code = "MA\\N", .form = WrittenForm::Count, .otherwise = "N", .from = 1999},
    {.code = "MA\\N", .form = WrittenForm::List, .from = 1999, .items = {"MA1", "MA2", "MA3"}},
    {.code = "MA1", .until = before(1999)},
    {.code = "MA2", .until = before(1999)},
    {.code = "MA3", .until = before(1999)},
    {.code = "MOT1"},
    {.code = "MOT2"},
    {.code = "MOT3"},
    {.code = "MOT4"},
    {.code = "MOT5", .from = after(1996)},
    {.code = "MOT6", .from = after(1996)},
    {.code = "SR", .form = WrittenForm::SampleRate},
    {.code = "CRT", .from = 2004},
});

// A fit leaves its coefficients beside the pairs, so both types write both.
constexpr auto kPairsAndCoefficients = std::to_array<ConversionField>({
    {.code = "PS\\N", .form = WrittenForm::IntegerCount},
    {.code = "PS1", .otherwise = "N"},
    {.code = "PS2", .otherwise = "1"},
    {.code = "PS\\N", .form = WrittenForm::List, .items = {"PS3", "PS4"}},
    {.code = "CO\\N", .needs = "CO\\N"},
    {.code = "CO1", .otherwise = "N", .needs = "CO\\N"},
    {.code = "CO", .needs = "CO\\N"},
    {.code = "CO\\N", .form = WrittenForm::List, .needs = "CO\\N", .items = {"CO"}},
});

constexpr auto kNegativePowers = std::to_array<ConversionField>({
    {.code = "NPC\\N", .needs = "NPC\\N"},
    {.code = "NPC1", .otherwise = "N", .needs = "NPC\\N"},
    {.code = "NPC", .needs = "NPC\\N"},
    {.code = "NPC\\N", .form = WrittenForm::List, .needs = "NPC\\N", .items = {"NPC"}},
});

constexpr auto kOther = std::to_array<ConversionField>({{.code = "OTH"}});

// The algorithm moved in front of the measurands in 2009.
constexpr auto kDerived = std::to_array<ConversionField>({
    {.code = "DPAT", .from = 2009},
    {.code = "DPA", .from = 2009},
    {.code = "DPTM", .from = 2009},
    {.code = "DPNO", .from = 2009},
    {.code = "DP\\N", .needs = "DP\\N"},
    {.code = "DP\\N", .form = WrittenForm::List, .needs = "DP\\N", .items = {"DP"}},
    {.code = "DPC\\N", .from = after(1996), .needs = "DPC\\N"},
    {.code = "DPC\\N",
     .form = WrittenForm::List,
     .from = after(1996),
     .needs = "DPC\\N",
     .items = {"DPC"}},
    {.code = "DPA", .from = after(1996), .until = before(2009)},
});

constexpr auto kDiscrete = std::to_array<ConversionField>({
    {.code = "DIC\\N", .needs = "DIC\\N"},
    {.code = "DICI\\N", .otherwise = "0", .needs = "DIC\\N"},
    {.code = "DIC\\N", .form = WrittenForm::List, .needs = "DIC\\N", .items = {"DICC", "DICP"}},
});

constexpr auto kBusTime = std::to_array<ConversionField>({{.code = "BTM"}});
constexpr auto kPcmTime = std::to_array<ConversionField>({{.code = "PTM"}});

constexpr auto kAnyOther = std::to_array<ConversionField>({
    {.code = "VOI\\E"},
    {.code = "VOI\\D"},
    {.code = "VID\\E"},
    {.code = "VID\\D"},
});

constexpr auto kTypes = std::to_array<ConversionType>({
    {.type = "PRS", .fields = kPairsAndCoefficients},
    {.type = "COE", .fields = kPairsAndCoefficients},
    {.type = "NPC", .from = 2007, .fields = kNegativePowers},
    {.type = "OTH", .fields = kOther},
    {.type = "DER", .fields = kDerived},
    {.type = "DIS", .fields = kDiscrete},
    {.type = "BTM", .fields = kBusTime},
    {.type = "PTM", .fields = kPcmTime},
});

}  // namespace

std::span<const ConversionLimit> conversionLimits() {
    return kLimits;
}

int conversionLimit(std::string_view code, int edition) {
    const auto* const row = findLimit(codeHead(code));
    if (row == nullptr) {
        return 0;
    }
    return edition == 1996 && row->limit1996 >= 0 ? row->limit1996 : row->limit;
}

std::span<const ConversionField> commonConversionFields() {
    return kCommon;
}

std::span<const ConversionField> typeConversionFields(std::string_view type, int edition) {
    for (const auto& row : kTypes) {
        if (edition >= row.from && startsWithIgnoreCase(type, row.type)) {
            return row.fields;
        }
    }
    return kAnyOther;
}

}  // namespace kavu
