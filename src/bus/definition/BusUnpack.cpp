#include "bus/definition/BusUnpack.h"

#include "bus/definition/BusKeys.h"
#include "bus/definition/BusText.h"
#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/talk/FileReports.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "groups/GroupScan.h"

#include <unordered_set>

namespace kavu {

namespace {

constexpr std::string_view kProfileSection = "1553";

const Field& countField(BusLevel level) {
    const auto table = busVocabulary();
    return *std::find_if(table.begin(), table.end(),
                         [level](const Field& field) { return field.code == countOfLevel(level); });
}

// --- The terminals ------------------------------------------------------------------------------

/// One of the lists of a bus, while it is gathered. Names and addresses are exact.
class TerminalList {
  public:
    explicit TerminalList(std::vector<Terminal>& terminals) : terminals_(terminals) {}

    void add(std::string_view name, std::string_view address) {
        if (name.empty() && address.empty()) {
            return;
        }
        const auto padded = paddedAddress(address);
        // An empty name is no name: it does not tell two terminals apart.
        if (addresses_.contains(padded) || (!name.empty() && names_.contains(std::string(name)))) {
            return;
        }
        addresses_.insert(padded);
        names_.insert(std::string(name));
        terminals_.push_back({std::string(name), padded});
    }

  private:
    [[nodiscard]] static std::string paddedAddress(std::string_view address) {
        std::string padded(address);
        if (padded.size() < kTerminalAddressWidth) {
            padded.insert(0, kTerminalAddressWidth - padded.size(), '0');
        }
        return padded;
    }

    std::vector<Terminal>& terminals_;
    std::unordered_set<std::string> addresses_;
    std::unordered_set<std::string> names_;
};

/// The terminals of one bus, whether the definition has that bus or not.
BusTerminals gatherTerminals(BusKeys& keys, std::size_t bus, int edition) {
    BusTerminals found;
    TerminalList remote(found.remote);
    TerminalList sub(found.sub);
    const auto messages = keys.rows(countField(BusLevel::Message), {bus});
    for (std::size_t m = 1; m <= messages; ++m) {
        const RowNumbers at = {bus, m};
        remote.add(keys.value("TRN-n-m", at), keys.value("TRA-n-m", at));
        sub.add(keys.value("STN-n-m", at), keys.value("STA-n-m", at));
        if (edition >= kSingleReceiveEdition) {
            remote.add(keys.value("RTRN-n-m", at), keys.value("RTRA-n-m", at));
            sub.add(keys.value("RSTN-n-m", at), keys.value("RSTA-n-m", at));
            continue;
        }
        const auto commands = edition >= kOneReceiveEdition
                                  ? std::size_t{1}
                                  : keys.rows(countField(BusLevel::Receive), at);
        for (std::size_t r = 1; r <= commands; ++r) {
            const auto place = at.row(r);
            remote.add(keys.value("RTRN-n-m-r", place), keys.value("RTRA-n-m-r", place));
            sub.add(keys.value("RSTN-n-m-r", place), keys.value("RSTA-n-m-r", place));
        }
    }
    return found;
}

void appendTerminals(std::string& text, std::string_view kind, const std::vector<Terminal>& list) {
    for (std::size_t i = 1; i <= list.size(); ++i) {
        const auto number = std::to_string(i);
        const auto& [name, address] = list[i - 1];
        text.append(kind).append("N").append(number).append("=").append(name).append("\r\n");
        text.append(kind).append("A").append(number).append("=").append(address).append("\r\n");
    }
}

/// Gathers the lists of the first buses, and gives them as the text of their profile file.
std::string listTerminals(BusKeys& keys, UserInterface* parent, BusDefinition& definition) {
    std::string text;
    definition.terminals.clear();
    for (std::size_t bus = 1; bus <= kMostTerminalBuses; ++bus) {
        setStatusText(parent, "Initializing 1553 Info. Initalizing Remote/Sub Terminal Addresses");
        setProgressBar(parent,
                       100.0 * static_cast<double>(bus) / static_cast<double>(kMostTerminalBuses));
        const auto& found =
            definition.terminals.emplace_back(gatherTerminals(keys, bus, definition.edition));
        if (found == BusTerminals()) {
            continue;
        }
        text.append("[").append(std::to_string(bus)).append("]\r\n");
        appendTerminals(text, "RT", found.remote);
        appendTerminals(text, "ST", found.sub);
    }
    definition.terminals.resize(std::max(kMostTerminalBuses, definition.buses().size()));
    return text;
}

// --- The rows -----------------------------------------------------------------------------------

class BusRowReader {
  public:
    BusRowReader(BusKeys& keys, int edition) : keys_(keys), edition_(edition) {
        for (const auto level :
             {BusLevel::Group, BusLevel::Bus, BusLevel::Message, BusLevel::Measurement,
              BusLevel::Location, BusLevel::Track, BusLevel::Receive}) {
            for (const auto& field : busFields(level)) {
                if (isKnownIn(edition, field)) {
                    fields_[static_cast<std::size_t>(level)].push_back(&field);
                }
            }
        }
    }

    void group(GroupRow& row) {
        values(BusLevel::Group, row, {});
        rows(row, BusLevel::Bus, {}, [&](GroupRow& bus, const RowNumbers& at) {
            rows(bus, BusLevel::Track, at, [](GroupRow&, const RowNumbers&) {});
            rows(bus, BusLevel::Message, at,
                 [&](GroupRow& message, const RowNumbers& place) { inMessage(message, place); });
        });
    }

  private:
    void inMessage(GroupRow& message, const RowNumbers& at) {
        if (edition_ < kOneReceiveEdition) {
            rows(message, BusLevel::Receive, at, [](GroupRow&, const RowNumbers&) {});
        } else {
            auto& command = receiveOf(message);
            command.fileRow = 1;
            message.fileRows[std::string(kReceiveCount)].insert(1);
            const bool isSingle = edition_ >= kSingleReceiveEdition;
            for (const auto* const field : fields_[static_cast<std::size_t>(BusLevel::Receive)]) {
                auto code = field->code;
                code.remove_suffix(isSingle ? std::string_view("-r").size() : 0);
                command.set(field->code, keys_.value(code, isSingle ? at : at.row(1)));
            }
        }
        rows(message, BusLevel::Measurement, at, [&](GroupRow& each, const RowNumbers& place) {
            rows(each, BusLevel::Location, place, [](GroupRow&, const RowNumbers&) {});
        });
    }

    template <typename Inside>
    void rows(GroupRow& owner, BusLevel level, const RowNumbers& at, const Inside& inside) {
        const auto count = keys_.rows(countField(level), at);
        if (count == 0) {
            return;
        }
        auto& all = rowsOf(owner, level);
        all.resize(count);
        auto& read = owner.fileRows[std::string(countOfLevel(level))];
        for (std::size_t i = 1; i <= count; ++i) {
            auto& row = all[i - 1];
            row.fileRow = i;
            read.insert(read.end(), i);
            const auto place = at.row(i);
            values(level, row, place);
            inside(row, place);
        }
    }

    void values(BusLevel level, GroupRow& row, const RowNumbers& at) {
        for (const auto* const field : fields_[static_cast<std::size_t>(level)]) {
            const auto value = keys_.value(field->code, at);
            if (!value.empty()) {
                row.values.emplace(field->code, value);
            }
        }
    }

    BusKeys& keys_;
    int edition_;
    std::array<std::vector<const Field*>, 7> fields_{};
};

// --- The whole ----------------------------------------------------------------------------------

/// Adds all commands; false if the user has cancelled.
bool addCommands(UserInterface* parent, const GroupFile& file, BusKeys& keys) {
    const auto& commands = file.commands();
    for (std::size_t place = 0; place < commands.size(); ++place) {
        if (place % kPollEvery == 0) {
            setStatusText(parent,
                          formatPrintf("Initializing Bus Info. Parsing TMATS file line #%d.",
                                       static_cast<int>(place + 1)));
            setProgressBar(
                parent, 100.0 * static_cast<double>(place) / static_cast<double>(commands.size()));
            yieldToInterface(parent);
            if (cancelRequested(parent)) {
                return false;
            }
        }
        keys.add(place);
    }
    return true;
}

/// Marks what the definition would write again as read: everything else would be dropped.
void markRead(BusDefinition& definition, const BusKeys& keys) {
    auto& commands = definition.kept.commands();
    eachBusCommand(
        definition, nullptr,
        [&](std::string_view code, std::string_view) {
            if (const auto place = keys.placeOf(code)) {
                commands.markRead(*place);
            }
        },
        [](std::string_view, std::string_view) {});
    // The first name of the link is the one by which the group is found.
    if (const auto name = commands.peek(groupHead('B', definition.index) + "DLN")) {
        if (const auto last = keys.placeOf("DLN")) {
            commands.markRead(*last, false);
        }
        commands.markRead(name->place);
    }
}

bool writeProfile(DocumentContext& context, UserInterface* parent, std::string_view name,
                  const std::string& text) {
    const auto status = context.files.put(name, text);
    if (!status.ok()) {
        reportUnableToWrite(parent, status);
    }
    return status.ok();
}

}  // namespace

bool unpackBusGroup(DocumentContext& context, UserInterface* parent, BusDefinition& definition) {
    definition.edition = context.document.version;
    definition.group = {};
    definition.terminals.assign(kMostTerminalBuses, {});
    setStatusText(parent, "Initializing Bus Information...");
    // The profile files are no part of the document.
    const ChangeScope scope(context.files);
    discardBusProfiles(context);
    const auto status = GroupFile::openNamed(context.files, context.reader,
                                             std::string(kBusGroupFile), definition.kept);
    if (isMissing(status)) {
        return true;
    }
    if (!status.ok()) {
        reportUnableToRead(parent, status);
        return false;
    }
    BusKeys keys(definition.kept, groupHead('B', definition.index));
    if (!addCommands(parent, definition.kept, keys)) {
        discardBusProfiles(context);
        return false;
    }
    BusRowReader(keys, definition.edition).group(definition.group);
    if (!writeProfile(context, parent, kBusProfile, keys.profileText(kProfileSection)) ||
        !writeProfile(context, parent, kTerminalProfile, listTerminals(keys, parent, definition))) {
        discardBusProfiles(context);
        return false;
    }
    markRead(definition, keys);
    setProgressBar(parent, -1);
    setStatusText(parent, "Edit Bus Definition.");
    return true;
}

void discardBusProfiles(DocumentContext& context) {
    const ChangeScope scope(context.files);
    // What cannot be deleted goes with the working store.
    (void)context.files.removeIfThere(kBusProfile);
    (void)context.files.removeIfThere(kTerminalProfile);
}

}  // namespace kavu
