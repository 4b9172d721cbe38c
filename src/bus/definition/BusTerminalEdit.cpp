#include "bus/definition/BusTerminalEdit.h"

#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>
#include <set>

namespace kavu {

namespace {

constexpr std::string_view kRemoteDefaults = "DefaultRemoteTerminals";
constexpr std::string_view kSubDefaults = "DefaultSubTerminals";
constexpr const char* kTitle = "Defined Terminals";
/// More than a person keeps; a settings file can say anything.
constexpr int kMostDefaults = 9999;

std::string padded(std::string_view address) {
    std::string text(address);
    if (text.size() < kTerminalAddressWidth) {
        text.insert(0, kTerminalAddressWidth - text.size(), '0');
    }
    return text;
}

/// Names tell terminals apart, and where there is none addresses.
bool holds(const std::vector<Terminal>& list, const Terminal& terminal) {
    return std::any_of(list.begin(), list.end(), [&](const Terminal& each) {
        return terminal.name.empty() ? each.name.empty() && each.address == terminal.address
                                     : each.name == terminal.name;
    });
}

bool clashes(const std::vector<Terminal>& list, const Terminal& terminal, std::size_t but = 0) {
    for (std::size_t i = 0; i < list.size(); ++i) {
        const auto& each = list[i];
        if (i + 1 != but && (each.address == terminal.address ||
                             (!terminal.name.empty() && each.name == terminal.name))) {
            return true;
        }
    }
    return false;
}

void note(std::vector<Terminal>& list, std::string_view name, std::string_view address) {
    const Terminal terminal{std::string(name), padded(address)};
    if ((!name.empty() || !address.empty()) && !clashes(list, terminal)) {
        list.push_back(terminal);
    }
}

bool refuse(UserInterface* parent, const std::string& text) {
    showBox(parent, text, kTitle);
    return false;
}

/// The lists of a bus; null, which is reported, without one.
BusTerminals* listsOf(UserInterface* parent, BusDefinition& definition, std::size_t bus) {
    if (busRowAt(definition, {bus}) == nullptr) {
        refuse(parent, formatPrintf("There is no bus %d.", static_cast<int>(bus)));
        return nullptr;
    }
    if (definition.terminals.size() < bus) {
        definition.terminals.resize(bus);
    }
    return &definition.terminals[bus - 1];
}

bool checkTerminal(const DocumentContext& context, UserInterface* parent,
                   const Terminal& terminal) {
    const auto& [name, address] = terminal;
    if (holdsSemicolon(name) || holdsSemicolon(address)) {
        context.messages.show(parent, message::kNoSemicolon, title::kIllegalCharacter, kErrorBox);
        return false;
    }
    if (address.find_first_not_of("01X") != std::string::npos) {
        context.messages.showTitled(parent, 376, "Invalid Address Entered", kErrorBox);
        return false;
    }
    if (name.size() > kTerminalNameWidth || address.size() > kTerminalAddressWidth) {
        const bool isName = name.size() > kTerminalNameWidth;
        return refuse(
            parent,
            formatPrintf("The %s can only be %d characters long.", isName ? "name" : "address",
                         static_cast<int>(isName ? kTerminalNameWidth : kTerminalAddressWidth)));
    }
    return (!name.empty() || !address.empty()) ||
           refuse(parent, "A terminal needs a name or an address.");
}

void keepDefaults(ProfileSettings& settings, std::string_view section,
                  const std::vector<Terminal>& list) {
    settings.writeProfile(section, std::nullopt, std::nullopt);
    int number = 0;
    for (const auto& [name, address] : list) {
        settings.writeProfile(section, formatPrintf("N%d", number), name);
        settings.writeProfile(section, formatPrintf("A%d", number), address);
        ++number;
    }
}

/// The defaults of a section that are not in a list.
std::vector<Terminal> newDefaults(const ProfileSettings& settings, std::string_view section,
                                  const std::vector<Terminal>& list) {
    std::set<std::string> keys;
    for (const auto& key : settings.profileKeys(section)) {
        keys.insert(lowerAscii(key));
    }
    std::vector<Terminal> found;
    for (int number = 0; number < kMostDefaults; ++number) {
        const auto name = formatPrintf("N%d", number);
        const auto address = formatPrintf("A%d", number);
        if (!keys.contains(lowerAscii(name)) && !keys.contains(lowerAscii(address))) {
            break;
        }
        const Terminal terminal{settings.profileText(section, name),
                                settings.profileText(section, address)};
        if (!holds(list, terminal) && !holds(found, terminal)) {
            found.push_back(terminal);
        }
    }
    return found;
}

std::string linesOf(const std::vector<Terminal>& list) {
    std::string text;
    for (const auto& [name, address] : list) {
        text.append("\t").append(name).append("\t").append(address).append("\n");
    }
    return text.empty() ? "\t(none)\n" : text;
}

}  // namespace

void noteTerminals(BusDefinition& definition, std::size_t bus, const GroupRow& message) {
    if (bus > definition.terminals.size()) {
        definition.terminals.resize(bus);
    }
    auto& [remote, sub] = definition.terminals[bus - 1];
    const auto value = [&](std::string_view stem) {
        return busValue(message, BusLevel::Message, stem);
    };
    note(remote, value("TRN"), value("TRA"));
    note(sub, value("STN"), value("STA"));
    for (const auto& command : rowsOf(message, BusLevel::Receive)) {
        const auto received = [&](std::string_view stem) {
            return busValue(command, BusLevel::Receive, stem);
        };
        note(remote, received("RTRN"), received("RTRA"));
        note(sub, received("RSTN"), received("RSTA"));
    }
}

bool enterTerminal(DocumentContext& context, UserInterface* parent, BusDefinition& definition,
                   std::size_t bus, TerminalKind kind, Terminal terminal, std::size_t number) {
    auto* const lists = listsOf(parent, definition, bus);
    if (lists == nullptr || !checkTerminal(context, parent, terminal)) {
        return false;
    }
    auto& list = terminalsOf(*lists, kind);
    if (number > list.size()) {
        return refuse(parent, formatPrintf("There is no terminal %d.", static_cast<int>(number)));
    }
    terminal.address = padded(terminal.address);
    if (clashes(list, terminal, number)) {
        context.messages.show(parent, 321, title::kError, kErrorBox, "terminal");
        return false;
    }
    (number == 0 ? list.emplace_back() : list[number - 1]) = std::move(terminal);
    return true;
}

bool saveTerminalsAsDefaults(DocumentContext& context, UserInterface* parent,
                             const BusDefinition& definition, std::size_t bus) {
    if (busRowAt(definition, {bus}) == nullptr) {
        return refuse(parent, formatPrintf("There is no bus %d.", static_cast<int>(bus)));
    }
    if (context.messages.show(parent, 394, title::kNote, kYesNoBox) != Button::Yes) {
        return false;
    }
    const auto& [remote, sub] = definition.listKnownTerminals(bus);
    keepDefaults(context.settings, kRemoteDefaults, remote);
    keepDefaults(context.settings, kSubDefaults, sub);
    return true;
}

bool loadDefaultTerminals(DocumentContext& context, UserInterface* parent,
                          BusDefinition& definition, std::size_t bus) {
    auto* const lists = listsOf(parent, definition, bus);
    if (lists == nullptr) {
        return false;
    }
    const auto remote = newDefaults(context.settings, kRemoteDefaults, lists->remote);
    const auto sub = newDefaults(context.settings, kSubDefaults, lists->sub);
    if (remote.empty() && sub.empty()) {
        showBox(parent, "No new default terminal definitions existed, or they are already defined",
                std::string(loadText(title::kNote).value_or("")), Icon::Information);
        return false;
    }
    if (context.messages.show(parent, 393, title::kNote, kYesNoBox, linesOf(sub),
                              linesOf(remote)) != Button::Yes) {
        return false;
    }
    lists->remote.insert(lists->remote.end(), remote.begin(), remote.end());
    lists->sub.insert(lists->sub.end(), sub.begin(), sub.end());
    return true;
}

}  // namespace kavu
