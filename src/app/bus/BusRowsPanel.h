// The rows in one row of a bus group as a list with columns, next to the tree.
#pragma once

#include "bus/definition/BusDefinition.h"

#include <array>

#include <QWidget>

class QLabel;
class QStackedWidget;
class QTableView;

namespace kavu {

class RowModel;

class BusRowsPanel : public QWidget {
    Q_OBJECT
  public:
    BusRowsPanel(const BusDefinition& definition, QWidget* parent);

    /// Shows the rows in a row; those next to a location for a location.
    void showRowsOf(BusPlace place);
    /// The list that is shown.
    [[nodiscard]] QTableView& list() const;
    [[nodiscard]] const BusPlace& owner() const { return owner_; }

  signals:
    /// A row was double-clicked, or chosen with Return.
    void opened(std::size_t row);

  protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;

  private:
    struct List {
        RowModel* model = nullptr;
        QTableView* view = nullptr;
    };
    List makeList(BusLevel level, const QString& title);

    const BusDefinition& definition_;
    BusPlace owner_{};
    QLabel* title_ = nullptr;
    QStackedWidget* lists_ = nullptr;
    std::array<List, 4> byDepth_{};
};

}  // namespace kavu
