// "Minor Frame Filtering": which minor frames of a stream an acquisition keeps or drops.
#pragma once

#include "app/framework/PropertySheet.h"

#include <vector>

class QPushButton;
class QTableWidget;

namespace kavu {

class FieldForm;
class PcmAttributesModel;

class PcmFilterPage : public PropertyPage {
    Q_OBJECT
  public:
    explicit PcmFilterPage(PcmAttributesModel& model, QWidget* parent = nullptr);

    void load() override;
    [[nodiscard]] bool validate() override;
    [[nodiscard]] bool store() override;

  protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;

  private:
    void makeList();
    /// One row for each frame that the stream has now; a new one is not filtered.
    void fitRows();
    void showRow(int row);
    void toggle(int row);
    void setAll(bool filtered);

    PcmAttributesModel& model_;
    FieldForm* fields_ = nullptr;
    QTableWidget* list_ = nullptr;
    QPushButton* allYes_ = nullptr;
    QPushButton* allNo_ = nullptr;
    std::vector<bool> filtered_;
};

}  // namespace kavu
