#include "cli/EditSteps.h"

#include "core/files/FileIo.h"

#include <algorithm>
#include <array>

#include <nlohmann/json.hpp>

namespace kavu::cli {

namespace {

using StepJson = nlohmann::ordered_json;

constexpr int kMostPlaceNumber = 999'999;
/// A list of steps is typed or generated; a larger file is something else.
constexpr std::uint64_t kMostStepBytes = std::uint64_t{64} << 20U;
constexpr std::size_t kMostPlaceParts = 6;

struct ActName {
    std::string_view name;
    EditAct act;
    bool ofTerminals;
};
constexpr auto kActNames = std::to_array<ActName>({
    {"add", EditAct::Add, false},
    {"set", EditAct::Set, false},
    {"delete", EditAct::Delete, false},
    {"add-terminal", EditAct::AddTerminal, true},
    {"save-terminals", EditAct::SaveTerminals, true},
    {"load-terminals", EditAct::LoadTerminals, true},
});

/// What is wrong with a step.
struct StepError {
    std::string text;
};

EditAct actOf(const StepJson& step, EditActs acts) {
    const auto given = step.find("do");
    if (given == step.end() || !given->is_string()) {
        throw StepError{"it has no \"do\""};
    }
    const auto& name = given->get_ref<const std::string&>();
    for (const auto& row : kActNames) {
        if (row.name == name && (acts == EditActs::WithTerminals || !row.ofTerminals)) {
            return row.act;
        }
    }
    throw StepError{"there is no \"do\" of '" + name + "'"};
}

std::vector<PlacePart> placeOf(const StepJson& step) {
    const auto at = step.find("at");
    if (at == step.end() || !at->is_array() || at->size() > kMostPlaceParts) {
        throw StepError{"it has no \"at\" with a list of numbers"};
    }
    std::vector<PlacePart> place;
    for (const auto& part : *at) {
        if (part.is_number_integer() && part >= 1 && part <= kMostPlaceNumber) {
            place.emplace_back(part.get<int>());
        } else if (part.is_string() && part.get_ref<const std::string&>().size() == 1) {
            place.emplace_back(part.get_ref<const std::string&>().front());
        } else {
            throw StepError{"its \"at\" holds " + part.dump() + ", which is no place"};
        }
    }
    return place;
}

const std::string& textOf(const StepJson& value, std::string_view name) {
    if (!value.is_string()) {
        throw StepError{"its \"" + std::string(name) + "\" is not a text"};
    }
    return value.get_ref<const std::string&>();
}

void readMember(const std::string& name, const StepJson& value, EditStep& step) {
    if (name == "values") {
        if (!value.is_object()) {
            throw StepError{"its \"values\" is not an object"};
        }
        for (const auto& [code, text] : value.items()) {
            step.values.emplace_back(code, textOf(text, code));
        }
    } else if (name == "type") {
        step.type = textOf(value, name);
    } else if (name == "list") {
        step.list = textOf(value, name);
    } else if (name == "tracks") {
        if (!value.is_array()) {
            throw StepError{"its \"tracks\" is not a list"};
        }
        auto& tracks = step.tracks.emplace();
        for (const auto& track : value) {
            tracks.push_back(textOf(track, name));
        }
    } else if (name != "do" && name != "at") {
        throw StepError{"it has a member \"" + name + "\", which no step has"};
    }
}

/// A form without anything to fill in would be a mistake of the list.
void checkMembers(const StepJson& json, const EditStep& step) {
    const bool fills = step.act == EditAct::Add || step.act == EditAct::Set;
    if ((fills && !step.type && !step.tracks && !json.contains("values")) ||
        (step.act == EditAct::AddTerminal && !json.contains("values"))) {
        throw StepError{"it has no \"values\""};
    }
    if (step.act == EditAct::AddTerminal && step.list != "remote" && step.list != "sub") {
        throw StepError{"its \"list\" is neither \"remote\" nor \"sub\""};
    }
}

EditStep stepOf(const StepJson& json, EditActs acts) {
    if (!json.is_object()) {
        throw StepError{"it is not an object"};
    }
    EditStep step;
    step.act = actOf(json, acts);
    step.at = placeOf(json);
    for (const auto& [name, value] : json.items()) {
        readMember(name, value, step);
    }
    checkMembers(json, step);
    return step;
}

}  // namespace

std::optional<std::vector<std::size_t>> EditStep::numbers() const {
    std::vector<std::size_t> all;
    for (const auto& part : at) {
        if (!std::holds_alternative<int>(part)) {
            return std::nullopt;
        }
        all.push_back(static_cast<std::size_t>(std::get<int>(part)));
    }
    return all;
}

std::variant<std::vector<EditStep>, std::string> parseEditSteps(std::string_view json,
                                                                EditActs acts) {
    StepJson list;
    try {
        list = StepJson::parse(json);
    } catch (const StepJson::parse_error& error) {
        return "the steps are no JSON: " + std::string(error.what());
    }
    if (!list.is_array()) {
        return std::string("the steps are no JSON list");
    }
    std::vector<EditStep> steps;
    for (const auto& each : list) {
        try {
            steps.push_back(stepOf(each, acts));
        } catch (const StepError& error) {
            return "step " + std::to_string(steps.size() + 1) + ": " + error.text;
        }
    }
    return steps;
}

std::variant<std::vector<EditStep>, std::string> readEditSteps(const std::string& argument,
                                                               EditActs acts) {
    if (trim(argument).starts_with('[')) {
        return parseEditSteps(argument, acts);
    }
    std::string json;
    if (fileExists(argument) && fileSize(argument) > kMostStepBytes) {
        return "'" + argument + "' is too large for a list of steps";
    }
    if (const auto status = readWholeFile(argument, json); !status.ok()) {
        return "'" + argument + "': " + std::string(status.reason());
    }
    auto steps = parseEditSteps(json, acts);
    if (auto* const wrong = std::get_if<std::string>(&steps)) {
        *wrong = "'" + argument + "': " + *wrong;
    }
    return steps;
}

}  // namespace kavu::cli
