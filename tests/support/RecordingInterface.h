// A parent for tests: it records what is reported to it and answers from queued replies.
#pragma once

#include "core/talk/UserInterface.h"

#include <deque>
#include <map>
#include <string>
#include <vector>

namespace kavu::test {

class RecordingInterface : public UserInterface {
  public:
    // --- replies ---------------------------------------------------------------------
    /// Reply by message number without sign; then `queued`, then `otherwise`. An OK box
    /// is always answered with OK.
    std::map<int, Button> byId;
    std::deque<Button> queued;
    Button otherwise = Button::No;
    std::deque<std::optional<std::string>> texts;
    std::deque<std::optional<long>> integers;
    std::deque<std::optional<double>> doubles;
    std::deque<int> choices;
    std::deque<int> rows;
    /// For a choice of several rows; without any it is one of `rows`.
    std::deque<std::vector<int>> severalRows;
    std::deque<std::optional<FileChoice>> files;
    /// `cancelRequested` gives true from this call on (counted from 1); 0 is never.
    int cancelAtPoll = 0;

    // --- what was told ---------------------------------------------------------------
    std::vector<MessageBox> boxes;
    std::vector<LoggedMessage> logs;
    std::vector<std::string> notes;
    std::vector<std::string> statusTexts;
    std::vector<std::string> progressTexts;
    std::vector<double> bars;
    struct Shown {
        std::string title;
        std::string subtitle;
        std::vector<std::string> lines;
    };
    std::vector<Shown> shown;
    std::vector<FilePrompt> filePrompts;
    std::vector<std::pair<std::string, std::vector<std::string>>> listPrompts;
    std::vector<ChoicePrompt> choicePrompts;
    std::vector<TextPrompt> textPrompts;
    std::vector<IntegerPrompt> integerPrompts;
    std::vector<TablePrompt> tablePrompts;
    int polls = 0;
    int progressOpened = 0;
    int progressClosed = 0;
    int beeps = 0;

    [[nodiscard]] bool hasBox(int id) const { return countBoxes(id) > 0; }
    [[nodiscard]] int countBoxes(int id) const {
        int count = 0;
        for (const auto& box : boxes) {
            count += std::abs(box.id) == std::abs(id) ? 1 : 0;
        }
        return count;
    }
    [[nodiscard]] int countLogs(int id) const {
        int count = 0;
        for (const auto& log : logs) {
            count += std::abs(log.id) == std::abs(id) ? 1 : 0;
        }
        return count;
    }
    /// True if a text without a number was shown that contains `part`.
    [[nodiscard]] bool hasText(const std::string& part) const {
        for (const auto& box : boxes) {
            if (box.text.find(part) != std::string::npos) {
                return true;
            }
        }
        return false;
    }

    // --- UserInterface ----------------------------------------------------------------
    Button message(const MessageBox& box) override {
        boxes.push_back(box);
        if (box.buttons == Buttons::Ok) {
            return Button::Ok;
        }
        if (const auto reply = byId.find(std::abs(box.id)); box.id != 0 && reply != byId.end()) {
            return reply->second;
        }
        return next(queued, otherwise);
    }
    std::optional<std::string> enterText(const TextPrompt& prompt) override {
        textPrompts.push_back(prompt);
        return next(texts, std::optional<std::string>());
    }
    std::optional<long> enterInteger(const IntegerPrompt& prompt) override {
        integerPrompts.push_back(prompt);
        return next(integers, std::optional<long>());
    }
    std::optional<double> enterDouble(const DoublePrompt&) override {
        return next(doubles, std::optional<double>());
    }
    int chooseFromList(const std::string& title, const std::vector<std::string>& options) override {
        listPrompts.emplace_back(title, options);
        return next(choices, -1);
    }
    int choose(const ChoicePrompt& prompt) override {
        choicePrompts.push_back(prompt);
        return next(choices, -1);
    }
    int selectFromTable(const TablePrompt& prompt) override {
        tablePrompts.push_back(prompt);
        return next(rows, -1);
    }
    std::vector<int> selectRowsFromTable(const TablePrompt& prompt) override {
        if (severalRows.empty()) {
            return UserInterface::selectRowsFromTable(prompt);
        }
        tablePrompts.push_back(prompt);
        return next(severalRows, std::vector<int>());
    }
    std::optional<FileChoice> chooseFile(const FilePrompt& prompt) override {
        filePrompts.push_back(prompt);
        return next(files, std::optional<FileChoice>());
    }
    void logged(const LoggedMessage& message) override { logs.push_back(message); }
    void showMessages(const std::string& title, const std::string& subtitle,
                      const std::vector<std::string>& lines) override {
        shown.push_back({title, subtitle, lines});
    }
    void note(const std::string& text) override { notes.push_back(text); }
    void setStatusText(const std::string& text) override { statusTexts.push_back(text); }
    void setProgressBar(double percent) override { bars.push_back(percent); }
    void setProgressText(const std::string& text) override { progressTexts.push_back(text); }
    void beep() override { ++beeps; }
    bool openProgress(ProgressMode, bool) override {
        const bool first = progressOpened == progressClosed;
        progressOpened += first ? 1 : 0;
        return first;
    }
    void closeProgress() override { ++progressClosed; }
    bool cancelRequested() override {
        ++polls;
        return cancelAtPoll != 0 && polls >= cancelAtPoll;
    }

  private:
    template <typename T>
    static T next(std::deque<T>& queue, const T& otherwise) {
        if (queue.empty()) {
            return otherwise;
        }
        T reply = queue.front();
        queue.pop_front();
        return reply;
    }
};

}  // namespace kavu::test
