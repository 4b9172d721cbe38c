// The choice of the data source whose group is to be edited.
#pragma once

#include "app/framework/FormContext.h"
#include "groups/SourceEdit.h"

#include <optional>

#include <QDialog>

class QPushButton;
class QTreeView;

namespace kavu {

class RowModel;

class SelectSourceDialog : public QDialog {
    Q_OBJECT
  public:
    /// For T and R only data sources with such a group are offered, for M and V all.
    SelectSourceDialog(FormContext& form, SourceParts parts, char letter,
                       QWidget* parent = nullptr);

    /// The row that "Edit" was pressed on; nothing after "Close".
    [[nodiscard]] std::optional<SourceRow> chosen() const;
    /// A data source was made or imported meanwhile.
    [[nodiscard]] bool changed() const { return changed_; }

  private:
    void fill();
    void createNew();
    [[nodiscard]] int currentRow() const;

    FormContext& form_;
    SourceParts parts_;
    char letter_;
    bool changed_ = false;
    std::vector<SourceRow> rows_;
    RowModel* model_ = nullptr;
    QTreeView* view_ = nullptr;
    QPushButton* edit_ = nullptr;
};

/// Runs the dialog and gives the data source that is to be edited; nothing after "Close".
[[nodiscard]] std::optional<SourceRow> selectDataSource(FormContext& form, SourceParts parts,
                                                        char letter);

}  // namespace kavu
