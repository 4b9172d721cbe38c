#include "pcm/display/FrameDisplay.h"

#include "core/text/Printf.h"
#include "vocabulary/DGroupFields.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr std::string_view kSync = "FSP";
constexpr std::string_view kNoLabel = "??";
constexpr int kMaskBits = 64;

/// The bits that a mask takes in a word; a mask is right-aligned.
std::uint64_t bitsOf(std::string_view mask) {
    if (mask.empty() || mask == kFullWord) {
        return ~std::uint64_t{0};
    }
    std::uint64_t bits = 0;
    for (const char c : mask.substr(0, kMaskBits)) {
        bits = bits << 1U | (c == '1' ? 1U : 0U);
    }
    return bits;
}

void addLine(std::string& text, std::string_view line) {
    if (!text.empty()) {
        text += '\n';
    }
    text += line;
}

}  // namespace

int FrameDisplay::depth(int word) const {
    if (word < 0 || word >= words()) {
        return 0;
    }
    return format_.wordType(word) == WordType::Subframe
               ? std::min(format_.wordDepth(word), frames())
               : frames();
}

bool FrameDisplay::isWithin(FramePlace at) const {
    return at && at.frame <= depth(at.word);
}

bool FrameDisplay::isShown(FramePlace at) const {
    return isWithin(at) || (showAllCells && at && at.word < words() && at.frame <= frames());
}

/// A counter has its one cell at frame 1.
CellRef FrameDisplay::headOf(FramePlace at) const {
    return format_.cellAtFrame(at.word, at.frame);
}

int FrameDisplay::asyncAt(FramePlace at) const {
    const auto& cells = format_.cells();
    for (auto cell = headOf(at); cell; cell = cells.next(cell)) {
        if (const int number = cells.asyncNumber(cell); number > 0) {
            return number;
        }
    }
    return 0;
}

PlaceKind FrameDisplay::kindAt(FramePlace at) const {
    switch (format_.wordType(at.word)) {
        case WordType::IdCounter:
            return PlaceKind::IdCounter;
        case WordType::Sync:
            return PlaceKind::Sync;
        default:
            return asyncAt(at) > 0 ? PlaceKind::Async : PlaceKind::Plain;
    }
}

bool FrameDisplay::isUsed(FramePlace at) const {
    const auto& cells = format_.cells();
    bool used = at && kindAt(at) != PlaceKind::Plain;
    for (auto cell = headOf(at); cell && !used; cell = cells.next(cell)) {
        used = cells.isMeasurement(cell);
    }
    return used;
}

std::string FrameDisplay::asyncName(int record) const {
    return record >= 1 && record <= format_.asyncCount()
               ? format_.asyncFormats[static_cast<std::size_t>(record - 1)].dataLinkName.str()
               : std::string();
}

FrameText FrameDisplay::cellText(FrameArea area, int word, int frame) const {
    switch (area) {
        case FrameArea::Labels:
            return {labelText(word)};
        case FrameArea::WordLegend:
            return {std::to_string(word)};
        case FrameArea::FrameLegend:
            return {std::to_string(frame)};
        default:
            return gridText({word, frame});
    }
}

FrameText FrameDisplay::gridText(FramePlace at) const {
    if (!at || at.word >= words()) {
        return {};
    }
    if (format_.wordType(at.word) == WordType::Sync) {
        return {std::string(kSync)};
    }
    const auto& cells = format_.cells();
    FrameText result;
    int count = 0;
    for (auto cell = headOf(at); cell && count < 2; cell = cells.next(cell)) {
        if (cells.isMeasurement(cell) && ++count == 1) {
            result.text = cells.measurement(cell).name.str();
        }
    }
    if (count > 1) {
        result.ink = FrameInk::Several;
    } else if (count == 1 && highlightEu && hasConversion && hasConversion(result.text)) {
        result.ink = FrameInk::Conversion;
    }
    if (kindAt(at) == PlaceKind::Async) {
        result.text = "Async: " + asyncName(asyncAt(at));
    }
    if (format_.wordType(at.word) == WordType::IdCounter) {
        // The row keeps counting: the value does not wrap at the counter's end value.
        const auto* const counter = format_.idCounterOfWord(at.word);
        const int first = counter == nullptr ? 0 : counter->initialValue.number();
        result.text += formatPrintf(" (%d)", at.frame + first - 1);
    }
    return result;
}

std::string FrameDisplay::labelText(int word) const {
    switch (format_.wordType(word)) {
        case WordType::Sync:
            return std::string(kSync);
        case WordType::IdCounter: {
            const auto* const counter = format_.idCounterOfWord(word);
            return counter == nullptr || counter->name.empty() ? std::string(kNoLabel)
                                                               : counter->name.str();
        }
        case WordType::Subframe: {
            const auto* const subframe = format_.subframeOfWord(word);
            if (subframe == nullptr) {
                return std::string(kNoLabel);
            }
            return subframe->hidden ? std::string(kHiddenLabel) : subframe->name.str();
        }
        default:
            return {};
    }
}

Rgb FrameDisplay::labelColourOf(int word, bool isSelected, Rgb face) const {
    const auto text = labelText(word);
    // A counter without a name counts as no text, though something is shown for it.
    const bool nameless = format_.wordType(word) == WordType::IdCounter && text == kNoLabel;
    return labelColour(format_.wordType(word), !text.empty() && !nameless, isSelected, face,
                       colours);
}

bool FrameDisplay::isMarked(FramePlace at) const {
    const auto head = marked.empty() ? CellRef{} : headOf(at);
    return head && format_.cells().holdsAt(head.word, head.index, marked);
}

FrameMarks FrameDisplay::marksAt(FramePlace at) const {
    FrameMarks marks;
    const auto& cells = format_.cells();
    std::uint64_t taken = 0;
    int count = 0;
    for (auto cell = headOf(at); cell; cell = cells.next(cell)) {
        const bool async = cells.asyncNumber(cell) > 0;
        if (!async && !cells.isMeasurement(cell)) {
            continue;
        }
        marks.async = marks.async || async;
        count += async ? 0 : 1;
        const auto bits = bitsOf(cells.measurement(cell).mask);
        marks.overlap = marks.overlap || (taken & bits) != 0;
        taken |= bits;
    }
    marks.several = count > 1;
    return marks;
}

std::vector<std::string> FrameDisplay::measurementsAt(FramePlace at) const {
    std::vector<std::string> names;
    const auto& cells = format_.cells();
    for (auto cell = headOf(at); cell; cell = cells.next(cell)) {
        if (cells.isMeasurement(cell)) {
            names.push_back(cells.measurement(cell).name.str());
        }
    }
    return names;
}

void FrameDisplay::addMeasurementTip(std::string& text, CellRef cell, int word) const {
    const auto& cells = format_.cells();
    const auto& measurement = cells.measurement(cell);
    const auto mask = measurement.mask.empty() ? kFullWord : measurement.mask.view();
    if (const int record = cells.asyncNumber(cell); record > 0) {
        addLine(text, "Async: " + asyncName(record) + ": mask " + std::string(mask));
        return;
    }
    auto line = measurement.name.str() + ": " + measurement.locationType.str() + ", mask " +
                std::string(mask) + formatPrintf(", %d bits", format_.maskBits(word, mask, false));
    if (measurement.fragmentNumber > 0) {
        line += formatPrintf(", fragment %d", measurement.fragmentNumber);
    }
    if (conversionText) {
        if (const auto conversion = conversionText(measurement.name); !conversion.empty()) {
            line += ", " + conversion;
        }
    }
    addLine(text, line);
}

std::string FrameDisplay::tipText(FramePlace at) const {
    if (!isShown(at)) {
        return {};
    }
    auto text = formatPrintf("FWP %d, FN %d, word of %d bits", at.word, at.frame,
                             format_.wordLength(at.word));
    if (const auto label = labelText(at.word);
        !label.empty() && label != kHiddenLabel && format_.wordType(at.word) != WordType::Sync) {
        text += format_.wordType(at.word) == WordType::IdCounter ? ", ID counter " : ", subframe ";
        text += label;
    }
    if (format_.wordType(at.word) == WordType::Sync) {
        addLine(text, "Frame sync pattern");
        return text;
    }
    constexpr int kMostLines = 20;
    int lines = 0;
    const auto& cells = format_.cells();
    for (auto cell = headOf(at); cell && lines <= kMostLines; cell = cells.next(cell)) {
        if (cells.isFree(cell)) {
            continue;
        }
        if (++lines > kMostLines) {
            addLine(text, "...");
        } else {
            addMeasurementTip(text, cell, at.word);
        }
    }
    if (const auto marks = marksAt(at); marks.overlap) {
        addLine(text, "Some of them take the same bits");
    }
    return text;
}

}  // namespace kavu
