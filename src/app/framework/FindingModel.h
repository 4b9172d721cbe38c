// The findings of a document as rows: the one list behind every window that shows some.
#pragma once

#include "core/talk/Findings.h"

#include <vector>

#include <QAbstractTableModel>

namespace kavu {

class FindingModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    enum Column { kNumber, kPlace, kSource, kText };

    using QAbstractTableModel::QAbstractTableModel;

    [[nodiscard]] const std::vector<Finding>& findings() const { return findings_; }
    void setFindings(std::vector<Finding> findings);
    void append(std::vector<Finding> findings);
    /// Removes what came from there.
    void removeSource(const std::string& source);
    /// True if no finding has anything in the column.
    [[nodiscard]] bool isEmptyColumn(int column) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

  private:
    std::vector<Finding> findings_;
};

/// All of a finding for a person who has selected it: its number, its text with its line breaks,
/// and the commands that were read last.
[[nodiscard]] std::string wholeFinding(const Finding& finding);

}  // namespace kavu
