#include "cli/SdkCommands.h"

#include "application/Application.h"
#include "cli/ScriptedInterface.h"
#include "cli/TerminalText.h"
#include "core/WorkingStore.h"
#include "core/text/Text.h"
#include "sdk/TranslatorSdk.h"
#include "vocabulary/CGroupFields.h"

#include <algorithm>
#include <optional>

namespace kavu::cli {

namespace {

std::string lineBreaksOf(std::string_view stored) {
    std::string text(stored);
    fromStoredForm(text);
    return text;
}
Json sdkText(std::string_view stored) {
    return jsonText(lineBreaksOf(stored));
}
std::string cell(std::string_view stored) {
    return terminalLine(lineBreaksOf(stored));
}

/// The number of "#3", or nothing for any other text.
std::optional<int> numberOf(const std::string& text) {
    const bool isNumber = text.size() > 1 && text.size() < 10 && text.front() == '#' &&
                          std::all_of(text.begin() + 1, text.end(), isDigit);
    return isNumber ? std::optional(leadingInt(std::string_view(text).substr(1))) : std::nullopt;
}

Json rangeJson(const SdkRange& range) {
    return Json::array({range.start, range.interval, range.end});
}
std::string rangeText(const SdkRange& range) {
    if (range.end == range.start) {
        return std::to_string(range.start);
    }
    return formatPrintf("%d to %d by %d", range.start, range.end, range.interval);
}

Json fragmentJson(const SdkFragment& fragment) {
    const auto mask = fragment.bitMask();
    return {{"number", fragment.number},
            {"word", rangeJson(fragment.word)},
            {"frame", rangeJson(fragment.frame)},
            {"mask", sdkText(fragment.mask)},
            {"fullWord", mask.isFullWord()},
            {"maskWords", mask.words()},
            {"bits", mask.bits()},
            {"transferOrder", std::string(1, fragment.transferOrder)}};
}

/// One run of one of the commands.
class SdkRun {
  public:
    SdkRun(CommandContext& context, CommandOutput& output)
        : context_(context),
          output_(output),
          sdk_(context.application.context().store.environment(),
               context.application.context().clock, context.application.context().random) {}

    bool run() {
        const auto& line = context_.line;
        members_["file"] = jsonText(line.file);
        bool done = sdk_.open(line.file, context_.ui);
        members_["version"] = sdk_.version();
        members_["errors"] = Json::array();
        if (done) {
            switch (line.command) {
                case Command::SdkStreams:
                    listStreams();
                    break;
                case Command::SdkMeasurements:
                    done = openLink() && listMeasurements();
                    break;
                case Command::SdkMeasurement:
                    done = openLink() && showMeasurement();
                    break;
                default:
                    done = showConversion();
                    break;
            }
        }
        for (const auto& error : sdk_.errors()) {
            members_["errors"].push_back(sdkText(error));
            output_.text += terminalText(lineBreaksOf(error));
        }
        if (!done && sdk_.isActive()) {
            showErrors();
        }
        output_.members = std::move(members_);
        output_.isReported = done && line.command == Command::SdkStreams && !sdk_.errors().empty();
        return done && !context_.ui->cancelRequested();
    }

  private:
    /// What a failure prints in place of a result; the box of an open has been shown.
    void showErrors() {
        for (const auto& error : sdk_.errors()) {
            context_.ui->note(std::string(trim(lineBreaksOf(error))));
        }
    }

    void listStreams() {
        members_["sources"] = Json::array();
        for (const auto& source : sdk_.sources()) {
            members_["sources"].push_back(
                {{"name", sdkText(source.name)}, {"type", sdkText(source.type)}});
        }
        members_["links"] = Json::array();
        std::vector<std::vector<std::string>> rows{
            {"#", "Data Link", "Type", "Groups", "Measurements"}};
        for (const auto& link : sdk_.links()) {
            const int result = sdk_.ParseTmatsPcmFormatInfo(link.number);
            Json groups = Json::object();
            std::string groupNames;
            for (const char letter : SdkLink::kLinkLetters) {
                groups[std::string(1, letter)] = link.group(letter);
                if (link.group(letter) > 0) {
                    groupNames +=
                        (groupNames.empty() ? "" : " ") + groupName(letter, link.group(letter));
                }
            }
            members_["links"].push_back({{"name", sdkText(link.name)},
                                         {"number", link.number},
                                         {"named", link.isNamed},
                                         {"type", sdkText(link.type)},
                                         {"groups", std::move(groups)},
                                         {"measurements", sdk_.measurementCount()},
                                         {"result", result}});
            rows.push_back({std::to_string(link.number), cell(link.name), cell(link.type),
                            groupNames, std::to_string(sdk_.measurementCount())});
        }
        for (const auto& source : sdk_.sources()) {
            output_.text += "Data source " + cell(source.name) + " (" + cell(source.type) + ")\n";
        }
        output_.text += alignedTable(rows);
    }

    /// Loads the stream of the line, and states it.
    bool openLink() {
        const auto& text = context_.line.link;
        const auto* const link = sdk_.findLink(text);
        const auto number = link != nullptr ? std::optional(link->number) : numberOf(text);
        if (!number) {
            sdk_.writeError(formatPrintf("ERROR: There is no data link '%s'.\n\n", text));
            members_["result"] = -1;
            return false;
        }
        const int result = sdk_.ParseTmatsPcmFormatInfo(*number);
        if (*number >= 1 && *number <= sdk_.streamCount()) {
            members_["stream"] = sdkText(sdk_.links()[static_cast<std::size_t>(*number) - 1].name);
        }
        members_["number"] = *number;
        members_["result"] = result;
        return result == 0;
    }

    bool listMeasurements() {
        members_["count"] = sdk_.measurementCount();
        Json all = Json::array();
        std::vector<std::vector<std::string>> rows{
            {"#", "Measurement", "Bits", "Locations", "Conversion"}};
        for (unsigned i = 0; i < sdk_.measurementCount(); ++i) {
            const auto& measurement = sdk_.measurement(i);
            const bool isConverted = sdk_.findConversion(measurement.name).has_value();
            all.push_back({{"index", i + 1},
                           {"name", sdkText(measurement.name)},
                           {"wordLength", measurement.wordLength},
                           {"locations", measurement.locations.size()},
                           {"conversion", isConverted}});
            rows.push_back({std::to_string(i + 1), cell(measurement.name),
                            std::to_string(measurement.wordLength),
                            std::to_string(measurement.locations.size()),
                            isConverted ? "yes" : "no"});
        }
        members_["measurements"] = std::move(all);
        output_.text += alignedTable(rows);
        return true;
    }

    std::optional<unsigned> findMeasurement() {
        const auto& text = context_.line.name;
        if (const auto found = sdk_.findMeasurement(text)) {
            return found;
        }
        const auto number = numberOf(text);
        if (number && *number >= 1 && static_cast<unsigned>(*number) <= sdk_.measurementCount()) {
            return static_cast<unsigned>(*number) - 1;
        }
        sdk_.writeError(
            formatPrintf("ERROR: There is no measurement '%s' in this stream.\n\n", text));
        members_["result"] = -1;
        return std::nullopt;
    }

    bool showMeasurement() {
        const auto index = findMeasurement();
        if (!index) {
            return false;
        }
        const auto& measurement = sdk_.measurement(*index);
        members_["index"] = *index + 1;
        members_["name"] = sdkText(measurement.name);
        members_["wordLength"] = measurement.wordLength;
        if (measurement.bus > 0) {
            members_["bus"] = measurement.bus;
            members_["message"] = measurement.message;
        }
        Json locations = Json::array();
        std::vector<std::vector<std::string>> rows{
            {"Location", "Fragment", "Word", "Frame", "Mask", "Order"}};
        for (const auto& location : measurement.locations) {
            Json fragments = Json::array();
            for (const auto& fragment : location.fragments) {
                fragments.push_back(fragmentJson(fragment));
                rows.push_back({std::to_string(locations.size() + 1),
                                std::to_string(fragment.number), rangeText(fragment.word),
                                rangeText(fragment.frame), cell(fragment.mask),
                                std::string(1, fragment.transferOrder)});
            }
            locations.push_back({{"fragments", std::move(fragments)}});
        }
        members_["locations"] = std::move(locations);
        output_.text += cell(measurement.name) + ", " + std::to_string(measurement.wordLength) +
                        " bits\n" + alignedTable(rows);
        return true;
    }

    bool showConversion() {
        const auto& text = context_.line.name;
        auto place = sdk_.findConversion(text);
        SdkGroup record;
        if (!place && numberOf(text)) {
            place = sdk_.findConversion(std::int64_t{*numberOf(text)});
            if (!place) {
                (void)sdk_.GetMeasurementEUInfoByIndex(*numberOf(text), record);
            }
        } else if (!place) {
            sdk_.writeError(formatPrintf(
                "ERROR: There is no conversion record of measurement '%s'.\n\n", text));
        }
        auto opened = place ? sdk_.openConversion(*place) : std::nullopt;
        members_["result"] = opened ? 0 : -1;
        if (!opened) {
            return false;
        }
        members_["name"] = sdkText(sdk_.conversionName(*place));
        members_["index"] = opened->number();
        JsonMembers fields;
        std::vector<std::vector<std::string>> rows;
        for (std::size_t i = 0; i < opened->size(); ++i) {
            const auto command = opened->at(i);
            if (!equalsIgnoreCase(command.field, c::kDcn.code)) {
                fields.set(jsonText(std::string(command.field)).get<std::string>(),
                           sdkText(command.value));
                rows.push_back({terminalLine(command.field), cell(command.value)});
            }
        }
        members_["fields"] = fields.take();
        output_.text += cell(sdk_.conversionName(*place)) + "\n" + alignedTable(rows);
        return true;
    }

    CommandContext& context_;
    CommandOutput& output_;
    TranslatorSdk sdk_;
    Json members_ = Json::object();
};

}  // namespace

bool isSdkCommand(Command command) {
    return command == Command::SdkStreams || command == Command::SdkMeasurements ||
           command == Command::SdkMeasurement || command == Command::SdkEu;
}

bool sdkCommand(CommandContext& context, CommandOutput& output) {
    return SdkRun(context, output).run();
}

}  // namespace kavu::cli
