// Edits of the attributes of a stream by their codes, for the sheet and other programs:
// each with all that follows from it. Also what the sheet edits besides the model.
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

/// The fewest words of the frame of a bus stream.
inline constexpr int kLeastWordsBus = 128;

/// The value of an attribute as a page shows it; empty for an unknown code.
[[nodiscard]] std::string attributeValue(const PcmFormat& format, std::string_view code);

/// Takes a value that the user has picked or entered, and does what follows from it: the code
/// sets the randomizing, a bus stream gets its fixed values, the class is checked. The value
/// becomes the default of new formats. False if it was refused: messages 160, 161, 216, 218
/// to 220, 222, 223, 439, 440. A change of the class is reported with message 221 ("has been
/// changed to 'Class 2'").
bool editAttribute(PcmFormat& format, UserInterface* parent, std::string_view code,
                   std::string_view value);
/// Shows and holds the sync pattern in hexadecimal or in binary.
void editHexFsp(PcmFormat& format, bool hexadecimal);
/// If the stream is of class 1 and has something that the class does not have, changes the
/// class with message 221.
void checkClassOf(PcmFormat& format, UserInterface* parent);

/// False for an attribute that others determine: the length of a missing randomizer, the
/// fixed values of a bus stream.
[[nodiscard]] bool isAttributeEnabled(const PcmFormat& format, std::string_view code);
/// True if a stream of this type can have the PCM code.
[[nodiscard]] bool offersPcmCode(const PcmFormat& format, std::string_view value);
/// "Edit PCM Attributes - Data Link: %s", and the same for bus and packet streams.
[[nodiscard]] std::string attributesTitle(const PcmFormat& format);
/// "Edit PCM Format Information." and so on.
[[nodiscard]] std::string attributesStatus(const PcmFormat& format);
/// True for a packet stream of an edition whose packets are a group of their own.
[[nodiscard]] bool isPacketStream(const PcmFormat& format);

// --- besides the model ----------------------------------------------------------------------

/// Format switching, alternate tags and minor frame filtering, by the codes of their tables.
struct PcmSideRecords {
    GroupRow formatSwitch;
    GroupRow altTag;
    GroupRow frameFilter;
    [[nodiscard]] bool operator==(const PcmSideRecords&) const = default;
};
/// Of the stream in memory. A file that cannot be read is reported and counts as empty.
[[nodiscard]] PcmSideRecords readSideRecords(PcmFormat& format, UserInterface* parent);
/// Writes them to their working files, from which a save takes them, and marks the format
/// as changed. False if a file could not be written, which has been reported.
bool storeSideRecords(PcmFormat& format, UserInterface* parent, const PcmSideRecords& records);

/// The location of the format identifier must be 1 to the words of a minor frame: message
/// 160 ("a number between").
[[nodiscard]] bool checkSwitchLocation(const PcmFormat& format, UserInterface* parent,
                                       std::string_view location);

/// The frames that are filtered, one entry for each frame from 1 on; frames that the stream
/// does not have are left out.
[[nodiscard]] std::vector<bool> filteredFrames(const GroupRow& frameFilter, int frames);
void setFilteredFrames(GroupRow& frameFilter, const std::vector<bool>& filtered);

}  // namespace kavu
