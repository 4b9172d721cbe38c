#include "bus/definition/BusText.h"

#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr std::size_t kEntryWidth = 1;
constexpr std::size_t kWordWidth = 4;

struct CutField {
    std::string_view stem;
    std::size_t width;
};
/// What is cut when it is written: a command word has four digits and a kind of one letter.
constexpr auto kCutFields = std::to_array<CutField>({
    {"CWE", kEntryWidth},
    {"CMD", kWordWidth},
    {"RCWE", kEntryWidth},
    {"RCMD", kWordWidth},
});

bool isArincField(std::string_view code) {
    return code == "LBL-n-m" || code == "SDI-n-m";
}

class Writing {
  public:
    Writing(const BusDefinition& definition, UserInterface* parent, const BusCommandSink& write,
            const BusCommandSink& omit)
        : definition_(definition), parent_(parent), write_(write), omit_(omit) {}

    void all() {
        const auto& group = definition_.group;
        const auto& fields = busFields(BusLevel::Group);
        // The comment is the last command of the file, all others are the first.
        for (const auto& field : fields.first(fields.size() - 1)) {
            if (field.code == "DLN") {
                put(field, {}, definition_.link);
            } else if (field.code == "BP") {
                put(field, {}, parity(field));
            } else {
                put(field, {}, group.value(field.code));
            }
        }
        const auto& buses = definition_.buses();
        putCount(kBusCount, {}, buses.size());
        for (std::size_t b = 1; b <= buses.size(); ++b) {
            bus(buses[b - 1], b, buses.size());
        }
        put(fields.back(), {}, group.value(fields.back().code));
    }

  private:
    /// The list of the form takes the first entry that begins with a value.
    [[nodiscard]] std::string parity(const Field& field) const {
        const auto value = definition_.group.value(field.code);
        const int entry = choiceIndex(field.choices, value);
        return entry < 0 ? std::string(value)
                         : std::string(field.choices[static_cast<std::size_t>(entry)].value);
    }

    void bus(const GroupRow& row, std::size_t number, std::size_t most) {
        const auto at = RowNumbers{number};
        const bool isArinc = isArincBus(row, definition_.edition);
        putAll(BusLevel::Bus, row, at);
        setStatusText(
            parent_, formatPrintf("Saving Bus Information. Bus: #%d (%s)", static_cast<int>(number),
                                  std::string(busValue(row, BusLevel::Bus, "BNA"))));
        setProgressBar(parent_, 100.0 * static_cast<double>(number) / static_cast<double>(most));
        rows(row, BusLevel::Track, at, [](const GroupRow&, const RowNumbers&) {});
        rows(
            row, BusLevel::Message, at,
            [&](const GroupRow& message, const RowNumbers& place) { afterMessage(message, place); },
            isArinc);
    }

    void afterMessage(const GroupRow& row, const RowNumbers& at) {
        rows(row, BusLevel::Measurement, at, [&](const GroupRow& each, const RowNumbers& place) {
            rows(each, BusLevel::Location, place, [](const GroupRow&, const RowNumbers&) {});
        });
    }

    template <typename Inside>
    void rows(const GroupRow& owner, BusLevel level, const RowNumbers& at, const Inside& inside,
              bool isArinc = false) {
        const auto& all = rowsOf(owner, level);
        putCount(countOfLevel(level), at, all.size());
        for (std::size_t i = 1; i <= all.size(); ++i) {
            const auto place = at.row(i);
            putAll(level, all[i - 1], place, isArinc);
            inside(all[i - 1], place);
        }
    }

    void putAll(BusLevel level, const GroupRow& row, const RowNumbers& at, bool isArinc = false) {
        for (const auto& field : busFields(level)) {
            if (level == BusLevel::Message && field.code == "MCD-n-m") {
                receiveCommands(row, at);
            }
            if (isArincField(field.code) && !isArinc) {
                pass(field, at, row.value(field.code), omit_);
            } else {
                put(field, at, row.value(field.code));
            }
        }
    }

    void receiveCommands(const GroupRow& message, const RowNumbers& at) {
        const auto& all = rowsOf(message, BusLevel::Receive);
        if (definition_.edition < kOneReceiveEdition) {
            putCount(kReceiveCount, at, all.size());
        }
        const bool isSingle = definition_.edition >= kSingleReceiveEdition;
        for (std::size_t r = 1; r <= all.size(); ++r) {
            for (const auto& field : busFields(BusLevel::Receive)) {
                auto single = field;
                single.code.remove_suffix(isSingle ? std::string_view("-r").size() : 0);
                put(single, isSingle ? at : at.row(r), all[r - 1].value(field.code));
            }
        }
    }

    void putCount(std::string_view code, const RowNumbers& at, std::size_t rows) {
        code_.clear();
        appendField(code_, code, at.at);
        write_(code_, std::to_string(rows));
    }
    void put(const Field& field, const RowNumbers& at, std::string_view value) {
        if (isKnownIn(definition_.edition, field)) {
            pass(field, at, value, write_);
        }
    }
    void pass(const Field& field, const RowNumbers& at, std::string_view value,
              const BusCommandSink& sink) {
        value = trimTrailingBlanks(value);
        const auto stem = stemOf(field.code);
        for (const auto& cut : kCutFields) {
            if (cut.stem == stem) {
                value = value.substr(0, cut.width);
            }
        }
        if (value.empty()) {
            return;
        }
        code_.clear();
        appendField(code_, field.code, at.at);
        if (holdsLineBreak(value)) {
            std::string stored(value);
            toStoredForm(stored);
            sink(code_, stored);
        } else {
            sink(code_, value);
        }
    }

    const BusDefinition& definition_;
    UserInterface* parent_;
    const BusCommandSink& write_;
    const BusCommandSink& omit_;
    std::string code_{};
};

}  // namespace

void eachBusCommand(const BusDefinition& definition, UserInterface* parent,
                    const BusCommandSink& write, const BusCommandSink& omit) {
    Writing(definition, parent, write, omit).all();
}

BusText busText(const BusDefinition& definition, UserInterface* parent) {
    BusText result;
    const auto prefix = groupHead('B', definition.index);
    eachBusCommand(
        definition, parent,
        [&](std::string_view code, std::string_view value) {
            result.text.append(prefix).append(code).append(":").append(value).append(";\r\n");
        },
        [&](std::string_view code, std::string_view value) {
            result.omitted.push_back(
                std::string(prefix).append(code).append(":").append(value).append(";"));
        });
    return result;
}

}  // namespace kavu
