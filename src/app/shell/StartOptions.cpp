#include "app/shell/StartOptions.h"

#include "core/files/FileIo.h"
#include "core/text/Text.h"

#include <algorithm>
#include <array>
#include <clocale>

#include <QLocale>

namespace kavu {

namespace {

constexpr const char* kUsage =
    "usage: kavu [options] [FILE]\n\n"
    "  --settings FILE   use this settings file\n"
    "  --light, --dark   use this palette, not the desktop's\n"
    "  --no-splash       show no picture at the start and the end\n"
    "  --version, --help\n";

/// Automation starts the program with these; then no window is shown.
bool isAutomationSwitch(std::string_view argument) {
    constexpr auto kNames =
        std::to_array<std::string_view>({"UnregServer", "RegServer", "Embedding"});
    if (argument.empty() || (argument.front() != '-' && argument.front() != '/')) {
        return false;
    }
    return std::any_of(kNames.begin(), kNames.end(), [argument](std::string_view name) {
        return equalsIgnoreCase(argument.substr(1), name);
    });
}

}  // namespace

void keepNumbersPlain() {
    std::setlocale(LC_NUMERIC, "C");
    QLocale::setDefault(QLocale::c());
}

StartOptions readStartOptions(const std::vector<std::string>& arguments) {
    StartOptions options;
    const auto refuse = [&options](const std::string& why) {
        options.wrong = true;
        options.print = "kavu: " + why + "\n\n" + kUsage;
    };
    bool onlyFiles = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const auto& argument = arguments[i];
        const bool isFile = onlyFiles || !argument.starts_with('-');
        if (!onlyFiles && isAutomationSwitch(argument)) {
            options.automation = true;
        } else if (isFile) {
            if (!options.file.empty()) {
                refuse("there is more than one file: '" + argument + "'");
                return options;
            }
            options.file = argument;
        } else if (argument == "--") {
            onlyFiles = true;
        } else if (argument == "--light" || argument == "--dark") {
            options.scheme = argument == "--dark" ? look::Scheme::Dark : look::Scheme::Light;
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
