#include "mdb/operations/BusAdditions.h"

#include "conversion/ConversionStore.h"
#include "core/TmatsDocument.h"
#include "core/document/Transaction.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"
#include "groups/MeasurementNames.h"
#include "mdb/operations/DatabaseFamily.h"

#include <algorithm>
#include <array>
#include <map>
#include <unordered_set>

namespace kavu {

namespace {

constexpr std::string_view kAddOperation = "Addition From Database";
constexpr const char* kAddTitle = "Add Measurement From Database";

/// A number or an address without its leading zeros; empty for an empty one only.
std::string plainNumber(std::string_view text) {
    text = trimBlanks(text);
    const auto first = text.find_first_not_of('0');
    return std::string(first == std::string_view::npos
                           ? text.substr(0, std::min<std::size_t>(text.size(), 1))
                           : text.substr(first));
}

/// The orders of bits in a database and in a bus group.
std::string_view busTransferOrder(std::string_view order) {
    return order == "M" ? "MSB" : order == "L" ? "LSB" : "DEF";
}

bool isKnownValue(BusLevel level, std::string_view stem, std::string_view value) {
    const auto* const field = findBusField(level, stem);
    return field != nullptr && std::any_of(field->choices.begin(), field->choices.end(),
                                           [value](const Choice& c) { return c.value == value; });
}

/// The messages of a definition by what a record says of them.
class MessageIndex {
  public:
    explicit MessageIndex(const BusDefinition& definition) {
        std::size_t b = 0;
        for (const auto& bus : definition.buses()) {
            ++b;
            const auto number = plainNumber(busValue(bus, BusLevel::Bus, "BID"));
            std::size_t m = 0;
            for (const auto& message : rowsOf(bus, BusLevel::Message)) {
                Message entry{{b, ++m},
                              std::string(trimBlanks(busValue(message, BusLevel::Message, "TRM")))};
                messages_[{number, plainNumber(busValue(message, BusLevel::Message, "TRA")),
                           plainNumber(busValue(message, BusLevel::Message, "STA"))}]
                    .push_back(std::move(entry));
            }
        }
    }

    /// Empty if no message has what the record says, or the record does not say all of it.
    [[nodiscard]] BusPlace find(const MdbRecord& record) const {
        const Key key = {plainNumber(record[mdbfield::kBusNumber]),
                         plainNumber(record[mdbfield::kRemoteTerminalAddress]),
                         plainNumber(record[mdbfield::kSubTerminalAddress])};
        const bool isWhole = std::none_of(key.begin(), key.end(),
                                          [](const std::string& part) { return part.empty(); });
        const auto found = messages_.find(key);
        if (!isWhole || record[mdbfield::kWordNumber].empty() || found == messages_.end()) {
            return {};
        }
        const auto& mode = record[mdbfield::kTransmitReceive];
        for (const auto& message : found->second) {
            if (mode.empty() || message.mode.empty() || mode == message.mode) {
                return message.place;
            }
        }
        return {};
    }

  private:
    using Key = std::array<std::string, 3>;
    struct Message {
        BusPlace place;
        std::string mode;
    };
    std::map<Key, std::vector<Message>> messages_;
};

/// Adds measurements to messages, each name once.
class Additions {
  public:
    Additions(DatabaseWork& work, UserInterface* parent, BusDefinition& definition,
              const MeasurementNames* names)
        : work_(work), parent_(parent), definition_(definition), names_(names) {}

    [[nodiscard]] bool isThere(const BusPlace& message, const std::string& name) {
        auto& known = known_[message];
        if (!known) {
            known.emplace();
            for (const auto& row : rowsOf(*busRowAt(definition_, message), BusLevel::Measurement)) {
                known->insert(lowerAscii(busValue(row, BusLevel::Measurement, "MN")));
            }
        }
        return known->contains(lowerAscii(name));
    }
    /// The number of another stream that has the name.
    [[nodiscard]] std::optional<int> otherStream(const std::string& name) {
        return names_ != nullptr && names_->checking() ? names_->otherStream(name, ownStream())
                                                       : std::nullopt;
    }
    /// False if the conversion could not be made.
    bool add(const BusPlace& message, const MdbRecord& record, BusAdditions& result) {
        if (!work_.conversions.locateDefinition(record.name()).found) {
            if (!addDatabaseConversion(work_, parent_, record)) {
                return false;
            }
            ++result.newDefinitions;
        }
        rowsOf(*busRowAt(definition_, message), BusLevel::Measurement)
            .push_back(busMeasurementOf(record, definition_.edition));
        known_[message]->insert(lowerAscii(record.name()));
        result.added.push_back(record.name());
        return true;
    }

  private:
    [[nodiscard]] int ownStream() {
        if (!stream_) {
            std::vector<std::string> links;
            (void)gatherDataLinks(work_.context, parent_, links);
            const auto found = std::find(links.begin(), links.end(), definition_.link);
            stream_ = found == links.end() ? 0 : static_cast<int>(found - links.begin()) + 1;
        }
        return *stream_;
    }

    DatabaseWork& work_;
    UserInterface* parent_;
    BusDefinition& definition_;
    const MeasurementNames* names_;
    std::map<BusPlace, std::optional<std::unordered_set<std::string>>> known_;
    std::optional<int> stream_;
};

bool addAll(DatabaseWork& work, UserInterface* parent, BusDefinition& definition,
            const MeasurementNames* names, BusAdditions& result) {
    const MessageIndex messages(definition);
    Additions additions(work, parent, definition, names);
    ConversionStore::Batch batch(work.conversions);
    bool good = true;
    auto record = work.database.first();
    for (std::size_t number = 0; record && good; ++number, record = work.database.next()) {
        if (number % kPollEvery == 0) {
            setProgressText(parent, formatPrintf("Updating Measurements #%d", number + 1));
            yieldToInterface(parent);
            result.cancelled = cancelRequested(parent);
            if (result.cancelled) {
                break;
            }
        }
        const auto message = messages.find(*record);
        if (message.empty() || additions.isThere(message, record->name())) {
            continue;
        }
        if (const auto other = additions.otherStream(record->name())) {
            work.context.messages.log(parent, 455, title::kError, record->name(),
                                      std::to_string(*other));
            continue;
        }
        good = additions.add(message, *record, result);
    }
    return batch.write(parent) && good;
}

}  // namespace

GroupRow busMeasurementOf(const MdbRecord& record, int edition) {
    constexpr int kTypes = 2007;
    GroupRow row;
    const auto set = [&row](std::string_view stem, std::string_view value) {
        setBusValue(row, BusLevel::Measurement, stem, value);
    };
    set("MN", record.name());
    if (edition >= kTypes) {
        set("MT", "D");
    }
    const auto& parity = record[mdbfield::kParity];
    if (isKnownValue(BusLevel::Measurement, "MN1", parity)) {
        set("MN1", parity);
    }
    const auto& order = record[mdbfield::kParityTransferOrder];
    if (isKnownValue(BusLevel::Measurement, "MN2", order)) {
        set("MN2", order);
    }
    auto& location = rowsOf(row, BusLevel::Location).emplace_back();
    const auto& mask = record[mdbfield::kMask];
    setBusValue(location, BusLevel::Location, "MWN", record[mdbfield::kWordNumber]);
    setBusValue(location, BusLevel::Location, "MBM", mask.empty() ? "FW" : mask);
    setBusValue(location, BusLevel::Location, "MTO",
                busTransferOrder(record[mdbfield::kTransferOrder]));
    setBusValue(location, BusLevel::Location, "MFP", "1");
    return row;
}

BusAdditions addBusMeasurements(DatabaseWork& work, UserInterface* parent,
                                BusDefinition& definition, const MeasurementNames* names) {
    const auto& messages = work.context.messages;
    BusAdditions result;
    if (work.database.version() == MdbVersion::Basic) {
        messages.show(parent, 417, title::kNote, kErrorBox);
        return result;
    }
    if (messages.show(parent, -418, title::kNote, kYesNoBox) != Button::Yes) {
        return result;
    }
    const auto before = definition.group;
    {
        const ProgressScope progress(parent, ProgressMode::WithCancel);
        result.done = inTransaction(work.context, parent, std::string(kAddOperation), [&] {
            return addAll(work, parent, definition, names, result);
        });
    }
    if (!result.done) {
        definition.group = before;
        return {};
    }
    messages.showLog(parent, work.context.document.path);
    messages.show(parent, -415, title::kNote, kNoteBox, work.database.path(), result.added.size(),
                  "added", result.newDefinitions);
    return result;
}

bool addBusMeasurement(DatabaseWork& work, UserInterface* parent, BusDefinition& definition,
                       const BusPlace& message, const MdbRecord& record,
                       const MeasurementNames* names) {
    Additions additions(work, parent, definition, names);
    if (additions.isThere(message, record.name())) {
        showBox(parent, formatPrintf("The message has a measurement '%s' already.", record.name()),
                kAddTitle);
        return false;
    }
    if (const auto other = additions.otherStream(record.name())) {
        work.context.messages.show(parent, 455, title::kError, kErrorBox, record.name(),
                                   std::to_string(*other));
        return false;
    }
    BusAdditions result;
    return inTransaction(work.context, parent, std::string(kAddOperation),
                         [&] { return additions.add(message, record, result); });
}

}  // namespace kavu
