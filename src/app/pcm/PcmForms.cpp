#include "app/pcm/PcmForms.h"

#include "app/conversion/ConversionForms.h"
#include "app/pcm/MajorFrameDisplay.h"
#include "app/pcm/PcmAttributes.h"
#include "app/pcm/PcmFormSteps.h"
#include "app/pcm/SheetSteps.h"
#include "app/pcm/WordSteps.h"
#include "app/shell/MainWindow.h"
#include "application/Application.h"
#include "conversion/ConversionCopies.h"
#include "core/document/Transaction.h"
#include "groups/DataSources.h"
#include "groups/DocumentTree.h"
#include "groups/MeasurementNames.h"
#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"

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

/// Says why there is nothing to edit under a name, if so.
bool mayOpen(FormContext& form, Application& application, const std::string& name) {
    if (findStreamGroup(application.pcmFormat(), &form.ui, 'P', name) > 0) {
        return true;
    }
    switch (streamKindOfLink(application.context(), &form.ui, name)) {
        case StreamKind::Bus:
            return true;
        case StreamKind::MessageData:
            showBox(&form.ui, "There is no editor for message data streams yet.", kStreamTitle,
                    Icon::Information);
            return false;
        default:
            showBox(&form.ui, "No stream bears the data link name '" + name + "'.", kStreamTitle,
                    Icon::Information);
            return false;
    }
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
    }
    void takeBack() {
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
};

}  // namespace

bool editStream(FormContext& form, Application& application,
                const std::optional<std::string>& name) {
    auto& document = application.context();
    auto& format = application.pcmFormat();
    const auto chosen = name ? *name : chooseStream(form, document);
    if (chosen.empty() || !mayOpen(form, application, chosen)) {
        return false;
    }
    // Other editors write to the group files: a stream that has stayed is not what they tell.
    format.closeFormat();
    StreamSheet sheet(form, application);
    if (!loadPcmFormat(format, &form.ui, application.pcmSteps(), chosen)) {
        sheet.takeBack();
        return false;
    }
    PcmFormSteps steps;
    auto words = makeWordSteps(form, application);
    words.saveFormat = [&sheet, save = words.saveFormat] {
        const bool saved = save();
        if (saved) {
            sheet.written();
        }
        return saved;
    };
    installWordSteps(steps, form, format, words);
    installSheetSteps(steps, form, format);
    steps.conversions = &application.conversions();
    steps.editConversions = [&](QWidget& window) {
        return editAllConversions(form, document, application.conversions(), &window);
    };
    steps.edit = words.edit;
    PcmSheetCalls calls;
    calls.viewFrame = [&](QWidget&) {
        return showMajorFrameDisplay(form, document, format, steps);
    };
    calls.reports = steps.generateReports;
    calls.saved = [&sheet] { sheet.written(); };
    calls.cancelled = [&sheet] { sheet.takeBack(); };
    const bool wrote = editPcmAttributes(form, format, std::move(calls));
    format.closeFormat();
    return wrote;
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
