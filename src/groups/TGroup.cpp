#include "groups/TGroup.h"

#include "core/TmatsDocument.h"
#include "core/document/GroupFiles.h"
#include "core/talk/FileReports.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "groups/DataSources.h"
#include "groups/GroupLists.h"
#include "vocabulary/TGroupFields.h"

#include <array>

namespace kavu {

namespace {

constexpr auto kTransmissionSteps = std::to_array<LoadStep>({
    {.after = "RF6", .percent = 20},
    {.after = "AN3", .percent = 60},
    {.after = "GST2", .percent = 70},
    {.after = "GST7", .percent = 80},
    {.after = "PLL", .percent = 90},
});

}  // namespace

std::optional<EditedGroup> readTransmission(DocumentContext& context, UserInterface* parent,
                                            const std::string& source) {
    ProgressScope progress(parent, ProgressMode::WithCancel);
    setStatusText(parent, "Initializing RF Data Source Information...");
    EditedGroup group{.letter = 'T'};
    const int found = findGroupIndex(context, parent, group.letter, source);
    group.index = found > 0 ? found : -findGroupIndex(context, parent, group.letter, {});
    if (group.index > kMostGroupIndex) {
        context.messages.show(parent, message::kUnableToEdit, title::kError, kErrorBox,
                              "TMATS T-Section");
        return std::nullopt;
    }
    GroupSource file(context, parent, group.letter, group.index);
    group.isNew = isMissing(file.status());
    if (group.isNew) {
        context.messages.show(parent, -message::kNotFound, title::kNote, kNoteBox,
                              "RF Attributes (T)");
    } else if (!file.status().ok()) {
        reportUnableToRead(parent, file.status());
        return std::nullopt;
    }
    const bool complete = file.readTable(transmissionFields(), group.record, kTransmissionSteps);
    setProgressBar(parent, -1);
    if (!complete) {
        return std::nullopt;
    }
    group.record.set(ownNameOf('T'), source);
    group.kept = std::move(file.kept());
    setStatusText(parent, "Edit Transmission Information.");
    return group;
}

std::string transmissionText(const EditedGroup& group, int edition) {
    GroupWriter writer(group.letter, group.index);
    writer.writeTable(transmissionFields(), group.record, edition);
    return writer.text();
}

bool storeTransmission(DocumentContext& context, UserInterface* parent, const EditedGroup& group) {
    return storeTable(context, parent, group.letter, group.index, transmissionFields(),
                      group.record, group.kept);
}

}  // namespace kavu
