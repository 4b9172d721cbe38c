#include "cli/SdkCommandLine.h"

#include "cli/CommandLineParts.h"

namespace kavu::cli {

SdkApps addSdkCommands(CLI::App& app, CommandLine& line) {
    SdkApps apps;
    auto* const sdk =
        addCommand(app, "sdk", "Read a file as a translator does, without opening it");
    sdk->require_subcommand(1);
    const auto addArgument = [](CLI::App& command, const char* name, std::string& text,
                                const char* help) {
        oneValue(command.add_option(name, text, help), "")->required();
    };
    const auto add = [&](Command id, const char* name, const char* help) -> CLI::App& {
        auto* const command = addCommand(*sdk, name, help);
        apps.emplace_back(id, command);
        addArgument(*command, "FILE", line.file, "The TMATS file");
        return *command;
    };
    const auto addLink = [&](CLI::App& command) {
        addArgument(command, "LINK", line.link, "The name of a data link, or #N for the N-th");
    };
    add(Command::SdkStreams, "streams", "Show the data sources and the data links");
    addLink(add(Command::SdkMeasurements, "measurements", "Show the measurements of a data link"));
    auto& measurement =
        add(Command::SdkMeasurement, "measurement", "Show the places and masks of a measurement");
    addLink(measurement);
    addArgument(measurement, "NAME", line.name, "The name of a measurement, or #N for the N-th");
    addArgument(add(Command::SdkEu, "eu", "Show the conversion record of a measurement"), "NAME",
                line.name, "The name of a measurement, or #N for the record C-N");
    return apps;
}

}  // namespace kavu::cli
