// "ID Counter Definition": the counter of a word, and until 106-09 the subframes that go in
// step with it.
#pragma once

#include "app/framework/EditDialog.h"
#include "pcm/model/Subframe.h"

#include <string>
#include <vector>

class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace kavu {

class FieldForm;
class PcmFormat;

class IdCounterDialog : public EditDialog {
    Q_OBJECT
  public:
    /// REQUIRES: the word bears a counter. A new one was made just before.
    IdCounterDialog(FormContext& form, PcmFormat& format, int fwp, bool isNew, QWidget* parent);

    /// Something was done that Cancel does not take back: a subframe was edited.
    [[nodiscard]] bool streamEdited() const { return streamEdited_; }

  protected:
    [[nodiscard]] bool store() override;

  private:
    void makeSubframeList();
    void fillSubframes();
    void takeEdit(const QString& code);
    void refresh();
    void openSubframe(const QListWidgetItem* item);
    void deleteCounter();

    PcmFormat& format_;
    int fwp_;
    IdCounter counter_;
    bool refreshing_ = false;
    bool streamEdited_ = false;
    FieldForm* fields_ = nullptr;
    QListWidget* subframes_ = nullptr;
    std::vector<std::string> names_;  ///< of the subframes in the list
    QPushButton* delete_ = nullptr;
};

/// The form of the counter at a word. A new counter is deleted again on Cancel. True if the
/// stream has changed.
bool editIdCounter(FormContext& form, PcmFormat& format, QWidget* window, int fwp, bool isNew);

}  // namespace kavu
