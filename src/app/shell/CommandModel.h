// The rows of the read-only pane: all commands of an item, or those that a filter finds.
// Finding and filtering go on in slices, so that a person can type meanwhile.
#pragma once

#include "app/shell/ItemCommands.h"

#include <cstdint>
#include <vector>

#include <QAbstractTableModel>
#include <QFont>
#include <QString>
#include <QTimer>

namespace kavu {

class CommandModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    enum Column { kCode, kValue };

    explicit CommandModel(QObject* parent = nullptr);

    void clear();
    [[nodiscard]] IoStatus open(const std::string& path);
    void setPairs(std::vector<std::pair<std::string, std::string>> pairs);
    void setFilter(const QString& text);

    [[nodiscard]] const ItemCommands& commands() const { return commands_; }
    /// All commands known so far, and whether more of them, or of the rows, may come.
    [[nodiscard]] std::size_t total() const { return commands_.size(); }
    [[nodiscard]] bool busy() const { return timer_.isActive(); }
    /// The number of lines of a row's value.
    [[nodiscard]] int lines(int row) const;
    /// Code and value of a row, with a tabulator between them.
    [[nodiscard]] QString rowText(int row) const;
    /// The longest code of the rows known so far, as a number of characters.
    [[nodiscard]] int longestCode() const { return longestCode_; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

  signals:
    /// Rows or their number have changed.
    void progressed();
    /// The file cannot be read to its end, which showed after `open` had given its first rows.
    void failed();

  private:
    void start();
    void slice();
    [[nodiscard]] std::size_t commandOf(int row) const;
    [[nodiscard]] QString shownText(const QModelIndex& index) const;

    ItemCommands commands_;
    CommandFilter filter_;
    std::vector<std::uint32_t> shown_;  ///< commands that the filter has found
    std::size_t looked_ = 0;            ///< commands that the filter has seen
    int rows_ = 0;
    int longestCode_ = 0;
    QTimer timer_;
};

}  // namespace kavu
