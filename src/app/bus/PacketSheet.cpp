#include "app/bus/PacketSheet.h"

#include "app/bus/GroupTreePage.h"
#include "app/bus/PacketRowDialog.h"
#include "app/framework/FieldForm.h"
#include "app/framework/Look.h"
#include "app/framework/SheetTabs.h"
#include "app/groups/GroupRows.h"
#include "core/TmatsDocument.h"
#include "groups/MeasurementNames.h"
#include "groups/NamesInStreams.h"

#include <algorithm>

#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr char kPacketPageKey[] = "LastPacketPage";
constexpr char kFrameHeaderTitle[] = "Transfer Frame Secondary Header";
constexpr std::size_t kMeasurementCells = 3;

const PacketFamily& frameFamily() {
    return packetFamily('T');
}

std::vector<Field> frameMeasurementFields() {
    const auto& family = frameFamily();
    return {family.name, family.parity, family.parityOrder};
}

std::vector<Field> frameLocationFields() {
    const auto& family = frameFamily();
    return {family.wordPosition, family.wordLength, family.mask, family.transferOrder,
            family.fragment};
}

/// What a new row begins with.
ListRow newCells(int edition) {
    GroupRow owner;
    const PacketEdit::Node list{PacketEdit::Node::Kind::Family, &owner, &frameFamily()};
    const auto measurement = PacketEdit::newChildOf(list);
    const auto location =
        PacketEdit::newChildOf({PacketEdit::Node::Kind::Measurement, &owner, &frameFamily()});
    auto cells = cellsOf(measurement, frameMeasurementFields(), edition);
    const auto rest = cellsOf(location, frameLocationFields(), edition);
    cells.insert(cells.end(), rest.begin(), rest.end());
    return cells;
}

ListSetup measurementList(int edition) {
    ListSetup setup;
    const auto fresh = newCells(edition);
    for (const auto& fields : {frameMeasurementFields(), frameLocationFields()}) {
        for (const auto& field : fields) {
            auto& column = setup.columns.emplace_back(columnOf(field, edition));
            column.initial = fresh[setup.columns.size() - 1];
        }
    }
    setup.mostRows = static_cast<int>(kMostMessageRows);
    setup.canMove = true;
    setup.rowDialogTitle = "Edit Measurement";
    setup.name = "Delete this Measurement";
    return setup;
}

bool isEmpty(std::span<const std::string> cells) {
    return std::all_of(cells.begin(), cells.end(),
                       [](const std::string& cell) { return cell.empty(); });
}

std::span<const std::string> locationCells(const ListRow& cells) {
    return std::span(cells).subspan(kMeasurementCells);
}

/// A row of the group that is as its row of the file was, but for its values and rows.
GroupRow sameRow(const GroupRow& row) {
    GroupRow same;
    same.values = row.values;
    same.fileRow = row.fileRow;
    same.fileRows = row.fileRows;
    return same;
}

}  // namespace

// --- The secondary header of the transfer frame ------------------------------------------------

FrameHeaderPage::FrameHeaderPage(FormContext& form, DocumentContext& document, PacketGroup& group,
                                 const MeasurementNames* names, QWidget* parent)
    : PropertyPage(form, "Packet3", kFrameHeaderTitle, parent),
      document_(document),
      group_(group),
      names_(names) {
    auto* const column = new QVBoxLayout(this);
    look::arrangeWindow(*column, *this);
    fields_ = new FieldForm(form, packetFields(), "Packet3", this);
    column->addWidget(fields_);
    auto* const box = new QGroupBox(QStringLiteral("Measurements"), this);
    auto* const inside = new QVBoxLayout(box);
    list_ = new IdentifiedList(form, "measurements", measurementList(form.edition), box);
    list_->mayDelete = [this](int row) { return mayDelete(row); };
    inside->addWidget(list_);
    inside->addWidget(look::makeNote(
        QStringLiteral("A row without a name is one more location of the measurement above it."),
        box));
    column->addWidget(box, 1);
    connect(fields_, &FieldForm::edited, this, [this] { markChanged(); });
    connect(list_, &EditableList::changed, this, [this] { markChanged(); });
}

void FrameHeaderPage::load() {
    fields_->setValues(group_.record.values);
    const auto rows = group_.record.rows(frameFamily().count.code);
    original_.assign(rows.begin(), rows.end());
    origins_.clear();
    std::vector<ListRow> all;
    const int edition = form().edition;
    const auto columns = frameMeasurementFields().size() + frameLocationFields().size();
    for (std::size_t i = 0; i < original_.size(); ++i) {
        const auto locations = original_[i].rows(frameFamily().locationCount.code);
        for (std::size_t k = 0; k < std::max<std::size_t>(1, locations.size()); ++k) {
            auto cells = k == 0 ? cellsOf(original_[i], frameMeasurementFields(), edition)
                                : ListRow(kMeasurementCells);
            if (k < locations.size()) {
                const auto rest = cellsOf(locations[k], frameLocationFields(), edition);
                cells.insert(cells.end(), rest.begin(), rest.end());
            }
            cells.resize(columns);
            all.push_back(std::move(cells));
            origins_.push_back({i, k == 0, locations.empty() ? std::nullopt : std::optional(k)});
        }
    }
    list_->setIdentifiedRows(all);
}

const FrameHeaderPage::Origin* FrameHeaderPage::originOf(int row) const {
    const int id = list_->idOf(row);
    return id < 0 || static_cast<std::size_t>(id) >= origins_.size()
               ? nullptr
               : &origins_[static_cast<std::size_t>(id)];
}

bool FrameHeaderPage::refuse(int row, const char* text) {
    showBox(&form().ui, text, kFrameHeaderTitle);
    list_->selectRow(row);
    list_->setFocus();
    return false;
}

bool FrameHeaderPage::mayDelete(int row) {
    const auto name = [this](int each) { return list_->cellsOfRow(each).front(); };
    if (!name(row).empty() && row + 1 < list_->rowCount() && name(row + 1).empty()) {
        return refuse(row,
                      "This measurement has more locations, in the rows below it. They would "
                      "become locations of the measurement above.\n\nPlease delete them first.");
    }
    return true;
}

bool FrameHeaderPage::validate() {
    if (!fields_->validate()) {
        return false;
    }
    const int stream = streamNumberOf(document_, nullptr, group_.link);
    for (int row = 0; row < list_->rowCount(); ++row) {
        const auto cells = list_->cellsOfRow(row);
        const auto& name = cells.front();
        if (name.empty() && !isEmpty(cells) &&
            (row == 0 || !isEmpty(std::span(cells).first(kMeasurementCells)))) {
            return refuse(row, row == 0 ? "The first row has no measurement name. Please enter one."
                                        : "A row without a measurement name is a location, which "
                                          "has no parity. Please enter a name.");
        }
        const auto* const origin = originOf(row);
        const bool isFormer = origin != nullptr && origin->isFirst &&
                              original_[origin->measurement].value(frameFamily().name.code) == name;
        if (!name.empty() && !isFormer && names_ != nullptr &&
            !isFreeInOtherStreams(document_, &form().ui, *names_, name, stream)) {
            list_->selectRow(row);
            return false;
        }
    }
    return true;
}

void FrameHeaderPage::addLocation(GroupRow& measurement, std::optional<std::size_t> from,
                                  int row) const {
    const auto cells = list_->cellsOfRow(row);
    const auto* const origin = originOf(row);
    GroupRow location;
    if (origin != nullptr && origin->location) {
        location = original_[origin->measurement].rows(
            frameFamily().locationCount.code)[*origin->location];
        if (origin->measurement != from) {
            // Its commands of the file stay with the measurement that it came from.
            location.fileRow = 0;
        }
    } else if (isEmpty(locationCells(cells))) {
        return;
    }
    const auto rest = locationCells(cells);
    takeCells(location, ListRow(rest.begin(), rest.end()), frameLocationFields(), form().edition);
    measurement.lists[std::string(frameFamily().locationCount.code)].push_back(std::move(location));
}

std::vector<GroupRow> FrameHeaderPage::measurements() const {
    std::vector<GroupRow> all;
    std::optional<std::size_t> from;  // where the last one came from
    for (int row = 0; row < list_->rowCount(); ++row) {
        const auto cells = list_->cellsOfRow(row);
        const auto* const origin = originOf(row);
        if (!cells.front().empty()) {
            const bool isFormer = origin != nullptr && origin->isFirst;
            from = isFormer ? std::optional(origin->measurement) : std::nullopt;
            auto& measurement = all.emplace_back(isFormer ? sameRow(original_[*from]) : GroupRow());
            measurement.lists[std::string(frameFamily().locationCount.code)];
            takeCells(measurement, ListRow(cells.begin(), cells.begin() + kMeasurementCells),
                      frameMeasurementFields(), form().edition);
        }
        if (!all.empty()) {
            addLocation(all.back(), from, row);
        }
    }
    return all;
}

bool FrameHeaderPage::store() {
    fields_->storeValues(group_.record.values);
    const std::string list(frameFamily().count.code);
    if (auto rows = measurements(); !rows.empty() || group_.record.lists.contains(list)) {
        group_.record.lists[list] = std::move(rows);
    }
    return true;
}

// --- The sheet ----------------------------------------------------------------------------------

PacketSheet::PacketSheet(FormContext& form, DocumentContext& document, PacketGroup& group,
                         const MeasurementNames* names, PacketTree::EditConversion editConversion,
                         QWidget* parent)
    : PropertySheet(form, "PacketAttributes", packetSheetTitle(group.link), kPacketPageKey, parent),
      form_(form),
      document_(document),
      group_(group),
      before_(group),
      edit_(document, group, names),
      tree_(form, group, edit_, std::move(editConversion)) {
    auto& values = group.record.values;
    const auto addFields = [&](const char* name, const char* title) {
        auto& page = static_cast<FieldPage&>(
            addPage(std::make_unique<FieldPage>(form, name, title, packetFields(), values)));
        showFirstEntries(page.fields(), packetFields());
    };
    addFields("Packet1", "Input Data");
    addFields("Packet2", "Transfer Frame Primary Header");
    addPage(std::make_unique<FrameHeaderPage>(form, document, group, names));
    auto packets = std::make_unique<GroupTreePage>(form, "Packet4", "Source Packet", tree_,
                                                   QStringLiteral("Source packets"));
    editor_ = &packets->editor();
    addPage(std::move(packets));
    addFields("Packet5", "Comments");
    showAllTabs(*this);
    setWriter([this] { return write(); });
}

bool PacketSheet::write() {
    if (group_.holdsTheSame(before_)) {
        return true;
    }
    isWritten_ = storePackets(document_, &form_.ui, group_);
    return isWritten_;
}

}  // namespace kavu
