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

/// What the edit of a stream changes beside it at once: the conversion records and what is known
/// of the names. Cancel takes it back to where the stream was written last.
class BesideStream {
  public:
    BesideStream(FormContext& form, Application& application)
        : form_(form), application_(application) {
        keep();
    }
    BesideStream(const BesideStream&) = delete;
    BesideStream& operator=(const BesideStream&) = delete;
    ~BesideStream() {
        if (const auto& drop = application_.context().steps.deleteConversionCopies) {
            drop(&form_.ui);
        }
    }
    void keep() {
        copied_ =
            copyConversionFiles(application_.context(), application_.conversions(), &form_.ui);
        forgotten_ = application_.measurementNames().forgottenCount();
        changed_ = application_.context().document.changed;
    }
    void takeBack() {
        application_.measurementNames().recall(forgotten_);
        // Without copies the records stay as they are, and the document may have changed.
        if (copied_ &&
            restoreConversionFiles(application_.context(), application_.conversions(), &form_.ui)) {
            application_.context().document.changed = changed_;
        }
    }

  private:
    FormContext& form_;
    Application& application_;
    bool copied_ = false;
    std::size_t forgotten_ = 0;
    bool changed_ = false;  ///< the document
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
    BesideStream beside(form, application);
    if (!loadPcmFormat(format, &form.ui, application.pcmSteps(), chosen)) {
        beside.takeBack();
        return false;
    }
    PcmFormSteps steps;
    auto words = makeWordSteps(form, application);
    words.saveFormat = [&beside, save = words.saveFormat] {
        const bool saved = save();
        if (saved) {
            beside.keep();
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
    calls.saved = [&beside] { beside.keep(); };
    calls.cancelled = [&beside] { beside.takeBack(); };
    const bool wrote = editPcmAttributes(form, format, std::move(calls));
    format.closeFormat();
    return wrote;
}

void installPcmForms(MainWindow& window, Application& application) {
    const auto open = [&window, &application](const std::optional<std::string>& name) {
        auto form = window.formContext();
        if (window.document() != nullptr) {
            editStream(form, application, name);
            // A load may have made corrections, too: the tree shows what there is now.
            window.refresh();
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
