// The form of one row of packets: a source packet, its comment, a measurement, a location.
#pragma once

#include "app/framework/EditDialog.h"
#include "bus/packet/PacketEdit.h"
#include "vocabulary/Field.h"

#include <span>
#include <string>
#include <vector>

namespace kavu {

class FieldForm;

enum class PacketForm { Row, NewRow, Comment };

class PacketRowDialog : public EditDialog {
    Q_OBJECT
  public:
    /// The form of the row at a place, of a new one in it, or of the comment of a packet.
    PacketRowDialog(FormContext& form, PacketEdit& edit, const GroupPlace& place, PacketForm which,
                    QWidget* parent);

    [[nodiscard]] FieldForm& fields() const { return *fields_; }

  protected:
    [[nodiscard]] bool store() override;

  private:
    struct Opened;
    PacketRowDialog(FormContext& form, PacketEdit& edit, const GroupPlace& place,
                    const Opened& opened, QWidget* parent);
    [[nodiscard]] static Opened open(PacketEdit& edit, const GroupPlace& place, PacketForm which);

    PacketEdit& edit_;
    GroupPlace place_;
    bool isNew_;
    std::vector<Field> columns_;
    std::vector<std::string> before_;  ///< by column
    FieldForm* fields_ = nullptr;
};

/// A list of packets shows its first entry for a value that is missing, and writes nothing unless
/// an entry is chosen.
void showFirstEntries(FieldForm& form, std::span<const Field> fields);

}  // namespace kavu
