// Rows of a group as rows of an editable list: what the lists of all sheets share.
#pragma once

#include "app/framework/EditableList.h"
#include "groups/GroupRecord.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kavu {

/// A column for a field: its label, its limit in the edition, its choices.
[[nodiscard]] ListColumn columnOf(const Field& field, int edition);
/// Digits and nothing else, as many as the limit allows, or nothing: a command that is a number
/// has no sign.
[[nodiscard]] ValueCheck digitsCheck(std::size_t limit);
/// The values of a row as texts, and back. A cell that was not edited keeps its value, also
/// one that is no entry of its choice and shows nothing.
[[nodiscard]] ListRow cellsOf(const GroupRow& row, std::span<const Field> fields, int edition);
void takeCells(GroupRow& row, const ListRow& cells, std::span<const Field> fields, int edition);

/// A list whose rows can be distinguished, however the user sorts them.
class IdentifiedList : public EditableList {
    Q_OBJECT
  public:
    IdentifiedList(FormContext& form, const char* name, const ListSetup& setup,
                   QWidget* parent = nullptr);

    /// Shows rows; their ids are 0, 1, 2, ...
    void setIdentifiedRows(const std::vector<ListRow>& rows);
    [[nodiscard]] int idOf(int row) const;
    /// The id of the selected row, or -1.
    [[nodiscard]] int currentId() const;
    /// Without the id.
    [[nodiscard]] ListRow cellsOfRow(int row) const;

  private:
    std::optional<ListRow> editRowOf(int row, const ListRow& before);

    FormContext& form_;
    ListSetup shown_;
    int nextId_ = 0;
};

}  // namespace kavu
