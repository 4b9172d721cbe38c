// The list of all measurements of a stream next to its grid, with a filter.
#pragma once

#include "pcm/display/FrameDisplaySearch.h"

#include <functional>
#include <string>
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

    [[nodiscard]] QSize sizeHint() const override;

  signals:
    void goToRequested(FramePlace at);
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
    QLabel* none_ = nullptr;  ///< over the empty list: why it is empty
};

}  // namespace kavu
