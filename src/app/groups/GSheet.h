// The sheet over the general information of a document.
#pragma once

#include "app/framework/EditableList.h"
#include "app/framework/FieldForm.h"
#include "app/framework/PropertySheet.h"
#include "groups/GGroup.h"
#include "groups/SourceEdit.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

class QPushButton;

namespace kavu {

class IdentifiedList;

/// Program information: its fields, and the dates that fill themselves.
class ProgramPage : public FieldPage {
    Q_OBJECT
  public:
    ProgramPage(FormContext& form, FieldValues& values, QWidget* parent = nullptr);

  private:
    void fillDatesFor(const QString& code);
};

class ContactPage : public PropertyPage {
    Q_OBJECT
  public:
    ContactPage(FormContext& form, GroupRow& record, QWidget* parent = nullptr);

    void load() override;
    [[nodiscard]] bool store() override;

  private:
    GroupRow& record_;
    std::vector<GroupRow> before_;
    IdentifiedList* list_ = nullptr;
};

/// What the list of data sources does to the document at once.
struct SourceDeeds {
    /// Whether a new name of a source is one for the row alone.
    std::function<NameChange(const std::string& oldName, const std::string& newName)> askName{};
    std::function<bool(const std::string& oldName, const std::string& newName)> rename{};
    /// A source that is in the document; others are just rows.
    std::function<bool(const std::string& name)> isListed{};
    std::function<bool(const std::string& name)> erase{};
    /// Opens the transmission or the recorder sheet.
    std::function<bool(const std::string& name, bool isRadio)> editDefinition{};
};

class SourcePage : public PropertyPage {
    Q_OBJECT
  public:
    SourcePage(FormContext& form, GroupRow& record, SourceDeeds deeds, QWidget* parent = nullptr);

    void load() override;
    [[nodiscard]] bool store() override;

  signals:
    /// The document has been changed, whatever becomes of the sheet.
    void documentChanged();

  private:
    [[nodiscard]] std::optional<ListRow> editRow(int row, const ListRow& before);
    [[nodiscard]] bool mayDelete(int row);
    void updateDefinitionButton();
    void editDefinition();

    GroupRow& record_;
    SourceDeeds deeds_;
    ListSetup setup_;
    EditableList* list_ = nullptr;
    QPushButton* definition_ = nullptr;
};

class GeneralSheet : public PropertySheet {
    Q_OBJECT
  public:
    GeneralSheet(FormContext& form, DocumentContext& document, EditedGroup group, SourceDeeds deeds,
                 QWidget* parent = nullptr);

    /// The list of data sources has changed the document, whatever became of the sheet.
    [[nodiscard]] bool changedElsewhere() const { return changedElsewhere_; }

  private:
    EditedGroup group_;
    bool changedElsewhere_ = false;
};

/// Reads the group and runs the sheet over it. True if the document has changed.
bool editGeneral(FormContext& form, SourceParts parts);

}  // namespace kavu
