// What a preview does with its pages: the printer of the desktop, a file.
#include "app/framework/DialogDoor.h"
#include "app/framework/QtText.h"
#include "app/reports/PagePreview.h"
#include "app/reports/PaperSurface.h"
#include "core/files/FileIo.h"
#include "core/talk/Messages.h"
#include "core/text/Printf.h"

#include <algorithm>

#include <QPageLayout>
#include <QPageSize>
#include <QPrintDialog>
#include <QPrinter>

namespace kavu {

namespace {

constexpr double kPointsPerInch = 72;

/// The printer takes the paper of the pages as it is; false if it cannot.
bool setPaper(QPrinter& printer, const DrawingSize& paper) {
    const bool isWide = paper.width > paper.height;
    const QSizeF upright(std::min(paper.width, paper.height), std::max(paper.width, paper.height));
    printer.setFullPage(true);
    return printer.setPageSize(QPageSize(upright, QPageSize::Point, {}, QPageSize::FuzzyMatch)) &&
           printer.setPageOrientation(isWide ? QPageLayout::Landscape : QPageLayout::Portrait);
}

}  // namespace

bool paintPages(QPrinter& printer, const PrintedDocument& document, int first, int last,
                UserInterface* parent) {
    QPainter painter;
    if (!painter.begin(&printer)) {
        return false;
    }
    for (int page = first; page <= last; ++page) {
        setProgressText(parent, formatPrintf("Printing page %d", page));
        if (cancelRequested(parent) || (page > first && !printer.newPage())) {
            return false;
        }
        painter.save();
        painter.scale(printer.logicalDpiX() / kPointsPerInch,
                      printer.logicalDpiY() / kPointsPerInch);
        {
            PaperSurface surface(painter, document.paper);
            document.pages[static_cast<std::size_t>(page) - 1].drawOn(surface);
        }
        painter.restore();
    }
    return painter.end();
}

void printPages(FormContext& form, const PrintedDocument& document, QWidget* parent) {
    const int pages = static_cast<int>(document.pages.size());
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(toQString(document.title));
    printer.setFromTo(1, pages);
    if (!setPaper(printer, document.paper)) {
        form.messages.show(&form.ui, 406, title::kError, kErrorBox,
                           "Unable to retrieve paper orientation");
        return;
    }
    QPrintDialog dialog(&printer, parent);
    dialog.setObjectName(QStringLiteral("Print"));
    dialog.setMinMax(1, pages);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    if (runDialog(form.door, dialog) != QDialog::Accepted) {
        return;
    }
    // The dialog of the desktop may have set a paper of its own.
    (void)setPaper(printer, document.paper);
    const bool isRange = printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0;
    const int first = isRange ? std::clamp(printer.fromPage(), 1, pages) : 1;
    const int last = isRange ? std::clamp(printer.toPage(), first, pages) : pages;
    const ProgressScope progress(&form.ui, ProgressMode::WithCancel, false);
    if (!paintPages(printer, document, first, last, &form.ui) && !cancelRequested(&form.ui)) {
        form.messages.show(&form.ui, 406, title::kError, kErrorBox, "The pages were not printed");
    }
}

bool saveReportFile(FormContext& form, const std::string& title,
                    std::pair<std::string, std::string> filter, const std::string& extension,
                    std::string_view bytes) {
    FilePrompt prompt;
    prompt.title = "Save " + title;
    prompt.filters = {std::move(filter)};
    prompt.forSaving = true;
    prompt.extension = extension;
    prompt.confirmsOverwrite = true;
    const auto choice = form.ui.chooseFile(prompt);
    if (!choice) {
        return false;
    }
    const auto status = replaceUserFile(choice->path, bytes);
    if (!status.ok()) {
        showBox(&form.ui,
                formatPrintf("Unable to save '%s'\n\nReason: %s", status.path(), status.reason()),
                title);
    }
    return status.ok();
}

}  // namespace kavu
