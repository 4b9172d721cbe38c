// The questions that come before something is lost, as their operations ask them.
#include "app/framework/QtInterface.h"
#include "app/framework/SelectDialogs.h"
#include "app/framework/StandardDialogs.h"
#include "application/Application.h"
#include "core/TmatsDocument.h"
#include "core/document/ChangedFile.h"
#include "core/talk/FilePrompts.h"
#include "gallery/Makers.h"
#include "gallery/Screenshots.h"
#include "groups/DataSources.h"
#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"
#include "pcm/edit/FrameAdjust.h"

#include <functional>
#include <optional>

#include <QMessageBox>

namespace kavu {

namespace {

/// Long, as those of archives are.
constexpr const char* kLongPath =
    "/srv/telemetry/archive/2026/kestrel-prototype-2/flight-0147/preflight/flight-test.tma";

/// Keeps the question that it is asked, and cancels.
class Listener : public QtInterface {
  public:
    explicit Listener(DialogDoor& door) : QtInterface(nullptr, door) {}
    Button message(const MessageBox& asked) override {
        box = asked;
        return Button::Cancel;
    }
    int choose(const ChoicePrompt& asked) override {
        prompt = asked;
        return -1;
    }
    std::optional<MessageBox> box;
    std::optional<ChoicePrompt> prompt;
};

std::unique_ptr<QWidget> makeChangedFile(ScreenshotStage& stage) {
    if (stage.document == nullptr) {
        return nullptr;
    }
    Listener listener(stage.form.door);
    (void)askAboutChangedFile(*stage.document, &listener, kLongPath);
    return listener.prompt ? std::make_unique<QuestionDialog>(*listener.prompt, nullptr) : nullptr;
}

std::unique_ptr<QWidget> makeOverwrite(ScreenshotStage& stage) {
    const auto question = stage.document == nullptr
                              ? std::nullopt
                              : overwriteQuestion(stage.document->document.path, {});
    if (!question) {
        return nullptr;
    }
    Listener listener(stage.form.door);
    (void)showBox(&listener, *question, kFileExistsTitle, Icon::Question, Buttons::YesNo,
                  Button::No);
    return makeMessageBox(*listener.box, nullptr);
}

/// Fewer frames, which cut the ranges of measurements.
std::unique_ptr<QWidget> makeAdjust(ScreenshotStage& stage) {
    std::vector<std::string> links;
    if (stage.application == nullptr ||
        !gatherDataLinks(stage.application->context(), nullptr, links) || links.empty()) {
        return nullptr;
    }
    auto& format = stage.application->pcmFormat();
    format.closeFormat();
    if (!loadPcmFormat(format, nullptr, stage.application->pcmSteps(), links.front())) {
        return nullptr;
    }
    Listener listener(stage.form.door);
    (void)editFrameAttribute(format, &listener, "MF1",
                             std::to_string(format.wordsPerMinorFrame * 3 / 4));
    format.closeFormat();
    return listener.box ? makeMessageBox(*listener.box, nullptr) : nullptr;
}

}  // namespace

void addQuestionScreenshots(ScreenshotList& list) {
    list.add("QuestionChangedFile", makeChangedFile);
    list.add("QuestionOverwrite", makeOverwrite);
    list.add("QuestionAdjust", makeAdjust);
}

}  // namespace kavu
