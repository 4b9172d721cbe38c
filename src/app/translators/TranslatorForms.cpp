#include "app/translators/TranslatorForms.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/FormContext.h"
#include "app/framework/QtText.h"
#include "app/reports/TextViewer.h"
#include "app/shell/MainWindow.h"
#include "app/translators/TranslatorConfigurationDialog.h"
#include "application/Application.h"
#include "core/files/FileIo.h"
#include "core/talk/FileReports.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "sdk/TranslatorModule.h"
#include "sdk/TranslatorShell.h"

#include <memory>
#include <new>
#include <vector>

#include <QAction>
#include <QMenu>
#include <QProcess>

namespace kavu {

namespace {

struct NamedEntry {
    CommandId convert;
    CommandId defaults;
    std::string_view vendor;
};
constexpr NamedEntry kEntries[] = {
    {CommandId::ConvertWyle, CommandId::WyleDefaults, "Wyle"},
    {CommandId::ConvertL3Com550, CommandId::L3Com550Defaults, "L-3Com 550"},
    {CommandId::ConvertL3ComVts, CommandId::L3ComVtsDefaults, "L-3Com VTS"},
};

/// What the entries share. It lives as long as they do.
class TranslatorDesk {
  public:
    TranslatorDesk(MainWindow& window, Application& application)
        : window_(window),
          application_(application),
          modules_(loadTranslators(translatorFolders(application.environment()))) {}

    [[nodiscard]] const std::vector<TranslatorModule>& modules() const { return modules_; }
    [[nodiscard]] const kavu_translator* find(std::string_view vendor) const {
        for (const auto& module : modules_) {
            if (module.isLoaded() && equalsIgnoreCase(module.vendor(), vendor)) {
                return &module.translator();
            }
        }
        return nullptr;
    }

    void convert(const kavu_translator& translator) const {
        auto& ui = window_.ui();
        FilePrompt input;
        input.title = "Open TMATS File";
        input.filters = {{"TMATS Files", "*.tma;*.tmt"}, {"All Files", "*"}};
        input.path = application_.context().document.path;
        const auto file = ui.chooseFile(input);
        if (!file) {
            return;
        }
        FilePrompt output;
        output.title = "Save Setup File";
        output.filters = {{"All Files", "*"}};
        output.path = setupFileOf(file->path, translator);
        output.forSaving = true;
        output.confirmsOverwrite = true;
        if (const auto chosen = ui.chooseFile(output)) {
            (void)shell(&translator).Convert(&ui, file->path, chosen->path);
        }
    }

    void editDefaults(const kavu_translator* translator) const {
        auto form = window_.formContext();
        try {
            auto configuration = shell(translator).EditConfiguration(&form.ui);
            TranslatorConfigurationDialog dialog(form, configuration, window_.ui().dialogParent());
            runDialog(form.door, dialog);
        } catch (const std::bad_alloc&) {
            showBox(&form.ui, std::string(translator_text::kNoDialog),
                    std::string(translator_text::kErrorTitle));
        }
    }

    /// Of the translator that the user chooses, if there are several.
    void editAnyDefaults() const {
        std::vector<const kavu_translator*> loaded;
        std::vector<std::string> names;
        for (const auto& module : modules_) {
            if (module.isLoaded()) {
                loaded.push_back(&module.translator());
                names.push_back(module.vendor());
            }
        }
        const int choice =
            loaded.size() < 2 ? 0 : window_.ui().chooseFromList("Select Translator", names);
        if (choice >= 0) {
            editDefaults(loaded.empty() ? nullptr : loaded[static_cast<std::size_t>(choice)]);
        }
    }

  private:
    /// A program that is not there, as the editor of another system in settings that came from
    /// there, must not hide what the file has to say.
    void view(const std::string& path, const std::string& editor) const {
        std::string text;
        if (QProcess::startDetached(toQString(editor), {toQString(path)})) {
            return;
        }
        if (const auto status = readWholeFile(path, text); !status.ok()) {
            reportUnableToRead(&window_.ui(), status);
            return;
        }
        auto form = window_.formContext();
        TextViewer viewer(form, application_.context(), fileNameOf(path), std::move(text),
                          window_.ui().dialogParent());
        runDialog(form.door, viewer);
    }

    [[nodiscard]] TranslatorShell shell(const kavu_translator* translator) const {
        auto& context = application_.context();
        const auto& environment = application_.environment();
        return {translator,
                translatorFolder(environment),
                environment,
                context.clock,
                context.random,
                [this](const std::string& path, const std::string& editor) {
                    view(path, editor); }};
    }

    MainWindow& window_;
    Application& application_;
    std::vector<TranslatorModule> modules_;
};

bool hasEntry(const std::string& vendor) {
    for (const auto& entry : kEntries) {
        if (equalsIgnoreCase(vendor, entry.vendor)) {
            return true;
        }
    }
    return false;
}

/// Entries of modules that no command of the table stands for come first.
void addOtherEntries(MainWindow& window, const std::shared_ptr<TranslatorDesk>& desk) {
    auto* const first = window.action(CommandId::ConvertWyle);
    QMenu* menu = nullptr;
    for (auto* const object : first->associatedObjects()) {
        menu = menu == nullptr ? qobject_cast<QMenu*>(object) : menu;
    }
    for (const auto& module : desk->modules()) {
        if (menu == nullptr || !module.isLoaded() || hasEntry(module.vendor())) {
            continue;
        }
        const auto* const translator = &module.translator();
        auto* const action = new QAction(toQString(translator->title), menu);
        action->setObjectName(QStringLiteral("translator") + toQString(module.vendor()));
        action->setStatusTip(QStringLiteral("Convert a TMATS file by the translator of %1")
                                 .arg(toQString(module.vendor())));
        QObject::connect(action, &QAction::triggered, menu,
                         [desk, translator] { desk->convert(*translator); });
        menu->insertAction(first, action);
    }
}

}  // namespace

void installTranslatorForms(MainWindow& window, Application& application) {
    const auto desk = std::make_shared<TranslatorDesk>(window, application);
    for (const auto& entry : kEntries) {
        if (const auto* const translator = desk->find(entry.vendor)) {
            window.installEditor(entry.convert, [desk, translator] { desk->convert(*translator); });
            window.installEditor(entry.defaults,
                                 [desk, translator] { desk->editDefaults(translator); });
        }
    }
    window.installEditor(CommandId::TranslatorDefaults, [desk] { desk->editAnyDefaults(); });
    addOtherEntries(window, desk);
    for (const auto& module : desk->modules()) {
        if (!module.isLoaded()) {
            window.ui().note(formatPrintf("The translator '%s' is not loaded: %s.", module.path(),
                                          module.fault()));
        }
    }
}

}  // namespace kavu
