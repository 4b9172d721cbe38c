#include "app/groups/GroupForms.h"

#include "app/groups/GSheet.h"
#include "app/groups/GenericEditDialog.h"
#include "app/groups/MultiplexDialog.h"
#include "app/groups/PamDialog.h"
#include "app/groups/RSheet.h"
#include "app/groups/SelectSourceDialog.h"
#include "app/groups/TSheet.h"
#include "app/shell/MainWindow.h"
#include "application/Application.h"
#include "groups/DataSources.h"
#include "groups/LinkValidation.h"

#include <algorithm>
#include <vector>

namespace kavu {

namespace {

using EditMessages = std::function<bool(FormContext& form, const std::string& source)>;

/// An editor of the open document as a command of the menu: the window is told what it did.
template <typename Editor>
std::function<void()> command(MainWindow& window, Editor editor) {
    return [&window, editor] {
        auto form = window.formContext();
        if (auto* const document = window.document(); document != nullptr) {
            (void)editor(form, *document);
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

/// An entry of the tree's menus that changes the set of data sources. The tree is built again
/// by the operation, so what it needs of its item is taken first.
template <typename Operation>
void installSourceAction(MainWindow& window, Application& application, TreeAction action,
                         Operation operation) {
    window.installTreeAction(action, [&window, &application, operation](const TreeItem& item) {
        if (window.document() != nullptr) {
            auto parts = partsOf(application);
            const TreeItem chosen = item;
            operation(parts, window.ui(), chosen);
        }
    });
}

/// The kind of data source that the head of a branch is for; the head of those of neither
/// type has to ask. 0 if the user has cancelled.
char importKind(UserInterface& ui, TreeKind head) {
    if (head == TreeKind::TransmissionHead || head == TreeKind::RecorderHead) {
        return head == TreeKind::TransmissionHead ? 'R' : 'T';
    }
    const int choice = ui.chooseFromList("Import Data Source", {"RF", "Recorder/Reproducer"});
    return choice < 0 ? '\0' : choice == 0 ? 'R' : 'T';
}

void installSourceActions(MainWindow& window, Application& application) {
    const auto install = [&](TreeAction action, auto operation) {
        installSourceAction(window, application, action, operation);
    };
    install(TreeAction::Rename, [](SourceParts& parts, UserInterface& ui, const TreeItem& item) {
        askRenameDataSource(parts, &ui, item.name);
    });
    install(TreeAction::Delete, [](SourceParts& parts, UserInterface& ui, const TreeItem& item) {
        deleteDataSource(parts, &ui, item.name);
    });
    install(TreeAction::MakeCopy, [](SourceParts& parts, UserInterface& ui, const TreeItem& item) {
        copyDataSource(parts, &ui, item.name);
    });
    install(TreeAction::CreateNew, [](SourceParts& parts, UserInterface& ui, const TreeItem&) {
        createDataSource(parts, &ui);
    });
    install(TreeAction::Import, [](SourceParts& parts, UserInterface& ui, const TreeItem& item) {
        if (const char kind = importKind(ui, item.kind); kind != 0) {
            importDataSource(parts, &ui, kind);
        }
    });
    install(TreeAction::CreateHome,
            [](SourceParts& parts, UserInterface& ui, const TreeItem& item) {
                createStreamHome(parts.context, &ui, item.name);
            });
    install(TreeAction::RenameStream,
            [](SourceParts& parts, UserInterface& ui, const TreeItem& item) {
                askRenameDataLink(parts, &ui, item.name);
            });
}

/// The sheet over a data source's own group, or its multiplex definition.
bool editTreeItem(FormContext& form, SourceParts parts, const TreeItem& item,
                  const EditMessages& editMessages) {
    if (item.kind == TreeKind::MultiplexDefinition) {
        return editMultiplex(form, parts, item.name);
    }
    if (item.kind == TreeKind::Vendor) {
        return mayEditGroupText(parts.context, &form.ui, 'V') &&
               editGroupText(form, parts.context, 'V', item.name);
    }
    std::vector<DataSource> sources;
    readDataSources(parts.context, &form.ui, sources);
    const auto source = std::find_if(sources.begin(), sources.end(), [&](const DataSource& each) {
        return each.name == item.name;
    });
    switch (source == sources.end() ? 'O' : dataSourceClass(source->type)) {
        case 'R':
            return editTransmission(form, parts, item.name);
        case 'T':
            return editRecorder(form, parts, item.name, editMessages);
        default:
            // A source of another type may be a recorder all the same.
            return item.letter == 'R'   ? editRecorder(form, parts, item.name, editMessages)
                   : item.letter == 'T' ? editTransmission(form, parts, item.name)
                                        : false;
    }
}

void installEditAction(MainWindow& window, Application& application,
                       const EditMessages& editMessages) {
    window.installTreeAction(
        TreeAction::Edit, [&window, &application, editMessages](const TreeItem& item) {
            // The tree may be built again meanwhile.
            const TreeItem chosen = item;
            auto form = window.formContext();
            if (window.document() != nullptr) {
                (void)editTreeItem(form, partsOf(application), chosen, editMessages);
            }
        });
}

}  // namespace

void installGroupForms(MainWindow& window, Application& application,
                       const EditMessages& editMessages) {
    window.installEditor(CommandId::General,
                         command(window, [&application](FormContext& form, DocumentContext&) {
                             return editGeneral(form, partsOf(application));
                         }));
    window.installEditor(CommandId::Transmission,
                         sourceCommand(window, application, 'T', editTransmission));
    installEditAction(window, application, editMessages);
    installSourceActions(window, application);
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
    window.installEditor(CommandId::Recorder,
                         sourceCommand(window, application, 'R',
                                       [editMessages](FormContext& form, SourceParts parts,
                                                      const std::string& source) {
                                           return editRecorder(form, parts, source, editMessages);
                                       }));
    window.installEditor(CommandId::Multiplex,
                         sourceCommand(window, application, 'M', editMultiplex));
}

}  // namespace kavu
