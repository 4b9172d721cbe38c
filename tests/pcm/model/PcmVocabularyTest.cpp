#include "pcm/LoadFixture.h"
#include "pcm/model/RecordField.h"
#include "vocabulary/FieldRules.h"
#include "vocabulary/PGroupFields.h"

#include <algorithm>
#include <set>

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::LoadFixture;
using test::plainFormat;
using test::operator+;

/// A stream of which every command of the group has something to tell.
Commands everything(int edition) {
    auto commands = Commands{"D1:NRZ-L", "D2:1000", "D3:U",    "D4:N",    "D5:Y",     "D6:N",
                             "D7:Y",     "D8:STD",  "F2:M",    "F3:NO",   "F4:L",     "MF3:FPT",
                             "SYNC1:1",  "SYNC2:0", "SYNC3:2", "SYNC4:1", "MFW1-1:9", "MFW2-1:12"} +
                    plainFormat(32, 8);
    commands = commands + counterAt(30, 8);
    if (edition < 2011) {
        commands = commands + Commands{"SF\\N-1:2",   "SF1-1-1:S",   "SF2-1-1:3",   "SF3-1-1:FI",
                                       "SF4-1-1-1:2", "SF5-1-1:1",   "SF6-1-1:4",   "SF1-1-2:T",
                                       "SF2-1-2:2",   "SF3-1-2:EL",  "SF4-1-2-1:6", "SF4-1-2-2:8",
                                       "SF6-1-2:8",   "MFF\\FDT:IN", "MFF\\N:1",    "MFF\\MFN-1:3"};
    }
    return commands +
           Commands{"AEF\\N:1",     "AEF\\DLN-1:A", "AEF1-1:2",      "AEF2-1:FI",
                    "AEF3-1-1:10",  "AEF4-1:2",     "AEF5-1-1:16",   "AEF6-1-1:1111000011110000",
                    "AEF7-1-1:1",   "AEF8-1-1-1:2", "AEF9-1-1-1:2",  "AEF10-1-1-1:6",
                    "FFI1:4",       "FFI2:1111",    "MLC\\N:1",      "MLC1-1:1",
                    "MLC2-1:L",     "FSC\\N:1",     "FSC1-1:0",      "FSC2-1:X",
                    "ALT\\N:1",     "ALT1:8",       "ALT2:16",       "ALT3:2",
                    "ALT4:N",       "ADM\\N:1",     "ADM\\DMN-1:B",  "ADM\\MP-1:EV",
                    "ADM\\OHM-1:1", "ADM\\FDP-1:2", "ADM\\DOP-1:M",  "ADM\\SDP-1:3",
                    "ADM\\UDP-1:4", "ADM1-1:2",     "ADM2-1:FI",     "ADM3-1-1:20",
                    "ADM4-1:2",     "ADM5-1:5",     "ADM6-1:6",      "ADM7-1:7",
                    "ADM8-1-1:1",   "ADM9-1-1-1:2", "ADM10-1-1-1:2", "ADM11-1-1-1:6",
                    "COM:words"};
}

/// The codes of the group file that a save has written, without numbers, each once.
std::vector<std::string> writtenHeads(LoadFixture& f) {
    std::vector<std::string> heads;
    f.format.changed = true;
    EXPECT_TRUE(savePcmFormat(f.format, f.parent));
    for (const auto& line : f.saved("[kavu]PCMFMT.P01")) {
        const auto code = line.substr(0, line.find(':'));
        const auto head = code.size() < 4 ? std::string() : std::string(codeHead(code.substr(4)));
        if (!head.empty() && std::find(heads.begin(), heads.end(), head) == heads.end()) {
            heads.push_back(head);
        }
    }
    return heads;
}

TEST(PcmVocabulary, IsTheOrderInWhichTheGroupIsWritten) {
    for (const int edition : {2009, 2011}) {
        std::vector<std::string> expected;
        for (const auto& field : knownFields(pcmVocabulary(), edition)) {
            expected.emplace_back(codeHead(field.code));
        }
        LoadFixture f(edition);
        ASSERT_TRUE(f.load(everything(edition))) << edition;
        auto heads = writtenHeads(f);
        if (edition >= 2011) {
            // This stream has no frames to filter.
            std::erase_if(expected, [](const auto& head) { return head.starts_with("MFF"); });
        }
        EXPECT_EQ(heads, expected) << edition;
    }
}

TEST(PcmVocabulary, HasEachCodeOnceAndRowsBehindTheirCount) {
    std::set<std::string_view> seen;
    for (const auto& field : pcmVocabulary()) {
        EXPECT_TRUE(seen.insert(field.code).second) << field.code;
        EXPECT_TRUE(field.list.empty() || seen.contains(field.list)) << field.code;
    }
}

TEST(PcmVocabulary, AStoredChoiceFitsItsField) {
    for (const auto& field : pcmVocabulary()) {
        for (const auto& choice : field.choices) {
            EXPECT_TRUE(field.limit == 0 || choice.value.size() <= field.limit) << field.code;
        }
    }
}

TEST(RecordField, ACodeTakesTheNumbersOfItsCommand) {
    EXPECT_EQ(fieldCode("SF4-n-m-k", {1, 22, 333}), "SF4-1-22-333");
    EXPECT_EQ(fieldCode("AEF\\DLN-n", {18}), "AEF\\DLN-18");
    EXPECT_EQ(fieldCode("ISF\\N", {}), "ISF\\N");
    EXPECT_EQ(codeHead("AEF10-n-k-j"), "AEF10");
    EXPECT_EQ(codeHead("COM"), "COM");
}

}  // namespace
}  // namespace kavu
