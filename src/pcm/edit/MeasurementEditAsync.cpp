#include "pcm/edit/MeasurementEditAsync.h"

#include "core/talk/Titles.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "vocabulary/DGroupFields.h"

#include <set>
#include <string>

namespace kavu {

namespace {

constexpr std::size_t kPlacesNamed = 5;

}  // namespace

bool isWholeWord(std::string_view mask) {
    return mask.empty() || mask == kFullWord || mask.find('0') == std::string_view::npos;
}

std::string asyncNameAt(const PcmFormat& format, int fwp, int fn) {
    const auto& cells = format.cells();
    for (auto cell = format.cellAtFrame(fwp, fn); cell; cell = cells.next(cell)) {
        const int record = cells.asyncNumber(cell);
        if (record >= 1 && record <= format.asyncCount()) {
            return format.asyncFormats[static_cast<std::size_t>(record - 1)].dataLinkName.str();
        }
    }
    return {};
}

bool mayCoverAsync(const PcmFormat& format, UserInterface* parent, std::string_view name,
                   std::string_view oldName, const std::vector<CoveredCell>& covered) {
    if (parent == nullptr || format.asyncCount() == 0) {
        return true;
    }
    const auto isOwn = [&](const CoveredCell& cell) {
        const auto held =
            oldName.empty() ? CellRef{} : format.findInCell(cell.fwp, cell.fn, oldName);
        return held && isWholeWord(format.cells().measurement(held).mask.view());
    };
    std::set<std::pair<int, int>> seen;
    std::string places;
    std::size_t count = 0;
    for (const auto& cell : covered) {
        if (!isWholeWord(cell.mask.view()) || isOwn(cell) ||
            !seen.emplace(cell.fwp, format.foldedFrame(cell.fwp, cell.fn)).second) {
            continue;
        }
        const auto async = asyncNameAt(format, cell.fwp, cell.fn);
        if (!async.empty() && ++count <= kPlacesNamed) {
            places += formatPrintf("\nFWP %d, FN %d: '%s'", cell.fwp, cell.fn, async);
        }
    }
    if (count == 0) {
        return true;
    }
    if (count > kPlacesNamed) {
        places += formatPrintf("\nand %d more", static_cast<int>(count - kPlacesNamed));
    }
    const auto text = formatPrintf(
        "'%s' takes whole words that an async stream has its places in, so that both take the same "
        "bits:\n%s\n\nStore it nevertheless?",
        name, places);
    return showBox(parent, text, std::string(loadText(title::kWarning).value_or("")),
                   Icon::Question, Buttons::YesNo, Button::No) == Button::Yes;
}

}  // namespace kavu
