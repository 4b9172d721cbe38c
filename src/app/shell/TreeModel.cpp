#include "app/shell/TreeModel.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/ToolTip.h"
#include "groups/DocumentTree.h"
#include "vocabulary/StreamType.h"

#include <algorithm>

namespace kavu {

namespace {

struct KindRow {
    std::string_view label;   ///< empty where the item's name is the label
    std::string_view spoken;  ///< what it is, for a screen reader, where the label is a name
    std::string_view icon;
    bool branch;
};

// By the number of the kind.
constexpr auto kKinds = std::to_array<KindRow>({
    {"General Information", "", "general", true},
    {"Transmission Attributes Sources", "", "rf", true},
    {"Recorder/Reproducer Sources", "", "tape", true},
    {"Other Data Sources", "", "folder", true},
    {"", "Data source", "rf", true},
    {"Multiplex/Modulation Definition", "", "multiplex", false},
    {"Stream Definitions", "", "list", true},
    {"", "Stream", "stream", true},
    {"", "Embedded stream", "stream", false},
    {"Data Conversion Information", "", "conversion", true},
    {"", "Measurement", "measurement", false},
    {"Airborne Hardware Information", "", "hardware", false},
    {"PAM", "", "pam", false},
    {"Unlinked Streams", "", "list", true},
    {"Vendor", "", "folder", true},
    {"", "Vendor", "hardware", false},
});
static_assert(kKinds.size() == kTreeKindCount);

// The 13 images: the groups, the kinds of streams, and the two heads without a group.
constexpr auto kImages = std::to_array<std::string_view>(
    {"general", "rf", "tape", "folder", "multiplex", "list", "stream", "bus", "packet",
     "conversion", "measurement", "hardware", "pam"});

constexpr int kGeneralCommand = 13;
constexpr int kMultiplexCommand = 16;
constexpr int kStreamCommand = 17;
constexpr int kConversionCommand = 18;
constexpr int kHardwareCommand = 19;
constexpr int kPamCommand = 21;
constexpr int kVendorCommand = 20;
// Sources go by the letters of their classes: 82 is 'R', 84 'T', 79 'O'.
constexpr int commandOfClass(char sourceClass) {
    return sourceClass;
}

const KindRow& rowOf(TreeKind kind) {
    return kKinds[static_cast<std::size_t>(kind)];
}

/// `streamKind` counts where the group of the format describes a stream of another kind.
std::string_view imageOf(const TreeItem& item, std::string_view streamKind) {
    if (item.kind == TreeKind::Source) {
        return item.command == commandOfClass('R')   ? "rf"
               : item.command == commandOfClass('T') ? "tape"
                                                     : "folder";
    }
    if (item.kind != TreeKind::Stream) {
        return rowOf(item.kind).icon;
    }
    if (item.letter == 'B' || streamKind == stream_type::kBus1553.text) {
        return "bus";
    }
    if (item.letter == 'S' || streamKind == stream_type::kPacket.text) {
        return "packet";
    }
    return item.letter == 'A' ? "pam" : rowOf(item.kind).icon;
}

}  // namespace

QString treeLabel(const TreeItem& item) {
    const auto label = rowOf(item.kind).label;
    if (label.empty() && item.name.empty() && item.group > 0) {
        return QStringLiteral("%1-%2 (no name)").arg(QLatin1Char(item.letter)).arg(item.group);
    }
    return toQString(label.empty() ? std::string_view(item.name) : label);
}

TreeModel::TreeModel(QObject* parent) : QAbstractItemModel(parent) {
    for (const auto image : kImages) {
        icons_.push_back(look::icon(toQString(image)));
    }
}

void TreeModel::clear() {
    beginResetModel();
    nodes_.clear();
    top_.clear();
    endResetModel();
}

void TreeModel::build(const DocumentTree& tree, std::vector<std::string> measurements,
                      const TreeBranches& branches) {
    beginResetModel();
    nodes_.clear();
    top_.clear();
    nodes_.reserve(measurements.size() + 16 * (tree.dataSources.size() + 1));
    if (branches.general) {
        const auto general =
            add(kNoNode, {.kind = TreeKind::General, .command = kGeneralCommand, .letter = 'G'});
        addSources(general, tree, 'R', TreeKind::TransmissionHead, true);
        addSources(general, tree, 'T', TreeKind::RecorderHead, true);
        addSources(general, tree, 'O', TreeKind::OtherHead, false);
    }
    addUnlinked(tree);
    if (branches.conversion) {
        const auto head =
            add(kNoNode, {.kind = TreeKind::ConversionHead, .command = -kConversionCommand});
        nodes_[head].children.reserve(measurements.size());
        for (auto& name : measurements) {
            add(head, {.kind = TreeKind::Measurement,
                       .command = kConversionCommand,
                       .name = std::move(name)});
        }
    }
    if (branches.hardware) {
        add(kNoNode, {.kind = TreeKind::Hardware, .command = kHardwareCommand, .letter = 'H'});
    }
    if (branches.pam) {
        add(kNoNode, {.kind = TreeKind::Pam, .command = kPamCommand});
    }
    addVendors(tree);
    endResetModel();
}

void TreeModel::addUnlinked(const DocumentTree& tree) {
    if (tree.unlinked.empty()) {
        return;
    }
    const auto head = add(kNoNode, {.kind = TreeKind::UnlinkedHead, .command = -kStreamCommand});
    for (const auto& link : tree.unlinked) {
        addStream(head, link, true);
    }
}

void TreeModel::addVendors(const DocumentTree& tree) {
    if (tree.vendors.empty()) {
        return;
    }
    const auto head = add(kNoNode, {.kind = TreeKind::VendorHead, .command = -kVendorCommand});
    for (const auto& vendor : tree.vendors) {
        add(head, {.kind = TreeKind::Vendor,
                   .command = kVendorCommand,
                   .name = vendor.name,
                   .letter = 'V',
                   .group = vendor.group});
    }
}

std::uint32_t TreeModel::add(std::uint32_t parent, TreeItem item, std::string remark) {
    const auto node = static_cast<std::uint32_t>(nodes_.size());
    auto& siblings = parent == kNoNode ? top_ : nodes_[parent].children;
    const int row = static_cast<int>(siblings.size());
    siblings.push_back(node);
    nodes_.push_back({std::move(item), std::move(remark), parent, row, {}});
    return node;
}

void TreeModel::addSources(std::uint32_t parent, const DocumentTree& tree, char sourceClass,
                           TreeKind head, bool always) {
    const auto belongs = [&](const TreeSource& source) {
        return source.sourceClass == sourceClass;
    };
    if (!always && std::none_of(tree.dataSources.begin(), tree.dataSources.end(), belongs)) {
        return;
    }
    const auto branch = add(parent, {.kind = head, .command = -commandOfClass(sourceClass)});
    for (const auto& source : tree.dataSources) {
        if (belongs(source)) {
            addSource(branch, source);
        }
    }
}

void TreeModel::addSource(std::uint32_t parent, const TreeSource& source) {
    const auto node = add(parent, {.kind = TreeKind::Source,
                                   .command = commandOfClass(source.sourceClass),
                                   .name = source.name,
                                   .letter = source.groupLetter,
                                   .group = source.group});
    add(node, {.kind = TreeKind::MultiplexDefinition,
               .command = kMultiplexCommand,
               .name = source.name,
               .letter = source.multiplex > 0 ? 'M' : '\0',
               .group = source.multiplex});
    const auto streams =
        add(node, {.kind = TreeKind::StreamsHead, .command = -kStreamCommand, .name = source.name});
    for (const auto* const links : {&source.links, &source.tracks}) {
        for (const auto& link : *links) {
            addStream(streams, link, false);
        }
    }
}

void TreeModel::addStream(std::uint32_t parent, const TreeLink& link, bool isUnlinked) {
    const auto node = add(parent,
                          {.kind = TreeKind::Stream,
                           .command = kStreamCommand,
                           .name = link.name,
                           .letter = link.letter,
                           .group = link.group,
                           .measurements = link.measurements,
                           .isUnlinked = isUnlinked},
                          link.kind);
    for (const auto& embedded : link.embedded) {
        add(node, {.kind = TreeKind::EmbeddedStream, .command = kStreamCommand, .name = embedded});
    }
}

const TreeItem& TreeModel::item(const QModelIndex& index) const {
    return nodes_[index.internalId()].item;
}

QString TreeModel::iconName(const QModelIndex& index) const {
    const auto& node = nodes_[index.internalId()];
    return toQString(imageOf(node.item, node.remark));
}

bool TreeModel::isBranch(TreeKind kind) {
    return rowOf(kind).branch;
}

QModelIndex TreeModel::indexOfNode(std::uint32_t node) const {
    return createIndex(nodes_[node].row, 0, static_cast<quintptr>(node));
}

QModelIndex TreeModel::indexOfGroup(char letter, int group) const {
    for (std::uint32_t node = 0; node < nodes_.size(); ++node) {
        const auto& item = nodes_[node].item;
        if (item.letter == letter && item.group == group) {
            return indexOfNode(node);
        }
    }
    return {};
}

QModelIndex TreeModel::indexOf(TreeKind kind, std::string_view name) const {
    for (std::uint32_t node = 0; node < nodes_.size(); ++node) {
        const auto& item = nodes_[node].item;
        if (item.kind == kind && item.name == name) {
            return indexOfNode(node);
        }
    }
    return {};
}

const std::vector<std::uint32_t>& TreeModel::childrenOf(const QModelIndex& parent) const {
    return parent.isValid() ? nodes_[parent.internalId()].children : top_;
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex& parent) const {
    const auto& children = childrenOf(parent);
    if (column != 0 || row < 0 || static_cast<std::size_t>(row) >= children.size()) {
        return {};
    }
    return createIndex(row, column, static_cast<quintptr>(children[static_cast<std::size_t>(row)]));
}

QModelIndex TreeModel::parent(const QModelIndex& child) const {
    if (!child.isValid()) {
        return {};
    }
    const auto above = nodes_[child.internalId()].parent;
    return above == kNoNode ? QModelIndex() : indexOfNode(above);
}

int TreeModel::rowCount(const QModelIndex& parent) const {
    return static_cast<int>(childrenOf(parent).size());
}

int TreeModel::columnCount(const QModelIndex&) const {
    return 1;
}

QVariant TreeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const auto& node = nodes_[index.internalId()];
    switch (role) {
        case Qt::DisplayRole:
            return treeLabel(node.item);
        case Qt::ToolTipRole:
            return node.remark.empty() ? QVariant() : plainToolTip(toQString(node.remark));
        case Qt::DecorationRole: {
            const auto at =
                std::find(kImages.begin(), kImages.end(), imageOf(node.item, node.remark));
            return icons_[static_cast<std::size_t>(at - kImages.begin())];
        }
        case Qt::AccessibleTextRole: {
            const auto spoken = rowOf(node.item.kind).spoken;
            return spoken.empty() ? treeLabel(node.item)
                                  : toQString(spoken) + u' ' + treeLabel(node.item);
        }
        case Qt::AccessibleDescriptionRole:
            return toQString(node.remark);
        default:
            return {};
    }
}

}  // namespace kavu
