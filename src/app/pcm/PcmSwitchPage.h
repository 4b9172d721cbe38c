// "Format Switch": how a stream changes its measurement list or its format, and by which word
// it tells so.
#pragma once

#include "app/framework/PropertySheet.h"

#include <string_view>

namespace kavu {

class EditableList;
class FieldForm;
class PcmAttributesModel;
struct Field;

class PcmSwitchPage : public PropertyPage {
    Q_OBJECT
  public:
    explicit PcmSwitchPage(PcmAttributesModel& model, QWidget* parent = nullptr);

    void load() override;
    [[nodiscard]] bool validate() override;
    [[nodiscard]] bool store() override;

  private:
    EditableList* makeList(std::string_view count, const char* name);
    void showRows(EditableList& list, std::string_view count);
    void storeRows(const EditableList& list, std::string_view count);
    void takeEdit(const QString& code);

    PcmAttributesModel& model_;
    FieldForm* fields_ = nullptr;
    EditableList* lists_ = nullptr;
    EditableList* formats_ = nullptr;
    bool checking_ = false;
};

}  // namespace kavu
