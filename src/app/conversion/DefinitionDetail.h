// The contents of the window of a conversion type: the fields and lists of the type, from and
// to the working copy of the record.
#pragma once

#include "app/framework/EditableList.h"
#include "app/framework/FormContext.h"
#include "conversion/DefinitionSheet.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <QWidget>

namespace kavu {

class DefinitionEdit;
class FieldForm;

class DefinitionDetail : public QWidget {
    Q_OBJECT
  public:
    using QWidget::QWidget;

    /// Fills the controls from the working copy. Is no edit.
    virtual void load() = 0;
    /// Says what is wrong and puts the focus there, and gives false.
    [[nodiscard]] virtual bool validate() { return true; }
    /// Stores what was changed in the working copy; false if a file failed, which is reported.
    [[nodiscard]] virtual bool store() = 0;
    /// Values of the pages that a curve is fitted with have changed in the working copy.
    virtual void followPages() {}

  signals:
    /// The user has changed something.
    void changed();
};

/// The fields and lists that the table of the type says.
class DetailForm : public DefinitionDetail {
    Q_OBJECT
  public:
    /// `edit` outlives the form.
    DetailForm(FormContext& form, DefinitionEdit& edit, const DetailWindow& window,
               QWidget* parent);
    /// Makes and fills the controls. To be called once, when the object is complete.
    void build();

    void load() override;
    [[nodiscard]] bool validate() override;
    [[nodiscard]] bool store() override;

    [[nodiscard]] FieldForm& fields() const { return *fields_; }
    [[nodiscard]] EditableList& list(std::size_t index) const { return *lists_[index]; }

  protected:
    /// Makes the list of a table row; the caller places it.
    virtual EditableList* makeList(const EuList& list);
    [[nodiscard]] virtual DefinitionValues::Rows shownRows(const DefinitionValues::Rows& stored);
    [[nodiscard]] virtual DefinitionValues::Rows storedRows(const DefinitionValues::Rows& shown);
    virtual void fieldEdited(const std::string& /*code*/) {}
    void show(const DefinitionValues& values);

    FormContext& form_;
    DefinitionEdit& edit_;
    DetailWindow window_;

  private:
    DefinitionValues values_;
    FieldForm* fields_ = nullptr;
    std::vector<EditableList*> lists_;
};

/// The coefficients by positive or negative powers.
class CoefficientDetail : public DetailForm {
    Q_OBJECT
  public:
    /// Fits the pairs of the record into the coefficients of the working copy.
    using Derive = std::function<bool()>;
    CoefficientDetail(FormContext& form, DefinitionEdit& edit, const DetailWindow& window,
                      Derive derive, QWidget* parent);

    [[nodiscard]] bool validate() override;

  protected:
    EditableList* makeList(const EuList& list) override;
    [[nodiscard]] DefinitionValues::Rows shownRows(const DefinitionValues::Rows& stored) override;
    [[nodiscard]] DefinitionValues::Rows storedRows(const DefinitionValues::Rows& shown) override;
    void fieldEdited(const std::string& code) override;

  private:
    std::optional<ListRow> askTerm(int row, const ListRow& before);
    void numberTerms();

    Derive derive_;
};

}  // namespace kavu
