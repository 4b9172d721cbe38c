#include "app/framework/FieldForm.h"

#include "app/framework/FieldControl.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "core/text/Clock.h"

#include <algorithm>

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kavu {

namespace {

/// A page with more fields than this is set in two columns, if it has boxes to set.
constexpr std::size_t kFieldsOfOneColumn = 10;

struct Box {
    std::string_view title;
    std::vector<FieldControl*> controls;
    bool holdsComment = false;
};

std::vector<Box> boxesOf(const std::vector<std::unique_ptr<FieldControl>>& controls) {
    std::vector<Box> boxes;
    for (const auto& control : controls) {
        const auto title = control->field().box;
        auto it = std::find_if(boxes.begin(), boxes.end(),
                               [&](const Box& box) { return box.title == title; });
        if (it == boxes.end()) {
            it = boxes.insert(boxes.end(), Box{title, {}, false});
        }
        it->controls.push_back(control.get());
        it->holdsComment = it->holdsComment || control->field().kind == FieldKind::Comment;
    }
    return boxes;
}

/// The width that the labels of a column share, so that its controls are in one line.
int labelWidth(std::span<const Box> boxes, const QWidget& form) {
    int width = 0;
    for (const auto& box : boxes) {
        for (const auto* control : box.controls) {
            if (control->field().kind != FieldKind::Comment) {
                width = std::max(
                    width, form.fontMetrics().horizontalAdvance(toQString(control->field().label)));
            }
        }
    }
    // A label is a little wider than its text.
    return width + 2;
}

/// How many of the boxes are in the first column; all if one column is enough, or if the
/// screen has no room for two.
std::size_t boxesOfFirstColumn(std::span<const Box> boxes, const QWidget& form) {
    std::size_t total = 0;
    std::size_t fields = 0;
    for (const auto& box : boxes) {
        total += box.controls.size() + 1;
        fields += box.controls.size();
    }
    const int column =
        labelWidth(boxes, form) + look::charactersWide(form, 30) + look::unit(form) * 6;
    if (boxes.size() < 2 || fields <= kFieldsOfOneColumn ||
        column * 2 > look::roomOnScreen(form).width()) {
        return boxes.size();
    }
    std::size_t count = 0;
    for (std::size_t placed = 0; placed * 2 < total; ++count) {
        placed += boxes[count].controls.size() + 1;
    }
    return count;
}

void placeControl(QGridLayout& grid, FieldControl& control, int row, int width) {
    auto* label = look::addLabel(toQString(control.field().label), control.widget());
    if (control.field().kind == FieldKind::Comment) {
        grid.addWidget(label, row, 0, 1, 2);
        grid.addWidget(&control.widget(), row + 1, 0, 1, 2);
        grid.setRowStretch(row + 1, 1);
        return;
    }
    label->setMinimumWidth(std::max(width, label->sizeHint().width()));
    grid.addWidget(label, row, 0);
    // Only a field that may hold a long text takes the rest of the row. One that cannot grow, as
    // the button of a prompt, would keep its column from growing.
    const bool wide = control.widget().maximumWidth() == QWIDGETSIZE_MAX &&
                      control.widget().sizePolicy().horizontalPolicy() != QSizePolicy::Fixed &&
                      control.field().kind == FieldKind::Text;
    if (control.field().unit.empty()) {
        grid.addWidget(&control.widget(), row, 1, wide ? Qt::Alignment() : Qt::AlignLeft);
        return;
    }
    auto* const measured = new QHBoxLayout;
    measured->setSpacing(look::unit(control.widget()) / 2);
    measured->addWidget(&control.widget(), wide ? 1 : 0);
    auto* const unit = new QLabel(toQString(control.field().unit), control.widget().parentWidget());
    unit->setTextFormat(Qt::PlainText);
    control.widget().setAccessibleDescription(unit->text());
    measured->addWidget(unit);
    measured->addStretch(wide ? 0 : 1);
    grid.addLayout(measured, row, 1);
}

QWidget* makeBox(const Box& box, QWidget* parent, int width) {
    QWidget* frame =
        box.title.empty() ? new QWidget(parent) : new QGroupBox(toQString(box.title), parent);
    if (!box.title.empty()) {
        frame->setAccessibleName(toQString(box.title));
    }
    auto* grid = new QGridLayout(frame);
    const int distance = look::unit(*frame);
    // What is in no box is in line with what is in one.
    const int frameWidth = box.title.empty() ? 3 : 0;
    grid->setContentsMargins(distance + frameWidth, box.title.empty() ? 0 : distance, distance,
                             distance);
    grid->setHorizontalSpacing(distance);
    grid->setVerticalSpacing(distance * 3 / 4);
    grid->setColumnStretch(1, 1);
    int row = 0;
    for (auto* control : box.controls) {
        placeControl(*grid, *control, row, width);
        row += 2;
    }
    return frame;
}

}  // namespace

FieldForm::FieldForm(FormContext& form, std::span<const Field> fields, std::string_view pageName,
                     QWidget* parent)
    : QWidget(parent),
      form_(form),
      host_(std::make_unique<FieldControlHost>(FieldControlHost{
          form, this, [this](const Field& field) { emit edited(toQString(field.code)); },
          [this](const QString& text) { showHint(text); }})) {
    build(fields, pageName);
}

FieldForm::~FieldForm() = default;

void FieldForm::build(std::span<const Field> fields, std::string_view pageName) {
    for (const auto& field : knownFields(fields, form_.edition)) {
        if (field.label.empty() || !field.list.empty() ||
            (!pageName.empty() && field.page != pageName)) {
            continue;
        }
        controls_.push_back(makeFieldControl(*host_, field));
        byCode_[std::string(field.code)] = controls_.back().get();
    }
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(look::unit(*this));
    auto* columns = new QHBoxLayout;
    columns->setSpacing(look::unit(*this) * 2);
    layout->addLayout(columns, 1);
    placeBoxes(*columns);
    hint_ = look::makeNote({}, this);
    hint_->setObjectName(QStringLiteral("hint"));
    hint_->setMinimumHeight(hint_->fontMetrics().height());
    layout->addWidget(hint_);
    // The order of a table is that of the file; the Tab key follows what is seen.
    QWidget* last = nullptr;
    for (const auto& box : boxesOf(controls_)) {
        for (auto* control : box.controls) {
            if (last != nullptr) {
                setTabOrder(last, &control->widget());
            }
            last = &control->widget();
        }
    }
}

void FieldForm::placeBoxes(QHBoxLayout& columns) {
    const auto boxes = boxesOf(controls_);
    const auto addColumn = [&](std::span<const Box> ofColumn) {
        auto* column = new QVBoxLayout;
        column->setSpacing(look::unit(*this));
        columns.addLayout(column, 1);
        const int width = labelWidth(ofColumn, *this);
        bool stretched = false;
        for (const auto& box : ofColumn) {
            column->addWidget(makeBox(box, this, width), box.holdsComment ? 1 : 0);
            stretched = stretched || box.holdsComment;
        }
        if (!stretched) {
            column->addStretch();
        }
    };
    const std::span<const Box> all(boxes);
    const auto first = boxesOfFirstColumn(all, *this);
    addColumn(all.first(first));
    if (first < all.size()) {
        addColumn(all.subspan(first));
    }
}

void FieldForm::showHint(const QString& text) {
    if (hint_ != nullptr && hint_->text() != text) {
        hint_->setText(text);
    }
}

void FieldForm::setValues(const FieldValues& values) {
    for (const auto& control : controls_) {
        const auto it = values.find(control->field().code);
        control->show(it == values.end() ? std::string_view() : std::string_view(it->second));
    }
}

void FieldForm::storeValues(FieldValues& values) const {
    for (const auto& control : controls_) {
        auto now = control->value();
        if (now.empty()) {
            values.erase(std::string(control->field().code));
        } else {
            values[std::string(control->field().code)] = std::move(now);
        }
    }
}

std::string FieldForm::value(std::string_view code) const {
    const auto it = byCode_.find(code);
    return it == byCode_.end() ? std::string() : it->second->value();
}

void FieldForm::editValue(std::string_view code, std::string_view newValue) {
    if (const auto it = byCode_.find(code); it != byCode_.end()) {
        it->second->edit(newValue);
    }
}

QWidget* FieldForm::control(std::string_view code) const {
    const auto it = byCode_.find(code);
    return it == byCode_.end() ? nullptr : &it->second->widget();
}

QPushButton* FieldForm::addButton(std::string_view code, const char* name, const QString& text) {
    auto* const field = control(code);
    auto* const grid =
        field == nullptr ? nullptr : qobject_cast<QGridLayout*>(field->parentWidget()->layout());
    if (grid == nullptr || grid->indexOf(field) < 0) {
        return nullptr;
    }
    int row = 0;
    int column = 0;
    int rowSpan = 1;
    int columnSpan = 1;
    grid->getItemPosition(grid->indexOf(field), &row, &column, &rowSpan, &columnSpan);
    auto* const button = look::makeButton(name, text, {}, field->parentWidget());
    grid->addWidget(button, row, column + columnSpan, Qt::AlignLeft);
    setTabOrder(field, button);
    return button;
}

void FieldForm::makeDisplayOnly(std::string_view code) {
    if (auto* const edit = qobject_cast<QLineEdit*>(control(code))) {
        edit->setReadOnly(true);
        edit->setFrame(false);
        edit->setFocusPolicy(Qt::ClickFocus);
        auto palette = edit->palette();
        palette.setColor(QPalette::Base, Qt::transparent);
        edit->setPalette(palette);
    }
}

std::vector<std::string_view> FieldForm::codes() const {
    std::vector<std::string_view> all;
    for (const auto& control : controls_) {
        all.push_back(control->field().code);
    }
    return all;
}

std::string FieldForm::today() const {
    return tmatsDate(form_.clock.now(), form_.edition);
}

bool FieldForm::validate() {
    return std::all_of(controls_.begin(), controls_.end(),
                       [](const auto& control) { return control->validate(); });
}

FieldPage::FieldPage(FormContext& form, const char* resourceName, const std::string& title,
                     std::span<const Field> fields, FieldValues& values, QWidget* parent)
    : PropertyPage(form, resourceName, title, parent), values_(values) {
    auto* layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    fields_ = new FieldForm(form, fields, resourceName, this);
    layout->addWidget(fields_);
    connect(fields_, &FieldForm::edited, this, [this] { markChanged(); });
}

void FieldPage::load() {
    fields_->setValues(values_);
}

bool FieldPage::validate() {
    return fields_->validate();
}

bool FieldPage::store() {
    fields_->storeValues(values_);
    return true;
}

}  // namespace kavu
