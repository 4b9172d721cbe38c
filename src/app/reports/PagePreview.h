// A window over pages before they are printed: their paper is chosen there, and they go to a
// printer or into a PDF file.
#pragma once

#include "app/framework/FormContext.h"
#include "app/reports/PageView.h"
#include "reports/print/PaperSetup.h"

#include <functional>
#include <memory>
#include <string>

#include <QDialog>

class QComboBox;
class QLabel;
class QPrinter;
class QPushButton;
class QSpinBox;

namespace kavu {

/// Makes the pages on a paper, by an operation that the user may cancel.
using MakePages = std::function<PrintedDocument(const PaperSetup& paper)>;

class PagePreview : public QDialog {
    Q_OBJECT
  public:
    /// `use` is whose orientation the settings keep. `make` is called while the window lives.
    PagePreview(FormContext& form, const std::string& title, PaperUse use, MakePages make,
                QWidget* parent = nullptr);

    [[nodiscard]] PageView& view() const { return *view_; }
    [[nodiscard]] const PrintedDocument& document() const { return *document_; }

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void makePageRow();
    void makeFindRow();
    void makeButtons();
    void makeDocument();
    void choosePaper();
    void showPage(int page);
    void print();
    void save();

    FormContext& form_;
    std::string title_;
    PaperUse use_;
    MakePages make_;
    PaperSetup paper_;
    std::shared_ptr<const PrintedDocument> document_;
    bool wasShown_ = false;
    PageView* view_ = nullptr;
    QSpinBox* page_ = nullptr;
    QLabel* pages_ = nullptr;
    QComboBox* zoom_ = nullptr;
    QComboBox* size_ = nullptr;
    QComboBox* orientation_ = nullptr;
    QPushButton* copy_ = nullptr;
};

/// Makes the pages under a progress window, and shows them. Without pages nothing opens.
void previewPages(FormContext& form, const std::string& title, PaperUse use, const MakePages& make,
                  QWidget* parent);

/// Prints pages `first` to `last`, counted from 1, on a printer that is set up for their paper.
/// False if the printer fails, or after a cancel.
[[nodiscard]] bool paintPages(QPrinter& printer, const PrintedDocument& document, int first,
                              int last, UserInterface* parent);
/// Asks for a printer and prints the document; message 406 ("Printer Error") if it fails.
void printPages(FormContext& form, const PrintedDocument& document, QWidget* parent);
/// Asks for a file and writes bytes there. What fails is reported under `title`.
bool saveReportFile(FormContext& form, const std::string& title,
                    std::pair<std::string, std::string> filter, const std::string& extension,
                    std::string_view bytes);

}  // namespace kavu
