#include "app/framework/Look.h"

#include "app/framework/LookStyle.h"
#include "core/text/Text.h"

#include <algorithm>

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QEvent>
#include <QFontMetrics>
#include <QLabel>
#include <QLayout>
#include <QPalette>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QToolTip>

namespace kavu::look {

namespace {

struct SchemeColours {
    QRgb window, base, alternate, text, button, highlight, highlightedText, link, faint, disabled,
        tip, light, mid, dark, shadow;
};

constexpr SchemeColours kLight = {
    .window = 0xfff3f5f8,
    .base = 0xffffffff,
    .alternate = 0xfff7f9fb,
    .text = 0xff1f2430,
    .button = 0xfffafbfc,
    .highlight = 0xff2f6fba,
    .highlightedText = 0xffffffff,
    .link = 0xff2f6fba,
    .faint = 0xff636b78,
    .disabled = 0xff9aa2ae,
    .tip = 0xffffffff,
    .light = 0xffffffff,
    .mid = 0xffc9cfd8,
    .dark = 0xffa3abb8,
    .shadow = 0xff6f7784,
};

constexpr SchemeColours kDark = {
    .window = 0xff24282f,
    .base = 0xff1b1e24,
    .alternate = 0xff20242b,
    .text = 0xffe3e7ed,
    .button = 0xff2e343d,
    .highlight = 0xff3470b5,
    .highlightedText = 0xffffffff,
    .link = 0xff82b6f0,
    .faint = 0xffa2abb8,
    .disabled = 0xff6f7784,
    .tip = 0xff2e343d,
    .light = 0xff4a525e,
    .mid = 0xff3a414b,
    .dark = 0xff15181d,
    .shadow = 0xff0d0f12,
};

QPalette paletteOf(const SchemeColours& colours) {
    QPalette palette;
    const auto set = [&](QPalette::ColorRole role, QRgb colour) {
        palette.setColor(role, QColor::fromRgb(colour));
    };
    set(QPalette::Window, colours.window);
    set(QPalette::WindowText, colours.text);
    set(QPalette::Base, colours.base);
    set(QPalette::AlternateBase, colours.alternate);
    set(QPalette::Text, colours.text);
    set(QPalette::Button, colours.button);
    set(QPalette::ButtonText, colours.text);
    set(QPalette::BrightText, colours.highlightedText);
    set(QPalette::Highlight, colours.highlight);
    set(QPalette::HighlightedText, colours.highlightedText);
    set(QPalette::Link, colours.link);
    set(QPalette::LinkVisited, colours.link);
    set(QPalette::PlaceholderText, colours.faint);
    set(QPalette::ToolTipBase, colours.tip);
    set(QPalette::ToolTipText, colours.text);
    set(QPalette::Light, colours.light);
    set(QPalette::Midlight, colours.button);
    set(QPalette::Mid, colours.mid);
    set(QPalette::Dark, colours.dark);
    set(QPalette::Shadow, colours.shadow);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, QColor::fromRgb(colours.disabled));
    }
    palette.setColor(QPalette::Disabled, QPalette::Base, QColor::fromRgb(colours.window));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor::fromRgb(colours.mid));
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText,
                     QColor::fromRgb(colours.disabled));
    return palette;
}

}  // namespace

void apply(QApplication& application, Scheme scheme) {
    application.setStyle(new LookStyle);
    const auto palette = paletteOf(scheme == Scheme::Dark ? kDark : kLight);
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
    QApplication::setWindowIcon(icon(QStringLiteral("kavu")));
}

Scheme desktopScheme() {
    const auto own = QApplication::palette();
    // Without a palette of the program the desktop's shows.
    QApplication::setPalette(QPalette());
    const auto palette = QApplication::palette();
    QApplication::setPalette(own);
    return palette.color(QPalette::Window).lightness() <
                   palette.color(QPalette::WindowText).lightness()
               ? Scheme::Dark
               : Scheme::Light;
}

Scheme schemeOf(Appearance appearance) {
    if (appearance == Appearance::Desktop) {
        return desktopScheme();
    }
    return appearance == Appearance::Dark ? Scheme::Dark : Scheme::Light;
}

Appearance appearanceOf(std::string_view setting) {
    for (const auto appearance : {Appearance::Light, Appearance::Dark}) {
        if (equalsIgnoreCase(setting, settingOf(appearance))) {
            return appearance;
        }
    }
    return Appearance::Desktop;
}

std::string_view settingOf(Appearance appearance) {
    switch (appearance) {
        case Appearance::Light:
            return "light";
        case Appearance::Dark:
            return "dark";
        case Appearance::Desktop:
            break;
    }
    return "desktop";
}

bool isDark(const QWidget& widget) {
    return widget.palette().color(QPalette::Window).lightness() < 128;
}

int unit(const QWidget& widget) {
    return std::max(4, widget.fontMetrics().height() / 2);
}

int charactersWide(const QWidget& widget, int count) {
    return widget.fontMetrics().averageCharWidth() * count;
}

void arrangeWindow(QLayout& layout, const QWidget& widget) {
    const int distance = unit(widget);
    layout.setContentsMargins(distance * 3 / 2, distance * 3 / 2, distance * 3 / 2,
                              distance * 3 / 2);
    layout.setSpacing(distance);
}

void arrangePart(QLayout& layout, const QWidget& widget) {
    layout.setContentsMargins(0, 0, 0, 0);
    layout.setSpacing(unit(widget));
}

namespace {

class Symbol : public QLabel {
  public:
    Symbol(const QString& iconName, int size, QWidget* parent)
        : QLabel(parent), iconName_(iconName), size_(size) {
        paintSymbol();
    }

  protected:
    void changeEvent(QEvent* event) override {
        QLabel::changeEvent(event);
        if (event->type() == QEvent::PaletteChange) {
            paintSymbol();
        }
    }

  private:
    void paintSymbol() {
        setPixmap(icon(iconName_).pixmap(QSize(size_, size_), devicePixelRatioF()));
    }

    QString iconName_;
    int size_;
};

}  // namespace

QLabel* makeSymbol(const QString& iconName, int size, QWidget* parent) {
    return new Symbol(iconName, size, parent);
}

QString spokenName(const QString& label) {
    QString name = label;
    name.replace(QStringLiteral("&&"), QStringLiteral("\x01"));
    name.remove(u'&');
    name.replace(u'\x01', u'&');
    name = name.simplified();
    while (name.endsWith(u':') || name.endsWith(u' ')) {
        name.chop(1);
    }
    return name;
}

QLabel* addLabel(const QString& text, QWidget& control) {
    return addKeyLabel(QString(text).replace(u'&', QStringLiteral("&&")), control);
}

QLabel* addKeyLabel(const QString& text, QWidget& control) {
    auto* label = new QLabel(text, control.parentWidget());
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(&control);
    control.setAccessibleName(spokenName(text));
    return label;
}

QLabel* makeNote(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

QPushButton* makeButton(const char* objectName, const QString& text, const QString& iconName,
                        QWidget* parent) {
    auto* button = new QPushButton(text, parent);
    button->setObjectName(QLatin1String(objectName));
    button->setAccessibleName(spokenName(text));
    button->setAutoDefault(false);
    if (!iconName.isEmpty()) {
        button->setIcon(icon(iconName));
    }
    return button;
}

QDialogButtonBox* makeDialogButtons(QDialog& dialog, bool withHelp) {
    auto* box = new QDialogButtonBox(&dialog);
    box->setObjectName(QStringLiteral("buttons"));
    const auto add = [&](QDialogButtonBox::StandardButton which, const char* name,
                         const QString& text) {
        auto* button = box->addButton(which);
        button->setObjectName(QLatin1String(name));
        button->setText(text);
        button->setAccessibleName(spokenName(text));
        return button;
    };
    add(QDialogButtonBox::Ok, "ok", QStringLiteral("OK"))->setDefault(true);
    add(QDialogButtonBox::Cancel, "cancel", QStringLiteral("Cancel"));
    if (withHelp) {
        add(QDialogButtonBox::Help, "help", QStringLiteral("&Help"));
    }
    QObject::connect(box, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(box, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    return box;
}

QSize roomOnScreen(const QWidget& widget) {
    const auto* screen = widget.screen();
    return screen == nullptr ? QSize(1024, 768) : screen->availableSize() * 9 / 10;
}

int roomForPage(const QWidget& page) {
    return roomOnScreen(page).width() - 14 * unit(page);
}

QSize scrollingSize(const QWidget& window, QSize wanted) {
    const auto room = roomOnScreen(window);
    const int bar = window.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, &window);
    if (wanted.height() > room.height()) {
        wanted.rwidth() += bar;
    }
    return wanted.boundedTo(room);
}

}  // namespace kavu::look
