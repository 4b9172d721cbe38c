#include "app/framework/ClearChoice.h"

#include <QComboBox>
#include <QKeyEvent>

namespace kavu {

namespace {

class DeleteKey : public QObject {
  public:
    explicit DeleteKey(QComboBox& box) : QObject(&box), box_(box) {}

    bool eventFilter(QObject* receiver, QEvent* event) override {
        if (event->type() == QEvent::KeyPress &&
            static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete) {
            box_.setPlaceholderText({});
            box_.setCurrentIndex(-1);
            return true;
        }
        return QObject::eventFilter(receiver, event);
    }

  private:
    QComboBox& box_;
};

}  // namespace

void clearOnDelete(QComboBox& box) {
    const auto told = QStringLiteral("Press Delete to select nothing.");
    box.setToolTip(told);
    box.setAccessibleDescription(told);
    box.installEventFilter(new DeleteKey(box));
}

}  // namespace kavu
