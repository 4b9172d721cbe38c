#include "app/framework/FindingModel.h"

#include "app/framework/QtText.h"
#include "app/framework/ToolTip.h"
#include "core/text/Printf.h"

#include <algorithm>
#include <iterator>

namespace kavu {

namespace {

QString cellText(const Finding& finding, int column) {
    switch (column) {
        case FindingModel::kNumber:
            return finding.id > 0 ? QString::number(finding.id) : QString();
        case FindingModel::kPlace:
            return toQString(placeText(finding.place));
        case FindingModel::kSource:
            return toQString(finding.source);
        default:
            // A row is one line.
            return toQString(finding.text).simplified();
    }
}

}  // namespace

void FindingModel::setFindings(std::vector<Finding> findings) {
    beginResetModel();
    findings_ = std::move(findings);
    endResetModel();
}

void FindingModel::append(std::vector<Finding> findings) {
    if (findings.empty()) {
        return;
    }
    beginResetModel();
    std::move(findings.begin(), findings.end(), std::back_inserter(findings_));
    endResetModel();
}

void FindingModel::removeSource(const std::string& source) {
    beginResetModel();
    std::erase_if(findings_, [&](const Finding& finding) { return finding.source == source; });
    endResetModel();
}

bool FindingModel::isEmptyColumn(int column) const {
    return std::all_of(findings_.begin(), findings_.end(), [column](const Finding& finding) {
        return cellText(finding, column).isEmpty();
    });
}

int FindingModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(findings_.size());
}

int FindingModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kText + 1;
}

QVariant FindingModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    const auto& finding = findings_[static_cast<std::size_t>(index.row())];
    switch (role) {
        case Qt::DisplayRole:
            return cellText(finding, index.column());
        case Qt::ToolTipRole:
            return plainToolTip(toQString(finding.text));
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(
                Qt::AlignVCenter | (index.column() == kNumber ? Qt::AlignRight : Qt::AlignLeft));
        default:
            return {};
    }
}

QVariant FindingModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    switch (section) {
        case kNumber:
            return QStringLiteral("Number");
        case kPlace:
            return QStringLiteral("Place");
        case kSource:
            return QStringLiteral("From");
        default:
            return QStringLiteral("Message");
    }
}

std::string wholeFinding(const Finding& finding) {
    std::string text;
    if (finding.id > 0) {
        text = formatPrintf("KAVU Error #%d\n", finding.id);
    }
    text += finding.text;
    if (!finding.commands.empty()) {
        text += "\n\nLast TMATS commands read: " + finding.commands;
    }
    return text;
}

}  // namespace kavu
