#include "vocabulary/SGroupFields.h"
#include "vocabulary/Vocabularies.h"

#include <set>
#include <string>

#include <gtest/gtest.h>

namespace kavu {
namespace {

std::vector<std::string> codesOf(std::span<const Field> table, int edition) {
    std::vector<std::string> codes;
    for (const auto& field : table) {
        if (isKnownIn(edition, field)) {
            codes.emplace_back(field.code);
        }
    }
    return codes;
}

TEST(SGroupFields, MessageDataIsWrittenInTheOrderOfTheTable) {
    EXPECT_EQ(codesOf(messageFields(), 2009),
              (std::vector<std::string>{
                  "DLN",         "TA",           "NS\\N",        "SNA-n",       "MDT-n",
                  "MDL-n",       "MES-n",        "MIDL-n",       "MLEN-n",      "MDEL-n",
                  "MDLEN-n",     "FDEL-n",       "DO-n",         "NMS\\N-n",    "MID-n-m",
                  "MNA-n-m",     "NFLDS\\N-n-m", "FNUM-n-m-k",   "FPOS-n-m-k",  "FLEN-n-m-k",
                  "MN\\N-n-m",   "MN-n-m-k",     "MN1-n-m-k",    "MN2-n-m-k",   "MBFM-n-m-k",
                  "MFPF-n-m-k",  "MDO-n-m-k",    "NML\\N-n-m-k", "MFN-n-m-k-j", "MBM-n-m-k-j",
                  "MTO-n-m-k-j", "MFP-n-m-k-j",  "COM"}));
}

TEST(SGroupFields, PacketsAreWrittenInTheOrderOfTheTable) {
    const auto codes = codesOf(packetFields(), 2005);
    const std::vector<std::string> first(codes.begin(), codes.begin() + 14);
    EXPECT_EQ(first,
              (std::vector<std::string>{"DLN", "ASM", "FEF", "CEF", "TFL", "TA", "VID", "OCF",
                                        "SHF", "OSF", "SHL", "TNMS\\N", "TMN-n", "TPAR-n"}));
    const std::vector<std::string> rest(codes.begin() + 21, codes.end());
    EXPECT_EQ(rest,
              (std::vector<std::string>{
                  "DFL",       "SP\\N",     "PSHF-n",      "APID-n",    "PDL-n",       "PSHL-n",
                  "HNMS\\N-n", "HMN-n-m",   "HPAR-n-m",    "HPTO-n-m",  "HNML\\N-n-m", "HWP-n-m-k",
                  "HWL-n-m-k", "HBM-n-m-k", "HTO-n-m-k",   "HFP-n-m-k", "SNMS\\N-n",   "SMN-n-m",
                  "SPAR-n-m",  "SPTO-n-m",  "SNML\\N-n-m", "SWP-n-m-k", "SWL-n-m-k",   "SBM-n-m-k",
                  "STO-n-m-k", "SFP-n-m-k", "COM-n",       "COM"}));
}

TEST(SGroupFields, AnEditionHasTheOneOrTheOther) {
    const auto all = findVocabulary('S')->fields;
    EXPECT_TRUE(codesOf(all, 2004).empty());
    for (const int edition : {2005, 2007}) {
        EXPECT_EQ(codesOf(all, edition), codesOf(packetFields(), edition));
        EXPECT_TRUE(codesOf(messageFields(), edition).empty());
    }
    for (const int edition : {2009, 2011}) {
        EXPECT_EQ(codesOf(all, edition), codesOf(messageFields(), edition));
        EXPECT_TRUE(codesOf(packetFields(), edition).empty());
    }
}

TEST(SGroupFields, EveryCountIsWrittenWhenItIsZero) {
    std::set<std::string_view> counts;
    for (const auto& field : streamDataVocabulary()) {
        if (field.kind == FieldKind::Count) {
            EXPECT_TRUE(field.writesZero) << field.code;
            counts.insert(field.code);
        }
    }
    EXPECT_EQ(counts.size(), 12U);
}

TEST(SGroupFields, TheThreeFamiliesOfPacketsHaveTheSameRows) {
    for (const char letter : {'T', 'H', 'S'}) {
        const auto& family = packetFamily(letter);
        EXPECT_EQ(family.letter, letter);
        EXPECT_EQ(stemOf(family.name.code), std::string(1, letter) + "MN");
        EXPECT_EQ(stemOf(family.fragment.code), std::string(1, letter) + "FP");
        EXPECT_EQ(family.name.limit, 32U);
        EXPECT_EQ(family.parity.limit, 2U);
        EXPECT_EQ(family.parityOrder.limit, 1U);
        EXPECT_EQ(indexCountOf(family.wordPosition.code), letter == 'T' ? 2 : 3);
        EXPECT_EQ(family.fragment.choices.size(), 9U);
    }
}

TEST(SGroupFields, TheFieldsOfMessagesHaveAnotherCountInXml) {
    const auto match = matchVocabulary('S', "NFLDS\\N-1-2");
    ASSERT_EQ(match.size(), 1U);
    EXPECT_EQ(match[0].field->codeToXml, "FLDS\\N-n-m");
}

}  // namespace
}  // namespace kavu
