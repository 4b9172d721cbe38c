// The measurements of a bus definition as rows, one for each place: what a report lists.
#pragma once

#include "bus/definition/BusDefinition.h"

#include <string>
#include <vector>

namespace kavu {

/// A place of a measurement in a message. Values are as they are stored.
struct BusMeasurementPlace {
    std::string name{};
    std::string busAddress{};
    std::string busName{};
    std::string messageNumber{};
    std::string remoteAddress{};
    std::string remoteName{};
    std::string subAddress{};
    std::string subName{};
    std::string wordNumber{};
    std::string fragment{};
    std::string mask{};
    std::string parity{};
    std::string parityOrder{};
    std::string transferOrder{};
};

enum class BusPlaceSort { None = 0, Message, Name };

/// A row for each location of each measurement, in the order of the definition; one for a
/// measurement without a location. The user defined words of a bus are none of its messages'.
[[nodiscard]] std::vector<BusMeasurementPlace> listBusPlaces(const BusDefinition& definition);
/// Sorts by bus, message and word, or by name. Numbers of digits alone compare as numbers, all
/// others as bytes; equal rows keep their order.
void sortBusPlaces(std::vector<BusMeasurementPlace>& places, BusPlaceSort sort);
/// A number as a report shows it: digits without leading zeros, anything else as it is.
[[nodiscard]] std::string shownBusNumber(const std::string& number);

}  // namespace kavu
