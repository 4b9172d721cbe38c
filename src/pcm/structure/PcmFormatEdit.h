// Edits of the attributes of a stream by their codes, as the sheet and other programs make
// them: each with all that follows from it. Also what the sheet edits beside the model.
#pragma once

#include "groups/GroupRecord.h"
#include "vocabulary/FieldRules.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class PcmFormat;
class UserInterface;

// What a bus stream has by its standard.
inline constexpr int kBusWordLength = 24;
inline constexpr int kLeastWordsBus = 128;

/// The value of an attribute as a page has it; empty for a code that is none.
[[nodiscard]] std::string attributeValue(const PcmFormat& format, std::string_view code);

/// Takes a value that a person has picked or entered. What follows from it is done too: the
/// code sets the randomizing, a bus stream has its fixed values, the class is checked. The
/// value becomes the default of new formats. False if it was refused: messages 160, 161, 216,
/// 218 to 220, 222, 223, 439, 440. A change of the class is told with message 221.
bool editAttribute(PcmFormat& format, UserInterface* parent, std::string_view code,
                   std::string_view value);
/// Shows and holds the sync pattern in hexadecimal or in binary.
void editHexFsp(PcmFormat& format, bool hexadecimal);
/// If the stream is of class 1 and has something that class has not, tells message 221 and
/// changes the class.
void checkClassOf(PcmFormat& format, UserInterface* parent);

/// False for an attribute that others decide: the length of a randomizer that there is not,
/// the fixed values of a bus stream.
[[nodiscard]] bool isAttributeEnabled(const PcmFormat& format, std::string_view code);
/// The PCM code is one that a stream of this type can have.
[[nodiscard]] bool offersPcmCode(const PcmFormat& format, std::string_view value);
/// "Edit PCM Attributes - Data Link: %s", and the same for bus and packet streams.
[[nodiscard]] std::string attributesTitle(const PcmFormat& format);
/// "Edit PCM Format Information." and so on.
[[nodiscard]] std::string attributesStatus(const PcmFormat& format);
/// A packet stream of an edition whose packets are a group of their own.
[[nodiscard]] bool isPacketStream(const PcmFormat& format);

// --- beside the model -----------------------------------------------------------------------

/// Format switching, alternate tags and minor frame filtering, by the codes of their tables.
struct PcmSideRecords {
    GroupRow formatSwitch;
    GroupRow altTag;
    GroupRow frameFilter;
    [[nodiscard]] bool operator==(const PcmSideRecords&) const = default;
};
/// Of the stream in memory. A file that can not be read is reported and counts as empty.
[[nodiscard]] PcmSideRecords readSideRecords(PcmFormat& format, UserInterface* parent);
/// Writes them to their working files, from which a save takes them, and marks the format
/// changed. False if a file could not be written, which has been reported.
bool storeSideRecords(PcmFormat& format, UserInterface* parent, const PcmSideRecords& records);

/// The location of the format identifier: 1 to the words of a minor frame, message 160.
[[nodiscard]] bool checkSwitchLocation(const PcmFormat& format, UserInterface* parent,
                                       std::string_view location);

/// The frames that are filtered, one entry for each frame from 1 on; frames that the stream
/// does not have are none.
[[nodiscard]] std::vector<bool> filteredFrames(const GroupRow& frameFilter, int frames);
void setFilteredFrames(GroupRow& frameFilter, const std::vector<bool>& filtered);

}  // namespace kavu
