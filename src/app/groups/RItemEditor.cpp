#include "app/groups/RItemEditor.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/EnterValueDialog.h"
#include "app/framework/RowDialog.h"
#include "app/groups/GroupRows.h"
#include "core/TmatsDocument.h"
#include "pcm/edit/FrameEditMask.h"
#include "vocabulary/DGroupFields.h"
#include "vocabulary/FieldRules.h"
#include "vocabulary/References.h"

namespace kavu {

namespace {

constexpr std::size_t kLengthLimit = 2;
constexpr int kSampleFactors = 16;
constexpr char kMaskPrompt[] = "Enter BitMask";

/// What holds for the prompt of a field beyond its table row.
EnterValueSetup setupOf(const Field& field, int edition) {
    EnterValueSetup setup;
    setup.title = field.prompt;
    setup.prompt = std::string(field.label) + ":";
    setup.check = textCheck(limitIn(edition, field));
    for (const auto& choice : choicesOf(field, edition)) {
        setup.choices.emplace_back(choice.text);
    }
    setup.mayBeEmpty = true;
    if (field.prompt == "Enter Measurement Name") {
        setup.check = textCheck(kNameLimit);
        setup.errorTitle = kIllegalText;
    } else if (field.prompt == "Enter Data Length") {
        setup.check = digitsCheck(kLengthLimit);
    } else if (field.prompt == kMaskPrompt) {
        setup.check = textCheck(kMaskWidth);
        setup.errorTitle = kIllegalText;
    } else if (field.prompt == "Select Sample Factor") {
        for (int factor = 0; factor < kSampleFactors; ++factor) {
            setup.choices.push_back(std::to_string(factor));
        }
    }
    return setup;
}

std::optional<std::string> ask(FormContext& form, EnterValueSetup setup, QWidget* window) {
    setup.offerLock = false;
    EnterValueDialog dialog(form.ui, std::move(setup), window);
    return runDialog(form.door, dialog) == QDialog::Accepted ? std::optional(dialog.value())
                                                             : std::nullopt;
}

/// Asks for a mask until it is one.
std::optional<std::string> askMask(const TrackPrompts& prompts, EnterValueSetup setup,
                                   const std::string& mask, QWidget* window) {
    setup.initial = shownMask(prompts.document, mask, 0);
    while (const auto entered = ask(prompts.form, setup, window)) {
        if (*entered == setup.initial && !mask.empty()) {
            return mask;
        }
        if (auto stored = enteredMask(prompts.document, &prompts.form.ui, *entered, 0)) {
            return stored;
        }
        setup.initial = *entered;
    }
    return std::nullopt;
}

/// A column for the edit of its cells, with the rules of its prompt.
ListColumn itemColumn(const Field& field, int edition) {
    auto column = columnOf(field, edition);
    if (field.prompt == "Enter Measurement Name") {
        column.limit = kNameLimit;
    } else if (field.prompt == "Enter Data Length") {
        column.kind = ColumnKind::Integer;
        column.check = digitsCheck(kLengthLimit);
    } else if (field.prompt == "Select Sample Factor") {
        column.kind = ColumnKind::Choice;
        column.choices = setupOf(field, edition).choices;
        column.mayBeEmpty = true;
    }
    // A mask has rules that no column knows.
    column.editable = field.prompt != kMaskPrompt;
    return column;
}

std::optional<ListRow> promptItem(const TrackPrompts& prompts, const ChannelType& type,
                                  const ListRow& before, QWidget* window) {
    const int edition = prompts.form.edition;
    auto cells = before;
    const auto fields = itemFields(type, edition);
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (fields[i]->prompt.empty()) {
            continue;
        }
        auto setup = setupOf(*fields[i], edition);
        auto& cell = cells[i + 1];
        setup.initial = cell;
        const auto entered = fields[i]->prompt == kMaskPrompt
                                 ? askMask(prompts, setup, cell, window)
                                 : ask(prompts.form, setup, window);
        if (!entered) {
            return std::nullopt;
        }
        cell = *entered;
    }
    return cells;
}

}  // namespace

std::optional<std::string> promptDetail(const TrackPrompts& prompts, const Field& field,
                                        const std::string& shown, QWidget* window) {
    auto setup = setupOf(field, prompts.form.edition);
    setup.initial = shown;
    if (field.code == "CDLN-n") {
        setup.choices = prompts.links;
    }
    return ask(prompts.form, std::move(setup), window);
}

ListSetup itemSetup(const ChannelType& type, int edition) {
    ListSetup setup;
    setup.columns.push_back({.title = "Item",
                             .editable = false,
                             .initial = std::string(type.itemName),
                             .objectName = "item"});
    for (const auto* field : itemFields(type, edition)) {
        setup.columns.push_back(itemColumn(*field, edition));
        // A network without number or name is none.
        setup.columns.back().required = type.itemName == "Network";
    }
    setup.canSort = false;
    setup.editCells = true;
    setup.rowDialogTitle = type.itemName;
    setup.name = "Delete This Channel Data Definition";
    return setup;
}

std::optional<ListRow> editItem(const TrackPrompts& prompts, const ChannelType& type,
                                const EditableList& list, int row, const ListRow& before,
                                bool isNew, QWidget* window) {
    if (type.promptsItems) {
        return promptItem(prompts, type, before, window);
    }
    auto setup = itemSetup(type, prompts.form.edition);
    const auto fields = itemFields(type, prompts.form.edition);
    for (std::size_t i = 0; i < fields.size(); ++i) {
        auto& column = setup.columns[i + 1];
        column.title = fields[i]->prompt.empty() ? column.title : std::string(fields[i]->prompt);
    }
    RowDialog dialog(prompts.form, list, setup, row, before, isNew, window);
    return runDialog(prompts.form.door, dialog) == QDialog::Accepted
               ? std::optional(dialog.values())
               : std::nullopt;
}

}  // namespace kavu
