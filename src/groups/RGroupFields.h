// The recorder/reproducer group: its pages, its fields and its lists.
#pragma once

#include "core/Vocabulary.h"

#include <span>
#include <string_view>
#include <vector>

namespace kavu {

inline constexpr int kMostEvents = 10;
inline constexpr int kMostModules = 1000;
inline constexpr int kMostMedia = 100;
/// Of one event. No document has so many: the file bounds them, see `FieldLookup::openCount`.
inline constexpr int kMostEventMeasurements = 99999;
inline constexpr int kMostReferenceTracks = 9;

/// From this edition on the group has recording events and their index.
inline constexpr int kFirstEditionOfEvents = 2005;
/// From this edition on an event has measurements to process.
inline constexpr int kFirstEditionOfEventMeasurements = 2011;
/// From this edition on the recorder has a serial number, modules and media.
inline constexpr int kFirstEditionOfModules = 2009;

/// A page of the sheet. Its name is what the fields call their page.
struct RecorderPage {
    std::string_view name{};
    std::string_view title{};
    int firstEdition = 0;
};
[[nodiscard]] std::span<const RecorderPage> recorderPages();

/// A part of the group: its fields, and, of a list, the count that stands in front of them
/// and is not one of them.
struct RecorderPart {
    std::span<const Field> fields{};
    const Field* count = nullptr;
};
/// The fields that occur once, in the order in which they are written. The lists stand
/// between them: see `recorderVocabulary`.
[[nodiscard]] std::span<const Field> recorderHeadFields();       ///< up to the firmware revision
[[nodiscard]] std::span<const Field> recorderMiddleFields();     ///< behind the media
[[nodiscard]] std::span<const Field> recorderIndexFields();      ///< behind the events
[[nodiscard]] std::span<const Field> recorderCommentFields();    ///< behind everything
[[nodiscard]] std::vector<const Field*> recorderSingleFields();  ///< all of these

[[nodiscard]] const RecorderPart& moduleList();
[[nodiscard]] const RecorderPart& mediaList();
[[nodiscard]] const RecorderPart& eventList();
/// The measurements to process of an event: "-n" is the event.
[[nodiscard]] const RecorderPart& eventMeasurementList();
[[nodiscard]] const RecorderPart& referenceTrackList();

/// Fields that only the bridge to XML knows: no page shows them, and the sheet neither reads
/// nor writes them. Of three of them the page uses the code for something else.
[[nodiscard]] std::span<const Field> recorderBridgeFields();

/// The whole vocabulary in the order in which a group is written: with the tracks and the
/// details of all channel types.
[[nodiscard]] std::vector<Field> recorderVocabulary();

}  // namespace kavu
