#include "app/bus/BusForms.h"

#include "app/bus/BusWindow.h"
#include "app/conversion/ConversionForms.h"
#include "app/framework/DialogDoor.h"
#include "app/mdb/StreamDatabase.h"
#include "application/Application.h"
#include "bus/definition/BusFiles.h"
#include "bus/definition/BusPack.h"
#include "bus/definition/BusUnpack.h"
#include "core/document/Transaction.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/UserInterface.h"
#include "groups/MeasurementNames.h"

namespace kavu {

namespace {

/// Words of a bus have this many bits.
constexpr int kBusWordLength = 16;

using Pack = std::function<bool(const BusDefinition&)>;

/// Shows the window over a definition. True if it was packed.
bool runWindow(FormContext& form, Application& application, BusDefinition& definition,
               const Pack& pack, QWidget* window) {
    auto& document = application.context();
    BusEdit edit(document, &form.ui, definition, &application.measurementNames());
    const BusFormSetup setup{form,
                             document,
                             definition,
                             edit,
                             [&](QWidget& over, const std::string& name) {
                                 editConversion(form, document, application.conversions(), name,
                                                {.bits = kBusWordLength}, &over);
                             },
                             busDatabaseStep(form, application, definition),
                             [&] { return document.settings.get(setting::kDatabaseEnabled); }};
    BusWindow editor(
        setup, [&] { return pack(definition); }, window);
    const bool packed = runDialog(form.door, editor) == QDialog::Accepted;
    // Packing has deleted them; what is left without it goes as well.
    discardBusProfiles(document);
    setStatusText(&form.ui, {});
    return packed;
}

}  // namespace

bool editBus(FormContext& form, Application& application, const std::string& link,
             QWidget* window) {
    auto& document = application.context();
    auto definition = openBusDefinition(document, &form.ui, link);
    if (!definition) {
        return false;
    }
    // Conversion records that were stored meanwhile are part of it, also if it is cancelled.
    Transaction operation(document, OperationId::EditStream, OnCrash::Keep);
    const bool packed = runWindow(
        form, application, *definition,
        [&](const BusDefinition& edited) { return storeBusDefinition(document, &form.ui, edited); },
        window);
    endTransaction(operation, &form.ui, true);
    if (packed) {
        application.measurementNames().checkForDuplicates(&form.ui);
    }
    return packed;
}

bool editLoadedBus(FormContext& form, Application& application, const std::string& link,
                   QWidget* window) {
    auto& document = application.context();
    auto definition = reopenBusDefinition(document, &form.ui, link);
    return definition && runWindow(
                             form, application, *definition,
                             [&](const BusDefinition& edited) {
                                 return packBusGroup(document, &form.ui, edited);
                             },
                             window);
}

}  // namespace kavu
