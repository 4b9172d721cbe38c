#include "application/automation/AutomationStage.h"

namespace kavu {
namespace {

using test::AutomationStage;
using test::kLeastInt;
using test::kMostInt;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// "ONE" of class 2 with the links of other kinds of streams.
constexpr const char* kManyLinks =
    "G\\106:09;G\\DSI\\N:1;G\\DSI-1:Source;G\\DST-1:RF;T-1\\ID:Source;"
    "M-1\\ID:Source;M-1\\BB\\DLN:Bus;M-1\\SI\\N:5;M-1\\SI\\DLN-1:ONE;M-1\\SI\\DLN-2:Packet;"
    "M-1\\SI\\DLN-3:Pam;M-1\\SI\\DLN-4:Message;M-1\\SI\\DLN-5:Nobody;"
    "M-2\\ID:Source;M-2\\BB\\DLN:ONE;M-2\\SI\\N:1;M-2\\SI\\DLN-1:TWO;"
    "P-1\\DLN:ONE;P-1\\TF:TWO;P-1\\F1:16;P-1\\MF\\N:1;P-1\\MF1:4;"
    "P-1\\AEF\\N:2;P-1\\AEF\\DLN-1:Embedded;P-1\\AEF\\DLN-2:TWO;"
    "P-2\\DLN:TWO;P-2\\TF:TWO;P-2\\F1:8;P-2\\MF\\N:1;P-2\\MF1:4;"
    "P-3\\DLN:Bus;P-3\\TF:1553;P-4\\DLN:Packet;P-4\\TF:PKTM;P-5\\DLN:Lost;P-5\\TF:ONE;"
    "A-1\\DLN:Pam;S-1\\DLN:Message;B-1\\DLN:Bus;";

class AutomatedFormats : public AutomationStage {
  protected:
    /// The document with another type of the stream "ONE".
    static std::string ofType(const std::string& type) {
        std::string document = test::kAutomationDocument;
        document.replace(document.find("P-1\\TF:TWO"), 10, "P-1\\TF:" + type);
        return document;
    }
};

// --- streams --------------------------------------------------------------------------------

TEST_F(AutomatedFormats, StreamsAreTheLinksOfAllMGroupsThatArePcmThenTheEmbeddedOnes) {
    open(kManyLinks);
    ASSERT_EQ(formats->CountPCMStreams(), 4);
    std::vector<std::string> names;
    for (int i = 1; i <= 4; ++i) {
        names.push_back(formats->GetPCMStreamName(i));
    }
    EXPECT_THAT(names, ElementsAre("ONE", "Nobody", "TWO", "Embedded"))
        << "a link that no group bears counts; bus, packet, message and PAM streams do not";
}

TEST_F(AutomatedFormats, AStreamNumberCountsFrom1) {
    EXPECT_EQ(errorOf([&] { (void)formats->CountPCMStreams(); }), "NoDocument");
    open(kManyLinks);
    for (const auto bad : {0, -1, 5, kLeastInt, kMostInt}) {
        EXPECT_EQ(errorOf([&] { (void)formats->GetPCMStreamName(bad); }), "OutOfRange");
        EXPECT_EQ(errorOf([&] { formats->LoadPCMFormat(0, bad); }), "OutOfRange");
    }
}

TEST_F(AutomatedFormats, ALinkThatNoGroupBearsGetsANewFormat) {
    open(kManyLinks);
    formats->LoadPCMFormat(0, 2);
    EXPECT_EQ(format().streamName, "Nobody");
    EXPECT_EQ(formats->GetCommonWordLength(), 16);
    EXPECT_TRUE(formats->IsPCMFormatChanged());
    EXPECT_EQ(signals.back(), "format Nobody changed");
    formats->SavePCMFormat(0);
    EXPECT_THAT(test::readFile(test.application.context().store.pathOf("[kavu]PCMFMT.P06")),
                HasSubstr("P-6\\DLN:Nobody;"));
}

TEST_F(AutomatedFormats, TheLoadedStreamIsNotLoadedAgain) {
    load();
    formats->SetBitRate(5);
    formats->LoadPCMFormat(0, 1);
    EXPECT_EQ(formats->GetBitRate(), 5);
    EXPECT_TRUE(formats->IsPCMFormatChanged());
}

TEST_F(AutomatedFormats, AChangedFormatIsNotDroppedForAnotherStream) {
    load();
    formats->SetBitRate(5);
    EXPECT_EQ(errorOf([&] { formats->LoadPCMFormat(0, 2); }), "Unsaved");
    EXPECT_EQ(errorOf([&] { formats->LoadPCMFormat(kWindow, 2); }), "NoDisplay");
    formats->SavePCMFormat(0);
    formats->LoadPCMFormat(0, 2);
    EXPECT_EQ(format().streamName, "TWO");
    formats->LoadPCMFormat(0, 1);
    EXPECT_EQ(formats->GetBitRate(), 5);
}

TEST_F(AutomatedFormats, WithAWindowTheUserIsAskedBeforeAnotherStream) {
    reach(&windows);
    load();
    formats->SetBitRate(5);
    windows.ui.byId[76] = Button::Cancel;
    EXPECT_EQ(errorOf([&] { formats->LoadPCMFormat(kWindow, 2); }), "Cancelled");
    windows.ui.byId[76] = Button::No;
    formats->LoadPCMFormat(kWindow, 2);
    EXPECT_EQ(format().streamName, "TWO");
    EXPECT_FALSE(documents->IsTmatsFileChanged());
}

TEST_F(AutomatedFormats, ASaveOfTheFormatIsOneOperationOfTheDocument) {
    load();
    formats->SetBitRate(5);
    formats->SetNumberOfFrames(0, 16);
    auto& history = test.application.context().history;
    const auto levels = history.levels();
    formats->SavePCMFormat(0);
    EXPECT_EQ(history.levels(), levels + 1);
    EXPECT_FALSE(formats->IsPCMFormatChanged());
    EXPECT_EQ(signals.back(), "format ONE unchanged");
    formats->SavePCMFormat(0);
    EXPECT_EQ(history.levels(), levels + 1) << "nothing was changed since";
}

TEST_F(AutomatedFormats, WhatAGroupHoldsBeyondTheModelIsKeptWithoutAQuestion) {
    load(std::string(test::kAutomationDocument) + "P-1\\XYZ:Own;");
    formats->SetBitRate(5);
    formats->SavePCMFormat(0);
    EXPECT_THAT(test::readFile(test.application.context().store.pathOf("[kavu]PCMFMT.P01")),
                HasSubstr("P-1\\XYZ:Own;"));
}

TEST_F(AutomatedFormats, TheChangedMarkIsToldWhenItTurns) {
    load();
    signals.clear();
    formats->SetBitRate(5);
    formats->SetBitRate(6);
    EXPECT_THAT(signals, ElementsAre("format ONE changed"));
}

TEST_F(AutomatedFormats, EveryMethodNeedsAFormat) {
    open();
    const std::vector<std::function<void()>> calls{
        [&] { formats->SavePCMFormat(0); },
        [&] { (void)formats->IsPCMFormatChanged(); },
        [&] { formats->ShowPCMFormatDialog(0); },
        [&] { formats->ShowPCMDisplay(0); },
        [&] { (void)formats->GetBitRate(); },
        [&] { formats->SetBitRate(1); },
        [&] { (void)formats->GetCommonWordLength(); },
        [&] { formats->SetCommonWordLength(0, 8); },
        [&] { (void)formats->GetFrameSyncPattern(); },
        [&] { formats->SetFrameSyncPatternByLength(0, -1); },
        [&] { formats->SetFrameSyncPatternByValue(0, "x"); },
        [&] { (void)formats->GetNumberOfFrames(); },
        [&] { formats->SetNumberOfFrames(0, 0); },
        [&] { (void)formats->GetPCMComment(); },
        [&] { formats->SetPCMComment(";"); },
        [&] { (void)formats->GetWordsPerMinorFrame(); },
        [&] { formats->SetWordsPerMinorFrame(0, 0); }};
    for (const auto& call : calls) {
        EXPECT_EQ(errorOf(call), "NoFormat");
    }
    documents->CloseTmatsFile(0, false);
    for (const auto& call : calls) {
        EXPECT_EQ(errorOf(call), "NoDocument");
    }
}

TEST_F(AutomatedFormats, TheDialogsNeedADisplay) {
    load();
    EXPECT_EQ(errorOf([&] { formats->ShowPCMFormatDialog(0); }), "NoDisplay");
    EXPECT_EQ(errorOf([&] { formats->ShowPCMDisplay(kWindow); }), "NoDisplay");
    reach(&windows);
    windows.during = [&] { format().setBitRate("9"); };
    signals.clear();
    formats->ShowPCMFormatDialog(0);
    EXPECT_THAT(signals, ElementsAre("format ONE changed"));
    EXPECT_TRUE(session->history().canUndo()) << "what the dialog has done is one level";
    windows.during = {};
    windows.answer = false;
    EXPECT_EQ(errorOf([&] { formats->ShowPCMDisplay(0); }), "Cancelled");
    EXPECT_THAT(windows.opened, ElementsAre("format", "display"));
}

// --- attributes -----------------------------------------------------------------------------

TEST_F(AutomatedFormats, ABitRateThatIsNoNumberIsNotZero) {
    load();
    EXPECT_EQ(formats->GetBitRate(), 64000);
    for (const char* const bad : {"", "fast", "1.5E6", "64 kHz"}) {
        format().bitRate = bad;
        EXPECT_EQ(errorOf([&] { (void)formats->GetBitRate(); }), "NotANumber") << bad;
    }
}

TEST_F(AutomatedFormats, ABitRateIsStoredInItsFirst9Characters) {
    load();
    expectOneLevel([&] { formats->SetBitRate(kMostInt); });
    EXPECT_EQ(format().bitRate, "214748364");
    formats->SetBitRate(kLeastInt);
    EXPECT_EQ(format().bitRate, "-21474836");
    formats->SetBitRate(0);
    EXPECT_EQ(formats->GetBitRate(), 0);
}

TEST_F(AutomatedFormats, TheSameValueIsNoChange) {
    load();
    formats->SetBitRate(64000);
    formats->SetNumberOfFrames(0, 8);
    formats->SetWordsPerMinorFrame(0, 16);
    formats->SetCommonWordLength(0, 16);
    formats->SetPCMComment("");
    EXPECT_FALSE(formats->IsPCMFormatChanged());
    EXPECT_FALSE(session->history().canUndo());
}

TEST_F(AutomatedFormats, ACommonWordLengthFollowsTheRulesOfItsType) {
    load(ofType("ONE"));
    for (const auto bad : {3, 0, -1, 33, kMostInt, kLeastInt}) {
        EXPECT_EQ(errorOf([&] { formats->SetCommonWordLength(0, bad); }), "Refused 219");
    }
    EXPECT_THAT(text, HasSubstr("between 4 and 32 bits"));
    document().version = 2004;
    EXPECT_EQ(errorOf([&] { formats->SetCommonWordLength(0, 17); }), "Refused 219");
    EXPECT_THAT(text, HasSubstr("between 4 and 16 bits"));
    document().version = 2009;
    format().typeFormat = "1553";
    EXPECT_EQ(errorOf([&] { formats->SetCommonWordLength(0, 16); }), "Refused 220");
    format().typeFormat = "";
    EXPECT_EQ(errorOf([&] { formats->SetCommonWordLength(0, 16); }), "Refused 218");
    format().typeFormat = "TWO";
    for (const auto bad : {0, 100, kMostInt, kLeastInt}) {
        EXPECT_EQ(errorOf([&] { formats->SetCommonWordLength(0, bad); }), "OutOfRange");
    }
}

TEST_F(AutomatedFormats, AWordThatHappensToHaveTheCommonLengthFollows) {
    load();
    format().setWordLength(3, 12);
    format().setWordLength(4, 20);
    (void)session->history().commit();
    expectOneLevel([&] { formats->SetCommonWordLength(0, 12); });
    EXPECT_EQ(format().wordLength(5), 12);
    EXPECT_EQ(format().wordLength(4), 20);
    formats->SetCommonWordLength(0, 24);
    EXPECT_EQ(format().wordLength(3), 24) << "its length was the common one";
    EXPECT_EQ(formats->GetCommonWordLength(), 24);
}

TEST_F(AutomatedFormats, APatternOfALengthIsTheRecommendedOne) {
    load();
    expectOneLevel([&] { formats->SetFrameSyncPatternByLength(0, 16); });
    EXPECT_EQ(formats->GetFrameSyncPattern(), "111 010 111 001 000 0");
    formats->SetFrameSyncPatternByLength(0, 4);
    EXPECT_EQ(formats->GetFrameSyncPattern(), "111 1");
    formats->SetFrameSyncPatternByLength(0, 0);
    EXPECT_EQ(formats->GetFrameSyncPattern(), "");
    EXPECT_EQ(errorOf([&] { formats->SetFrameSyncPatternByLength(0, 34); }), "Refused 440");
    EXPECT_EQ(errorOf([&] { formats->SetFrameSyncPatternByLength(0, kMostInt); }), "Refused 440");
    EXPECT_EQ(errorOf([&] { formats->SetFrameSyncPatternByLength(0, -1); }), "OutOfRange");
    EXPECT_EQ(errorOf([&] { formats->SetFrameSyncPatternByLength(0, kLeastInt); }), "OutOfRange");
}

TEST_F(AutomatedFormats, APatternIsBinaryAndAtMost33BitsLong) {
    reach(&windows);
    load();
    expectOneLevel([&] { formats->SetFrameSyncPatternByValue(0, "1011 0010"); });
    EXPECT_EQ(formats->GetFrameSyncPattern(), "1011 0010");
    EXPECT_EQ(format().syncLength, 8);
    for (const char* const bad : {"", "  ", "12", "0x1"}) {
        EXPECT_EQ(errorOf([&] { formats->SetFrameSyncPatternByValue(0, bad); }), "Refused 439");
    }
    EXPECT_EQ(errorOf([&] { formats->SetFrameSyncPatternByValue(0, std::string(34, '1')); }),
              "Refused 440");
    EXPECT_TRUE(windows.ui.boxes.empty());
    EXPECT_EQ(errorOf([&] { formats->SetFrameSyncPatternByValue(kWindow, "12"); }), "Refused 439");
    EXPECT_EQ(windows.ui.countBoxes(439), 1);
}

TEST_F(AutomatedFormats, FewerFramesCutCountersAndDepths) {
    load();
    expectOneLevel([&] { formats->SetNumberOfFrames(0, 4); });
    EXPECT_EQ(formats->GetNumberOfFrames(), 4);
    EXPECT_EQ(counters->GetSFIDEndFrame("SFID"), 4);
    EXPECT_EQ(subframes->GetSubframeDepth("SF"), 4);
    for (const auto bad : {0, -1, 257, kMostInt, kLeastInt}) {
        EXPECT_EQ(errorOf([&] { formats->SetNumberOfFrames(0, bad); }), "Refused 216");
    }
    formats->SetNumberOfFrames(0, 256);
    EXPECT_TRUE(formats->IsPCMFormatChanged());
}

TEST_F(AutomatedFormats, FewerWordsDeleteWholeSubframesAndCounters) {
    load();
    subframes->SetSubframeLocations(0, "SF", 2, 3);
    expectOneLevel([&] { formats->SetWordsPerMinorFrame(0, 12); });
    EXPECT_EQ(formats->GetWordsPerMinorFrame(), 12);
    EXPECT_EQ(errorOf([&] { (void)subframes->GetSubframeDepth("SF"); }), "NotFound")
        << "also the word that stays is no word of it";
    EXPECT_EQ(counters->GetNumberOfSFIDs(), 0);
    EXPECT_EQ(errorOf([&] { formats->SetWordsPerMinorFrame(0, 0); }), "Refused 161");
    EXPECT_EQ(errorOf([&] { formats->SetWordsPerMinorFrame(0, kLeastInt); }), "Refused 161");
}

TEST_F(AutomatedFormats, MoreThan2048WordsStandAs2048WithMessage189) {
    load();
    for (const auto many : {2049, kMostInt}) {
        EXPECT_EQ(failureOf([&] { formats->SetWordsPerMinorFrame(0, many); }), "Refused 189");
        EXPECT_EQ(formats->GetWordsPerMinorFrame(), 2048);
        EXPECT_TRUE(formats->IsPCMFormatChanged());
    }
    formats->SetWordsPerMinorFrame(0, 16);
    format().typeFormat = "ONE";
    EXPECT_EQ(errorOf([&] { formats->SetWordsPerMinorFrame(0, 1025); }), "Refused 223");
    format().isBusStream = true;
    EXPECT_EQ(errorOf([&] { formats->SetWordsPerMinorFrame(0, 127); }), "Refused 222");
}

TEST_F(AutomatedFormats, ACommentHasRealLineBreaksAndNoSemicolon) {
    load(std::string(test::kAutomationDocument) +
         "P-1\\COM:First\r\nSecond Gr\xF6\xDF"
         "e;");
    EXPECT_EQ(formats->GetPCMComment(),
              "First\r\nSecond Gr\xC3\xB6\xC3\x9F"
              "e");
    formats->SetPCMComment(formats->GetPCMComment());
    EXPECT_FALSE(formats->IsPCMFormatChanged());
    expectOneLevel([&] { formats->SetPCMComment("A\nB \xC3\xA4"); });
    formats->SavePCMFormat(0);
    EXPECT_THAT(test::readFile(test.application.context().store.pathOf("[kavu]PCMFMT.P01")),
                HasSubstr("P-1\\COM:A\x15"
                          "B \xE4;"))
        << "the file has Windows-1252 here";
    EXPECT_EQ(formats->GetPCMComment(), "A\nB \xC3\xA4");
    EXPECT_EQ(errorOf([&] { formats->SetPCMComment("A;B"); }), "Refused 402");
    EXPECT_EQ(errorOf([&] { formats->SetPCMComment("A\tB"); }), "BadValue");
    formats->SetPCMComment("");
    EXPECT_EQ(formats->GetPCMComment(), "");
}

}  // namespace
}  // namespace kavu
