#include "app/conversion/PlotOutput.h"

#include "app/conversion/QtSurface.h"
#include "app/framework/DialogDoor.h"
#include "app/framework/QtText.h"
#include "core/talk/OpenFileChecked.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "drawing/SvgSurface.h"

#include <optional>
#include <string_view>

#include <QBuffer>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>

namespace kavu {

namespace {

constexpr std::string_view kSvgEnding = ".svg";
constexpr std::string_view kPdfEnding = ".pdf";
constexpr int kSvgFilter = 2;
constexpr int kSvgWidth = 1000;
constexpr int kSvgHeight = 1300;

std::optional<std::string> pdfOf(const std::string& title, const DrawPage& draw) {
    QBuffer buffer;
    if (!buffer.open(QIODevice::WriteOnly)) {
        return std::nullopt;
    }
    QPdfWriter writer(&buffer);
    writer.setTitle(toQString(title));
    writer.setCreator(QStringLiteral("Kavu"));
    if (!paintPage(writer, draw)) {
        return std::nullopt;
    }
    return buffer.data().toStdString();
}

std::optional<std::string> svgOf(const DrawPage& draw) {
    SvgSurface surface(kSvgWidth, kSvgHeight);
    return draw(surface) ? std::optional(surface.document()) : std::nullopt;
}

bool endsAs(std::string_view path, std::string_view ending) {
    return path.size() > ending.size() &&
           equalsIgnoreCase(path.substr(path.size() - ending.size()), ending);
}

void writeFile(FormContext& form, const std::string& title, const std::string& path,
               const std::string& bytes) {
    FileWriter file;
    if (!openFileChecked(&form.ui, path, WriteMode::Truncate, OverwritePolicy::Ask, file)) {
        return;
    }
    file.write(bytes);
    if (const auto status = file.close(); !status.ok()) {
        showBox(&form.ui, "Unable to save '" + status.path() + "'\n\nReason: " + status.reason(),
                title);
    }
}

}  // namespace

bool paintPage(QPagedPaintDevice& device, const DrawPage& draw) {
    PageSurface surface(device);
    const bool drawn = draw(surface);
    return surface.finish() && drawn;
}

void printPlot(FormContext& form, const std::string& title, const DrawPage& draw, QWidget* parent) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(toQString(title));
    QPrintDialog dialog(&printer, parent);
    dialog.setObjectName(QStringLiteral("Print"));
    dialog.setWindowTitle(QStringLiteral("Print Plot"));
    if (runDialog(form.door, dialog) == QDialog::Accepted && !paintPage(printer, draw)) {
        showBox(&form.ui, "The plot could not be printed.", title);
    }
}

void savePlot(FormContext& form, const std::string& title, const DrawPage& draw) {
    FilePrompt prompt;
    prompt.title = "Save Plot";
    prompt.filters = {{"PDF Files", "*.pdf"}, {"SVG Pictures", "*.svg"}};
    prompt.forSaving = true;
    auto choice = form.ui.chooseFile(prompt);
    if (!choice) {
        return;
    }
    const bool named = endsAs(choice->path, kSvgEnding) || endsAs(choice->path, kPdfEnding);
    const bool svg = named ? endsAs(choice->path, kSvgEnding) : choice->filterIndex == kSvgFilter;
    choice->path += named ? std::string_view() : svg ? kSvgEnding : kPdfEnding;
    // Drawn first: what cannot be drawn must not cost the file that is there.
    const auto bytes = svg ? svgOf(draw) : pdfOf(title, draw);
    if (!bytes) {
        showBox(&form.ui, "There is no plot to save.", title);
        return;
    }
    writeFile(form, title, choice->path, *bytes);
}

void savePairTable(FormContext& form, const std::string& title, const std::string& table) {
    FilePrompt prompt;
    prompt.title = "Save Pair Sets";
    prompt.filters = {{"Comma Separated Values", "*.csv"}};
    prompt.forSaving = true;
    prompt.extension = ".csv";
    if (const auto choice = form.ui.chooseFile(prompt)) {
        writeFile(form, title, choice->path, table);
    }
}

}  // namespace kavu
