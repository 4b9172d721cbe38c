#include "conversion/ConversionFixture.h"
#include "conversion/DefinitionEdit.h"
#include "conversion/DefinitionSheet.h"
#include "core/text/Text.h"

#include <set>

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::ConversionFixture;
using test::lines;
using Rows = std::vector<std::vector<std::string>>;

constexpr const char* kRecord =
    "C-1\\DCN:A;C-1\\TRD1:probe;C-1\\TRD4:S;C-1\\POC3:Street;C-1\\MN1:pressure;C-1\\MN4:ANA;"
    "C-1\\BFM:BWT;C-1\\FPF:IEEE_32;C-1\\BWT\\N:1;C-1\\BWTB-1:1;C-1\\BWTV-1:S;C-1\\MC\\N:1;"
    "C-1\\MC1-1:a;C-1\\MC2-1:1;C-1\\MC3-1:2;C-1\\MA\\N:1;C-1\\MA1-1:b;C-1\\MOT1:10;C-1\\MOT6:1;"
    "C-1\\SR:5;C-1\\CRT:01-02-2024-00-00-00;C-1\\DCT:COE;C-1\\CO\\N:1;C-1\\CO1:N;C-1\\CO:5;"
    "C-1\\CO-1:6;C-1\\COM:seen;";

class DefinitionSheetTest : public testing::Test {
  protected:
    void open(int edition, std::string_view commands, const std::string& name = "A") {
        f = std::make_unique<ConversionFixture>(edition);
        ASSERT_TRUE(f->load(lines(commands)));
        edit = DefinitionEdit::open(f->context, f->conversions, &f->ui, name);
        ASSERT_TRUE(edit);
    }
    DetailWindow window(std::string_view type) {
        return detailWindow(type, f->document.version, false).value();
    }

    std::unique_ptr<ConversionFixture> f;
    std::optional<DefinitionEdit> edit;
};

TEST_F(DefinitionSheetTest, ShowsAllOfARecord) {
    open(2011, kRecord);
    const auto pages = readPages(*edit);
    EXPECT_EQ(pages.field("TRD1"), "probe");
    EXPECT_EQ(pages.field("POC3"), "Street");
    EXPECT_EQ(pages.field("MOT6"), "1");
    EXPECT_EQ(pages.field("DCT"), "COE");
    EXPECT_EQ(pages.field("COM"), "seen");
    EXPECT_EQ(pages.field("TRD7"), "");
    EXPECT_EQ(pages.lists.at("MC\\N"), (Rows{{"a", "1", "2"}}));
    EXPECT_EQ(pages.lists.at("MA\\N"), (Rows{{"b", "", ""}}));
    EXPECT_EQ(pages.lists.at("BWT\\N"), (Rows{{"1", "S"}}));
    const auto detail = readDetail(*edit, window("COE"));
    EXPECT_EQ(detail.field("CO1"), "N");
    EXPECT_EQ(detail.field("CO"), "5");
    EXPECT_EQ(detail.lists.at("CO\\N"), (Rows{{"6"}}));
}

TEST_F(DefinitionSheetTest, StoresNothingIfNothingWasChanged) {
    for (const int edition : {1996, 1999, 2001, 2007, 2011}) {
        open(edition, kRecord);
        const auto before = f->read(working::kData1);
        ASSERT_TRUE(storePages(*edit, &f->ui, readPages(*edit)));
        for (const auto* const type : {"COE", "OTH", "DER", "DIS", "VOI", "VID", "BTM", "PTM"}) {
            const auto shown = window(type);
            ASSERT_TRUE(storeDetail(*edit, &f->ui, shown, readDetail(*edit, shown)));
        }
        EXPECT_EQ(f->read(working::kData1), before) << edition;
    }
}

TEST_F(DefinitionSheetTest, EveryFieldOfAPageIsStoredUnderItsCode) {
    std::set<std::string> codes;
    for (const auto& page : euPages()) {
        for (const auto& field : page.fields) {
            open(2011, kRecord);
            auto pages = readPages(*edit);
            const std::string code(field.code);
            const std::string value = code == "DCT" ? "DER" : "X1";
            pages.fields[code] = value;
            ASSERT_TRUE(storePages(*edit, &f->ui, pages)) << code;
            ASSERT_TRUE(edit->store(&f->ui));
            EXPECT_NE(f->save().find("C-1\\" + code + ":" + value + ";"), std::string::npos)
                << code << "\n"
                << f->save();
            codes.insert(code);
        }
    }
    EXPECT_EQ(codes.size(), 27U);
}

TEST_F(DefinitionSheetTest, AFieldThatIsEmptiedLosesItsKey) {
    open(2011, kRecord);
    auto pages = readPages(*edit);
    pages.fields.erase("TRD1");
    pages.fields.erase("COM");
    pages.lists["MC\\N"].clear();
    ASSERT_TRUE(storePages(*edit, &f->ui, pages));
    EXPECT_EQ(readPages(*edit), pages);
    ASSERT_TRUE(edit->store(&f->ui));
    const auto saved = f->save();
    for (const char* const gone : {"TRD1", "COM:", "MC1-1"}) {
        EXPECT_EQ(saved.find(gone), std::string::npos) << gone;
    }
    EXPECT_NE(saved.find("C-1\\MC\\N:0;"), std::string::npos);
}

TEST_F(DefinitionSheetTest, EveryListIsStoredUnderItsCodes) {
    open(2011, kRecord);
    auto pages = readPages(*edit);
    pages.lists["MA\\N"] = {{"1", "2", "3"}, {"4", "5", "6"}};
    pages.lists["BWT\\N"] = {{"1", "S"}, {"2", "0.5"}};
    ASSERT_TRUE(storePages(*edit, &f->ui, pages));
    ASSERT_TRUE(edit->store(&f->ui));
    const auto saved = f->save();
    for (const char* const part : {"MA\\N:2;", "MA1-2:4;", "MA3-2:6;", "BWT\\N:2;", "BWTB-2:2;",
                                   "BWTV-2:0.5;", "MC1-1:a;"}) {
        EXPECT_NE(saved.find(std::string("C-1\\") + part), std::string::npos) << part;
    }
}

TEST_F(DefinitionSheetTest, TheListOfAmbientValuesIsClosedBefore1999) {
    open(1996, "C-1\\DCN:A;C-1\\MA1:x;C-1\\MA2:1;C-1\\MA3:2;");
    auto pages = readPages(*edit);
    EXPECT_EQ(pages.lists.at("MA\\N"), (Rows{{"x", "1", "2"}})) << "the one value is shown";
    EXPECT_FALSE(pages.lists.contains("BWT\\N"));
    const auto before = f->read(working::kData1);
    pages.lists["MA\\N"].clear();
    ASSERT_TRUE(storePages(*edit, &f->ui, pages));
    EXPECT_EQ(f->read(working::kData1), before);
    ASSERT_TRUE(edit->store(&f->ui));
    EXPECT_NE(f->save().find("C-1\\MA1:x;"), std::string::npos);
}

TEST_F(DefinitionSheetTest, In1996VoiceIsToldByItsFields) {
    open(1996, "C-1\\DCN:A;C-1\\DCT:NON;C-1\\VOI\\D:loud;");
    auto pages = readPages(*edit);
    EXPECT_EQ(pages.field("DCT"), "VOI");
    pages.fields["DCT"] = "VID";
    ASSERT_TRUE(storePages(*edit, &f->ui, pages));
    EXPECT_EQ(edit->value("DCT"), "NON");
    EXPECT_EQ(edit->value("VOI\\D"), "") << "it would be taken for voice again";
    auto video = readDetail(*edit, window("VID"));
    video.fields["VID\\D"] = "camera";
    ASSERT_TRUE(storeDetail(*edit, &f->ui, window("VID"), video));
    EXPECT_EQ(readPages(*edit).field("DCT"), "VID");
    pages.fields["DCT"] = "NON";
    ASSERT_TRUE(storePages(*edit, &f->ui, pages));
    EXPECT_EQ(readPages(*edit).field("DCT"), "NON");
}

TEST_F(DefinitionSheetTest, EveryDetailIsStoredUnderItsCode) {
    std::set<std::string> codes;
    for (const auto* const type : {"COE", "NPC", "OTH", "DER", "DIS", "VOI", "VID", "BTM", "PTM"}) {
        open(2011, kRecord);
        const auto shown = window(type);
        auto pages = readPages(*edit);
        auto detail = readDetail(*edit, shown);
        std::vector<std::string> expected;
        for (const auto& field : shown.fields) {
            detail.fields[std::string(field.code)] = "7";
            expected.push_back("C-1\\" + std::string(field.code) + ":7;");
            codes.insert(std::string(field.code));
        }
        for (const auto& list : shown.lists) {
            auto& rows = detail.lists[std::string(list.countCode)];
            rows.assign(2, std::vector<std::string>(list.columns.size(), "8"));
            expected.push_back("C-1\\" + std::string(list.countCode) + ":2;");
            for (const auto& column : list.columns) {
                expected.push_back("C-1\\" + std::string(column.code) + "-2:8;");
            }
        }
        pages.fields["DCT"] = type;
        ASSERT_TRUE(storeDetail(*edit, &f->ui, shown, detail));
        ASSERT_TRUE(storePages(*edit, &f->ui, pages));
        EXPECT_EQ(readDetail(*edit, shown), detail);
        ASSERT_TRUE(edit->store(&f->ui));
        const auto saved = f->save();
        for (const auto& part : expected) {
            EXPECT_NE(saved.find(part), std::string::npos) << part << "\n" << saved;
        }
    }
    EXPECT_EQ(codes.size(), 16U);
}

TEST_F(DefinitionSheetTest, WhatAFitIsMadeFromIsStoredAtOnce) {
    open(2011, kRecord);
    auto pages = readPages(*edit);
    bool changed = true;
    ASSERT_TRUE(storeFitFields(*edit, &f->ui, pages, changed));
    EXPECT_FALSE(changed);
    pages.fields["MOT1"] = "99";
    pages.fields["MN1"] = "not now";
    ASSERT_TRUE(storeFitFields(*edit, &f->ui, pages, changed));
    EXPECT_TRUE(changed);
    EXPECT_EQ(edit->value("MOT1"), "99");
    EXPECT_EQ(edit->value("MN1"), "pressure");
    pages.fields["MOT1"] = "10";
    ASSERT_TRUE(storeFitFields(*edit, &f->ui, pages, changed));
    EXPECT_EQ(edit->value("MOT1"), "10") << "also back again";
}

TEST_F(DefinitionSheetTest, LimitsAreNumbersWithTheLowOneBelowTheHighOne) {
    open(2011, "C-1\\DCN:A;C-1\\MOT1:10;C-1\\MOT2:0;C-1\\MOT3:n/a;C-1\\MOT4:9;C-1\\MOT5:1;");
    auto fields = readPages(*edit).fields;
    EXPECT_FALSE(refusedLimit(*edit, fields)) << "nobody has touched what the file has";
    const auto refused = [&](std::string_view code, const char* text) {
        auto edited = fields;
        edited[std::string(code)] = text;
        const auto why = refusedLimit(*edit, edited);
        return why ? std::string(why->code) + ": " + why->text : std::string();
    };
    EXPECT_EQ(refused("MOT1", "ten"), "MOT1: Value High: 'ten' is not a number.");
    EXPECT_EQ(refused("MOT1", "1e400"), "MOT1: Value High: '1e400' is not a number.");
    EXPECT_EQ(refused("MOT2", "10"), "MOT2: Value Low must be below Value High.");
    EXPECT_EQ(refused("MOT1", "-5"), "MOT2: Value Low must be below Value High.");
    EXPECT_EQ(refused("MOT6", "1.5"), "MOT6: Warning Low must be below Warning High.");
    for (const auto& [code, text] : {std::pair("MOT1", "1E3"),
                                     {"MOT1", ""},
                                     {"MOT2", "-1"},
                                     {"MOT4", "8"},
                                     {"MOT3", "20"},
                                     {"MOT6", "0.5"}}) {
        EXPECT_EQ(refused(code, text), "") << code << text;
    }
}

TEST_F(DefinitionSheetTest, HostileValuesStayOneValue) {
    open(2011, kRecord);
    auto pages = readPages(*edit);
    pages.fields["TRD1"] = "[B]\r\nDCT=PRS";
    pages.fields["TRD2"] = std::string(100000, 'x');
    pages.fields["COM"] = "\xff\xfe;=[]";
    ASSERT_TRUE(storePages(*edit, &f->ui, pages));
    EXPECT_EQ(readPages(*edit), pages);
    ASSERT_TRUE(edit->store(&f->ui));
    EXPECT_EQ(f->savedNames(), test::Names{"A"});
}

TEST_F(DefinitionSheetTest, AWorkingCopyThatIsGoneIsReportedAndNothingIsStored) {
    open(2011, kRecord);
    auto pages = readPages(*edit);
    pages.fields["TRD1"] = "other";
    ASSERT_TRUE(deleteFile(f->store.pathOf(working::kData1)).ok());
    EXPECT_FALSE(storePages(*edit, &f->ui, pages));
    EXPECT_FALSE(f->has(working::kData1));
}

// --- From the tree ---------------------------------------------------------------------------

TEST(DeleteDefinitionAsked, AsksBeforeTheRecordIsGone) {
    ConversionFixture f;
    ASSERT_TRUE(f.load(lines(kRecord)));
    f.document.changed = false;
    EXPECT_FALSE(deleteDefinitionAsked(f.context, f.conversions, nullptr, "A"));
    EXPECT_FALSE(deleteDefinitionAsked(f.context, f.conversions, &f.ui, "A"));
    ASSERT_TRUE(f.ui.hasBox(118));
    EXPECT_NE(f.ui.boxes[0].text.find("measurement 'A'"), std::string::npos);
    EXPECT_FALSE(f.document.changed);
    f.ui.byId[118] = Button::Yes;
    EXPECT_TRUE(deleteDefinitionAsked(f.context, f.conversions, &f.ui, "A"));
    EXPECT_TRUE(f.document.changed);
    EXPECT_TRUE(f.savedNames().empty());
    EXPECT_FALSE(deleteDefinitionAsked(f.context, f.conversions, &f.ui, "A"));
}

class RenameDefinitionAsked : public testing::Test {
  protected:
    RenameDefinitionAsked() {
        EXPECT_TRUE(f.load(lines("C-1\\DCN:A;C-1\\DCT:PRS;C-2\\DCN:B;C-2\\DCT:COE;")));
        f.document.changed = false;
        f.ui.byId[436] = Button::Yes;
    }
    std::optional<std::string> rename() {
        return renameDefinitionAsked(f.context, f.conversions, &f.ui, "A");
    }
    ConversionFixture f;
};

TEST_F(RenameDefinitionAsked, TellsThatStreamsKeepTheName) {
    f.ui.byId[436] = Button::No;
    EXPECT_FALSE(rename());
    ASSERT_TRUE(f.ui.hasBox(436));
    EXPECT_NE(f.ui.boxes[0].text.find("will not change the name in any defined stream"),
              std::string::npos);
    EXPECT_FALSE(renameDefinitionAsked(f.context, f.conversions, nullptr, "A"));
    EXPECT_TRUE(f.ui.textPrompts.empty());
}

TEST_F(RenameDefinitionAsked, GivesTheRecordItsNewName) {
    f.ui.texts = {" C "};
    EXPECT_EQ(rename(), "C");
    EXPECT_EQ(f.ui.textPrompts.at(0).initial, "A");
    EXPECT_EQ(f.ui.textPrompts.at(0).limit, 32U);
    EXPECT_EQ(f.savedNames(), (test::Names{"C", "B"}));
    EXPECT_TRUE(f.document.changed);
}

TEST_F(RenameDefinitionAsked, ANewCaseIsANewName) {
    f.ui.texts = {"a"};
    EXPECT_EQ(rename(), "a");
    EXPECT_EQ(f.savedNames(), (test::Names{"a", "B"}));
}

TEST_F(RenameDefinitionAsked, RefusesWhatIsNoNameAndAsksAgain) {
    f.ui.texts = {"", "b", "x;y", "line\nbreak", std::string(33, 'n'), std::nullopt};
    EXPECT_FALSE(rename());
    EXPECT_TRUE(f.ui.hasBox(326));
    EXPECT_TRUE(f.ui.hasBox(402));
    EXPECT_TRUE(f.ui.hasText("Another data conversion record is named 'B'."));
    EXPECT_TRUE(f.ui.hasText("A data conversion record cannot be named"));
    EXPECT_EQ(f.ui.textPrompts.size(), 6U);
    EXPECT_EQ(f.savedNames(), (test::Names{"A", "B"}));
    EXPECT_FALSE(f.document.changed);
}

TEST_F(RenameDefinitionAsked, TheSameNameIsNoChange) {
    f.ui.texts = {"A"};
    EXPECT_FALSE(rename());
    EXPECT_FALSE(f.document.changed);
}

TEST(DefinitionEdit, ANameThatNoRecordCanHaveIsReported) {
    ConversionFixture f;
    EXPECT_FALSE(DefinitionEdit::open(f.context, f.conversions, &f.ui, "a\nb"));
    EXPECT_TRUE(f.ui.hasText("cannot have this measurement name"));
    EXPECT_FALSE(DefinitionEdit::open(f.context, f.conversions, nullptr, "a\nb"));
}

TEST(ImportValues, TakesThePrivatePairsOutOfTheComment) {
    ConversionFixture f;
    ASSERT_TRUE(
        f.load(lines("C-1\\DCN:A;C-1\\DCT:PRS;C-2\\DCN:B;C-2\\DCT:PRS;"
                     "C-2\\COM:[KAVU: ZeroCal=5]seen;")));
    auto edit = DefinitionEdit::open(f.context, f.conversions, &f.ui, "A");
    ASSERT_TRUE(edit);
    EXPECT_EQ(edit->importValues(&f.ui, "B"), DefinitionEdit::Import::SameType);
    EXPECT_EQ(edit->comment(), "seen");
    EXPECT_EQ(f.conversions.commentRecordGet("A", "ZeroCal"), "5");
}

}  // namespace
}  // namespace kavu
