#include "app/bus/BusWindow.h"

#include "app/bus/BusRowsPanel.h"
#include "app/bus/GroupTreeEditor.h"
#include "app/framework/DialogDoor.h"
#include "app/framework/Look.h"
#include "core/talk/UserInterface.h"

#include <array>

#include <QAction>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QPushButton>
#include <QSplitter>
#include <QTreeView>
#include <QVBoxLayout>

namespace kavu {

BusWindow::BusWindow(const BusFormSetup& setup, std::function<bool()> pack, QWidget* parent)
    : EditDialog(setup.form, "1553_select_bus", QStringLiteral("Edit Bus Attributes"), parent),
      setup_(setup),
      pack_(std::move(pack)),
      state_(BusFormState::of(setup.definition, {})),
      tree_(setup) {
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    makeFields();
    makeTree();
    makeButtons();
    layout->addWidget(look::makeDialogButtons(*this, static_cast<bool>(setup.form.help)));
    resize(sizeHint()
               .expandedTo({look::charactersWide(*this, 150), look::unit(*this) * 2 * 28})
               .boundedTo(look::roomOnScreen(*this)));
    setStatusText(&setup_.form.ui, "Edit Bus Format Information.");
}

BusWindow::~BusWindow() = default;

void BusWindow::makeFields() {
    fields_ = new FieldForm(
        setup_.form,
        std::array{busFormField(BusLevel::Group, "TA"), busFormField(BusLevel::Group, "BP")}, {},
        this);
    fields_->setValues(state_.now);
    layout()->addWidget(fields_);
    auto* const comments = fields_->addButton("TA", "comments", QStringLiteral("&Comments..."));
    connect(comments, &QPushButton::clicked, this, &BusWindow::editComments);
    connect(fields_, &FieldForm::edited, this, [this] { markChanged(); });
}

void BusWindow::makeTree() {
    auto* const parts = new QSplitter(Qt::Horizontal, this);
    parts->setObjectName(QStringLiteral("parts"));
    parts->setChildrenCollapsible(false);
    editor_ = new GroupTreeEditor(setup_.form, tree_, "buses", QStringLiteral("Buses"), parts);
    panel_ = new BusRowsPanel(setup_.definition, parts);
    parts->addWidget(editor_);
    parts->addWidget(panel_);
    parts->setStretchFactor(0, 1);
    parts->setStretchFactor(1, 1);
    static_cast<QVBoxLayout*>(layout())->addWidget(parts, 1);
    connect(editor_->tree()->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &BusWindow::showRows);
    connect(editor_, &GroupTreeEditor::changed, this, [this] {
        showRows();
        markChanged();
    });
    connect(panel_, &BusRowsPanel::opened, this, &BusWindow::openRow);
}

void BusWindow::makeButtons() {
    auto* const row = new QHBoxLayout;
    database_ = look::makeButton("addFromDatabase",
                                 QStringLiteral("Add &New Measurements From Database"), {}, this);
    database_->setEnabled(setup_.hasDatabase());
    connect(database_, &QPushButton::clicked, this, &BusWindow::addFromDatabase);
    row->addWidget(database_);
    auto* const reports = look::makeButton("reports", QStringLiteral("&Reports..."), {}, this);
    reports->setEnabled(static_cast<bool>(setup_.form.reports.bus));
    connect(reports, &QPushButton::clicked, this,
            [this] { setup_.form.reports.bus(*this, setup_.definition); });
    row->addWidget(reports);
    row->addStretch();
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
}

void BusWindow::showRows() {
    panel_->showRowsOf(busPlaceOf(editor_->current()));
}

/// The form of a row of the list: a step of the tree, as if it was opened there.
void BusWindow::openRow(std::size_t row) {
    TreePath path;
    for (const auto number : panel_->owner()) {
        path.push_back(number - 1);
    }
    path.push_back(row);
    editor_->select(path);
    editor_->findChild<QAction*>(QStringLiteral("edit"))->trigger();
}

void BusWindow::editComments() {
    const std::array fields = {busFormField(BusLevel::Group, "COM", "Comments:")};
    BusFieldDialog dialog(
        setup_.form, "1553_COMMENTS", QStringLiteral("Comments"), fields, state_.now,
        [this](FieldForm& form) {
            form.storeValues(state_.now);
            return true;
        },
        this);
    if (runDialog(setup_.form.door, dialog) == QDialog::Accepted) {
        markChanged();
    }
}

void BusWindow::addFromDatabase() {
    editor_->runStep("Add New Measurements From Database",
                     [this] { return setup_.addFromDatabase(*this, {}); });
    database_->setEnabled(setup_.hasDatabase());
}

bool BusWindow::store() {
    return storeBusFields(setup_, state_, *fields_) && pack_();
}

}  // namespace kavu
