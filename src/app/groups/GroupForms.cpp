#include "app/groups/GroupForms.h"

#include "app/groups/GenericEditDialog.h"
#include "app/groups/MultiplexDialog.h"
#include "app/groups/PamDialog.h"
#include "app/groups/RSheet.h"
#include "app/groups/SelectSourceDialog.h"
#include "app/shell/MainWindow.h"
#include "application/Application.h"

namespace kavu {

namespace {

/// An editor of the open document as a command of the menu: the window shows what it did.
template <typename Editor>
std::function<void()> command(MainWindow& window, Editor editor) {
    return [&window, editor] {
        auto form = window.formContext();
        if (auto* const document = window.document();
            document != nullptr && editor(form, *document)) {
            window.refresh();
        }
    };
}

SourceParts partsOf(Application& application) {
    return {application.context(), application.conversions(), application.measurementNames()};
}

/// The same for an editor of the group of one data source, which is chosen first.
template <typename Editor>
std::function<void()> sourceCommand(MainWindow& window, Application& application, char letter,
                                    Editor editor) {
    return command(window, [&application, letter, editor](FormContext& form, DocumentContext&) {
        auto parts = partsOf(application);
        const auto source = selectDataSource(form, parts, letter);
        return source && editor(form, parts, source->name);
    });
}

}  // namespace

void installGroupForms(MainWindow& window, Application& application) {
    window.installEditor(CommandId::Hardware,
                         command(window, [](FormContext& form, DocumentContext& document) {
                             return editGroupText(form, document, 'H');
                         }));
    window.installEditor(
        CommandId::Vendor,
        command(window, [&application](FormContext& form, DocumentContext& document) {
            if (!mayEditGroupText(document, &form.ui, 'V')) {
                return false;
            }
            const auto source = selectDataSource(form, partsOf(application), 'V');
            return source && editGroupText(form, document, 'V', source->name);
        }));
    window.installEditor(CommandId::Pam, command(window, editPam));
    window.installEditor(
        CommandId::Recorder,
        sourceCommand(window, application, 'R',
                      [](FormContext& form, SourceParts parts, const std::string& source) {
                          return editRecorder(form, parts, source);
                      }));
    window.installEditor(CommandId::Multiplex,
                         sourceCommand(window, application, 'M', editMultiplex));
}

void addGroupScreenshots(ScreenshotList& list) {
    addGenericEditScreenshots(list);
    addMultiplexScreenshots(list);
    addRecorderScreenshots(list);
    addPamScreenshots(list);
}

}  // namespace kavu
