#include "app/reports/ReportOptionsSheet.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/SheetTabs.h"
#include "app/reports/LayoutFiles.h"
#include "core/files/FileIo.h"
#include "core/text/Text.h"
#include "reports/ReportDesk.h"

#include <array>

#include <QButtonGroup>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr auto kPlaces = std::to_array<const char*>(
    {"No Page Numbers", "Bottom Of Page - Left", "Bottom Of Page - Centered",
     "Bottom Of Page - Right", "Top Of Page - Left", "Top Of Page - Centered",
     "Top Of Page - Right"});

struct OptionChoice {
    int value;
    const char* text;
};
constexpr auto kStyles = std::to_array<OptionChoice>(
    {{1, "Grid style report, showing entire major frame."},
     {2, "Grid style report. Display to depth of word location"},
     {3, "Single row of cells. Subcommutated data listed by frame number."}});
constexpr auto kNames =
    std::to_array<OptionChoice>({{1, "Show each name assigned to the same word"},
                                 {0, "Show only the first name, and \"*\" where there are more"}});
constexpr auto kBlankLines = std::to_array<OptionChoice>(
    {{1, "Remove blank lines in any frame without a measurement"}, {0, "Keep blank lines"}});
constexpr auto kLocations = std::to_array<OptionChoice>(
    {{0, "Show each location in report"}, {1, "Show first location only in report"}});

/// Buttons of which one is chosen; the number of each is its value.
template <typename Choices>
QButtonGroup* addChoices(QVBoxLayout& column, QWidget& page, const char* name, const char* title,
                         const Choices& choices) {
    auto* const box = new QGroupBox(QLatin1String(title), &page);
    auto* const lines = new QVBoxLayout(box);
    auto* const group = new QButtonGroup(&page);
    group->setObjectName(QLatin1String(name));
    for (const auto& choice : choices) {
        auto* const button = new QRadioButton(QLatin1String(choice.text), box);
        button->setObjectName(QLatin1String(name) + QString::number(choice.value));
        group->addButton(button, choice.value);
        lines->addWidget(button);
    }
    column.addWidget(box);
    return group;
}

/// Shows the value of a key; none of a key that has no such choice is chosen otherwise.
void check(QButtonGroup& group, const ReportOptionValues& values, std::string_view key) {
    if (auto* const button = group.button(leadingInt(values.find(key)->second))) {
        button->setChecked(true);
    }
}

QLineEdit* addField(QFormLayout& form, QWidget& page, const char* name, const QString& label) {
    auto* const field = new QLineEdit(&page);
    field->setObjectName(QLatin1String(name));
    form.addRow(look::addKeyLabel(label, *field), field);
    return field;
}

/// The bytes of what a field shows; what was not edited keeps those it had.
void storeText(ReportOptionValues& values, std::string_view key, const QString& now) {
    auto& value = values.find(key)->second;
    value = ShownText(value).bytesOf(now);
}

constexpr auto kOptionKeys = std::to_array<std::string_view>({
    layout_key::kMeasurementTitle,
    layout_key::kMeasurementLeft,
    layout_key::kMeasurementRight,
    layout_key::kFirstLocationOnly,
    layout_key::kFormatTitle,
    layout_key::kFormatLeft,
    layout_key::kFormatRight,
    layout_key::kPlotTitle,
    layout_key::kPlotLeft,
    layout_key::kPlotRight,
    layout_key::kFrameTitle,
    layout_key::kFrameLeft,
    layout_key::kFrameRight,
    layout_key::kFrameStyle,
    layout_key::kFrameAllNames,
    layout_key::kFrameCompact,
    layout_key::kPageNumberPlace,
    layout_key::kPageNumber,
});

std::string defaultOf(std::string_view key) {
    for (const auto& each : layoutKeys(0, 0)) {
        if (each.key == key) {
            return each.otherwise;
        }
    }
    return {};
}

std::string sheetTitle(ReportDesk& desk) {
    const auto& file = desk.file();
    return "Report Options (" +
           (file.isOpen() ? fileNameOf(file.path()) : std::string("Using default settings")) + ")";
}

}  // namespace

// --- pages ----------------------------------------------------------------------------------

ReportTitlePage::ReportTitlePage(FormContext& form, const char* resourceName,
                                 const std::string& title, const Keys& keys,
                                 ReportOptionValues& values, bool locations, bool isBus)
    : PropertyPage(form, resourceName, title), keys_(keys), values_(values) {
    auto* const column = new QVBoxLayout(this);
    look::arrangeWindow(*column, *this);
    title_ = new QPlainTextEdit(this);
    title_->setObjectName(QStringLiteral("title"));
    title_->setTabChangesFocus(true);
    title_->setMinimumHeight(look::unit(*this) * 8);
    column->addWidget(look::addKeyLabel(QStringLiteral("&Title:"), *title_));
    column->addWidget(title_, 1);
    auto* const row = new QHBoxLayout;
    auto* const useDefault =
        look::makeButton("useDefault", QStringLiteral("Use &Default"), {}, this);
    row->addStretch(1);
    row->addWidget(useDefault);
    column->addLayout(row);
    auto* const fields = new QFormLayout;
    left_ = addField(*fields, *this, "left", QStringLiteral("&Left header:"));
    right_ = addField(*fields, *this, "right", QStringLiteral("&Right header:"));
    column->addLayout(fields);
    if (locations) {
        places_ =
            addChoices(*column, *this, "locations", "Supercommutated measurements", kLocations);
        for (auto* const button : places_->buttons()) {
            button->setEnabled(!isBus);
        }
        connect(places_, &QButtonGroup::buttonClicked, this, [this] { markChanged(); });
    }
    connect(useDefault, &QPushButton::clicked, this,
            [this] { title_->setPlainText(toQString(defaultOf(keys_.title))); });
}

void ReportTitlePage::load() {
    title_->setPlainText(toQString(replaceAll(values_.find(keys_.title)->second, "\r\n", "\n")));
    left_->setText(toQString(values_.find(keys_.left)->second));
    right_->setText(toQString(values_.find(keys_.right)->second));
    if (places_ != nullptr) {
        check(*places_, values_, layout_key::kFirstLocationOnly);
    }
    connect(title_, &QPlainTextEdit::textChanged, this, [this] { markChanged(); });
    connect(left_, &QLineEdit::textEdited, this, [this] { markChanged(); });
    connect(right_, &QLineEdit::textEdited, this, [this] { markChanged(); });
}

bool ReportTitlePage::store() {
    auto& title = values_.find(keys_.title)->second;
    const ShownText before(replaceAll(title, "\r\n", "\n"));
    if (title_->toPlainText() != before.shown()) {
        title = replaceAll(toBytes(title_->toPlainText()), "\n", "\r\n");
    }
    storeText(values_, keys_.left, left_->text());
    storeText(values_, keys_.right, right_->text());
    if (places_ != nullptr) {
        values_.find(layout_key::kFirstLocationOnly)->second = std::to_string(places_->checkedId());
    }
    return true;
}

ReportFramePage::ReportFramePage(FormContext& form, ReportOptionValues& values)
    : PropertyPage(form, "ReportOptions5", "Major Frame Report Options"), values_(values) {
    auto* const column = new QVBoxLayout(this);
    look::arrangeWindow(*column, *this);
    groups_[layout_key::kFrameStyle] = addChoices(*column, *this, "style", "Style", kStyles);
    groups_[layout_key::kFrameAllNames] =
        addChoices(*column, *this, "names", "More than one name for a word", kNames);
    groups_[layout_key::kFrameCompact] =
        addChoices(*column, *this, "blankLines", "Frames without a measurement", kBlankLines);
    column->addStretch(1);
    for (const auto& [key, group] : groups_) {
        connect(group, &QButtonGroup::buttonClicked, this, [this] { markChanged(); });
    }
}

void ReportFramePage::load() {
    for (const auto& [key, group] : groups_) {
        check(*group, values_, key);
    }
}

bool ReportFramePage::store() {
    for (const auto& [key, group] : groups_) {
        values_.find(key)->second = std::to_string(group->checkedId());
    }
    return true;
}

ReportNumberPage::ReportNumberPage(FormContext& form, ReportOptionValues& values)
    : PropertyPage(form, "ReportOptions6", "General Report Options"), values_(values) {
    auto* const column = new QVBoxLayout(this);
    look::arrangeWindow(*column, *this);
    auto* const fields = new QFormLayout;
    place_ = new QComboBox(this);
    place_->setObjectName(QStringLiteral("place"));
    for (const auto* const place : kPlaces) {
        place_->addItem(QLatin1String(place));
    }
    fields->addRow(look::addKeyLabel(QStringLiteral("Page &numbers:"), *place_), place_);
    text_ = addField(*fields, *this, "text", QStringLiteral("Page number &text:"));
    column->addLayout(fields);
    column->addWidget(look::makeNote(
        QStringLiteral("\"^\" in the text stands for the number of the page."), this));
    column->addStretch(1);
    connect(place_, &QComboBox::activated, this, [this] { markChanged(); });
    connect(text_, &QLineEdit::textEdited, this, [this] { markChanged(); });
}

void ReportNumberPage::load() {
    place_->setCurrentIndex(leadingInt(values_.find(layout_key::kPageNumberPlace)->second));
    text_->setText(toQString(values_.find(layout_key::kPageNumber)->second));
}

bool ReportNumberPage::store() {
    values_.find(layout_key::kPageNumberPlace)->second = std::to_string(place_->currentIndex());
    storeText(values_, layout_key::kPageNumber, text_->text());
    return true;
}

// --- the sheet ------------------------------------------------------------------------------

ReportOptionsSheet::ReportOptionsSheet(FormContext& form, ReportDesk& desk, bool isBus,
                                       QWidget* parent)
    : PropertySheet(form, "ReportOptions", sheetTitle(desk), "LastReptOpt", parent) {
    using namespace layout_key;
    bool isReadable = true;
    {
        const auto layout = desk.layout();
        for (const auto key : kOptionKeys) {
            values_[std::string(key)] = layout.text(key);
            // A value that cannot be read is shown as its default, and OK mends it.
            const auto stored = layout.stored(key);
            isReadable = isReadable && (!stored || key.ends_with("Hdr") || key.ends_with("Title") ||
                                        key == kPageNumber || *stored == layout.text(key));
        }
    }
    const auto addTitle = [&](const char* resource, const char* title,
                              const ReportTitlePage::Keys& keys, bool locations = false) {
        addPage(std::make_unique<ReportTitlePage>(form, resource, title, keys, values_, locations,
                                                  isBus));
    };
    addTitle("ReportOptions1", "Measurement Report",
             {kMeasurementTitle, kMeasurementLeft, kMeasurementRight}, true);
    addTitle("ReportOptions2", "PCM Format Report", {kFormatTitle, kFormatLeft, kFormatRight});
    addTitle("ReportOptions3", "Calibration Plots", {kPlotTitle, kPlotLeft, kPlotRight});
    addTitle("ReportOptions4", "Major Frame Report Headers",
             {kFrameTitle, kFrameLeft, kFrameRight});
    addPage(std::make_unique<ReportFramePage>(form, values_));
    addPage(std::make_unique<ReportNumberPage>(form, values_));
    showAllTabs(*this);
    setWriter([this, &form, &desk] {
        for (const auto& [key, value] : values_) {
            if (!desk.set(&form.ui, key, value)) {
                return false;
            }
        }
        return true;
    });
    if (!isReadable) {
        markChanged();
    }
}

bool editReportOptions(FormContext& form, ReportDesk& desk, bool isBus, QWidget* parent) {
    ReportOptionsSheet sheet(form, desk, isBus, parent);
    return runPropertySheet(form, sheet) == SheetResult::Stored;
}

bool editReportOptionsAsked(FormContext& form, ReportDesk& desk, QWidget* parent) {
    if (desk.file().isOpen()) {
        return editReportOptions(form, desk, false, parent);
    }
    constexpr int kFile = 1;
    const int choice = form.ui.choose(
        {.title = "Report Options",
         .text = "Do you want to edit your default report settings, or report settings that have "
                 "been stored in a Report Layout File?",
         .choices = {"&Default", "&File"},
         .defaultChoice = 0});
    if (choice < 0) {
        return false;
    }
    if (choice != kFile) {
        return editReportOptions(form, desk, false, parent);
    }
    if (!openLayoutFile(form, desk)) {
        return false;
    }
    const bool isStored = editReportOptions(form, desk, false, parent);
    // Nobody else has opened the file: OK means the file itself.
    if (isStored && !desk.file().save(&form.ui)) {
        return false;  // it stays open with what was entered
    }
    desk.file().close();
    return isStored;
}

}  // namespace kavu
