// How the commands of message data and packets run: the steps of `--edit` one after the other on
// the model of a link, and with `-o` the group and the document written.
#pragma once

#include "cli/Commands.h"
#include "cli/EditSteps.h"

#include <functional>
#include <string>

namespace kavu::cli {

/// True if the document has the data link; if not, that is reported.
[[nodiscard]] bool isKnownLink(CommandContext& context);

/// Runs the steps and adds the member "edits"; nothing without `--edit`. A step that is refused is
/// not done, and the others follow. An edit has `add`, `set` and `remove` with a place and values.
template <class Edit>
void runSteps(CommandContext& context, Edit& edit, CommandOutput& output) {
    if (!context.line.edits) {
        return;
    }
    Json edits = Json::array();
    int number = 0;
    for (const auto& step : *context.line.edits) {
        const bool done = step.act == EditAct::Add   ? edit.add(context.ui, step.at, step.values)
                          : step.act == EditAct::Set ? edit.set(context.ui, step.at, step.values)
                                                     : edit.remove(context.ui, step.at);
        edits.push_back({{"step", ++number}, {"done", done}});
    }
    output.members["edits"] = std::move(edits);
}

/// With `-o`: writes the group by `store`, and the document as OUT. True without `-o`.
[[nodiscard]] bool saveEdited(CommandContext& context, CommandOutput& output,
                              const std::function<bool()>& store);

/// Runs the steps, writes the group and the document where that is asked for, and then prints the
/// model. False if it could not be written, or the user has cancelled.
template <class Edit>
[[nodiscard]] bool finishEdit(CommandContext& context, CommandOutput& output, Edit& edit,
                              const std::function<bool()>& store,
                              const std::function<void(CommandOutput&)>& print) {
    CommandOutput result;
    runSteps(context, edit, result);
    if (context.ui->cancelRequested() || !saveEdited(context, result, store)) {
        return false;
    }
    output.members["stream"] = jsonText(context.line.link);
    print(output);
    output.members.update(result.members);
    output.text += result.text;
    output.changed = result.changed;
    return true;
}

/// Two blanks a level, the text and a line break.
[[nodiscard]] std::string treeLine(int level, std::string_view text);

}  // namespace kavu::cli
