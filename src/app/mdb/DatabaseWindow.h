// The window to work in a measurement database: its records as a table that is filtered, sorted
// and edited in place. Nothing goes to the file before OK.
#pragma once

#include "app/framework/EditDialog.h"
#include "app/mdb/RecordModel.h"
#include "app/mdb/RecordView.h"

#include <vector>

class QComboBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace kavu {

struct DocumentContext;
class MeasurementDatabase;

class DatabaseWindow : public EditDialog {
    Q_OBJECT
  public:
    /// REQUIRES: the edit has begun. It outlives the window.
    DatabaseWindow(FormContext& form, DatabaseEdit& edit, const MeasurementDatabase& database,
                   QWidget* parent);

    [[nodiscard]] RecordModel& model() const { return *model_; }
    [[nodiscard]] RecordView& view() const { return *view_; }

    // What the buttons and keys do.

    void addRecord();
    void duplicateRecords();
    /// Deletes the records of the selected cells, after its question.
    void deleteRecords();
    void deleteAll();
    /// Empties the selected cells.
    void clearCells();
    void undo();
    void copyCells() const;
    /// Shows what the clipboard would change from the current cell on, or in all selected cells
    /// for a single value, and changes it.
    void pasteCells();
    /// Writes the records that are shown, in their order, as comma separated values.
    void exportRecords();
    void createSamples();
    /// Selects the next cell that breaks a rule.
    void goToNextFault();

  protected:
    [[nodiscard]] bool store() override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QLayout* makeFilter();
    void makeTable();
    QLayout* makeButtons();
    void makeKeys();
    void applyFilter();
    void follow();
    void refresh();
    void updateState();
    void showCurrent();
    void endCellEdit();
    void select(std::size_t row, std::size_t field);
    [[nodiscard]] std::vector<std::size_t> selectedRows() const;
    struct Block {
        std::vector<int> places{};
        std::vector<int> columns{};
    };
    [[nodiscard]] Block selectedBlock() const;
    struct Paste;
    [[nodiscard]] Paste plannedPaste() const;

    DatabaseEdit& edit_;
    const MeasurementDatabase& database_;
    RecordModel* model_ = nullptr;
    QLineEdit* filter_ = nullptr;
    QComboBox* filterField_ = nullptr;
    RecordView* view_ = nullptr;
    QLabel* state_ = nullptr;
    QLabel* current_ = nullptr;
    QPushButton* undo_ = nullptr;
    std::vector<QPushButton*> needRecord_;
};

/// "Edit Measurement Database": opens the database of the settings and its window. True if it
/// was left with OK.
bool editDatabase(FormContext& form, DocumentContext& document, QWidget* parent);

}  // namespace kavu
