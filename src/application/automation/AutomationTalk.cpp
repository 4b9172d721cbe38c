#include "application/automation/AutomationTalk.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace kavu {

namespace {

constexpr int kDeleteSubframeQuestion = 123;
constexpr int kDeleteIdCounterQuestion = 129;
/// What could not be read or written, with the reason.
constexpr auto kFileMessages = std::to_array<int>({158, 313, 407});

bool isOfFile(int message) {
    return std::find(kFileMessages.begin(), kFileMessages.end(), message) != kFileMessages.end();
}

}  // namespace

AutomationError AutomationTalk::failure(AutomationFault unnumbered,
                                        const std::string& withoutMessage) const {
    if (lacksDisplay_) {
        return {AutomationFault::NoDisplay, "There is no display to ask on."};
    }
    if (cancelled_ || stopped_) {
        return {AutomationFault::Cancelled, "The user has cancelled."};
    }
    const auto& text = lastText_.empty() ? withoutMessage : lastText_;
    if (isOfFile(last_)) {
        return {AutomationFault::FileError, text};
    }
    return last_ == 0 && unnumbered != AutomationFault::Refused
               ? AutomationError(unnumbered, text)
               : AutomationError::refused(last_, text);
}

/// What nobody sees is answered as if there were no parent.
Button AutomationTalk::answerUnseen(const MessageBox& box) {
    const int id = std::abs(box.id);
    if (id == kDeleteSubframeQuestion || id == kDeleteIdCounterQuestion) {
        lacksDisplay_ = lacksDisplay_ || reach_ == Reach::NoDisplay;
        return reach_ == Reach::Silent ? Button::Yes : Button::No;
    }
    const bool keepsSomething = id == 0 && box.defaultButton == Button::Yes;
    return keepsSomething ? Button::Yes : Button::None;
}

template <typename Reply>
Reply AutomationTalk::noteReply(Reply reply, bool wasCancelled) {
    cancelled_ = cancelled_ || wasCancelled;
    return reply;
}

Button AutomationTalk::message(const MessageBox& box) {
    const bool asks = box.buttons != Buttons::Ok;
    if (!asks) {
        last_ = std::abs(box.id);
        lastText_ = box.text;
        cancelled_ = false;
    }
    if (reach_ != Reach::Window) {
        return answerUnseen(box);
    }
    const auto reply = shown_->message(box);
    return noteReply(reply, asks && (reply == Button::No || reply == Button::Cancel));
}

std::optional<std::string> AutomationTalk::enterText(const TextPrompt& prompt) {
    if (isSilent()) {
        return std::nullopt;
    }
    auto reply = shown_->enterText(prompt);
    const bool none = !reply;
    return noteReply(std::move(reply), none);
}

std::optional<std::vector<std::string>> AutomationTalk::enterTexts(
    const std::string& title, const std::vector<TextPrompt>& prompts) {
    if (isSilent()) {
        return std::nullopt;
    }
    auto reply = shown_->enterTexts(title, prompts);
    const bool none = !reply;
    return noteReply(std::move(reply), none);
}

std::optional<long> AutomationTalk::enterInteger(const IntegerPrompt& prompt) {
    if (isSilent()) {
        return std::nullopt;
    }
    const auto reply = shown_->enterInteger(prompt);
    return noteReply(reply, !reply);
}

std::optional<double> AutomationTalk::enterDouble(const DoublePrompt& prompt) {
    if (isSilent()) {
        return std::nullopt;
    }
    const auto reply = shown_->enterDouble(prompt);
    return noteReply(reply, !reply);
}

int AutomationTalk::chooseFromList(const std::string& title,
                                   const std::vector<std::string>& choices) {
    const int reply = isSilent() ? -1 : shown_->chooseFromList(title, choices);
    return noteReply(reply, !isSilent() && reply < 0);
}

int AutomationTalk::choose(const ChoicePrompt& prompt) {
    const int reply = isSilent() ? -1 : shown_->choose(prompt);
    return noteReply(reply, !isSilent() && reply < 0);
}

int AutomationTalk::selectFromTable(const TablePrompt& prompt) {
    const int reply = isSilent() ? -1 : shown_->selectFromTable(prompt);
    return noteReply(reply, !isSilent() && reply < 0);
}

std::optional<FileChoice> AutomationTalk::chooseFile(const FilePrompt& prompt) {
    if (isSilent()) {
        return std::nullopt;
    }
    auto reply = shown_->chooseFile(prompt);
    const bool none = !reply;
    return noteReply(std::move(reply), none);
}

void AutomationTalk::logged(const LoggedMessage& message) {
    if (!isSilent()) {
        shown_->logged(message);
    }
}

void AutomationTalk::showMessages(const std::string& title, const std::string& subtitle,
                                  const std::vector<std::string>& lines) {
    if (!isSilent()) {
        shown_->showMessages(title, subtitle, lines);
    }
}

void AutomationTalk::note(const std::string& text) {
    if (!isSilent()) {
        shown_->note(text);
    }
}

void AutomationTalk::loadRemark(const std::string& text) {
    if (!isSilent()) {
        shown_->loadRemark(text);
    }
}

void AutomationTalk::setStatusText(const std::string& text) {
    if (!isSilent()) {
        shown_->setStatusText(text);
    }
}

void AutomationTalk::setProgressBar(double percent) {
    if (!isSilent()) {
        shown_->setProgressBar(percent);
    }
}

void AutomationTalk::beep() {
    if (!isSilent()) {
        shown_->beep();
    }
}

bool AutomationTalk::openProgress(ProgressMode mode, bool withBar) {
    return isSilent() || shown_->openProgress(mode, withBar);
}

void AutomationTalk::closeProgress() {
    if (!isSilent()) {
        shown_->closeProgress();
    }
}

void AutomationTalk::setProgressText(const std::string& text) {
    if (!isSilent()) {
        shown_->setProgressText(text);
    }
}

void AutomationTalk::yieldToInterface() {
    if (!isSilent()) {
        shown_->yieldToInterface();
    }
}

bool AutomationTalk::cancelRequested() {
    const bool reply = !isSilent() && shown_->cancelRequested();
    stopped_ = stopped_ || reply;
    return reply;
}

}  // namespace kavu
