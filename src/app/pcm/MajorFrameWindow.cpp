#include "app/pcm/MajorFrameWindow.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/pcm/FrameKey.h"
#include "app/pcm/MajorFrameFind.h"
#include "app/pcm/MeasurementList.h"
#include "conversion/ConversionStore.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"

#include <algorithm>

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSlider>
#include <QSplitter>
#include <QToolTip>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr int kGoToLimit = 11;  ///< two numbers and a blank

std::string upperCase(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), toUpperAscii);
    return upper;
}

}  // namespace

MajorFrameWindow::MajorFrameWindow(FormContext& form, PcmFormat& format, PcmFormSteps& steps,
                                   const MakeAreas& makeAreas, QWidget* parent)
    : QDialog(parent),
      form_(form),
      format_(format),
      steps_(steps),
      undo_(format, {.conversions = steps.conversions, .names = steps.edit.names}) {
    setObjectName(QStringLiteral("MajorFrameDisplay"));
    setWindowTitle(QStringLiteral("PCM Format Display - Data Link: ") +
                   toQString(format.streamName));
    setWindowFlags(windowFlags() | Qt::WindowMinMaxButtonsHint);
    auto areas = makeAreas(format, this);
    if (areas == nullptr) {
        return;
    }
    areas_ = areas.release();
    auto& display = areas_->display();
    display.showAllCells = form.settings.get(setting::kShowAllCells);
    display.highlightEu = form.settings.get(setting::kHighlightConversions);
    display.colours = form.settings.get(setting::kDisplayColours) == 1 ? FrameColours::Calm
                                                                       : FrameColours::Classic;
    display.hasConversion = [this](std::string_view name) {
        return conversions_.contains(upperCase(name));
    };
    display.conversionText = [this](std::string_view name) {
        const auto type = conversionValue(name, "DCT");
        return type.empty() ? type : "conversion " + type;
    };
    readConversions();
    arrange();
    makeMenus();
    connectParts();
    areas_->setCellWidth(form.settings.get(setting::kCellWidth));
    showZoom();
    showSelection();
    restorePlace();
    restoreLayout();
    areas_->grid().setFocus();
}

// --- parts ------------------------------------------------------------------------------------

QLineEdit* MajorFrameWindow::makeGoTo(const char* name, const QString& text) {
    auto* const field = new QLineEdit(text, this);
    field->setObjectName(QLatin1String(name));
    field->setMaxLength(kGoToLimit);
    field->setFixedWidth(look::charactersWide(*this, 10));
    connect(field, &QLineEdit::returnPressed, this, [this, field] {
        (void)goToText(*field);
        field->selectAll();
    });
    return field;
}

QWidget* MajorFrameWindow::makeZoom() {
    auto* const part = new QWidget(this);
    zoom_ = new QSlider(Qt::Horizontal, part);
    zoom_->setObjectName(QStringLiteral("zoomBar"));
    zoom_->setRange(kLeastCellWidth, kMostCellWidth);
    zoom_->setSingleStep(1);
    zoom_->setPageStep(kZoomStep);
    zoom_->setMinimumWidth(look::charactersWide(*this, 12));
    zoom_->setMaximumWidth(look::charactersWide(*this, 30));
    percent_ = new QLabel(part);
    percent_->setObjectName(QStringLiteral("zoomPercent"));
    percent_->setTextFormat(Qt::PlainText);
    percent_->setMinimumWidth(look::charactersWide(*this, 6));
    auto* const layout = new QHBoxLayout(part);
    look::arrangePart(*layout, *this);
    layout->addWidget(look::addKeyLabel(QStringLiteral("&Zoom:"), *zoom_));
    layout->addWidget(zoom_, 20);
    layout->addWidget(percent_);
    layout->addStretch(1);
    return part;
}

QWidget* MajorFrameWindow::makeBottomRow() {
    auto* const foot = new QWidget(this);
    fwp_ = makeGoTo("goToFwp", QStringLiteral("0"));
    fn_ = makeGoTo("goToFn", QStringLiteral("1"));
    auto* const layout = new QHBoxLayout(foot);
    look::arrangePart(*layout, *this);
    layout->addWidget(look::addKeyLabel(QStringLiteral("Enter F&WP (or \"fwp fn\")"), *fwp_));
    layout->addWidget(fwp_);
    layout->addWidget(look::addKeyLabel(QStringLiteral("Enter F&N (or \"fwp fn\")"), *fn_));
    layout->addWidget(fn_);
    layout->addSpacing(look::unit(*this) * 2);
    layout->addWidget(makeZoom(), 1);
    layout->addStretch();
    close_ = look::makeButton("close", QStringLiteral("&Close"), {}, foot);
    help_ = look::makeButton("help", QStringLiteral("Help"), {}, foot);
    help_->setEnabled(static_cast<bool>(form_.help));
    for (auto* const button : {close_, help_}) {
        // Return belongs to the grid and the fields.
        button->setAutoDefault(false);
        layout->addWidget(button);
    }
    return foot;
}

void MajorFrameWindow::arrange() {
    list_ = new MeasurementList(
        format_, [this](std::string_view name) { return conversionValue(name, "MN3"); }, this);
    find_ = new MajorFrameFind(
        format_, [this] { return areas_->view().selected(); }, this);
    status_ = new QLabel(this);
    status_->setObjectName(QStringLiteral("cellStatus"));
    status_->setTextFormat(Qt::PlainText);
    status_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    splitter_ = new QSplitter(Qt::Horizontal, this);
    splitter_->setObjectName(QStringLiteral("displaySplitter"));
    splitter_->addWidget(areas_);
    splitter_->addWidget(list_);
    splitter_->setStretchFactor(0, 1);
    splitter_->setCollapsible(0, false);
    auto* const parts = new QSplitter(Qt::Vertical, this);
    parts->setObjectName(QStringLiteral("displayParts"));
    parts->addWidget(splitter_);
    parts->setStretchFactor(0, 1);
    parts->setCollapsible(0, false);
    menus_ = new QMenuBar(this);
    auto* const body = new QWidget(this);
    auto* const inner = new QVBoxLayout(body);
    look::arrangeWindow(*inner, *this);
    inner->addWidget(parts, 1);
    key_ = new FrameKey(areas_->display(), this);
    inner->addWidget(key_);
    inner->addWidget(find_);
    inner->addWidget(status_);
    inner->addWidget(makeBottomRow());
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->setMenuBar(menus_);
    layout->addWidget(body, 1);
    auto* before = static_cast<QWidget*>(&areas_->grid());
    for (QWidget* const part :
         {static_cast<QWidget*>(fwp_), static_cast<QWidget*>(fn_), static_cast<QWidget*>(zoom_),
          static_cast<QWidget*>(close_), static_cast<QWidget*>(help_)}) {
        setTabOrder(before, part);
        before = part;
    }
}

void MajorFrameWindow::connectParts() {
    auto& grid = areas_->grid();
    connect(zoom_, &QSlider::valueChanged, this, &MajorFrameWindow::setCellWidth);
    connect(areas_, &FrameGridAreas::zoomed, this, &MajorFrameWindow::showZoom);
    connect(areas_, &FrameGridAreas::selectionMoved, this, &MajorFrameWindow::showSelection);
    connect(&grid, &FrameGrid::editRequested, this, [this] {
        const auto at = areas_->view().selected();
        if (at) {
            editCell(at.word, at.frame);
        }
    });
    connect(areas_, &FrameGridAreas::labelActivated, this, &MajorFrameWindow::editLabel);
    connect(&grid, &FrameGrid::menuRequested, this,
            [this](const QPoint& point) { placeMenu_->popup(point); });
    connect(areas_, &FrameGridAreas::wordMenuRequested, this,
            [this](int, const QPoint& point) { wordMenu_->popup(point); });
    connect(areas_, &FrameGridAreas::frameMenuRequested, this,
            [this](int frame, const QPoint& point) {
                menuFrame_ = frame;
                frameMenu_->popup(point);
            });
    connect(list_, &MeasurementList::currentChanged, this,
            [this](const std::string& name) { areas_->mark(name); });
    const auto go = [this](FramePlace at) { areas_->goToCell(at.word, at.frame); };
    connect(list_, &MeasurementList::goToRequested, this, go);
    connect(find_, &MajorFrameFind::found, this, go);
    const auto back = [this] { areas_->grid().setFocus(); };
    connect(list_, &MeasurementList::left, this, back);
    connect(find_, &MajorFrameFind::ended, this, back);
    connect(close_, &QPushButton::clicked, this, &QDialog::accept);
    connect(help_, &QPushButton::clicked, this, [this] { form_.help(toBytes(objectName())); });
}

// --- what is shown ----------------------------------------------------------------------------

void MajorFrameWindow::setCellWidth(int width) {
    areas_->setCellWidth(width);
}

void MajorFrameWindow::showOptions() {
    areas_->refresh();
    key_->refresh();
    showSelection();
}

void MajorFrameWindow::showZoom() {
    const int width = areas_->view().cellWidth();
    zoom_->setValue(width);
    percent_->setText(toQString(zoomPercent(width)) + QStringLiteral("%"));
}

void MajorFrameWindow::showSelection() {
    const auto at = areas_->view().selected();
    if (at) {
        fwp_->setText(QString::number(at.word));
        fn_->setText(QString::number(at.frame));
    }
    auto text = toQString(areas_->display().tipText(at));
    text.replace(QLatin1Char('\n'), QStringLiteral("  |  "));
    status_->setText(at ? text : QStringLiteral("No cell is selected"));
    followSelection();
    updateMenus();
}

void MajorFrameWindow::followSelection() {
    const auto& display = areas_->display();
    const auto names = display.measurementsAt(areas_->view().selected());
    // A measurement that was chosen in the list stays chosen at a place that it shares.
    const auto current = list_->current();
    const auto isHere = [&](const std::string& name) { return equalsIgnoreCase(name, current); };
    const auto name = names.empty()                                     ? std::string()
                      : std::any_of(names.begin(), names.end(), isHere) ? current
                                                                        : names.front();
    list_->follow(name);
    areas_->mark(name);
}

bool MajorFrameWindow::goToText(const QLineEdit& field) {
    const FramePlace present{fwp_->text().toInt(), fn_->text().toInt()};
    const auto to = parseGoTo(toBytes(field.text()), &field == fwp_, present);
    const auto problem = goToProblem(areas_->display(), to);
    if (problem || !areas_->goToCell(to->word, to->frame)) {
        showSelection();
        const auto text = toQString(problem.value_or("This place cannot be selected."));
        status_->setText(QStringLiteral("Go To: ") + text);
        QToolTip::showText(field.mapToGlobal(QPoint(0, -2 * field.height())), text);
        form_.ui.beep();
        return false;
    }
    return true;
}

// --- conversions ------------------------------------------------------------------------------

void MajorFrameWindow::readConversions() {
    conversions_.clear();
    if (steps_.conversions == nullptr) {
        return;
    }
    for (const auto& name :
         steps_.conversions->definitionNames(-1).value_or(std::vector<std::string>())) {
        conversions_.insert(upperCase(name));
    }
}

std::string MajorFrameWindow::conversionValue(std::string_view name, std::string_view key) const {
    if (steps_.conversions == nullptr || !conversions_.contains(upperCase(name))) {
        return {};
    }
    const auto place = steps_.conversions->locateDefinition(name);
    if (!place.found) {
        return {};
    }
    const auto chunk = steps_.conversions->chunk(place.chunk);
    return chunk == nullptr ? std::string() : chunk->value(place.section, key, {});
}

// --- begin and end ----------------------------------------------------------------------------

void MajorFrameWindow::done(int result) {
    if (areas_ != nullptr && !isClosed_) {
        isClosed_ = true;
        storePlace();
        storeLayout();
    }
    QDialog::done(result);
}

/// The key lets go of what is half done, a cut or a block. It closes the window only while that
/// loses no level of the undo.
void MajorFrameWindow::escape() {
    const auto& view = areas_->view();
    const auto at = view.selected();
    if (view.cut.first) {
        areas_->markCut({});
    } else if (at && !(view.block().first == view.block().last)) {
        areas_->goToCell(at.word, at.frame);
    } else if (undo_.canUndo() || undo_.canRedo()) {
        status_->setText(QStringLiteral(
            "Escape does not close the display while edits can be undone: Ctrl+W does"));
    } else {
        reject();
    }
}

void MajorFrameWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1 && form_.help) {
        form_.help(toBytes(objectName()));
        return;
    }
    if (event->key() == Qt::Key_Escape) {
        escape();
        return;
    }
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        // No button is the default one: the key runs the one that has the focus, and no other.
        if (auto* const button = qobject_cast<QPushButton*>(focusWidget())) {
            button->click();
        }
        return;
    }
    QDialog::keyPressEvent(event);
}

}  // namespace kavu
