// A session of the automation over a document in a folder of its own, and the picture of all that
// a refused call must leave as it is.
#pragma once

#include "application/automation/AutomationCounters.h"
#include "application/automation/AutomationDocuments.h"
#include "application/automation/AutomationFormats.h"
#include "application/automation/AutomationSession.h"
#include "application/automation/AutomationSubframes.h"
#include "core/document/DocumentHistory.h"
#include "pcm/PcmFormat.h"
#include "pcm/StreamPicture.h"
#include "pcm/undo/StreamUndo.h"
#include "support/TestApplication.h"

#include <filesystem>
#include <limits>
#include <memory>

#include <gmock/gmock.h>

namespace kavu::test {

/// What no number of a stream can be.
inline constexpr auto kLeastInt = std::numeric_limits<std::int32_t>::min();
inline constexpr auto kMostInt = std::numeric_limits<std::int32_t>::max();

/// Windows that record which one was opened, and answer as they are told.
class FakeWindows : public AutomationWindows {
  public:
    RecordingInterface ui;
    bool answer = true;
    std::vector<std::string> opened;
    std::function<void()> during;

    UserInterface* parentOf(std::int64_t) override { return &ui; }
    bool editGeneral(std::int64_t) override { return open("general"); }
    bool editMultiplex(std::int64_t) override { return open("multiplex"); }
    bool editRf(std::int64_t) override { return open("rf"); }
    bool editTape(std::int64_t) override { return open("tape"); }
    bool editFormat(std::int64_t) override { return open("format"); }
    bool showDisplay(std::int64_t) override { return open("display"); }
    bool editCounter(std::int64_t, int counter) override {
        return open("counter " + std::to_string(counter));
    }
    bool editSubframe(std::int64_t, int counter, int subframe) override {
        return open("subframe " + std::to_string(counter) + " " + std::to_string(subframe));
    }
    bool editDataWord(std::int64_t, int fwp, int fn, const std::string& name) override {
        return open("word " + std::to_string(fwp) + " " + std::to_string(fn) + " " + name);
    }
    bool editConversion(std::int64_t, const std::string& measurement) override {
        return open("conversion " + measurement);
    }

  private:
    bool open(std::string name) {
        opened.push_back(std::move(name));
        if (during) {
            during();
        }
        return answer;
    }
};

/// All of the open document: its files in the store and the stream in memory.
struct WholePicture {
    bool open = false;
    bool changed = false;
    std::string path;
    PcmAttributes attributes;
    Picture stream;
    std::map<std::string, std::string> files;
    bool operator==(const WholePicture&) const = default;
};

/// A class 2 stream "ONE" of 16 words of 16 bits in 8 frames, with the counter "SFID" in word 15,
/// the subframe "SF" of 8 frames in word 10 and the measurement "A" in word 2; the stream "TWO".
inline constexpr const char* kAutomationDocument =
    "G\\106:09;G\\DSI\\N:1;G\\DSI-1:Source;G\\DST-1:RF;T-1\\ID:Source;"
    "M-1\\ID:Source;M-1\\BB\\DLN:ONE;M-1\\SI\\N:1;M-1\\SI\\DLN-1:TWO;"
    "P-1\\DLN:ONE;P-1\\D2:64000;P-1\\TF:TWO;P-1\\F1:16;P-1\\MF\\N:8;P-1\\MF1:16;P-1\\MF2:264;"
    "P-1\\MF4:24;P-1\\MF5:111110101111001100100000;"
    "P-1\\ISF\\N:1;P-1\\ISF1-1:SFID;P-1\\ISF2-1:ID;P-1\\IDC1-1:15;P-1\\IDC2-1:16;P-1\\IDC3-1:1;"
    "P-1\\IDC4-1:16;P-1\\IDC5-1:M;P-1\\IDC6-1:1;P-1\\IDC7-1:1;P-1\\IDC8-1:8;P-1\\IDC9-1:8;"
    "P-1\\IDC10-1:INC;P-1\\SF\\N-1:1;P-1\\SF1-1-1:SF;P-1\\SF2-1-1:NO;P-1\\SF4-1-1-1:10;"
    "P-1\\SF6-1-1:8;"
    "P-2\\DLN:TWO;P-2\\TF:TWO;P-2\\F1:8;P-2\\MF\\N:1;P-2\\MF1:4;P-2\\MF2:24;"
    "D-1\\DLN:ONE;D-1\\ML\\N:1;D-1\\MLN-1:L;D-1\\MN\\N-1:1;D-1\\MN-1-1:A;D-1\\LT-1-1:MF;"
    "D-1\\MF-1-1:2;";

class AutomationStage : public ::testing::Test {
  protected:
    static constexpr std::int64_t kWindow = 77;

    AutomationStage() { reach(nullptr); }

    /// Makes the session again, with these windows or without a display.
    void reach(AutomationWindows* display) {
        session.reset();
        session = std::make_unique<AutomationSession>(
            test.application, display,
            AutomationEvents{
                [this](const std::string& path) { signals.push_back("opened " + path); },
                [this](const std::string& path) { signals.push_back("saved " + path); },
                [this](const std::string& path) { signals.push_back("closed " + path); },
                [this](const std::string& stream, bool isChanged) {
                    signals.push_back("format " + stream + (isChanged ? " changed" : " unchanged"));
                }});
        documents = std::make_unique<AutomationDocuments>(*session);
        formats = std::make_unique<AutomationFormats>(*session);
        counters = std::make_unique<AutomationCounters>(*session);
        subframes = std::make_unique<AutomationSubframes>(*session);
    }

    void open(const std::string& contents = kAutomationDocument,
              const std::string& name = "in.tma") {
        writeFile(test.folder / name, contents);
        documents->OpenTmatsFile(0, test.folder / name);
    }
    void load(const std::string& contents = kAutomationDocument) {
        open(contents);
        formats->LoadPCMFormat(0, 1);
    }
    [[nodiscard]] PcmFormat& format() { return test.application.pcmFormat(); }
    [[nodiscard]] TmatsDocument& document() { return test.application.context().document; }

    [[nodiscard]] WholePicture picture() {
        WholePicture whole;
        whole.open = document().open;
        whole.changed = document().changed;
        whole.path = document().path;
        whole.attributes = format();
        whole.stream = pictureOf(format());
        const auto& store = test.application.context().store.folder();
        for (const auto& entry : std::filesystem::recursive_directory_iterator(store)) {
            if (entry.is_regular_file() && entry.path().filename().string().starts_with("[kavu]")) {
                whole.files[entry.path()] = readFile(entry.path());
            }
        }
        return whole;
    }

    /// The error of a call, as "NotFound" or "Refused 231"; "none" if it has succeeded. A call that
    /// fails must have changed nothing.
    template <typename Call>
    std::string errorOf(const Call& call) {
        const auto before = picture();
        const auto told = signals;
        try {
            call();
            return "none";
        } catch (const AutomationError& error) {
            text = error.what();
            EXPECT_TRUE(picture() == before) << "changed by a refused call: " << text;
            EXPECT_EQ(signals, told);
            return nameOf(error);
        }
    }
    /// The same for a call that may leave a change behind.
    template <typename Call>
    std::string failureOf(const Call& call) {
        try {
            call();
            return "none";
        } catch (const AutomationError& error) {
            text = error.what();
            return nameOf(error);
        }
    }
    /// True if the call has succeeded, has changed the stream and has made one level, which takes
    /// it back as a whole.
    template <typename Call>
    void expectOneLevel(const Call& call) {
        format().changed = false;
        const auto before = picture();
        call();
        EXPECT_TRUE(format().changed);
        const auto after = picture();
        auto& levels = session->history();
        ASSERT_TRUE(levels.canUndo());
        ASSERT_TRUE(levels.undo());
        auto undone = picture();
        undone.stream.changed = before.stream.changed;
        undone.attributes.changed = before.attributes.changed;
        undone.attributes.formatEdited = before.attributes.formatEdited;
        EXPECT_TRUE(undone == before) << "one level takes the call back";
        ASSERT_TRUE(levels.redo());
        EXPECT_TRUE(picture().stream.words == after.stream.words);
        format().changed = true;
    }

    TestApplication test;
    std::vector<std::string> signals;
    std::string text;  ///< of the last error
    FakeWindows windows;
    std::unique_ptr<AutomationSession> session;
    std::unique_ptr<AutomationDocuments> documents;
    std::unique_ptr<AutomationFormats> formats;
    std::unique_ptr<AutomationCounters> counters;
    std::unique_ptr<AutomationSubframes> subframes;

  private:
    static std::string nameOf(const AutomationError& error) {
        std::string name(automationErrorName(error.fault()).substr(11));
        const std::string what = error.what();
        return error.fault() == AutomationFault::Refused
                   ? name + " " + what.substr(0, what.find(':'))
                   : name;
    }
};

}  // namespace kavu::test
