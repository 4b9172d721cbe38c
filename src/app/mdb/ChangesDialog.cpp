#include "app/mdb/ChangesDialog.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/ToolTip.h"
#include "app/mdb/WindowParts.h"

#include <algorithm>

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace kavu {

namespace {

/// In characters.
constexpr int kChangesWidth = 120;

}  // namespace

// --- the list ------------------------------------------------------------------------------------

ChangeModel::ChangeModel(std::vector<ShownChange> changes, bool hasTicks, QObject* parent)
    : QAbstractTableModel(parent), changes_(std::move(changes)), hasTicks_(hasTicks) {}

bool ChangeModel::hasRemarks() const {
    return std::any_of(changes_.begin(), changes_.end(),
                       [](const ShownChange& change) { return !change.remark.empty(); });
}

void ChangeModel::tickAll(bool on) {
    for (auto& change : changes_) {
        change.isTicked = on;
    }
    if (!changes_.empty()) {
        emit dataChanged(index(0, 0), index(rowCount() - 1, 0), {Qt::CheckStateRole});
    }
}

int ChangeModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(changes_.size());
}

int ChangeModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kColumns;
}

QVariant ChangeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const auto& change = changes_[static_cast<std::size_t>(index.row())];
    if (role == Qt::CheckStateRole && hasTicks_ && index.column() == kName) {
        return static_cast<int>(change.isTicked ? Qt::Checked : Qt::Unchecked);
    }
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) {
        return {};
    }
    const std::string* const texts[] = {&change.name, &change.field, &change.before, &change.after,
                                        &change.remark};
    const auto text = toQString(*texts[index.column()]);
    if (role == Qt::ToolTipRole) {
        return text.contains(u'\n') ? QVariant(plainToolTip(text)) : QVariant();
    }
    return text.simplified();
}

QVariant ChangeModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) {
        return {};
    }
    if (orientation == Qt::Vertical) {
        return section + 1;
    }
    constexpr const char* kTitles[] = {"Measurement", "Field", "Old Value", "New Value", "Remark"};
    return QLatin1String(kTitles[section]);
}

Qt::ItemFlags ChangeModel::flags(const QModelIndex& index) const {
    const auto flags = QAbstractTableModel::flags(index);
    return hasTicks_ && index.column() == kName ? flags | Qt::ItemIsUserCheckable : flags;
}

bool ChangeModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::CheckStateRole || !hasTicks_) {
        return false;
    }
    changes_[static_cast<std::size_t>(index.row())].isTicked = value.toInt() == Qt::Checked;
    emit dataChanged(index, index, {Qt::CheckStateRole});
    return true;
}

// --- the dialog ----------------------------------------------------------------------------------

ChangesDialog::ChangesDialog(FormContext& form, const ChangesSetup& setup,
                             std::vector<ShownChange> changes, QWidget* parent)
    : HelpedDialog(form, setup.resourceName, toQString(setup.title), parent),
      model_(new ChangeModel(std::move(changes), setup.hasTicks, this)) {
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    auto* const note = look::makeNote(toQString(setup.text), this);
    note->setObjectName(QStringLiteral("text"));
    layout->addWidget(note);
    makeList();
    layout->addWidget(list_, 1);
    current_ = new QPlainTextEdit(this);
    current_->setObjectName(QStringLiteral("current"));
    current_->setAccessibleName(QStringLiteral("Old and new value in full"));
    current_->setReadOnly(true);
    current_->setTabChangesFocus(true);
    current_->setFixedHeight(std::max(current_->fontMetrics().lineSpacing() * 4 + look::unit(*this),
                                      current_->minimumSizeHint().height()));
    layout->addWidget(current_);
    auto* const row = new QHBoxLayout;
    layout->addLayout(row);
    if (setup.hasTicks) {
        makeTickButtons(*row);
    }
    count_ = look::makeNote({}, this);
    count_->setObjectName(QStringLiteral("count"));
    row->addWidget(count_, 1);
    layout->addWidget(look::makeDialogButtons(*this));
    connect(model_, &QAbstractItemModel::dataChanged, this, &ChangesDialog::showCount);
    connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &ChangesDialog::showCurrent);
    showCount();
    showCurrent();
    resize(QSize(look::charactersWide(*this, kChangesWidth), look::unit(*this) * 50)
               .boundedTo(look::roomOnScreen(*this)));
    list_->setFocus();
}

void ChangesDialog::makeList() {
    list_ = makeLongTable("changes", QStringLiteral("Changes"), *model_, 4, this);
    list_->setSelectionBehavior(QTableView::SelectRows);
    list_->verticalHeader()->setVisible(false);
    auto& head = *list_->horizontalHeader();
    // Without a highlight that changes the width of the heads; a narrow screen scrolls.
    head.setHighlightSections(false);
    const int last = model_->hasRemarks() ? ChangeModel::kRemark : ChangeModel::kAfter;
    for (int column = 0; column <= last; ++column) {
        const int wide = column == last ? 28 : (kChangesWidth - 34) / last;
        head.resizeSection(
            column, std::max(look::charactersWide(*this, wide), head.sectionSizeHint(column)));
    }
    list_->setColumnHidden(ChangeModel::kRemark, !model_->hasRemarks());
    if (model_->rowCount() > 0) {
        list_->setCurrentIndex(model_->index(0, 0));
    }
}

void ChangesDialog::makeTickButtons(QBoxLayout& row) {
    addRowButton(row, this, "tickAll", u"&Tick All", u"", [this] { model_->tickAll(true); });
    addRowButton(row, this, "untickAll", u"&Untick All", u"", [this] { model_->tickAll(false); });
}

/// The columns cut long values.
void ChangesDialog::showCurrent() {
    const auto index = list_->currentIndex();
    if (!index.isValid()) {
        current_->clear();
        return;
    }
    const auto& change = changes()[static_cast<std::size_t>(index.row())];
    current_->setPlainText(QStringLiteral("%1  |  %2\nOld value: %3\nNew value: %4")
                               .arg(toQString(change.name), toQString(change.field),
                                    toQString(change.before), toQString(change.after)));
}

void ChangesDialog::showCount() {
    const auto& all = changes();
    const auto ticked = std::count_if(all.begin(), all.end(), [this](const ShownChange& change) {
        return change.isTicked || !model_->hasTicks();
    });
    count_->setText(static_cast<std::size_t>(ticked) == all.size()
                        ? QStringLiteral("%L1 changes").arg(all.size())
                        : QStringLiteral("%L1 of %L2 changes").arg(ticked).arg(all.size()));
}

}  // namespace kavu
