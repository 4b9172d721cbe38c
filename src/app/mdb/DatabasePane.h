// "View Measurement Database": the records beside the grid of a stream, and which of them it has.
#pragma once

#include "app/mdb/StreamDatabase.h"

#include <memory>
#include <vector>

#include <QAbstractTableModel>
#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;
class QSplitter;
class QTableView;

namespace kavu {

class PaneModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    enum Column { kName, kDescription, kInStream, kColumns };
    /// Which records are shown. The numbers are those of the key `View`.
    enum class Which { All = 0, InStream = 1, NotInStream = 2 };

    explicit PaneModel(QObject* parent) : QAbstractTableModel(parent) {}

    struct Record {
        std::string name;
        std::string description;  ///< with real line breaks
        bool isInStream = false;
    };
    void setRecords(std::vector<Record> records);
    /// A text that name or description holds, in any case.
    void setFilter(const QString& text, Which which);
    [[nodiscard]] std::size_t recordCount() const { return records_.size(); }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    void sort(int column, Qt::SortOrder order) override;

  private:
    void list();

    std::vector<Record> records_;
    std::vector<std::size_t> shown_;
    QString filter_;
    Which which_ = Which::All;
    int sorted_ = -1;
    Qt::SortOrder order_ = Qt::AscendingOrder;
};

class DatabasePane : public QWidget {
    Q_OBJECT
  public:
    /// Puts itself into the splitter of the grid, or below it into the one around that. Place, size
    /// and choice are those of the section `ViewMdb`, and are kept there at the end.
    DatabasePane(FormContext& form, std::shared_ptr<StreamDatabase> database, QSplitter& parts);
    ~DatabasePane() override;

    /// In the order of their list.
    enum class Side { Right, Below, Left };

    /// Reads the database again, and which of its measurements the stream has.
    void readAgain();

    [[nodiscard]] QSize sizeHint() const override;

  private:
    QLayout* makeFilter();
    void makeList();
    QLayout* makeFoot();
    [[nodiscard]] Side storedSide() const;
    void moveTo(Side side);
    void applyFilter();

    FormContext& form_;
    std::shared_ptr<StreamDatabase> database_;
    QSplitter& parts_;
    PaneModel* model_ = nullptr;
    QLineEdit* filter_ = nullptr;
    QComboBox* which_ = nullptr;
    QComboBox* side_ = nullptr;
    QTableView* view_ = nullptr;
    QLabel* state_ = nullptr;
};

}  // namespace kavu
