#include "conversion/ConversionFixture.h"
#include "conversion/UntouchedRecords.h"
#include "core/document/Transaction.h"
#include "support/Seeds.h"

#include <filesystem>
#include <functional>
#include <random>

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::ConversionFixture;
using test::Names;
using test::Numbers;

std::string groupOf(int records) {
    std::string text;
    for (int i = 1; i <= records; ++i) {
        const auto prefix = "C-" + std::to_string(i) + "\\";
        text += prefix + "DCN:M" + std::to_string(i) + ";\r\n" + prefix + "DCT:COE;\r\n" + prefix +
                "CO\\N:1;\r\n" + prefix + "CO:0.5;\r\n" + prefix + "CO-1:2;\r\n";
    }
    return text;
}

// --- When records are touched --------------------------------------------------------------

TEST(UntouchedRecords, AreWrittenWithoutASection) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(groupOf(60)));
    const auto first = f.save();
    EXPECT_EQ(f.save(), first);
    ASSERT_NE(f.conversions.untouched(), nullptr);
    EXPECT_TRUE(fileExists(rawGroupPath(f.store, 0)));
    ConversionFiles made;
    ASSERT_TRUE(listConversionFiles(f.store, made).ok());
    EXPECT_TRUE(made.chunks.empty());
    EXPECT_EQ(f.chunks(), (Numbers{0, 1, 2}));  // they are made now
    EXPECT_EQ(f.conversions.untouched(), nullptr);
    EXPECT_EQ(f.save(), first);
}

TEST(UntouchedRecords, AreTouchedByWhateverAsksForOne) {
    using Look = std::function<void(ConversionFixture&)>;
    const std::vector<std::pair<const char*, Look>> looks = {
        {"find", [](auto& f) { EXPECT_TRUE(f.conversions.locateDefinition("m2").found); }},
        {"find nothing", [](auto& f) { EXPECT_FALSE(f.conversions.locateDefinition("x").found); }},
        {"list", [](auto& f) { EXPECT_EQ(f.conversions.definitionNames(0)->size(), 3U); }},
        {"numbers", [](auto& f) { EXPECT_EQ(f.conversions.chunkNumbers().size(), 1U); }},
        {"chunk", [](auto& f) { EXPECT_TRUE(f.conversions.chunk(0)->hasSection("M1")); }},
        {"write", [](auto& f) { EXPECT_TRUE(f.conversions.writeOut().ok()); }},
        {"comment", [](auto& f) { EXPECT_EQ(f.conversions.readEuComment("M1", false), ""); }},
        {"make",
         [](auto& f) { EXPECT_TRUE(f.conversions.createDefaultDefinition(nullptr, "M9", false)); }},
        {"rename",
         [](auto& f) { EXPECT_TRUE(f.conversions.renameDefinition(nullptr, "M7", "M1")); }},
        {"delete", [](auto& f) { EXPECT_TRUE(f.conversions.deleteDefinition(nullptr, "M1")); }},
        {"a second load", [](auto& f) { EXPECT_TRUE(f.load("C-1\\DCN:N;\r\n")); }},
    };
    for (const auto& [what, look] : looks) {
        ConversionFixture f;
        ASSERT_TRUE(f.load(groupOf(3)));
        ASSERT_NE(f.conversions.untouched(), nullptr) << what;
        look(f);
        EXPECT_EQ(f.conversions.untouched(), nullptr) << what;
        EXPECT_EQ(f.value("M2", "CO-1"), "2") << what;
    }
}

TEST(UntouchedRecords, WithAKeyOfTheProgramAreWrittenFromTheirSections) {
    for (const auto* const field : {"EuTemplate:1", "eutemplate:1", "Chg:1", "KavuCmd:ZeroCal=5"}) {
        ConversionFixture f;
        ASSERT_TRUE(f.load("C-1\\DCN:A;\r\nC-1\\DCT:COE;\r\nC-1\\" + std::string(field) + ";\r\n"));
        EXPECT_EQ(f.conversions.untouched(), nullptr) << field;
        const bool isTemplate = std::string_view(field).ends_with("plate:1");
        EXPECT_NE(f.save().find(isTemplate ? "DCT:NON" : "DCT:COE"), std::string::npos) << field;
        EXPECT_EQ(f.value("A", "DCT"), isTemplate ? "NON" : "COE") << field;
    }
}

TEST(UntouchedRecords, OfAnOperationGoWithIt) {
    ConversionFixture f;
    {
        Transaction transaction(f.context, "Import");
        ASSERT_TRUE(f.load(groupOf(3)));
        ASSERT_NE(f.conversions.untouched(), nullptr);
        EXPECT_TRUE(transaction.takeBack(nullptr));
    }
    EXPECT_EQ(f.conversions.untouched(), nullptr);
    EXPECT_EQ(f.save(), "");
    EXPECT_FALSE(fileExists(rawGroupPath(f.store, 0)));
}

// --- Failures ------------------------------------------------------------------------------

TEST(UntouchedRecords, WhoseRawCommandsAreGoneOrShorterAreReportedByTheSave) {
    const std::vector<std::function<void(const std::string&)>> harms = {
        [](const std::string& path) { std::filesystem::remove(path); },
        [](const std::string& path) { std::filesystem::resize_file(path, 100); }};
    for (const auto& harm : harms) {
        ConversionFixture f;
        ASSERT_TRUE(f.load(groupOf(3)));
        harm(rawGroupPath(f.store, 0));
        EXPECT_EQ(f.save(), "<failed>");
        ASSERT_EQ(f.ui.countBoxes(407), 1);
        EXPECT_NE(f.ui.boxes[0].text.find(rawGroupPath(f.store, 0)), std::string::npos);
        EXPECT_FALSE(f.conversions.writeOut().ok());
        EXPECT_FALSE(f.conversions.createDefaultDefinition(&f.ui, "New", false));
    }
}

TEST(UntouchedRecords, ThatCouldNotBeTakenApartAreTriedAgain) {
    ConversionFixture f;
    std::string text = groupOf(3);
    text += "C-2\\COM:" + std::string(31000, 'c') + ";\r\n";
    ASSERT_TRUE(f.load(text));
    const auto path = commentPath(f.store, "M2");
    std::filesystem::create_directory(path);
    EXPECT_FALSE(f.conversions.writeOut().ok());
    EXPECT_NE(f.conversions.untouched(), nullptr);
    std::filesystem::remove(path);
    ASSERT_TRUE(f.conversions.writeOut().ok());
    EXPECT_EQ(f.value("M2", "CO-1"), "2");
    EXPECT_EQ(f.conversions.readEuComment("M2", false).size(), 31000U);
}

TEST(UntouchedRecords, ACancelStopsTheSaveAndTouchesNone) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(groupOf(40)));
    f.ui.cancelAtPoll = f.ui.polls + 30;
    EXPECT_EQ(f.save(), "<failed>");
    EXPECT_TRUE(f.ui.boxes.empty());
    EXPECT_NE(f.conversions.untouched(), nullptr);
    f.ui.cancelAtPoll = 0;
    EXPECT_EQ(f.savedNames().size(), 40U);
}

// --- Both roads write the same -------------------------------------------------------------

/// C groups as programs write them, and as they should not.
class RandomGroup {
  public:
    explicit RandomGroup(unsigned seed) : random_(seed) {}

    std::string make() {
        std::vector<std::string> commands;
        const auto records = 1 + pick(60);
        for (std::size_t r = 0; r < records; ++r) {
            const auto index = pick(4) == 0 ? strangeIndex() : std::to_string(r * (1 + pick(9)));
            for (auto field = pick(30); field > 0; --field) {
                commands.push_back("C-" + index + "\\" + code() + ":" + value());
            }
            const auto at = pick(3) == 0 ? pick(commands.size() + 1) : commands.size();
            commands.insert(commands.begin() + static_cast<std::ptrdiff_t>(at),
                            "C-" + index + "\\" + nameCode() + ":" + name(r));
        }
        if (pick(3) == 0) {
            std::shuffle(commands.begin(), commands.end(), random_);
        }
        std::string text;
        for (const auto& command : commands) {
            text += command + (pick(20) == 0 ? ";" : ";\r\n");
        }
        return text;
    }

  private:
    std::size_t pick(std::size_t of) { return random_() % of; }
    const char* oneOf(std::initializer_list<const char*> texts) {
        return *(texts.begin() + pick(texts.size()));
    }
    std::string strangeIndex() {
        return oneOf({"", "x", "-3", "007", "+4", " 5", "99999999999", "2000000000", "1:", "70"});
    }
    std::string nameCode() { return oneOf({"DCN", "DCN", "DCN", "DCN", "dcn", "DCNX", "DCN-1"}); }
    std::string name(std::size_t record) {
        const auto number = std::to_string(pick(8) == 0 ? pick(5) : record);
        switch (pick(12)) {
            case 0:
                return "";
            case 1:
                return "  \t";
            case 2:
                return std::string(30, 'n') + number + std::string(pick(6), ' ') + "x";
            case 3:
                return "[" + number + "]]";
            case 4:
                return " n" + number + "\t ";
            case 5:
                return "N\r\n" + number;
            default:
                return (pick(2) == 0 ? "name" : "NAME") + number;
        }
    }
    std::string code() {
        std::string code = oneOf({"TRD1",    "TRD4",
                                  "TRD7",    "POC1",
                                  "MN1",     "MN4",
                                  "BFM",     "FPF",
                                  "BWT\\N",  "BWTB-1",
                                  "BWTV-2",  "MC\\N",
                                  "MC1-1",   "MC2-1",
                                  "MA\\N",   "MA1",
                                  "MA1-1",   "MA3-2",
                                  "MOT1",    "MOT6",
                                  "SR",      "CRT",
                                  "DCT",     "PS\\N",
                                  "PS1",     "PS2",
                                  "PS3-1",   "PS4-1",
                                  "PS3-2",   "PS4-10",
                                  "PS3-01",  "PS3-1-1",
                                  "PS3-",    "PS3-999999999999",
                                  "CO\\N",   "CO1",
                                  "CO",      "CO-1",
                                  "CO-2",    "NPC\\N",
                                  "NPC",     "NPC-1",
                                  "OTH",     "DP\\N",
                                  "DP-1",    "DPC\\N",
                                  "DPC-1",   "DPA",
                                  "DPAT",    "DPNO",
                                  "DIC\\N",  "DICI\\N",
                                  "DICC-1",  "DICP-1",
                                  "BTM",     "PTM",
                                  "VOI\\E",  "VOI\\D",
                                  "VID\\D",  "COM",
                                  "com",     "",
                                  "UNKNOWN", "[x",
                                  "a=b",     "\xEF\xBB\xBFMN1",
                                  "MNA",     "LONGCODE99"});
        if (pick(12) == 0) {
            code = lowerAscii(code);
        }
        if (pick(20) == 0) {
            code = oneOf({" ", "\t"}) + code;
        }
        return pick(20) == 0 ? code + " " : code;
    }
    std::string value() {
        switch (pick(14)) {
            case 0:
                return "";
            case 1:
                return "\t";
            case 2:
                return " \t x \t";
            case 3:
                return "two\r\nlines";
            case 4:
                return "stored\x14\x15lines";
            case 5:
                return std::string(pick(60), 'v');
            case 6:
                return pick(4) == 0 ? std::string(pick(40000), 'w') : "-1";
            case 7:
                return "M\xC3\xBCnchen M\xC3\xBCnchen M\xC3\xBCnchen M\xC3\xBC";
            case 8:
                return oneOf({"PRS", "COE", "NPC", "OTH", "DER", "DIS", "BTM", "PTM", "prs", "SP"});
            case 9:
                return oneOf({"N", "Y", "BWT", "bwt", "1.2500", "1e-5", "0", "99"});
            default:
                return std::to_string(pick(12));
        }
    }

    std::mt19937 random_;
};

struct Result {
    std::string saved;
    std::vector<std::string> messages;
    std::vector<std::string> notes;
    bool changed = false;
    bool untouched = false;
    bool operator==(const Result&) const = default;
};

enum class Road { Raw, Sections, Files };

Result loadAndSave(const std::string& text, int edition, Road road) {
    ConversionFixture f(edition);
    f.settings.writeInteger("ChkSR", 1);
    if (road == Road::Files) {
        f.conversions.stagingLimit = 0;
    }
    EXPECT_TRUE(f.load(text));
    if (road == Road::Sections) {
        (void)f.conversions.locateDefinition("a");
    }
    Result result;
    EXPECT_EQ(f.conversions.untouched() != nullptr, road == Road::Raw);
    result.saved = f.save();
    for (const auto& log : f.ui.logs) {
        result.messages.push_back(std::to_string(log.id) + log.text);
    }
    result.notes = f.ui.notes;
    result.changed = f.document.changed;
    EXPECT_TRUE(f.ui.boxes.empty());
    return result;
}

class UntouchedRecordsProperty : public testing::TestWithParam<int> {};

TEST_P(UntouchedRecordsProperty, RawCommandsAndSectionsAreWrittenAlike) {
    for (unsigned seed = 0; seed < test::seeds(120); ++seed) {
        const auto text = RandomGroup(seed).make();
        const auto raw = loadAndSave(text, GetParam(), Road::Raw);
        const auto sections = loadAndSave(text, GetParam(), Road::Sections);
        const auto files = loadAndSave(text, GetParam(), Road::Files);
        ASSERT_EQ(raw.saved, sections.saved) << seed;
        ASSERT_EQ(raw.saved, files.saved) << seed;
        ASSERT_EQ(raw, sections) << seed;
        ASSERT_EQ(raw, files) << seed;
    }
}

INSTANTIATE_TEST_SUITE_P(Editions, UntouchedRecordsProperty,
                         testing::Values(1996, 1999, 2005, 2007, 2011));

}  // namespace
}  // namespace kavu
