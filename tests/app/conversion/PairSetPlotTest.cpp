// The plot of the panel: what it shows, how it is printed and saved.
#include "app/conversion/PairSetStage.h"
#include "app/conversion/PlotOutput.h"
#include "app/conversion/PlotView.h"
#include "conversion/EuNumbers.h"
#include "conversion/PairSetFit.h"
#include "conversion/Plot.h"

#include <cmath>
#include <cstdlib>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::find;
using test::PairSetStage;
using test::press;

/// Pixels of a colour in a picture.
int count(const QImage& image, QRgb colour) {
    int found = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            found += (image.pixel(x, y) & 0xFFFFFFU) == (colour & 0xFFFFFFU) ? 1 : 0;
        }
    }
    return found;
}

QImage picture(PairSetStage& s, const char* view) {
    return find<PlotView>(*s.panel, view)->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

/// The pages of a PDF: beside them only their list, "/Pages", begins so.
int pagesOf(const std::string& pdf) {
    constexpr std::string_view kPage = "/Type /Page";
    int pages = 0;
    for (auto at = pdf.find(kPage); at != std::string::npos; at = pdf.find(kPage, at + 1)) {
        pages += pdf[at + kPage.size()] == 's' ? 0 : 1;
    }
    return pages;
}

TEST(PairSetPlotForm, TheSelectedRowAndTheMarkedOnesStandOut) {
    PairSetStage s;
    s.setPairs({{"0", "0"}, {"10", "12"}, {"20", "20"}, {"30", "30"}});
    s.open();
    ASSERT_NE(s.rows()[1][kPairError].find('*'), std::string::npos);
    const auto first = picture(s, "curve");
    s.list().selectRow(3);
    const auto second = picture(s, "curve");
    EXPECT_NE(first, second) << "the ring has moved";
    EXPECT_GT(count(picture(s, "residuals"), 0xFF8000), 20) << "the bar of a marked row";
}

TEST(PairSetPlotForm, AClickOnAPairSelectsItsRow) {
    PairSetStage s;
    s.open();
    auto* view = find<PlotView>(*s.panel, "curve");
    (void)view->grab();
    ASSERT_EQ(s.list().currentRow(), 0);
    // The last pair is at the upper right corner of the frame, wherever that is.
    bool found = false;
    for (int x = view->width() - 1; x > view->width() / 2 && !found; x -= 4) {
        for (int y = 0; y < view->height() / 2 && !found; y += 4) {
            QTest::mouseClick(view, Qt::LeftButton, {}, QPoint(x, y));
            found = s.list().currentRow() == 4;
        }
    }
    EXPECT_TRUE(found);
}

TEST(PairSetPlotForm, ThePointerTellsItsValues) {
    PairSetStage s;
    s.open();
    auto* view = find<PlotView>(*s.panel, "curve");
    (void)view->grab();
    QTest::mouseMove(view, QPoint(view->width() / 2, view->height() / 2));
    const auto shown = s.text<QLabel>("pointer");
    // The middle of a frame from 0 to 40 and 0 to 81 that stands in the middle of the view.
    EXPECT_NE(shown.find("TM Value: "), std::string::npos) << shown;
    EXPECT_NE(shown.find("Curve: "), std::string::npos) << shown;
    const double x = std::strtod(shown.c_str() + 10, nullptr);
    EXPECT_NEAR(x, 20, 1) << shown;
    QTest::mouseMove(view, QPoint(1, 1));
    EXPECT_EQ(s.text<QLabel>("pointer"), "") << "outside of the frame";
}

TEST(PairSetPlotForm, WithoutACurveThereIsNothingToPointAt) {
    PairSetStage s;
    s.set({{"PS1", "N"}});
    s.open();
    auto* view = find<PlotView>(*s.panel, "curve");
    EXPECT_FALSE(view->grab().isNull());
    QTest::mouseMove(view, QPoint(view->width() / 2, view->height() / 2));
    EXPECT_EQ(s.text<QLabel>("pointer"), "");
    QTest::mouseClick(view, Qt::LeftButton, {}, QPoint(view->width() / 2, view->height() / 2));
    EXPECT_EQ(s.list().currentRow(), 0);
}

TEST(PairSetPlotForm, EveryCountIsDrawnAndTurningItOffBringsTheScaleBack) {
    PairSetStage s;
    s.open({.bits = 8, .plot = true});
    const auto before = picture(s, "curve");
    find<QCheckBox>(*s.panel, "allCounts")->click();
    const auto all = picture(s, "curve");
    EXPECT_NE(before, all);
    find<QCheckBox>(*s.panel, "allCounts")->click();
    EXPECT_EQ(before, picture(s, "curve"));
}

TEST(PairSetPlotForm, IsShownOrNotAsTheUserWants) {
    PairSetStage s;
    auto& panel = s.open({.bits = 0, .plot = false});
    EXPECT_EQ(panel.objectName(), QStringLiteral("PairSets"));
    EXPECT_FALSE(find<PlotView>(panel, "curve")->isVisible());
    EXPECT_EQ(s.value("CO"), "1.00000000E+00") << "the fit is made all the same";
    find<QCheckBox>(panel, "showPlot")->click();
    EXPECT_EQ(panel.objectName(), QStringLiteral("PairSetsPlot"));
    EXPECT_TRUE(find<PlotView>(panel, "curve")->isVisible());
    EXPECT_EQ(s.f.settings.integer("WantsPlot", 0), 1);
}

TEST(PairSetPlotForm, ItsAttributesAreKeptInTheSettings) {
    PairSetStage s;
    auto& panel = s.open();
    const auto before = picture(s, "curve");
    s.door.next([](QDialog& dialog) {
        EXPECT_EQ(find<EditableList>(dialog, "series")->rows()[1][0], "Curve Fit");
        auto* box = find<QComboBox>(dialog, "xDivisions");
        box->setCurrentIndex(7);
        press(dialog, "ok");
    });
    press(panel, "plotAttributes");
    EXPECT_EQ(s.f.settings.integer("PLXDiv", 2), 7);
    EXPECT_NE(picture(s, "curve"), before);
}

TEST(PairSetPlotForm, AxesThatScaleThemselvesOfferTheirRange) {
    PairSetStage s;
    auto& panel = s.open();
    const auto limit = [](QDialog& dialog, const char* name) {
        return find<QLineEdit>(dialog, name)->text();
    };
    s.door.next([&](QDialog& dialog) {
        EXPECT_EQ(limit(dialog, "minX"), QStringLiteral("0"));
        EXPECT_EQ(limit(dialog, "maxX"), QStringLiteral("40"));
        EXPECT_EQ(limit(dialog, "maxY"), QStringLiteral("81"));
        press(dialog, "ok");
    });
    press(panel, "plotAttributes");
    EXPECT_EQ(s.f.settings.text("PLMaxX"), "") << "only offered";
    s.door.next([](QDialog& dialog) {
        find<QAbstractButton>(dialog, "useMinMax")->click();
        press(dialog, "ok");
    });
    press(panel, "plotAttributes");
    EXPECT_EQ(leadingDouble(s.f.settings.text("PLMaxX")), 40);
    EXPECT_EQ(leadingDouble(s.f.settings.text("PLMaxY")), 81);
}

TEST(PairSetPlotForm, AFlatCalibrationIsDrawnInTheMiddle) {
    PairSetStage s;
    s.setPairs({{"0", "5"}, {"10", "5"}, {"20", "5"}});
    s.open();
    const auto shown = picture(s, "curve");
    const auto middle = shown.copy(0, shown.height() / 3, shown.width(), shown.height() / 3);
    EXPECT_GT(count(middle, 0xFF0000), shown.width() / 4) << "the curve";
    EXPECT_EQ(count(middle, 0xFF0000), count(shown, 0xFF0000)) << "all of it";
}

TEST(PairSetPlotForm, TheTrustNoteSpeaksOfExtrapolationOnlyFarBeyondThePairs) {
    for (const int bits : {5, 16}) {
        PairSetStage s;
        std::vector<std::pair<std::string, std::string>> pairs;
        for (int i = 0; i < 20; ++i) {
            pairs.emplace_back(std::to_string(i), std::to_string(std::sin(i)));
        }
        s.setPairs(pairs);
        s.set({{"PS2", "5"}});
        s.open({.bits = bits, .plot = true});
        EXPECT_EQ(s.text<QLabel>("trustNote").find("extrapolated") != std::string::npos, bits == 16)
            << s.text<QLabel>("trustNote");
    }
}

TEST(PairSetPlotForm, TheTrustNoteNamesWhatWouldHold) {
    PairSetStage s;
    std::vector<std::pair<std::string, std::string>> pairs;
    for (int i = 0; i <= 20; ++i) {
        pairs.emplace_back(std::to_string(30000 + 200 * i), std::to_string((i * i * 37) % 101));
    }
    s.setPairs(pairs);
    s.set({{"PS2", "7"}});
    auto& panel = s.open({.bits = 16, .plot = true});
    auto* note = find<QLabel>(panel, "trustNote");
    EXPECT_TRUE(note->isVisible());
    EXPECT_TRUE(note->text().startsWith(
        QStringLiteral("Written with 8 digits, the coefficients of order 7 differ from the fit")))
        << toBytes(note->text());
    EXPECT_TRUE(note->text().contains(QStringLiteral("would hold")));
    EXPECT_NE(s.value("CO-7"), "");
    find<QComboBox>(panel, "order")->setCurrentIndex(0);
    emit find<QComboBox>(panel, "order")->activated(0);
    EXPECT_FALSE(note->isVisible());
    EXPECT_EQ(s.value("CO-7"), "") << "no term of the former order stays behind";
}

// --- Paper and files -------------------------------------------------------------------------

TEST(PlotPrint, PrintsTheSheetOfTheLastFit) {
    PairSetStage s;
    std::string printed;
    int order = 0;
    s.form.reports.sheet = [&](QWidget& window, const std::string& name, const FitInput& input,
                               const FitOptions&, const FitResult& result) {
        EXPECT_EQ(window.objectName(), QStringLiteral("Window"));
        printed = name;
        order = result.order;
        EXPECT_EQ(input.x.size(), 5U);
    };
    auto& panel = s.open();
    press(panel, "print");
    EXPECT_EQ(printed, "A");
    EXPECT_EQ(order, 1);
}

TEST(PlotPrint, IsDisabledWithoutAnybodyWhoPrints) {
    PairSetStage s;
    EXPECT_FALSE(find<QPushButton>(s.open(), "print")->isEnabled());
}

TEST(PlotSave, WritesAPdfOrAnSvgByItsName) {
    PairSetStage s;
    auto& panel = s.open();
    s.f.ui.files = {FileChoice{s.f.folder / "plain", 1}, FileChoice{s.f.folder / "other", 2},
                    FileChoice{s.f.folder / "named.SVG", 1}, std::nullopt};
    for (int i = 0; i < 4; ++i) {
        press(panel, "savePlot");
    }
    EXPECT_TRUE(s.f.ui.boxes.empty());
    const auto pdf = test::readFile(s.f.folder / "plain.pdf");
    EXPECT_TRUE(pdf.starts_with("%PDF"));
    EXPECT_EQ(pagesOf(pdf), 1);
    const auto svg = test::readFile(s.f.folder / "other.svg");
    EXPECT_NE(svg.find("<svg"), std::string::npos);
    EXPECT_NE(svg.find("PSI"), std::string::npos);
    EXPECT_EQ(test::readFile(s.f.folder / "named.SVG"), svg);
}

TEST(PlotSave, AsksBeforeAFileIsOverwrittenAndTellsAFailure) {
    PairSetStage s;
    auto& panel = s.open();
    const auto path = s.f.folder / "kept.svg";
    test::writeFile(path, "kept");
    s.f.ui.otherwise = Button::No;
    s.f.ui.files = {FileChoice{path, 2}};
    press(panel, "savePlot");
    EXPECT_EQ(s.f.ui.boxes.size(), 1U);
    EXPECT_EQ(test::readFile(path), "kept");
    s.f.ui.files = {FileChoice{"/nowhere/at/all.pdf", 1}};
    press(panel, "savePlot");
    EXPECT_GE(s.f.ui.boxes.size(), 2U);
}

TEST(PlotSave, WhatCanNotBeDrawnLeavesTheFileAlone) {
    PairSetStage s;
    const auto path = s.f.folder / "kept.pdf";
    test::writeFile(path, "kept");
    s.f.ui.files = {FileChoice{path, 1}};
    savePlot(s.form, "Title", [](DrawingSurface& surface) { return surface.startPage() && false; });
    ASSERT_EQ(s.f.ui.boxes.size(), 1U);
    EXPECT_EQ(s.f.ui.boxes[0].text, "There is no plot to save.");
    EXPECT_EQ(test::readFile(path), "kept");
}

}  // namespace
}  // namespace kavu
