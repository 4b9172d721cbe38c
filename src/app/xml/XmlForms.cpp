#include "app/xml/XmlForms.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/MessagesWindow.h"
#include "app/shell/MainWindow.h"
#include "application/Application.h"
#include "core/files/FileIo.h"
#include "core/talk/FilePrompts.h"
#include "core/text/Printf.h"

#include <memory>

namespace kavu {

namespace {

const std::pair<std::string, std::string> kXmlFilter = {"TMATS XML Files (*.xml)", "*.xml"};

/// What a conversion has said, in a window that stays until it is closed.
void showSaid(FormContext& form, QWidget* parent, const char* title, const std::string& output,
              const std::vector<std::string>& said) {
    MessagesWindow window(form.ui, form.door, {title, formatPrintf("Written: %s", output), said},
                          {}, parent);
    runDialog(form.door, window);
}

void importXml(MainWindow& window, Application& application) {
    auto form = window.formContext();
    auto& document = application.context().document;
    auto prompt = openTmatsPrompt(document, form.settings, kXmlImportTitle);
    prompt.filters.front() = kXmlFilter;
    const auto file = form.ui.chooseFile(prompt);
    if (!file) {
        return;
    }
    XmlImport import(application, file->path);
    if (!import.read(&form.ui)) {
        return;
    }
    XmlDialog dialog(form, importSetup(form, document, import), window.ui().dialogParent());
    if (runDialog(form.door, dialog) == QDialog::Accepted &&
        import.run(&form.ui, dialog.dialect(), dialog.output())) {
        showSaid(form, window.ui().dialogParent(), kXmlImportTitle, dialog.output(), import.said());
        (void)import.open(&form.ui);
    }
}

void exportXml(MainWindow& window, Application& application) {
    auto form = window.formContext();
    XmlExport exported(application, &form.ui);
    if (!exported.open()) {
        return;
    }
    XmlDialog dialog(form, exportSetup(form, application.context().document, exported),
                     window.ui().dialogParent());
    if (runDialog(form.door, dialog) == QDialog::Accepted &&
        exported.run(&form.ui, dialog.dialect(), dialog.links(), dialog.output())) {
        showSaid(form, window.ui().dialogParent(), kXmlExportTitle, dialog.output(),
                 exported.said());
    }
}

}  // namespace

XmlDialogSetup importSetup(FormContext& form, const TmatsDocument& document, XmlImport& import) {
    XmlDialogSetup setup{.resourceName = "ImportTmatsXml",
                         .title = kXmlImportTitle,
                         .inputLabel = "&XML file:",
                         .input = import.input(),
                         .outputLabel = "&TMATS file to write, which is then opened:",
                         .output = saveTmatsPrompt(document, form.settings, "Save TMATS File As",
                                                   import.proposedOutput()),
                         .accept = "&Import",
                         .lossColumn = "Element of the XML File",
                         .fault = import.fault(),
                         .dialect = import.proposedDialect()};
    setup.output.own.clear();
    setup.losses = [&form, &import](XmlDialect dialect, const std::vector<std::string>&) {
        return import.losses(&form.ui, dialect);
    };
    setup.refusal = [&document, &import](const std::string& path) {
        return whyNotOutput(document, import.input(), path);
    };
    return setup;
}

XmlDialogSetup exportSetup(FormContext& form, const TmatsDocument& document, XmlExport& exported) {
    XmlDialogSetup setup{
        .resourceName = "ExportTmatsXml",
        .title = kXmlExportTitle,
        .inputLabel = "D&ocument:",
        .input = document.path.empty() ? std::string("New TMATS File") : document.path,
        .outputLabel = "&XML file to write:",
        .output = saveTmatsPrompt(document, form.settings, "Save TMATS XML File",
                                  exported.proposedOutput()),
        .accept = "&Export",
        .lossColumn = "Command of the Document, the First of Its Kind",
        .links = exported.links()};
    setup.output.filters.front() = kXmlFilter;
    setup.output.extension = ".xml";
    setup.output.own.clear();
    setup.losses = [&form, &exported](XmlDialect dialect, const std::vector<std::string>& links) {
        return exported.losses(&form.ui, dialect, links);
    };
    setup.refusal = [&document](const std::string& path) {
        return whyNotOutput(document, document.path, path);
    };
    return setup;
}

void installXmlForms(MainWindow& window, Application& application) {
    window.installEditor(CommandId::ImportXml,
                         [&window, &application] { importXml(window, application); });
    window.installEditor(CommandId::ExportXml,
                         [&window, &application] { exportXml(window, application); });
}

}  // namespace kavu
