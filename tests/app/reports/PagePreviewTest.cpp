// Pages before they are printed: they can be gone through, found in, copied, and printed as they
// are shown.
#include "app/reports/PagePreview.h"
#include "app/reports/PaperSurface.h"
#include "app/reports/ReportFormsStage.h"
#include "app/reports/TextViewer.h"
#include "drawing/CairoSurface.h"
#include "reports/print/ReportPrinter.h"

#include <QClipboard>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QScrollBar>
#include <QSpinBox>

namespace kavu {
namespace {

using test::find;
using test::press;

/// Three pages of sixty numbered lines each.
std::string sampleText() {
    std::string text;
    for (int line = 1; line <= 90; ++line) {
        text += "line " + std::to_string(line) + " of the report\n";
    }
    return text + "\fthe last page\n";
}

class PagePreviewTest : public test::ReportFormsStage {
  protected:
    std::unique_ptr<PagePreview> open(const std::string& text = sampleText()) {
        auto preview = std::make_unique<PagePreview>(
            form, "Report", PaperUse::Reports, [this, text](const PaperSetup& paper) {
                ++made_;
                return printText(t.application.context(), "Report", text, paper);
            });
        preview->show();
        QApplication::processEvents();
        return preview;
    }
    int made_ = 0;
};

TEST_F(PagePreviewTest, HasItsControlsAndItsPages) {
    const auto preview = open();
    EXPECT_EQ(test::checkWindow(*preview), std::vector<std::string>{});
    const int pages = preview->view().pageCount();
    EXPECT_GE(pages, 3);
    EXPECT_EQ(find<QLabel>(*preview, "pageCount")->text(), QStringLiteral("of %1").arg(pages));
    auto* const page = find<QSpinBox>(*preview, "page");
    page->setValue(pages);
    EXPECT_EQ(preview->view().currentPage(), pages);
    preview->view().goToPage(1);
    EXPECT_EQ(page->value(), 1);
}

TEST_F(PagePreviewTest, ZoomsWithinItsLimitsAndKeepsThePlace) {
    const auto preview = open();
    auto& view = preview->view();
    view.setZoom(100);
    view.goToPage(2);
    const int page = view.currentPage();
    view.setZoom(200);
    EXPECT_EQ(view.currentPage(), page);
    EXPECT_EQ(find<QComboBox>(*preview, "zoom")->currentText(), QStringLiteral("200%"));
    view.setZoom(100000);
    EXPECT_EQ(view.zoom(), PageView::kMostZoom);
    view.setZoom(0);
    EXPECT_EQ(view.zoom(), PageView::kLeastZoom);
    QTest::keyClick(&view, Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_GT(view.zoom(), PageView::kLeastZoom);
    view.fitWidth();
    EXPECT_EQ(view.horizontalScrollBar()->maximum(), 0);
}

TEST_F(PagePreviewTest, FindsForwardAndBackwardRoundAllPages) {
    const auto preview = open();
    auto& view = preview->view();
    const auto find = [&](const char* text, bool forward = true) {
        return view.find(QString::fromLatin1(text), forward);
    };
    EXPECT_TRUE(find("LAST page"));
    EXPECT_EQ(view.selectedText(), QStringLiteral("last page"));
    EXPECT_EQ(view.currentPage(), view.pageCount());
    EXPECT_TRUE(find("line 7 "));
    EXPECT_EQ(view.selectedText(), QStringLiteral("line 7 "));
    EXPECT_TRUE(find("line 1"));
    EXPECT_EQ(view.selectedText(), QStringLiteral("line 1"));
    EXPECT_TRUE(find("line 1"));
    EXPECT_TRUE(find("line 8", false));
    EXPECT_FALSE(find("nowhere"));
    EXPECT_FALSE(find(""));
    test::type(*preview, "find", QStringLiteral("nowhere"));
    press(*preview, "findNext");
    EXPECT_EQ(test::find<QLabel>(*preview, "found")->text(), QStringLiteral("Not found"));
}

TEST_F(PagePreviewTest, TheSameTextIsFoundOnceAWayRound) {
    const auto preview = open("same\nother\nsame\n");
    auto& view = preview->view();
    EXPECT_TRUE(view.find(QStringLiteral("same"), true));
    const auto first = view.grab().toImage();
    EXPECT_TRUE(view.find(QStringLiteral("same"), true));
    EXPECT_NE(view.grab().toImage(), first) << "the second one is marked now";
    EXPECT_TRUE(view.find(QStringLiteral("same"), true));
    EXPECT_EQ(view.grab().toImage(), first) << "and then the first one again";
    EXPECT_TRUE(view.find(QStringLiteral("same"), false));
    EXPECT_NE(view.grab().toImage(), first);
}

TEST_F(PagePreviewTest, SelectsWithTheMouseAndCopies) {
    const auto preview = open("alpha beta\ngamma\n");
    auto& view = preview->view();
    EXPECT_FALSE(find<QPushButton>(*preview, "copy")->isEnabled());
    const auto& text = preview->document().pages.at(0).texts();
    const auto alpha = std::find_if(text.begin(), text.end(),
                                    [](const auto& each) { return each.text == "alpha beta"; });
    ASSERT_NE(alpha, text.end());
    view.setZoom(100);
    view.goToPage(1);
    constexpr double kPixels = 96.0 / 72.0;
    const double left =
        std::max(12.0, (view.viewport()->width() - preview->document().paper.width * kPixels) / 2);
    const auto at = [&](double x) {
        return QPoint(static_cast<int>(left + (alpha->at.x + x) * kPixels),
                      static_cast<int>(12 + (alpha->at.y + alpha->size.height / 2) * kPixels));
    };
    const double letter = alpha->size.width / 10;
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, at(6 * letter + 1));
    QMouseEvent move(QEvent::MouseMove, at(10 * letter + 5),
                     view.viewport()->mapToGlobal(at(10 * letter + 5)), Qt::NoButton,
                     Qt::LeftButton, {});
    QApplication::sendEvent(view.viewport(), &move);
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, at(10 * letter + 5));
    EXPECT_EQ(view.selectedText(), QStringLiteral("beta"));
    press(*preview, "copy");
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("beta"));
    view.setFocus();
    QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(
        QApplication::clipboard()->text().startsWith(QStringLiteral("alpha beta\ngamma\n")));
}

TEST_F(PagePreviewTest, ThePaperIsChosenAndKept) {
    const auto preview = open();
    auto& settings = t.application.context().settings;
    EXPECT_GT(preview->document().paper.width, preview->document().paper.height)
        << "reports lie across the paper";
    const auto choose = [&](const char* name, int index) {
        auto* const box = find<QComboBox>(*preview, name);
        box->setCurrentIndex(index);
        emit box->activated(index);
    };
    choose("paper", 1);
    choose("orientation", 0);
    EXPECT_DOUBLE_EQ(preview->document().paper.width, 612);
    EXPECT_DOUBLE_EQ(preview->document().paper.height, 792);
    EXPECT_EQ(settings.get(setting::kPaper), 1);
    EXPECT_FALSE(settings.get(setting::kLandscapeReports));
    EXPECT_FALSE(settings.get(setting::kLandscapeSheets)) << "sheets keep their own";
    EXPECT_EQ(made_, 3);
}

TEST_F(PagePreviewTest, PrintsWhatItShowsAndAsksOnce) {
    const auto preview = open();
    const auto path = t.folder / "printed.pdf";
    int asked = 0;
    door.next([&](QDialog& dialog) {
        ++asked;
        auto* const print = qobject_cast<QPrintDialog*>(&dialog);
        ASSERT_NE(print, nullptr);
        print->printer()->setOutputFormat(QPrinter::PdfFormat);
        print->printer()->setOutputFileName(toQString(path));
        dialog.done(QDialog::Accepted);
    });
    press(*preview, "print");
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(t.ui.boxes.empty());
    const auto pdf = test::readFile(path);
    EXPECT_TRUE(pdf.starts_with("%PDF"));
    std::size_t pages = 0;
    for (auto place = pdf.find("/Type /Page\n"); place != std::string::npos;
         place = pdf.find("/Type /Page\n", place + 1)) {
        ++pages;
    }
    EXPECT_EQ(pages, preview->document().pages.size());
}

TEST_F(PagePreviewTest, APrinterThatFailsIsMessage406) {
    const auto preview = open();
    door.next([](QDialog& dialog) { dialog.reject(); });
    press(*preview, "print");
    EXPECT_TRUE(t.ui.boxes.empty()) << "a cancel is silent";
    door.next([](QDialog& dialog) {
        auto* const print = qobject_cast<QPrintDialog*>(&dialog);
        print->printer()->setOutputFormat(QPrinter::PdfFormat);
        print->printer()->setOutputFileName(QStringLiteral("/nowhere/at/all.pdf"));
        dialog.done(QDialog::Accepted);
    });
    press(*preview, "print");
    EXPECT_EQ(t.ui.countBoxes(406), 1);
}

TEST_F(PagePreviewTest, SavesTheSamePagesAsPdf) {
    const auto preview = open();
    const std::string path = t.folder / "saved.pdf";
    t.ui.files = {FileChoice{path, 1}};
    press(*preview, "savePdf");
    EXPECT_EQ(test::readFile(path), preview->document().pdf);
    EXPECT_TRUE(t.ui.filePrompts.back().confirmsOverwrite);
}

/// The columns of a picture that hold ink, from the first to the last.
std::pair<int, int> inkedColumns(const QImage& picture) {
    std::pair<int, int> columns(picture.width(), -1);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (qGray(picture.pixel(x, y)) < 128) {
                columns = {std::min(columns.first, x), std::max(columns.second, x)};
            }
        }
    }
    return columns;
}

TEST_F(PagePreviewTest, TheToolkitDrawsAPageWhereThePdfHasIt) {
    PdfSurface pdf({.paper = {400, 60}, .margin = 0, .keepsPages = true});
    (void)pdf.startPage();
    pdf.text({30, 10}, "MMMMMMMMMM wide as printed MMMMMMMMMM", {.family = "Courier", .height = 9});
    pdf.text({30, 30}, "MMMMMMMMMM wide as printed MMMMMMMMMM",
             {.family = "Arial", .height = 9, .bold = true});
    const auto made = pdf.printed();
    QImage shown(400, 60, QImage::Format_RGB32);
    shown.fill(Qt::white);
    {
        QPainter painter(&shown);
        PaperSurface surface(painter, made.paper);
        made.pages.at(0).drawOn(surface);
    }
    for (const auto& text : made.pages[0].texts()) {
        const QRect row(0, static_cast<int>(text.at.y) - 2, 400, 16);
        const auto [left, right] = inkedColumns(shown.copy(row));
        EXPECT_NEAR(left, text.at.x, 2) << text.font.family;
        EXPECT_NEAR(right, text.at.x + text.size.width, 3) << text.font.family;
    }
}

// --- text -----------------------------------------------------------------------------------

TEST_F(PagePreviewTest, TheViewerFindsSavesAndPrintsItsBytes) {
    const std::string text = "first K\xF6ln\n\fsecond first\n";
    TextViewer viewer(form, t.application.context(), "Report", text);
    EXPECT_EQ(test::checkWindow(viewer), std::vector<std::string>{});
    viewer.show();
    test::type(viewer, "find", QStringLiteral("SECOND"));
    press(viewer, "findNext");
    EXPECT_EQ(viewer.text().textCursor().selectedText(), QStringLiteral("second"));
    test::type(viewer, "find", QStringLiteral("first"));
    press(viewer, "findPrevious");
    EXPECT_EQ(viewer.text().textCursor().position(), 5);
    press(viewer, "findPrevious");
    EXPECT_GT(viewer.text().textCursor().position(), 5) << "round the start";
    test::type(viewer, "find", QStringLiteral("third"));
    press(viewer, "findNext");
    EXPECT_EQ(find<QLabel>(viewer, "found")->text(), QStringLiteral("Not found"));
    const std::string path = t.folder / "saved.txt";
    t.ui.files = {FileChoice{path, 1}};
    press(viewer, "saveAs");
    EXPECT_EQ(test::readFile(path), text) << "bytes stay as they were";
    door.next([](QDialog& preview) {
        EXPECT_EQ(dynamic_cast<PagePreview&>(preview).view().pageCount(), 2);
        press(preview, "close");
    });
    press(viewer, "print");
}

}  // namespace
}  // namespace kavu
