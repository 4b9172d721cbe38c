#include "cli/JsonReport.h"

#include "core/TextEncoding.h"

namespace kavu::cli {

Json jsonText(const std::string& bytes) {
    return toUtf8(bytes);
}

Json fileMembers(const OpenedFile& file, const ScriptedInterface& ui) {
    Json document;
    document["file"] = jsonText(file.file);
    document["opened"] = file.opened;
    document["changed"] = file.changed;
    document["version"] = file.version;
    document["messages"] = Json::array();
    for (const auto& message : ui.messages()) {
        document["messages"].push_back(
            {{"id", message.id}, {"title", message.titleId}, {"text", jsonText(message.text)}});
    }
    document["questions"] = Json::array();
    for (const auto& question : ui.questions()) {
        document["questions"].push_back({{"id", question.id},
                                         {"title", question.titleId},
                                         {"text", jsonText(question.text)},
                                         {"reply", jsonText(question.reply)}});
    }
    return document;
}

std::string printed(const Json& document) {
    return document.dump(2) + "\n";
}

}  // namespace kavu::cli
