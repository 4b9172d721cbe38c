#include "groups/RTracks.h"

#include "core/talk/UserInterface.h"
#include "core/text/Text.h"

#include <algorithm>

namespace kavu {

namespace {

/// Files of the editions in which the link is a detail also have it under the key of its
/// type. It is written under this code.
constexpr std::string_view kDataLinkCode = "CDLN-n";

std::size_t columnOf(std::string_view code) {
    const auto fields = trackFields();
    const auto it = std::find_if(fields.begin(), fields.end(),
                                 [&](const Field& field) { return field.code == code; });
    return static_cast<std::size_t>(it - fields.begin());
}

/// True for a column with two values, where anything but the first means the second.
bool hasTwoValues(const Field& field) {
    return field.code == "TK3-n" || field.code == "CHE-n";
}

std::string normalised(const Field& field, std::string value) {
    if (value.empty() || !hasTwoValues(field)) {
        return value;
    }
    const auto one = field.choices.front().value;
    return std::string(equalsIgnoreCase(value, one) ? one : field.choices.back().value);
}

/// Reads the tracks of one file.
class TrackReader {
  public:
    TrackReader(GroupSource& source, int edition)
        : source_(source), edition_(edition), rowsLeft_(source.kept().commands().size()) {}

    [[nodiscard]] Track read(std::size_t row);

  private:
    [[nodiscard]] std::string value(const Field& field, RowNumbers at);
    [[nodiscard]] std::size_t countItems(const Field& count, std::size_t row);
    void readDetails(const ChannelType& type, std::size_t row, TrackDetails& details);

    GroupSource& source_;
    int edition_;
    /// How many more items all tracks together may have beyond those always accepted: a
    /// count in the file must not make items for which it has no commands.
    std::size_t rowsLeft_;
};

std::string TrackReader::value(const Field& field, RowNumbers at) {
    if (!isKnownIn(edition_, field)) {
        return {};
    }
    if (!field.choices.empty() && !hasTwoValues(field)) {
        auto raw = source_.peek(field, at);
        if (choiceOfValue(field, edition_, raw) == nullptr && !raw.empty()) {
            return raw;
        }
    }
    return source_.value(field, at);
}

std::size_t TrackReader::countItems(const Field& count, std::size_t row) {
    constexpr std::size_t kBelieved = 256;
    const auto number = source_.count(count, {row});
    if (number <= kBelieved) {
        return number;
    }
    const auto more = std::min(number - kBelieved, rowsLeft_);
    rowsLeft_ -= more;
    return kBelieved + more;
}

void TrackReader::readDetails(const ChannelType& type, std::size_t row, TrackDetails& details) {
    for (const auto* field : detailFields(type, edition_)) {
        auto text = value(*field, {row});
        if (text.empty() && field->code == kDataLinkCode) {
            const auto code = std::string(type.linkKey) + "-n";
            auto named = *field;
            named.code = code;
            text = value(named, {row});
        }
        if (!text.empty()) {
            details.values[detailKey(type, *field)] = std::move(text);
        }
    }
    const auto* count = itemCount(type, edition_);
    if (count == nullptr || source_.peek(*count, {row}).empty()) {
        return;
    }
    const auto fields = itemFields(type, edition_);
    auto& items = details.items[std::string(count->code)];
    items.resize(countItems(*count, row));
    auto& rows = details.itemRows[std::string(count->code)];
    details.itemsRead[std::string(count->code)] = items.size();
    for (std::size_t i = 0; i < items.size(); ++i) {
        rows.push_back(i + 1);
        for (const auto* field : fields) {
            items[i].push_back(value(*field, {row, i + 1}));
        }
    }
}

Track TrackReader::read(std::size_t row) {
    Track track;
    track.fileRow = row;
    for (const auto& field : trackFields()) {
        track.values.push_back(normalised(field, value(field, {row})));
        if (track.values.front().empty()) {
            return track;
        }
    }
    if (const auto* type = typeOf(track, edition_)) {
        readDetails(*type, row, track.details);
    }
    return track;
}

void writeValue(GroupWriter& writer, int edition, const Field& field, const std::string& value,
                RowNumbers at) {
    if (!isKnownIn(edition, field)) {
        return;
    }
    // The bytes of the file are kept, even if it spells an entry in another case.
    if (field.choices.empty() || choiceOfValue(field, edition, value) != nullptr) {
        writer.write(field, value, at);
    }
}

void writeDetails(GroupWriter& writer, int edition, const ChannelType& type,
                  const TrackDetails& details, const TrackNumbers& numbers) {
    const auto row = numbers.number;
    for (const auto* field : detailFields(type, edition)) {
        if (const auto it = details.values.find(detailKey(type, *field));
            it != details.values.end()) {
            writeValue(writer, edition, *field, it->second, {row});
        }
    }
    const auto* count = itemCount(type, edition);
    const auto items = details.items.find(count == nullptr ? std::string_view() : count->code);
    if (items == details.items.end()) {
        return;
    }
    const auto stated = numbers.items.find(count->code);
    const bool isStated = stated != numbers.items.end();
    const auto rows = isStated ? numbers.counts.at(std::string(count->code)) : items->second.size();
    writer.write(*count, std::to_string(rows), {row});
    const auto fields = itemFields(type, edition);
    for (std::size_t i = 0; i < items->second.size(); ++i) {
        const auto number = isStated ? stated->second[i] : i + 1;
        for (std::size_t column = 0; column < fields.size(); ++column) {
            writeValue(writer, edition, *fields[column], items->second[i][column], {row, number});
        }
    }
}

}  // namespace

const std::string& trackValue(const Track& track, std::string_view code) {
    static const std::string none;
    const auto column = columnOf(code);
    return column < track.values.size() ? track.values[column] : none;
}

void setTrackValue(Track& track, std::string_view code, std::string value) {
    track.values.resize(trackFields().size());
    track.values[columnOf(code)] = std::move(value);
}

const ChannelType* typeOf(const Track& track, int edition) {
    return channelType(trackValue(track, "CDT-n"), edition);
}

std::vector<const Field*> detailFields(const ChannelType& type, int edition) {
    std::vector<const Field*> fields;
    for (const auto& field : type.fields) {
        if (!isItemField(field) && field.kind != FieldKind::Count && isKnownIn(edition, field)) {
            fields.push_back(&field);
        }
    }
    return fields;
}

std::vector<const Field*> itemFields(const ChannelType& type, int edition) {
    std::vector<const Field*> fields;
    for (const auto& field : type.fields) {
        if (isItemField(field) && isKnownIn(edition, field)) {
            fields.push_back(&field);
        }
    }
    return fields;
}

const Field* itemCount(const ChannelType& type, int edition) {
    const auto it = std::find_if(type.fields.begin(), type.fields.end(), [&](const Field& field) {
        return field.kind == FieldKind::Count && isKnownIn(edition, field);
    });
    return it == type.fields.end() ? nullptr : &*it;
}

std::string detailKey(const ChannelType& type, const Field& field) {
    return std::string(field.code == kDataLinkCode ? type.linkKey : codeHead(field.code));
}

const Choice* choiceOfValue(const Field& field, int edition, std::string_view stored) {
    // Only by the value: "I" is "Internal" and not the first text that begins with it.
    const auto it =
        std::find_if(field.choices.begin(), field.choices.end(), [&](const Choice& choice) {
            return !choice.text.empty() && isKnownIn(edition, choice) &&
                   equalsIgnoreCase(choice.value, stored);
        });
    return stored.empty() || it == field.choices.end() ? nullptr : &*it;
}

std::string textOfValue(const Field& field, int edition, std::string_view stored,
                        std::string_view otherwise) {
    if (field.choices.empty()) {
        return std::string(stored);
    }
    const auto* choice = choiceOfValue(field, edition, stored);
    return std::string(choice == nullptr ? otherwise : choice->text);
}

std::string valueOfText(const Field& field, int edition, std::string_view shown) {
    const auto it = std::find_if(
        field.choices.begin(), field.choices.end(),
        [&](const Choice& choice) { return isKnownIn(edition, choice) && choice.text == shown; });
    return std::string(shown.empty() || it == field.choices.end() ? shown : it->value);
}

bool readTracks(GroupSource& source, UserInterface* parent, int edition, std::size_t count,
                std::vector<Track>& tracks) {
    TrackReader reader(source, edition);
    for (std::size_t row = 1; row <= std::min(count, kMostTracks); ++row) {
        if (cancelRequested(parent)) {
            return false;
        }
        auto track = reader.read(row);
        if (!trackValue(track, "TK1-n").empty()) {
            tracks.push_back(std::move(track));
        }
    }
    return true;
}

void writeTrack(GroupWriter& writer, const Track& track, const TrackNumbers& numbers, int edition) {
    const auto fields = trackFields();
    for (std::size_t i = 0; i < fields.size() && i < track.values.size(); ++i) {
        writeValue(writer, edition, fields[i], track.values[i], {numbers.number});
    }
    if (const auto* type = typeOf(track, edition)) {
        writeDetails(writer, edition, *type, track.details, numbers);
    }
}

void TrackMemory::keep(const Track& track) {
    byNumber_[leadingInt(trackValue(track, "TK1-n"))] = track.details;
}

TrackDetails TrackMemory::find(std::string_view trackNumber) const {
    const auto it = byNumber_.find(leadingInt(trackNumber));
    return it == byNumber_.end() ? TrackDetails{} : it->second;
}

}  // namespace kavu
