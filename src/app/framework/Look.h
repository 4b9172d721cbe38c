// One look for all windows: colours, distances, icons. Distances follow the font, so a
// larger font or a scaled screen keeps the proportions.
#pragma once

#include <string_view>

#include <QIcon>
#include <QString>
#include <QStringList>

class QApplication;

class QDialog;
class QDialogButtonBox;

class QLabel;
class QLayout;
class QPushButton;
class QWidget;

namespace kavu::look {

enum class Scheme { Light, Dark };

/// The style of the house and the palette of a scheme, for the whole program. May be called
/// again while windows are open.
void apply(QApplication& application, Scheme scheme);
/// The scheme that the desktop's own palette suggests.
[[nodiscard]] Scheme desktopScheme();

/// What a person has chosen: the scheme of the desktop, or one of the two.
enum class Appearance { Desktop, Light, Dark };
[[nodiscard]] Scheme schemeOf(Appearance appearance);
/// The appearance of a value of the setting "Appearance": "desktop", "light" or "dark" in any
/// case; any other value is that of the desktop.
[[nodiscard]] Appearance appearanceOf(std::string_view setting);
[[nodiscard]] std::string_view settingOf(Appearance appearance);
[[nodiscard]] bool isDark(const QWidget& widget);

/// Half the height of a line of the widget's font, in pixels: the unit of all distances.
[[nodiscard]] int unit(const QWidget& widget);
/// The width of that many average characters.
[[nodiscard]] int charactersWide(const QWidget& widget, int count);
/// Margins of a window or a page, and the spacing between its parts.
void arrangeWindow(QLayout& layout, const QWidget& widget);
/// The same inside a box or a row of buttons: no margins.
void arrangePart(QLayout& layout, const QWidget& widget);

/// An icon of the house: "add", "edit", "delete", "up", "down", "open", "save", ... Painted
/// in the colours of the palette at the time of painting, in any size. An unknown name
/// gives an empty icon.
[[nodiscard]] QIcon icon(const QString& name);
/// All icon names there are.
[[nodiscard]] QStringList iconNames();

/// A label with an icon of that size in pixels, which follows the palette.
QLabel* makeSymbol(const QString& iconName, int size, QWidget* parent);

/// A label of a control: its buddy, its accessible name (without "&", colon or blank at the
/// end), text taken as it is.
QLabel* addLabel(const QString& text, QWidget& control);
/// The same for a text of ours, in which "&" is in front of the key that goes to the
/// control.
QLabel* addKeyLabel(const QString& text, QWidget& control);
/// The text of a label as a screen reader should say it.
[[nodiscard]] QString spokenName(const QString& label);
/// A line of secondary text, as a subtitle or a hint. Plain text, wraps.
QLabel* makeNote(const QString& text, QWidget* parent);
/// A button with an icon of the house.
QPushButton* makeButton(const char* objectName, const QString& text, const QString& iconName,
                        QWidget* parent);
/// OK and Cancel (and Help), named "ok", "cancel", "help", connected to accept and reject.
QDialogButtonBox* makeDialogButtons(QDialog& dialog, bool withHelp = false);

/// At most this much of the screen of the widget is taken by a window.
[[nodiscard]] QSize roomOnScreen(const QWidget& widget);
/// The width that a page can have on the screen, within its window.
[[nodiscard]] int roomForPage(const QWidget& page);
/// The size for a window that wants this one and scrolls what has no room on the screen: a bar that
/// scrolls one way takes room of the other.
[[nodiscard]] QSize scrollingSize(const QWidget& window, QSize wanted);

}  // namespace kavu::look
