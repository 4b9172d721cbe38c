#include "pcm/write/KeptWriting.h"

#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupFiles.h"
#include "core/document/GroupRewrite.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "groups/GroupScan.h"
#include "groups/KeptCommands.h"
#include "pcm/PcmFormat.h"
#include "pcm/structure/PcmFormatEdit.h"
#include "pcm/write/KeptGroup.h"
#include "pcm/write/SubframeWriting.h"
#include "vocabulary/DGroupFields.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

namespace kavu {

namespace {

/// The numbers that the rows of the P group have now, by list and by those that they had: only of
/// rows that are still there.
class FormatRows {
  public:
    explicit FormatRows(const PcmFormat& format) {
        for (std::size_t i = 0; i < format.idCounters.size(); ++i) {
            const auto& counter = format.idCounters[i];
            const int n = static_cast<int>(i) + 1;
            if (counter.name.empty()) {
                continue;
            }
            if (counter.fileRow > 0) {
                counters_[counter.fileRow] = n;
            }
            int m = 0;
            for (const int j : writtenSubframes(format, n - 1)) {
                const auto& subframe = counter.subframes[static_cast<std::size_t>(j)];
                subframes_[{subframe.fileCounter, subframe.fileRow}] = {n, ++m};
            }
        }
        int embedded = 0;
        int merges = 0;
        for (const auto& record : format.asyncFormats) {
            auto& rows = record.isDataMerge ? merges_ : embedded_;
            rows[record.fileRow] = record.isDataMerge ? ++merges : ++embedded;
        }
    }

    /// The numbers of a command now; nothing if its row is gone.
    [[nodiscard]] std::optional<RowNumbers> now(const KeptCommand& command) const {
        const auto path = parseField(trimRight(viewCommand(command.text).code));
        if (!path) {
            return RowNumbers();
        }
        RowNumbers at = *path;
        const auto list = innermostList(*path, command.missingRow);
        return !list || renumber(*list, at) ? std::optional(at) : std::nullopt;
    }

  private:
    using SubframeRow = std::pair<int, int>;  ///< the numbers of the counter and the subframe

    /// The list of the innermost row of the model that a command belongs to.
    [[nodiscard]] static std::optional<int> innermostList(const FieldPath& path, int missingRow) {
        std::optional<int> list;
        for (const auto& use : pcmRowRules().usesOf(path.stem)) {
            if (use.depth == missingRow || use.depth >= path.count) {
                break;
            }
            list = use.list <= kMergeRows ? use.list : list;
        }
        return list;
    }

    [[nodiscard]] bool renumber(int list, RowNumbers& at) const {
        const auto take = [&at](const auto& rows) {
            const auto it = rows.find(at.at[0]);
            at.at[0] = it == rows.end() ? 0 : it->second;
            return at.at[0] > 0;
        };
        switch (list) {
            case kCounterRows:
                return take(counters_);
            case kSubframeRows: {
                // The subframe may be one of another counter now.
                const auto it = subframes_.find({at.at[0], at.at[1]});
                if (it != subframes_.end()) {
                    std::tie(at.at[0], at.at[1]) = it->second;
                }
                return it != subframes_.end();
            }
            case kEmbeddedRows:
                return take(embedded_);
            default:
                return take(merges_);
        }
    }

    std::map<int, int> counters_;
    std::map<SubframeRow, SubframeRow> subframes_;
    std::map<int, int> embedded_;
    std::map<int, int> merges_;
};

/// The lists of the D group as they were written.
class WrittenLists {
  public:
    using Name = std::pair<int, std::string>;  ///< of a measurement, by its list, in lower case

    [[nodiscard]] IoStatus read(TmatsReader& reader, const std::string& path,
                                const std::set<std::string>& wanted) {
        return forEachCommand(reader, path, [&](const std::string& text) {
            const auto command = viewCommand(text);
            if (isOfPattern(command.field, measurement_field::kCount.code)) {
                counts_[parseCommandIndices(text).fields[0]] = leadingInt(command.value);
            } else if (isOfPattern(command.field, measurement_field::kName.code)) {
                if (auto name = lowerAscii(command.value); wanted.contains(name)) {
                    const auto indices = parseCommandIndices(text);
                    numbers_.emplace(Name(indices.fields[0], std::move(name)), indices.fields[1]);
                }
            }
            return true;
        });
    }
    /// The number of a measurement in a list; 0 if it is not there.
    [[nodiscard]] int numberOf(int list, std::string_view name) const {
        const auto it = numbers_.find(Name(list, lowerAscii(name)));
        return it == numbers_.end() ? 0 : it->second;
    }
    [[nodiscard]] const std::map<int, int>& counts() const { return counts_; }

  private:
    std::map<int, int> counts_;
    std::map<Name, int> numbers_;
};

/// Gives the commands of the D group their numbers.
class MeasurementRows {
  public:
    MeasurementRows(const PcmFormat& format, KeptGroup& group) : format_(format), group_(group) {
        format.forEachMeasurement([this](CellRef cell, int, int) {
            const auto& measurement = format_.cells().measurement(cell);
            if (measurement.kept > 0) {
                names_.emplace(measurement.kept, lowerAscii(measurement.name.view()));
            }
            return true;
        });
    }

    [[nodiscard]] IoStatus run(const std::string& path) {
        std::set<std::string> wanted;
        for (const auto& [number, name] : names_) {
            wanted.insert(name);
        }
        for (const auto& [place, commands] : format_.kept.ofTagged) {
            wanted.insert(lowerAscii(place.second));
        }
        if (auto status = lists_.read(format_.context().reader, path, wanted); !status.ok()) {
            return status;
        }
        for (const auto& command : format_.kept.ofLists) {
            const auto field = parseField(trimRight(viewCommand(command.text).code));
            group_.add(command, field ? RowNumbers(*field) : RowNumbers());
        }
        addOfMeasurements();
        counts_ = lists_.counts();
        addRows(true);
        addRows(false);
        return {};
    }
    /// The counts of the lists with the rows that are kept in them.
    [[nodiscard]] const std::map<int, int>& counts() const { return counts_; }

  private:
    /// The list of the file for one that it had: the last one for those beyond.
    [[nodiscard]] int listFor(int list) const {
        return std::min(list, format_.measurementListCount);
    }

    void addOfMeasurements() {
        struct Place {
            int number;
            int list;
            const KeptCommand* command;
        };
        std::vector<Place> places;
        const auto take = [&](const KeptCommand& command, std::string_view name) {
            const auto field = parseField(trimRight(viewCommand(command.text).code));
            const int list = listFor(field->at[0]);
            if (const int number = lists_.numberOf(list, name); number > 0) {
                places.push_back({number, list, &command});
            }
        };
        for (const auto& [number, name] : names_) {
            for (const auto& command :
                 format_.kept.ofMeasurements[static_cast<std::size_t>(number) - 1]) {
                take(command, name);
            }
        }
        for (const auto& [place, commands] : format_.kept.ofTagged) {
            for (const auto& command : commands) {
                take(command, place.second);
            }
        }
        // In the order in which the next load finds them.
        std::stable_sort(places.begin(), places.end(), [](const Place& a, const Place& b) {
            return std::pair(a.number, a.list) < std::pair(b.number, b.list);
        });
        for (const auto& place : places) {
            group_.add(*place.command, numbersOf(place.command->text, place.list, place.number));
        }
    }

    static RowNumbers numbersOf(std::string_view text, int list, int number) {
        RowNumbers at = *parseField(trimRight(viewCommand(text).code));
        at.at[0] = list;
        at.at[1] = number;
        return at;
    }

    /// Rows that the count of their list includes come after the measurements, all others after
    /// the count.
    void addRows(bool counted) {
        std::map<int, int> shift;
        for (const auto& row : format_.kept.rows) {
            if (row.isCounted != counted) {
                continue;
            }
            const int list = counted ? listFor(row.list) : row.list;
            int number = row.number;
            if (counted) {
                number = ++counts_[list];
            } else if (counts_.contains(list)) {
                const int behind = std::max(0, counts_[list] + 1 - number);
                number += shift.try_emplace(list, behind).first->second;
            }
            for (const auto& text : row.commands) {
                group_.addText(withNumbers(text, numbersOf(text, list, number)));
            }
        }
    }

    const PcmFormat& format_;
    KeptGroup& group_;
    WrittenLists lists_;
    std::map<int, std::string> names_;  ///< by `Measurement::kept`
    std::map<int, int> counts_;
};

bool hasMeasurements(const PcmFormat& format) {
    return !format.isBusStream && !isPacketStream(format);
}

class StreamKeeping {
  public:
    StreamKeeping(PcmFormat& format, UserInterface* parent)
        : format_(format), parent_(parent), measurementRows_(format, measurements_) {}

    KeptOutcome run() {
        KeptOutcome outcome;
        outcome.status = compare();
        if (!outcome.status.ok()) {
            return outcome;
        }
        std::vector<std::string> lost;
        addTo(lost, 'P', formatGroup_.lost());
        addTo(lost, 'D', measurements_.lost());
        outcome.isDropped = !lost.empty() && !askToKeep(parent_, lost);
        if (!lost.empty() && !outcome.isDropped) {
            outcome.status = append();
        }
        if (outcome.status.ok()) {
            tellReplaced();
        }
        return outcome;
    }

  private:
    [[nodiscard]] std::string pathOf(char letter, int index) const {
        return format_.context().files.path(groupFile(letter, index));
    }
    void addTo(std::vector<std::string>& all, char letter,
               const std::vector<std::string>& texts) const {
        const auto head = groupHead(letter, letter == 'P' ? format_.pGroup : format_.dGroup);
        for (const auto& text : texts) {
            all.push_back(head + text);
        }
    }

    IoStatus compare() {
        const FormatRows rows(format_);
        for (const auto& command : format_.kept.ofFormat) {
            if (const auto numbers = rows.now(command)) {
                formatGroup_.add(command, *numbers);
            }
        }
        auto status =
            formatGroup_.empty() ? IoStatus() : formatGroup_.compare(pathOf('P', format_.pGroup));
        if (!status.ok() || !hasMeasurements(format_)) {
            return status;
        }
        const auto path = pathOf('D', format_.dGroup);
        status = measurementRows_.run(path);
        return status.ok() && !measurements_.empty() ? measurements_.compare(path) : status;
    }

    IoStatus append() {
        auto& context = format_.context();
        std::vector<std::string> lines;
        addTo(lines, 'P', formatGroup_.lost());
        auto status = lines.empty()
                          ? IoStatus()
                          : context.files.append(groupFile('P', format_.pGroup), joined(lines));
        lines.clear();
        addTo(lines, 'D', measurements_.lost());
        if (!status.ok() || lines.empty()) {
            return status;
        }
        const auto& counts = measurementRows_.counts();
        rewriteGroup(
            context.files, context.reader, groupFile('D', format_.dGroup), Cut::Commands,
            [&counts](CommandEdit& edit) {
                const auto command = viewCommand(edit.text());
                if (!isOfPattern(command.field, measurement_field::kCount.code)) {
                    return;
                }
                const auto count = counts.find(parseCommandIndices(edit.text()).fields[0]);
                if (count != counts.end() && count->second != leadingInt(command.value)) {
                    edit.setValue(std::to_string(count->second));
                }
            },
            [&lines](bool) { return joined(lines); }, status);
        return status;
    }

    static std::string joined(const std::vector<std::string>& lines) {
        std::string text;
        for (const auto& line : lines) {
            text.append(line).append("\r\n");
        }
        return text;
    }

    void tellReplaced() const {
        std::vector<std::string> replaced;
        addTo(replaced, 'P', formatGroup_.replaced());
        addTo(replaced, 'D', measurements_.replaced());
        showReplaced(parent_, replaced);
    }

    PcmFormat& format_;
    UserInterface* parent_;
    KeptGroup formatGroup_{format_, pcmRowRules()};
    KeptGroup measurements_{format_, measurementRowRules()};
    MeasurementRows measurementRows_;
};

}  // namespace

KeptOutcome keepBeyondModel(PcmFormat& format, UserInterface* parent) {
    return format.kept.empty() ? KeptOutcome() : StreamKeeping(format, parent).run();
}

void forgetKept(PcmFormat& format) {
    if (hasMeasurements(format)) {
        format.kept = {};
    } else {
        format.kept.ofFormat.clear();  // the D group is not written, and so has all it had
    }
}

}  // namespace kavu
