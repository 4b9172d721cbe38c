#include "groups/SourceNames.h"

#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"
#include "groups/LinkValidation.h"

namespace kavu {

namespace {

/// The groups whose `DLN` is the name of their own link.
constexpr std::string_view kStreamGroups = "PDBSA";

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
    if (name.find(';') != std::string_view::npos) {
        context.messages.show(parent, message::kNoSemicolon, title::kIllegalCharacter, kErrorBox);
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

}  // namespace kavu
