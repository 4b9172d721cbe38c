// What the tree of the document does to a record: delete and rename it.
#include "conversion/ConversionFields.h"
#include "conversion/ConversionStore.h"
#include "conversion/DefinitionEdit.h"
#include "core/TmatsDocument.h"
#include "core/document/Transaction.h"
#include "core/talk/Messages.h"
#include "core/text/Text.h"

namespace kavu {

namespace {

constexpr int kDeleteRecord = 118;
constexpr int kEnterNameFirst = 326;
constexpr int kRenameRecord = 436;

/// True if a record can have the name; if not, the reason is reported.
bool canBeNamed(DocumentContext& context, ConversionStore& store, UserInterface* parent,
                const std::string& name, const std::string& present) {
    const auto refuse = [&](MessageFor<> id) {
        context.messages.show(parent, id, title::kError, kErrorBox);
        return false;
    };
    if (name.empty()) {
        return refuse(kEnterNameFirst);
    }
    if (name.find(';') != std::string::npos) {
        return refuse(message::kNoSemicolon);
    }
    const auto other = store.locateDefinition(name);
    // Sections are found whatever the case: two that differ only in case would be one.
    const bool taken = other.found && !equalsIgnoreCase(other.section, present);
    if (taken || !ProfileFile::canBeSection(name) || name.size() > kLongestMeasurementName) {
        showBox(parent,
                taken ? formatPrintf("Another data conversion record is named '%s'. Please select "
                                     "another name.",
                                     other.section)
                      : formatPrintf("A data conversion record cannot be named '%s'.", name),
                std::string(loadText(title::kError).value_or("")));
        return false;
    }
    return true;
}

}  // namespace

bool deleteDefinitionAsked(DocumentContext& context, ConversionStore& store, UserInterface* parent,
                           const std::string& name) {
    if (context.messages.show(parent, -kDeleteRecord, title::kDeleteEntry, kYesNoBox, name) !=
        Button::Yes) {
        return false;
    }
    return inTransaction(context, parent, OperationId::DeleteConversion,
                         [&] { return store.deleteDefinition(parent, name); });
}

std::optional<std::string> renameDefinitionAsked(DocumentContext& context, ConversionStore& store,
                                                 UserInterface* parent, const std::string& name) {
    if (parent == nullptr ||
        context.messages.show(parent, -kRenameRecord, title::kNote, kYesNoBox) != Button::Yes) {
        return std::nullopt;
    }
    const auto present = store.locateDefinition(name);
    TextPrompt prompt{"Rename Measurement", "Enter New Measurement Name", present.section,
                      kLongestMeasurementName};
    while (const auto entered = parent->enterText(prompt)) {
        const std::string wanted(trim(*entered));
        if (canBeNamed(context, store, parent, wanted, present.section)) {
            if (wanted == present.section ||
                !inTransaction(context, parent, OperationId::RenameConversion, [&] {
                    return store.renameDefinition(parent, wanted, present.section);
                })) {
                return std::nullopt;
            }
            return wanted;
        }
        prompt.initial = wanted;
    }
    return std::nullopt;
}

}  // namespace kavu
