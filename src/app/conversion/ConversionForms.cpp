#include "app/conversion/ConversionForms.h"

#include "app/conversion/DefinitionList.h"
#include "app/conversion/EuDialogs.h"
#include "app/conversion/EuSheet.h"
#include "app/framework/DialogDoor.h"
#include "app/shell/MainWindow.h"
#include "application/Application.h"
#include "conversion/ConversionStore.h"
#include "conversion/DefinitionEdit.h"

namespace kavu {

namespace {

/// What the editors of a window work on. The store is there once the application has started.
struct Stage {
    MainWindow& window;
    Application& application;

    [[nodiscard]] ConversionStore& store() const { return application.conversions(); }
    [[nodiscard]] QWidget* parent() const { return window.ui().dialogParent(); }
    /// Runs an editor on the open document; the window is told what it did.
    template <typename Editor>
    void run(Editor editor) const {
        auto form = window.formContext();
        if (auto* const document = window.document(); document != nullptr) {
            (void)editor(form, *document);
        }
    }
};

void installTreeEntries(Stage stage) {
    auto& window = stage.window;
    window.installTreeAction(TreeAction::ViewAllConversions, [stage](const TreeItem&) {
        stage.run([&](FormContext& form, DocumentContext& document) {
            return editAllConversions(form, document, stage.store(), stage.parent());
        });
    });
    window.installTreeAction(TreeAction::EditConversion, [stage](const TreeItem& item) {
        stage.run([&](FormContext& form, DocumentContext& document) {
            return editConversion(form, document, stage.store(), item.name, {}, stage.parent());
        });
    });
    window.installTreeAction(TreeAction::DeleteConversion, [stage](const TreeItem& item) {
        stage.run([&](FormContext& form, DocumentContext& document) {
            return deleteDefinitionAsked(document, stage.store(), &form.ui, item.name);
        });
    });
    window.installTreeAction(TreeAction::RenameMeasurement, [stage](const TreeItem& item) {
        stage.run([&](FormContext& form, DocumentContext& document) {
            return renameDefinitionAsked(document, stage.store(), &form.ui, item.name).has_value();
        });
    });
}

}  // namespace

bool editConversion(FormContext& form, DocumentContext& document, ConversionStore& store,
                    const std::string& name, const ConversionSheetSetup& setup, QWidget* parent) {
    auto edit = DefinitionEdit::open(document, store, &form.ui, name);
    if (!edit) {
        return false;
    }
    EuSheet sheet(form, document, store, *edit, setup, parent);
    const bool stored = runPropertySheet(form, sheet) == SheetResult::Stored;
    if (!stored) {
        (void)edit->cancel(&form.ui);
    }
    return stored;
}

bool editAllConversions(FormContext& form, DocumentContext& document, ConversionStore& store,
                        QWidget* parent) {
    QWidget* window = parent;
    DefinitionListDialog dialog(
        form, document, store,
        [&](const std::string& name) {
            return editConversion(form, document, store, name, {}, window);
        },
        parent);
    window = &dialog;
    runDialog(form.door, dialog);
    return dialog.changedRecords();
}

void installConversionForms(MainWindow& window, Application& application) {
    const Stage stage{window, application};
    window.installEditor(CommandId::Conversion, [stage] {
        stage.run([&](FormContext& form, DocumentContext& document) {
            return editAllConversions(form, document, stage.store(), stage.parent());
        });
    });
    window.installEditor(CommandId::CommentOptions, [stage] {
        auto form = stage.window.formContext();
        (void)editEuCommentOptions(form, stage.application.context(), stage.parent());
    });
    installTreeEntries(stage);
}

}  // namespace kavu
