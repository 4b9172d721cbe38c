#include "app/groups/SelectSourceDialog.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/RowModel.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace kavu {

namespace {

QString listLabel(char letter) {
    switch (letter) {
        case 'T':
            return QStringLiteral("RF data sources:");
        case 'R':
            return QStringLiteral("Recorder/reproducer data sources:");
        default:
            return QStringLiteral("Data sources:");
    }
}

}  // namespace

SelectSourceDialog::SelectSourceDialog(FormContext& form, SourceParts parts, char letter,
                                       QWidget* parent)
    : QDialog(parent), form_(form), parts_(parts), letter_(letter) {
    setObjectName(QStringLiteral("SelectDataSource"));
    setWindowTitle(QStringLiteral("Select Data Source"));
    auto* layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    model_ = new RowModel({"Data Source Name", "Type", "Group"}, this);
    view_ = new QTreeView(this);
    view_->setObjectName(QStringLiteral("sources"));
    view_->setModel(model_);
    view_->setRootIsDecorated(false);
    view_->setUniformRowHeights(true);
    view_->setAlternatingRowColors(true);
    view_->setAllColumnsShowFocus(true);
    view_->setMinimumSize(look::charactersWide(*this, 56), look::unit(*this) * 2 * 9);
    layout->addWidget(look::addKeyLabel(listLabel(letter), *view_));
    layout->addWidget(view_, 1);

    auto* buttons = new QHBoxLayout;
    look::arrangePart(*buttons, *this);
    auto* create = look::makeButton("createNew", QStringLiteral("Create &New Data Source"),
                                    QStringLiteral("new"), this);
    edit_ = look::makeButton("edit", QStringLiteral("&Edit"), QStringLiteral("edit"), this);
    auto* close = look::makeButton("close", QStringLiteral("&Close"), {}, this);
    create->setAutoDefault(false);
    // A source is made with its T or R group; other groups come with it.
    create->setVisible(letter == 'T' || letter == 'R');
    close->setAutoDefault(false);
    edit_->setDefault(true);
    buttons->addWidget(create);
    buttons->addStretch();
    buttons->addWidget(edit_);
    buttons->addWidget(close);
    layout->addLayout(buttons);

    connect(view_, &QTreeView::activated, this, &SelectSourceDialog::accept);
    connect(edit_, &QPushButton::clicked, this, &SelectSourceDialog::accept);
    connect(close, &QPushButton::clicked, this, &SelectSourceDialog::reject);
    connect(create, &QPushButton::clicked, this, &SelectSourceDialog::createNew);
    fill();
    view_->setFocus();
}

void SelectSourceDialog::fill() {
    rows_ = sourcesOfGroup(parts_.context, &form_.ui, letter_);
    std::vector<RowModel::Row> shown;
    for (const auto& row : rows_) {
        shown.push_back({row.name, row.type,
                         row.index > 0 ? std::string(1, letter_) + "-" + std::to_string(row.index)
                                       : std::string()});
    }
    model_->setRows(std::move(shown));
    view_->setColumnWidth(0, look::charactersWide(*this, 36));
    view_->setColumnWidth(1, look::charactersWide(*this, 8));
    view_->setColumnWidth(2, look::charactersWide(*this, 6));
    view_->setCurrentIndex(model_->index(0, 0));
    edit_->setEnabled(!rows_.empty());
}

void SelectSourceDialog::createNew() {
    const auto before = rows_.size();
    if (!createOrImportDataSource(parts_, &form_.ui, letter_)) {
        return;
    }
    changed_ = true;
    fill();
    if (rows_.size() > before) {
        view_->setCurrentIndex(model_->index(static_cast<int>(rows_.size()) - 1, 0));
    }
}

int SelectSourceDialog::currentRow() const {
    return view_->currentIndex().isValid() ? view_->currentIndex().row() : -1;
}

std::optional<SourceRow> SelectSourceDialog::chosen() const {
    const int row = currentRow();
    if (result() != Accepted || row < 0 || row >= static_cast<int>(rows_.size())) {
        return std::nullopt;
    }
    return rows_[static_cast<std::size_t>(row)];
}

std::optional<SourceRow> selectDataSource(FormContext& form, SourceParts parts, char letter) {
    SelectSourceDialog dialog(form, parts, letter);
    runDialog(form.door, dialog);
    return dialog.chosen();
}

}  // namespace kavu
