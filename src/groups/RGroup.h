// The recorder/reproducer group of a data source: read from its group file, held while it is
// edited, and written again.
#pragma once

#include "groups/GroupRecord.h"
#include "groups/RTracks.h"
#include "vocabulary/RGroupFields.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace kavu {

class GroupLists;
class Messages;
struct DocumentContext;

struct RecorderGroup {
    int index = 0;         ///< of the group file, 1 to 99
    std::string source{};  ///< the data source it belongs to
    GroupRow record{};     ///< all but the tracks
    std::vector<Track> tracks{};
    TrackMemory memory{};
    std::set<std::size_t> rowsRead{};  ///< the numbers under which the file has tracks
    GroupFile kept{};
    bool isNew = false;  ///< has no file yet; OK writes it, edited or not
};

/// All lists of the group, the tracks ("N") and their items among them.
[[nodiscard]] const GroupLists& recorderLists();

/// Reads the group of a data source. Without a group file it is a new one, made now, with the
/// next free number (message 310, "Creating new data source"). Nothing if the user has
/// cancelled, if the file cannot be read or if all 99 numbers are taken (85 "Unable To
/// Edit"); the latter two have been reported.
[[nodiscard]] std::optional<RecorderGroup> readRecorder(DocumentContext& context,
                                                        UserInterface* parent,
                                                        const std::string& source);

/// The new text of the group file, without the commands that are to be kept.
[[nodiscard]] std::string recorderText(const RecorderGroup& group, int edition);
/// The commands of the file that are not part of the record, renumbered as the tracks and the
/// rows of the lists are now. Those of a deleted one are left out.
[[nodiscard]] GroupFile recorderLeftovers(const RecorderGroup& group);
/// Writes the group file; see `storeGroup`.
[[nodiscard]] bool storeRecorder(DocumentContext& context, UserInterface* parent,
                                 const RecorderGroup& group);

/// Renames data links as another editor has renamed them in the group file while the group
/// was being edited: `before` and `after` are the group as in the file then and now.
void followRenamedLinks(RecorderGroup& group, const RecorderGroup& before,
                        const RecorderGroup& after, int edition);

// --- Edits with rules of their own ------------------------------------------------------------

/// Sets the number of tracks as the user enters it. False, after message 312 ("There are
/// currently"), if there are more tracks than that; the group is then as it was.
[[nodiscard]] bool setTrackCount(const Messages& messages, UserInterface* parent,
                                 RecorderGroup& group, const std::string& number);
/// Adds a track with the details that its number had before, if it had any. The number of
/// tracks is then that of the list.
void addTrack(RecorderGroup& group, Track track);
/// Deletes a track, whose details are remembered. The number of tracks is then that of the list.
void deleteTrack(RecorderGroup& group, std::size_t row);

}  // namespace kavu
