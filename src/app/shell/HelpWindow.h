// The manual in a window: its pages on the left, the page that is open on the right.
#pragma once

#include <string>

#include <QWidget>

class QListWidget;
class QTextBrowser;

namespace kavu {

/// The folder of the manual next to the program, installed or as built; empty if there is
/// none.
[[nodiscard]] std::string manualFolder(const std::string& programFolder);

class HelpWindow : public QWidget {
    Q_OBJECT
  public:
    explicit HelpWindow(const std::string& folder, QWidget* parent = nullptr);
    /// Opens a page by the name of its file without ".md"; the index if there is none.
    void openPage(const QString& page);
    /// Opens the page that describes a window, at its heading (`helpPlace`).
    void openTopic(const std::string& topic);
    [[nodiscard]] QString openedPage() const;

  private:
    void listPages();
    void scrollToHeading(const QString& heading);
    [[nodiscard]] QString pathOf(const QString& page) const;

    QString folder_;
    QListWidget* pages_ = nullptr;
    QTextBrowser* browser_ = nullptr;
};

}  // namespace kavu
