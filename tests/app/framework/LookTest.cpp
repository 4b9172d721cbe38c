#include "app/framework/Look.h"

#include <cmath>

#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace kavu {
namespace {

QApplication& application() {
    return *static_cast<QApplication*>(QCoreApplication::instance());
}

double luminance(const QColor& colour) {
    const auto part = [](double c) {
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) +
           0.0722 * part(colour.blueF());
}

double contrast(const QColor& a, const QColor& b) {
    const double light = std::max(luminance(a), luminance(b));
    const double dark = std::min(luminance(a), luminance(b));
    return (light + 0.05) / (dark + 0.05);
}

TEST(Look, TextCanBeReadInBothPalettes) {
    for (const auto scheme : {look::Scheme::Light, look::Scheme::Dark}) {
        look::apply(application(), scheme);
        const auto palette = QApplication::palette();
        const auto ratio = [&](QPalette::ColorRole text, QPalette::ColorRole ground) {
            return contrast(palette.color(text), palette.color(ground));
        };
        EXPECT_GE(ratio(QPalette::WindowText, QPalette::Window), 7);
        EXPECT_GE(ratio(QPalette::Text, QPalette::Base), 7);
        EXPECT_GE(ratio(QPalette::Text, QPalette::AlternateBase), 7);
        EXPECT_GE(ratio(QPalette::ButtonText, QPalette::Button), 7);
        EXPECT_GE(ratio(QPalette::HighlightedText, QPalette::Highlight), 4.5);
        EXPECT_GE(ratio(QPalette::PlaceholderText, QPalette::Window), 4.5);
        EXPECT_GE(ratio(QPalette::Link, QPalette::Base), 4.5);
        EXPECT_GE(ratio(QPalette::ToolTipText, QPalette::ToolTipBase), 7);
    }
}

TEST(Look, AppliedSchemesAreToldApart) {
    const auto desktop = look::desktopScheme();
    look::apply(application(), look::Scheme::Dark);
    EXPECT_EQ(look::desktopScheme(), desktop) << "a palette of the program is not the desktop's";
    QWidget dark;
    EXPECT_TRUE(look::isDark(dark));
    look::apply(application(), look::Scheme::Light);
    EXPECT_EQ(look::desktopScheme(), desktop);
    QWidget light;
    EXPECT_FALSE(look::isDark(light));
}

TEST(Look, DistancesFollowTheFont) {
    QWidget widget;
    const int before = look::unit(widget);
    QFont font = widget.font();
    font.setPointSizeF(font.pointSizeF() * 2);
    widget.setFont(font);
    EXPECT_NEAR(look::unit(widget), before * 2, 2);
    EXPECT_GT(look::charactersWide(widget, 10), 10);
}

/// The mean lightness of what is painted, or -1 if nothing is.
int paintedLightness(const QPixmap& pixmap) {
    const auto image = pixmap.toImage();
    long sum = 0;
    long count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (const auto colour = image.pixelColor(x, y); colour.alpha() > 128) {
                sum += colour.lightness();
                ++count;
            }
        }
    }
    return count == 0 ? -1 : static_cast<int>(sum / count);
}

TEST(Look, EveryIconPaintsSomethingInEverySize) {
    ASSERT_GE(look::iconNames().size(), 40);
    for (const auto& name : look::iconNames()) {
        for (const int size : {16, 24, 64}) {
            EXPECT_GE(paintedLightness(look::icon(name).pixmap(QSize(size, size), 1.0)), 0)
                << name.toStdString() << " at " << size;
        }
    }
    EXPECT_TRUE(look::icon(QStringLiteral("no such icon")).isNull());
}

TEST(Look, LineIconsTakeTheColoursOfThePalette) {
    const auto lightness = [](QIcon::Mode mode) {
        return paintedLightness(
            look::icon(QStringLiteral("edit")).pixmap(QSize(32, 32), 1.0, mode));
    };
    look::apply(application(), look::Scheme::Dark);
    const int onDark = lightness(QIcon::Normal);
    EXPECT_GT(onDark, 150);
    look::apply(application(), look::Scheme::Light);
    EXPECT_LT(lightness(QIcon::Normal), 110);
    EXPECT_GT(lightness(QIcon::Selected), 240);
    EXPECT_GT(lightness(QIcon::Disabled), lightness(QIcon::Normal));
}

TEST(Look, ALabelNamesItsControlAndIsTakenAsItStands) {
    QWidget parent;
    auto* layout = new QVBoxLayout(&parent);
    auto* edit = new QLineEdit(&parent);
    auto* label = look::addLabel(QStringLiteral("AFC & APC:"), *edit);
    layout->addWidget(label);
    layout->addWidget(edit);
    EXPECT_EQ(label->buddy(), edit);
    EXPECT_EQ(label->text(), QStringLiteral("AFC && APC:"));
    EXPECT_EQ(edit->accessibleName(), QStringLiteral("AFC & APC"));
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
}

TEST(Look, AKeyLabelMarksTheKeyThatGoesToItsControl) {
    QWidget window;
    auto* edit = new QLineEdit(&window);
    auto* label = look::addKeyLabel(QStringLiteral("&Name:"), *edit);
    EXPECT_EQ(label->text(), QStringLiteral("&Name:"));
    EXPECT_EQ(label->buddy(), edit);
    EXPECT_EQ(edit->accessibleName(), QStringLiteral("Name"));
}

TEST(Look, NamesAreSpokenWithoutTheirMarks) {
    EXPECT_EQ(look::spokenName(QStringLiteral("&Print")), QStringLiteral("Print"));
    EXPECT_EQ(look::spokenName(QStringLiteral("Move Do&wn")), QStringLiteral("Move Down"));
    EXPECT_EQ(look::spokenName(QStringLiteral("Number: ")), QStringLiteral("Number"));
    EXPECT_EQ(look::spokenName(QStringLiteral("A && B:")), QStringLiteral("A & B"));
}

}  // namespace
}  // namespace kavu
