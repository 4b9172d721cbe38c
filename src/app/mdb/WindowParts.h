// Parts that the windows of the database share.
#pragma once

#include "app/framework/Look.h"

#include <QBoxLayout>
#include <QPushButton>
#include <QString>

class QAbstractItemModel;
class QTableView;

namespace kavu {

/// A table that is as quick with many rows as with few: all of them have one height. The Tab key
/// leaves it, and it is at least so many rows high.
QTableView* makeLongTable(const char* name, const QString& spoken, QAbstractItemModel& model,
                          int rows, QWidget* parent);
/// The same of a table that was made already.
void arrangeLongTable(QTableView& table, const char* name, const QString& spoken,
                      QAbstractItemModel& model, int rows);
/// A click on a head sorts, a second one the other way, and a third one shows the first order.
void makeSortable(QTableView& table);
/// No column is narrower than that many characters, or than its head.
void widenColumns(QTableView& table, int characters);

/// A button at the end of a row, which Return does not press from elsewhere.
template <class Receiver, class Action>
QPushButton* addRowButton(QBoxLayout& row, Receiver* receiver, const char* name,
                          const char16_t* text, const char16_t* icon, Action action) {
    auto* const button =
        look::makeButton(name, QString::fromUtf16(text), QString::fromUtf16(icon), receiver);
    button->setAutoDefault(false);
    QObject::connect(button, &QPushButton::clicked, receiver, action);
    row.addWidget(button);
    return button;
}

}  // namespace kavu
