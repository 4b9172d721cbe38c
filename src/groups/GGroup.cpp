#include "groups/GGroup.h"

#include "core/TmatsDocument.h"
#include "core/talk/FileReports.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"
#include "groups/GroupLists.h"
#include "vocabulary/GGroupFields.h"

#include <algorithm>
#include <array>

namespace kavu {

namespace {

constexpr int kAboutToRename = 299;

/// From this edition on every save writes `G\FN`.
constexpr int kFirstEditionOfFileName = 2009;

constexpr std::string_view kEdition = "106";

/// Program information, contacts, data sources, and the rest.
constexpr auto kGeneralSteps = std::to_array<LoadStep>({
    {.after = {}, .percent = 10},
    {.after = "TN", .percent = 40},
    {.after = kContactCount, .percent = 60},
    {.after = kSourceCount, .percent = 80},
});

/// The field of the edition is not on the sheet and has to survive as it is, however long.
std::vector<Field> fieldsAsRead() {
    const auto table = generalFields();
    std::vector<Field> fields(table.begin(), table.end());
    for (auto& field : fields) {
        field.limit = field.code == kEdition ? 0 : field.limit;
    }
    return fields;
}

template <typename Key>
void sortRows(GroupRow& record, std::string_view list, const Key& key) {
    const auto it = record.lists.find(list);
    if (it != record.lists.end()) {
        std::stable_sort(it->second.begin(), it->second.end(),
                         [&](const GroupRow& a, const GroupRow& b) {
                             return lowerAscii(key(a)) < lowerAscii(key(b));
                         });
    }
}

}  // namespace

std::optional<EditedGroup> readGeneral(DocumentContext& context, UserInterface* parent) {
    ProgressScope progress(parent, ProgressMode::WithCancel);
    setStatusText(parent, "Initalizing General Information...");
    EditedGroup group;
    GroupSource source(context, parent, group.letter, group.index);
    if (isMissing(source.status())) {
        context.messages.show(parent, -message::kNotFound, title::kNote, kNoteBox,
                              "General Information (G)");
    } else if (!source.status().ok()) {
        reportUnableToRead(parent, source.status());
        return std::nullopt;
    }
    const bool complete = source.readTable(fieldsAsRead(), group.record, kGeneralSteps);
    setProgressBar(parent, -1);
    if (!complete) {
        return std::nullopt;
    }
    const int edition = context.document.version;
    sortRows(group.record, kContactCount, [](const GroupRow& row) { return row.value("POC1-n"); });
    sortRows(group.record, kSourceCount, [edition](const GroupRow& row) {
        return sourceTypeText(row.value(kSourceType), edition);
    });
    if (edition >= kFirstEditionOfFileName) {
        source.kept().erase("G\\FN");
    }
    group.kept = std::move(source.kept());
    setStatusText(parent, "Edit General Information");
    return group;
}

std::string generalText(const EditedGroup& group, int edition) {
    GroupWriter writer(group.letter, group.index);
    writer.writeTable(generalFields(), group.record, edition);
    return writer.text();
}

bool storeGeneral(DocumentContext& context, UserInterface* parent, const EditedGroup& group) {
    return storeTable(context, parent, group.letter, group.index, generalFields(), group.record,
                      group.kept);
}

bool isExistingSource(DocumentContext& context, UserInterface* parent, const std::string& name) {
    if (name.empty()) {
        return false;
    }
    constexpr std::string_view kLetters = "TRM";
    return std::any_of(kLetters.begin(), kLetters.end(), [&](char letter) {
        return findGroupIndex(context, parent, letter, name) > 0;
    });
}

NameChange askNameChange(DocumentContext& context, UserInterface* parent,
                         const std::string& oldName, const std::string& newName) {
    if (newName.empty() || oldName == newName || !isExistingSource(context, parent, oldName)) {
        return NameChange::Plain;
    }
    const auto answer = context.messages.show(parent, -kAboutToRename, title::kWarning, kYesNoBox,
                                              oldName, newName);
    return answer == Button::Yes ? NameChange::Rename : NameChange::Refused;
}

}  // namespace kavu
