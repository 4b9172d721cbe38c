// The list of all measurements of a stream next to its grid, with a filter.
#pragma once

#include "pcm/display/FrameDisplaySearch.h"

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <QAbstractTableModel>
#include <QWidget>

class QLabel;
class QLineEdit;
class QSortFilterProxyModel;
class QTreeView;

namespace kavu {

/// Name and type of each measurement; what takes longer to find is found when it is shown.
class MeasurementListModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    enum Column { Name, Type, Locations, SampleRate, Units, Columns };
    using UnitsOf = std::function<std::string(std::string_view name)>;

    MeasurementListModel(const PcmFormat& format, UnitsOf unitsOf, QObject* parent);

    void streamChanged();
    [[nodiscard]] const std::vector<MeasurementRow>& rows() const { return rows_; }
    /// The row of a name, case ignored; -1 if there is none.
    [[nodiscard]] int rowOf(std::string_view name) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

    /// Sorts numbers as numbers.
    static constexpr int kSortRole = Qt::UserRole;

  private:
    /// What is found out of a measurement when it is shown first: sorting asks for it often.
    struct Figures {
        bool known = false;
        int locations = 0;
        QString sampleRate;
        QString units;
    };
    [[nodiscard]] QVariant shown(std::size_t row, int column) const;
    [[nodiscard]] const Figures& figuresOf(std::size_t row) const;

    const PcmFormat& format_;
    UnitsOf unitsOf_;
    std::vector<MeasurementRow> rows_;
    std::unordered_map<std::string, int> byName_;  ///< in small letters
    mutable std::vector<Figures> figures_;
};

class MeasurementList : public QWidget {
    Q_OBJECT
  public:
    MeasurementList(const PcmFormat& format, MeasurementListModel::UnitsOf unitsOf,
                    QWidget* parent);

    void streamChanged();
    [[nodiscard]] const std::vector<MeasurementRow>& rows() const { return model_->rows(); }
    /// Gives the keyboard to the filter.
    void focusFilter();
    /// Shows the row of a measurement as the current one, and goes nowhere by that; an empty name
    /// leaves none. A row that the filter hides stays hidden.
    void follow(const std::string& name);
    /// The measurement of the current row; empty if there is none.
    [[nodiscard]] std::string current() const;
    /// Order and column widths, as a setting keeps them.
    [[nodiscard]] std::string layoutText() const;
    void restoreLayout(std::string_view text);

    [[nodiscard]] QSize sizeHint() const override;

  signals:
    void goToRequested(FramePlace at);
    /// The user has made another row the current one.
    void currentChanged(const std::string& name);
    /// The keyboard goes back to the grid.
    void left();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void makeView();
    [[nodiscard]] int usualWidth(int column) const;
    void setColumnWidths();
    void goTo(const QModelIndex& shown);
    void showCount();

    MeasurementListModel* model_ = nullptr;
    QSortFilterProxyModel* sorted_ = nullptr;
    QLineEdit* filter_ = nullptr;
    QTreeView* view_ = nullptr;
    QLabel* count_ = nullptr;
    bool following_ = false;
    QLabel* none_ = nullptr;  ///< over the empty list: why it is empty
};

}  // namespace kavu
