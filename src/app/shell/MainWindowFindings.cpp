// What the main window says about the open document: its messages and where they lead, its remarks,
// its edition, the status line, the page of the manual about what is selected.
#include "app/framework/QtText.h"
#include "app/shell/CommandPane.h"
#include "app/shell/MainWindow.h"
#include "app/shell/MessageDesk.h"
#include "app/shell/NoteBar.h"
#include "app/shell/TreePanel.h"
#include "application/Application.h"
#include "application/DocumentCheck.h"
#include "application/DocumentService.h"
#include "application/EditionHint.h"
#include "core/TmatsDocument.h"
#include "core/files/FileIo.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Clock.h"
#include "core/text/Edition.h"
#include "core/text/Printf.h"
#include "groups/GroupScan.h"

#include <algorithm>
#include <utility>

#include <QApplication>
#include <QLabel>
#include <QTreeView>

namespace kavu {

void MainWindow::followDocument(const DocumentChange& change) {
    const auto& document = application_.context().document;
    if (change.kind == DocumentChange::Opened) {
        desk_->begin(document.path, notes_);
        looksForEdition_ = true;
    } else if (change.kind == DocumentChange::Closed) {
        desk_->clear();
        looksForEdition_ = false;
        noteBar_->removeNote(NoteBar::About::Remarks);
        noteBar_->removeNote(NoteBar::About::Edition);
    }
}

/// Remarks of an opening are offered, not forced upon the user.
void MainWindow::showNotes() {
    if (notes_.empty()) {
        return;
    }
    const auto notes = std::exchange(notes_, {});
    const auto text = notes.size() == 1
                          ? toQString(notes.front())
                          : QStringLiteral("There are %1 remarks on this file.").arg(notes.size());
    std::vector<NoteBar::Action> buttons;
    if (notes.size() > 1) {
        buttons.push_back({"showRemarks", QStringLiteral("&Show"), [this, notes] {
                               if (facts_.document.open) {
                                   desk_->show();
                                   return;
                               }
                               ui_->showMessages("Remarks", {}, notes);
                           }});
    }
    buttons.push_back({"dismiss", QStringLiteral("&Dismiss"), {}});
    noteBar_->showNote(NoteBar::About::Remarks, text, buttons);
}

/// Says of a document that was opened just now that another edition would read it better.
void MainWindow::offerEdition() {
    if (!std::exchange(looksForEdition_, false)) {
        return;
    }
    const auto hint = findBetterEdition(application_, ui_.get());
    if (!hint) {
        return;
    }
    const int better = hint->better;
    noteBar_->showNote(NoteBar::About::Edition, toQString(hintText(*hint)),
                       {{"readAs",
                         QStringLiteral("&Read As %1")
                             .arg(toQString(formatPrintf("106-%2.2d", editionNumber(better)))),
                         [this, better] {
                             application_.documents().readAs(ui_.get(), better);
                             // It is what was wanted: there is nothing to be looked for again.
                             looksForEdition_ = false;
                             endCommand();
                         }},
                        {"keepEdition", QStringLiteral("&Leave It"), {}}});
}

void MainWindow::checkDocument() {
    const auto findings = kavu::checkDocument(application_, ui_.get());
    if (!findings) {
        return;
    }
    const auto& context = application_.context();
    const auto name = context.document.path.empty() ? std::string("the new TMATS file")
                                                    : "'" + fileNameOf(context.document.path) + "'";
    const auto found = findings->empty()       ? std::string("nothing was found")
                       : findings->size() == 1 ? std::string("1 message")
                                               : formatPrintf("%lu messages", findings->size());
    desk_->renew(*findings, formatPrintf("Check of %s at %s, with all its streams: %s.", name,
                                         timeText(context.clock.now()), found));
}

/// A screen reader hears of a text by the name of its label.
void MainWindow::showStatus(const std::string& text) {
    const auto shown = toQString(text);
    if (statusLabel_->text() == shown) {
        return;
    }
    statusLabel_->setText(shown);
    statusLabel_->setAccessibleName(shown.isEmpty() ? QStringLiteral("Status")
                                                    : QStringLiteral("Status: %1").arg(shown));
}

// --- the place of a finding -----------------------------------------------------------------

bool MainWindow::goTo(const FindingPlace& place) {
    const bool isGroup = place.letter != 0 && selectGroup(place.letter, place.group);
    const bool isThere =
        isGroup || (!place.measurement.empty() && tree_->selectMeasurement(place.measurement)) ||
        (!place.stream.empty() && tree_->selectStream(place.stream));
    if (!isThere) {
        return false;
    }
    activateWindow();
    raise();
    if (isGroup) {
        pane_->showCommand(place.letter, place.group, place.code);
    } else {
        tree_->view()->setFocus();
    }
    return true;
}

/// Selects what a group file describes. An item of the tree has one file, and a stream may have
/// several, each with an index of its own: the others are found by the name of the stream.
bool MainWindow::selectGroup(char letter, int index) {
    if (tree_->select(letter, index)) {
        return true;
    }
    constexpr std::string_view kOfStreams = "PDBSA";
    if (!facts_.document.open || kOfStreams.find(letter) == std::string_view::npos) {
        return false;
    }
    const GroupNames streams(application_.context(), nullptr, letter);
    return std::any_of(streams.entries().begin(), streams.entries().end(),
                       [this, index](const GroupNames::Entry& entry) {
                           return entry.index == index && tree_->selectStream(entry.name);
                       });
}

// --- the look -------------------------------------------------------------------------------

void MainWindow::installAppearance() {
    const auto choice = [this](look::Appearance appearance) {
        return [this, appearance] {
            application_.context().settings.set(setting::kAppearance, look::settingOf(appearance));
            scheme_.reset();
            applyAppearance();
        };
    };
    handlers_[CommandId::AppearanceDesktop] = choice(look::Appearance::Desktop);
    handlers_[CommandId::AppearanceLight] = choice(look::Appearance::Light);
    handlers_[CommandId::AppearanceDark] = choice(look::Appearance::Dark);
}

void MainWindow::applyAppearance() {
    const auto chosen =
        look::appearanceOf(application_.context().settings.get(setting::kAppearance));
    look::apply(*qApp, scheme_ ? *scheme_ : look::schemeOf(chosen));
}

// --- help -----------------------------------------------------------------------------------

std::string MainWindow::topicOfSelection() const {
    const auto item = facts_.document.open ? tree_->current() : std::nullopt;
    if (!item) {
        return facts_.document.open ? "editor" : "index";
    }
    switch (item->kind) {
        case TreeKind::General:
            return "GeneralInfo";
        case TreeKind::TransmissionHead:
        case TreeKind::RecorderHead:
        case TreeKind::OtherHead:
            return "sources";
        case TreeKind::Source:
            return item->letter == 'R' ? "Tape" : item->letter == 'T' ? "RF" : "sources";
        case TreeKind::MultiplexDefinition:
            return "multiplex_info";
        case TreeKind::StreamsHead:
        case TreeKind::UnlinkedHead:
            return "streams";
        case TreeKind::Stream:
        case TreeKind::EmbeddedStream:
            return item->letter == 'P' ? "PcmInputData" : "streams";
        case TreeKind::ConversionHead:
        case TreeKind::Measurement:
            return "DataConversion";
        case TreeKind::Hardware:
        case TreeKind::VendorHead:
        case TreeKind::Vendor:
            return "GENERIC_EDIT";
        case TreeKind::Pam:
            return "pam_info";
    }
    return "index";
}

}  // namespace kavu
