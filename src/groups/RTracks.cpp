#include "groups/RTracks.h"

#include "core/UserInterface.h"

#include <algorithm>

namespace kavu {

namespace {

std::size_t columnOf(std::string_view code) {
    const auto fields = trackFields();
    const auto it = std::find_if(fields.begin(), fields.end(),
                                 [&](const Field& field) { return field.code == code; });
    return static_cast<std::size_t>(it - fields.begin());
}

/// What a column holds for what the file says. Two columns have but two values: all that is
/// not the one is the other.
std::string normalised(const Field& field, std::string value) {
    if (value.empty()) {
        return std::string(field.missing);
    }
    if (field.code == "TK3-n") {
        return equalsIgnoreCase(value, "FWD") ? "FWD" : "REV";
    }
    if (field.code == "CHE-n") {
        return equalsIgnoreCase(value, "T") ? "T" : "F";
    }
    return value;
}

void readDetails(FieldLookup& lookup, const ChannelType& type, int row, TrackDetails& details) {
    const int edition = lookup.edition();
    for (const auto* field : detailFields(type, edition)) {
        if (auto value = lookup.value(*field, row); !value.empty()) {
            details.values[detailKey(type, *field)] = std::move(value);
        }
    }
    const auto* count = itemCount(type, edition);
    if (count == nullptr) {
        return;
    }
    const auto number = lookup.openCount(*count, type.fields, row);
    if (!number) {
        return;
    }
    const auto fields = itemFields(type, edition);
    auto& items = details.items[std::string(count->code)];
    items.resize(static_cast<std::size_t>(*number));
    for (std::size_t i = 0; i < items.size(); ++i) {
        for (const auto* field : fields) {
            items[i].push_back(lookup.value(*field, row, static_cast<int>(i) + 1));
        }
    }
}

class Collector {
  public:
    explicit Collector(int edition) : edition_(edition) {}

    void add(const Field& field, const std::string& value, int n, int m = 0) {
        if (value.empty()) {
            return;
        }
        GroupCommand command{indexedCode(field.code, n, m), value};
        if (field.choices.empty()) {
            commands.written.push_back(std::move(command));
            return;
        }
        const auto* choice = choiceOfValue(field, edition_, value);
        auto& list = choice == nullptr ? commands.refused : commands.written;
        command.value = choice == nullptr ? value : std::string(choice->value);
        list.push_back(std::move(command));
    }
    void addCount(const Field& field, std::size_t count, int n) {
        commands.written.push_back({indexedCode(field.code, n), std::to_string(count)});
    }

    TrackCommands commands;

  private:
    int edition_;
};

void addDetails(Collector& collector, const ChannelType& type, const TrackDetails& details,
                int edition, int row) {
    for (const auto* field : detailFields(type, edition)) {
        if (const auto it = details.values.find(detailKey(type, *field));
            it != details.values.end()) {
            collector.add(*field, it->second, row);
        }
    }
    const auto* count = itemCount(type, edition);
    if (count == nullptr) {
        return;
    }
    const auto it = details.items.find(count->code);
    if (it == details.items.end()) {
        return;
    }
    collector.addCount(*count, it->second.size(), row);
    const auto fields = itemFields(type, edition);
    for (std::size_t i = 0; i < it->second.size(); ++i) {
        for (std::size_t column = 0; column < fields.size(); ++column) {
            collector.add(*fields[column], it->second[i][column], row, static_cast<int>(i) + 1);
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
    return std::string(field.code == "CDLN-n" ? type.linkKey : plainCode(field.code));
}

const Choice* choiceOfValue(const Field& field, int edition, std::string_view stored) {
    // By the value alone: "I" is "Internal" and not the first text that begins with it.
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

bool readTracks(FieldLookup& lookup, UserInterface* parent, int count, std::vector<Track>& tracks) {
    const auto fields = trackFields();
    for (int row = 1; row <= count; ++row) {
        if (cancelRequested(parent)) {
            return false;
        }
        Track track;
        track.fileRow = row;
        for (const auto& field : fields) {
            track.values.push_back(lookup.value(field, row));
            if (track.values.front().empty()) {
                break;
            }
            if (isKnownIn(lookup.edition(), field)) {
                track.values.back() = normalised(field, std::move(track.values.back()));
            }
        }
        if (track.values.front().empty()) {
            continue;
        }
        if (const auto* type = typeOf(track, lookup.edition())) {
            readDetails(lookup, *type, row, track.details);
        }
        tracks.push_back(std::move(track));
    }
    return true;
}

TrackCommands trackCommands(const std::vector<Track>& tracks, int edition) {
    Collector collector(edition);
    const auto fields = trackFields();
    int row = 0;
    for (const auto& track : tracks) {
        ++row;
        for (std::size_t i = 0; i < fields.size() && i < track.values.size(); ++i) {
            if (isKnownIn(edition, fields[i])) {
                collector.add(fields[i], track.values[i], row);
            }
        }
        if (const auto* type = typeOf(track, edition)) {
            addDetails(collector, *type, track.details, edition, row);
        }
    }
    return std::move(collector.commands);
}

void TrackMemory::keep(const Track& track) {
    byNumber_[leadingInt(trackValue(track, "TK1-n"))] = track.details;
}

TrackDetails TrackMemory::find(std::string_view trackNumber) const {
    const auto it = byNumber_.find(leadingInt(trackNumber));
    return it == byNumber_.end() ? TrackDetails{} : it->second;
}

}  // namespace kavu
