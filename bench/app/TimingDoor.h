// What a benchmark of a window needs: nobody who answers, and a door that stops the time when the
// window is painted.
#pragma once

#include "app/framework/DialogDoor.h"
#include "core/talk/UserInterface.h"

#include <optional>
#include <string>
#include <vector>

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>

namespace kavu::bench {

/// Nobody is there to answer; progress is not shown.
class Silent : public UserInterface {
  public:
    Button message(const MessageBox&) override { return Button::No; }
    std::optional<std::string> enterText(const TextPrompt&) override { return std::nullopt; }
    std::optional<long> enterInteger(const IntegerPrompt&) override { return std::nullopt; }
    std::optional<double> enterDouble(const DoublePrompt&) override { return std::nullopt; }
    int chooseFromList(const std::string&, const std::vector<std::string>&) override { return -1; }
    int selectFromTable(const TablePrompt&) override { return -1; }
    std::optional<FileChoice> chooseFile(const FilePrompt&) override { return std::nullopt; }
    void showMessages(const std::string&, const std::string&,
                      const std::vector<std::string>&) override {}
};

/// Stops the time when the window is painted, and drops it.
class TimingDoor : public DialogDoor {
  public:
    explicit TimingDoor(const QElapsedTimer& clock) : clock_(clock) {}
    int run(QDialog& dialog) override {
        dialog.show();
        QApplication::processEvents();
        dialog.grab();
        opened.push_back(static_cast<double>(clock_.nsecsElapsed()) / 1e6);
        return QDialog::Rejected;
    }
    std::vector<double> opened;

  private:
    const QElapsedTimer& clock_;
};

}  // namespace kavu::bench
