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
#include "pcm/edit/BlockEdit.h"
#include "pcm/edit/FrameAdjust.h"
#include "pcm/edit/MeasurementEditAsync.h"
#include "pcm/structure/AsyncEdit.h"

#include <functional>
#include <optional>

#include <QMessageBox>

namespace kavu {

namespace {

/// Long, as those of archives are.
constexpr const char* kLongPath =
    "/srv/telemetry/archive/2026/kestrel-prototype-2/flight-0147/preflight/flight-test.tma";

/// Words and frames of the sample's first stream that are in use.
constexpr BlockArea kBlock{3, 1, 7, 4};
constexpr int kEmbeddedWord = 5;

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

/// The question that an edit of the sample's first stream asks.
std::unique_ptr<QWidget> makeOfEdit(ScreenshotStage& stage,
                                    const std::function<void(PcmFormat&, Listener&)>& edit) {
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
    edit(format, listener);
    format.closeFormat();
    if (listener.prompt) {
        return std::make_unique<QuestionDialog>(*listener.prompt, nullptr);
    }
    return listener.box ? makeMessageBox(*listener.box, nullptr) : nullptr;
}

/// Fewer frames, which cut the ranges of measurements.
void adjust(PcmFormat& format, Listener& listener) {
    (void)editFrameAttribute(format, &listener, "MF1",
                             std::to_string(format.wordsPerMinorFrame * 3 / 4));
}

/// An async format in words of the block.
void embed(PcmFormat& format) {
    format.asyncFormats.resize(1);
    format.asyncFormats[0].dataLinkName = "Mission Computer";
    (void)placeAsyncSlots(format, nullptr, 1, {kEmbeddedWord, {{1, 1, 16}}}, "FW");
}

void addBlockQuestions(ScreenshotList& list) {
    const auto add = [&list](const char* name, auto edit) {
        list.add(name, [edit](ScreenshotStage& stage) { return makeOfEdit(stage, edit); });
    };
    add("QuestionDelete", [](PcmFormat& format, Listener& listener) {
        embed(format);
        (void)deleteBlock(format, &listener, {}, kBlock);
    });
    add("QuestionPaste", [](PcmFormat& format, Listener& listener) {
        (void)pasteBlock(format, &listener, {}, copyBlock(format, kBlock), kBlock.firstWord + 2,
                         kBlock.firstFrame);
    });
    add("QuestionFill", [](PcmFormat& format, Listener& listener) {
        (void)fillBlock(format, &listener, {}, kBlock, FillDirection::Right);
    });
    add("QuestionAsync", [](PcmFormat& format, Listener& listener) {
        embed(format);
        (void)mayCoverAsync(format, &listener, "ENG1-N1", {}, {{kEmbeddedWord, 1, "FW"}});
    });
}

}  // namespace

void addQuestionScreenshots(ScreenshotList& list) {
    list.add("QuestionChangedFile", makeChangedFile);
    list.add("QuestionOverwrite", makeOverwrite);
    list.add("QuestionAdjust", [](ScreenshotStage& stage) { return makeOfEdit(stage, adjust); });
    addBlockQuestions(list);
}

}  // namespace kavu
