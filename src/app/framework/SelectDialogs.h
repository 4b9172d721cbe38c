// The dialogs that offer something to choose: a row of a table, an entry of a list.
#pragma once

#include "core/talk/UserInterface.h"

#include <string>
#include <vector>

#include <QDialog>

class QLineEdit;
class QListWidget;
class QSortFilterProxyModel;
class QTreeView;
class QVBoxLayout;

namespace kavu {

class RowModel;

/// A list with a column head per field, sorted by a click on a head.
class SelectDialog : public QDialog {
    Q_OBJECT
  public:
    SelectDialog(const TablePrompt& prompt, bool several, QWidget* parent);
    /// The chosen rows of the prompt, by rising number.
    [[nodiscard]] std::vector<int> rows() const;

  private:
    QLineEdit* makeFilter();

    QTreeView* view_ = nullptr;
    QSortFilterProxyModel* sorted_ = nullptr;
};

/// Two choices are two buttons, more are a list.
class ChoiceDialog : public QDialog {
    Q_OBJECT
  public:
    ChoiceDialog(const std::string& title, const std::vector<std::string>& choices,
                 QWidget* parent);
    /// Selects a choice of a list, with the focus on it. One beyond the list selects its last.
    void select(int choice);
    /// The index of the choice, or -1.
    [[nodiscard]] int choice() const { return choice_; }

  private:
    void makeButtons(const std::vector<std::string>& choices);
    void makeList(const std::vector<std::string>& choices);

    int choice_ = -1;
};

/// A question above its choices, each a button of its own on a line of its own, "choice0" and so
/// on.
class QuestionDialog : public QDialog {
    Q_OBJECT
  public:
    QuestionDialog(const ChoicePrompt& prompt, QWidget* parent);
    /// The index of the choice, or -1.
    [[nodiscard]] int choice() const { return choice_; }

  private:
    void makeText(QVBoxLayout& column, const std::string& question);

    int choice_ = -1;
};

}  // namespace kavu
