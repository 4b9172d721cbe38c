// The window that floats next to the sheet of a conversion record and shows the conversion
// itself: one for each type.
#pragma once

#include "app/conversion/ConversionForms.h"
#include "app/conversion/DefinitionDetail.h"

#include <memory>

#include <QDialog>

namespace kavu {

class DefinitionWindow : public QDialog {
    Q_OBJECT
  public:
    /// The window of a type over the working copy of `edit`; it takes the resource name of the
    /// type. All of the arguments outlive it.
    DefinitionWindow(FormContext& form, DocumentContext& document, ConversionStore& store,
                     DefinitionEdit& edit, const DetailWindow& window,
                     const ConversionSheetSetup& setup, QWidget* sheet);
    ~DefinitionWindow() override;

    [[nodiscard]] DefinitionDetail& content() const { return *content_; }
    /// Next to the sheet, as far as the screen has room.
    void standBeside(const QWidget& sheet);

    /// Escape and the close button hide the details; the sheet decides.
    void reject() override { emit hideRequested(); }

  signals:
    void hideRequested();

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    DefinitionDetail* content_ = nullptr;
};

}  // namespace kavu
