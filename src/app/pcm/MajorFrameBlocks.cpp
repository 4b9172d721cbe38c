// What the window does with a block of cells, and the clipboard.
#include "app/framework/QtText.h"
#include "app/framework/TableClipboard.h"
#include "app/pcm/MajorFrameWindow.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"

#include <algorithm>

#include <QAction>
#include <QLabel>

namespace kavu {

namespace {

constexpr const char* kFrameClip = "frame";

BlockArea areaOf(const FrameBlock& block) {
    const auto [firstWord, lastWord] = std::minmax(block.first.word, block.last.word);
    const auto [firstFrame, lastFrame] = std::minmax(block.first.frame, block.last.frame);
    return {firstWord, firstFrame, lastWord, lastFrame};
}

}  // namespace

BlockArea MajorFrameWindow::selectedArea() const {
    return areaOf(areas_->view().block());
}

void MajorFrameWindow::copyBlock() {
    const auto& view = areas_->view();
    if (!view.selected()) {
        return;
    }
    copyTable({.rows = tableFromText(view.blockText(view.block())),
               .kind = kFrameClip,
               .own = clipRows(kavu::copyBlock(format_, selectedArea()))});
    areas_->markCut({});
    status_->setText(QStringLiteral("Copied"));
}

/// As in a table nothing goes until the paste says where to.
void MajorFrameWindow::cutBlock() {
    if (!areas_->view().selected()) {
        return;
    }
    copyBlock();
    areas_->markCut(areas_->view().block());
    status_->setText(QStringLiteral("Cut: the next Paste moves these cells; Escape leaves them"));
}

void MajorFrameWindow::pasteBlock() {
    const auto to = selectedArea();
    if (!areas_->view().selected()) {
        return;
    }
    if (const auto cut = areas_->view().cut; cut.first) {
        edited(moveBlock(format_, &form_.ui, steps_.edit, areaOf(cut), to.firstWord, to.firstFrame),
               "Move Cells");
        return;
    }
    const auto table = pasteTable();
    std::vector<std::string> refused;
    const auto clip = !table                      ? FrameClip{}
                      : table->kind == kFrameClip ? clipFromRows(table->own)
                                                  : clipFromNames(table->rows, refused);
    if (!refused.empty()) {
        showBox(&form_.ui,
                formatPrintf("%d texts cannot be the names of measurements, so nothing was pasted. "
                             "The first one is:\n\n%s",
                             static_cast<int>(refused.size()), refused.front()),
                "Paste");
        return;
    }
    edited(kavu::pasteBlock(format_, &form_.ui, steps_.edit, clip, to.firstWord, to.firstFrame),
           "Paste");
}

void MajorFrameWindow::fillBlock(FillDirection direction) {
    if (areas_->view().selected()) {
        edited(kavu::fillBlock(format_, &form_.ui, steps_.edit, selectedArea(), direction), "Fill");
    }
}

}  // namespace kavu
