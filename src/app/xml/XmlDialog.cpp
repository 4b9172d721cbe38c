#include "app/xml/XmlDialog.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/RowModel.h"
#include "core/talk/FilePrompts.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace kavu {

XmlDialog::XmlDialog(FormContext& form, XmlDialogSetup setup, QWidget* parent)
    : HelpedDialog(form, setup.resourceName, toQString(setup.title), parent),
      setup_(std::move(setup)) {
    auto* const column = new QVBoxLayout(this);
    look::arrangeWindow(*column, *this);
    addInput(*column);
    addLinks(*column);
    addLosses(*column);
    addOutput(*column);
    addButtons(*column);
    column->addStrut(look::charactersWide(*this, 72));
    showLosses();
}

void XmlDialog::addInput(QVBoxLayout& column) {
    auto* const input = new QLineEdit(toQString(setup_.input), this);
    input->setObjectName(QStringLiteral("input"));
    input->setReadOnly(true);
    column.addWidget(look::addKeyLabel(toQString(setup_.inputLabel), *input));
    column.addWidget(input);
    schema_ = new QCheckBox(QStringLiteral("As the &standard's schema has it"), this);
    schema_->setObjectName(QStringLiteral("schema"));
    schema_->setToolTip(
        QStringLiteral("The namespace, names and values of the public schema of "
                       "106-11, in place of the default form"));
    schema_->setChecked(setup_.dialect == XmlDialect::Schema);
    connect(schema_, &QCheckBox::toggled, this, &XmlDialog::showLosses);
    column.addWidget(schema_);
}

void XmlDialog::addLinks(QVBoxLayout& column) {
    // One link is all of them.
    if (setup_.links.size() < 2) {
        return;
    }
    constexpr int kShownLinks = 4;
    links_ = new QListWidget(this);
    links_->setObjectName(QStringLiteral("links"));
    for (const auto& link : setup_.links) {
        auto* const item = new QListWidgetItem(toQString(link), links_);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Checked);
    }
    links_->setCurrentRow(0);
    links_->setMinimumHeight(kShownLinks * links_->sizeHintForRow(0) + look::unit(*this));
    connect(links_, &QListWidget::itemChanged, this, &XmlDialog::showLosses);
    column.addWidget(look::addKeyLabel(QStringLiteral("&Data links to export:"), *links_));
    column.addWidget(links_, 1);
}

void XmlDialog::addLosses(QVBoxLayout& column) {
    constexpr int kShownLosses = 6;
    losses_ = new RowModel({setup_.lossColumn, "How Many"}, this);
    losses_->setNumeric(1);
    auto* const list = new QTreeView(this);
    list->setObjectName(QStringLiteral("losses"));
    list->setModel(losses_);
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setAlternatingRowColors(true);
    list->setAllColumnsShowFocus(true);
    list->setTextElideMode(Qt::ElideLeft);  // the end of a path tells most
    list->header()->setStretchLastSection(false);
    list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    list->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    list->setMinimumHeight(look::unit(*this) * 3 * kShownLosses);
    summary_ = look::addLabel({}, *list);
    summary_->setObjectName(QStringLiteral("summary"));
    summary_->setTextFormat(Qt::PlainText);
    summary_->setWordWrap(true);
    list->setAccessibleName(QStringLiteral("What is lost in this form"));
    lossList_ = list;
    column.addWidget(summary_);
    column.addWidget(list, 2);
}

void XmlDialog::addOutput(QVBoxLayout& column) {
    output_ = new QLineEdit(toQString(setup_.output.path), this);
    output_->setObjectName(QStringLiteral("output"));
    column.addWidget(look::addKeyLabel(toQString(setup_.outputLabel), *output_));
    auto* const row = new QHBoxLayout;
    row->addWidget(output_, 1);
    auto* const button =
        look::makeButton("browse", QStringLiteral("&Browse..."), QStringLiteral("folder"), this);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, &XmlDialog::browse);
    row->addWidget(button);
    column.addLayout(row);
}

void XmlDialog::addButtons(QVBoxLayout& column) {
    auto* const buttons = look::makeDialogButtons(*this, true);
    buttons->button(QDialogButtonBox::Ok)->setText(toQString(setup_.accept));
    auto* const help = buttons->button(QDialogButtonBox::Help);
    help->setEnabled(static_cast<bool>(form().help));
    connect(buttons, &QDialogButtonBox::helpRequested, this,
            [this] { form().help(setup_.resourceName); });
    column.addWidget(buttons);
}

XmlDialect XmlDialog::dialect() const {
    return schema_->isChecked() ? XmlDialect::Schema : XmlDialect::Classic;
}

std::string XmlDialog::output() const {
    const auto path = toBytes(output_->text().trimmed());
    return path.empty() ? path : withExtension(path, setup_.output.extension);
}

std::vector<std::string> XmlDialog::links() const {
    std::vector<std::string> checked;
    for (std::size_t i = 0; links_ != nullptr && i < setup_.links.size(); ++i) {
        if (links_->item(static_cast<int>(i))->checkState() == Qt::Checked) {
            checked.push_back(setup_.links[i]);
        }
    }
    return checked.size() == setup_.links.size() ? std::vector<std::string>() : checked;
}

void XmlDialog::showLosses() {
    XmlLossTable table;
    if (!setup_.fault.empty()) {
        table.summary = setup_.fault;
    } else if (links_ != nullptr && links().empty() &&
               links_->item(0)->checkState() != Qt::Checked) {
        table.summary = "No data link is chosen.";
    } else if (auto counted = setup_.losses(dialect(), links())) {
        table = std::move(*counted);
    } else {
        table.summary = "What this form loses was not counted: it was cancelled.";
    }
    summary_->setText(toQString(table.summary));
    std::vector<RowModel::Row> rows;
    rows.reserve(table.rows.size());
    for (auto& row : table.rows) {
        rows.push_back({std::move(row.what), std::move(row.count)});
    }
    lossList_->setEnabled(!rows.empty());
    losses_->setRows(std::move(rows));
}

void XmlDialog::browse() {
    auto prompt = setup_.output;
    prompt.path = output();
    if (const auto choice = form().ui.chooseFile(prompt)) {
        output_->setText(toQString(choice->path));
        agreed_ = choice->path;
    }
}

void XmlDialog::stay(const std::string& reason, QWidget& field) {
    showBox(&form().ui, reason, setup_.title, Icon::Warning);
    field.setFocus();
}

bool XmlDialog::mayReplace(const std::string& path) {
    if (path == agreed_) {
        return true;
    }
    const auto question = overwriteQuestion(path, {});
    return !question || showBox(&form().ui, *question, kFileExistsTitle, Icon::Question,
                                Buttons::YesNo, Button::No) == Button::Yes;
}

void XmlDialog::accept() {
    const auto path = output();
    if (links_ != nullptr && links().empty() && links_->item(0)->checkState() != Qt::Checked) {
        stay("Choose at least one data link.", *links_);
    } else if (path.empty()) {
        stay("Enter the path of the file to write.", *output_);
    } else if (const auto reason = setup_.refusal(path); !reason.empty()) {
        stay(reason, *output_);
    } else if (mayReplace(path)) {
        QDialog::accept();
    }
}

}  // namespace kavu
