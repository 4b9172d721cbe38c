// The manual in a window: its pages on the left, the page that is open on the right, a search over
// all pages, and the way back and forward.
#pragma once

#include <string>
#include <vector>

#include <QString>
#include <QWidget>

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
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

    /// Lists only the pages that have the text, in any case, and marks it in the page that is open.
    /// An empty text lists all of them.
    void search(const QString& text);
    /// Goes to the next place that has the text, or the one before, on the pages that are listed
    /// one after the other.
    void findNext(bool backward);

  protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* receiver, QEvent* event) override;

  private:
    struct Page {
        QString name;
        QString title;
        QString text;
    };

    void makeTools(QWidget* parent);
    void connectParts();
    void readPages();
    void listPages();
    void markPlaces();
    void showCount();
    [[nodiscard]] QString besidePage(bool backward) const;
    void scrollToHeading(const QString& heading);
    [[nodiscard]] QString pathOf(const QString& page) const;

    QString folder_;
    std::vector<Page> manual_;
    QPushButton* back_ = nullptr;
    QPushButton* forward_ = nullptr;
    QLineEdit* search_ = nullptr;
    QLabel* count_ = nullptr;
    QListWidget* pages_ = nullptr;
    QTextBrowser* browser_ = nullptr;
};

}  // namespace kavu
