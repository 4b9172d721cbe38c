#include "app/groups/GroupForms.h"

#include "app/groups/GenericEditDialog.h"
#include "app/shell/MainWindow.h"

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

}  // namespace

void installGroupForms(MainWindow& window, Application& /*application*/) {
    window.installEditor(CommandId::Hardware,
                         command(window, [](FormContext& form, DocumentContext& document) {
                             return editGroupText(form, document, 'H');
                         }));
}

void addGroupScreenshots(ScreenshotList& list) {
    addGenericEditScreenshots(list);
}

}  // namespace kavu
