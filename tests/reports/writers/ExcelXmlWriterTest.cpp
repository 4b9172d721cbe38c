#include "reports/writers/ExcelXmlWriter.h"
#include "support/RecordingInterface.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::RecordingInterface;

bool holds(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

struct WorkbookStage {
    explicit WorkbookStage(ExcelXmlWriter::Mode mode = ExcelXmlWriter::Mode::Excel)
        : writer(&ui, mode) {}
    int add(std::string name, int columns = 2) {
        return writer.addSheet({.name = std::move(name), .columns = columns});
    }
    void row(std::string_view text, int style = kNoStyle) {
        writer.beginRow(kNoStyle, 0, 0);
        writer.textCell(text, style, {});
        writer.endRow();
    }
    RecordingInterface ui;
    ExcelXmlWriter writer;
};

TEST(ExcelXmlWriter, TheWholeFileIsInItsOrder) {
    WorkbookStage t;
    ASSERT_EQ(t.writer.addSheet({.name = "S", .columns = 2, .widths = {50.5}}), 0);
    t.writer.beginRow(kNoStyle, 20.5, 3);
    t.writer.textCell(
        "a",
        t.writer.style({.flags = 0x80 | 0x1, .size = 12, .colour = "ff0000", .fill = "c0c0c0"}),
        {.across = 1});
    t.writer.endRow();
    EXPECT_EQ(
        t.writer.document(),
        "<?xml version=\"1.0\"?>\n<?mso-application progid=\"Excel.Sheet\"?>\n"
        "<Workbook xmlns=\"urn:schemas-microsoft-com:office:spreadsheet\"\n"
        " xmlns:o=\"urn:schemas-microsoft-com:office:office\"\n"
        " xmlns:x=\"urn:schemas-microsoft-com:office:excel\"\n"
        " xmlns:ss=\"urn:schemas-microsoft-com:office:spreadsheet\">\n"
        "<Styles>\n<Style ss:ID=\"Default\" ss:Name=\"Normal\">\n"
        "<Alignment ss:Vertical=\"Bottom\"/>\n</Style>\n"
        "<Style ss:ID=\"s21\">\n<Alignment ss:Horizontal=\"Center\"/>\n"
        "<Font x:Family=\"Swiss\" ss:Size=\"12\" ss:Bold=\"1\" ss:Color=\"#ff0000\"/>\n"
        "<Interior ss:Color=\"#c0c0c0\" ss:Pattern=\"Solid\"/>\n</Style>\n</Styles>\n"
        "<Worksheet ss:Name=\"S\">\n"
        "<Table ss:ExpandedColumnCount=\"2\" ss:ExpandedRowCount=\"3\">\n"
        "<Column ss:Width=\"50.50\"/>\n<Column ss:AutoFitWidth=\"1\"/>\n"
        "<Row ss:Index=\"3\" ss:Height=\"20.50\">\n"
        "<Cell ss:MergeAcross=\"1\" ss:StyleID=\"s21\"><Data ss:Type=\"String\">a</Data></Cell>\n"
        "</Row>\n</Table>\n"
        "<WorksheetOptions xmlns=\"urn:schemas-microsoft-com:office:excel\">\n<PageSetup>\n"
        "<Layout x:Orientation=\"Landscape\" x:CenterHorizontal=\"1\"/>\n"
        "<Footer x:Data=\"Page &amp;P of &amp;N\"/>\n</PageSetup>\n<DoNotDisplayGridlines/>\n"
        "<Selected/>\n<ProtectObjects>False</ProtectObjects>\n"
        "<ProtectScenarios>False</ProtectScenarios>\n</WorksheetOptions>\n</Worksheet>\n"
        "</Workbook>\n");
}

TEST(ExcelXmlWriter, TwoSheetsOfOneNameAreTheNameAndPartTwo) {
    WorkbookStage t;
    t.add("S");
    t.add("s");
    t.add("A name that is far too long for a sheet");
    t.add("A name that is far too long for a sheet");
    t.add("a:b\\c/d?e*f[g]");
    const auto text = t.writer.document();
    EXPECT_TRUE(holds(text, "<Worksheet ss:Name=\"S\">")) << text;
    EXPECT_TRUE(holds(text, "<Worksheet ss:Name=\"s (Part 2)\">"));
    EXPECT_TRUE(holds(text, "<Worksheet ss:Name=\"A name that is far too long for\">"));
    EXPECT_TRUE(holds(text, "<Worksheet ss:Name=\"A name that is far too (Part 2)\">"));
    EXPECT_TRUE(holds(text, "<Worksheet ss:Name=\"a_b_c_d_e_f_g_\">"));
}

TEST(ExcelXmlWriter, ASheetOf300ColumnsIsWrittenWithAWarning) {
    WorkbookStage t;
    EXPECT_EQ(t.add("S", 300), 0);
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_EQ(t.ui.boxes.front().title, "Warning");
    EXPECT_TRUE(holds(t.ui.boxes.front().text, "'S'. This worksheet is being created with 300 "));
    EXPECT_TRUE(holds(t.writer.document(), "ss:ExpandedColumnCount=\"300\""));
    WorkbookStage most;
    EXPECT_EQ(most.add("S", 256), 0);
    EXPECT_TRUE(most.ui.boxes.empty());
}

TEST(ExcelXmlWriter, ASheetThatIsRefusedSwallowsNotTheRowsOfTheNext) {
    WorkbookStage t;
    t.add("First");
    EXPECT_EQ(t.add("None", 0), -1);
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_EQ(t.ui.boxes.front().text, "Unable to create Worksheet 'None'. Number of columns is 0");
    EXPECT_EQ(t.ui.boxes.front().title, "Unable To Create Excel File");
    t.row("dropped");
    EXPECT_EQ(t.add("Next"), 1);
    t.row("kept");
    const auto text = t.writer.document();
    EXPECT_FALSE(holds(text, "dropped"));
    EXPECT_TRUE(holds(text, "kept"));
}

TEST(ExcelXmlWriter, AnAmpersandIsEscapedAndStandsAsItIsInDelimitedText) {
    WorkbookStage t;
    t.add("S");
    t.row("A & B");
    EXPECT_TRUE(holds(t.writer.document(), ">A &amp; B<"));
    WorkbookStage delimited(ExcelXmlWriter::Mode::Delimited);
    delimited.add("S", 0);
    delimited.row("A & B");
    delimited.writer.beginRow(kNoStyle, 0, 0);
    delimited.writer.dateCell({2011, 3, 4, 5, 6, 7}, kNoStyle, {});
    delimited.writer.endRow();
    EXPECT_EQ(delimited.writer.document(), "\"A & B\";\n\"04.03.2011\";\n");
}

TEST(ExcelXmlWriter, TextIsValidWhateverBytesANameHas) {
    EXPECT_EQ(escapeForWorkbook("K\xF6ln \xC3\x9F"), "K\xC3\xB6ln \xC3\x83\xC5\xB8");
    EXPECT_EQ(escapeForWorkbook("\xC3\xB6<>\"'"), "\xC3\xB6&lt;&gt;&quot;&apos;");
    EXPECT_EQ(escapeForWorkbook("a\x01"
                                "b"),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(escapeForWorkbook("a\r\nb\nc\rd"), "a&#10;b&#10;c d");
}

TEST(ExcelXmlWriter, ANumberCellThatIsNoNumberIsAText) {
    WorkbookStage t;
    t.add("S", 6);
    t.writer.beginRow(kNoStyle, 0, 0);
    for (const auto* const text : {"1.5", "-2E+05", "A1", "", "nan", "0x10"}) {
        t.writer.numberCell(text, kNoStyle, {});
    }
    const auto text = t.writer.document();
    EXPECT_TRUE(holds(text, "\"Number\">1.5<"));
    EXPECT_TRUE(holds(text, "\"Number\">-2E+05<"));
    for (const auto* const each : {"A1", "", "nan", "0x10"}) {
        EXPECT_TRUE(holds(text, "\"String\">" + std::string(each) + "<")) << each;
    }
}

TEST(ExcelXmlWriter, PrintTitlesReferToTheSheetWithDoubledApostrophes) {
    WorkbookStage t;
    t.writer.addSheet({.name = "It's", .columns = 1, .titleRows = {1, 2}});
    t.writer.addSheet({.name = "C", .columns = 1, .titleColumns = {1, 1}});
    const auto text = t.writer.document();
    EXPECT_TRUE(holds(text, "ss:RefersTo=\"='It&apos;&apos;s'!R1:R2\"")) << text;
    EXPECT_TRUE(holds(text, "ss:RefersTo=\"='C'!C1:C1\""));
}

TEST(ExcelXmlWriter, CountsAreAtLeastWhatWasWritten) {
    WorkbookStage t;
    t.add("S", 1);
    t.writer.beginRow(kNoStyle, 0, 0);
    t.writer.textCell("a", kNoStyle, {.across = 2, .down = 3});
    t.writer.textCell("b", kNoStyle, {});
    EXPECT_TRUE(
        holds(t.writer.document(), "ss:ExpandedColumnCount=\"4\" ss:ExpandedRowCount=\"4\""));
}

TEST(ExcelXmlWriter, AStyleIsFoundByAllFourValues) {
    WorkbookStage t;
    const int first = t.writer.style({.flags = 1, .size = 2, .colour = "000000", .fill = "ffffff"});
    EXPECT_EQ(t.writer.style({.flags = 1, .size = 2, .colour = "000000", .fill = "ffffff"}), first);
    EXPECT_NE(t.writer.style({.flags = 1, .size = 2, .colour = "000000", .fill = ""}), first);
    EXPECT_NE(t.writer.style({.flags = 1, .size = 3, .colour = "000000", .fill = "ffffff"}), first);
}

TEST(ExcelXmlWriter, ADateWithoutAFormatShowsTheDate) {
    WorkbookStage t;
    t.add("S");
    t.writer.beginRow(kNoStyle, 0, 0);
    t.writer.dateCell({2011, 3, 4, 5, 6, 7}, kNoStyle, {});
    const auto text = t.writer.document();
    EXPECT_TRUE(holds(text, "ss:StyleID=\"s21\"><Data ss:Type=\"DateTime\">2011-03-04T05:06:07<"));
    EXPECT_TRUE(holds(text, "<NumberFormat ss:Format=\"Short Date\"/>"));
}

}  // namespace
}  // namespace kavu
