#include "pcm/structure/PcmFormatEdit.h"

#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Text.h"
#include "pcm/PcmFormat.h"
#include "pcm/model/FrameSyncPattern.h"
#include "pcm/model/PcmFormatFields.h"
#include "vocabulary/StreamType.h"

#include <algorithm>
#include <array>

namespace kavu {

namespace {

/// The fixed values of a bus stream, which the user cannot change.
constexpr auto kFixedInBus =
    std::to_array<std::string_view>({"MF\\N", "F2", "F3", "F4", "MF3", "MF4", "MF5"});
constexpr auto kBusCodes = std::to_array<std::string_view>({"NRZ-L", "BIO-L", "RNRZ-L"});

template <typename List>
bool contains(const List& list, std::string_view value) {
    return std::find(list.begin(), list.end(), value) != list.end();
}

void setText(PcmFormat& format, std::string_view code, std::string_view value) {
    const auto& attribute = *findPcmAttribute(code);
    if (attribute.text(format) != value) {
        attribute.setText(format, value);
        format.changed = true;
    }
    format.formatEdited = true;
}

void takeBusValues(PcmFormat& format, UserInterface* parent) {
    format.setNumberOfFrames(parent, p::bus::kFrames);
    format.setCommonWordLength(parent, p::bus::kWordLength);
    format.setFrameSyncPatternByLength(parent, p::bus::kWordLength);
    setText(format, p::kMf3.code, p::bus::kSyncType);
    setText(format, p::kF4.code, p::bus::kParityOrder);
    setText(format, p::kF3.code, p::bus::kParity);
    if (!format.wordTransferOrder.empty()) {
        format.orderBeforeBus = format.wordTransferOrder;
    }
    setText(format, p::kF2.code, {});
}

/// Takes the order back that the user had chosen: the bus has only shown another one.
void leaveBusValues(PcmFormat& format) {
    if (!format.orderBeforeBus.empty()) {
        setText(format, p::kF2.code, format.orderBeforeBus);
        format.orderBeforeBus.clear();
    }
}

/// Does what follows from a picked value.
void followText(PcmFormat& format, UserInterface* parent, std::string_view code) {
    if (code == "TF") {
        format.isBusStream = format.typeFormat == stream_type::kBus1553.stored;
        if (format.isBusStream) {
            takeBusValues(format, parent);
        } else {
            leaveBusValues(format);
        }
    } else if (code == "D1" && format.pcmCode == "RNRZ-L") {
        setText(format, "D7", "N");
    } else if (code == "D1" && format.pcmCode == "NRZ-L") {
        setText(format, "D7", "Y");
    }
    if ((code == "D1" || code == "D7") && format.dataRandomized == "N") {
        setText(format, "D8", "N/A");
    }
}

bool editNumber(PcmFormat& format, UserInterface* parent, std::string_view code, int number) {
    if (code == "F1") {
        return format.setCommonWordLength(parent, number);
    }
    if (code == "MF\\N") {
        return format.setNumberOfFrames(parent, number);
    }
    if (code == "MF1") {
        return format.setWordsPerMinorFrame(parent, number);
    }
    return code == "MF4" && format.setFrameSyncPatternByLength(parent, number);
}

/// The text is kept in a record whose parts are separated by blanks.
bool editNonStandardCode(PcmFormat& format, std::string_view value) {
    auto text = withoutBlanks(value);
    std::erase_if(text, [](char c) { return c == '[' || c == ']' || c == '='; });
    format.changed = format.changed || text != format.nonStandardCode;
    format.nonStandardCode = std::move(text);
    format.formatEdited = true;
    return true;
}

bool editComment(PcmFormat& format, std::string_view value) {
    std::string text(value);
    fromStoredForm(text);
    format.changed = format.changed || text != format.comment;
    format.comment = std::move(text);
    format.formatEdited = true;
    return true;
}

/// The next new format starts with what was picked last.
void keepAsDefault(PcmFormat& format, std::string_view code) {
    const bool isPattern = code == "MF4" || code == "MF5";
    const auto* const attribute = findPcmAttribute(isPattern ? "MF5" : code);
    if (attribute == nullptr || attribute->setting.empty()) {
        return;
    }
    auto& settings = format.context().settings;
    if (isPattern) {
        const auto digits = withoutBlanks(format.syncPattern);
        settings.write(attribute->setting,
                       format.hexFsp ? withoutBlanks(switchPattern(digits, false)) : digits);
    } else {
        settings.write(attribute->setting, attributeValue(format, code));
    }
}

}  // namespace

std::string attributeValue(const PcmFormat& format, std::string_view code) {
    if (code == kNonStandardCode) {
        return format.nonStandardCode;
    }
    if (code == "COM") {
        return format.comment;
    }
    const auto* const attribute = findPcmAttribute(code);
    if (attribute == nullptr) {
        return {};
    }
    return attribute->text != nullptr ? std::string(attribute->text(format))
                                      : std::to_string(format.*attribute->number);
}

bool editAttribute(PcmFormat& format, UserInterface* parent, std::string_view code,
                   std::string_view value) {
    if (code == "COM") {
        return editComment(format, value);
    }
    if (code == kNonStandardCode) {
        return editNonStandardCode(format, value);
    }
    const auto* const attribute = findPcmAttribute(code);
    if (attribute == nullptr) {
        return false;
    }
    if (attribute->number != nullptr) {
        if (!editNumber(format, parent, code, leadingInt(value))) {
            return false;
        }
    } else if (code == "MF5") {
        if (!format.setFrameSyncPatternByValue(parent, value)) {
            return false;
        }
    } else if (code == "D2") {
        format.setBitRate(value);
    } else {
        setText(format, code, value);
        followText(format, parent, code);
    }
    keepAsDefault(format, code);
    checkClassOf(format, parent);
    return true;
}

void editHexFsp(PcmFormat& format, bool hexadecimal) {
    format.setHexFsp(hexadecimal);
}

void checkClassOf(PcmFormat& format, UserInterface* parent) {
    const auto attribute = format.classTwoAttribute();
    if (!attribute) {
        return;
    }
    format.context().messages.show(parent, 221, title::kErrorReadingFormat, kWarningBox,
                                   format.streamName.view(), *attribute);
    format.typeFormat =
        format.edition() <= 2001 ? stream_type::kOther.stored : stream_type::kClassTwo.stored;
    format.changed = true;
}

bool isAttributeEnabled(const PcmFormat& format, std::string_view code) {
    if (code == "D8") {
        return !(format.dataRandomized == "N");
    }
    if (code == kNonStandardCode) {
        return format.pcmCode == "OTHER";
    }
    return !format.isBusStream || !contains(kFixedInBus, code);
}

bool offersPcmCode(const PcmFormat& format, std::string_view value) {
    return !format.isBusStream || contains(kBusCodes, value);
}

bool isPacketStream(const PcmFormat& format) {
    return format.typeFormat == stream_type::kPacket.stored &&
           (format.edition() == 2005 || format.edition() == 2007);
}

namespace {

std::string_view kindOf(const PcmFormat& format) {
    return format.isBusStream ? "Bus" : isPacketStream(format) ? "Packet" : "PCM";
}

}  // namespace

std::string attributesTitle(const PcmFormat& format) {
    return formatPrintf("Edit %s Attributes - Data Link: %s", kindOf(format),
                        format.streamName.view());
}

std::string attributesStatus(const PcmFormat& format) {
    return formatPrintf("Edit %s Format Information.", kindOf(format));
}

bool checkSwitchLocation(const PcmFormat& format, UserInterface* parent,
                         std::string_view location) {
    const int fwp = leadingInt(location);
    if (location.empty() || (fwp >= 1 && fwp <= format.wordsPerMinorFrame)) {
        return true;
    }
    format.context().messages.show(parent, 160, title::kIllegalValueEntered, kErrorBox, 1,
                                   format.wordsPerMinorFrame);
    return false;
}

}  // namespace kavu
