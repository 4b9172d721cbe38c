// Basic measurements for all places of the frame that have none.
#pragma once

#include "pcm/edit/MeasurementEdit.h"

#include <functional>
#include <optional>
#include <string>

namespace kavu {

class ConversionStore;

/// The attributes that the new measurements share, as codes.
struct DataWordDefaults {
    std::string parity;               ///< "EV", "OD", "NO", "DE"
    std::string parityTransferOrder;  ///< "L", "T", "D"
    std::string transferOrder;        ///< "M", "L", "D"
    std::string mask;                 ///< "FW" or binary
    std::string binaryFormat;         ///< of the conversion, three letters
    std::string conversionType;       ///< "NON", "COE"
    [[nodiscard]] bool operator==(const DataWordDefaults&) const = default;
};

struct GenerateSteps {
    /// Lets the user change the defaults; values may be texts as shown ("Leads Word"). False
    /// for a Cancel. If not installed, the settings are used as they are.
    std::function<bool(UserInterface*, DataWordDefaults&)> changeDefaults;
    /// Makes the conversion record of a new measurement.
    std::function<void(UserInterface*, std::string_view name, const DataWordDefaults&)>
        createConversion;
    /// Where `createConversion` makes them: a Cancel removes those again. May be null.
    ConversionStore* conversions = nullptr;
};

/// The defaults as the settings have them.
[[nodiscard]] DataWordDefaults readDataWordDefaults(const PcmFormat& format);

/// Cuts the values to their codes, replaces an invalid mask by "FW" with message 232
/// ("Invalid Bitmask"), and keeps all of them in the settings.
void keepDataWordDefaults(const PcmFormat& format, UserInterface* parent,
                          DataWordDefaults& defaults);

/// Makes a measurement at every place without one. Returns their number; nothing if the
/// user has cancelled, while measurements or their conversions were made, and then the frame and
/// the conversions are as they were. A name that is already in use gets
/// a number appended ("FWP0002_FN001_2").
std::optional<int> createDataWords(PcmFormat& format, UserInterface* parent,
                                   const GenerateSteps& steps, const DataWordDefaults& defaults);

/// The whole operation: question 226 ("Proceed?"), answered with No without a parent; the
/// defaults; message 232; the measurements; message 227 ("Operation complete") with their
/// number.
std::optional<int> generateDataWords(PcmFormat& format, UserInterface* parent,
                                     const GenerateSteps& steps);

}  // namespace kavu
