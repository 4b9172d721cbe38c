#include "xml/bridge/read/ImportRun.h"

#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "vocabulary/Vocabularies.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr std::string_view kNameAttribute = "Name";
/// Of the commands that name the source and the link of a group.
constexpr std::string_view kSourceLink = "ID";
constexpr std::string_view kDataLink = "DLN";

std::string prefixOf(char letter, int number) {
    return formatPrintf("%c-%d", letter, number);
}

std::string nameOf(XmlNode element) {
    return attributeOf(element, kNameAttribute).value();
}

/// The elements of a group below a data link.
std::vector<XmlNode> groupElements(char letter, XmlNode link) {
    constexpr std::string_view kPcm = "PCMFormatAttributes";
    constexpr std::string_view kBus = "BusAttributes";
    switch (letter) {
        case 'P':
            return childrenOf(link, kPcm);
        case 'D':
            return findElements(link, {{kPcm, "PCMMeasurements"}});
        case 'B': {
            auto found = childrenOf(link, kBus);
            return found.empty() ? findElements(link, {{kPcm, kBus}}) : found;
        }
        case 'A':
            return childrenOf(link, "PAMAttributes");
        default:
            return childrenOf(link, "MessageDataAttributes");
    }
}

}  // namespace

bool ImportRun::run(XmlNode root) {
    readGeneral(root);
    for (const auto source : childrenOf(root, "DataSource")) {
        sources_.push_back({source, nameOf(source), sourceTypeOf(source, output_.dialect())});
    }
    readSourceGroups();
    if (!readLinkGroups() || !readConversions()) {
        return false;
    }
    warnOfMakers(root);
    return true;
}

void ImportRun::readGeneral(XmlNode root) {
    say("Creating TMATS 'G' group...");
    if (const auto level = childrenOf(root, "RevisionLevel"); !level.empty()) {
        constexpr int kCentury = 2000;
        constexpr int kMostLevel = 9999;
        const int number = std::clamp(leadingInt(trim(textOfXml(level.front()))), 0, kMostLevel);
        version_ = number >= 1 ? number + kCentury : 0;
        say(formatPrintf("IRIG 106 version: %d", version_));
    }
    GroupReader(output_, 'G', "G").read(root);
}

// --- Sources --------------------------------------------------------------------------------

void ImportRun::readSourceGroups() {
    int transmissions = 0;
    int recorders = 0;
    int multiplexes = 0;
    for (const auto& source : sources_) {
        if (isSchema() || equalsIgnoreCase(source.type, "RF")) {
            readSourceGroup(source, 'T', "TransmissionAttributes", transmissions);
        }
    }
    for (const auto& source : sources_) {
        if (isSchema() || equalsIgnoreCase(source.type, "TAP") ||
            equalsIgnoreCase(source.type, "STO")) {
            readSourceGroup(source, 'R', "RecorderReproducerAttributes", recorders);
        }
    }
    for (const auto& source : sources_) {
        readSourceGroup(source, 'M', "MultiplexModulationGroup", multiplexes);
    }
}

/// The default form has a group for each source of its type, the schema's dialect one for each
/// element.
void ImportRun::readSourceGroup(const Source& source, char letter, std::string_view element,
                                int& number) {
    const auto found = findElement(source.element, {{element}});
    if (!found && isSchema()) {
        return;
    }
    say(formatPrintf("Creating TMATS '%c' group for data source '%s'...", letter, source.name));
    const auto prefix = prefixOf(letter, ++number);
    output_.write(prefix, kSourceLink, source.name);
    if (found) {
        GroupReader(output_, letter, prefix).read(found);
    }
}

// --- Links ----------------------------------------------------------------------------------

bool ImportRun::readLinkGroups() {
    for (const char letter : std::string_view("PDBAS")) {
        int number = 0;
        for (const auto& source : sources_) {
            if (!readLinkGroup(letter, number, source)) {
                return false;
            }
        }
    }
    return true;
}

bool ImportRun::readLinkGroup(char letter, int& number, const Source& source) {
    for (const auto link : childrenOf(source.element, "DataLink")) {
        if (cancelRequested(parent_)) {
            return false;
        }
        const auto name = nameOf(link);
        for (const auto element : groupElements(letter, link)) {
            say(formatPrintf("Creating TMATS '%c' group for data link '%s'...", letter, name));
            const auto prefix = prefixOf(letter, ++number);
            output_.write(prefix, kDataLink, name);
            output_.markRead(link, kNameAttribute);
            GroupReader(output_, letter, prefix).read(element);
        }
    }
    return true;
}

// --- Conversion records -----------------------------------------------------------------------

bool ImportRun::readConversions() {
    constexpr std::string_view kConversions = "DataConversionAttributes";
    int number = 0;
    for (const auto& source : sources_) {
        for (const auto parent : {"MultiplexModulationGroup", "DataLink"}) {
            for (const auto attributes : findElements(source.element, {{parent, kConversions}})) {
                if (!readRecords(attributes, number)) {
                    return false;
                }
            }
        }
        if (!childrenOf(source.element, kVendorElement).empty()) {
            say(formatPrintf("WARNING: <VendorSpecificAttributes> element (TMATS V Group) detected "
                             "for data source '%s'.",
                             source.name),
                XmlStatusLevel::Warning);
            say("WARNING: This is not suported by this software. No TMATS V-Group definition will "
                "be created.",
                XmlStatusLevel::Warning);
        }
    }
    return true;
}

bool ImportRun::readRecords(XmlNode attributes, int& number) {
    for (const auto record : childrenOf(attributes, "Measurement")) {
        if (++number % static_cast<int>(kPollEvery) == 0 && cancelRequested(parent_)) {
            return false;
        }
        GroupReader(output_, 'C', prefixOf('C', number)).read(record);
    }
    return true;
}

void ImportRun::warnOfMakers(XmlNode root) {
    if (childrenOf(root, kHardwareElement).empty()) {
        return;
    }
    say("WARNING: <AirborneHardwareAttribues> element (TMATS H Group) detected.",
        XmlStatusLevel::Warning);
    say("WARNING: This is not suported by this software. No TMATS H-Group definition will be "
        "created.",
        XmlStatusLevel::Warning);
}

void ImportRun::say(const std::string& text, XmlStatusLevel level) const {
    if (status_) {
        status_(level, text);
    }
    if (parent_ != nullptr && level == XmlStatusLevel::Status) {
        parent_->setStatusText(text);
    }
}

}  // namespace kavu
