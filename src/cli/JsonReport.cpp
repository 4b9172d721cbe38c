#include "cli/JsonReport.h"

#include "core/text/TextEncoding.h"

#include <utility>

namespace kavu::cli {

Json jsonText(const std::string& bytes) {
    return toUtf8(bytes);
}

namespace {

template <typename Reported>
Json reportedMembers(const Reported& reported) {
    Json members{
        {"id", reported.id}, {"title", reported.titleId}, {"text", jsonText(reported.text)}};
    if constexpr (requires { reported.name; }) {
        if (!reported.name.empty()) {
            members["name"] = reported.name;
        }
    }
    if constexpr (requires { reported.reply; }) {
        members["reply"] = jsonText(reported.reply);
    }
    if (!reported.stream.empty()) {
        members["stream"] = jsonText(reported.stream);
    }
    return members;
}

}  // namespace

Json messageMembers(const ScriptedInterface& ui) {
    Json messages = Json::array();
    for (const auto& message : ui.messages()) {
        messages.push_back(reportedMembers(message));
    }
    return messages;
}

Json questionMembers(const ScriptedInterface& ui) {
    Json questions = Json::array();
    for (const auto& question : ui.questions()) {
        questions.push_back(reportedMembers(question));
    }
    return questions;
}

Json fileMembers(const OpenedFile& file, const ScriptedInterface& ui) {
    Json document;
    document["file"] = jsonText(file.file);
    document["opened"] = file.opened;
    document["changed"] = file.changed;
    document["version"] = file.version;
    document["messages"] = messageMembers(ui);
    document["questions"] = questionMembers(ui);
    return document;
}

void JsonMembers::set(std::string key, Json value) {
    const auto hash = textHash(key);
    const auto found =
        places_.find(hash, [&](std::size_t place) { return members_.data()[place].first == key; });
    if (found == PlaceIndex::kNone) {
        places_.add(hash, members_.size());
        members_.emplace_back(std::move(key), std::move(value));
    } else {
        members_.data()[found].second = std::move(value);
    }
}

Json JsonMembers::take() {
    places_.clear();
    return Json(std::exchange(members_, {}));
}

std::string printed(const Json& document) {
    return document.dump(2) + "\n";
}

}  // namespace kavu::cli
