// The titles of boxes and of entries of the message log, which are messages without
// arguments, and the numbers of messages that more than one file shows.
#pragma once

#include "core/talk/MessageFor.h"

namespace kavu::title {

/// The number of a title, if the table has it and it takes no arguments; else the program
/// does not compile.
[[nodiscard]] consteval int number(int id) {
    return MessageTitle(id).id();
}

inline constexpr int kErrorReading = number(75);
inline constexpr int kError = number(78);
inline constexpr int kWarning = number(79);
inline constexpr int kNote = number(80);
inline constexpr int kInternalError = number(81);
inline constexpr int kDeleteEntry = number(83);
inline constexpr int kErrorSaving = number(84);
inline constexpr int kIllegalValueFound = number(86);
inline constexpr int kIllegalValueEntered = number(87);
inline constexpr int kErrorReadingFormat = number(88);
inline constexpr int kErrorReadingMeasurement = number(89);
inline constexpr int kIllegalNumberOfLists = number(90);
inline constexpr int kIncompleteFragments = number(91);
inline constexpr int kErrorReadingSubframeFragments = number(92);
inline constexpr int kUnableToInitializeMeasurements = number(95);
inline constexpr int kUnableToInitializeMeasurement = number(96);
inline constexpr int kUnableToInitializeSupercomInterval = number(97);
inline constexpr int kUnableToInitializeSupercomList = number(98);
inline constexpr int kErrorSavingMeasurement = number(101);
inline constexpr int kOperationAborted = number(102);
inline constexpr int kErrorReadingSubframe = number(103);
inline constexpr int kIncompleteSubframeFragments = number(104);
inline constexpr int kErrorReadingConversion = number(106);
inline constexpr int kInvalidInterval = number(120);
inline constexpr int kDeleteSubframe = number(124);
inline constexpr int kInvalidSupercomLocations = number(125);
inline constexpr int kUnableToSaveSubframe = number(126);
inline constexpr int kDeleteIdCounter = number(128);
inline constexpr int kUnableToDeleteIdCounter = number(130);
inline constexpr int kErrorSavingSupercomList = number(131);
inline constexpr int kErrorSavingWordFragments = number(132);
inline constexpr int kUnableToSaveSubframeSupercom = number(133);
inline constexpr int kUnableToSaveAsync = number(136);
inline constexpr int kDeleteAsync = number(138);
inline constexpr int kIllegalCharacter = number(139);

}  // namespace kavu::title

/// Messages that several files show.
namespace kavu::message {

inline constexpr int kAreYouSure = 82;
inline constexpr int kUnableToEdit = 85;  ///< of the section
inline constexpr int kNotFound = 145;     ///< of the group
inline constexpr int kUnableToDisplay = 159;
inline constexpr int kFewerThanTracks = 312;
inline constexpr int kNoSemicolon = 402;

}  // namespace kavu::message
