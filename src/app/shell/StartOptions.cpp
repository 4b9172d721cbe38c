#include "app/shell/StartOptions.h"

#include "core/files/FileIo.h"
#include "core/text/Text.h"

#include <algorithm>
#include <array>
#include <clocale>
#include <string_view>
#include <utility>

#include <QLocale>

namespace kavu {

namespace {

constexpr const char* kUsage =
    "usage: kavu [options] [FILE]\n\n"
    "  --settings FILE   use this settings file\n"
    "  --light, --dark   use this palette, not the desktop's\n"
    "  --no-splash       show no picture at the start and the end\n"
    "  --version, --help\n\n"
    "  -RegServer        let other programs find the automation (--system: of all users)\n"
    "  -UnregServer      take that back\n"
    "  -Embedding        serve the automation, without the main window\n";

look::Scheme schemeOf(std::string_view option) {
    return option == "--dark" ? look::Scheme::Dark : look::Scheme::Light;
}

AutomationSwitch automationSwitch(std::string_view argument) {
    constexpr auto kNames = std::to_array<std::pair<std::string_view, AutomationSwitch>>(
        {{"UnregServer", AutomationSwitch::Unregister},
         {"RegServer", AutomationSwitch::Register},
         {"Embedding", AutomationSwitch::Embedding}});
    if (argument.empty() || (argument.front() != '-' && argument.front() != '/')) {
        return AutomationSwitch::None;
    }
    const auto found = std::find_if(kNames.begin(), kNames.end(), [argument](const auto& each) {
        return equalsIgnoreCase(argument.substr(1), each.first);
    });
    return found == kNames.end() ? AutomationSwitch::None : found->second;
}

/// A start by such a switch; nothing if there is none. Whatever else was given is no reason not to
/// serve.
std::optional<StartOptions> automationOptions(const std::vector<std::string>& arguments) {
    StartOptions options;
    for (std::size_t i = 0; i < arguments.size() && arguments[i] != "--"; ++i) {
        if (options.automation == AutomationSwitch::None) {
            options.automation = automationSwitch(arguments[i]);
        }
        if (arguments[i] == "--settings" && i + 1 < arguments.size()) {
            options.settings = arguments[++i];
        } else if (arguments[i] == "--light" || arguments[i] == "--dark") {
            options.scheme = schemeOf(arguments[i]);
        }
        options.forSystem = options.forSystem || arguments[i] == "--system";
    }
    return options.automation == AutomationSwitch::None ? std::nullopt : std::optional(options);
}

}  // namespace

void keepNumbersPlain() {
    std::setlocale(LC_NUMERIC, "C");
    QLocale::setDefault(QLocale::c());
}

StartOptions readStartOptions(const std::vector<std::string>& arguments) {
    if (auto automation = automationOptions(arguments)) {
        return *std::move(automation);
    }
    StartOptions options;
    const auto refuse = [&options](const std::string& why) {
        options.wrong = true;
        options.print = "kavu: " + why + "\n\n" + kUsage;
    };
    bool onlyFiles = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const auto& argument = arguments[i];
        const bool isFile = onlyFiles || !argument.starts_with('-');
        if (isFile) {
            if (!options.file.empty()) {
                refuse("there is more than one file: '" + argument + "'");
                return options;
            }
            options.file = argument;
        } else if (argument == "--") {
            onlyFiles = true;
        } else if (argument == "--light" || argument == "--dark") {
            options.scheme = schemeOf(argument);
        } else if (argument == "--no-splash") {
            options.splash = false;
        } else if (argument == "--version") {
            options.print = "kavu " KAVU_VERSION "\n";
        } else if (argument == "--help" || argument == "-h") {
            options.print = kUsage;
        } else if (argument == "--settings" && i + 1 < arguments.size()) {
            options.settings = arguments[++i];
        } else {
            refuse("unknown option '" + argument + "'");
            return options;
        }
    }
    return options;
}

}  // namespace kavu
