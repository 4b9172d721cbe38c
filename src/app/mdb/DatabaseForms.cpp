#include "app/mdb/DatabaseForms.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/QtInterface.h"
#include "app/mdb/DatabaseWindow.h"
#include "app/mdb/ImportWindow.h"
#include "app/mdb/LocationDialog.h"
#include "app/shell/MainWindow.h"
#include "application/Application.h"
#include "core/talk/ProfileSettings.h"
#include "mdb/operations/DatabaseWork.h"

namespace kavu {

bool changeDatabaseLocation(FormContext& form, Application& application, QWidget* parent) {
    auto& document = application.context();
    LocationDialog dialog(form, document.settings.get(setting::kDatabasePath),
                          databaseVersion(document.settings), parent);
    if (runDialog(form.door, dialog) != QDialog::Accepted) {
        return false;
    }
    changeDatabase(document, &form.ui, dialog.path(), dialog.version(), form.edition);
    return true;
}

void installDatabaseForms(MainWindow& window, Application& application) {
    const auto install = [&window](CommandId id, auto run) {
        window.installEditor(id, [&window, run] {
            auto form = window.formContext();
            run(form);
        });
    };
    install(CommandId::EditDatabase, [&window, &application](FormContext& form) {
        (void)editDatabase(form, application.context(), window.ui().dialogParent());
    });
    install(CommandId::DatabaseLocation, [&window, &application](FormContext& form) {
        (void)changeDatabaseLocation(form, application, window.ui().dialogParent());
    });
    install(CommandId::ImportDatabase, [&window, &application](FormContext& form) {
        importExternalFile(form, application.context(), window.ui().dialogParent());
    });
    install(CommandId::EnableDatabase, [&application](FormContext& form) {
        (void)switchDatabaseOn(application.context(), &form.ui, form.edition);
    });
    install(CommandId::DisableDatabase, [&application](FormContext&) {
        application.context().settings.set(setting::kDatabaseEnabled, false);
    });
}

}  // namespace kavu
