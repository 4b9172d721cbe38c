// A list with columns that a person edits: rows are added, edited, deleted, moved and
// sorted, cells are edited in place, and every value is checked against its column.
#pragma once

#include "app/framework/FormContext.h"
#include "app/framework/PropertySheet.h"
#include "app/framework/Refusals.h"

#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include <QString>
#include <QWidget>

class QHBoxLayout;
class QPushButton;
class QTableView;

namespace kavu {

class ListHead;
class RowModel;

enum class ColumnKind { Text, Integer, Double, Choice };

struct ListColumn {
    std::string title{};
    ColumnKind kind = ColumnKind::Text;
    std::size_t limit = 0;  ///< characters; 0 is no limit
    double least = std::numeric_limits<double>::lowest();
    double most = std::numeric_limits<double>::max();
    std::vector<std::string> choices{};  ///< shown texts, of a choice
    bool unique = false;                 ///< no two rows have the same value, whatever the case
    bool editable = true;
    bool required = false;    ///< an empty value is refused
    bool mayBeEmpty = false;  ///< a choice can be emptied
    std::string initial{};    ///< of a new row
    /// What a new row shows of its number, which counts from 1, while it is asked for. Replaces
    /// `initial`.
    std::function<std::string(int number)> numbered{};
    std::string objectName{};  ///< of its control in the row dialog; empty takes the title
    ValueCheck check{};        ///< a rule of the caller's own for a value that is not empty
};

/// What may be entered in a column, for a person who is about to type; empty if there is nothing to
/// be said of it.
[[nodiscard]] std::string rangeOf(const ListColumn& column);

using ListRow = std::vector<std::string>;

struct ListSetup {
    std::vector<ListColumn> columns{};
    int mostRows = 0;  ///< 0 is no limit
    bool canAdd = true;
    bool canEdit = true;
    bool canDelete = true;
    bool canMove = false;
    bool canSort = true;
    /// A double click edits the cell that was clicked; otherwise, as the Edit button, the row.
    bool editCells = false;
    /// F2 opens the row as well, instead of one cell: the row editor does more than take values.
    bool rowsOnly = false;
    std::string rowDialogTitle = "Edit";
    /// Title of message 83, which is asked before a row is deleted: the name of the list, or
    /// what deleting one of its rows is called. A list without it asks with a text.
    std::string name{};
};

class EditableList : public QWidget {
    Q_OBJECT
  public:
    EditableList(FormContext& form, const char* name, ListSetup setup, QWidget* parent = nullptr);
    ~EditableList() override;

    /// Shows rows and selects the first; is no edit. Rows are filled up or cut to the
    /// columns, and are not cut to `mostRows`.
    void setRows(std::vector<ListRow> rows);
    /// All rows in the order in which they were set, added and moved. A sort by a column is a
    /// view and leaves it alone; rows are always counted in this order.
    [[nodiscard]] const std::vector<ListRow>& rows() const;
    [[nodiscard]] int rowCount() const;
    /// The selected row, or -1.
    [[nodiscard]] int currentRow() const;
    void selectRow(int row);
    /// Sets a row as an edit of the user would.
    void replaceRow(int row, ListRow values);

    /// What the buttons do. Each reports what it refuses.
    void addRow();
    void editRow();
    void deleteRow();
    void moveRow(int by);
    /// The dialog "Current Value" over one cell of the selected row.
    void editCell(int column);
    /// Shows the rows sorted by a column: ascending first, then descending, then in their own
    /// order again. Rows cannot be moved while they are shown in another order.
    void sortBy(int column);

    /// Replaces the row dialog of Add and Edit: gives the new row, or nothing if it was
    /// cancelled. `row` is the row's number; in an Add it is the last, not yet kept, row.
    std::function<std::optional<ListRow>(int row, const ListRow& before)> rowEditor;
    /// Asked before a row is deleted; false keeps it. Without it, deleting just asks.
    std::function<bool(int row)> mayDelete;

    /// A button of the caller's own below the others, as "Edit Source Definition".
    QPushButton* addButton(const char* name, const QString& text);
    [[nodiscard]] QTableView* view() const { return view_; }

    /// The text of why a value is refused in a cell, or nothing. `row` is left out when
    /// another row is looked for that has the same value; -1 for a new row.
    [[nodiscard]] std::optional<std::string> refusal(int row, int column,
                                                     const std::string& value) const;

  signals:
    /// The user has changed the rows.
    void changed();
    void currentRowChanged(int row);

  protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;

  private:
    void makeView();
    void makeButtons();
    void updateButtons();
    std::optional<ListRow> runRowDialog(int row, const ListRow& before, bool isNew);
    [[nodiscard]] bool somethingSelected();
    bool handleKey(int key, bool alt);
    [[nodiscard]] std::vector<int> sortedOrder(int column);
    void showSortedBy(int column);
    void fitColumns();
    int fitToContents(int air);
    void shrinkColumns(int excess);

    FormContext& form_;
    ListSetup setup_;
    RowModel* model_ = nullptr;
    QTableView* view_ = nullptr;
    ListHead* head_ = nullptr;
    QHBoxLayout* buttons_ = nullptr;
    QPushButton* add_ = nullptr;
    QPushButton* edit_ = nullptr;
    QPushButton* delete_ = nullptr;
    QPushButton* up_ = nullptr;
    QPushButton* down_ = nullptr;
    int sortedColumn_ = -1;  ///< -1 while the rows are in their own order
    bool sortedDown_ = false;
    bool isFitting_ = false;
    bool isSizedByHand_ = false;
};

/// A page that is one editable list over rows of a model.
class ListPage : public PropertyPage {
    Q_OBJECT
  public:
    /// `rows` is the model of the sheet and must outlive the page.
    ListPage(FormContext& form, const char* resourceName, const std::string& title, ListSetup setup,
             std::vector<ListRow>& rows, QWidget* parent = nullptr);

    [[nodiscard]] EditableList& list() const { return *list_; }
    void load() override;
    [[nodiscard]] bool store() override;

  private:
    std::vector<ListRow>& rows_;
    EditableList* list_ = nullptr;
};

}  // namespace kavu
