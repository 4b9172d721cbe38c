#include "bus/StreamData.h"
#include "bus/definition/BusFiles.h"
#include "bus/message/MessageGroup.h"
#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/GroupFiles.h"
#include "core/text/Clock.h"
#include "core/text/Text.h"
#include "groups/GroupScan.h"
#include "sdk/StreamMeasurements.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr int kBusWordLength = 16;

/// The parts of a value in the words of a message. Those with a number are fragments of one
/// location; each of the others is a location of its own.
class WordPlaces {
  public:
    void add(std::string_view word, std::string_view mask, std::string_view order,
             std::string_view fragmentNumber) {
        SdkFragment fragment;
        const int number = leadingInt(word);
        fragment.word = {number, 0, number};
        fragment.mask = mask;
        fragment.wordLength = kBusWordLength;
        if (!order.empty()) {
            fragment.transferOrder = toUpperAscii(order.front());
        }
        const int place = leadingInt(fragmentNumber);
        if (place < 1) {
            locations_.push_back({kBusWordLength, {std::move(fragment)}});
            return;
        }
        fragment.number = place;
        fragments_.push_back(std::move(fragment));
    }

    [[nodiscard]] std::vector<SdkLocation> take() {
        if (!fragments_.empty()) {
            std::stable_sort(fragments_.begin(), fragments_.end(),
                             [](const auto& a, const auto& b) { return a.number < b.number; });
            SdkLocation location;
            for (const auto& fragment : fragments_) {
                location.wordLength += fragment.bitMask().bitCount();
            }
            location.fragments = std::move(fragments_);
            locations_.insert(locations_.begin(), std::move(location));
        }
        return std::move(locations_);
    }

  private:
    std::vector<SdkLocation> locations_;
    std::vector<SdkFragment> fragments_;
};

SdkMeasurement busMeasurement(const GroupRow& row) {
    SdkMeasurement measurement;
    measurement.name = busValue(row, BusLevel::Measurement, "MN");
    WordPlaces places;
    for (const auto& location : rowsOf(row, BusLevel::Location)) {
        const auto value = [&](std::string_view stem) {
            return busValue(location, BusLevel::Location, stem);
        };
        places.add(value("MWN"), value("MBM"), value("MTO"), value("MFP"));
    }
    measurement.locations = places.take();
    measurement.wordLength =
        measurement.locations.empty() ? 0 : measurement.locations.front().wordLength;
    return measurement;
}

/// A row of a bus group that is a measurement, and where it is.
struct BusMeasurementRow {
    const GroupRow* row;
    int bus;
    int message;
};

/// States how far a pass over a bus is: at its end, and once a second. False after a cancel.
class BusProgress {
  public:
    BusProgress(DocumentContext& context, UserInterface* parent, UserInterface* watcher)
        : context_(context), parent_(parent), watcher_(watcher) {}

    bool step(const PrintfFormat<std::size_t, std::size_t, double>& text, std::size_t done,
              std::size_t all) {
        const bool isTime = context_.ticker.secondElapsed();
        if (isTime || done == all) {
            setStatusText(watcher_, formatPrintf(text, done, all,
                                                 100.0 * static_cast<double>(done) /
                                                     static_cast<double>(all)));
        }
        return !isTime || !cancelRequested(parent_);
    }

  private:
    DocumentContext& context_;
    UserInterface* parent_;
    UserInterface* watcher_;
};

/// The rows of the measurements, message by message. False after a cancel.
bool gatherRows(const BusDefinition& definition, BusProgress& progress,
                std::vector<BusMeasurementRow>& found) {
    std::size_t all = 0;
    for (const auto& bus : definition.buses()) {
        for (const auto& message : rowsOf(bus, BusLevel::Message)) {
            all += rowsOf(message, BusLevel::Measurement).size();
        }
    }
    found.reserve(all);
    int busNumber = 0;
    for (const auto& bus : definition.buses()) {
        ++busNumber;
        int messageNumber = 0;
        for (const auto& message : rowsOf(bus, BusLevel::Message)) {
            ++messageNumber;
            for (const auto& row : rowsOf(message, BusLevel::Measurement)) {
                found.push_back({&row, busNumber, messageNumber});
                if (!progress.step("Gathering measurement info #%d of %d (%.0f%%)", found.size(),
                                   all)) {
                    return false;
                }
            }
        }
    }
    return true;
}

SdkMeasurement messageMeasurement(const MessageStream& node) {
    SdkMeasurement measurement;
    measurement.name = node.row[measurement_row::Name];
    WordPlaces places;
    for (const auto& location : node.children) {
        places.add(location.row[0], location.row[1], location.row[2], location.row[3]);
    }
    measurement.locations = places.take();
    return measurement;
}

/// The names of packet measurements, wherever in the packets they are.
bool readPacketNames(DocumentContext& context, std::string_view link,
                     std::vector<SdkMeasurement>& measurements) {
    const int index = GroupNames(context, nullptr, 'S').find(link);
    return forEachCommand(context.reader, context.store.pathOf(groupFile('S', index)),
                          [&](std::string_view text) {
                              const auto command = viewCommand(text);
                              if (!command.value.empty() &&
                                  refersTo('S', command.field) == Refers::MeasurementName) {
                                  SdkMeasurement measurement;
                                  measurement.name = command.value;
                                  measurements.push_back(std::move(measurement));
                              }
                              return true;
                          })
        .ok();
}

}  // namespace

bool readBusMeasurements(DocumentContext& context, UserInterface* parent, UserInterface* watcher,
                         std::string_view link, std::vector<SdkMeasurement>& measurements) {
    setStatusText(watcher, "Initializing 1553 measurements");
    const auto definition = openBusDefinition(context, parent, link);
    if (!definition) {
        return false;
    }
    BusProgress progress(context, parent, watcher);
    std::vector<BusMeasurementRow> rows;
    if (!gatherRows(*definition, progress, rows)) {
        return false;
    }
    measurements.reserve(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (!progress.step("Converting measurement #%d of %d (%.0f%%)", i + 1, rows.size())) {
            return false;
        }
        auto measurement = busMeasurement(*rows[i].row);
        if (!measurement.name.empty()) {  // one without a name is none
            measurement.bus = rows[i].bus;
            measurement.message = rows[i].message;
            measurements.push_back(std::move(measurement));
        }
    }
    return true;
}

bool readMessageMeasurements(DocumentContext& context, UserInterface* parent, std::string_view link,
                             std::vector<SdkMeasurement>& measurements) {
    if (streamDataOf(context, parent, link) != StreamData::Messages) {
        return readPacketNames(context, link, measurements);
    }
    MessageGroup group;
    if (!loadMessages(context, parent, link, group)) {
        return false;
    }
    int streamNumber = 0;
    for (const auto& stream : group.root.children) {
        ++streamNumber;
        int messageNumber = 0;
        for (const auto& message : stream.children) {
            ++messageNumber;
            for (const auto& node : measurementsOf(message).children) {
                auto measurement = messageMeasurement(node);
                if (!measurement.name.empty()) {
                    measurement.bus = streamNumber;
                    measurement.message = messageNumber;
                    measurements.push_back(std::move(measurement));
                }
            }
        }
    }
    return true;
}

}  // namespace kavu
