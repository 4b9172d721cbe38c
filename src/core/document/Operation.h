// What can be done to the open document, each with the name under which it is undone. The
// functions that change it, the window, the command line and programs that drive this one share
// the table.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace kavu {

enum class OperationId {
    Create,
    Open,
    Save,
    SaveAs,
    Close,
    Undo,
    Redo,
    EditGeneral,
    EditTransmission,
    EditRecorder,
    EditMultiplex,
    EditStream,
    EditConversion,
    EditHardware,
    EditVendor,
    EditPam,
    CreateSource,
    CreateHome,
    CopySource,
    ImportSource,
    RenameSource,
    DeleteSource,
    RenameLink,
    RenameConversion,
    DeleteConversion,
    SetAttribute,
    ChangeEdition,
    ShowPlots,
    PrintCalibrations,
    Export,
};

/// The name of an operation as it follows "Undo "; empty if it leaves the document as it is.
[[nodiscard]] constexpr std::string_view operationName(OperationId id) {
    using enum OperationId;
    struct Row {
        OperationId id;
        std::string_view name;
    };
    constexpr auto kNames = std::to_array<Row>({
        {EditGeneral, "Edit of General Information"},
        {EditTransmission, "Edit of Transmission Attributes"},
        {EditRecorder, "Edit of Recorder/Reproducer Attributes"},
        {EditMultiplex, "Edit of Multiplexing/Modulation"},
        {EditStream, "Edit of Stream"},
        {EditConversion, "Edit of Data Conversion"},
        {EditHardware, "Edit of Airborne Hardware Information"},
        {EditVendor, "Edit of Vendor Specific Information"},
        {EditPam, "Edit of PAM Attributes"},
        {CreateSource, "Creation of Data Source"},
        {CreateHome, "Home of Stream"},
        {CopySource, "Copy of Data Source"},
        {ImportSource, "Import of Data Source"},
        {RenameSource, "Rename of Data Source"},
        {DeleteSource, "Deletion of Data Source"},
        {RenameLink, "Rename of Data Link"},
        {RenameConversion, "Rename of Data Conversion"},
        {DeleteConversion, "Deletion of Data Conversion"},
        {SetAttribute, "Change of Attribute"},
        {ChangeEdition, "Change of Edition"},
    });
    const auto* const found =
        std::find_if(kNames.begin(), kNames.end(), [id](const Row& row) { return row.id == id; });
    return found == kNames.end() ? std::string_view() : found->name;
}

/// The edit of a group; that of a stream for the groups that make one.
[[nodiscard]] constexpr OperationId editOf(char letter) {
    switch (letter) {
        case 'G':
            return OperationId::EditGeneral;
        case 'T':
            return OperationId::EditTransmission;
        case 'R':
            return OperationId::EditRecorder;
        case 'M':
            return OperationId::EditMultiplex;
        case 'A':
            return OperationId::EditPam;
        case 'C':
            return OperationId::EditConversion;
        case 'H':
            return OperationId::EditHardware;
        case 'V':
            return OperationId::EditVendor;
        default:
            return OperationId::EditStream;
    }
}

}  // namespace kavu
