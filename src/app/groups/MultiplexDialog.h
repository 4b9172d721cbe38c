// The dialog over the multiplex/modulation group of a data source.
#pragma once

#include "app/framework/PropertySheet.h"
#include "groups/MGroup.h"
#include "groups/SourceEdit.h"

#include <map>
#include <memory>
#include <optional>
#include <vector>

class QGroupBox;
class QPushButton;

namespace kavu {

class FieldForm;
class IdentifiedList;

class MultiplexPage : public PropertyPage {
    Q_OBJECT
  public:
    /// The group has been read by `loadMultiplex`; a rename of a link that it names is done at
    /// once, in the whole document.
    MultiplexPage(FormContext& form, SourceParts parts, MultiplexGroup group,
                  QWidget* parent = nullptr);

    void load() override;
    /// Renames the link, too, if the name of the baseband signal became a link's name only by a
    /// change of the signal type.
    [[nodiscard]] bool validate() override;
    [[nodiscard]] bool store() override;
    [[nodiscard]] const MultiplexGroup& group() const { return group_; }

  signals:
    /// A data link has another name now, whatever becomes of the dialog.
    void linkRenamed();

  private:
    QWidget* makeNameBox();
    QWidget* makeListBox();
    void showName();
    void fieldEdited(const QString& code);
    void editName();
    /// Checks the name of a signal that is a link; false if it cannot have it. `known` is the name
    /// that the document has for the link of the signal: if there is one, the link is renamed.
    [[nodiscard]] bool takeLinkName(const std::string& known, const std::string& newName);
    [[nodiscard]] std::string knownLinkOf(std::size_t fileRow) const;
    /// Checks the name in the dialog over a row; `known` as above.
    [[nodiscard]] bool mayHaveName(const std::vector<std::string>& before,
                                   const std::vector<std::string>& now, std::size_t fileRow);
    [[nodiscard]] std::vector<std::string> shownRow(const GroupRow& row) const;
    [[nodiscard]] std::optional<std::vector<std::string>> editRow(
        int index, const std::vector<std::string>& before);
    void takeRows();
    void showRows();

    SourceParts parts_;
    MultiplexGroup group_;
    FieldForm* fields_ = nullptr;
    QGroupBox* nameBox_ = nullptr;
    QPushButton* name_ = nullptr;
    IdentifiedList* rows_ = nullptr;
    std::vector<std::size_t> fileRows_;  ///< by the id of a row
    /// Names that the document has for the links of the group. What is typed while the dialog is
    /// open is none, and a signal whose name was emptied still has its own.
    std::string knownLink_;
    std::map<std::size_t, std::string> knownRowLinks_;  ///< by the row of the file
};

[[nodiscard]] std::unique_ptr<PropertySheet> makeMultiplexDialog(FormContext& form,
                                                                 SourceParts parts,
                                                                 MultiplexGroup group);
/// Reads the group of a data source and runs the dialog over it. True if something changed.
bool editMultiplex(FormContext& form, SourceParts parts, const std::string& source);

}  // namespace kavu
