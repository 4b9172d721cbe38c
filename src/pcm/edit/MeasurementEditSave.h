// Defining a measurement at its places, moving it, and completing it from the database.
#pragma once

#include "pcm/edit/MeasurementEdit.h"
#include "pcm/edit/MeasurementEditDatabase.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kavu {

/// A location or fragment as it is listed: a word, or a position of a subframe.
struct MeasurementSpot {
    int fwp = 0;           ///< of a minor frame type
    std::string subframe;  ///< of a fragment in subframes
    int position = 0;      ///< in the subframe, from 1
    std::string mask;
    std::string transferOrder;
    int fragmentNumber = 0;
};

/// What the user has entered for one measurement.
struct MeasurementDefinition {
    /// Name, type, mask, mode, number of locations, interval and the other attributes.
    Measurement attributes;
    /// The list of mode "E", and of every fragmented type. With mode "I" the measurement begins
    /// at the place that is edited.
    std::vector<MeasurementSpot> spots;
    /// Of "WDFR".
    WordFrameDefinition wordFrame;
    /// True if the values were picked from the database.
    bool isPicked = false;
};

/// The place that is edited.
struct EditedPlace {
    int fwp = 0;
    int fn = 0;
    std::string oldName;  ///< empty for a new measurement
};

struct SaveSteps {
    /// Carries a new name to the conversion record.
    std::function<void(UserInterface*, std::string_view from, std::string_view to)>
        renameConversion;
    /// Stores the measurement in the database; called only with the setting `SaveMDB`.
    std::function<void(UserInterface*, std::string_view name)> storeInDatabase;
    DatabaseSteps database;
    /// Of a measurement that was picked from the database.
    AutoAdd autoAdd;
    /// The user has agreed that places of async formats are covered: `mayCoverAsync` is not asked.
    bool asyncIsAgreed = false;
};

/// Checks a definition and replaces the old one by it: messages 326 (no name), 327 (no location
/// type), 328 (nothing selected for its type), 334, 339 and 455 (a new name that is in use),
/// 336 (no reconstructed length), 337 (number of locations or interval), 330 (no minor word),
/// 331 (no such place), 335 (fragments of a word in different frames) and 323. Of word/frame
/// ranges also 338 (a supercommutated subframe), 231 (a word of an older type that would become
/// a subframe), 276, 285 to 287, 292 to 294 and question 357, and of subframe fragments 291,
/// whose other masks become the first one. A whole word over a place of an async format needs
/// the user's Yes (`mayCoverAsync`). Then the conversion record is renamed, the
/// measurement stored in the database, and what is added with a picked one placed in the frame.
/// False leaves the frame as it was.
bool saveMeasurement(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
                     const SaveSteps& saving, const EditedPlace& place,
                     const MeasurementDefinition& definition);

/// False if a new name is in use in another stream while names are checked across streams: message
/// 455.
[[nodiscard]] bool isFreeAcrossStreams(PcmFormat& format, UserInterface* parent,
                                       const EditSteps& steps, std::string_view name);
/// Renames the conversion record with its measurement, unless question 457 ("EU conversions") is
/// answered with No.
void carryNameToConversion(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
                           const SaveSteps& saving, std::string_view from, std::string_view to);
/// Gives a measurement another name at all its places, which stay as they are, and then the
/// conversion record. False for a measurement that is not there, and with messages 334, 339 and
/// 455 for a name that is in use; its own name in another case is free.
bool renameMeasurement(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
                       const SaveSteps& saving, std::string_view from, std::string_view to);

/// True if a name has one of its places at this word and frame, and a supercommutated or
/// fragmented definition states that place: it is the measurement's own.
[[nodiscard]] bool isOwnLocation(const PcmFormat& format, const EditedPlace& place,
                                 const MeasurementDefinition& definition, int fwp, int fn);

/// The location types that a word offers, as the list shows them; the type is the first four
/// characters. None from 106-11 on.
[[nodiscard]] std::vector<std::string> locationTypes(const PcmFormat& format, int fwp);
/// False with message 338 at a word of a supercommutated subframe.
[[nodiscard]] bool checkWordFrameAllowed(const PcmFormat& format, UserInterface* parent, int fwp);

/// A place that a measurement of one location can move to; FN 0 is every frame.
struct MoveTarget {
    int fwp = 0;
    int fn = 0;
    std::string text;  ///< as the list shows it
};
inline constexpr const char* kMoveTitle = "Move This Measurement To:";
/// Every plain word, and every frame of every ordinary subframe word.
[[nodiscard]] std::vector<MoveTarget> moveTargets(const PcmFormat& format);
/// Moves an "MF" or "SF" measurement with these values to another place. False, without
/// effect, for any other type or place.
bool moveMeasurement(PcmFormat& format, const Measurement& values, const MoveTarget& target);
/// Asks for the place; false without a parent.
bool moveMeasurement(PcmFormat& format, UserInterface* parent, const Measurement& values);

}  // namespace kavu
