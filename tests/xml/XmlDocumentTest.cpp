#include "support/TestContext.h"
#include "xml/XmlDocument.h"
#include "xml/XmlText.h"

#include <cerrno>
#include <sys/stat.h>

namespace kavu::test {
namespace {

using Texts = std::vector<std::string>;

constexpr const char* kThree =
    "<?xml version=\"1.0\"?>\n"
    "<R>\n"
    "\t<M>\n\t\t<Name>A</Name>\n\t\t<C N=\"0\">1</C>\n\t\t<C N=\"1\">2</C>\n\t</M>\n"
    "\t<M>\n\t\t<Name>B</Name>\n\t</M>\n"
    "\t<M>\n\t\t<Name>B</Name>\n\t\t<Empty/>\n\t</M>\n"
    "</R>\n";

class XmlDocumentTest : public testing::Test {
  protected:
    void load(const std::string& text, std::string_view root = "R") {
        writeFile(file_, text);
        ASSERT_TRUE(document_.load(&ui_, file_, root));
    }
    std::string saved() {
        EXPECT_TRUE(document_.close(&ui_).ok());
        return readFile(file_);
    }
    Texts selected(std::string_view path) {
        document_.select(path);
        return document_.texts();
    }

    TempFolder folder_;
    std::string file_ = folder_ / "f.xml";
    RecordingInterface ui_;
    XmlDocument document_;
};

// --- loading ------------------------------------------------------------------------------

TEST_F(XmlDocumentTest, AMissingFileIsADocumentOfTheRootElementAlone) {
    EXPECT_TRUE(document_.load(&ui_, file_, "Tmats"));
    EXPECT_EQ(document_.serialise(), "<Tmats>\n</Tmats>\n");
    EXPECT_EQ(document_.path(), file_);
    EXPECT_EQ(document_.rootPath(), "//Tmats");
    EXPECT_FALSE(document_.fault());
    EXPECT_TRUE(ui_.boxes.empty());
    EXPECT_TRUE(document_.close(&ui_).ok());
    EXPECT_FALSE(fileExists(file_));
    EXPECT_FALSE(document_.isOpen());
}

TEST_F(XmlDocumentTest, AMalformedFileIsADocumentOfTheRootElementAloneWithoutAMessage) {
    load("<R><M></R>");
    EXPECT_EQ(document_.serialise(), "<R>\n</R>\n");
    ASSERT_TRUE(document_.fault());
    EXPECT_EQ(document_.fault()->reason, "mismatched tag");
    EXPECT_TRUE(ui_.boxes.empty() && ui_.notes.empty());
    // Nobody changed it, so nothing is written.
    EXPECT_EQ(saved(), "<R><M></R>");
}

TEST_F(XmlDocumentTest, AnUnreadableFileIsKeptBeforeItIsOverwritten) {
    load("<R>\n<M></R>");
    EXPECT_TRUE(document_.setText("/A", "1"));
    EXPECT_TRUE(document_.save(&ui_).ok());
    EXPECT_EQ(readFile(file_), "<R>\n\t<A>1</A>\n</R>\n");
    EXPECT_EQ(readFile(file_ + ".unreadable"), "<R>\n<M></R>");
    EXPECT_EQ(document_.keptCopy(), file_ + ".unreadable");
    EXPECT_EQ(ui_.notes, Texts{"'" + file_ +
                               "' could not be read as XML (line 2: mismatched tag). "
                               "It was kept as '" +
                               file_ + ".unreadable'."});
    // Now it is readable.
    EXPECT_TRUE(document_.setText("/A", "2"));
    EXPECT_TRUE(document_.close(&ui_).ok());
    EXPECT_FALSE(fileExists(file_ + ".unreadable-2"));
}

TEST_F(XmlDocumentTest, AnEarlierKeptFileStays) {
    writeFile(file_ + ".unreadable", "first");
    load("second");
    EXPECT_TRUE(document_.setText("/A", "1"));
    EXPECT_TRUE(document_.close(&ui_).ok());
    EXPECT_EQ(readFile(file_ + ".unreadable"), "first");
    EXPECT_EQ(readFile(file_ + ".unreadable-2"), "second");
}

TEST_F(XmlDocumentTest, AFileThatCannotBeKeptIsNotOverwritten) {
    load("not XML");
    EXPECT_TRUE(document_.setText("/A", "1"));
    ASSERT_EQ(::mkdir((file_ + ".unreadable").c_str(), 0700), 0);
    for (int i = 2; i < 1000; ++i) {
        ASSERT_EQ(::mkdir((file_ + ".unreadable-" + std::to_string(i)).c_str(), 0700), 0);
    }
    EXPECT_EQ(document_.save(&ui_).code(), EEXIST);
    EXPECT_EQ(readFile(file_), "not XML");
    EXPECT_TRUE(document_.isModified());
    document_.discard();
}

TEST_F(XmlDocumentTest, AnEmptyFileIsNotKept) {
    load("");
    EXPECT_TRUE(document_.setText("/A", "1"));
    EXPECT_EQ(saved(), "<R>\n\t<A>1</A>\n</R>\n");
    EXPECT_FALSE(fileExists(file_ + ".unreadable"));
}

TEST_F(XmlDocumentTest, WhatTheParserLetsPassIsUnreadable) {
    for (const char* const text : {"<R/><R/>", "<R a='1' a='2'/>", "<R>\x01</R>", "<R>&x;</R>",
                                   "<!DOCTYPE R [<!ENTITY x SYSTEM '/etc/passwd'>]><R>&x;</R>"}) {
        load(text);
        EXPECT_TRUE(document_.fault()) << text;
        EXPECT_EQ(document_.serialise(), "<R>\n</R>\n") << text;
    }
}

TEST_F(XmlDocumentTest, ARootThatIsNoNameIsToldInABox) {
    EXPECT_FALSE(document_.load(&ui_, file_, "a b"));
    ASSERT_EQ(ui_.boxes.size(), 1U);
    EXPECT_EQ(ui_.boxes[0].title, "Error loading XML File");
    EXPECT_EQ(ui_.boxes[0].text, "Unable to load xml data from: '" + file_ +
                                     "'\n\nReason: 'a b' cannot be the name of an element");
    EXPECT_FALSE(document_.load(&ui_, file_, "1", "Mine"));
    EXPECT_EQ(ui_.boxes[1].title, "Mine");
    EXPECT_FALSE(document_.isOpen());
    EXPECT_FALSE(document_.load(nullptr, file_, ""));
}

TEST_F(XmlDocumentTest, AStatedEncodingIsIgnored) {
    load("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><R><A>K\xC3\xB6ln</A></R>");
    EXPECT_EQ(selected("/A"), Texts{"K\xC3\xB6ln"});
    load("<?xml version=\"1.0\" encoding=\"UTF-8\"?><R><A>K\xF6ln \x80</A></R>");
    EXPECT_EQ(selected("/A"), Texts{"K\xC3\xB6ln \xE2\x82\xAC"});
    EXPECT_TRUE(document_.setText("/B", "1"));
    EXPECT_EQ(saved(),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<R>\n\t<A>K\xC3\xB6ln \xE2\x82\xAC</A>\n\t<B>1</B>\n</R>\n");
    EXPECT_FALSE(fileExists(file_ + ".unreadable"));
}

TEST_F(XmlDocumentTest, AFileWithBytesThatAreNoCharactersIsKept) {
    load("<R><A>\x81</A></R>");
    EXPECT_EQ(selected("/A"), Texts{"\xEF\xBF\xBD"});
    EXPECT_TRUE(document_.setText("/B", "1"));
    EXPECT_TRUE(document_.close(&ui_).ok());
    EXPECT_EQ(readFile(file_ + ".unreadable"), "<R><A>\x81</A></R>");
}

TEST_F(XmlDocumentTest, TheMarkOfTheByteOrderIsNoText) {
    load("\xEF\xBB\xBF<R><A>1</A></R>");
    EXPECT_EQ(selected("/A"), Texts{"1"});
}

// --- selection ----------------------------------------------------------------------------

TEST_F(XmlDocumentTest, SelectsBelowTheRoot) {
    load(kThree);
    EXPECT_EQ(document_.select("/M/Name"), 3U);
    EXPECT_EQ(document_.texts(), (Texts{"A", "B", "B"}));
    EXPECT_EQ(document_.lastPath(), "/M/Name");
    EXPECT_EQ(selected("/M[Name=\"A\"]/C[@N='1']"), Texts{"2"});
    EXPECT_EQ(selected("//R/M[3]/Empty/"), Texts{""});
    EXPECT_EQ(selected("/M[1]"), Texts{"A12"});
    EXPECT_EQ(selected("/"), Texts{"A12BB"});
    EXPECT_EQ(selected("/None"), Texts{});
}

TEST_F(XmlDocumentTest, TextWithAnIndexEqualToTheCountIsEmpty) {
    load(kThree);
    ASSERT_EQ(document_.select("/M/Name"), 3U);
    EXPECT_EQ(document_.text(2), "B");
    EXPECT_EQ(document_.text(3), "");
    EXPECT_EQ(document_.text(static_cast<std::size_t>(-1)), "");
}

TEST_F(XmlDocumentTest, TextOfANodeThatIsNoElementIsEmpty) {
    load(kThree);
    EXPECT_EQ(selected("/M[1]/C/@N"), (Texts{"", ""}));
    EXPECT_EQ(selected("/M[1]/Name/text()"), Texts{""});
}

TEST_F(XmlDocumentTest, APathWithASecondDoubleSlashSelectsNothing) {
    load(kThree);
    ASSERT_EQ(document_.select("/M"), 3U);
    EXPECT_EQ(document_.select("/M//Name"), 0U);
    EXPECT_EQ(document_.selectedCount(), 0U);
    EXPECT_EQ(document_.text(0), "");
}

TEST_F(XmlDocumentTest, WhatIsNoPathSelectsNothing) {
    load(kThree);
    for (const char* const path : {"", "/M[", "/count(M)", "/M[\"]", "/)", "/M/Name/string()"}) {
        EXPECT_EQ(document_.select(path), 0U) << path;
    }
    document_.discard();
    EXPECT_EQ(document_.select("/M"), 0U);
}

TEST_F(XmlDocumentTest, SelectsOneNodeFromANode) {
    load(kThree);
    ASSERT_EQ(document_.select("/M"), 3U);
    EXPECT_EQ(xmlTextOf(XmlDocument::selectFrom(document_.selected(1), "Name")), "B");
    EXPECT_FALSE(XmlDocument::selectFrom(document_.selected(1), "C"));
    EXPECT_FALSE(XmlDocument::selectFrom(XmlNode(), "C"));
    EXPECT_FALSE(XmlDocument::selectFrom(document_.selected(1), "["));
}

TEST_F(XmlDocumentTest, NamesWithQuotesAreFoundByALiteral) {
    load("<R><M><Name>a\"b'c</Name></M></R>");
    EXPECT_EQ(document_.select("/M[Name=" + xpathLiteral("a\"b'c") + "]"), 1U);
}

// --- texts --------------------------------------------------------------------------------

TEST_F(XmlDocumentTest, SetsTheTextOfTheFirstNode) {
    load(kThree);
    EXPECT_TRUE(document_.setText("/M/Name", "Z"));
    EXPECT_EQ(selected("/M/Name"), (Texts{"Z", "B", "B"}));
    EXPECT_TRUE(document_.setText("/M[2]", "whole"));
    EXPECT_EQ(selected("/M[2]"), Texts{"whole"});
    EXPECT_EQ(document_.select("/M[2]/Name"), 0U);
    EXPECT_TRUE(document_.setText("/M/C/@N", "7"));
    EXPECT_EQ(document_.select("/M/C[@N='7']"), 1U);
}

TEST_F(XmlDocumentTest, MakesThePathFromTheOutermostMissingStep) {
    load(kThree);
    EXPECT_TRUE(document_.setText("/M/Data/Set[@Type=\"Pair Sets\"]/P", "x"));
    EXPECT_TRUE(document_.setText("/New/Deep", "y"));
    const auto text = saved();
    EXPECT_NE(text.find("\t\t<C N=\"1\">2</C>\n\t\t<Data>\n\t\t\t<Set Type=\"Pair Sets\">\n"
                        "\t\t\t\t<P>x</P>\n\t\t\t</Set>\n\t\t</Data>\n\t</M>\n"),
              std::string::npos)
        << text;
    EXPECT_TRUE(text.ends_with("\t<New>\n\t\t<Deep>y</Deep>\n\t</New>\n</R>\n")) << text;
}

TEST_F(XmlDocumentTest, StepsThatCannotBeMadeChangeNothing) {
    load(kThree);
    for (const char* const path : {"/M[9]", "/X[Name='a']", "/X/*", "/X/text()", "/X/@a", "//X",
                                   "/X//Y", "", "/X/child::Y", "/X[@a]"}) {
        EXPECT_FALSE(document_.setText(path, "v")) << path;
    }
    EXPECT_FALSE(document_.isModified());
    EXPECT_EQ(document_.serialise(), kThree);
}

TEST_F(XmlDocumentTest, WhatIsMadeIsNeverTooDeepToBeReadAgain) {
    load("<R/>");
    std::string path;
    for (int i = 1; i < 256; ++i) {
        path += "/a";
    }
    EXPECT_FALSE(document_.setText(path + "/a", "x"));
    EXPECT_TRUE(document_.setText(path, "x"));
    EXPECT_FALSE(document_.setText(path + "/a", "x"));
    EXPECT_TRUE(document_.close(&ui_).ok());
    ASSERT_TRUE(document_.load(&ui_, file_, "R"));
    EXPECT_FALSE(document_.fault());
    EXPECT_EQ(selected(path), Texts{"x"});
}

TEST_F(XmlDocumentTest, AnotherRootElementTakesNothing) {
    load("<Other><A>1</A></Other>");
    EXPECT_EQ(document_.select("/A"), 0U);
    EXPECT_FALSE(document_.setText("/A", "2"));
    EXPECT_FALSE(document_.removeNodes("/A"));
    EXPECT_EQ(saved(), "<Other><A>1</A></Other>");
}

TEST_F(XmlDocumentTest, TextsComeBackAsTheyWere) {
    for (const char* const value : {"", "a", " a ", "   ", "a<b>&\"'", "]]>", "a\r\nb", "a\rb\n",
                                    "a\tb", "&amp;", "<![CDATA[", "\xC3\xB6"}) {
        load("<R/>");
        EXPECT_TRUE(document_.setText("/A", value));
        EXPECT_TRUE(document_.setAttribute("/A", "b", value));
        EXPECT_TRUE(document_.close(&ui_).ok());
        ASSERT_TRUE(document_.load(&ui_, file_, "R"));
        EXPECT_FALSE(document_.fault());
        EXPECT_EQ(selected("/A"), Texts{value});
        EXPECT_EQ(XmlDocument::attributes(document_.selected(0), "b"), value);
    }
}

TEST_F(XmlDocumentTest, CharactersThatXmlCannotHoldAreLeftOut) {
    load("<R/>");
    EXPECT_TRUE(document_.setText("/A",
                                  "a\x01\x1F"
                                  "b\xF6"));
    EXPECT_EQ(saved(), "<R>\n\t<A>ab\xC3\xB6</A>\n</R>\n");
}

// --- attributes ---------------------------------------------------------------------------

TEST_F(XmlDocumentTest, SetsAndAddsAttributesOfTheFirstElement) {
    load(kThree);
    EXPECT_TRUE(document_.setAttribute("/M/C", "N", "5"));
    EXPECT_TRUE(document_.setAttribute("/M/C", "Q", "\"<"));
    ASSERT_EQ(document_.select("/M/C"), 2U);
    EXPECT_EQ(XmlDocument::attributes(document_.selected(0)), "N=\"5\" Q=\"\"<\"");
    EXPECT_EQ(XmlDocument::attributes(document_.selected(0), "N"), "5");
    EXPECT_EQ(XmlDocument::attributes(document_.selected(0), "X"), "");
    EXPECT_EQ(XmlDocument::attributes(document_.selected(1)), "N=\"1\"");
    EXPECT_EQ(XmlDocument::attributes(XmlNode()), "");
    EXPECT_NE(document_.serialise().find("<C N=\"5\" Q=\"&quot;&lt;\">1</C>"), std::string::npos);
}

TEST_F(XmlDocumentTest, AnAttributeNeedsItsElementAndAName) {
    load(kThree);
    EXPECT_FALSE(document_.setAttribute("/None", "a", "1"));
    EXPECT_FALSE(document_.setAttribute("/M", "a b", "1"));
    EXPECT_FALSE(document_.setAttribute("/M", "", "1"));
    EXPECT_FALSE(document_.setAttribute("/M//C", "a", "1"));
    EXPECT_FALSE(document_.isModified());
}

// --- removal ------------------------------------------------------------------------------

TEST_F(XmlDocumentTest, RemovesEveryNodeOfAPath) {
    load(kThree);
    EXPECT_TRUE(document_.removeNodes("/M/C"));
    EXPECT_EQ(document_.select("/M/C"), 0U);
    EXPECT_FALSE(document_.removeNodes("/M/C"));
    EXPECT_TRUE(document_.removeNodes("/M"));
    EXPECT_EQ(document_.serialise(), "<?xml version=\"1.0\"?>\n<R>\n</R>\n");
}

TEST_F(XmlDocumentTest, RemovesNodesWithinNodes) {
    load("<R><A><A b='1'><A/></A></A><B/></R>");
    EXPECT_TRUE(document_.removeNodes("/descendant-or-self::*[self::A]/@*"));
    EXPECT_TRUE(document_.removeNodes("/descendant::A"));
    EXPECT_EQ(document_.serialise(), "<R>\n\t<B/>\n</R>\n");
}

TEST_F(XmlDocumentTest, OfTheRootElementTheContentsGo) {
    load("<R a='1'><A/></R>");
    EXPECT_TRUE(document_.removeNodes("/"));
    EXPECT_EQ(saved(), "<R>\n</R>\n");
    load("<R><A/></R>");
    EXPECT_FALSE(document_.removeNodes("/.."));
}

TEST_F(XmlDocumentTest, RemovesTheFirstElementOfAValue) {
    load(kThree);
    EXPECT_TRUE(document_.removeByValue("/M/Name", "B"));
    EXPECT_EQ(selected("/M/Name"), (Texts{"A", "B"}));
    EXPECT_EQ(document_.select("/M/Empty"), 1U);
    EXPECT_FALSE(document_.removeByValue("/M/Name", "b"));
    EXPECT_FALSE(document_.removeByValue("/M/Name", "C"));
    EXPECT_TRUE(document_.removeByValue("/M/C/@N", "1"));
    EXPECT_EQ(document_.select("/M/C"), 1U);
    EXPECT_FALSE(document_.removeByValue("/", "x"));
}

TEST_F(XmlDocumentTest, AValueMayHoldQuotesAndBrackets) {
    load("<R><M><Name>a\"]'[//b</Name></M></R>");
    EXPECT_TRUE(document_.removeByValue("/M/Name", "a\"]'[//b"));
    EXPECT_EQ(document_.select("/M"), 0U);
}

// --- fragments ----------------------------------------------------------------------------

TEST_F(XmlDocumentTest, AppendsWhatIsInTheRootOfAFragment) {
    load(kThree);
    EXPECT_TRUE(document_.appendFragment("<x><M><Name>D</Name></M><N/></x>"));
    EXPECT_EQ(selected("/M/Name"), (Texts{"A", "B", "B", "D"}));
    EXPECT_TRUE(
        document_.serialise().ends_with("\t<M>\n\t\t<Name>D</Name>\n\t</M>\n\t<N/>\n</R>\n"));
}

TEST_F(XmlDocumentTest, AFragmentThatIsNoXmlChangesNothing) {
    load(kThree);
    for (const char* const text : {"", "<x>", "<x/><y/>", "text", "<!DOCTYPE x><x/>"}) {
        EXPECT_FALSE(document_.appendFragment(text)) << text;
    }
    EXPECT_FALSE(document_.isModified());
    document_.discard();
    EXPECT_FALSE(document_.appendFragment("<x><M/></x>"));
}

// --- saving -------------------------------------------------------------------------------

TEST_F(XmlDocumentTest, TheSameDocumentGivesTheSameBytes) {
    load(kThree);
    EXPECT_TRUE(document_.setText("/M/Name", "B"));
    EXPECT_TRUE(document_.setText("/M/Name", "A"));
    EXPECT_EQ(saved(), kThree);
    ASSERT_TRUE(document_.load(&ui_, file_, "R", {}, XmlTexts::InElements));
    EXPECT_EQ(selected("/M/Name"), (Texts{"A", "B", "B"}));
    EXPECT_EQ(document_.serialise(), kThree);
    EXPECT_TRUE(document_.setText("/M/Name", "\r"));
    EXPECT_TRUE(document_.setText("/M/Name", "A"));
    EXPECT_EQ(saved(), kThree);
}

TEST_F(XmlDocumentTest, LineEndsOfTheFileStay) {
    load("<R>\r\n\t<A>1\r\n2</A>\r\n</R>\r\n");
    EXPECT_EQ(selected("/A"), Texts{"1\n2"});
    EXPECT_TRUE(document_.setText("/B", "x"));
    EXPECT_EQ(saved(), "<R>\r\n\t<A>1\r\n2</A>\r\n\t<B>x</B>\r\n</R>\r\n");
}

TEST_F(XmlDocumentTest, CommentsInstructionsAndSectionsStay) {
    const std::string text =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!-- a -->\n<?p q r?>\n"
        "<R>\n\t<!-- b -->\n\t<A><![CDATA[<x>]]></A>\n\t<?p?>\n</R>\n<!-- c -->\n";
    load(text);
    EXPECT_EQ(selected("/A"), Texts{"<x>"});
    document_.markModified();
    EXPECT_EQ(saved(), text);
}

TEST_F(XmlDocumentTest, TextBesideElementsKeepsItsBlanks) {
    const std::string text = "<R>\n\t<P>one <b>two</b> <i>three</i>\n four</P>\n</R>\n";
    load(text);
    EXPECT_EQ(selected("/P"), Texts{"one two three\n four"});
    document_.markModified();
    EXPECT_EQ(saved(), text);
}

TEST_F(XmlDocumentTest, AFileThatAnotherProgramHasChangedIsNotOverwritten) {
    load(kThree);
    writeFile(file_, "<R><A>theirs</A></R>");
    EXPECT_TRUE(document_.setText("/A", "ours"));
    EXPECT_EQ(document_.save(&ui_).code(), ESTALE);
    EXPECT_FALSE(document_.load(&ui_, folder_ / "other.xml", "R"));
    EXPECT_EQ(document_.path(), file_);
    EXPECT_EQ(readFile(file_), "<R><A>theirs</A></R>");
    document_.discard();
}

TEST_F(XmlDocumentTest, LinkAndModeStay) {
    writeFile(file_, kThree);
    ASSERT_EQ(::chmod(file_.c_str(), 0640), 0);
    const auto link = folder_ / "link.xml";
    ASSERT_EQ(::symlink(file_.c_str(), link.c_str()), 0);
    ASSERT_TRUE(document_.load(&ui_, link, "R"));
    EXPECT_TRUE(document_.removeNodes("/M"));
    EXPECT_TRUE(document_.close(&ui_).ok());
    struct stat info {};
    ASSERT_EQ(::lstat(link.c_str(), &info), 0);
    EXPECT_TRUE(S_ISLNK(info.st_mode));
    ASSERT_EQ(::lstat(file_.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777U, 0640U);
    EXPECT_EQ(readFile(file_), "<?xml version=\"1.0\"?>\n<R>\n</R>\n");
}

TEST_F(XmlDocumentTest, AChangeEndsTheSelection) {
    load(kThree);
    ASSERT_EQ(document_.select("/M/Name"), 3U);
    EXPECT_TRUE(document_.removeNodes("/M"));
    EXPECT_EQ(document_.text(0), "");
    EXPECT_EQ(document_.selectedCount(), 0U);
}

TEST_F(XmlDocumentTest, AFileThatIsTooLargeIsUnreadableAndStays) {
    writeFile(file_, "<R/>");
    std::filesystem::resize_file(file_, XmlDocument::kMostBytes + 1);
    ASSERT_TRUE(document_.load(&ui_, file_, "R"));
    ASSERT_TRUE(document_.fault());
    EXPECT_EQ(document_.serialise(), "<R>\n</R>\n");
}

}  // namespace
}  // namespace kavu::test
