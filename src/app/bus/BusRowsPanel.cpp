#include "app/bus/BusRowsPanel.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/RowModel.h"
#include "app/framework/WindowCare.h"
#include "bus/definition/BusRows.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QStackedWidget>
#include <QTableView>
#include <QVBoxLayout>

namespace kavu {

namespace {

struct ListTitle {
    BusLevel level;
    const char* title;
};
/// By the depth of the row around them.
constexpr auto kListTitles = std::to_array<ListTitle>({
    {BusLevel::Bus, "Defined Buses"},
    {BusLevel::Message, "Messages"},
    {BusLevel::Measurement, "Measurements"},
    {BusLevel::Location, "Measurement Location"},
});

}  // namespace

BusRowsPanel::BusRowsPanel(const BusDefinition& definition, QWidget* parent)
    : QWidget(parent), definition_(definition) {
    setObjectName(QStringLiteral("rowsPanel"));
    auto* const layout = new QVBoxLayout(this);
    look::arrangePart(*layout, *this);
    title_ = new QLabel(this);
    title_->setObjectName(QStringLiteral("listTitle"));
    title_->setTextFormat(Qt::PlainText);
    layout->addWidget(title_);
    lists_ = new QStackedWidget(this);
    layout->addWidget(lists_, 1);
    for (std::size_t depth = 0; depth < kListTitles.size(); ++depth) {
        byDepth_[depth] =
            makeList(kListTitles[depth].level, QLatin1String(kListTitles[depth].title));
    }
    showRowsOf({});
}

BusRowsPanel::List BusRowsPanel::makeList(BusLevel level, const QString& title) {
    auto* const view = new QTableView(lists_);
    auto* const model = new RowModel(busColumns(level, definition_.edition), view);
    view->setObjectName(QStringLiteral("contents%1").arg(lists_->count()));
    view->setAccessibleName(title);
    view->setModel(model);
    view->setSelectionBehavior(QTableView::SelectRows);
    view->setSelectionMode(QTableView::SingleSelection);
    view->setEditTriggers(QTableView::NoEditTriggers);
    view->setAlternatingRowColors(true);
    view->setShowGrid(false);
    view->setTabKeyNavigation(false);
    view->setWordWrap(false);
    view->verticalHeader()->hide();
    view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view->verticalHeader()->setDefaultSectionSize(look::unit(*view) * 3);
    view->horizontalHeader()->setHighlightSections(false);
    view->horizontalHeader()->setStretchLastSection(true);
    view->horizontalHeader()->setResizeContentsPrecision(200);
    view->setMinimumSize(look::charactersWide(*this, 40), look::unit(*this) * 2 * 6);
    view->installEventFilter(this);
    careForView(*view);
    connect(view, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        emit opened(static_cast<std::size_t>(index.row()));
    });
    lists_->addWidget(view);
    return {model, view};
}

QTableView& BusRowsPanel::list() const {
    return *byDepth_[owner_.size()].view;
}

void BusRowsPanel::showRowsOf(BusPlace place) {
    if (place.size() == kDeepestBusPlace) {
        place.pop_back();
    }
    owner_ = std::move(place);
    const auto& [level, title] = kListTitles[owner_.size()];
    std::vector<RowModel::Row> rows;
    for (const auto& row : rowsOf(*busRowAt(definition_, owner_), level)) {
        rows.push_back(busCells(level, row, definition_.edition));
    }
    const auto& [model, view] = byDepth_[owner_.size()];
    model->setRows(std::move(rows));
    view->resizeColumnsToContents();
    title_->setText(QLatin1String(title));
    lists_->setCurrentWidget(view);
}

bool BusRowsPanel::eventFilter(QObject* receiver, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        const bool opens = key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_F2;
        if (opens && list().currentIndex().isValid()) {
            emit opened(static_cast<std::size_t>(list().currentIndex().row()));
            return true;
        }
    }
    return QWidget::eventFilter(receiver, event);
}

}  // namespace kavu
