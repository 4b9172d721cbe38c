// What an operation is about to change, cell by cell, before it is done. Where the operation lets
// the user choose, each change has a tick.
#pragma once

#include "app/framework/HelpedDialog.h"

#include <string>
#include <vector>

#include <QAbstractTableModel>

class QBoxLayout;
class QLabel;
class QPlainTextEdit;
class QTableView;

namespace kavu {

struct ShownChange {
    std::string name{};    ///< of the measurement
    std::string field{};   ///< its label
    std::string before{};  ///< with real line breaks, as all texts here
    std::string after{};
    std::string remark{};  ///< as a rule that the new value breaks
    bool isTicked = true;
};

struct ChangesSetup {
    const char* resourceName = "";
    std::string title{};
    std::string text{};  ///< above the list
    bool hasTicks = false;
};

class ChangeModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    enum Column { kName, kField, kBefore, kAfter, kRemark, kColumns };

    ChangeModel(std::vector<ShownChange> changes, bool hasTicks, QObject* parent);

    [[nodiscard]] const std::vector<ShownChange>& changes() const { return changes_; }
    [[nodiscard]] bool hasRemarks() const;
    [[nodiscard]] bool hasTicks() const { return hasTicks_; }
    void tickAll(bool on);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

  private:
    std::vector<ShownChange> changes_;
    bool hasTicks_;
};

class ChangesDialog : public HelpedDialog {
    Q_OBJECT
  public:
    ChangesDialog(FormContext& form, const ChangesSetup& setup, std::vector<ShownChange> changes,
                  QWidget* parent);

    /// In the order in which they were given.
    [[nodiscard]] const std::vector<ShownChange>& changes() const { return model_->changes(); }

  private:
    void makeList();
    void makeTickButtons(QBoxLayout& row);
    void showCount();
    void showCurrent();

    ChangeModel* model_ = nullptr;
    QTableView* list_ = nullptr;
    QPlainTextEdit* current_ = nullptr;  ///< the values of the current change in full
    QLabel* count_ = nullptr;
};

}  // namespace kavu
