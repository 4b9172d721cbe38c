#include "app/framework/SelectDialogs.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/RowModel.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QTreeView>
#include <QVBoxLayout>

namespace kavu {

namespace {

/// From this many rows on there is a field to filter by.
constexpr int kManyRows = 15;

class RowSorter : public QSortFilterProxyModel {
  public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

  protected:
    [[nodiscard]] bool lessThan(const QModelIndex& a, const QModelIndex& b) const override {
        const auto& rows = static_cast<const RowModel&>(*sourceModel()).rows();
        const auto cell = [&](const QModelIndex& index) -> const std::string& {
            return rows[static_cast<std::size_t>(index.row())]
                       [static_cast<std::size_t>(index.column())];
        };
        return cellLess(cell(a), cell(b), true);
    }
};

void fitColumns(QTreeView& view, const QWidget& dialog) {
    int width = 0;
    for (int column = 0; column < view.model()->columnCount(); ++column) {
        view.resizeColumnToContents(column);
        const int wanted =
            std::clamp(view.columnWidth(column) + look::unit(dialog) * 2,
                       look::charactersWide(dialog, 8), look::charactersWide(dialog, 50));
        view.setColumnWidth(column, wanted);
        width += wanted;
    }
    view.setMinimumWidth(std::clamp(width + look::unit(dialog) * 4,
                                    look::charactersWide(dialog, 44),
                                    look::charactersWide(dialog, 110)));
    view.setMinimumHeight(look::unit(dialog) * 2 * 12);
}

}  // namespace

SelectDialog::SelectDialog(const TablePrompt& prompt, bool several, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("SelectFromTable"));
    setWindowTitle(prompt.title.empty() ? QStringLiteral("Make Selection")
                                        : toQString(prompt.title));
    auto* model = new RowModel(prompt.columns, this);
    model->setRows(prompt.rows);
    sorted_ = new RowSorter(this);
    sorted_->setSourceModel(model);
    sorted_->setFilterKeyColumn(-1);
    sorted_->setFilterCaseSensitivity(Qt::CaseInsensitive);

    auto* layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    view_ = new QTreeView(this);
    view_->setObjectName(QStringLiteral("rows"));
    view_->setModel(sorted_);
    view_->setRootIsDecorated(false);
    view_->setUniformRowHeights(true);
    view_->setAlternatingRowColors(true);
    view_->setAllColumnsShowFocus(true);
    view_->setSelectionMode(several ? QTreeView::ExtendedSelection : QTreeView::SingleSelection);
    layout->addWidget(look::addLabel(several
                                         ? QStringLiteral("Select one or more of the following:")
                                         : QStringLiteral("Select one of the following:"),
                                     *view_));
    QLineEdit* filter = nullptr;
    if (model->rowCount() > kManyRows) {
        filter = makeFilter();
        layout->addWidget(filter);
    }
    layout->addWidget(view_, 1);
    auto* buttons = look::makeDialogButtons(*this);
    layout->addWidget(buttons);
    if (filter != nullptr) {
        // Works only once there is a model set for the view.
        setTabOrder(filter, view_);
    }

    auto* ok = buttons->button(QDialogButtonBox::Ok);
    connect(view_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this, ok] { ok->setEnabled(view_->selectionModel()->hasSelection()); });
    connect(view_, &QTreeView::activated, this, &SelectDialog::accept);
    view_->setCurrentIndex(sorted_->index(0, 0));
    ok->setEnabled(view_->selectionModel()->hasSelection());
    // The order of the caller stays until a head is clicked.
    view_->header()->setSortIndicator(-1, Qt::AscendingOrder);
    view_->setSortingEnabled(true);
    fitColumns(*view_, *this);
    view_->setFocus();
}

QLineEdit* SelectDialog::makeFilter() {
    auto* filter = new QLineEdit(this);
    filter->setObjectName(QStringLiteral("filter"));
    filter->setAccessibleName(QStringLiteral("Filter"));
    filter->setPlaceholderText(QStringLiteral("Filter"));
    filter->setClearButtonEnabled(true);
    filter->addAction(look::icon(QStringLiteral("search")), QLineEdit::LeadingPosition);
    connect(filter, &QLineEdit::textChanged, this, [this](const QString& text) {
        sorted_->setFilterFixedString(text);
        if (!view_->selectionModel()->hasSelection()) {
            // What was selected has gone: Enter takes the first that is left.
            view_->setCurrentIndex(sorted_->index(0, 0));
        }
    });
    return filter;
}

std::vector<int> SelectDialog::rows() const {
    std::vector<int> chosen;
    for (const auto& index : view_->selectionModel()->selectedRows()) {
        chosen.push_back(sorted_->mapToSource(index).row());
    }
    std::sort(chosen.begin(), chosen.end());
    return chosen;
}

ChoiceDialog::ChoiceDialog(const std::string& title, const std::vector<std::string>& choices,
                           QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("ChooseFromList"));
    setWindowTitle(title.empty() ? QStringLiteral("Make Selection") : toQString(title));
    look::arrangeWindow(*new QVBoxLayout(this), *this);
    if (choices.size() == 2) {
        makeButtons(choices);
    } else {
        makeList(choices);
    }
}

void ChoiceDialog::select(int choice) {
    if (auto* const list = findChild<QListWidget*>(QStringLiteral("choices"))) {
        list->setCurrentRow(std::clamp(choice, 0, list->count() - 1));
    }
}

void ChoiceDialog::makeButtons(const std::vector<std::string>& choices) {
    auto* text = new QLabel(windowTitle(), this);
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    text->setMinimumWidth(look::charactersWide(*this, 40));
    layout()->addWidget(text);
    auto* row = new QHBoxLayout;
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    row->addStretch();
    for (int i = 0; i < static_cast<int>(choices.size()); ++i) {
        QString shown = toQString(choices[static_cast<std::size_t>(i)]);
        auto* button = look::makeButton(i == 0 ? "choice0" : "choice1",
                                        shown.replace(u'&', QStringLiteral("&&")), {}, this);
        button->setAutoDefault(true);
        connect(button, &QPushButton::clicked, this, [this, i] {
            choice_ = i;
            accept();
        });
        row->addWidget(button);
    }
}

void ChoiceDialog::makeList(const std::vector<std::string>& choices) {
    auto* list = new QListWidget(this);
    list->setObjectName(QStringLiteral("choices"));
    list->addItems(toQStrings(choices));
    list->setUniformItemSizes(true);
    list->setMinimumWidth(look::charactersWide(*this, 40));
    const int lines = std::clamp(static_cast<int>(choices.size()), 4, 16);
    list->setMinimumHeight(lines * list->sizeHintForRow(0) + look::unit(*this));
    layout()->addWidget(look::addLabel(QStringLiteral("Select one of the following:"), *list));
    layout()->addWidget(list);
    auto* buttons = look::makeDialogButtons(*this);
    layout()->addWidget(buttons);
    list->setCurrentRow(0);
    buttons->button(QDialogButtonBox::Ok)->setEnabled(!choices.empty());
    connect(list, &QListWidget::itemActivated, this, &ChoiceDialog::accept);
    connect(this, &QDialog::accepted, this, [this, list] { choice_ = list->currentRow(); });
    list->setFocus();
}

QuestionDialog::QuestionDialog(const ChoicePrompt& prompt, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("Question"));
    setWindowTitle(toQString(prompt.title));
    auto* const column = new QVBoxLayout(this);
    look::arrangeWindow(*column, *this);
    makeText(*column, prompt.text);
    column->addSpacing(look::unit(*this));
    QPushButton* preferred = nullptr;
    for (int i = 0; i < static_cast<int>(prompt.choices.size()); ++i) {
        const auto name = "choice" + std::to_string(i);
        auto* const button = look::makeButton(
            name.c_str(), toQString(prompt.choices[static_cast<std::size_t>(i)]), {}, this);
        connect(button, &QPushButton::clicked, this, [this, i] {
            choice_ = i;
            accept();
        });
        column->addWidget(button);
        preferred = i == prompt.defaultChoice ? button : preferred;
    }
    if (prompt.defaultChoice < 0) {
        preferred = look::makeButton("cancel", QStringLiteral("Cancel"), {}, this);
        connect(preferred, &QPushButton::clicked, this, &QDialog::reject);
        column->addWidget(preferred, 0, Qt::AlignRight);
    }
    for (auto* const button : findChildren<QPushButton*>()) {
        button->setAutoDefault(true);
    }
    if (preferred != nullptr) {
        preferred->setDefault(true);
        // Enter takes what has the keyboard.
        preferred->setFocus();
    }
}

void QuestionDialog::makeText(QVBoxLayout& column, const std::string& question) {
    auto* const head = new QHBoxLayout;
    head->setSpacing(look::unit(*this) * 2);
    head->addWidget(look::makeSymbol(QStringLiteral("question"), look::unit(*this) * 4, this), 0,
                    Qt::AlignTop);
    auto* const text = new QLabel(toQString(question), this);
    text->setObjectName(QStringLiteral("text"));
    // Texts hold names from files: they are never read as markup.
    text->setTextFormat(Qt::PlainText);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    text->setWordWrap(true);
    text->setMinimumWidth(look::charactersWide(*this, 64));
    head->addWidget(text, 1);
    column.addLayout(head);
}

}  // namespace kavu
