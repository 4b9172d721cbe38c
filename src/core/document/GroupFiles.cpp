#include "core/document/GroupFiles.h"

#include "core/text/Printf.h"

#include <algorithm>
#include <array>

namespace kavu {

namespace {

constexpr int kEveryEdition = 0;

constexpr auto kGroups = std::to_array<GroupKind>({
    {.letter = 'G',
     .indexed = false,
     .fileFormat = "[kavu]GTMP.G",
     .wildcard = "[kavu]GTMP.G",
     .readTitle = "General Information Section",
     .saveTitle = "Saving General Information",
     .messageName = "General Information",
     .firstEdition = kEveryEdition},
    {.letter = 'T',
     .indexed = true,
     .fileFormat = "[kavu]DSRCE.T%2.2d",
     .wildcard = "[kavu]DSRCE.T*",
     .readTitle = "Transmission Information - Definition: #%d",
     .saveTitle = "Saving RF Attributes - Data source %d",
     .messageName = "Transmission Attributes",
     .firstEdition = kEveryEdition},
    {.letter = 'R',
     .indexed = true,
     .fileFormat = "[kavu]DSRCE.R%2.2d",
     .wildcard = "[kavu]DSRCE.R*",
     .readTitle = "Tape Data Source Information - Definition: #%d",
     .saveTitle = "Saving Tape Attributes - Data source %d",
     .messageName = "Tape Data Source",
     .firstEdition = kEveryEdition},
    {.letter = 'M',
     .indexed = true,
     .fileFormat = "[kavu]MULT.M%2.2d",
     .wildcard = "[kavu]MULT.M*",
     .readTitle = "Multiplex Information - Definition: #%d",
     .saveTitle = "Saving Multiplex/Modulation Attributes - Data source %d",
     .messageName = "Multiplex/Modulation Attributes",
     .firstEdition = kEveryEdition},
    {.letter = 'P',
     .indexed = true,
     .fileFormat = "[kavu]PCMFMT.P%2.2d",
     .wildcard = "[kavu]PCMFMT.P*",
     .readTitle = "PCM Information - Definition: #%d",
     .saveTitle = "Saving PCM Format Attributes - Data link %d",
     .messageName = "PCM Format Information",
     .firstEdition = kEveryEdition},
    {.letter = 'D',
     .indexed = true,
     .fileFormat = "[kavu]PCMMEAS.D%2.2d",
     .wildcard = "[kavu]PCMMEAS.D*",
     .readTitle = "PCM Measurement Information - Definition: #%d",
     .saveTitle = "Saving PCM Measurement Attributes - Data link #%d",
     .messageName = "PCM Measurement",
     .firstEdition = kEveryEdition},
    {.letter = 'B',
     .indexed = true,
     .fileFormat = "[kavu]PCM1553.B%2.2d",
     .wildcard = "[kavu]PCM1553.B*",
     .readTitle = "1553 Bus Information - Definition: #%d",
     .saveTitle = "Saving 1553 Bus Attributes - Data link %d",
     .messageName = "1553 Bus Attributes",
     .firstEdition = kEveryEdition},
    {.letter = 'S',
     .indexed = true,
     .fileFormat = "[kavu]PCMS.S%2.2d",
     .wildcard = "[kavu]PCMS.S*",
     .readTitle = "Packet Information - Definition: #%d",
     .saveTitle = "Saving %s - Data link %d",
     .messageName = "Packet Attributes",  // up to 2007; see BuildDocument.cpp
     .firstEdition = 2005},
    {.letter = 'A',
     .indexed = true,
     .fileFormat = "[kavu]PCMPAM.A%2.2d",
     .wildcard = "[kavu]PCMPAM.A*",
     .readTitle = "PAM Information - Definition: #%d",
     .saveTitle = "Saving PAM Attributes - Data link %d",
     .messageName = "PAM Attributes",
     .firstEdition = kEveryEdition},
    {.letter = 'H',
     .indexed = false,
     .fileFormat = "[kavu]H.HHH",
     .wildcard = "[kavu]H.HHH",
     .readTitle = "Airborne Hardware Information",
     .saveTitle = "Saving Airborne Hardware Attributes",
     .messageName = "H-Section (Airborne Hardware)",
     .firstEdition = kEveryEdition},
    {.letter = 'V',
     .indexed = true,
     .fileFormat = "[kavu]V.V%2.2d",
     .wildcard = "[kavu]V.V*",
     .readTitle = "Vendor Information - Definition: #%d",
     .saveTitle = "Saving Vendor Specific Attributes - Data source %d",
     .messageName = "Vendor Specific Attributes",
     .firstEdition = 2004},
});

}  // namespace

std::span<const GroupKind> groupKinds() {
    return kGroups;
}

const GroupKind& groupKind(char letter) {
    return *std::find_if(kGroups.begin(), kGroups.end(),
                         [letter](const GroupKind& kind) { return kind.letter == letter; });
}

std::string groupFile(char letter, std::int64_t index) {
    const auto& kind = groupKind(letter);
    return kind.indexed ? formatPrintf(runtimeFormat(kind.fileFormat), index)
                        : std::string(kind.fileFormat);
}

std::string groupFileName(char letter, int index, int edition) {
    const bool named = letter == 'A' || letter == 'B' || letter == 'D' || letter == 'P' ||
                       (letter == 'S' && edition >= groupKind('S').firstEdition);
    return named && index >= kLeastGroupIndex && index <= kMostGroupIndex ? groupFile(letter, index)
                                                                          : std::string();
}

}  // namespace kavu
