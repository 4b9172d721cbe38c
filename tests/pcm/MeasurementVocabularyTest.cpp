#include "core/document/GroupFiles.h"
#include "pcm/LoadFixture.h"
#include "pcm/model/RecordField.h"
#include "vocabulary/DGroupFields.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>
#include <map>
#include <set>

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::listOf;
using test::LoadFixture;
using test::plainFormat;
using test::subframeAt;
using test::wordFrame;
using test::operator+;

Commands headOf(const std::string& name, const std::string& type) {
    return {"MN@:" + name, "MN1@:EV", "MN2@:L", "MN3@:M", "MFOT@:O", "LT@:" + type};
}

/// One measurement for each form of each location type.
Commands everyOlderType() {
    return listOf(
        {headOf("A", "MF") + Commands{"MF@:12", "MFM@:FW"},
         headOf("B", "SF") + Commands{"SF1@:S", "SF2@:1", "SFM@:FW"},
         headOf("C", "MFSC") + Commands{"MFS\\N@:2", "MFS1@:E", "MFSW@-1:13", "MFSM@-1:FW",
                                        "MFSW@-2:15", "MFSM@-2:FW"},
         headOf("D", "MFSC") + Commands{"MFS\\N@:2", "MFS1@:I", "MFS2@:16", "MFS3@:FW", "MFS4@:2"},
         headOf("E", "MFFR") + Commands{"FMF\\N@:2", "FMF1@:32", "FMF2@:E", "FMF6@-1:20",
                                        "FMF7@-1:FW", "FMF8@-1:M", "FMF9@-1:1", "FMF6@-2:21",
                                        "FMF7@-2:FW", "FMF8@-2:M", "FMF9@-2:2"},
         headOf("F", "MFFR") +
             Commands{"FMF\\N@:2", "FMF1@:32", "FMF2@:I", "FMF3@:22", "FMF4@:FW", "FMF5@:1"},
         headOf("G", "SFSC") + Commands{"SFS1@:S", "SFS\\N@:2", "SFS2@:E", "SFS6@-1:2",
                                        "SFS7@-1:FW", "SFS6@-2:4", "SFS7@-2:FW"},
         headOf("H", "SFSC") +
             Commands{"SFS1@:S", "SFS\\N@:2", "SFS2@:I", "SFS3@:5", "SFS4@:FW", "SFS5@:2"},
         headOf("I", "SFFR") + Commands{"FSF\\N@:1", "FSF1@:16", "FSF2\\N@:1", "FSF3@-1:S",
                                        "FSF4@-1:E", "FSF8@-1-1:6", "FSF9@-1-1:FW", "FSF10@-1-1:M",
                                        "FSF11@-1-1:1"},
         wordFrame("J", 25, 1, 1, 8)});
}

Commands latest() {
    return listOf(
        {Commands{"MN@:A",       "MN1@:EV",     "MN2@:L",      "MN3@:M",     "LT@:WDFR",
                  "IDCN@:SFID",  "MML\\N@:1",   "MNF\\N@-1:2", "MWL@-1:32",  "WP@-1-1:12",
                  "WI@-1-1:0",   "EWP@-1-1:12", "FP@-1-1:1",   "FI@-1-1:1",  "EFP@-1-1:8",
                  "WFM@-1-1:FW", "WFT@-1-1:M",  "WFP@-1-1:1",  "WP@-1-2:13", "WI@-1-2:0",
                  "EWP@-1-2:13", "FP@-1-2:1",   "FI@-1-2:1",   "EFP@-1-2:8", "WFM@-1-2:FW",
                  "WFT@-1-2:M",  "WFP@-1-2:2"},
         Commands{"MN@:T", "MN1@:EV", "MN2@:L", "MN3@:M", "LT@:TD", "TD\\N@:1", "TD1@:16",
                  "TD2@-1:7", "TD3@-1:FW", "TD4@-1:M", "TD5@-1:1"}});
}

/// Expects that the commands of each measurement stand in the order of the vocabulary.
void expectOrder(int edition, const Commands& lines, std::set<std::string>& written) {
    std::map<std::string, std::size_t, std::less<>> places;
    const auto fields = knownFields(measurementVocabulary(), edition);
    for (std::size_t i = 0; i < fields.size(); ++i) {
        places.try_emplace(std::string(codeHead(fields[i].code)), i);
    }
    std::size_t last = 0;
    for (const auto& line : lines) {
        const auto code = line.substr(0, line.find(':'));
        const auto field = code.size() < 4 ? std::string() : code.substr(4);
        const auto head = std::string(codeHead(field));
        if (head.empty()) {
            continue;
        }
        ASSERT_TRUE(places.contains(head)) << line;
        // Each measurement begins anew, and so does each row of its locations.
        const bool isRow = std::count(field.begin(), field.end(), '-') > 2;
        const auto place = places.find(head)->second;
        EXPECT_TRUE(head == "MN" || isRow || place >= last) << line;
        last = isRow ? last : place;
        written.insert(head);
    }
}

TEST(MeasurementVocabulary, IsTheOrderInWhichAMeasurementIsWritten) {
    std::set<std::string> written;
    for (const int edition : {2009, 2011}) {
        LoadFixture f(edition);
        const auto subframes =
            edition < 2011 ? Commands{"SF\\N-1:1"} + subframeAt(1, "S", 10, 8) : Commands{};
        ASSERT_TRUE(f.load(plainFormat(32, 8) + counterAt(30, 8, subframes),
                           edition < 2011 ? everyOlderType() : latest()));
        EXPECT_EQ(f.ui.logs.size(), 0U) << (f.ui.logs.empty() ? "" : f.ui.logs.front().text);
        f.format.changed = true;
        ASSERT_TRUE(savePcmFormat(f.format, f.parent));
        expectOrder(edition, f.saved(groupFile('D', 1)), written);
    }
    for (const auto& field : measurementVocabulary()) {
        // The interval form of an SFFR is read and never written; the rest needs other files.
        const std::set<std::string_view> others{"FSF5", "FSF6",   "FSF7",     "IDCN",
                                                "COM",  "SMF\\N", "SMF\\SMN", "SMF\\MFOT"};
        const auto head = codeHead(field.code);
        EXPECT_NE(others.contains(head), written.contains(std::string(head))) << head;
    }
}

TEST(MeasurementVocabulary, HasEachCodeOnceAndRowsBehindTheirCount) {
    std::set<std::string_view> seen;
    for (const auto& field : measurementVocabulary()) {
        EXPECT_TRUE(seen.insert(field.code).second) << field.code;
        EXPECT_TRUE(field.list.empty() || seen.contains(field.list)) << field.code;
        for (const auto& choice : field.choices) {
            EXPECT_TRUE(field.limit == 0 || choice.value.size() <= field.limit) << field.code;
        }
    }
}

}  // namespace
}  // namespace kavu
