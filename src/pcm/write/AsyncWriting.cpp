#include "pcm/write/AsyncWriting.h"

#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/talk/Messages.h"
#include "pcm/PcmFormat.h"
#include "pcm/model/AsyncCodes.h"
#include "pcm/structure/AsyncEdit.h"
#include "vocabulary/SubframeCodes.h"

namespace kavu {

namespace {

/// Writes the records of one kind, numbered from 1.
class AsyncWriter {
  public:
    AsyncWriter(const PcmFormat& format, UserInterface* parent, FileWriter& writer,
                const std::string& prefix, const AsyncCodes& codes)
        : format_(format), parent_(parent), writer_(writer), prefix_(prefix), codes_(codes) {}

    void write() {
        int count = 0;
        for (const auto& record : format_.asyncFormats) {
            count += record.isDataMerge == codes_.isDataMerge ? 1 : 0;
        }
        number(codes_.count, count, {});
        if (count == 0) {
            return;
        }
        const auto places = asyncPlaces(format_);
        for (std::size_t i = 0; i < places.size(); ++i) {
            if (format_.asyncFormats[i].isDataMerge == codes_.isDataMerge) {
                ++n_;
                writeRecord(format_.asyncFormats[i], places[i]);
            }
        }
    }

  private:
    void text(const Field& field, std::string_view value, std::initializer_list<int> numbers) {
        writeCommand(writer_, prefix_, fieldCode(field.code, numbers), value);
    }
    void number(const Field& field, int value, std::initializer_list<int> numbers) {
        writeIntCommand(writer_, prefix_, fieldCode(field.code, numbers), value);
    }
    template <typename... Args>
    void complain(MessageFor<Args...> id, const Args&... args) {
        format_.context().messages.show(parent_, id, title::kUnableToSaveAsync, kErrorBox, args...);
    }

    void writeRecord(const AsyncFormat& record, const std::vector<AsyncPlace>& places) {
        text(codes_.name, record.dataLinkName, {n_});
        if (codes_.isDataMerge) {
            writeMergeFields(record, kMergeTexts);
        }
        text(codes_.supercom, record.supercom, {n_});
        if (!(record.supercom == kNotSupercommutated)) {
            text(codes_.mode, record.locationMode, {n_});
        }
        const auto located = locate(record, places);
        if (codes_.isDataMerge) {
            writeMerge(record, located);
        } else {
            writeEmbedded(record, located);
        }
    }

    /// The place of each location that could be found, with its number.
    struct Located {
        int k;
        const AsyncPlace* place;
    };

    std::vector<Located> locate(const AsyncFormat& record, const std::vector<AsyncPlace>& places) {
        if (places.empty()) {
            complain(234, record.dataLinkName.view());
            return {};
        }
        std::vector<Located> located{{1, places.data()}};
        const int count = record.supercom.number();
        if (record.locationMode == kEveryLocation) {
            for (int k = 2; k <= count; ++k) {
                // All after the last place are missing as well.
                if (static_cast<std::size_t>(k) > places.size()) {
                    complain(235, k, count, record.dataLinkName.view());
                    break;
                }
                located.push_back({k, &places[static_cast<std::size_t>(k - 1)]});
            }
        } else if (record.locationMode == kFirstAndInterval) {
            locateSteps(record, places, located);
        }
        return located;
    }

    void locateSteps(const AsyncFormat& record, const std::vector<AsyncPlace>& places,
                     std::vector<Located>& located) {
        const int count = record.supercom.number();
        bool complained = false;
        for (int k = 2; k <= count; ++k) {
            const auto word = places.front().fwp + std::int64_t{k - 1} * record.interval;
            const auto place = std::find_if(places.begin(), places.end(),
                                            [&](const AsyncPlace& p) { return p.fwp == word; });
            if (place != places.end()) {
                located.push_back({k, &*place});
            } else if (!complained) {
                complain(236, word, record.interval, count, record.dataLinkName.view());
                complained = true;
            }
        }
    }

    void writeEmbedded(const AsyncFormat& record, const std::vector<Located>& located) {
        for (const auto& [k, place] : located) {
            if (k == 1 || record.locationMode == kEveryLocation) {
                number(codes_.location, place->fwp, {n_, k});
            }
            if (k == 1) {
                writeInterval(record);
            }
            const auto mask = embeddedMask(*place);
            number(codes_.length, static_cast<int>(mask.size()), {n_, k});
            text(codes_.mask, mask, {n_, k});
            writeRanges(*place, k);
        }
    }

    /// A file has these masks only in binary.
    std::string embeddedMask(const AsyncPlace& place) const {
        if (!place.mask.empty() && place.mask.find_first_not_of("01") == std::string::npos) {
            return place.mask;
        }
        const int length = std::clamp(format_.wordLength(place.fwp), 0, 64);
        return std::string(static_cast<std::size_t>(length), '1');
    }

    void writeMerge(const AsyncFormat& record, const std::vector<Located>& located) {
        for (const auto& [k, place] : located) {
            if (k == 1 || record.locationMode == kEveryLocation) {
                number(codes_.location, place->fwp, {n_, k});
            }
        }
        writeInterval(record);
        writeMergeFields(record, kMergeValues);
        for (const auto& [k, place] : located) {
            writeRanges(*place, k);
        }
    }

    void writeMergeFields(const AsyncFormat& record, std::span<const MergeField> fields) {
        for (const auto& row : fields) {
            if (row.number != nullptr) {
                number(row.field, record.*row.number, {n_});
            } else {
                text(row.field, record.*row.text, {n_});
            }
        }
    }

    void writeInterval(const AsyncFormat& record) {
        if (record.locationMode == kFirstAndInterval) {
            number(codes_.interval, record.interval, {n_});
        }
    }

    void writeRanges(const AsyncPlace& place, int k) {
        if (!isKnownIn(format_.edition(), codes_.ranges)) {
            return;
        }
        const FrameRange all{1, 1, format_.numberOfFrames};
        if (place.frames.empty() || place.frames == std::vector{all}) {
            text(codes_.ranges, kNotSupercommutated, {n_, k});
            return;
        }
        number(codes_.ranges, static_cast<int>(place.frames.size()), {n_, k});
        int j = 0;
        for (const auto& range : place.frames) {
            ++j;
            number(codes_.start, range.start, {n_, k, j});
            number(codes_.frameStep, range.interval, {n_, k, j});
            number(codes_.end, range.end, {n_, k, j});
        }
    }

    const PcmFormat& format_;
    UserInterface* parent_;
    FileWriter& writer_;
    const std::string& prefix_;
    const AsyncCodes& codes_;
    int n_ = 0;
};

}  // namespace

void writeAsyncEmbedded(const PcmFormat& format, UserInterface* parent, FileWriter& writer,
                        const std::string& prefix) {
    AsyncWriter(format, parent, writer, prefix, kAsyncEmbeddedCodes).write();
}

void writeDataMerge(const PcmFormat& format, UserInterface* parent, FileWriter& writer,
                    const std::string& prefix) {
    AsyncWriter(format, parent, writer, prefix, kDataMergeCodes).write();
}

}  // namespace kavu
