#include "bus/definition/BusPlaces.h"

#include "core/text/Text.h"

#include <algorithm>
#include <tuple>

namespace kavu {

namespace {

/// The width to which numbers are padded so that they sort as text.
constexpr std::size_t kSortedDigits = 5;

bool isAllDigits(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), isDigit);
}

std::string paddedNumber(const std::string& number) {
    return isAllDigits(number) && number.size() < kSortedDigits
               ? std::string(kSortedDigits - number.size(), '0') + number
               : number;
}

std::string valueOf(const GroupRow& row, BusLevel level, std::string_view stem) {
    std::string text(busValue(row, level, stem));
    fromStoredForm(text);
    return text;
}

BusMeasurementPlace ofMessage(const GroupRow& bus, const GroupRow& message) {
    return {.busAddress = valueOf(bus, BusLevel::Bus, "BID"),
            .busName = valueOf(bus, BusLevel::Bus, "BNA"),
            .messageNumber = valueOf(message, BusLevel::Message, "MID"),
            .remoteAddress = valueOf(message, BusLevel::Message, "TRA"),
            .remoteName = valueOf(message, BusLevel::Message, "TRN"),
            .subAddress = valueOf(message, BusLevel::Message, "STA"),
            .subName = valueOf(message, BusLevel::Message, "STN")};
}

void addMeasurement(std::vector<BusMeasurementPlace>& places, BusMeasurementPlace place,
                    const GroupRow& measurement) {
    place.name = valueOf(measurement, BusLevel::Measurement, "MN");
    place.parity = valueOf(measurement, BusLevel::Measurement, "MN1");
    place.parityOrder = valueOf(measurement, BusLevel::Measurement, "MN2");
    const auto& locations = rowsOf(measurement, BusLevel::Location);
    for (const auto& location : locations) {
        place.wordNumber = valueOf(location, BusLevel::Location, "MWN");
        place.fragment = valueOf(location, BusLevel::Location, "MFP");
        place.mask = valueOf(location, BusLevel::Location, "MBM");
        place.transferOrder = valueOf(location, BusLevel::Location, "MTO");
        places.push_back(place);
    }
    if (locations.empty()) {
        places.push_back(std::move(place));
    }
}

}  // namespace

std::vector<BusMeasurementPlace> listBusPlaces(const BusDefinition& definition) {
    std::vector<BusMeasurementPlace> places;
    for (const auto& bus : definition.buses()) {
        for (const auto& message : rowsOf(bus, BusLevel::Message)) {
            const auto place = ofMessage(bus, message);
            for (const auto& measurement : rowsOf(message, BusLevel::Measurement)) {
                addMeasurement(places, place, measurement);
            }
        }
    }
    return places;
}

void sortBusPlaces(std::vector<BusMeasurementPlace>& places, BusPlaceSort sort) {
    if (sort == BusPlaceSort::Name) {
        std::stable_sort(places.begin(), places.end(),
                         [](const auto& a, const auto& b) { return a.name < b.name; });
    } else if (sort == BusPlaceSort::Message) {
        const auto key = [](const BusMeasurementPlace& place) {
            return std::tuple(place.busAddress, paddedNumber(place.messageNumber),
                              paddedNumber(place.wordNumber));
        };
        std::stable_sort(places.begin(), places.end(),
                         [&](const auto& a, const auto& b) { return key(a) < key(b); });
    }
}

std::string shownBusNumber(const std::string& number) {
    if (!isAllDigits(number)) {
        return number;
    }
    const auto first = number.find_first_not_of('0');
    return first == std::string::npos ? "0" : number.substr(first);
}

}  // namespace kavu
