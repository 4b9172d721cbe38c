#include "groups/SourceNames.h"

#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"
#include "groups/LinkValidation.h"

#include <algorithm>
#include <array>

namespace kavu {

namespace {

/// The groups whose `DLN` is the name of their own link.
constexpr std::string_view kStreamGroups = "PDBSA";
constexpr auto kMultiplexCodes = std::to_array<std::string_view>({"SI\\DLN-"});
constexpr auto kEmbeddingCodes = std::to_array<std::string_view>({"AEF\\DLN-", "ADM\\DMN-"});
constexpr auto kEventCodes = std::to_array<std::string_view>({"EV\\MS-"});
// Names of measurements: of those that are defined, and of those that a filter names.
constexpr auto kMeasurementCodes = std::to_array<std::string_view>({"MN-", "SMF\\SMN-"});
// Packet telemetry calls them by what they are in its packets.
constexpr auto kPacketCodes = std::to_array<std::string_view>({"TMN-", "HMN-", "SMN-"});

template <typename Codes>
bool beginsWithOne(const Codes& codes, std::string_view code) {
    return std::any_of(codes.begin(), codes.end(), [code](std::string_view listed) {
        return startsWithIgnoreCase(code, listed);
    });
}

}  // namespace

bool gatherSourceNames(DocumentContext& context, UserInterface* parent, LinkNames& names) {
    std::vector<DataSource> sources;
    const bool complete = readDataSources(context, parent, sources);
    for (const auto& source : sources) {
        names.add(source.name);
    }
    return complete;
}

bool gatherLinkNames(DocumentContext& context, UserInterface* parent, LinkNames& names) {
    std::vector<std::string> multiplexed;
    std::vector<PcmLinks> formats;
    if (!gatherDataLinks(context, parent, multiplexed) ||
        !gatherRecordedLinks(context, parent, names) || !readPcmLinks(context, parent, formats)) {
        return false;
    }
    for (const auto& link : multiplexed) {
        names.add(link);
    }
    for (const auto& format : formats) {
        names.add(format.link);
        for (const auto& link : format.embedded) {
            names.add(link);
        }
    }
    for (const char letter : kStreamGroups) {
        if (letter == 'P') {
            continue;
        }
        const GroupNames files(context, parent, letter);
        if (!files.complete()) {
            return false;
        }
        for (const auto& file : files.entries()) {
            names.add(file.name);
        }
    }
    return true;
}

std::string uniqueName(std::string_view name, const LinkNames& taken) {
    constexpr auto kLimit = static_cast<std::size_t>(kNameLimit);
    std::string candidate(trimRight(cutToBytes(name, kLimit)));
    for (int number = 2; candidate.empty() || taken.has(candidate); ++number) {
        const auto behind = " " + std::to_string(number);
        candidate = trimRight(cutToBytes(name, kLimit - behind.size()));
        candidate += behind;
    }
    return candidate;
}

bool isAcceptableName(const DocumentContext& context, UserInterface* parent, std::string_view name,
                      const std::string& title) {
    constexpr int kSemicolon = 402;
    constexpr int kIllegalCharacter = 139;
    if (name.find(';') != std::string_view::npos) {
        context.messages.show(parent, kSemicolon, kIllegalCharacter, kErrorBox);
        return false;
    }
    if (trim(name).empty() || holdsLineBreak(name)) {
        showBox(parent, "Please enter a name.", title);
        return false;
    }
    if (name.size() > static_cast<std::size_t>(kNameLimit)) {
        showBox(parent,
                formatPrintf("This string must be no more than %d characters long.", kNameLimit),
                title);
        return false;
    }
    return true;
}

bool isMeasurementNameCode(char letter, std::string_view code) {
    switch (letter) {
        case 'D':
        case 'B':
            return beginsWithOne(kMeasurementCodes, code);
        case 'S':
            return beginsWithOne(kMeasurementCodes, code) || beginsWithOne(kPacketCodes, code);
        default:
            return false;
    }
}

bool isLinkCode(char letter, std::string_view code) {
    switch (letter) {
        case 'M':
            return equalsIgnoreCase(code, "BB\\DLN") || beginsWithOne(kMultiplexCodes, code);
        case 'P':
            return equalsIgnoreCase(code, "DLN") || beginsWithOne(kEmbeddingCodes, code);
        case 'R':
            return isRecordedLinkCode(code) || beginsWithOne(kEventCodes, code);
        default:
            return kStreamGroups.find(letter) != std::string_view::npos &&
                   equalsIgnoreCase(code, "DLN");
    }
}

}  // namespace kavu
