// The recorder/reproducer group: its pages, its fields and its lists.
#pragma once

#include "vocabulary/Field.h"

#include <span>
#include <string_view>

namespace kavu {

inline constexpr int kMostEvents = 10;
inline constexpr int kMostModules = 1000;
inline constexpr int kMostMedia = 100;
inline constexpr int kMostEventMeasurements = 9999;
inline constexpr int kMostReferenceTracks = 9;

/// From this edition on the group has recording events and their index.
inline constexpr int kFirstEditionOfEvents = 2005;
/// From this edition on an event has measurements to process.
inline constexpr int kFirstEditionOfEventMeasurements = 2011;
/// From this edition on the recorder has modules and media.
inline constexpr int kFirstEditionOfModules = 2009;

/// A page of the sheet. Fields refer to it by its name.
struct RecorderPage {
    std::string_view name{};
    std::string_view title{};
    int firstEdition = 0;
};
[[nodiscard]] std::span<const RecorderPage> recorderPages();

/// The commands in the order in which they are written, in two parts: the tracks come
/// between them.
[[nodiscard]] std::span<const Field> recorderFieldsBeforeTracks();
[[nodiscard]] std::span<const Field> recorderFieldsBehindTracks();
/// Those of both parts that are in no list.
[[nodiscard]] std::span<const Field> recorderSingleFields();
/// The columns of the list that this count governs: "RIM\N", "EV\PM\N-n", ...
[[nodiscard]] std::span<const Field> recorderColumns(std::string_view count);

/// Fields that only the XML bridge has: no page shows them, and the sheet neither reads nor
/// writes them. The page uses the codes of three of them for something else.
[[nodiscard]] std::span<const Field> recorderBridgeFields();

/// The whole vocabulary in the order in which a group is written: with the tracks and the
/// details of all channel types, followed by what only the XML bridge has.
[[nodiscard]] std::span<const Field> recorderVocabulary();

}  // namespace kavu
