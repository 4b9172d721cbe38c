// "Edit Data Word Definition": one measurement at a place of the frame, with what its location
// type needs next to it.
#pragma once

#include "app/framework/EditDialog.h"
#include "pcm/edit/MeasurementEditDefinition.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QLineEdit;
class QPushButton;

namespace kavu {

class CodeBox;
class MaskControl;
class PcmFormat;
class PlacesPanel;
class ShownText;
struct WordSteps;

class EditDataWordDialog : public EditDialog {
    Q_OBJECT
  public:
    EditDataWordDialog(FormContext& form, PcmFormat& format, const WordSteps& steps,
                       WordToEdit word, QWidget* parent);
    ~EditDataWordDialog() override;

    /// The stream was changed, by OK or before it.
    [[nodiscard]] bool hasStored() const { return stored_; }
    /// The sheet of its conversion, which stores for itself, was left with OK.
    [[nodiscard]] bool hasStoredConversion() const { return conversionStored_; }

  protected:
    [[nodiscard]] bool store() override;

  private:
    [[nodiscard]] QWidget* makeFields();
    [[nodiscard]] QWidget* makeOptions();
    [[nodiscard]] QWidget* makeButtons();
    void addFieldRow(const char16_t* label, QWidget& control);
    /// In one column, or in two, which leave room for the panel below them.
    void arrangeFields(int columns);
    void fill();
    void fillTypes();
    void connectFields();
    void selectType();
    void openPanel(const std::string& type);
    void putPanelBehindFields();
    void update();

    [[nodiscard]] std::string chosenType() const;
    [[nodiscard]] std::string name() const;
    [[nodiscard]] bool isStoredName() const;
    [[nodiscard]] bool isSingle() const;
    [[nodiscard]] MeasurementDefinition entered() const;
    void keepOptions() const;

    void move();
    void deleteEditedMeasurement();
    void editConversion();
    void pickFromDatabase();

    PcmFormat& format_;
    const WordSteps& steps_;
    WordToEdit word_;
    bool stored_ = false;
    bool conversionStored_ = false;
    bool picked_ = false;
    std::string panelType_;
    int typeIndex_ = -1;  ///< before a type that is refused

    QLineEdit* name_ = nullptr;
    QComboBox* type_ = nullptr;  ///< null from 106-11 on
    CodeBox* parity_ = nullptr;
    CodeBox* parityOrder_ = nullptr;
    CodeBox* order_ = nullptr;
    QLineEdit* length_ = nullptr;
    MaskControl* mask_ = nullptr;
    CodeBox* filter_ = nullptr;  ///< null before 106-09
    QCheckBox* storeInDatabase_ = nullptr;
    QCheckBox* addRoot_ = nullptr;
    QCheckBox* addChildren_ = nullptr;
    QPushButton* conversion_ = nullptr;
    QPushButton* select_ = nullptr;
    QPushButton* move_ = nullptr;
    QPushButton* delete_ = nullptr;
    QBoxLayout* sides_ = nullptr;
    QGridLayout* fieldGrid_ = nullptr;
    std::vector<std::pair<QWidget*, QWidget*>> fieldRows_;  ///< labels and controls
    PlacesPanel* panel_ = nullptr;
};

}  // namespace kavu
