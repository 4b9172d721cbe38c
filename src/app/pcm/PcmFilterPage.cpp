#include "app/pcm/PcmFilterPage.h"

#include "app/framework/FieldForm.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/pcm/PcmAttributes.h"
#include "pcm/PcmFormat.h"
#include "pcm/model/PcmFormatFields.h"

#include <algorithm>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kavu {

PcmFilterPage::PcmFilterPage(PcmAttributesModel& model, QWidget* parent)
    : PropertyPage(model.form, pcm_page::kFrameFilter, "Minor Frame Filtering", parent),
      model_(model) {
    auto* const column = new QVBoxLayout(this);
    look::arrangeWindow(*column, *this);
    fields_ = new FieldForm(form(), frameFilterFields(), pcm_page::kFrameFilter, this);
    column->addWidget(fields_);
    makeList();
    column->addWidget(list_, 1);
    auto* const buttons = new QHBoxLayout;
    allYes_ = look::makeButton("setAllToYes", QStringLiteral("Set All To &Yes"), {}, this);
    allNo_ = look::makeButton("setAllToNo", QStringLiteral("Set All To &No"), {}, this);
    buttons->addWidget(allYes_);
    buttons->addWidget(allNo_);
    buttons->addStretch();
    column->addLayout(buttons);
    connect(allYes_, &QPushButton::clicked, this, [this] { setAll(true); });
    connect(allNo_, &QPushButton::clicked, this, [this] { setAll(false); });
    connect(fields_, &FieldForm::edited, this, [this] { markChanged(); });
    connect(&model_, &PcmAttributesModel::changed, this, &PcmFilterPage::fitRows);
}

void PcmFilterPage::makeList() {
    list_ = new QTableWidget(0, 2, this);
    list_->setObjectName(QStringLiteral("frames"));
    list_->setAccessibleName(QStringLiteral("Minor Frames"));
    list_->setHorizontalHeaderLabels(
        {QStringLiteral("Minor Frame Number"), QStringLiteral("Filtered?")});
    list_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    list_->horizontalHeader()->setStretchLastSection(true);
    list_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    list_->horizontalHeader()->setHighlightSections(false);
    list_->verticalHeader()->hide();
    list_->verticalHeader()->setDefaultSectionSize(list_->fontMetrics().height() +
                                                   look::unit(*this) / 2);
    list_->setSelectionBehavior(QAbstractItemView::SelectRows);
    list_->setSelectionMode(QAbstractItemView::SingleSelection);
    list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list_->setTabKeyNavigation(false);
    list_->setToolTip(QStringLiteral("A double click or Space changes the selected frame."));
    list_->installEventFilter(this);
    connect(list_, &QTableWidget::cellDoubleClicked, this, [this](int row) { toggle(row); });
}

void PcmFilterPage::load() {
    fields_->setValues(model_.side.frameFilter.values);
    const auto& format = model_.format;
    filtered_ =
        filteredFrames(model_.side.frameFilter, format.isBusStream ? 0 : format.numberOfFrames);
    fitRows();
}

void PcmFilterPage::fitRows() {
    const auto& format = model_.format;
    const bool bus = format.isBusStream;
    filtered_.resize(bus ? 0 : static_cast<std::size_t>(std::max(0, format.numberOfFrames)));
    const int before = list_->rowCount();
    list_->setRowCount(static_cast<int>(filtered_.size()));
    for (int row = std::min(before, list_->rowCount()); row < list_->rowCount(); ++row) {
        list_->setItem(row, 0, new QTableWidgetItem(QString::number(row + 1)));
        list_->setItem(row, 1, new QTableWidgetItem);
    }
    for (int row = 0; row < list_->rowCount(); ++row) {
        showRow(row);
    }
    if (list_->currentRow() < 0 && list_->rowCount() > 0) {
        list_->selectRow(0);
    }
    for (QWidget* const widget : {static_cast<QWidget*>(list_), static_cast<QWidget*>(allYes_),
                                  static_cast<QWidget*>(allNo_), fields_->control("MFF\\FDT")}) {
        if (widget != nullptr) {
            widget->setEnabled(!bus);
        }
    }
}

void PcmFilterPage::showRow(int row) {
    list_->item(row, 1)->setText(filtered_[static_cast<std::size_t>(row)] ? QStringLiteral("Yes")
                                                                          : QStringLiteral("No"));
}

void PcmFilterPage::toggle(int row) {
    if (row < 0 || row >= list_->rowCount()) {
        return;
    }
    const auto at = static_cast<std::size_t>(row);
    filtered_[at] = !filtered_[at];
    showRow(row);
    markChanged();
}

void PcmFilterPage::setAll(bool filtered) {
    std::fill(filtered_.begin(), filtered_.end(), filtered);
    fitRows();
    markChanged();
}

bool PcmFilterPage::eventFilter(QObject* receiver, QEvent* event) {
    if (receiver == list_ && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space) {
        toggle(list_->currentRow());
        return true;
    }
    return PropertyPage::eventFilter(receiver, event);
}

bool PcmFilterPage::validate() {
    return fields_->validate();
}

bool PcmFilterPage::store() {
    auto& record = model_.side.frameFilter;
    fields_->storeValues(record.values);
    setFilteredFrames(record, filtered_);
    return true;
}

}  // namespace kavu
