#include "pcm/structure/AsyncEdit.h"

#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "pcm/PcmFormat.h"

#include <bitset>

namespace kavu {

namespace {

bool isRecord(const PcmFormat& format, int record) {
    return record >= 1 && record <= format.asyncCount();
}

/// Frees one slot. A measurement that shares the cell stays.
void freeSlot(PcmFormat& format, CellRef at) {
    auto& cells = format.cells();
    if (cells.measurement(at).name.empty()) {
        cells.remove(at);
    } else {
        cells.setAsyncNumber(at, 0);
    }
}

/// Calls `visit(cell)` for every cell of the list that begins at `head`; the visitor may
/// remove that cell from the list.
template <typename Visit>
void forEachCell(const PcmFormat& format, CellRef head, const Visit& visit) {
    for (auto at = head; at;) {
        const auto next = format.next(at);
        visit(at);
        at = next;
    }
}

template <typename Visit>
void forEachHead(const PcmFormat& format, const Visit& visit) {
    for (int fwp = 1; fwp < format.wordsPerMinorFrame; ++fwp) {
        for (int index = 1; index <= format.cells().cellCount(fwp); ++index) {
            visit(format.cellAt(fwp, index));
        }
    }
}

/// Removes a record from the list, and its number from the frame: later ones move up.
void dropRecord(PcmFormat& format, int record) {
    format.asyncFormats.erase(format.asyncFormats.begin() + (record - 1));
    forEachHead(format, [&](CellRef head) {
        forEachCell(format, head, [&](CellRef at) {
            const int number = format.cells().asyncNumber(at);
            if (number == record) {
                freeSlot(format, at);
            } else if (number > record) {
                format.cells().setAsyncNumber(at, number - 1);
            }
        });
    });
}

void freeSlotsIn(PcmFormat& format, CellRef head, int record) {
    forEachCell(format, head, [&](CellRef at) {
        if (format.cells().asyncNumber(at) == record) {
            freeSlot(format, at);
        }
    });
}

bool hasSlot(const PcmFormat& format, CellRef head, int record) {
    for (auto at = head; at; at = format.next(at)) {
        const int number = format.cells().asyncNumber(at);
        if (number > 0 && (record == 0 || number == record)) {
            return true;
        }
    }
    return false;
}

/// The frames in which a location has its slots.
std::bitset<kMostFrames + 1> slotFrames(const PcmFormat& format, const AsyncLocation& location) {
    std::bitset<kMostFrames + 1> frames;
    if (format.wordType(location.fwp) != WordType::Subframe) {
        frames.set(1);
        return frames;
    }
    for (const auto& range : location.frames) {
        const int end = std::min(range.end, kMostFrames);
        for (int fn = std::max(1, range.start); fn <= end; fn += range.interval) {
            const int folded = std::clamp(format.foldedFrame(location.fwp, fn), 1, kMostFrames);
            frames.set(static_cast<std::size_t>(folded));
            if (range.interval < 1) {
                break;
            }
        }
    }
    return frames;
}

/// The array cells of a place, -1 being any word or any frame.
template <typename Visit>
void forEachHeadAt(const PcmFormat& format, int fwp, int fn, const Visit& visit) {
    const int first = fwp < 0 ? 1 : fwp;
    const int last = fwp < 0 ? format.wordsPerMinorFrame - 1 : fwp;
    for (int word = first; word <= last; ++word) {
        if (fn >= 0) {
            visit(format.cellAtFrame(word, fn));
            continue;
        }
        for (int index = 1; index <= format.cells().cellCount(word); ++index) {
            visit(format.cellAt(word, index));
        }
    }
}

}  // namespace

void clearAsyncFormat(PcmFormat& format, int record) {
    if (isRecord(format, record)) {
        format.asyncFormats[static_cast<std::size_t>(record - 1)] = {};
    }
}

bool removeAsyncFormat(PcmFormat& format, UserInterface* parent, int record, int fwp, int fn) {
    if (!isRecord(format, record)) {
        format.context().messages.show(parent, 370, title::kInternalError, kErrorBox);
        return false;
    }
    if (fwp < 0 && fn < 0) {
        dropRecord(format, record);
        return true;
    }
    forEachHeadAt(format, fwp, fn, [&](CellRef head) { freeSlotsIn(format, head, record); });
    if (!isAsyncAt(format, -1, -1, record)) {
        dropRecord(format, record);
        return true;
    }
    auto& locations = format.asyncFormats[static_cast<std::size_t>(record - 1)].locations;
    std::erase_if(locations, [&](const AsyncLocation& location) {
        return !isAsyncAt(format, location.fwp, -1, record);
    });
    return true;
}

void freeAsyncSlots(PcmFormat& format, int record) {
    forEachHead(format, [&](CellRef head) { freeSlotsIn(format, head, record); });
}

bool deleteAsyncFormat(PcmFormat& format, UserInterface* parent, int record) {
    if (parent != nullptr && isRecord(format, record) &&
        format.context().messages.show(parent, 137, title::kDeleteAsync, kYesNoBox) !=
            Button::Yes) {
        return false;
    }
    const bool removed = removeAsyncFormat(format, parent, record, -1, -1);
    format.changed = format.changed || removed;
    return removed;
}

bool isAsyncAt(const PcmFormat& format, int fwp, int fn, int record) {
    bool found = false;
    if (format.asyncCount() > 0) {
        forEachHeadAt(format, fwp, fn,
                      [&](CellRef head) { found = found || hasSlot(format, head, record); });
    }
    return found;
}

bool placeAsyncSlots(PcmFormat& format, UserInterface* parent, int record,
                     const AsyncLocation& location, std::string_view mask) {
    Measurement slot;
    slot.mask = mask;
    const auto frames = slotFrames(format, location);
    for (int fn = 1; fn <= kMostFrames; ++fn) {
        if (!frames.test(static_cast<std::size_t>(fn))) {
            continue;
        }
        const auto cell = format.getFreeCell(parent, location.fwp, fn);
        if (!cell) {
            return false;
        }
        format.cells().store(cell, slot, record);
    }
    return true;
}

void asyncFramesChanged(PcmFormat& format, int before) {
    const int now = format.numberOfFrames;
    const std::vector<FrameRange> everyFrame{{1, 1, before}};
    for (auto& record : format.asyncFormats) {
        for (auto& location : record.locations) {
            auto& frames = location.frames;
            const bool every = frames == everyFrame;
            std::erase_if(frames, [now](const FrameRange& range) { return range.start > now; });
            for (auto& range : frames) {
                range.end = every ? now : std::min(range.end, now);
            }
            if (frames.empty()) {
                frames = {{1, 1, now}};
            }
        }
    }
}

std::vector<std::vector<AsyncPlace>> asyncPlaces(const PcmFormat& format) {
    std::vector<std::vector<AsyncPlace>> places(format.asyncFormats.size());
    if (places.empty()) {
        return places;
    }
    forEachHead(format, [&](CellRef head) {
        for (auto at = head; at; at = format.next(at)) {
            const int number = format.cells().asyncNumber(at);
            if (number < 1 || number > format.asyncCount()) {
                continue;
            }
            auto& list = places[static_cast<std::size_t>(number - 1)];
            if (list.empty() || list.back().fwp != head.word) {
                list.push_back({head.word, format.cells().measurement(at).mask.str(), {}});
            }
        }
    });
    for (std::size_t i = 0; i < places.size(); ++i) {
        // Words are moved without their records: where no location names the word, the
        // locations are used in order.
        const auto& locations = format.asyncFormats[i].locations;
        for (std::size_t k = 0; k < places[i].size(); ++k) {
            const auto same = std::find_if(
                locations.begin(), locations.end(),
                [&](const AsyncLocation& location) { return location.fwp == places[i][k].fwp; });
            const auto& location = same != locations.end() ? *same
                                   : k < locations.size()  ? locations[k]
                                                           : AsyncLocation{};
            places[i][k].frames = location.frames;
        }
    }
    return places;
}

}  // namespace kavu
