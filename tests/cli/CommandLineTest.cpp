#include "cli/CommandLine.h"
#include "cli/ParsedLine.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu::cli {
namespace {

using Arguments = std::vector<std::string>;

TEST(CommandLine, CheckTakesAFile) {
    const auto line = parsed({"check", "in.tma"});
    EXPECT_EQ(line.command, Command::Check);
    EXPECT_EQ(line.file, "in.tma");
    EXPECT_FALSE(line.json);
    EXPECT_FALSE(line.quiet);
    EXPECT_EQ(line.progress, ProgressWhen::Auto);
    EXPECT_EQ(line.replies.all, "no");
    EXPECT_FALSE(line.now.has_value());
}

TEST(CommandLine, SaveTakesFileOutputAndEdition) {
    const auto line = parsed({"save", "in.tma", "-o", "out.tma", "--edition", "2009"});
    EXPECT_EQ(line.command, Command::Save);
    EXPECT_EQ(line.file, "in.tma");
    EXPECT_EQ(line.output, "out.tma");
    EXPECT_EQ(line.edition, 2009);
}

TEST(CommandLine, StreamCommandsTakeAFileALinkAndAnOutput) {
    const auto stream = parsed({"stream", "in.tma", "PCM Stream 1"});
    EXPECT_EQ(stream.command, Command::Stream);
    EXPECT_EQ(stream.file, "in.tma");
    EXPECT_EQ(stream.link, "PCM Stream 1");
    const auto rewrite = parsed({"rewrite", "in.tma", "PCM 1", "-o", "out.tma"});
    EXPECT_EQ(rewrite.command, Command::Rewrite);
    EXPECT_EQ(rewrite.link, "PCM 1");
    EXPECT_EQ(rewrite.output, "out.tma");
    EXPECT_EQ(parsed({"word-frame", "a", "b", "-o", "c"}).command, Command::WordFrame);
    for (const auto& arguments :
         {Arguments{"stream", "in.tma"}, Arguments{"rewrite", "in.tma", "PCM 1"},
          Arguments{"word-frame", "in.tma", "-o", "out.tma"}}) {
        EXPECT_EQ(parseCommandLine(arguments).status, ExitStatus::Usage) << arguments[0];
    }
}

TEST(CommandLine, ACheckIsDeepOnRequest) {
    EXPECT_FALSE(parsed({"check", "in.tma"}).deep);
    EXPECT_TRUE(parsed({"check", "--deep", "in.tma"}).deep);
    EXPECT_TRUE(parsed({"check", "in.tma", "--deep"}).deep);
    EXPECT_EQ(parseCommandLine({"save", "a", "-o", "b", "--deep"}).status, ExitStatus::Usage);
}

TEST(CommandLine, EveryEditionIsAcceptedAndNoOtherYear) {
    for (const char* const year :
         {"1996", "1999", "2000", "2001", "2004", "2005", "2007", "2009", "2011"}) {
        EXPECT_EQ(parsed({"save", "a", "-o", "b", "--edition", year}).edition, std::stoi(year));
    }
    for (const char* const year : {"1997", "11", "2012", "2013", "0", "-2009", "2009x", ""}) {
        const auto result = parseCommandLine({"save", "a", "-o", "b", "--edition", year});
        EXPECT_EQ(result.status, ExitStatus::Usage) << year;
        EXPECT_FALSE(result.line.has_value()) << year;
    }
}

TEST(CommandLine, CommonOptionsStandBeforeOrBehindTheCommand) {
    for (const auto& arguments :
         {Arguments{"--json", "--quiet", "tree", "f"}, Arguments{"tree", "f", "--json", "--quiet"},
          Arguments{"--json", "tree", "--quiet", "f"}}) {
        const auto line = parsed(arguments);
        EXPECT_EQ(line.command, Command::Tree);
        EXPECT_EQ(line.file, "f");
        EXPECT_TRUE(line.json);
        EXPECT_TRUE(line.quiet);
    }
}

TEST(CommandLine, AnAnswerDoesNotSwallowTheArgumentBehindIt) {
    const auto line = parsed(
        {"check", "--answer", "304=yes", "file.tma", "--answer", "76=cancel", "--answer-all=yes"});
    EXPECT_EQ(line.file, "file.tma");
    EXPECT_EQ(line.replies.byId.at(304), "yes");
    EXPECT_EQ(line.replies.byId.at(76), "cancel");
    EXPECT_EQ(line.replies.all, "yes");
    EXPECT_EQ(parsed({"--answer", "1=2", "check", "f"}).replies.byId.at(1), "2");
}

TEST(CommandLine, AnAnswerMayBeATextWithEqualsSignOrNothing) {
    EXPECT_EQ(parsed({"--answer", "restore=no", "check", "f"}).replies.byName.at("restore"), "no");
    const auto line = parsed({"check", "f", "--answer", "5=a=b", "--answer", "6="});
    EXPECT_EQ(line.replies.byId.at(5), "a=b");
    EXPECT_EQ(line.replies.byId.at(6), "");
}

TEST(CommandLine, ANameInBracketsIsAName) {
    const auto line = parsed({"save", "[kavu]", "-o", "[a,b]"});
    EXPECT_EQ(line.file, "[kavu]");
    EXPECT_EQ(line.output, "[a,b]");
}

TEST(CommandLine, ANameThatBeginsWithAHyphenStandsBehindADoubleHyphen) {
    EXPECT_EQ(parsed({"check", "--", "-x.tma"}).file, "-x.tma");
}

TEST(CommandLine, NowIsADateAndTime) {
    const auto line = parsed({"--now", "2026-01-02T03:04:05", "check", "f"});
    ASSERT_TRUE(line.now.has_value());
    EXPECT_EQ(line.now->year, 2026);
    EXPECT_EQ(line.now->month, 1);
    EXPECT_EQ(line.now->day, 2);
    EXPECT_EQ(line.now->hour, 3);
    EXPECT_EQ(line.now->minute, 4);
    EXPECT_EQ(line.now->second, 5);
}

TEST(CommandLine, RecoverTakesAStoreAndAnOutputOrLists) {
    const auto line = parsed({"recover", "/tmp/KAVU-9-x", "-o", "out.tma"});
    EXPECT_EQ(line.command, Command::Recover);
    EXPECT_EQ(line.file, "/tmp/KAVU-9-x");
    EXPECT_EQ(line.output, "out.tma");
    EXPECT_TRUE(parsed({"recover", "--list"}).list);
}

TEST(CommandLine, ProgressHasThreeValues) {
    EXPECT_EQ(parsed({"check", "f", "--progress", "always"}).progress, ProgressWhen::Always);
    EXPECT_EQ(parsed({"check", "f", "--progress", "never"}).progress, ProgressWhen::Never);
    EXPECT_EQ(parsed({"check", "f", "--progress", "auto"}).progress, ProgressWhen::Auto);
}

TEST(CommandLine, WhatIsNoCommandIsNamed) {
    EXPECT_THAT(parseCommandLine({"chekc", "a"}).err,
                testing::StartsWith("kavu-cli: there is no command 'chekc'\n"));
    EXPECT_THAT(parseCommandLine({"--chekc"}).err,
                testing::StartsWith("kavu-cli: there is no option '--chekc'\n"));
    EXPECT_THAT(parseCommandLine({}).err, testing::StartsWith("kavu-cli: A subcommand is"));
}

class WrongUsage : public testing::TestWithParam<Arguments> {};

TEST_P(WrongUsage, IsToldOnStandardErrorAndExits64) {
    const auto result = parseCommandLine(GetParam());
    EXPECT_FALSE(result.line.has_value());
    EXPECT_EQ(result.status, ExitStatus::Usage);
    EXPECT_TRUE(result.out.empty()) << result.out;
    EXPECT_TRUE(result.err.starts_with("kavu-cli: ")) << result.err;
    EXPECT_NE(result.err.find("--help"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(
    CommandLine, WrongUsage,
    testing::Values(
        Arguments{}, Arguments{"--json"}, Arguments{"fly", "f"}, Arguments{"check"},
        Arguments{"check", "a", "b"}, Arguments{"check", "a", "--unknown"}, Arguments{"save", "a"},
        Arguments{"save", "-o", "b"}, Arguments{"save", "a", "-o"}, Arguments{"store", "a"},
        Arguments{"store", "--into", "d"}, Arguments{"tree"}, Arguments{"recover"},
        Arguments{"recover", "s"}, Arguments{"recover", "-o", "o"},
        Arguments{"recover", "--list", "s"}, Arguments{"check", "a", "check", "b"},
        Arguments{"check", "a", "--edition", "2009"}, Arguments{"check", "a", "-o", "b"},
        Arguments{"check", "a", "--answer", "yes"}, Arguments{"check", "a", "--answer", "-304=yes"},
        Arguments{"check", "a", "--answer", "0=yes"}, Arguments{"check", "a", "--answer", "x=yes"},
        Arguments{"check", "a", "--answer", "restore"}, Arguments{"recover", "--list", "--partial"},
        Arguments{"check", "a", "--answer", "99999999999=yes"},
        Arguments{"check", "a", "--answer", "3 =yes"}, Arguments{"check", "a", "--now", "today"},
        Arguments{"check", "a", "--now", "2026-13-01T00:00:00"},
        Arguments{"check", "a", "--now", ""}, Arguments{"check", "a", "--progress", "maybe"},
        Arguments{"check", "a", "--settings"}));

TEST(CommandLine, HelpAndVersionGoToStandardOutput) {
    for (const auto& arguments : {Arguments{"--help"}, Arguments{"check", "--help"},
                                  Arguments{"save", "--help"}, Arguments{"store", "--help"},
                                  Arguments{"tree", "--help"}, Arguments{"recover", "--help"}}) {
        const auto result = parseCommandLine(arguments);
        EXPECT_FALSE(result.line.has_value());
        EXPECT_EQ(result.status, ExitStatus::Clean);
        EXPECT_TRUE(result.err.empty());
        EXPECT_NE(result.out.find("Exit status"), std::string::npos) << result.out;
    }
    const auto version = parseCommandLine({"--version"});
    EXPECT_EQ(version.status, ExitStatus::Clean);
    EXPECT_TRUE(version.out.starts_with("kavu-cli ")) << version.out;
}

TEST(CommandLine, HelpOfACommandNamesItsOwnOptionsAndTheCommonOnes) {
    const auto save = parseCommandLine({"save", "--help"}).out;
    for (const char* const part : {"FILE", "--output", "--edition", "YEAR"}) {
        EXPECT_NE(save.find(part), std::string::npos) << part << " in\n" << save;
    }
    const auto all = parseCommandLine({"--help"}).out;
    for (const char* const part :
         {"--json", "--settings", "--answer", "--answer-all", "--overwrite", "--now", "--progress",
          "--quiet", "--version", "check", "save", "store", "tree", "recover"}) {
        EXPECT_NE(all.find(part), std::string::npos) << part << " in\n" << all;
    }
}

TEST(CommandLine, FitTakesItsNumbersWithinTheirBounds) {
    const auto line = parsed({"fit", "p.csv", "--order", "10", "--max-order", "3", "--precision",
                              "0", "--bits", "64", "--svg", "p.svg"});
    EXPECT_EQ(line.command, Command::Fit);
    EXPECT_EQ(line.file, "p.csv");
    EXPECT_EQ(line.order, 10);
    EXPECT_EQ(line.maxOrder, 3);
    EXPECT_EQ(line.precision, 0);
    EXPECT_EQ(line.bits, 64);
    EXPECT_EQ(line.svg, "p.svg");
    EXPECT_FALSE(line.overwrite);
    EXPECT_TRUE(parsed({"fit", "p", "--svg", "p.svg", "--overwrite"}).overwrite);
    EXPECT_TRUE(parsed({"fit", "p", "--best"}).best);
    for (const auto& arguments :
         {Arguments{"fit"}, Arguments{"fit", "p", "--order", "11"},
          Arguments{"fit", "p", "--order", "1.5"}, Arguments{"fit", "p", "--order", ""},
          Arguments{"fit", "p", "--order", "1", "--best"},
          Arguments{"fit", "p", "--max-order", "0"}, Arguments{"fit", "p", "--precision", "41"},
          Arguments{"fit", "p", "--bits", "99999999999999999999"}}) {
        EXPECT_EQ(parseCommandLine(arguments).status, ExitStatus::Usage);
    }
}

TEST(CommandLine, EvaluateTakesNegativeNumbers) {
    const auto line = parsed({"evaluate", "f", "M", "-5", "-.5", "1e3", "--json", "-1e-3"});
    EXPECT_EQ(line.command, Command::Evaluate);
    EXPECT_EQ(line.name, "M");
    EXPECT_EQ(line.values, (std::vector<double>{-5, -0.5, 1000, -0.001}));
    EXPECT_TRUE(line.json);
    for (const char* const bad : {"x", "nan", "inf", "1e999", "", "0x10"}) {
        EXPECT_EQ(parseCommandLine({"evaluate", "f", "M", bad}).status, ExitStatus::Usage) << bad;
    }
}

TEST(CommandLine, ConversionsTakesANameOrNone) {
    EXPECT_EQ(parsed({"conversions", "f"}).name, "");
    EXPECT_EQ(parsed({"conversions", "f", "M"}).name, "M");
    EXPECT_EQ(parsed({"conversions", "f", "M"}).command, Command::Conversions);
}

TEST(CommandLine, VocabularyTakesALetterAndAnEdition) {
    const auto line = parsed({"vocabulary", "t", "--edition", "1999"});
    EXPECT_EQ(line.command, Command::Vocabulary);
    EXPECT_EQ(line.letter, 'T');
    EXPECT_EQ(line.edition, 1999);
    EXPECT_FALSE(parsed({"vocabulary", "G"}).edition.has_value());
    for (const auto& arguments :
         {Arguments{"vocabulary"}, Arguments{"vocabulary", "X"}, Arguments{"vocabulary", "GT"},
          Arguments{"vocabulary", ""}, Arguments{"vocabulary", "G", "--edition", "1998"}}) {
        EXPECT_EQ(parseCommandLine(arguments).status, ExitStatus::Usage);
    }
}

TEST(CommandLine, GetTakesCodes) {
    const auto line = parsed({"get", "in.tma", "G\\PN", "p-1\\D2"});
    EXPECT_EQ(line.command, Command::Get);
    EXPECT_EQ(line.codes, (Arguments{"G\\PN", "p-1\\D2"}));
    for (const auto& code : {"PN", "G\\", "T\\RF1", "C-1\\DCN"}) {
        EXPECT_EQ(parseCommandLine({"get", "in.tma", code}).status, ExitStatus::Usage) << code;
    }
    EXPECT_NE(parseCommandLine({"get", "in.tma", "C-1\\DCN"}).err.find("conversions"),
              std::string::npos);
}

TEST(CommandLine, SetTakesCodesWithValues) {
    const auto line = parsed({"set", "in.tma", "G\\PN=a=b", "T-1\\RF1=", "-o", "out.tma"});
    EXPECT_EQ(line.command, Command::Set);
    EXPECT_EQ(line.output, "out.tma");
    ASSERT_EQ(line.changes.size(), 2u);
    EXPECT_EQ(line.changes[0], (std::pair<std::string, std::string>{"G\\PN", "a=b"}));
    EXPECT_EQ(line.changes[1], (std::pair<std::string, std::string>{"T-1\\RF1", ""}));
    for (const auto& assignment : {"G\\PN", "=x", "PN=x"}) {
        EXPECT_EQ(parseCommandLine({"set", "in.tma", assignment, "-o", "o"}).status,
                  ExitStatus::Usage)
            << assignment;
    }
    EXPECT_EQ(parseCommandLine({"set", "in.tma", "G\\PN=x"}).status, ExitStatus::Usage);
}

}  // namespace
}  // namespace kavu::cli
