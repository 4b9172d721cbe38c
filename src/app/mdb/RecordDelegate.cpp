#include "app/mdb/RecordDelegate.h"

#include "app/framework/QtText.h"
#include "app/framework/TypingRules.h"
#include "mdb/record/DiscreteText.h"

#include <algorithm>

#include <QComboBox>
#include <QLineEdit>

namespace kavu {

RecordDelegate::RecordDelegate(const RecordModel& model, QObject* parent)
    : QStyledItemDelegate(parent), model_(model) {}

QWidget* RecordDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                      const QModelIndex& index) const {
    const auto field = model_.fieldAt(index.column());
    const auto allowed = model_.table().allowed(field);
    const auto name = toQString(mdbFields()[field].label);
    if (!allowed.empty()) {
        auto* const list = new QComboBox(parent);
        list->setAccessibleName(name);
        list->addItem(QString());
        for (const auto value : blankSeparated(allowed)) {
            list->addItem(toQString(value));
        }
        return list;
    }
    const auto limit = model_.table().limit(field);
    if (index.data(Qt::EditRole).toString().contains(u'\n')) {
        auto* const lines = new LimitedTextEdit(
            limit, [](const QString&) {}, parent);
        lines->setAccessibleName(name);
        return lines;
    }
    auto* const line = new QLineEdit(parent);
    line->setAccessibleName(name);
    line->setFrame(false);
    auto* const rule = new TypingRule(
        limit, false, [](const QString&) {}, line);
    line->setValidator(rule);
    connect(line, &QLineEdit::textEdited, rule, &TypingRule::took);
    rule->took(index.data(Qt::EditRole).toString());
    return line;
}

void RecordDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    const auto text = index.data(Qt::EditRole).toString();
    if (auto* const list = qobject_cast<QComboBox*>(editor)) {
        // A value that is not allowed stays until another is chosen.
        if (list->findText(text, Qt::MatchFixedString | Qt::MatchCaseSensitive) < 0) {
            list->addItem(text);
        }
        list->setCurrentText(text);
    } else if (auto* const lines = qobject_cast<QPlainTextEdit*>(editor)) {
        lines->setPlainText(text);
    } else if (auto* const line = qobject_cast<QLineEdit*>(editor)) {
        line->setText(text);
    }
}

void RecordDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                  const QModelIndex& index) const {
    if (const auto* const list = qobject_cast<QComboBox*>(editor)) {
        model->setData(index, list->currentText(), Qt::EditRole);
    } else if (const auto* const lines = qobject_cast<QPlainTextEdit*>(editor)) {
        model->setData(index, lines->toPlainText(), Qt::EditRole);
    } else if (const auto* const line = qobject_cast<QLineEdit*>(editor)) {
        model->setData(index, line->text(), Qt::EditRole);
    }
}

void RecordDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                          const QModelIndex& index) const {
    QStyledItemDelegate::updateEditorGeometry(editor, option, index);
    if (qobject_cast<QPlainTextEdit*>(editor) != nullptr && editor->parentWidget() != nullptr) {
        auto place = editor->geometry();
        place.setHeight(editor->fontMetrics().lineSpacing() * 5);
        place.moveTop(
            std::max(0, std::min(place.top(), editor->parentWidget()->height() - place.height())));
        editor->setGeometry(place);
    }
}

}  // namespace kavu
