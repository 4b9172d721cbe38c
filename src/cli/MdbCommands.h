// The commands of the measurement database.
#pragma once

#include "cli/Commands.h"

#include <memory>

namespace kavu {
class MdbRecord;
class MeasurementDatabase;
}  // namespace kavu

namespace kavu::cli {

/// True for an `mdb` command; those that open no TMATS file are run by `mdbCommand`.
[[nodiscard]] bool isMdbCommand(Command command);
[[nodiscard]] bool mdbOpensDocument(Command command);
/// `mdb info`, `validate`, `list`, `get`, `add`, `put`, `remove`, `convert`
[[nodiscard]] bool mdbCommand(CommandContext& context, CommandOutput& output);
/// `mdb import`, `mdb profiles`, which `mdbCommand` runs.
[[nodiscard]] bool importCommand(CommandContext& context, CommandOutput& output);
[[nodiscard]] bool importProfilesCommand(CommandContext& context, CommandOutput& output);
/// `mdb update-stream`, `save-stream`, `eu-data`, `eu-apply`: a row of the table of commands.
[[nodiscard]] const DocumentCommand& mdbDocumentCommand(Command command);

/// The database of the line, else of the settings, not read yet.
[[nodiscard]] std::unique_ptr<MeasurementDatabase> lineDatabase(CommandContext& context);
/// An object with all labels in the order of the indices, real line breaks in the texts.
[[nodiscard]] Json recordJson(const MdbRecord& record);

}  // namespace kavu::cli
