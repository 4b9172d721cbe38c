// A list whose entries open by a double click or Enter.
#pragma once

#include <QKeyEvent>
#include <QListWidget>

namespace kavu {

class EntryList : public QListWidget {
  public:
    using QListWidget::QListWidget;

  protected:
    /// A dialog would take the Enter that has opened an entry for its OK.
    void keyPressEvent(QKeyEvent* event) override {
        const bool opens = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        QListWidget::keyPressEvent(event);
        if (opens) {
            event->accept();
        }
    }
};

}  // namespace kavu
