// The field and the buttons by which a text is found in a window, with their keys: Ctrl+F, Enter,
// F3 and Shift+F3.
#pragma once

#include <functional>

#include <QString>
#include <QWidget>

class QHBoxLayout;
class QLabel;
class QLineEdit;

namespace kavu {

class FindRow : public QWidget {
    Q_OBJECT
  public:
    /// Finds the next place of a text, or the one before; false if there is none.
    using Find = std::function<bool(const QString& text, bool forward)>;

    FindRow(Find find, QWidget& window);

    /// Behind the buttons.
    void addWidget(QWidget* widget);

  private:
    void find(bool forward);

    Find find_;
    QHBoxLayout* row_ = nullptr;
    QLineEdit* text_ = nullptr;
    QLabel* found_ = nullptr;
};

}  // namespace kavu
