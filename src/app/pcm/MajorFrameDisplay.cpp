#include "app/pcm/MajorFrameDisplay.h"

#include "app/framework/DialogDoor.h"
#include "app/pcm/FrameAccess.h"
#include "app/pcm/MajorFrameWindow.h"
#include "core/talk/Messages.h"

#include <new>

#include <QApplication>

namespace kavu {

namespace {

constexpr int kTooManyWords = 2048;

std::unique_ptr<FrameGridAreas> makeFrameAreas(const PcmFormat& format, QWidget* parent) {
    try {
        return std::make_unique<FrameGridAreas>(format, parent);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

}  // namespace

bool showMajorFrameDisplay(
    FormContext& form, PcmFormat& format, PcmFormSteps& steps, QWidget* window,
    const std::function<std::unique_ptr<FrameGridAreas>(const PcmFormat&, QWidget*)>& makeAreas) {
    if (!format.loaded()) {
        return false;
    }
    if (format.wordsPerMinorFrame >= kTooManyWords) {
        form.messages.show(&form.ui, 224, title::kError, kErrorBox);
        return false;
    }
    installFrameAccess();
    auto* const parent = window != nullptr ? window : QApplication::activeModalWidget();
    MajorFrameWindow display(form, format, steps, makeAreas, parent);
    if (!display.isMade()) {
        form.messages.show(&form.ui, 225, title::kError, kErrorBox);
        return false;
    }
    runDialog(form.door, display);
    return display.displayChanged();
}

bool showMajorFrameDisplay(FormContext& form, DocumentContext& /*document*/, PcmFormat& format,
                           PcmFormSteps& steps, QWidget* window) {
    return showMajorFrameDisplay(form, format, steps, window, makeFrameAreas);
}

}  // namespace kavu
