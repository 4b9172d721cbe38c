// The pane next to the tree: the commands of the selected item, to be looked at, searched and
// copied. Nothing can be changed in it.
#pragma once

#include "app/shell/TreeItem.h"

#include <string>
#include <utility>
#include <vector>

#include <QWidget>

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedLayout;
class QTableView;

namespace kavu {

class Application;
class CommandModel;
class ConversionStore;
class IoStatus;
struct DocumentContext;

class CommandPane : public QWidget {
    Q_OBJECT
  public:
    /// REQUIRES: the application has started.
    explicit CommandPane(Application& application, QWidget* parent = nullptr);
    /// Without a store measurements have no rows.
    CommandPane(DocumentContext& context, ConversionStore* conversions, QWidget* parent);

    /// Reads what is stored for the item, also if it is shown already.
    void showItem(const TreeItem& item);
    /// Selects the first command of a code in a group of the item that is shown, as soon as it has
    /// been read. Nothing is selected if there is none.
    void showCommand(char letter, int group, const std::string& code);
    /// Nothing is selected.
    void clear();
    /// The selected rows as lines of code, tabulator and value.
    void copySelection();

    [[nodiscard]] const CommandModel& model() const { return *model_; }

  protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* receiver, QEvent* event) override;

  private:
    struct File {
        char letter;
        int group;
    };

    void makeHead();
    void makeTable();
    void makeCountRow();
    void listFiles(const TreeItem& item);
    void offerFiles();
    void showFile();
    void showRecord(const TreeItem& item);
    [[nodiscard]] QString summaryOf(const TreeItem& item) const;
    [[nodiscard]] QString sourcesText(char sourceClass) const;
    [[nodiscard]] QString streamsText(const std::string& source) const;
    void showEmpty(const QString& text);
    void showFailure(const IoStatus& status);
    void findWanted();
    void updateCount();
    void updateCopy();
    void fitColumns();
    void fitVisibleRows();

    DocumentContext& context_;
    ConversionStore* conversions_;
    CommandModel* model_ = nullptr;
    TreeItem item_;
    bool shown_ = false;
    std::vector<File> files_;
    std::string wanted_;  ///< the code that is to be selected; empty if there is none
    int looked_ = 0;      ///< rows that do not have it

    QLabel* title_ = nullptr;
    QLabel* summary_ = nullptr;
    QLabel* fileLabel_ = nullptr;
    QComboBox* fileChoice_ = nullptr;
    QLineEdit* filter_ = nullptr;
    QWidget* tableBox_ = nullptr;
    QTableView* table_ = nullptr;
    QLabel* empty_ = nullptr;
    QLabel* count_ = nullptr;
    QPushButton* copy_ = nullptr;
    QAction* copyAction_ = nullptr;
};

}  // namespace kavu
