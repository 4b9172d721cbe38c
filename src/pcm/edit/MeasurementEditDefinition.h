// A measurement as its dialog shows it: the values of a new one, and those of one in the
// frame, with the list of its places.
#pragma once

#include "pcm/edit/MeasurementEditSave.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// What the dialog is opened with.
struct WordToEdit {
    EditedPlace place;  ///< `oldName` is empty for a new measurement
    MeasurementDefinition definition;
};

/// The measurement of that name at a place, or a new one with the values of the settings if
/// the name is empty. Nothing for a place that cannot hold measurements; message 329
/// ("Couldn't find measurement") if it has no cell or no measurement of that name, and 323.
[[nodiscard]] std::optional<WordToEdit> wordToEdit(const PcmFormat& format, UserInterface* parent,
                                                   int fwp, int fn, std::string_view name);

/// The initial places in the list of a location type: those of the measurement, or the one
/// that is edited if it has none for this type.
[[nodiscard]] std::vector<MeasurementSpot> spotsOf(const PcmFormat& format,
                                                   const EditedPlace& place, std::string_view type);
/// The same for the ranges of "WDFR": all places of the measurement, also of one of an older type.
[[nodiscard]] WordFrameDefinition rangesOf(const PcmFormat& format, const EditedPlace& place);

/// False, with message 460 ("Unable to convert"), if ranges cannot state all places of the
/// measurement, so that a change of its type would lose some.
bool checkRangesPossible(const PcmFormat& format, UserInterface* parent, const EditedPlace& place);

/// Where a measurement of mode "I" begins: its first place if it is one of that type already,
/// else the place that is edited.
[[nodiscard]] EditedPlace startOf(const PcmFormat& format, const EditedPlace& place,
                                  std::string_view type);

/// The mask of a new fragment, from the settings.
[[nodiscard]] std::string newFragmentMask(const PcmFormat& format);

}  // namespace kavu
