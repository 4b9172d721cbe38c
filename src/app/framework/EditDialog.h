// A dialog over one thing that a person edits, without pages: it knows if something has
// changed, and asks before that is lost.
#pragma once

#include "app/framework/FormContext.h"

#include <QDialog>
#include <QString>

namespace kavu {

/// The title of the question whether an edit is given up.
inline constexpr char kCancelTitle[] = "Cancel Operation?";

class EditDialog : public QDialog {
    Q_OBJECT
  public:
    /// The resource name is the objectName, and the topic in the help.
    EditDialog(FormContext& form, const char* resourceName, const QString& title, QWidget* parent);

    [[nodiscard]] bool isChanged() const { return changed_; }

    /// The result of an OK that had nothing to store: nothing has come of the dialog, and yet its
    /// user has not cancelled it.
    static constexpr int kNothingToStore = QDialog::Accepted + 1;

    /// OK: closes if `store` has stored everything. An unchanged dialog stores nothing.
    void accept() override;
    /// Cancel: asks if something has changed.
    void reject() override;

  signals:
    void changed();

  protected:
    /// Controls to model. False (it has been reported) keeps the dialog open.
    [[nodiscard]] virtual bool store() = 0;
    /// The thing is new: OK stores it as it is, and Cancel asks only after an edit.
    void setNew() { new_ = true; }
    /// To be called for every edit of the user.
    void markChanged();
    /// Closes with success whatever has changed: what was done needs no OK any more.
    void finish() { QDialog::accept(); }
    [[nodiscard]] FormContext& form() const { return form_; }

    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    FormContext& form_;
    bool changed_ = false;
    bool new_ = false;
};

}  // namespace kavu
