#include "core/files/ProfileFile.h"
#include "support/ProfileModel.h"
#include "support/TestContext.h"

#include <cerrno>
#include <random>
#include <unistd.h>

namespace kavu::test {
namespace {

ProfileFile parsed(std::string_view text, ProfileFile::LineEnd end = ProfileFile::LineEnd::CrLf) {
    ProfileFile profile("", end);
    profile.parse(text);
    return profile;
}

using Names = std::vector<std::string>;

// --- Reading ----------------------------------------------------------------------------

TEST(ProfileFileTest, MissingFileIsAnEmptyProfile) {
    const TempFolder folder;
    ProfileFile profile(folder / "none.ini");
    EXPECT_TRUE(profile.load().ok());
    EXPECT_EQ(profile.value("A", "x"), std::nullopt);
    EXPECT_EQ(profile.value("A", "x", "otherwise"), "otherwise");
    EXPECT_EQ(profile.integer("A", "x", 7), 7);
    EXPECT_EQ(profile.sectionNames(), Names());
    EXPECT_TRUE(profile.flush().ok());
    EXPECT_FALSE(fileExists(profile.path()));
}

TEST(ProfileFileTest, BothLineEndsAreRead) {
    const auto profile = parsed("[A]\r\nx=1\ny=2\r\n[B]\nx=3");
    EXPECT_EQ(profile.value("A", "x"), "1");
    EXPECT_EQ(profile.value("A", "y"), "2");
    EXPECT_EQ(profile.value("B", "x"), "3");
}

TEST(ProfileFileTest, NamesAreFoundWithoutRegardToCase) {
    const auto profile = parsed("[Main]\r\nCreateBackup=1\r\n");
    EXPECT_EQ(profile.value("MAIN", "createbackup"), "1");
    EXPECT_TRUE(profile.hasSection("main"));
    EXPECT_FALSE(profile.hasExactSection("main"));
    EXPECT_TRUE(profile.hasExactSection("Main"));
}

TEST(ProfileFileTest, ExactSpellingOfASectionGoesFirst) {
    const auto profile = parsed("[abc]\r\nx=lower\r\n[ABC]\r\nx=upper\r\n");
    EXPECT_EQ(profile.value("ABC", "x"), "upper");
    EXPECT_EQ(profile.value("abc", "x"), "lower");
    EXPECT_EQ(profile.value("Abc", "x"), "lower");
}

TEST(ProfileFileTest, OfTwoSectionsOfOneNameTheFirstAnswersAndBothAreKept) {
    auto profile = parsed("[A]\r\nx=1\r\n[A]\r\nx=2\r\ny=3\r\n");
    EXPECT_EQ(profile.value("A", "x"), "1");
    EXPECT_EQ(profile.value("A", "y"), std::nullopt);
    EXPECT_TRUE(profile.setValue("A", "x", "9"));
    EXPECT_EQ(profile.serialise(), "[A]\r\nx=9\r\n[A]\r\nx=2\r\ny=3\r\n");
    profile.removeSection("A");
    EXPECT_EQ(profile.value("A", "y"), "3");
}

TEST(ProfileFileTest, OfTwoKeysOfOneNameTheFirstAnswers) {
    auto profile = parsed("[A]\r\nx=1\r\nX=2\r\n");
    EXPECT_EQ(profile.value("A", "X"), "1");
    profile.removeKey("A", "x");
    EXPECT_EQ(profile.value("A", "x"), "2");
}

struct Head {
    const char* line;
    const char* name;
};

TEST(ProfileFileTest, SectionHeadIsCutOnlyAtItsLastBracket) {
    const Head rows[] = {
        {"[A]", "A"},     {"[A] \t", "A"},        {"[A", "A"},      {"[a]b]", "a]b"},
        {"[]]", "]"},     {"[[kavu]]", "[kavu]"}, {"[ A ]", " A "}, {"[a;b=c]", "a;b=c"},
        {"[A]x]", "A]x"}, {"[A]x", "A]x"},
    };
    for (const auto& row : rows) {
        const auto profile = parsed(std::string(row.line) + "\r\nx=1\r\n");
        EXPECT_EQ(profile.sectionNames(), Names{row.name}) << row.line;
        EXPECT_EQ(profile.value(row.name, "x"), "1") << row.line;
        EXPECT_EQ(parsed(profile.serialise()).sectionNames(), Names{row.name}) << row.line;
    }
}

TEST(ProfileFileTest, OuterBlanksOfKeysAndValuesAreRemoved) {
    const auto profile = parsed("[A]\r\n \tx \t= \t1 2 \t\r\ny=\r\nz= \r\n");
    EXPECT_EQ(profile.value("A", "x"), "1 2");
    EXPECT_EQ(profile.value("A", "y"), "");
    EXPECT_EQ(profile.value("A", "z", "otherwise"), "");
    EXPECT_EQ(profile.keyNames("A"), (Names{"x", "y", "z"}));
}

TEST(ProfileFileTest, ValueMayHoldEqualsSignsAndSemicolons) {
    EXPECT_EQ(parsed("[A]\r\nx=a=b;c=[d]\r\n").value("A", "x"), "a=b;c=[d]");
}

TEST(ProfileFileTest, CommentsAndStrayLinesAreKeptWhereTheyStand) {
    const std::string text =
        "; in front\r\nstray\r\n\r\n[A]\r\n;x=0\r\nx=1\r\n=no key\r\n  ;y=2\r\n  [B=3\r\n";
    auto profile = parsed(text);
    EXPECT_EQ(profile.keyNames("A"), Names{"x"});
    EXPECT_EQ(profile.serialise(), text);
    profile.setValue("A", "z", "4");
    EXPECT_EQ(profile.serialise(), text + "z=4\r\n");
}

TEST(ProfileFileTest, PairsInFrontOfTheFirstHeadBelongToNoSection) {
    const auto profile = parsed("x=1\r\n[A]\r\ny=2\r\n");
    EXPECT_EQ(profile.value("", "x"), std::nullopt);
    EXPECT_EQ(profile.value("A", "x"), std::nullopt);
    EXPECT_EQ(profile.serialise(), "x=1\r\n[A]\r\ny=2\r\n");
}

TEST(ProfileFileTest, ByteOrderMarkDoesNotHideTheFirstSection) {
    EXPECT_EQ(parsed("\xEF\xBB\xBF[A]\r\nx=1\r\n").value("A", "x"), "1");
}

TEST(ProfileFileTest, NulAndStoredLineBreaksPassThrough) {
    const std::string value("a\0b\x14\x15\xff", 6);
    auto profile = parsed("");
    ASSERT_TRUE(profile.setValue("A", "x", value));
    EXPECT_EQ(parsed(profile.serialise()).value("A", "x"), value);
}

TEST(ProfileFileTest, ValueOfAnyLengthIsReadWhole) {
    for (const std::size_t size : {4997u, 4998u, 4999u, 5000u, 5001u, 70000u, 3000000u}) {
        const std::string value(size, 'v');
        auto profile = parsed("");
        ASSERT_TRUE(profile.setValue("A", "x", value));
        EXPECT_EQ(parsed(profile.serialise()).value("A", "x"), value) << size;
    }
}

struct Number {
    const char* text;
    int number;
};

TEST(ProfileFileTest, IntegerIsTheDecimalNumberAtTheFront) {
    const Number rows[] = {{"12", 12},  {"-3", -3}, {"+4", 4},     {"007", 7},
                           {"abc", 0},  {"", 0},    {"5 bits", 5}, {"99999999999", 2147483647},
                           {"0x10", 0}, {"-", 0}};
    for (const auto& row : rows) {
        const auto profile = parsed("[A]\r\nx=" + std::string(row.text) + "\r\n");
        EXPECT_EQ(profile.integer("A", "x", 77), row.number) << row.text;
    }
}

TEST(ProfileFileTest, KeysAreFoundInShortAndLongSections) {
    for (const int count : {1, 31, 32, 33, 34, 500}) {
        std::string text = "[A]\r\n";
        for (int i = 0; i < count; ++i) {
            text += "Key" + std::to_string(i) + "=" + std::to_string(i) + "\r\n";
        }
        auto profile = parsed(text);
        for (int i = 0; i < count; ++i) {
            EXPECT_EQ(profile.integer("a", "KEY" + std::to_string(i), -1), i) << count;
        }
        EXPECT_EQ(profile.value("A", "Key" + std::to_string(count)), std::nullopt);
        EXPECT_EQ(profile.value("A", ""), std::nullopt);
        for (int i = 0; i < count; ++i) {
            profile.removeKey("A", "key" + std::to_string(i));
            EXPECT_EQ(profile.value("A", "Key" + std::to_string(i)), std::nullopt);
            EXPECT_EQ(profile.hasSection("A"), i + 1 < count);
        }
    }
}

// --- Changing ---------------------------------------------------------------------------

TEST(ProfileFileTest, ReplacedKeyKeepsItsPlaceAndSpelling) {
    auto profile = parsed("[A]\r\nOne=1\r\nTwo=2\r\n");
    EXPECT_TRUE(profile.setValue("a", "ONE", "9"));
    EXPECT_EQ(profile.serialise(), "[A]\r\nOne=9\r\nTwo=2\r\n");
}

TEST(ProfileFileTest, NewSectionGoesToTheEnd) {
    auto profile = parsed("[A]\r\nx=1\r\n");
    EXPECT_TRUE(profile.setValue("B", "y", "2"));
    EXPECT_EQ(profile.serialise(), "[A]\r\nx=1\r\n[B]\r\ny=2\r\n");
}

TEST(ProfileFileTest, WhatTheFormCanNotHoldIsRefused) {
    const struct {
        std::string section, key, value;
    } rows[] = {{"", "x", "1"},
                {"A\nB", "x", "1"},
                {"A\r", "x", "1"},
                {"A", "", "1"},
                {"A", "a=b", "1"},
                {"A", "[x", "1"},
                {"A", ";x", "1"},
                {"A", " x", "1"},
                {"A", "x\t", "1"},
                {"A", "x\ny", "1"},
                {"A", "x", "1\n2"},
                {"A", "x", "1\r"},
                {"A", "\xEF\xBB\xBFx", "1"}};
    for (const auto& row : rows) {
        auto profile = parsed("");
        EXPECT_FALSE(profile.setValue(row.section, row.key, row.value))
            << row.section << "|" << row.key << "|" << row.value;
        EXPECT_EQ(profile.serialise(), "");
    }
}

TEST(ProfileFileTest, RemovedSectionIsGoneAndOthersStay) {
    auto profile = parsed("[A]\r\nx=1\r\n[B]\r\ny=2\r\n[C]\r\nz=3\r\n");
    profile.removeSection("b");
    EXPECT_EQ(profile.serialise(), "[A]\r\nx=1\r\n[C]\r\nz=3\r\n");
    EXPECT_EQ(profile.value("C", "z"), "3");
    profile.removeSection("missing");
    EXPECT_EQ(profile.sectionNames(), (Names{"A", "C"}));
}

TEST(ProfileFileTest, RenamedSectionStaysInItsPlace) {
    auto profile = parsed("[A]\r\nx=1\r\n[B]\r\ny=2\r\n");
    EXPECT_TRUE(profile.renameSection("A", "Z"));
    EXPECT_EQ(profile.serialise(), "[Z]\r\nx=1\r\n[B]\r\ny=2\r\n");
    EXPECT_EQ(profile.value("A", "x"), std::nullopt);
    EXPECT_EQ(profile.value("Z", "x"), "1");
    EXPECT_FALSE(profile.renameSection("A", "Y"));
    EXPECT_FALSE(profile.renameSection("B", ""));
    EXPECT_FALSE(profile.renameSection("B", "a\nb"));
}

TEST(ProfileFileTest, ReferencesToSectionsStayValidWhileSectionsAreAppended) {
    auto profile = parsed("[A]\r\nx=1\r\n");
    const auto& section = profile.sections()[1];
    for (int i = 0; i < 1000; ++i) {
        profile.appendSection("S" + std::to_string(i));
    }
    EXPECT_EQ(section.name(), "A");
    EXPECT_EQ(section.get("x"), "1");
}

TEST(ProfileFileTest, EmptySectionIsThereButHasNoKeys) {
    auto profile = parsed("");
    profile.appendSection("A");
    EXPECT_FALSE(profile.hasSection("A"));
    EXPECT_FALSE(profile.hasExactSection("A"));
    EXPECT_TRUE(profile.containsExactly("A"));
    EXPECT_FALSE(profile.containsExactly("a"));
    EXPECT_EQ(profile.serialise(), "[A]\r\n");
}

TEST(ProfileFileTest, MovedProfileStillFindsItsSections) {
    auto profile = parsed("[A]\r\nx=1\r\n[B]\r\nx=2\r\n");
    const ProfileFile moved = std::move(profile);
    EXPECT_EQ(moved.value("A", "x"), "1");
    EXPECT_EQ(moved.value("b", "x"), "2");
}

// --- Files ------------------------------------------------------------------------------

TEST(ProfileFileTest, FlushWritesWithTheChosenLineEnd) {
    const TempFolder folder;
    for (const bool crLf : {true, false}) {
        ProfileFile profile(folder / (crLf ? "crlf" : "lf"),
                            crLf ? ProfileFile::LineEnd::CrLf : ProfileFile::LineEnd::Lf);
        profile.setValue("A", "x", "1");
        EXPECT_TRUE(profile.changed());
        ASSERT_TRUE(profile.flush().ok());
        EXPECT_FALSE(profile.changed());
        EXPECT_EQ(readFile(profile.path()), crLf ? "[A]\r\nx=1\r\n" : "[A]\nx=1\n");
    }
}

TEST(ProfileFileTest, SetOfTheSameValueChangesNothing) {
    const TempFolder folder;
    writeFile(folder / "f", "[A]\nx=1");
    ProfileFile profile(folder / "f");
    EXPECT_TRUE(profile.setValue("a", "X", "1"));
    EXPECT_FALSE(profile.changed());
    EXPECT_TRUE(profile.flush().ok());
    EXPECT_EQ(readFile(folder / "f"), "[A]\nx=1");
}

TEST(ProfileFileTest, DiscardForgetsWhatIsNotFlushed) {
    const TempFolder folder;
    writeFile(folder / "f", "[A]\r\nx=1\r\n");
    ProfileFile profile(folder / "f");
    profile.setValue("A", "x", "2");
    profile.discard();
    EXPECT_EQ(profile.value("A", "x"), "1");
    EXPECT_FALSE(profile.changed());
}

TEST(ProfileFileTest, EmptiedFileIsWrittenEmpty) {
    const TempFolder folder;
    writeFile(folder / "f", "[A]\r\nx=1\r\n");
    ProfileFile profile(folder / "f");
    profile.removeSection("A");
    ASSERT_TRUE(profile.flush().ok());
    EXPECT_EQ(readFile(folder / "f"), "");
}

TEST(ProfileFileTest, FailedFlushIsReportedAndKeepsTheChange) {
    const TempFolder folder;
    ProfileFile profile(folder / "none/f");
    profile.setValue("A", "x", "1");
    const auto status = profile.flush();
    EXPECT_EQ(status.code(), ENOENT);
    EXPECT_EQ(folderOf(status.path()), folder / "none");
    EXPECT_TRUE(profile.changed());
    ASSERT_TRUE(makeFolder(folder / "none").ok());
    ASSERT_TRUE(profile.flush().ok());
    EXPECT_EQ(readFile(folder / "none/f"), "[A]\r\nx=1\r\n");
}

TEST(ProfileFileTest, FileThatCanNotBeReadIsNeverOverwritten) {
    const TempFolder folder;
    ASSERT_TRUE(makeFolder(folder / "f").ok());
    ProfileFile profile(folder / "f");
    EXPECT_EQ(profile.load().code(), EISDIR);
    EXPECT_TRUE(profile.setValue("A", "x", "1"));
    EXPECT_EQ(profile.value("A", "x"), "1");
    EXPECT_EQ(profile.flush().code(), EISDIR);
    EXPECT_TRUE(folderExists(folder / "f"));
}

TEST(ProfileFileTest, DeviceIsNoProfile) {
    EXPECT_EQ(ProfileFile("/dev/zero").load().code(), EINVAL);
    ProfileFile null("/dev/null");
    null.setValue("A", "x", "1");
    EXPECT_EQ(null.flush(ProfileFile::Flush::Kept).code(), EINVAL);
}

TEST(ProfileFileTest, FileOfAbsurdSizeIsRefusedAtOnce) {
    const TempFolder folder;
    writeFile(folder / "f", "[A]\r\nx=1\r\n");
    ASSERT_EQ(::truncate((folder / "f").c_str(), off_t{1} << 42), 0);
    ProfileFile profile(folder / "f");
    EXPECT_EQ(profile.load().code(), EFBIG);
    EXPECT_EQ(profile.value("A", "x"), std::nullopt);
}

TEST(ProfileFileTest, FileOfTooManyLinesIsRefused) {
    const TempFolder folder;
    writeFile(folder / "f", std::string(ProfileFile::kMostLines + 1, '\n'));
    EXPECT_EQ(ProfileFile(folder / "f").load().code(), EFBIG);
}

// --- Properties -------------------------------------------------------------------------

TEST(ProfileFileTest, WhatIsWrittenIsReadTheSame) {
    std::mt19937 random(1);
    using namespace std::string_literals;
    const auto alphabet = "[]=;aA \t\r\n\n\n\0\x14\x15\xEF\xBB\xBF"s;
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        for (std::size_t size = random() % 60; size > 0; --size) {
            text.push_back(alphabet[random() % alphabet.size()]);
        }
        for (const auto end : {ProfileFile::LineEnd::CrLf, ProfileFile::LineEnd::Lf}) {
            const auto first = parsed(text, end);
            const auto written = first.serialise();
            EXPECT_EQ(written.size(), first.serialisedSize());
            const auto second = parsed(written, end);
            ASSERT_TRUE(sameSections(first, second)) << ::testing::PrintToString(text);
            ASSERT_EQ(second.serialise(), written) << ::testing::PrintToString(text);
        }
    }
}

TEST(ProfileFileTest, EditsComeToTheSameAsThoseOfALinearModel) {
    const std::string sections[] = {"a", "A", "b", "B", "[kavu]", "x]y", "a "};
    for (unsigned seed = 0; seed < 60; ++seed) {
        std::mt19937 random(seed);
        const auto section = [&] { return sections[random() % std::size(sections)]; };
        // Few keys in one half of the runs, many (with a hash) in the other.
        const auto key = [&] {
            const auto number = random() % (seed % 2 == 0 ? 6 : 80);
            return (random() % 2 == 0 ? "k" : "K") + std::to_string(number);
        };
        ProfileFile profile("");
        ProfileModel model;
        for (int step = 0; step < 600; ++step) {
            const auto s = section();
            const auto k = key();
            const auto other = section();
            switch (random() % 24) {
                case 0:
                    profile.removeSection(s);
                    model.removeSection(s);
                    break;
                case 1:
                    EXPECT_EQ(profile.renameSection(s, other), model.rename(s, other));
                    break;
                case 2:
                    profile.appendSection(s);
                    model.append(s);
                    break;
                case 3:
                case 4:
                case 5:
                    profile.removeKey(s, k);
                    model.removeKey(s, k);
                    break;
                default:
                    EXPECT_TRUE(profile.setValue(s, k, std::to_string(step)));
                    model.set(s, k, std::to_string(step));
            }
            ASSERT_EQ(profile.value(other, k), model.value(other, k)) << seed << " " << step;
            ASSERT_EQ(profile.value(s, k), model.value(s, k)) << seed << " " << step;
        }
        EXPECT_EQ(profile.sectionNames(), model.sectionNames());
        EXPECT_EQ(profile.serialise(), model.text());
        EXPECT_EQ(profile.serialisedSize(), model.text().size());
    }
}

}  // namespace
}  // namespace kavu::test
