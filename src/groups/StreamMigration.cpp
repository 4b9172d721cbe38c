#include "groups/StreamMigration.h"

#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "core/document/GroupFiles.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "groups/GroupScan.h"
#include "vocabulary/DGroupFields.h"
#include "vocabulary/LocationTypes.h"
#include "vocabulary/PGroupFields.h"
#include "vocabulary/PSubframeFields.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <utility>

namespace kavu {

namespace {

constexpr std::string_view kWordFrame = location_type::kWordFrame;

bool isOlderLocation(std::string_view type) {
    return !type.empty() && !equalsIgnoreCase(type, kWordFrame) &&
           !equalsIgnoreCase(type, kTaggedType);
}

/// A range as a D group states it; what is missing has no value.
struct WrittenRange {
    std::optional<int> start;
    int interval = 0;
    std::optional<int> end;
};

/// The same range as it is read with its end, and as it is read without one.
struct ReadRange {
    int start = 0;
    int interval = 0;
    int end = 0;
    [[nodiscard]] int last() const {
        return interval < 1 ? start : start + (end - start) / interval * interval;
    }
    [[nodiscard]] std::string text(const char* what) const {
        return interval < 1 || last() == start
                   ? formatPrintf("%s %d", what, start)
                   : formatPrintf("%ss %d to %d by %d", what, start, last(), interval);
    }
};

ReadRange readWithEnd(const WrittenRange& range, int last) {
    const int start = range.start.value_or(0);
    const int open = range.interval > 0 ? last : start;
    const int end = range.end.value_or(open);
    return {start, range.interval, std::max(start, end < 0 ? last : std::min(end, last))};
}
ReadRange readWithoutEnd(const WrittenRange& range, int last) {
    const int start = range.start.value_or(0);
    return {start, range.interval, std::max(start, range.interval > 0 ? last : start)};
}

/// The ranges of the measurements of one D group.
class RangeScan {
  public:
    void take(std::string_view field, std::string_view value, const CommandIndices& indices) {
        const Place place{indices.fields[0], indices.fields[1]};
        if (isOfPattern(field, measurement_field::kName.code)) {
            measurements_[place].name = value;
        } else if (isOfPattern(field, measurement_field::kLocationType.code)) {
            measurements_[place].isWordFrame = equalsIgnoreCase(value, kWordFrame);
        } else if (isOfPattern(field, measurement_field::kDataLink.code)) {
            link_ = value;
        } else if (auto* const range = rangeOf(field, indices)) {
            const int number = leadingInt(value);
            if (isOfPattern(field, word_frame_field::kWord.code) ||
                isOfPattern(field, word_frame_field::kFrame.code)) {
                range->start = number;
            } else if (isOfPattern(field, word_frame_field::kEndWord.code) ||
                       isOfPattern(field, word_frame_field::kEndFrame.code)) {
                range->end = number;
            } else {
                range->interval = std::max(0, number);
            }
        }
    }
    [[nodiscard]] const std::string& link() const { return link_; }

    /// A line for every measurement with word/frame locations.
    void addWordFrames(std::vector<std::string>& lines) const {
        for (const auto& [place, measurement] : measurements_) {
            if (measurement.isWordFrame) {
                lines.push_back(
                    formatPrintf("Stream '%s', measurement '%s': its word/frame locations are "
                                 "not understood",
                                 link_, measurement.name));
            }
        }
    }
    /// A line for every measurement whose ranges become others, in a frame of this size.
    void addChangedRanges(std::vector<std::string>& lines, int lastWord, int lastFrame) const {
        for (const auto& [place, measurement] : measurements_) {
            std::string changes;
            for (const auto& [at, fragment] : measurement.fragments) {
                addChange(changes, fragment.words, lastWord, "word");
                addChange(changes, fragment.frames, lastFrame, "frame");
            }
            if (measurement.isWordFrame && !changes.empty()) {
                lines.push_back(formatPrintf("Stream '%s', measurement '%s': %s", link_,
                                             measurement.name, changes));
            }
        }
    }

  private:
    using Place = std::pair<int, int>;
    struct Fragment {
        WrittenRange words;
        WrittenRange frames;
    };
    struct Scanned {
        std::string name;
        bool isWordFrame = false;
        std::map<Place, Fragment> fragments;
    };

    WrittenRange* rangeOf(std::string_view field, const CommandIndices& indices) {
        const auto isAnyOf = [field](std::initializer_list<std::string_view> codes) {
            return std::any_of(codes.begin(), codes.end(),
                               [field](std::string_view code) { return isOfPattern(field, code); });
        };
        namespace w = word_frame_field;
        const bool words = isAnyOf({w::kWord.code, w::kWordInterval.code, w::kEndWord.code});
        if (!words && !isAnyOf({w::kFrame.code, w::kFrameInterval.code, w::kEndFrame.code})) {
            return nullptr;
        }
        auto& fragment = measurements_[{indices.fields[0], indices.fields[1]}]
                             .fragments[{indices.fields[2], indices.fields[3]}];
        return words ? &fragment.words : &fragment.frames;
    }

    static void addChange(std::string& changes, const WrittenRange& range, int last,
                          const char* what) {
        if (!range.start || !range.end) {
            return;
        }
        const auto now = readWithEnd(range, last);
        const auto then = readWithoutEnd(range, last);
        if (now.last() != then.last()) {
            changes +=
                (changes.empty() ? "" : ", ") + now.text(what) + " become " + then.text(what);
        }
    }

    std::string link_;
    std::map<Place, Scanned> measurements_;
};

/// The last word and the last frame of each link, by its first P group.
struct FrameSize {
    int lastWord = 0;
    int lastFrame = 1;
};

template <typename Visit>
void forEachIndex(IoStatus& status, const Visit& visit) {
    for (int index = kLeastGroupIndex; status.ok() && index <= kMostGroupIndex; ++index) {
        visit(index);
        if (isMissing(status)) {
            status = {};
        }
    }
}

std::map<std::string, FrameSize> readSizes(DocumentContext& context, IoStatus& status) {
    std::map<std::string, FrameSize> sizes;
    forEachIndex(status, [&](int index) {
        std::string link;
        FrameSize size;
        status = forEachCommand(context.reader, context.store.pathOf(groupFile('P', index)),
                                [&](const std::string& command) {
                                    const auto view = viewCommand(command);
                                    if (isOfPattern(view.field, p::kDln.code)) {
                                        link = view.value;
                                    } else if (isOfPattern(view.field, p::kMf1.code)) {
                                        size.lastWord = leadingInt(view.value) - 1;
                                    } else if (isOfPattern(view.field, p::kMfN.code)) {
                                        size.lastFrame = std::max(1, leadingInt(view.value));
                                    }
                                    return true;
                                });
        if (status.ok()) {
            sizes.try_emplace(link, size);
        }
    });
    return sizes;
}

}  // namespace

std::map<int, OlderStream> readOlderStreams(DocumentContext& context, IoStatus& status) {
    std::map<int, OlderStream> streams;
    forEachIndex(status, [&](int index) {
        OlderStream stream;
        status = forEachCommand(context.reader, context.store.pathOf(groupFile('P', index)),
                                [&](const std::string& command) {
                                    const auto view = viewCommand(command);
                                    if (isOfPattern(view.field, p::kDln.code)) {
                                        stream.link = view.value;
                                    } else if (isOfPattern(view.field, p::kTf.code)) {
                                        stream.type = view.value;
                                    } else if (isOfPattern(view.field, p::kSfN.code)) {
                                        stream.hasSubframes =
                                            stream.hasSubframes || leadingInteger(view.value) > 0;
                                    }
                                    return true;
                                });
        if (status.ok()) {
            streams.emplace(index, stream);
        }
    });
    std::map<std::string, int> measurements;
    forEachIndex(status, [&](int index) {
        std::string link;
        int older = 0;
        status = forEachCommand(
            context.reader, context.store.pathOf(groupFile('D', index)),
            [&](const std::string& command) {
                const auto view = viewCommand(command);
                if (isOfPattern(view.field, measurement_field::kDataLink.code)) {
                    link = view.value;
                } else if (isOfPattern(view.field, measurement_field::kLocationType.code)) {
                    older += isOlderLocation(view.value) ? 1 : 0;
                }
                return true;
            });
        measurements[link] += older;
    });
    for (auto& [index, stream] : streams) {
        const auto found = measurements.find(stream.link);
        stream.measurements = found == measurements.end() ? 0 : found->second;
    }
    return streams;
}

std::string unconvertedLine(const OlderStream& stream, int pIndex) {
    return formatPrintf(
        "Stream '%s' (P-%d, type '%s') was not converted: %d of its measurements "
        "have no word/frame locations",
        stream.link, pIndex, stream.type, stream.measurements);
}

std::vector<std::string> rangesLeftOut(DocumentContext& context, int input, int target,
                                       IoStatus& status) {
    std::vector<std::string> lines;
    const bool losesAll =
        input >= word_frame_field::kFirstEdition && target < word_frame_field::kFirstEdition;
    const bool losesEnds =
        input >= word_frame_field::kFirstEnds && target < word_frame_field::kFirstEnds;
    if (!losesAll && !losesEnds) {
        return lines;
    }
    const auto sizes = readSizes(context, status);
    forEachIndex(status, [&](int index) {
        RangeScan scan;
        status = forEachCommand(context.reader, context.store.pathOf(groupFile('D', index)),
                                [&](const std::string& command) {
                                    const auto view = viewCommand(command);
                                    scan.take(view.field, view.value, parseCommandIndices(command));
                                    return true;
                                });
        if (!status.ok()) {
            return;
        }
        if (losesAll) {
            scan.addWordFrames(lines);
            return;
        }
        const auto size = sizes.find(scan.link());
        const auto frame = size == sizes.end() ? FrameSize{} : size->second;
        scan.addChangedRanges(lines, frame.lastWord, frame.lastFrame);
    });
    return lines;
}

}  // namespace kavu
