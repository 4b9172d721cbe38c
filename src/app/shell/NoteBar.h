// A bar above the document for what a person should know but need not answer at once.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <QWidget>

class QHBoxLayout;
class QLabel;

namespace kavu {

class NoteBar : public QWidget {
    Q_OBJECT
  public:
    struct Action {
        const char* objectName;
        QString text;
        std::function<void()> run;
    };

    explicit NoteBar(QWidget* parent);
    /// Shows a note with its buttons, in place of the one before.
    void showNote(const QString& text, const std::vector<Action>& actions);
    [[nodiscard]] QString text() const;

  private:
    QLabel* text_ = nullptr;
    QHBoxLayout* buttons_ = nullptr;
};

}  // namespace kavu
