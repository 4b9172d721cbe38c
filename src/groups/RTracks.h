// The tracks of a recorder with the details of their channel data type: how they are read
// from the group file, held while they are edited, and written.
#pragma once

#include "groups/GroupRecord.h"
#include "vocabulary/RTrackFields.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// The details of a track. Those of another channel data type stay, and show again when
/// the track gets its old type back. Values are as stored.
struct TrackDetails {
    /// By code without number ("PDTF", "VCO\OE"); the data link by the key of its type.
    std::map<std::string, std::string, std::less<>> values{};
    /// The items by the code of their count; each row has a value for every field of
    /// `itemFields`.
    std::map<std::string, std::vector<std::vector<std::string>>, std::less<>> items{};
    /// The numbers under which the items were read, 0 for a new one, and how many were read.
    std::map<std::string, std::vector<std::size_t>, std::less<>> itemRows{};
    std::map<std::string, std::size_t, std::less<>> itemsRead{};

    /// Ignores where items came from.
    bool operator==(const TrackDetails& other) const {
        return values == other.values && items == other.items;
    }
};

struct Track {
    /// As stored, by the order of `trackFields`.
    std::vector<std::string> values{};
    TrackDetails details{};
    std::size_t fileRow = 0;  ///< the number it was read under; 0 for a new track

    bool operator==(const Track&) const = default;
};

/// The value of a column ("TK1-n"), as stored.
[[nodiscard]] const std::string& trackValue(const Track& track, std::string_view code);
void setTrackValue(Track& track, std::string_view code, std::string value);
/// The type that the track has in this edition, or null.
[[nodiscard]] const ChannelType* typeOf(const Track& track, int edition);

/// The fields of the track itself that the edition knows, without the count.
[[nodiscard]] std::vector<const Field*> detailFields(const ChannelType& type, int edition);
/// The fields of an item that the edition knows.
[[nodiscard]] std::vector<const Field*> itemFields(const ChannelType& type, int edition);
/// The count of the items, or null for a type that has no items in this edition.
[[nodiscard]] const Field* itemCount(const ChannelType& type, int edition);
/// The key of a detail in `TrackDetails::values`.
[[nodiscard]] std::string detailKey(const ChannelType& type, const Field& field);

/// The text of a stored value: that of the entry it names, else, of a choice, `otherwise`.
[[nodiscard]] std::string textOfValue(const Field& field, int edition, std::string_view stored,
                                      std::string_view otherwise);
/// What is stored for a text that is shown. A text that is not an entry stays as it is.
[[nodiscard]] std::string valueOfText(const Field& field, int edition, std::string_view shown);
/// The entry of a choice that a stored value names, whatever the case, or null.
[[nodiscard]] const Choice* choiceOfValue(const Field& field, int edition, std::string_view stored);

/// The tracks 1 to `count`; a row without a track number is skipped. A choice keeps a value
/// that is not an entry, but it counts as not read, because it cannot be written. False if
/// the user has cancelled, which is checked before each track.
[[nodiscard]] bool readTracks(GroupSource& source, UserInterface* parent, int edition,
                              std::size_t count, std::vector<Track>& tracks);

/// The numbers that a track and its items are written under, in rising order, and the counts of the
/// items; those that are not stated are numbered by their place.
struct TrackNumbers {
    std::size_t number = 1;
    std::map<std::string, std::vector<std::size_t>, std::less<>> items{};
    std::map<std::string, std::size_t, std::less<>> counts{};
};

/// Writes a track with the details of its type. A value that is not an entry of its choice is left
/// out.
void writeTrack(GroupWriter& writer, const Track& track, const TrackNumbers& numbers, int edition);

/// Holds what deleted tracks had, under their track numbers: a new track with the number of
/// an old one has its details again.
class TrackMemory {
  public:
    void keep(const Track& track);
    /// The details for a track of this number, or empty ones.
    [[nodiscard]] TrackDetails find(std::string_view trackNumber) const;

  private:
    std::map<int, TrackDetails> byNumber_;
};

}  // namespace kavu
