#include "app/pcm/EditDataWordDialog.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/Refusals.h"
#include "app/framework/TypingRules.h"
#include "app/pcm/EditDataWordControls.h"
#include "app/pcm/FragmentPanel.h"
#include "app/pcm/MaskControl.h"
#include "app/pcm/SuperComPanel.h"
#include "app/pcm/WordFramePanel.h"
#include "app/pcm/WordSteps.h"
#include "core/TmatsDocument.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Printf.h"
#include "pcm/PcmFormat.h"
#include "vocabulary/DGroupFields.h"
#include "vocabulary/LocationTypes.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr int kNoLocationTypes = 2011;  ///< first edition without the list
constexpr int kFilterShown = 2009;

const char* resourceName(const PcmFormat& format) {
    return format.edition() >= kNoLocationTypes ? "EditDataWord" : "Pre_106_11_EditDataWord";
}

QString titleOf(const EditedPlace& place) {
    return toQString(
        formatPrintf("%s (FWP: %d  FN: %d)", "Edit Data Word Definition", place.fwp, place.fn));
}

}  // namespace

EditDataWordDialog::EditDataWordDialog(FormContext& form, PcmFormat& format, const WordSteps& steps,
                                       WordToEdit word, QWidget* parent)
    : EditDialog(form, resourceName(format), titleOf(word.place), parent),
      format_(format),
      steps_(steps),
      word_(std::move(word)) {
    auto* layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    sides_ = new QHBoxLayout;
    sides_->setSpacing(look::unit(*this) * 2);
    layout->addLayout(sides_, 1);
    auto* left = new QVBoxLayout;
    sides_->addLayout(left);
    left->addWidget(makeFields());
    left->addWidget(makeOptions());
    left->addStretch(1);
    layout->addWidget(makeButtons());
    layout->addWidget(look::makeDialogButtons(*this));
    fill();
    connectFields();
    openPanel(chosenType());
    update();
    name_->setFocus();
    name_->selectAll();
}

EditDataWordDialog::~EditDataWordDialog() = default;

QWidget* EditDataWordDialog::makeFields() {
    auto* owner = new QWidget(this);
    fieldGrid_ = new QGridLayout(owner);
    fieldGrid_->setContentsMargins(0, 0, 0, 0);
    fieldGrid_->setHorizontalSpacing(look::unit(*this));
    fieldGrid_->setVerticalSpacing(look::unit(*this) * 3 / 4);
    name_ = new QLineEdit(owner);
    name_->setObjectName(QStringLiteral("measurementName"));
    name_->setMinimumWidth(look::charactersWide(*this, 34));
    auto* rule = new TypingRule(
        32, false, [](const QString&) {}, name_);
    name_->setValidator(rule);
    connect(name_, &QLineEdit::textEdited, rule, &TypingRule::took);
    addFieldRow(u"Measurement Name:", *name_);
    if (format_.edition() < kNoLocationTypes) {
        type_ = new QComboBox(owner);
        type_->setObjectName(QStringLiteral("measurementLocationType"));
        addFieldRow(u"Measurement Location Type:", *type_);
    }
    parity_ = new CodeBox("parity", measurement_field::kParity.choices, owner);
    addFieldRow(u"Parity:", *parity_);
    parityOrder_ =
        new CodeBox("parityTransferOrder", measurement_field::kParityOrder.choices, owner);
    addFieldRow(u"Parity Transfer Order:", *parityOrder_);
    order_ =
        new CodeBox("measurementTransferOrder", measurement_field::kTransferOrder.choices, owner);
    addFieldRow(u"Measurement Transfer Order:", *order_);
    length_ = new QLineEdit(owner);
    length_->setObjectName(QStringLiteral("wordLength"));
    length_->setReadOnly(true);
    addFieldRow(u"Word Length:", *length_);
    mask_ = new MaskControl(form(), format_.context(), "bitmask", owner);
    fieldRows_.emplace_back(look::addLabel(QStringLiteral("Bitmask:"), mask_->field()), mask_);
    if (format_.edition() >= kFilterShown) {
        filter_ = new CodeBox("filtering", measurement_field::kFilterOverwrite.choices, owner);
        filter_->setEnabled(format_.edition() < kNoLocationTypes);
        addFieldRow(u"Filtering:", *filter_);
    }
    arrangeFields(1);
    return owner;
}

void EditDataWordDialog::addFieldRow(const char16_t* label, QWidget& control) {
    fieldRows_.emplace_back(look::addKeyLabel(QString::fromUtf16(label), control), &control);
}

void EditDataWordDialog::arrangeFields(int columns) {
    for (const auto& [label, control] : fieldRows_) {
        fieldGrid_->removeWidget(label);
        fieldGrid_->removeWidget(control);
    }
    int index = 0;
    for (const auto& [label, control] : fieldRows_) {
        const int column = index % columns;
        fieldGrid_->addWidget(label, index / columns, 2 * column);
        fieldGrid_->addWidget(control, index / columns, 2 * column + 1);
        ++index;
    }
    fieldGrid_->setColumnStretch(1, 1);
    fieldGrid_->setColumnStretch(3, columns > 1 ? 1 : 0);
}

QWidget* EditDataWordDialog::makeOptions() {
    auto* owner = new QWidget(this);
    auto* layout = new QGridLayout(owner);
    look::arrangePart(*layout, *owner);
    const auto makeBox = [&](const char* name, const char16_t* text) {
        auto* box = new QCheckBox(QString::fromUtf16(text), owner);
        box->setObjectName(QLatin1String(name));
        box->setAccessibleName(look::spokenName(box->text()));
        box->setEnabled(steps_.hasDatabase());
        connect(box, &QCheckBox::toggled, this, [this] { keepOptions(); });
        return box;
    };
    storeInDatabase_ = makeBox("storeInDatabase", u"&Store changes in database too?");
    addRoot_ = makeBox("autoAddRoot", u"&Root");
    addChildren_ = makeBox("autoAddChildren", u"C&hildren");
    addRoot_->setAccessibleName(QStringLiteral("Auto-Add Root"));
    addChildren_->setAccessibleName(QStringLiteral("Auto-Add Children"));
    auto* label = new QLabel(QStringLiteral("Auto-Add:"), owner);
    label->setEnabled(steps_.hasDatabase());
    label->setBuddy(addRoot_);
    layout->addWidget(storeInDatabase_, 0, 0, 1, 4);
    layout->addWidget(label, 1, 0);
    layout->addWidget(addRoot_, 1, 1);
    layout->addWidget(addChildren_, 1, 2);
    layout->setColumnStretch(3, 1);
    return owner;
}

QWidget* EditDataWordDialog::makeButtons() {
    auto* owner = new QWidget(this);
    auto* layout = new QHBoxLayout(owner);
    look::arrangePart(*layout, *owner);
    const auto make = [&](const char* name, const char16_t* text, const char16_t* icon,
                          void (EditDataWordDialog::*action)()) {
        auto* button =
            look::makeButton(name, QString::fromUtf16(text), QString::fromUtf16(icon), owner);
        connect(button, &QPushButton::clicked, this, action);
        layout->addWidget(button);
        return button;
    };
    conversion_ = make("editConversion", u"Edit Con&version Information", u"edit",
                       &EditDataWordDialog::editConversion);
    select_ = make("selectFromDatabase", u"Select Measurement &From Database", u"",
                   &EditDataWordDialog::pickFromDatabase);
    move_ = make("move", u"&Move", u"", &EditDataWordDialog::move);
    delete_ = make("deleteMeasurement", u"&Delete Measurement...", u"delete",
                   &EditDataWordDialog::deleteEditedMeasurement);
    layout->addStretch();
    return owner;
}

void EditDataWordDialog::fill() {
    const auto& cell = word_.definition.attributes;
    name_->setText(toQString(cell.name.view()));
    parity_->setCode(cell.parity.view());
    parityOrder_->setCode(cell.parityTransferOrder.view());
    order_->setCode(cell.transferOrder.view());
    const int length = format_.wordLength(word_.place.fwp);
    length_->setText(QString::number(length));
    mask_->setMask(cell.mask.view(), length);
    if (filter_ != nullptr) {
        filter_->setCode(cell.filterOverwrite.view());
    }
    const auto& settings = form().settings;
    const auto autoAdd = steps_.autoAdd ? steps_.autoAdd() : AutoAdd{};
    const QSignalBlocker quiet[] = {QSignalBlocker(storeInDatabase_), QSignalBlocker(addRoot_),
                                    QSignalBlocker(addChildren_)};
    storeInDatabase_->setChecked(settings.get(setting::kStoreInDatabase));
    addRoot_->setChecked(autoAdd.root);
    addChildren_->setChecked(autoAdd.children);
    fillTypes();
}

void EditDataWordDialog::fillTypes() {
    if (type_ == nullptr) {
        return;
    }
    const auto held =
        std::string(trimTrailingBlanks(word_.definition.attributes.locationType.view()));
    for (const auto& entry : locationTypes(format_, word_.place.fwp)) {
        type_->addItem(toQString(entry));
        if (trimTrailingBlanks(std::string_view(entry).substr(0, 4)) == held) {
            type_->setCurrentIndex(type_->count() - 1);
            typeIndex_ = type_->count() - 1;
        }
    }
    if (typeIndex_ < 0) {
        type_->setCurrentIndex(-1);
        type_->setPlaceholderText(toQString(held));
    }
}

void EditDataWordDialog::connectFields() {
    const auto edited = [this] {
        markChanged();
        update();
    };
    connect(name_, &QLineEdit::textEdited, this, edited);
    for (auto* box : {parity_, parityOrder_, order_}) {
        connect(box, &QComboBox::currentIndexChanged, this, edited);
    }
    if (filter_ != nullptr) {
        connect(filter_, &QComboBox::currentIndexChanged, this, edited);
    }
    connect(mask_, &MaskControl::changed, this, edited);
    connect(mask_, &MaskControl::formSwitched, this, [this] {
        if (panel_ != nullptr) {
            panel_->refreshMasks();
        }
    });
    if (type_ != nullptr) {
        connect(type_, &QComboBox::currentIndexChanged, this, &EditDataWordDialog::selectType);
    }
}

/// The four letters of the type, without blanks; an empty selection is the type of the word.
std::string EditDataWordDialog::chosenType() const {
    if (type_ == nullptr) {
        return std::string(location_type::kWordFrame);
    }
    if (type_->currentIndex() < 0) {
        return defaultLocationType(format_, &form().ui, word_.place.fwp).value_or("");
    }
    const auto text = toBytes(type_->currentText());
    return std::string(trimTrailingBlanks(std::string_view(text).substr(0, 4)));
}

void EditDataWordDialog::selectType() {
    const auto type = chosenType();
    if (type == location_type::kWordFrame &&
        (!checkWordFrameAllowed(format_, &form().ui, word_.place.fwp) ||
         !checkRangesPossible(format_, &form().ui, word_.place))) {
        const QSignalBlocker quiet(type_);
        type_->setCurrentIndex(typeIndex_);
        return;
    }
    typeIndex_ = type_->currentIndex();
    openPanel(type);
    markChanged();
    update();
}

void EditDataWordDialog::openPanel(const std::string& type) {
    if (type == panelType_) {
        return;
    }
    const bool hadPanel = panel_ != nullptr;
    delete panel_;
    panel_ = nullptr;
    panelType_ = type;
    if (hadPanel) {
        arrangeFields(1);
        sides_->setDirection(QBoxLayout::LeftToRight);
    }
    const auto start = startOf(format_, word_.place, type);
    if (type == location_type::kMinorFrameSupercommutated ||
        type == location_type::kSubframeSupercommutated) {
        panel_ = new SuperComPanel(form(), format_, type == location_type::kSubframeSupercommutated,
                                   start, this);
    } else if (type == location_type::kMinorFrameFragments ||
               type == location_type::kSubframeFragments) {
        panel_ = new FragmentPanel(form(), format_, type == location_type::kSubframeFragments,
                                   start, this);
    } else if (type == location_type::kWordFrame) {
        panel_ = new WordFramePanel(form(), format_, word_.place, this);
    }
    if (panel_ != nullptr) {
        auto shown = word_.definition;
        if (shown.attributes.locationType.view() != type) {
            shown.attributes.locationMode.clear();
            shown.attributes.locationCount = 1;
            shown.attributes.interval = 1;
            shown.attributes.reconstructedLength = 0;
            shown.spots = spotsOf(format_, word_.place, type);
            shown.wordFrame = rangesOf(format_, word_.place);
        }
        panel_->load(shown);
        // The ranges have so many columns that they take the whole width.
        const bool isWide = type == location_type::kWordFrame;
        arrangeFields(isWide ? 2 : 1);
        sides_->setDirection(isWide ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
        sides_->addWidget(panel_, 1);
        connect(panel_, &PlacesPanel::changed, this, [this] {
            markChanged();
            update();
        });
        // Later: the list of the panel may be in the middle of an edit.
        connect(
            panel_, &PlacesPanel::formSwitched, this,
            [this] {
                mask_->refresh();
                if (panel_ != nullptr) {
                    panel_->refreshMasks();
                }
            },
            Qt::QueuedConnection);
        panel_->show();
        putPanelBehindFields();
    }
    // The window grows and shrinks with what is next to the fields.
    if (isVisible() || hadPanel) {
        layout()->activate();
        resize(sizeHint().boundedTo(look::roomOnScreen(*this)));
    }
}

/// It was made last, and is in the middle.
void EditDataWordDialog::putPanelBehindFields() {
    QList<QWidget*> controls;
    for (auto* next = panel_->nextInFocusChain(); next != panel_ && next != nullptr;
         next = next->nextInFocusChain()) {
        if (panel_->isAncestorOf(next) && (next->focusPolicy() & Qt::TabFocus) != 0) {
            controls.append(next);
        }
    }
    QWidget* previous = addChildren_;
    for (auto* control : controls) {
        setTabOrder(previous, control);
        previous = control;
    }
}

std::string EditDataWordDialog::name() const {
    return ShownText(word_.definition.attributes.name.view()).bytesOf(name_->text());
}

bool EditDataWordDialog::isStoredName() const {
    return !word_.place.oldName.empty() && name() == word_.place.oldName;
}

bool EditDataWordDialog::isSingle() const {
    return panelType_ == location_type::kMinorFrame || panelType_ == location_type::kSubframe;
}

void EditDataWordDialog::update() {
    const bool isCounter = format_.wordType(word_.place.fwp) == WordType::IdCounter;
    conversion_->setEnabled(steps_.editConversion && !isCounter && isStoredName());
    select_->setEnabled(steps_.hasDatabase() && static_cast<bool>(steps_.save.database.select));
    move_->setVisible(isSingle());
    move_->setEnabled(isStoredName());
    delete_->setEnabled(!word_.place.oldName.empty());
    // Masks of fragments and ranges are in their lists.
    mask_->setEnabled(!panelType_.ends_with("FR"));
    if (panel_ != nullptr) {
        panel_->setMeasurementName(name());
        if (const auto mask = panel_->maskHere()) {
            mask_->setMask(*mask, format_.wordLength(word_.place.fwp));
        }
    }
}

void EditDataWordDialog::keepOptions() const {
    form().settings.set(setting::kStoreInDatabase, storeInDatabase_->isChecked());
    if (steps_.keepAutoAdd) {
        steps_.keepAutoAdd({addRoot_->isChecked(), addChildren_->isChecked()});
    }
}

MeasurementDefinition EditDataWordDialog::entered() const {
    auto definition = word_.definition;
    auto& cell = definition.attributes;
    const auto before = cell.mask.str();
    cell.name = name();
    cell.locationType = chosenType();
    cell.parity = parity_->code();
    cell.parityTransferOrder = parityOrder_->code();
    cell.transferOrder = order_->code();
    cell.mask = mask_->mask();
    if (filter_ != nullptr) {
        cell.filterOverwrite = filter_->code().substr(0, 1);
    }
    if (panel_ != nullptr) {
        panel_->store(definition);
    }
    if (panelType_ == location_type::kMinorFrameSupercommutated ||
        panelType_ == location_type::kSubframeSupercommutated) {
        for (auto& spot : definition.spots) {  // places with the same mask keep the same
            spot.mask = spot.mask == before ? std::string() : spot.mask;
        }
    }
    definition.isPicked = picked_;
    return definition;
}

bool EditDataWordDialog::store() {
    if (name_->text().contains(u';')) {
        showSemicolonRefused(form().ui);
        name_->setFocus();
        return false;
    }
    const auto definition = entered();
    auto saving = steps_.save;
    saving.autoAdd = {addRoot_->isChecked(), addChildren_->isChecked()};
    const bool byInterval =
        definition.attributes.locationMode == "I" && definition.attributes.locationType.size() == 4;
    const auto place = byInterval ? startOf(format_, word_.place, chosenType()) : word_.place;
    stored_ = saveMeasurement(format_, &form().ui, steps_.edit, saving, place, definition);
    return stored_;
}

void EditDataWordDialog::move() {
    auto definition = entered();
    stored_ = moveMeasurement(format_, &form().ui, definition.attributes);
    if (stored_) {
        if (steps_.saveFormat) {
            (void)steps_.saveFormat();
        }
        finish();
    }
}

void EditDataWordDialog::deleteEditedMeasurement() {
    stored_ = deleteMeasurement(format_, &form().ui, steps_.edit, word_.place.oldName);
    if (stored_) {
        finish();
    }
}

void EditDataWordDialog::editConversion() {
    if (steps_.editConversion(*this, word_.place.oldName, format_.wordLength(word_.place.fwp))) {
        conversionStored_ = true;
    }
}

void EditDataWordDialog::pickFromDatabase() {
    const auto record = steps_.save.database.select(&form().ui);
    if (!record) {
        update();  // there may be no database any more
        return;
    }
    name_->setText(toQString(record->name));
    parity_->setCode(record->parity);
    parityOrder_->setCode(record->parityTransferOrder);
    order_->setCode(record->transferOrder);
    mask_->setMask(record->mask, format_.wordLength(word_.place.fwp));
    picked_ = true;
    markChanged();
    update();
}

}  // namespace kavu
