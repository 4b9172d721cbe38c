// The controls of the window of an import.
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/mdb/ImportWindow.h"
#include "app/mdb/LocationDialog.h"
#include "app/mdb/WindowParts.h"
#include "core/talk/ProfileSettings.h"
#include "mdb/storage/MeasurementDatabase.h"

#include <algorithm>

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QSplitter>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kavu {

ImportWindow::ImportWindow(FormContext& form, DocumentContext& document, QWidget* parent)
    : HelpedDialog(form, "IMPORTDATABASE",
                   QStringLiteral("Import External File Into KAVU Database"), parent),
      document_(document) {
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    makeMenus();
    layout->setMenuBar(menus_);
    auto* const files = new QHBoxLayout;
    files->addWidget(makeSource(), 1);
    files->addWidget(makeTarget(), 1);
    layout->addLayout(files);
    auto* const parts = new QSplitter(Qt::Horizontal, this);
    parts->setChildrenCollapsible(false);
    parts->addWidget(makeMapping());
    parts->addWidget(makePreview());
    parts->setStretchFactor(0, 2);
    parts->setStretchFactor(1, 3);
    layout->addWidget(parts, 1);
    layout->addLayout(makeButtons());
    for (auto* const button : findChildren<QPushButton*>()) {
        button->setAutoDefault(false);
    }
    resize(QSize(look::charactersWide(*this, 150), look::unit(*this) * 70)
               .boundedTo(look::roomOnScreen(*this)));
    readReferences();
    filling_ = false;
    changed();
}

ImportWindow::~ImportWindow() = default;

void ImportWindow::makeMenus() {
    menus_ = new QMenuBar(this);
    menus_->setObjectName(QStringLiteral("IMPORTDATABASEMENU"));
    auto* const menu = menus_->addMenu(QStringLiteral("&File"));
    const auto add = [&](const char* name, const char16_t* text, auto action) {
        auto* const entry = menu->addAction(QString::fromUtf16(text));
        entry->setObjectName(QLatin1String(name));
        connect(entry, &QAction::triggered, this, action);
    };
    add("openEntry", u"&Open File To Be Imported...", &ImportWindow::openSource);
    add("convertEntry", u"&Convert Database", &ImportWindow::convert);
    menu->addSeparator();
    add("loadEntry", u"&Load Previous Saved Database Settings...", &ImportWindow::loadProfile);
    add("saveEntry", u"&Save Database Settings...", &ImportWindow::saveProfile);
    menu->addSeparator();
    add("closeEntry", u"Close &Window", &QDialog::accept);
}

QWidget* ImportWindow::makeSource() {
    const auto stored = ImportSettings::read(form().settings);
    auto* const box = new QGroupBox(QStringLiteral("File To Be Imported"), this);
    auto* const grid = new QGridLayout(box);
    source_ = new QLineEdit(toQString(stored.input), box);
    source_->setObjectName(QStringLiteral("source"));
    source_->setReadOnly(true);
    auto* const open =
        look::makeButton("open", QStringLiteral("&Open..."), QStringLiteral("open"), box);
    kind_ = new QComboBox(box);
    kind_->setObjectName(QStringLiteral("kind"));
    for (const auto& each : importKinds()) {
        kind_->addItem(toQString(each.name));
    }
    kind_->setCurrentIndex(static_cast<int>(stored.kind));
    delimiter_ = new QComboBox(box);
    delimiter_->setObjectName(QStringLiteral("delimiter"));
    int number = 0;
    for (const auto& each : importDelimiters()) {
        delimiter_->addItem(toQString(each.name));
        if (each.character == stored.delimiter) {
            delimiter_->setCurrentIndex(number);
        }
        ++number;
    }
    header_ = new QCheckBox(QStringLiteral("The first line holds &names"), box);
    header_->setObjectName(QStringLiteral("header"));
    grid->addWidget(look::addLabel(QStringLiteral("Path:"), *source_), 0, 0);
    grid->addWidget(source_, 0, 1, 1, 2);
    grid->addWidget(open, 0, 3);
    grid->addWidget(look::addLabel(QStringLiteral("Kind:"), *kind_), 1, 0);
    grid->addWidget(kind_, 1, 1, 1, 3);
    grid->addWidget(look::addLabel(QStringLiteral("Delimiter:"), *delimiter_), 2, 0);
    grid->addWidget(delimiter_, 2, 1);
    grid->addWidget(header_, 2, 2, 1, 2);
    grid->setColumnStretch(1, 1);
    connect(open, &QPushButton::clicked, this, &ImportWindow::openSource);
    connect(kind_, &QComboBox::currentIndexChanged, this, [this] {
        if (!filling_) {
            readReferences();
        }
        changed();
    });
    connect(delimiter_, &QComboBox::currentIndexChanged, this, &ImportWindow::changed);
    connect(header_, &QCheckBox::toggled, this, &ImportWindow::changed);
    return box;
}

QWidget* ImportWindow::makeTarget() {
    const auto stored = ImportSettings::read(form().settings);
    auto* const box = new QGroupBox(QStringLiteral("KAVU Database"), this);
    auto* const grid = new QGridLayout(box);
    target_ =
        new QLineEdit(toQString(stored.output.empty() ? form().settings.get(setting::kDatabasePath)
                                                      : stored.output),
                      box);
    target_->setObjectName(QStringLiteral("target"));
    auto* const browse =
        look::makeButton("browse", QStringLiteral("&Browse..."), QStringLiteral("folder"), box);
    version_ = makeVersionList("version", stored.version, box);
    append_ = new QRadioButton(QStringLiteral("&Append To Existing Database"), box);
    append_->setObjectName(QStringLiteral("append"));
    append_->setChecked(!stored.overwrites);
    overwrite_ = new QRadioButton(QStringLiteral("O&verwrite Existing Database"), box);
    overwrite_->setObjectName(QStringLiteral("overwrite"));
    overwrite_->setChecked(stored.overwrites);
    grid->addWidget(look::addLabel(QStringLiteral("Path:"), *target_), 0, 0);
    grid->addWidget(target_, 0, 1);
    grid->addWidget(browse, 0, 2);
    grid->addWidget(look::addLabel(QStringLiteral("Version:"), *version_), 1, 0);
    grid->addWidget(version_, 1, 1, 1, 2);
    auto* const choices = new QHBoxLayout;
    choices->addWidget(append_);
    choices->addWidget(overwrite_);
    choices->addStretch(1);
    grid->addLayout(choices, 2, 0, 1, 3);
    grid->setColumnStretch(1, 1);
    version_->setMinimumContentsLength(20);
    version_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    connect(browse, &QPushButton::clicked, this, &ImportWindow::chooseTarget);
    connect(target_, &QLineEdit::editingFinished, this, [this] {
        known_.reset();
        changed();
    });
    connect(version_, &QComboBox::currentIndexChanged, this, [this] {
        known_.reset();
        readReferences();
        changed();
    });
    connect(overwrite_, &QRadioButton::toggled, this, &ImportWindow::changed);
    return box;
}

namespace {

QTableWidget* makeImportTable(const char* name, const QString& spoken, QWidget* parent) {
    auto* const table = new QTableWidget(parent);
    table->setObjectName(QLatin1String(name));
    table->setAccessibleName(spoken);
    table->setWordWrap(false);
    table->setTabKeyNavigation(false);
    table->setSelectionBehavior(QTableWidget::SelectRows);
    table->setSelectionMode(QTableWidget::SingleSelection);
    table->setEditTriggers(QTableWidget::NoEditTriggers);
    table->verticalHeader()->setVisible(false);
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() +
                                                   look::unit(*table));
    table->horizontalHeader()->setStretchLastSection(true);
    table->setMinimumHeight(look::unit(*table) * 10);
    table->setMinimumWidth(look::charactersWide(*table, 34));
    return table;
}

}  // namespace

QWidget* ImportWindow::makeMapping() {
    auto* const part = new QWidget(this);
    auto* const column = new QVBoxLayout(part);
    look::arrangePart(*column, *part);
    mapping_ = makeImportTable("mapping", QStringLiteral("Where the value of each field is"), part);
    mapping_->setColumnCount(3);
    mapping_->setColumnWidth(0, look::charactersWide(*this, 5));
    mapping_->horizontalHeader()->setStretchLastSection(false);  // the names of the fields are long
    column->addWidget(mapping_, 1);
    auto* const row = new QHBoxLayout;
    const auto add = [&](const char* name, const char16_t* text, const char16_t* icon,
                         auto action) { addRowButton(*row, this, name, text, icon, action); };
    add("edit", u"&Edit", u"edit", &ImportWindow::editReference);
    add("clear", u"&Clear", u"", &ImportWindow::clearReference);
    add("match", u"&Match Names", u"", &ImportWindow::matchNames);
    row->addStretch(1);
    column->addLayout(row);
    connect(mapping_, &QTableWidget::cellDoubleClicked, this, &ImportWindow::editReference);
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_F2}) {
        auto* const shortcut = new QShortcut(QKeySequence(key), mapping_);
        shortcut->setContext(Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, this, &ImportWindow::editReference);
    }
    auto* const remove = new QShortcut(QKeySequence(Qt::Key_Delete), mapping_);
    remove->setContext(Qt::WidgetShortcut);
    connect(remove, &QShortcut::activated, this, &ImportWindow::clearReference);
    return part;
}

QWidget* ImportWindow::makePreview() {
    auto* const part = new QWidget(this);
    auto* const column = new QVBoxLayout(part);
    look::arrangePart(*column, *part);
    preview_ = makeImportTable("preview", QStringLiteral("The first rows as they come out"), part);
    column->addWidget(preview_, 1);
    state_ = look::makeNote({}, part);
    state_->setObjectName(QStringLiteral("state"));
    column->addWidget(state_);
    return part;
}

QLayout* ImportWindow::makeButtons() {
    auto* const row = new QHBoxLayout;
    const auto add = [&](const char* name, const char16_t* text, const char16_t* icon,
                         auto action) { addRowButton(*row, this, name, text, icon, action); };
    add("load", u"&Load Settings...", u"open", &ImportWindow::loadProfile);
    add("save", u"&Save Settings...", u"save", &ImportWindow::saveProfile);
    add("fields", u"Show &Dbase Fields", u"list", &ImportWindow::showFields);
    row->addStretch(1);
    add("convert", u"Con&vert Database", u"import", &ImportWindow::convert);
    add("close", u"Close &Window", u"", &QDialog::accept);
    return row;
}

}  // namespace kavu
