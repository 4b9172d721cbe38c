// Accepting the dialog of an async format: its checks, and the new slots.
#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/text/Text.h"
#include "pcm/PcmFormat.h"
#include "pcm/model/AsyncCodes.h"
#include "pcm/structure/AsyncEdit.h"
#include "vocabulary/DGroupFields.h"
#include "vocabulary/SubframeCodes.h"

namespace kavu {

namespace {

class AsyncSaver {
  public:
    AsyncSaver(PcmFormat& format, UserInterface* parent, int record, const AsyncFormat& contents,
               const std::vector<AsyncPlace>& places)
        : format_(format), parent_(parent), number_(record), record_(contents), places_(places) {}

    bool save(const std::function<bool(std::string_view)>& linkExists) {
        if (!checkRecord() || !checkName(linkExists) || !checkKind() || !checkPlaces()) {
            return false;
        }
        if (number_ == 0) {
            format_.asyncFormats.emplace_back();
            number_ = format_.asyncCount();
        } else {
            freeAsyncSlots(format_, number_);
        }
        record_.locations.clear();
        format_.changed = true;
        for (const auto& place : places_) {
            AsyncLocation location{place.fwp, place.frames};
            if (!placeAsyncSlots(format_, parent_, number_, location, place.mask)) {
                removeAsyncFormat(format_, nullptr, number_, -1, -1);
                const auto& range = location.frames.front();
                return refuse(197, codes().word, place.fwp, range.start, range.interval, range.end);
            }
            record_.locations.push_back(std::move(location));
        }
        format_.asyncFormats[static_cast<std::size_t>(number_ - 1)] = record_;
        return true;
    }

    /// Stores everything but where the record is.
    bool saveAttributes(const std::function<bool(std::string_view)>& linkExists) {
        if (number_ < 1 || number_ > format_.asyncCount()) {
            return refuse(370);
        }
        if (!checkName(linkExists)) {
            return false;
        }
        auto& stored = format_.asyncFormats[static_cast<std::size_t>(number_ - 1)];
        record_.supercom = stored.supercom;
        record_.locationMode = stored.locationMode;
        record_.interval = stored.interval;
        record_.isDataMerge = stored.isDataMerge;
        record_.locations = stored.locations;
        stored = record_;
        format_.changed = true;
        return true;
    }

  private:
    const AsyncCodes& codes() const {
        return record_.isDataMerge ? kDataMergeCodes : kAsyncEmbeddedCodes;
    }
    template <typename... Args>
    bool refuse(MessageFor<Args...> id, const Args&... args) {
        format_.context().messages.show(parent_, id, title::kUnableToSaveAsync, kErrorBox, args...);
        return false;
    }

    /// A file of 18 records with a merge among them could not be read again.
    bool checkRecord() {
        if (number_ < 0 || number_ > format_.asyncCount()) {
            return refuse(370);
        }
        bool merges = record_.isDataMerge;
        for (const auto& other : format_.asyncFormats) {
            merges = merges || other.isDataMerge;
        }
        const int most = merges ? kMostAsyncFormats - 1 : kMostAsyncFormats;
        const int wanted = format_.asyncCount() + (number_ == 0 ? 1 : 0);
        return wanted <= most || refuse(215, kMostAsyncFormats);
    }

    bool checkName(const std::function<bool(std::string_view)>& linkExists) {
        const auto name = record_.dataLinkName.view();
        if (name.empty()) {
            return refuse(367);
        }
        bool own = false;
        for (int other = 1; other <= format_.asyncCount(); ++other) {
            const auto& taken = format_.asyncFormats[static_cast<std::size_t>(other - 1)];
            if (taken.dataLinkName == name) {
                if (other != number_) {
                    return refuse(375);
                }
                own = true;
            }
        }
        return own || !linkExists || !linkExists(name) || refuse(374);
    }

    bool checkKind() {
        if (record_.supercom.empty() || equalsIgnoreCase(record_.supercom, kNotSupercommutated)) {
            record_.supercom = kNotSupercommutated;
            record_.locationMode = kNoLocationMode;
            record_.interval = 1;
            places_.resize(std::min<std::size_t>(places_.size(), 1));
            return true;
        }
        if (record_.locationMode == kEveryLocation) {
            record_.supercom = std::to_string(places_.size());
            record_.interval = 1;
            return true;
        }
        if (!(record_.locationMode == kFirstAndInterval)) {
            return refuse(368);
        }
        if (record_.interval < 1 || record_.supercom.number() < 1) {
            return refuse(369);
        }
        stepPlaces();
        return true;
    }

    /// Completes the places of an "FI" from the first; given ones stay.
    void stepPlaces() {
        const auto count = static_cast<std::size_t>(record_.supercom.number());
        for (std::size_t k = 1; k < count && !places_.empty(); ++k) {
            if (k == places_.size()) {
                places_.push_back(places_.front());
            }
            const auto word = places_.front().fwp + std::int64_t(k) * record_.interval;
            places_[k].fwp = static_cast<int>(std::min<std::int64_t>(word, kMostWords));
        }
        places_.resize(std::min(places_.size(), count));
    }

    bool checkPlaces() {
        if (places_.empty()) {
            return refuse(234, record_.dataLinkName.view());
        }
        std::stable_sort(places_.begin(), places_.end(),
                         [](const auto& a, const auto& b) { return a.fwp < b.fwp; });
        int before = 0;
        for (auto& place : places_) {
            if (!checkWord(place.fwp)) {
                return false;
            }
            if (place.fwp == before) {
                return refuse(373);
            }
            before = place.fwp;
            if (!checkMask(place)) {
                return false;
            }
            if (place.frames.empty()) {
                place.frames = {{1, 1, format_.numberOfFrames}};
            }
        }
        return true;
    }

    /// A new record is shown with the number that it would get.
    int shownNumber() const { return number_ > 0 ? number_ : format_.asyncCount() + 1; }

    bool checkWord(int fwp) {
        if (!format_.isDataWord(fwp)) {
            return refuse(195, codes().word, fwp, shownNumber(), record_.dataLinkName.view());
        }
        const auto* const subframe = format_.subframeOfWord(fwp);
        const auto type = format_.wordType(fwp);
        if (type != WordType::Minor &&
            !(type == WordType::Subframe && subframe != nullptr && subframe->hidden)) {
            return refuse(196, codes().word, fwp, shownNumber(), record_.dataLinkName.view());
        }
        return true;
    }

    bool checkMask(AsyncPlace& place) {
        if (record_.isDataMerge) {
            place.mask = kFullWord;
            return true;
        }
        const auto most = static_cast<std::size_t>(std::max(0, format_.wordLength(place.fwp)));
        if (place.mask.empty() || place.mask == kFullWord) {
            place.mask = std::string(std::min<std::size_t>(most, FixedText<64>::kWidth), '1');
        }
        if (place.mask.find_first_not_of("01") != std::string::npos) {
            return refuse(371);
        }
        if (place.mask.size() > most) {
            return refuse(372, most, place.mask.size(), most);
        }
        return true;
    }

    PcmFormat& format_;
    UserInterface* parent_;
    int number_;
    AsyncFormat record_;
    std::vector<AsyncPlace> places_;
};

}  // namespace

bool saveAsyncFormat(PcmFormat& format, UserInterface* parent, int record,
                     const AsyncFormat& contents, const std::vector<AsyncPlace>& places,
                     const std::function<bool(std::string_view)>& linkExists) {
    return AsyncSaver(format, parent, record, contents, places).save(linkExists);
}

bool saveAsyncAttributes(PcmFormat& format, UserInterface* parent, int record,
                         const AsyncFormat& contents,
                         const std::function<bool(std::string_view)>& linkExists) {
    return AsyncSaver(format, parent, record, contents, {}).saveAttributes(linkExists);
}

}  // namespace kavu
