#include "cli/Program.h"

#include "application/Application.h"
#include "application/DocumentService.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "cli/JsonReport.h"
#include "cli/MdbCommands.h"
#include "cli/OutputFile.h"
#include "cli/ReportCommands.h"
#include "cli/ScriptedInterface.h"
#include "cli/SdkCommands.h"
#include "cli/TableCommands.h"
#include "cli/TerminalText.h"
#include "cli/XmlExportCommand.h"
#include "cli/XmlImportCommand.h"
#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/OpenDocument.h"
#include "core/files/FileIo.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Clock.h"
#include "core/text/Edition.h"

#include <cerrno>
#include <cstring>
#include <exception>
#include <new>
#include <ostream>

namespace kavu::cli {

namespace {

ScriptedInterfaceOptions interfaceOptions(const CommandLine& line, bool terminal,
                                          const std::function<bool()>& interrupted) {
    ScriptedInterfaceOptions options;
    options.replies = line.replies;
    options.showBoxes = !line.json;
    options.showNotes = !line.quiet;
    options.showProgress = !line.quiet && (line.progress == ProgressWhen::Always ||
                                           (line.progress == ProgressWhen::Auto && terminal));
    options.terminal = terminal;
    options.interrupted = interrupted;
    return options;
}

std::string counted(std::size_t count, const char* one) {
    return std::to_string(count) + " " + one + (count == 1 ? "" : "s");
}

/// The message log as the Messages window shows it.
std::string messagesText(const ScriptedInterface& ui) {
    std::string text;
    for (const auto& shown : ui.shown()) {
        text += terminalLine(shown.title) + "\n" + terminalLine(shown.subtitle) + "\n\n";
        for (const auto& line : shown.lines) {
            text += terminalLine(line) + "\n";
        }
        text += "\n";
    }
    return text;
}

std::string summaryLine(const OpenedFile& file, const ScriptedInterface& ui) {
    std::string text = terminalLine(file.file) + ": " + editionText(file.version) + ", " +
                       counted(ui.messages().size(), "message");
    if (!ui.questions().empty()) {
        text += ", " + counted(ui.questions().size(), "question");
    }
    return text + (file.changed ? ", changed\n" : "\n");
}

/// False if standard output could not take it all.
bool printAll(ProgramStreams streams, const std::string& text) {
    errno = 0;
    streams.out << text << std::flush;
    if (streams.out) {
        return true;
    }
    const std::string reason = errno != 0 ? std::strerror(errno) : "write error";
    streams.err << "kavu-cli: standard output: " << reason << std::endl;
    return false;
}

/// One run of one command.
class Run {
  public:
    Run(const CommandLine& line, const Environment& environment, ProgramStreams streams,
        const std::function<bool()>& interrupted)
        : line_(line),
          streams_(streams),
          fixed_(line.now.value_or(CivilTime{})),
          ui_(interfaceOptions(line, streams.errIsTerminal, interrupted), streams.err),
          application_(environment, line.now ? static_cast<const Clock&>(fixed_) : system_, random_,
                       line.settingsPath),
          context_{application_, &ui_, line_} {
        file_.file = line.file;
    }

    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;
    /// The working store must also be removed if the run could not go on.
    ~Run() {
        if (started_) {
            application_.documents().discard(nullptr);
            (void)application_.shutDown(nullptr);
        }
    }

    ExitStatus run() {
        tellMissingSettings();
        bool done = false;
        started_ = (line_.settingsPath.empty() || isSettingsFile(&ui_, line_.settingsPath)) &&
                   application_.startUp(&ui_);
        if (started_ && line_.keepComments) {
            application_.context().settings.overrideForThisRun(setting::kKeepComments.name, "1");
        }
        if (started_) {
            file_.version = application_.context().document.version;
            if (line_.command == Command::Recover) {
                done = recover();
            } else {
                done = opensDocument() ? openAndRun() : runAlone();
            }
        }
        done = leave() && done;
        if (!printAll(streams_, report(done))) {
            return ExitStatus::Failed;
        }
        if (!done) {
            tellFailure();
            return ExitStatus::Failed;
        }
        return ui_.messages().empty() && !output_.isReported ? ExitStatus::Clean
                                                             : ExitStatus::Reported;
    }

  private:
    void tellMissingSettings() {
        if (!line_.settingsPath.empty() && !fileExists(line_.settingsPath)) {
            ui_.note("There is no settings file '" + line_.settingsPath +
                     "'; every setting has its default.");
        }
    }

    bool openAndRun() {
        auto& document = application_.context().document;
        const auto& command = documentCommand(line_.command);
        if (!command.prepare(context_)) {
            return false;
        }
        const auto named = fileOfName(line_.file);
        file_.opened = application_.documents().openNamed(&ui_, line_.file);
        file_.version = document.version;
        if (!file_.opened) {
            return false;
        }
        // As it was given: a script compares it.
        file_.file = named;
        file_.changed = document.changed;
        // A stop that came too late for the load still prevents the work.
        const bool done = !ui_.cancelRequested() && command.run(context_, output_);
        file_.changed = document.changed || output_.changed;
        return done;
    }

    bool recover() {
        if (line_.list) {
            file_.file = application_.context().store.temporaryRoot();
            file_.opened = true;
            return listAbandonedCommand(context_, output_);
        }
        const auto& document = application_.context().document;
        file_.opened = recoverCommand(context_, output_);
        file_.changed = file_.opened || document.changed;
        file_.version = document.version;
        return file_.opened;
    }

    [[nodiscard]] bool opensDocument() const {
        if (isTableCommand(line_.command) || isLayoutCommand(line_.command) ||
            isSdkCommand(line_.command)) {
            return false;
        }
        if (isMdbCommand(line_.command)) {
            return mdbOpensDocument(line_.command);
        }
        return line_.command != Command::Fit && line_.command != Command::Vocabulary &&
               line_.command != Command::XmlImport && line_.command != Command::XmlExport;
    }

    bool runAlone() {
        file_.opened = true;
        if (line_.command == Command::XmlImport) {
            return xmlImportCommand(context_, output_);
        }
        if (line_.command == Command::XmlExport) {
            return xmlExportCommand(context_, output_);
        }
        if (isTableCommand(line_.command)) {
            return tableCommand(context_, output_);
        }
        if (isLayoutCommand(line_.command)) {
            return layoutCommand(context_, output_);
        }
        if (isSdkCommand(line_.command)) {
            return sdkCommand(context_, output_);
        }
        if (isMdbCommand(line_.command)) {
            return mdbCommand(context_, output_);
        }
        return line_.command == Command::Fit ? fitCommand(context_, output_)
                                             : vocabularyCommand(context_, output_);
    }

    bool leave() {
        if (started_) {
            // The user's document is on the disk; a command that does not save has no
            // question at its end.
            application_.documents().discard(&ui_);
        }
        return application_.shutDown(&ui_);
    }

    /// All that goes to standard output. What the command has made for it is used up.
    [[nodiscard]] std::string report(bool done) {
        if (line_.json &&
            (line_.list || isSdkCommand(line_.command) || line_.command == Command::XmlExport)) {
            return printed(output_.members);
        }
        if (line_.json && !opensDocument()) {
            Json document = output_.members;
            document["messages"] = messageMembers(ui_);
            if (line_.command != Command::Fit && line_.command != Command::Vocabulary &&
                line_.command != Command::XmlImport) {
                document["questions"] = questionMembers(ui_);
            }
            return printed(document);
        }
        if (line_.json) {
            Json document = fileMembers(file_, ui_);
            for (auto& member : output_.members.items()) {
                document[member.key()] = std::move(member.value());
            }
            return printed(document);
        }
        return messagesText(ui_) + (done ? output_.text : std::string()) +
               (done && !line_.list && opensDocument() ? summaryLine(file_, ui_) : std::string());
    }

    void tellFailure() {
        const char* const what = ui_.cancelRequested()   ? "cancelled"
                                 : !file_.opened         ? "not opened"
                                 : !line_.output.empty() ? "not saved"
                                                         : "not done";
        const std::string name = file_.file.empty() ? line_.mdb.path : file_.file;
        streams_.err << "kavu-cli: " << (name.empty() ? "" : terminalLine(name) + ": ") << what
                     << std::endl;
    }

    const CommandLine& line_;
    ProgramStreams streams_;
    SystemClock system_;
    FixedClock fixed_;
    SystemRandomSource random_;
    ScriptedInterface ui_;
    Application application_;
    CommandContext context_;
    bool started_ = false;
    OpenedFile file_;
    CommandOutput output_;
};

/// The end of a run that could not go on.
ExitStatus endedEarly(const CommandLine& line, ProgramStreams streams, const char* reason) {
    streams.err << "kavu-cli: " << reason << std::endl;
    if (line.json) {
        OpenedFile file;
        file.file = line.file;
        printAll(streams, printed(fileMembers(file, ScriptedInterface({}, streams.err))));
    }
    return ExitStatus::Failed;
}

}  // namespace

ExitStatus runProgram(const std::vector<std::string>& arguments, const Environment& environment,
                      ProgramStreams streams, const std::function<bool()>& interrupted) {
    const auto parsed = parseCommandLine(arguments);
    if (!parsed.line) {
        streams.err << parsed.err << std::flush;
        return printAll(streams, parsed.out) ? parsed.status : ExitStatus::Failed;
    }
    try {
        return Run(*parsed.line, environment, streams, interrupted).run();
    } catch (const std::bad_alloc&) {
        return endedEarly(*parsed.line, streams, "there is not enough memory");
    } catch (const std::exception& error) {
        // Nothing in the logic throws; if it ever does, the store is still removed, and a
        // script gets its document.
        return endedEarly(*parsed.line, streams, error.what());
    }
}

}  // namespace kavu::cli
