// "Update Stream From Database": which fields of a database go to the measurements of a stream.
#pragma once

#include "app/framework/HelpedDialog.h"
#include "mdb/operations/StreamUpdate.h"

#include <utility>
#include <vector>

class QCheckBox;
class QGridLayout;

namespace kavu {

class UpdateStreamDialog : public HelpedDialog {
    Q_OBJECT
  public:
    UpdateStreamDialog(FormContext& form, const std::string& database,
                       const StreamUpdateChoice& choice, QWidget* parent);

    [[nodiscard]] StreamUpdateChoice choice() const;

  private:
    QWidget* makeBox(const QString& title, std::size_t first, std::size_t last, int columns,
                     const StreamUpdateChoice& choice);
    QWidget* makeFamily(const StreamUpdateChoice& choice);

    std::vector<std::pair<std::size_t, QCheckBox*>> fields_;  ///< by the index of the field
    QCheckBox* addRoot_ = nullptr;
    QCheckBox* addChildren_ = nullptr;
};

/// Asks for the fields, shows what will change, and updates the stream with what is ticked. True if
/// it was done; false also if nothing was chosen or ticked, when only the matches are counted.
bool runStreamUpdate(FormContext& form, DatabaseWork& work, QWidget* parent);

}  // namespace kavu
