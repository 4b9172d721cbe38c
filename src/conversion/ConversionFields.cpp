#include "conversion/ConversionFields.h"

#include "core/command/CommandPath.h"
#include "core/text/Text.h"

#include <algorithm>

namespace kavu {

namespace {

// Sorted by byte but for "DP\N" and "DPNO" (see conversionLimit). The order is part of the
// behaviour: do not correct it.
constexpr ConversionLimit limitOf(const Field& row) {
    return {stemOf(row.code), static_cast<int>(row.limit),
            row.limit1996 == 0 ? -1 : static_cast<int>(row.limit1996)};
}
// "MNA" has always been searched for, though no edition has such a command.
constexpr auto kLimits = std::to_array<ConversionLimit>(
    {limitOf(c::kBfm),  limitOf(c::kBtm),  limitOf(c::kCo),   limitOf(c::kCo1),  limitOf(c::kCom),
     limitOf(c::kCoN),  limitOf(c::kCrt),  limitOf(c::kDct),  limitOf(c::kDicc), limitOf(c::kDiciN),
     limitOf(c::kDicp), limitOf(c::kDicN), limitOf(c::kDp),   limitOf(c::kDpa),  limitOf(c::kDpat),
     limitOf(c::kDpc),  limitOf(c::kDpcN), limitOf(c::kDpN),  limitOf(c::kDpno), limitOf(c::kDptm),
     limitOf(c::kFpf),  limitOf(c::kMa1),  limitOf(c::kMa2),  limitOf(c::kMa3),  limitOf(c::kMaN),
     limitOf(c::kMc1),  limitOf(c::kMc2),  limitOf(c::kMc3),  limitOf(c::kMcN),  limitOf(c::kMn1),
     limitOf(c::kMn2),  limitOf(c::kMn3),  limitOf(c::kMn4),  {.code = "MNA"},   limitOf(c::kMot1),
     limitOf(c::kMot2), limitOf(c::kMot3), limitOf(c::kMot4), limitOf(c::kMot5), limitOf(c::kMot6),
     limitOf(c::kOth),  limitOf(c::kPoc1), limitOf(c::kPoc2), limitOf(c::kPoc3), limitOf(c::kPoc4),
     limitOf(c::kPs1),  limitOf(c::kPs2),  limitOf(c::kPs3),  limitOf(c::kPs4),  limitOf(c::kPsN),
     limitOf(c::kPtm),  limitOf(c::kSr),   limitOf(c::kTrd1), limitOf(c::kTrd2), limitOf(c::kTrd3),
     limitOf(c::kTrd4), limitOf(c::kTrd5), limitOf(c::kTrd6), limitOf(c::kTrd7), limitOf(c::kVidD),
     limitOf(c::kVidE), limitOf(c::kVoiD), limitOf(c::kVoiE)});
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

constexpr ConversionField of(const Field& row, WrittenForm form = WrittenForm::Value) {
    return {.code = row.code,
            .form = form,
            .otherwise = row.missing,
            .from = row.firstEdition,
            .until = row.lastEdition == 0 ? kLatestEdition : row.lastEdition};
}
template <typename... Rows>
constexpr ConversionField rowsOf(const Field& count, const Rows&... rows) {
    auto list = of(count, WrittenForm::List);
    list.otherwise = {};
    list.items = {stemOf(rows.code)...};
    return list;
}
/// Written only if the count is a number over 0.
constexpr ConversionField needing(const Field& count, ConversionField field) {
    field.needs = count.code;
    return field;
}
constexpr ConversionField ofBitWeights(ConversionField field) {
    field.bitWeights = true;
    return field;
}
constexpr ConversionField during(int from, int until, ConversionField field) {
    field.from = from;
    field.until = until;
    return field;
}

constexpr auto kCommon = std::to_array<ConversionField>({
    of(c::kTrd1),
    of(c::kTrd2),
    of(c::kTrd3),
    of(c::kTrd4),
    of(c::kTrd5),
    of(c::kTrd6),
    of(c::kTrd7),
    of(c::kPoc1),
    of(c::kPoc2),
    of(c::kPoc3),
    of(c::kPoc4),
    of(c::kMn1),
    of(c::kMn2),
    of(c::kMn3),
    of(c::kMn4),
    of(c::kBfm),
    of(c::kFpf),
    ofBitWeights(of(c::kBwtN)),
    ofBitWeights(rowsOf(c::kBwtN, c::kBwtb, c::kBwtv)),
    of(c::kMcN, WrittenForm::Count),
    rowsOf(c::kMcN, c::kMc1, c::kMc2, c::kMc3),
    of(c::kMaN, WrittenForm::Count),
    rowsOf(c::kMaN, c::kMa1, c::kMa2, c::kMa3),
    of(c::kSingleMa1),
    of(c::kSingleMa2),
    of(c::kSingleMa3),
    of(c::kMot1),
    of(c::kMot2),
    of(c::kMot3),
    of(c::kMot4),
    of(c::kMot5),
    of(c::kMot6),
    of(c::kSr, WrittenForm::SampleRate),
    of(c::kCrt),
});

// A fit stores its coefficients next to the pairs, so both types write both.
constexpr auto kPairsAndCoefficients = std::to_array<ConversionField>({
    of(c::kPsN, WrittenForm::IntegerCount),
    of(c::kPs1),
    of(c::kPs2),
    rowsOf(c::kPsN, c::kPs3, c::kPs4),
    needing(c::kCoN, of(c::kCoN)),
    needing(c::kCoN, of(c::kCo1)),
    needing(c::kCoN, of(c::kCo)),
    needing(c::kCoN, rowsOf(c::kCoN, c::kCoTerm)),
});

constexpr auto kNegativePowers = std::to_array<ConversionField>({
    needing(c::kNpcN, of(c::kNpcN)),
    needing(c::kNpcN, of(c::kNpc1)),
    needing(c::kNpcN, of(c::kNpc)),
    needing(c::kNpcN, rowsOf(c::kNpcN, c::kNpcTerm)),
});

constexpr auto kOther = std::to_array<ConversionField>({of(c::kOth)});

// The algorithm moved before the measurands in 2009.
constexpr int kAlgorithmMoved = 2009;
constexpr auto kDerived = std::to_array<ConversionField>({
    of(c::kDpat),
    during(kAlgorithmMoved, kLatestEdition, of(c::kDpa)),
    of(c::kDptm),
    of(c::kDpno),
    needing(c::kDpN, of(c::kDpN)),
    needing(c::kDpN, rowsOf(c::kDpN, c::kDp)),
    needing(c::kDpcN, of(c::kDpcN)),
    needing(c::kDpcN, rowsOf(c::kDpcN, c::kDpc)),
    during(c::kDpa.firstEdition, kAlgorithmMoved - 1, of(c::kDpa)),
});

constexpr auto kDiscrete = std::to_array<ConversionField>({
    needing(c::kDicN, of(c::kDicN)),
    needing(c::kDicN, of(c::kDiciN)),
    needing(c::kDicN, rowsOf(c::kDicN, c::kDicc, c::kDicp)),
});

constexpr auto kBusTime = std::to_array<ConversionField>({of(c::kBtm)});
constexpr auto kPcmTime = std::to_array<ConversionField>({of(c::kPtm)});

constexpr auto kAnyOther =
    std::to_array<ConversionField>({of(c::kVoiE), of(c::kVoiD), of(c::kVidE), of(c::kVidD)});

constexpr auto kTypes = std::to_array<ConversionType>({
    {.type = "PRS", .fields = kPairsAndCoefficients},
    {.type = "COE", .fields = kPairsAndCoefficients},
    {.type = "NPC", .from = c::kFirstNegativePowers, .fields = kNegativePowers},
    {.type = "OTH", .fields = kOther},
    {.type = "DER", .fields = kDerived},
    {.type = "DIS", .fields = kDiscrete},
    {.type = "BTM", .fields = kBusTime},
    {.type = "PTM", .fields = kPcmTime},
});

/// All codes of the tables above by a hash of their letters.
class CodeTable {
  public:
    CodeTable() {
        for (const auto& row : kLimits) {
            if (findLimit(row.code) == &row) {
                auto& code = add(row.code);
                code.limit = row.limit;
                code.limit1996 = row.limit1996 >= 0 ? row.limit1996 : row.limit;
            }
        }
        addFields(kCommon);
        for (const auto& type : kTypes) {
            addFields(type.fields);
        }
        addFields(kAnyOther);
        addValue(kTypeCode);
        addValue(kCommentCode);
        for (const auto key :
             {recordkey::kTemplate, recordkey::kChanged, recordkey::kCommentRecord}) {
            add(key).isOfTheProgram = true;
        }
    }
    [[nodiscard]] const ConversionCode* find(std::string_view code) const {
        const auto key = keyOf(code);
        if (key == 0) {
            return nullptr;
        }
        for (auto at = placeOf(key); buckets_[at].key != 0; at = (at + 1) % buckets_.size()) {
            if (buckets_[at].key == key &&
                (code.size() <= kWhole || equalsIgnoreCase(buckets_[at].code.code, code))) {
                return &buckets_[at].code;
            }
        }
        return nullptr;
    }
    [[nodiscard]] std::size_t values() const { return values_; }

  private:
    static constexpr std::size_t kWhole = 7;
    struct Bucket {
        std::uint64_t key = 0;  ///< 0 for one that is free
        ConversionCode code{};
    };

    /// Equal for codes that differ only in case, and never 0. For those of `kWhole` characters
    /// and less it says all.
    static std::uint64_t keyOf(std::string_view code) {
        std::uint64_t key = std::min<std::size_t>(code.size(), 0xFFU);
        for (const char c : code) {
            key = (key << 8U) | static_cast<unsigned char>(toUpperAscii(c));
        }
        return key;
    }
    static std::size_t placeOf(std::uint64_t key) {
        return static_cast<std::size_t>((key * 0x9E3779B97F4A7C15U) >> 56U);
    }
    ConversionCode& add(std::string_view code) {
        const auto key = keyOf(code);
        auto at = placeOf(key);
        while (buckets_[at].key != 0 && buckets_[at].code.code != code) {
            at = (at + 1) % buckets_.size();
        }
        buckets_[at].key = key;
        buckets_[at].code.code = code;
        return buckets_[at].code;
    }
    void addValue(std::string_view code) {
        auto& to = add(code);
        to.value = to.value == ConversionCode::kNone ? values_++ : to.value;
    }
    void addFields(std::span<const ConversionField> fields) {
        for (const auto& field : fields) {
            addValue(field.code);
            for (std::size_t column = 0; column < field.items.size(); ++column) {
                if (const auto item = field.items[column]; !item.empty()) {
                    auto& to = add(item);
                    to.list = lists_;
                    to.column = column;
                }
            }
            lists_ += field.form == WrittenForm::List ? 1 : 0;
        }
    }

    std::array<Bucket, 256> buckets_;
    std::size_t values_ = 0;
    std::size_t lists_ = 0;
};

const CodeTable& codeTable() {
    static const CodeTable kTable;
    return kTable;
}

}  // namespace

const ConversionCode* findConversionCode(std::string_view code) {
    return codeTable().find(code);
}

std::size_t conversionValueCount() {
    return codeTable().values();
}

std::span<const ConversionLimit> conversionLimits() {
    return kLimits;
}

int conversionLimit(std::string_view code, int edition) {
    return conversionLimit(code, findConversionCode(codeHead(code)), edition);
}

int conversionLimit(std::string_view code, const ConversionCode* row, int edition) {
    // A code in small letters has no limit.
    return row == nullptr || row->code != codeHead(code) ? 0 : row->limitIn(edition);
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
