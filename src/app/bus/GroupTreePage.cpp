#include "app/bus/GroupTreePage.h"

#include "app/bus/GroupTreeEditor.h"
#include "app/framework/Look.h"

#include <algorithm>

#include <QTreeView>
#include <QVBoxLayout>

namespace kavu {

namespace {

/// What a line of most groups has room in.
constexpr int kTreeColumns = 100;
constexpr int kTreeLines = 20;

}  // namespace

GroupTreePage::GroupTreePage(FormContext& form, const char* resourceName, const std::string& title,
                             GroupTreeModel& model, const QString& spoken, QWidget* parent)
    : PropertyPage(form, resourceName, title, parent) {
    auto* const column = new QVBoxLayout(this);
    look::arrangeWindow(*column, *this);
    editor_ = new GroupTreeEditor(form, model, "editor", spoken, this);
    const auto room = look::roomOnScreen(*this) / 2;
    editor_->tree()->setMinimumSize(
        std::min(look::charactersWide(*this, kTreeColumns), room.width()),
        std::min(look::unit(*this) * 2 * kTreeLines, room.height()));
    column->addWidget(editor_);
    connect(editor_, &GroupTreeEditor::changed, this, [this] { markChanged(); });
}

}  // namespace kavu
