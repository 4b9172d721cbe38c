// "Edit Packet Attributes": the sheet over the packet telemetry of a link. OK writes the group, if
// it is another one than before.
#pragma once

#include "app/bus/PacketTree.h"
#include "app/framework/PropertySheet.h"
#include "bus/packet/PacketEdit.h"

namespace kavu {

class FieldForm;
class GroupTreeEditor;
class IdentifiedList;

/// "Packet3": the fields of the secondary header of the transfer frame, and its measurements as
/// rows. A row without a name is one more location of the measurement above it.
class FrameHeaderPage : public PropertyPage {
    Q_OBJECT
  public:
    /// All must outlive the page.
    FrameHeaderPage(FormContext& form, DocumentContext& document, PacketGroup& group,
                    const MeasurementNames* names, QWidget* parent = nullptr);

    [[nodiscard]] IdentifiedList& list() const { return *list_; }
    void load() override;
    [[nodiscard]] bool validate() override;
    [[nodiscard]] bool store() override;

  private:
    /// The row of the group that a row of the list was made from.
    struct Origin {
        std::size_t measurement = 0;
        bool isFirst = false;                   ///< it has the name of the measurement
        std::optional<std::size_t> location{};  ///< none for a measurement without locations
    };
    [[nodiscard]] const Origin* originOf(int row) const;
    [[nodiscard]] bool mayDelete(int row);
    bool refuse(int row, const char* text);
    [[nodiscard]] std::vector<GroupRow> measurements() const;
    void addLocation(GroupRow& measurement, std::optional<std::size_t> from, int row) const;

    DocumentContext& document_;
    PacketGroup& group_;
    const MeasurementNames* names_;
    std::vector<GroupRow> original_;
    std::vector<Origin> origins_;  ///< by the id of the row
    FieldForm* fields_ = nullptr;
    IdentifiedList* list_ = nullptr;
};

class PacketSheet : public PropertySheet {
    Q_OBJECT
  public:
    /// All must outlive the sheet; `group` was loaded.
    PacketSheet(FormContext& form, DocumentContext& document, PacketGroup& group,
                const MeasurementNames* names, PacketTree::EditConversion editConversion,
                QWidget* parent = nullptr);

    [[nodiscard]] GroupTreeEditor& editor() const { return *editor_; }
    /// The group was written.
    [[nodiscard]] bool isWritten() const { return isWritten_; }

  private:
    bool write();

    FormContext& form_;
    DocumentContext& document_;
    PacketGroup& group_;
    PacketGroup before_;
    PacketEdit edit_;
    PacketTree tree_;
    GroupTreeEditor* editor_ = nullptr;
    bool isWritten_ = false;
};

}  // namespace kavu
