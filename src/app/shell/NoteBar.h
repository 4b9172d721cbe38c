// A bar above the document for what a person should know but need not answer at once. It holds
// several notes, one below the other.
#pragma once

#include <functional>
#include <vector>

#include <QString>
#include <QWidget>

class QLabel;
class QVBoxLayout;

namespace kavu {

class NoteBar : public QWidget {
    Q_OBJECT
  public:
    struct Action {
        const char* objectName;
        QString text;
        std::function<void()> run;
    };
    /// What a note is about. There is at most one note of each: a new one takes its place.
    enum class About { Remarks, Edition, Recovery };

    explicit NoteBar(QWidget* parent);
    /// Shows a note with its buttons; each of them takes the note away.
    void showNote(About about, const QString& text, const std::vector<Action>& actions);
    void removeNote(About about);
    [[nodiscard]] bool has(About about) const;
    /// All notes, one in a line.
    [[nodiscard]] QString text() const;

  private:
    struct Note {
        About about;
        QWidget* row;
        QLabel* text;
    };
    QVBoxLayout* column_ = nullptr;
    std::vector<Note> notes_;
};

}  // namespace kavu
