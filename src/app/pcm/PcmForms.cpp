#include "app/pcm/PcmForms.h"

#include "app/bus/BusForms.h"
#include "app/bus/StreamDataForms.h"
#include "app/conversion/ConversionForms.h"
#include "app/mdb/StreamDatabase.h"
#include "app/pcm/MajorFrameDisplay.h"
#include "app/pcm/PcmAttributes.h"
#include "app/pcm/PcmFormSteps.h"
#include "app/pcm/SheetSteps.h"
#include "app/pcm/WordSteps.h"
#include "app/shell/MainWindow.h"
#include "application/Application.h"
#include "bus/StreamData.h"
#include "bus/definition/BusFiles.h"
#include "bus/definition/BusUnpack.h"
#include "conversion/ConversionCopies.h"
#include "core/document/Transaction.h"
#include "groups/DataSources.h"
#include "groups/DocumentTree.h"
#include "groups/MeasurementNames.h"
#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"
#include "pcm/undo/StreamUndo.h"

namespace kavu {

namespace {

constexpr char kStreamTitle[] = "Edit Stream Format Information";

/// The name that the user chooses of all data links; empty if none was chosen.
std::string chooseStream(FormContext& form, DocumentContext& document) {
    TablePrompt prompt;
    prompt.title = "Select Data Link";
    prompt.columns = {"Data Link Name", "Stream Type", "Data Source"};
    for (const auto& source : readDocumentTree(document, &form.ui).dataSources) {
        for (const auto& link : source.links) {
            prompt.rows.push_back({link.name, link.kind, source.name});
        }
    }
    if (prompt.rows.empty()) {
        showBox(&form.ui, "This document has no streams.", kStreamTitle, Icon::Information);
        return {};
    }
    const int row = form.ui.selectFromTable(prompt);
    return row < 0 ? std::string() : prompt.rows[static_cast<std::size_t>(row)].front();
}

/// A stream without a format of its own: its contents are edited at once.
bool editContents(FormContext& form, Application& application, const std::string& name) {
    if (streamKindOfLink(application.context(), &form.ui, name) == StreamKind::Bus) {
        return editBus(form, application, name);
    }
    bool isWritten = false;
    switch (streamDataOf(application.context(), &form.ui, name)) {
        case StreamData::Messages:
            isWritten = editMessages(form, application, name);
            break;
        case StreamData::Packets:
            isWritten = editPackets(form, application, name);
            break;
        case StreamData::None:
            showBox(&form.ui, "No stream bears the data link name '" + name + "'.", kStreamTitle,
                    Icon::Information);
            break;
    }
    if (isWritten) {
        // From now on other streams are told about the names that this one has.
        application.measurementNames().checkForDuplicates(nullptr);
    }
    return isWritten;
}

/// The sheet of a stream as an operation: what it changes at once, as the conversion records, and
/// what is known of the names. Cancel takes it back to where the stream was written last.
class StreamSheet {
  public:
    StreamSheet(FormContext& form, Application& application)
        : form_(form), application_(application) {
        begin();
    }
    StreamSheet(const StreamSheet&) = delete;
    StreamSheet& operator=(const StreamSheet&) = delete;
    ~StreamSheet() { end(); }
    /// The stream was written: up to here it stays, and can be undone after the sheet.
    void written() {
        end();
        begin();
        hasContents_ = hasContents_ || hasNewContents_;
        hasNewContents_ = false;
    }
    /// An editor of what the stream has besides its format has written it.
    void contentsWritten() { hasNewContents_ = true; }
    /// Something was written besides the format, and stays.
    [[nodiscard]] bool hasContents() const { return hasContents_ || hasNewContents_; }
    void takeBack() {
        hasNewContents_ = false;
        application_.measurementNames().recall(forgotten_);
        restoreConversionFiles(*operation_, &form_.ui);
    }

  private:
    void begin() {
        operation_.emplace(application_.context(), OperationId::EditStream, OnCrash::Keep);
        copyConversionFiles(*operation_, application_.conversions(), &form_.ui);
        forgotten_ = application_.measurementNames().forgottenCount();
    }
    void end() {
        if (operation_->isOpen()) {
            endTransaction(*operation_, &form_.ui, true);
        }
    }

    FormContext& form_;
    Application& application_;
    std::optional<Transaction> operation_;
    std::size_t forgotten_ = 0;
    bool hasContents_ = false;
    bool hasNewContents_ = false;  ///< since the stream was written
};

/// The editors of what a stream has besides its format. What they write goes with the sheet: it is
/// taken back if that is left with Cancel.
void addContents(FormContext& form, Application& application, const std::string& name,
                 StreamSheet& sheet, PcmSheetCalls& calls) {
    using Editor = bool (*)(FormContext&, Application&, const std::string& link, QWidget* window);
    const auto call = [&form, &application, &sheet, name](Editor editor) {
        return [&form, &application, &sheet, name, editor](QWidget& window) {
            const bool isWritten = editor(form, application, name, &window);
            if (isWritten) {
                sheet.contentsWritten();
            }
            return isWritten;
        };
    };
    calls.viewPackets = call(editPackets);
    calls.viewBus = [&form, &application, name](QWidget& window) {
        // The group is copied back when the stream is saved.
        const bool isPacked = editLoadedBus(form, application, name, &window);
        auto& format = application.pcmFormat();
        format.changed = format.changed || isPacked;
        return isPacked;
    };
    if (streamDataOf(application.context(), &form.ui, name) == StreamData::Messages) {
        calls.editMessages = call(editMessages);
    }
}

/// "Report Generation" of the stream of a sheet. That of a bus is of its buses, as they were loaded
/// or edited last; false if they cannot be read, as after a cancel.
bool reportStream(FormContext& form, DocumentContext& document, const PcmFormat& format,
                  const std::string& link, QWidget& window) {
    if (!format.isBusStream) {
        form.reports.stream(window, true);
    } else if (const auto bus = reopenBusDefinition(document, &form.ui, link)) {
        discardBusProfiles(document);
        form.reports.bus(window, *bus);
    }
    return false;
}

/// What the windows over the stream in memory call in each other.
class StreamWindows {
  public:
    /// `written` follows each write of the stream. The arguments must outlive the object.
    StreamWindows(FormContext& form, Application& application,
                  const std::function<void()>& written = {})
        : form_(form), application_(application) {
        auto& format = application.pcmFormat();
        auto words = makeWordSteps(form, application);
        words.saveFormat = [written, save = words.saveFormat] {
            const bool saved = save();
            if (saved && written) {
                written();
            }
            return saved;
        };
        installWordSteps(steps_, form, format, words);
        installSheetSteps(steps_, form, format);
        installDatabaseEntries(steps_, form, application);
        steps_.conversions = &application.conversions();
        steps_.editConversions = [&form, &application](QWidget& window) {
            return editAllConversions(form, application.context(), application.conversions(),
                                      &window);
        };
        steps_.edit = words.edit;
        if (form.reports.stream) {
            steps_.generateReports = [&form](QWidget& over) {
                form.reports.stream(over, false);
                return false;
            };
        }
    }

    bool showFrame() {
        return showMajorFrameDisplay(form_, application_.context(), application_.pcmFormat(),
                                     steps_);
    }

  private:
    FormContext& form_;
    Application& application_;
    PcmFormSteps steps_;
};

/// Runs the sheet over the stream in memory, with all that its buttons open. True if the stream was
/// written.
bool runStreamSheet(FormContext& form, Application& application, const std::string& link,
                    StreamSheet& sheet, const std::function<void()>& saved,
                    const std::function<void()>& cancelled) {
    auto& document = application.context();
    auto& format = application.pcmFormat();
    StreamWindows windows(form, application, saved);
    PcmSheetCalls calls;
    calls.viewFrame = [&](QWidget&) { return windows.showFrame(); };
    addContents(form, application, link, sheet, calls);
    if (form.reports.stream) {
        calls.reports = [&](QWidget& over) {
            return reportStream(form, document, format, link, over);
        };
    }
    calls.saved = saved;
    calls.cancelled = cancelled;
    return editPcmAttributes(form, format, std::move(calls));
}

}  // namespace

bool editStream(FormContext& form, Application& application,
                const std::optional<std::string>& name) {
    auto& document = application.context();
    auto& format = application.pcmFormat();
    const auto chosen = name ? *name : chooseStream(form, document);
    if (chosen.empty()) {
        return false;
    }
    if (findStreamGroup(format, &form.ui, 'P', chosen) <= 0) {
        return editContents(form, application, chosen);
    }
    // Other editors write to the group files: a stream that has stayed is not what they tell.
    format.closeFormat();
    StreamSheet sheet(form, application);
    if (!loadPcmFormat(format, &form.ui, application.pcmSteps(), chosen)) {
        sheet.takeBack();
        return false;
    }
    const bool wrote = runStreamSheet(
        form, application, chosen, sheet, [&sheet] { sheet.written(); },
        [&sheet] { sheet.takeBack(); });
    format.closeFormat();
    return wrote || sheet.hasContents();
}

bool editLoadedStream(FormContext& form, Application& application) {
    auto& format = application.pcmFormat();
    StreamSheet sheet(form, application);
    StreamUndo history(format);
    const bool wasChanged = format.changed;
    bool isWritten = false;
    const auto saved = [&] {
        sheet.written();
        (void)history.commit();
        isWritten = true;
    };
    const auto cancelled = [&] {
        sheet.takeBack();
        if (history.commit()) {
            (void)history.undo(&form.ui);
        }
        format.changed = wasChanged && !isWritten;
    };
    const bool wrote =
        runStreamSheet(form, application, format.streamName.str(), sheet, saved, cancelled);
    return wrote || sheet.hasContents();
}

bool showLoadedStream(FormContext& form, Application& application) {
    const bool isEdited = StreamWindows(form, application).showFrame();
    auto& format = application.pcmFormat();
    format.changed = format.changed || isEdited;
    return isEdited;
}

void installPcmForms(MainWindow& window, Application& application) {
    const auto open = [&window, &application](const std::optional<std::string>& name) {
        auto form = window.formContext();
        if (window.document() != nullptr) {
            editStream(form, application, name);
        }
    };
    window.installEditor(CommandId::Stream, [open] { open(std::nullopt); });
    window.installTreeAction(TreeAction::EditStream,
                             [open](const TreeItem& item) { open(item.name); });
    application.setDefinitionModeStep([&window](UserInterface&, bool wordFrame) {
        auto form = window.formContext();
        return chooseDefinitionMode(form, window.ui().dialogParent(), wordFrame);
    });
}

}  // namespace kavu
