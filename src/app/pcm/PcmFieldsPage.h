// Pages of the sheet of a stream that are forms of its attributes.
#pragma once

#include "app/framework/PropertySheet.h"

#include <string>

class QRadioButton;
class QVBoxLayout;

namespace kavu {

class FieldForm;
class PcmAttributesModel;

/// The fields of one page of the vocabulary.
class PcmFieldsPage : public PropertyPage {
    Q_OBJECT
  public:
    PcmFieldsPage(PcmAttributesModel& model, const char* resourceName, const std::string& title,
                  QWidget* parent = nullptr);

    void load() override;
    [[nodiscard]] bool validate() override;
    /// The stream has it all already.
    [[nodiscard]] bool store() override { return true; }

  protected:
    /// Without its fields, for a page that has something above them.
    struct Bare {};
    PcmFieldsPage(PcmAttributesModel& model, const char* resourceName, const std::string& title,
                  Bare bare, QWidget* parent);
    void addFields();
    /// Shows what the stream has, without an edit.
    virtual void refresh();
    [[nodiscard]] PcmAttributesModel& model() const { return model_; }
    [[nodiscard]] FieldForm& fields() const { return *fields_; }
    [[nodiscard]] QVBoxLayout& column() const { return *column_; }

  private:
    void takeEdit(const QString& code);
    void updateControls();
    void offerCodes();

    PcmAttributesModel& model_;
    QVBoxLayout* column_ = nullptr;
    FieldForm* fields_ = nullptr;
    bool refreshing_ = false;
    bool refused_ = false;
};

/// "Frame Sync Pattern"
class PcmSyncPage : public PcmFieldsPage {
    Q_OBJECT
  public:
    explicit PcmSyncPage(PcmAttributesModel& model, QWidget* parent = nullptr);

  protected:
    void refresh() override;

  private:
    void fillPatterns();

    QRadioButton* binary_ = nullptr;
    QRadioButton* hexadecimal_ = nullptr;
};

}  // namespace kavu
