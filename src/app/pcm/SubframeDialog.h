// "Subframe Definition", and the window with the locations of a supercommutated subframe.
#pragma once

#include "app/framework/EditDialog.h"
#include "app/framework/QtText.h"
#include "pcm/structure/SubframeRecordEdit.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QVBoxLayout;

namespace kavu {

class PcmFormat;

class SubframeDialog : public EditDialog {
    Q_OBJECT
  public:
    /// REQUIRES: the word belongs to a subframe. A new one was made just before.
    SubframeDialog(FormContext& form, PcmFormat& format, int fwp, bool isNew, QWidget* parent);

    /// Something was done that Cancel does not take back: the counter was edited.
    [[nodiscard]] bool streamEdited() const { return streamEdited_; }

  protected:
    [[nodiscard]] bool store() override;

  private:
    void makeFields(QVBoxLayout& layout);
    void fillCounters();
    void takeSupercom();
    void showLocations();
    void editLocations();
    void editCounter();
    void deleteSubframe();

    PcmFormat& format_;
    int fwp_;
    SubframeEditing editing_;
    bool streamEdited_ = false;
    std::vector<int> counters_;  ///< the indices that the list offers
    QLineEdit* name_ = nullptr;
    ShownText shownName_;
    QComboBox* counter_ = nullptr;
    QLineEdit* depth_ = nullptr;
    QComboBox* supercom_ = nullptr;
    QPushButton* locations_ = nullptr;
    QLabel* hint_ = nullptr;
};

/// The extra window of a supercommutated subframe.
class SubframeLocationsDialog : public EditDialog {
    Q_OBJECT
  public:
    SubframeLocationsDialog(FormContext& form, const PcmFormat& format, SubframeEditing& editing,
                            QWidget* parent);

  protected:
    [[nodiscard]] bool store() override;

  private:
    void makeFields(QVBoxLayout& layout);
    void makeList(QVBoxLayout& layout);
    void showWords(int selected);
    void updateControls();
    [[nodiscard]] bool everyLocation() const;
    void addWord();
    void editWord();
    void deleteWord();

    const PcmFormat& format_;
    SubframeEditing& editing_;
    std::vector<int> words_;
    QComboBox* mode_ = nullptr;
    QLineEdit* count_ = nullptr;
    QLineEdit* interval_ = nullptr;
    QListWidget* list_ = nullptr;
    QPushButton* add_ = nullptr;
    QPushButton* edit_ = nullptr;
    QPushButton* delete_ = nullptr;
};

/// The form of the subframe at a word. A new subframe is deleted again on Cancel. True if the
/// stream has changed.
bool editSubframe(FormContext& form, PcmFormat& format, QWidget* window, int fwp, bool isNew);

}  // namespace kavu
