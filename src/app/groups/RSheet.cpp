#include "app/groups/RSheet.h"

#include "app/groups/MultiplexDialog.h"
#include "app/groups/RPages.h"
#include "app/groups/RTrackPage.h"
#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/text/Printf.h"
#include "groups/DataSources.h"

#include <algorithm>

#include <QPushButton>

namespace kavu {

namespace {

constexpr char kRecorderTitle[] = "Edit Recorder/Reproducer Attributes - Data Source: %s";
/// Documents have message data from this edition on.
constexpr int kFirstEditionOfMessages = 2009;
/// The limits of the dialog over a module or a medium; a longer value of a file is kept.
const std::vector<std::size_t> kModuleLimits = {2, 64, 256};

const RecorderPage& pageNamed(std::string_view name) {
    const auto pages = recorderPages();
    return *std::find_if(pages.begin(), pages.end(),
                         [&](const RecorderPage& page) { return page.name == name; });
}

std::vector<RecorderListsPage::List> informationLists() {
    return {{.count = "RIM\\N",
             .name = "modules",
             .box = "Modules",
             .rowDialogTitle = "Recorder Module",
             .deleteTitle = "Delete Recorder Module Definition",
             .limits = kModuleLimits},
            {.count = "RMM\\N",
             .name = "media",
             .box = "Media",
             .rowDialogTitle = "Recorder Removable Media Module",
             .deleteTitle = "Delete Recorder Removable Media Module Definition",
             .limits = kModuleLimits}};
}

std::vector<RecorderListsPage::List> referenceLists() {
    return {{.count = "RT\\N",
             .name = "referenceTracks",
             .rowDialogTitle = "Reference Track",
             .deleteTitle = "Delete Reference Track Definition"}};
}

/// The page of this name, made for what it holds.
std::unique_ptr<PropertyPage> makePage(FormContext& form, const RecorderPage& page,
                                       RecorderGroup& group) {
    if (page.name == "Tape3") {
        return std::make_unique<RecorderListsPage>(form, page, group, informationLists());
    }
    if (page.name == "Tape4" || page.name == "Tape5") {
        return std::make_unique<RecorderDatePage>(form, page, group,
                                                  page.name == "Tape4" ? "RI4" : "RI5");
    }
    if (page.name == "Tape6") {
        return std::make_unique<RecorderEventsPage>(form, page, group);
    }
    if (page.name == "Tape9") {
        return std::make_unique<RecorderListsPage>(form, page, group, referenceLists());
    }
    return std::make_unique<RecorderFieldPage>(form, page, group);
}

}  // namespace

RecorderSheet::RecorderSheet(FormContext& form, DocumentContext& document, RecorderGroup group,
                             RecorderSurroundings around, QWidget* parent)
    : PropertySheet(form, "Recorder", formatPrintf(kRecorderTitle, group.source), "LastTapePage",
                    parent),
      form_(form),
      document_(document),
      group_(std::move(group)),
      around_(std::move(around)) {
    addPages();
    addButtons();
    setWriter([this] { return storeRecorder(document_, &form_.ui, group_); });
    if (group_.isNew) {
        markChanged();
    }
}

void RecorderSheet::addPages() {
    auto characteristics =
        std::make_unique<RecorderCharacteristicsPage>(form_, pageNamed("Tape2"), group_);
    auto* const counted = characteristics.get();
    for (const auto& page : recorderPages()) {
        if (form_.edition < page.firstEdition) {
            continue;
        }
        if (page.name == "Tape2") {
            addPage(std::move(characteristics));
        } else if (page.name == "Tape8") {
            auto tracks = std::make_unique<RecorderTrackPage>(
                TrackPrompts{form_, document_, around_.links}, page, group_, around_.sources);
            connect(tracks.get(), &RecorderTrackPage::trackCountChanged, counted,
                    &RecorderCharacteristicsPage::showTrackCount);
            addPage(std::move(tracks));
        } else {
            addPage(makePage(form_, page, group_));
        }
    }
}

void RecorderSheet::addButtons() {
    addEditor("editMultiplex", "Edit &Multiplex Info", around_.editMultiplex);
    if (form_.edition >= kFirstEditionOfMessages) {
        addEditor("editMessages", "Edit Message &Data", around_.editMessages);
    }
}

void RecorderSheet::addEditor(const char* name, const char* text,
                              const std::function<bool(FormContext&, const std::string&)>& edit) {
    if (edit) {
        connect(addButton(name, QLatin1String(text)), &QPushButton::clicked, this,
                [this, edit] { editElsewhere(edit); });
    }
}

void RecorderSheet::editElsewhere(
    const std::function<bool(FormContext&, const std::string&)>& edit) {
    const auto before = readRecorder(document_, nullptr, group_.source);
    if (!edit(form_, group_.source)) {
        return;
    }
    changedElsewhere_ = true;
    const auto after = readRecorder(document_, nullptr, group_.source);
    if (!before || !after) {
        return;
    }
    // A data link may have been renamed in the group file as well: OK must not bring the old
    // name back.
    for (int i = 0; i < pageCount(); ++i) {
        (void)page(i).store();
    }
    followRenamedLinks(group_, *before, *after, form_.edition);
    for (int i = 0; i < pageCount(); ++i) {
        page(i).load();
    }
}

bool editRecorder(FormContext& form, DocumentContext& document, const std::string& source,
                  RecorderSurroundings around) {
    auto group = readRecorder(document, &form.ui, source);
    if (!group) {
        return false;
    }
    RecorderSheet sheet(form, document, std::move(*group), std::move(around));
    const auto result = runPropertySheet(form, sheet);
    if (result == SheetResult::NotCreated) {
        form.messages.show(&form.ui, message::kUnableToDisplay, title::kInternalError, kErrorBox);
    }
    return result == SheetResult::Stored || sheet.changedElsewhere();
}

bool editRecorder(
    FormContext& form, SourceParts parts, const std::string& source,
    const std::function<bool(FormContext& form, const std::string& source)>& editMessages) {
    RecorderSurroundings around;
    listDataSources(parts.context, &form.ui, &around.sources);
    if (!gatherDataLinks(parts.context, &form.ui, around.links)) {
        return false;
    }
    around.editMultiplex = [parts](FormContext& same, const std::string& name) {
        return editMultiplex(same, parts, name);
    };
    around.editMessages = editMessages;
    return editRecorder(form, parts.context, source, std::move(around));
}

}  // namespace kavu
