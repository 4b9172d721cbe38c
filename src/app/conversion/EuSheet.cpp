#include "app/conversion/EuSheet.h"

#include "app/conversion/DefinitionWindow.h"
#include "app/conversion/EuDialogs.h"
#include "app/framework/FieldForm.h"
#include "app/framework/QtText.h"
#include "app/framework/Refusals.h"
#include "conversion/ConversionStore.h"
#include "conversion/DefinitionEdit.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"

#include <array>

#include <QPushButton>

namespace kavu {

namespace {

// Pages by their number.
constexpr std::size_t kMeasurement = 0;
constexpr std::size_t kInformation = 1;
constexpr std::size_t kLimits = 2;
constexpr std::size_t kTransducer = 5;
constexpr std::size_t kContact = 6;
constexpr std::size_t kComments = 7;

}  // namespace

EuSheet::EuSheet(FormContext& form, DocumentContext& document, ConversionStore& store,
                 DefinitionEdit& edit, const ConversionSheetSetup& setup, QWidget* parent)
    : PropertySheet(form, "DataConversion", euSheetTitle(edit.name()), "LastEuPage", parent),
      form_(form),
      document_(document),
      store_(store),
      edit_(edit),
      setup_(setup),
      values_(readPages(edit)) {
    addPages();
    addInformationButtons(fieldPage(kInformation));
    addOtherButtons();
    connect(&fieldPage(kInformation).fields(), &FieldForm::edited, this,
            &EuSheet::informationEdited);
    for (const auto page : {kMeasurement, kInformation, kLimits}) {
        connect(&fieldPage(page).fields(), &FieldForm::edited, this, &EuSheet::fitFieldEdited);
    }
    fieldPage(kLimits).check = [this] { return checkLimits(); };
    setWriter([this] { return this->store(); });
    updateButtons();
}

void EuSheet::addPages() {
    for (const auto& page : euPages()) {
        if (page.list != nullptr) {
            addPage(makeEuListPage(form_, page, values_, setup_.readOnly));
            fieldPages_.push_back(nullptr);
            continue;
        }
        auto made = std::make_unique<EuFieldPage>(form_, page, values_.fields, setup_.readOnly);
        fieldPages_.push_back(made.get());
        addPage(std::move(made));
    }
}

EuFieldPage& EuSheet::fieldPage(std::size_t index) const {
    return *fieldPages_[index];
}

void EuSheet::addInformationButtons(EuFieldPage& page) {
    auto& fields = page.fields();
    if (bitWeightList().isIn(form_.edition)) {
        bitWeights_ =
            fields.addButton("BFM", "editBitWeights", QStringLiteral("Edit &Bit Weight Values"));
        connect(bitWeights_, &QPushButton::clicked, this, &EuSheet::openBitWeights);
    }
    formats_ = fields.addButton("FPF", "floatingPointFormats", QStringLiteral("?"));
    if (formats_ != nullptr) {
        formats_->setAccessibleName(toQString(eutext::kFloatingPointTypes));
        connect(formats_, &QPushButton::clicked, this, &EuSheet::openFormats);
    }
    showDetails_ = page.addButton("showDetails", toQString(detailButtonText(false)));
    connect(showDetails_, &QPushButton::clicked, this, [this] { showDetails(!wantsDetails_); });
    auto* const defaults = page.addButton("saveAsDefaults", QStringLiteral("Save As &Defaults"));
    connect(defaults, &QPushButton::clicked, this, [this, &fields] {
        if (saveTypeDefaults(document_, &form_.ui, fields.value("BFM"), fields.value("DCT"))) {
            fieldPage(kInformation).tell(eutext::kDefaultsStored);
        }
    });
    auto* const import =
        page.addButton("importValues", QStringLiteral("&Import EU Values From Other Measurement"));
    import->setEnabled(!setup_.readOnly);
    connect(import, &QPushButton::clicked, this, &EuSheet::importValues);
}

void EuSheet::addOtherButtons() {
    auto& link = fieldPage(kMeasurement).fields();
    connect(&link, &FieldForm::edited, this, [this, &link](const QString& code) {
        if (code == QLatin1String("MN4")) {
            saveLinkTypeDefault(document_, link.value("MN4"));
            fieldPage(kMeasurement).tell(eutext::kLinkTypeStored);
        }
    });
    auto* const rates =
        fieldPage(kLimits).addButton("sampleRateOptions", QStringLiteral("Sample Rate &Options"));
    rates->setEnabled(static_cast<bool>(form_.sampleRates));
    connect(rates, &QPushButton::clicked, this, [this] { form_.sampleRates(); });
    auto* const classification =
        fieldPage(kTransducer)
            .addButton("saveClassification", QStringLiteral("Save Classification As &Default"));
    connect(classification, &QPushButton::clicked, this, [this] {
        saveClassificationDefault(document_, fieldPage(kTransducer).fields().value("TRD4"));
        fieldPage(kTransducer).tell(eutext::kDefaultsStored);
    });
    auto* const contact =
        fieldPage(kContact).addButton("saveContact", QStringLiteral("Save As &Default"));
    connect(contact, &QPushButton::clicked, this, [this] {
        const auto& fields = fieldPage(kContact).fields();
        const std::array<std::string, 4> values = {fields.value("POC1"), fields.value("POC2"),
                                                   fields.value("POC3"), fields.value("POC4")};
        saveContactDefaults(document_, values);
        fieldPage(kContact).tell(eutext::kDefaultsStored);
    });
    auto* const options =
        fieldPage(kComments).addButton("commentOptions", QStringLiteral("Comment &Field Options"));
    connect(options, &QPushButton::clicked, this,
            [this] { (void)editEuCommentOptions(form_, document_, this); });
}

// --- edits of the pages --------------------------------------------------------------------

std::string EuSheet::type() const {
    return fieldPage(kInformation).fields().value("DCT");
}

void EuSheet::informationEdited(const QString& code) {
    if (code == QLatin1String("CRT")) {
        releasedByHand_ = releasedByHand_ || !stamping_;
        return;
    }
    if (!releasedByHand_) {
        stamping_ = true;
        const auto stamp = releaseStamp(document_);
        // An edition that has no such field keeps it for those that have.
        values_.fields["CRT"] = stamp;
        fieldPage(kInformation).fields().editValue("CRT", stamp);
        stamping_ = false;
    }
    if (code == QLatin1String("DCT")) {
        followType();
    }
    updateButtons();
}

bool EuSheet::checkLimits() {
    const auto refused = refusedLimit(edit_, values_.fields);
    if (!refused) {
        return true;
    }
    showBox(&form_.ui, refused->text, kIllegalNumber);
    fieldPage(kLimits).fields().control(refused->code)->setFocus();
    return false;
}

void EuSheet::fitFieldEdited() {
    if (details_ == nullptr || setup_.readOnly) {
        return;
    }
    for (const auto page : {kMeasurement, kInformation, kLimits}) {
        fieldPage(page).take();
    }
    bool changed = false;
    if (storeFitFields(edit_, &form_.ui, values_, changed) && changed) {
        details_->content().followPages();
    }
}

void EuSheet::updateButtons() {
    const bool hasWindow = windowOfType().has_value();
    showDetails_->setEnabled(hasWindow);
    showDetails_->setText(toQString(detailButtonText(details_ != nullptr)));
    if (bitWeights_ != nullptr) {
        bitWeights_->setEnabled(
            !setup_.readOnly &&
            startsWithIgnoreCase(fieldPage(kInformation).fields().value("BFM"), "BWT"));
    }
    if (formats_ != nullptr) {
        formats_->setEnabled(!setup_.readOnly);
    }
}

void EuSheet::openFormats() {
    if (const auto code = askFloatingPointFormat(form_)) {
        fieldPage(kInformation).fields().editValue("FPF", *code);
    }
}

void EuSheet::openBitWeights() {
    auto& rows = values_.lists[std::string(bitWeightList().countCode)];
    auto edited = rows;
    if (editBitWeights(form_, edited, this) && edited != rows) {
        rows = std::move(edited);
        markChanged();
        informationEdited({});
    }
}

// --- the window of the type ----------------------------------------------------------------

/// Asked for each time: the window itself turns its plot on and off.
std::optional<DetailWindow> EuSheet::windowOfType() const {
    return detailWindow(type(), form_.edition, form_.settings.get(setting::kShowPlot));
}

void EuSheet::showDetails(bool shown) {
    wantsDetails_ = shown;
    if (!shown) {
        wantsDetails_ = !closeDetails();
    }
    followType();
    updateButtons();
}

void EuSheet::followType() {
    const auto window = windowOfType();
    if (details_ != nullptr && (!window || window->type != detailType_) && !closeDetails()) {
        return;
    }
    if (details_ == nullptr && window && wantsDetails_) {
        openDetails(*window);
    }
}

bool EuSheet::closeDetails() {
    if (details_ == nullptr) {
        return true;
    }
    if (!setup_.readOnly && (!details_->content().validate() || !details_->content().store())) {
        return false;
    }
    delete details_;
    details_ = nullptr;
    return true;
}

void EuSheet::openDetails(const DetailWindow& window) {
    for (const auto page : {kMeasurement, kInformation, kLimits}) {
        fieldPage(page).take();
    }
    bool changed = false;
    if (!setup_.readOnly && !storeFitFields(edit_, &form_.ui, values_, changed)) {
        form_.messages.show(&form_.ui, message::kUnableToDisplay, title::kError, kErrorBox);
        return;
    }
    details_ = new DefinitionWindow(form_, document_, store_, edit_, window, setup_, this);
    detailType_ = window.type;
    connect(&details_->content(), &DefinitionDetail::changed, this, [this] { markChanged(); });
    // The window may ask for it from inside of itself.
    connect(
        details_, &DefinitionWindow::hideRequested, this, [this] { showDetails(false); },
        Qt::QueuedConnection);
    details_->standBeside(*this);
    details_->show();
}

// --- import and storing --------------------------------------------------------------------

void EuSheet::importValues() {
    std::string last;
    const auto names = importSources(document_, store_, &form_.ui, edit_.name(), &last);
    if (names.empty()) {
        return;
    }
    const auto source = askImportSource(form_, names, last, this);
    if (!source) {
        return;
    }
    const auto result = edit_.importValues(&form_.ui, *source);
    if (result == DefinitionEdit::Import::SameType || result == DefinitionEdit::Import::OtherType) {
        reload();
        markChanged();
    }
}

void EuSheet::reload() {
    auto read = readPages(edit_);
    values_.fields = std::move(read.fields);
    // The pages hold on to their lists.
    for (auto& [code, rows] : values_.lists) {
        rows = std::move(read.lists[code]);
    }
    for (int i = 0; i < pageCount(); ++i) {
        page(i).load();
    }
    const auto window = windowOfType();
    if (details_ != nullptr && window && window->type == detailType_) {
        details_->content().load();
    } else {
        // What the window holds is of the record as it was.
        delete details_;
        details_ = nullptr;
        followType();
    }
    updateButtons();
}

void EuSheet::accept() {
    // What is still in a field of the window counts also if nothing was changed on a page.
    if (details_ != nullptr && !setup_.readOnly && !details_->content().validate()) {
        return;
    }
    if (edit_.wasTemplate() && !setup_.readOnly) {
        // A new record is a change, even with all of its defaults.
        markChanged();
    }
    PropertySheet::accept();
}

bool EuSheet::store() {
    if (setup_.readOnly) {
        return true;
    }
    if (details_ != nullptr && (!details_->content().validate() || !details_->content().store())) {
        return false;
    }
    return kavu::storePages(edit_, &form_.ui, values_) && edit_.store(&form_.ui);
}

}  // namespace kavu
