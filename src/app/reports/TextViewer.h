// A report as plain text: it can be searched, printed and saved.
#pragma once

#include "app/framework/FormContext.h"

#include <string>

#include <QDialog>

class QPlainTextEdit;

namespace kavu {

class TextViewer : public QDialog {
    Q_OBJECT
  public:
    /// The text is bytes; a form feed begins a page.
    TextViewer(FormContext& form, const DocumentContext& document, std::string title,
               std::string text, QWidget* parent = nullptr);

    [[nodiscard]] QPlainTextEdit& text() const { return *view_; }

  private:
    void makeButtons();
    bool find(const QString& text, bool forward);

    FormContext& form_;
    const DocumentContext& document_;
    std::string title_;
    std::string bytes_;
    QPlainTextEdit* view_ = nullptr;
};

}  // namespace kavu
