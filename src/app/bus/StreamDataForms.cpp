#include "app/bus/StreamDataForms.h"

#include "app/bus/MessageSheet.h"
#include "app/bus/PacketSheet.h"
#include "app/conversion/ConversionForms.h"
#include "application/Application.h"
#include "bus/StreamData.h"
#include "bus/StreamDataEdition.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "groups/DocumentTree.h"
#include "groups/MeasurementNames.h"

#include <optional>

namespace kavu {

namespace {

constexpr char kMessagesTitle[] = "Edit Message Attributes";

/// The link that the user chooses among those with message data, of one source or of all; empty
/// if none was chosen.
std::string chooseLink(FormContext& form, Application& application,
                       std::optional<std::string_view> ofSource) {
    auto& document = application.context();
    TablePrompt prompt;
    prompt.title = "Select Data Link";
    prompt.columns = {"Data Link Name", "Stream Type", "Data Source"};
    for (const auto& source : readDocumentTree(document, &form.ui).dataSources) {
        for (const auto& link : source.links) {
            if ((!ofSource || source.name == *ofSource) &&
                streamDataOf(document, &form.ui, link.name) == StreamData::Messages) {
                prompt.rows.push_back({link.name, link.kind, source.name});
            }
        }
    }
    if (prompt.rows.empty()) {
        showBox(&form.ui,
                ofSource ? "This data source has no message data streams."
                         : "This document has no message data streams.",
                kMessagesTitle, Icon::Information);
        return {};
    }
    const int row = form.ui.selectFromTable(prompt);
    return row < 0 ? std::string() : prompt.rows[static_cast<std::size_t>(row)].front();
}

void reportNotCreated(FormContext& form, SheetResult result) {
    if (result == SheetResult::NotCreated) {
        form.messages.show(&form.ui, message::kUnableToDisplay, title::kInternalError, kErrorBox);
    }
}

}  // namespace

bool editMessages(FormContext& form, Application& application, const std::string& link,
                  QWidget* window) {
    auto& document = application.context();
    if (!knowsMessages(document, &form.ui)) {
        return false;
    }
    const auto name = link.empty() ? chooseLink(form, application, std::nullopt) : link;
    MessageGroup group;
    if (name.empty() || !loadMessages(document, &form.ui, name, group)) {
        return false;
    }
    MessageSheet sheet(form, document, group, &application.measurementNames(), window);
    reportNotCreated(form, runPropertySheet(form, sheet));
    setStatusText(&form.ui, {});
    return sheet.isWritten();
}

bool editMessagesOf(FormContext& form, Application& application, std::string_view source,
                    QWidget* window) {
    const auto link = chooseLink(form, application, source);
    if (link.empty() || !editMessages(form, application, link, window)) {
        return false;
    }
    // From now on other streams are told about the names that this one has.
    application.measurementNames().checkForDuplicates(nullptr);
    return true;
}

bool editPackets(FormContext& form, Application& application, const std::string& link,
                 QWidget* window) {
    auto& document = application.context();
    PacketGroup group;
    if (!knowsPackets(document, &form.ui) || !loadPackets(document, &form.ui, link, group)) {
        return false;
    }
    bool isConverted = false;
    const auto editConversionOf = [&](const std::string& name, QWidget* parent) {
        isConverted = editConversion(form, document, application.conversions(), name, {}, parent) ||
                      isConverted;
    };
    PacketSheet sheet(form, document, group, &application.measurementNames(), editConversionOf,
                      window);
    reportNotCreated(form, runPropertySheet(form, sheet));
    setStatusText(&form.ui, {});
    return sheet.isWritten() || isConverted;
}

}  // namespace kavu
