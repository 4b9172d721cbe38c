#include "app/conversion/PlotOutput.h"

#include "core/talk/OpenFileChecked.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "drawing/CairoSurface.h"
#include "drawing/SvgSurface.h"
#include "reports/print/ReportPrinter.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

namespace kavu {

namespace {

constexpr std::string_view kSvgEnding = ".svg";
constexpr std::string_view kPdfEnding = ".pdf";
constexpr std::string_view kPngEnding = ".png";
/// In the order of the filters of the prompt.
constexpr auto kEndings = std::to_array({kPdfEnding, kSvgEnding, kPngEnding});
constexpr int kPictureWidth = 1000;
constexpr int kPictureHeight = 1300;

std::optional<std::string> pdfOf(const Clock& clock, const std::string& title,
                                 const DrawPage& draw) {
    PdfSurface surface(pdfSetup(clock, title));
    return draw(surface) && surface.pages() > 0 ? std::optional(surface.document()) : std::nullopt;
}

std::optional<std::string> svgOf(const DrawPage& draw) {
    SvgSurface surface(kPictureWidth, kPictureHeight);
    return draw(surface) ? std::optional(surface.document()) : std::nullopt;
}

std::optional<std::string> pngOf(const DrawPage& draw) {
    PngSurface surface(kPictureWidth, kPictureHeight);
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

void savePlot(FormContext& form, const std::string& title, const DrawPage& draw) {
    FilePrompt prompt;
    prompt.title = "Save Plot";
    prompt.filters = {{"PDF Files", "*.pdf"}, {"SVG Pictures", "*.svg"}, {"PNG Pictures", "*.png"}};
    prompt.forSaving = true;
    auto choice = form.ui.chooseFile(prompt);
    if (!choice) {
        return;
    }
    auto ending = std::find_if(kEndings.begin(), kEndings.end(),
                               [&](auto each) { return endsAs(choice->path, each); });
    if (ending == kEndings.end()) {
        const auto filter = std::clamp<std::size_t>(static_cast<std::size_t>(choice->filterIndex),
                                                    1, kEndings.size());
        ending = kEndings.begin() + static_cast<std::ptrdiff_t>(filter) - 1;
        choice->path += *ending;
    }
    // Drawn first: what cannot be drawn must not cost the file that is there.
    const auto bytes = *ending == kSvgEnding   ? svgOf(draw)
                       : *ending == kPngEnding ? pngOf(draw)
                                               : pdfOf(form.clock, title, draw);
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
