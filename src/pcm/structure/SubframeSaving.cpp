// Accepting the dialog of a subframe: its checks, and the changes in the frame.
#include "pcm/structure/AsyncEdit.h"
#include "pcm/structure/SubframeEdit.h"
#include "vocabulary/LocationTypes.h"
#include "vocabulary/SubframeCodes.h"

#include <unordered_set>

namespace kavu {

namespace {

template <typename... Args>
bool refuseIn(const PcmFormat& format, UserInterface* parent, MessageFor<Args...> id,
              MessageTitle titleId, const Args&... args) {
    format.context().messages.show(parent, id, titleId, kErrorBox, args...);
    return false;
}

class SubframeSaver {
  public:
    SubframeSaver(PcmFormat& format, UserInterface* parent, int fwp, const Subframe& record,
                  const Subframe& old, const std::vector<int>& everyLocation)
        : format_(format),
          parent_(parent),
          fwp_(fwp),
          record_(record),
          old_(old),
          every_(everyLocation),
          ref_{format.word(fwp).idCounterIndex, format.word(fwp).subframeIndex} {}

    bool save() {
        if (format_.wordType(fwp_) != WordType::Subframe || format_.subframe(ref_) == nullptr) {
            return refuse(342, title::kOperationAborted);
        }
        if (!checkSubframeName(format_, parent_, old_.name, record_.name) || !checkLocations() ||
            !checkMeasurements() ||
            !checkSubframeDepth(format_, parent_, ref_.counter, record_.depth.number())) {
            return false;
        }
        for (const int word : std::vector<int>(format_.wordsOf(ref_))) {
            if (word != fwp_) {
                resetWord(format_, parent_, word, true);
            }
        }
        format_.idCounters[static_cast<std::size_t>(ref_.counter)]
            .subframes[static_cast<std::size_t>(ref_.index)] = record_;
        format_.subframesChanged();
        changeDepth();
        if (record_.isSupercommutated()) {
            supercommutate();
        } else if (old_.isSupercommutated()) {
            changeType(location_type::kSubframeSupercommutated, location_type::kSubframe, 0);
        }
        format_.changed = true;
        return true;
    }

  private:
    template <typename... Args>
    bool refuse(MessageFor<Args...> id, MessageTitle titleId, const Args&... args) {
        return refuseIn(format_, parent_, id, titleId, args...);
    }

    bool checkLocations() {
        if (!record_.isSupercommutated()) {
            return true;
        }
        return record_.locationMode == kEveryLocation ? checkEveryLocation() : checkInterval();
    }

    /// True for a word of a counter or of another subframe.
    bool isTaken(int word) const {
        const auto& other = format_.word(word);
        const SubframeRef ref{other.idCounterIndex, other.subframeIndex};
        return other.type == WordType::IdCounter ||
               (other.type == WordType::Subframe && !(ref == ref_));
    }

    /// True for a plain word whose contents would be lost: an async stream cannot be read from
    /// a word of a subframe.
    bool isInUse(int word) const {
        return format_.containsMeasurements(word) ||
               (format_.wordType(word) == WordType::Minor && isAsyncAt(format_, word, -1, 0));
    }

    bool checkInterval() {
        const int count = record_.supercommutated.number();
        const int interval = record_.interval.number();
        if (count < 1 || count > kMostSupercomLocations) {
            return refuse(160, title::kInvalidSupercomLocations, 1, kMostSupercomLocations);
        }
        if (interval < 1 || interval > kMostSubframeInterval) {
            return refuse(160, title::kInvalidInterval, 1, kMostSubframeInterval);
        }
        for (int i = 0; i < count; ++i) {
            const int word = fwp_ + i * interval;
            // The position after the last word is accepted; nothing is placed there.
            if (word > format_.wordsPerMinorFrame) {
                return refuse(343, title::kUnableToSaveSubframe, word);
            }
            if (isTaken(word)) {
                return refuse(344, title::kUnableToSaveSubframe, word);
            }
            if (isInUse(word)) {
                return refuse(341, title::kIllegalValueEntered, word);
            }
            locations_.push_back(word);
        }
        return true;
    }

    bool checkEveryLocation() {
        if (every_.size() > static_cast<std::size_t>(kMostSupercomLocations)) {
            return refuse(160, title::kInvalidSupercomLocations, 1, kMostSupercomLocations);
        }
        bool found = false;
        for (const int word : every_) {
            if (!format_.isDataWord(word)) {
                return refuse(346, title::kIllegalValueEntered, format_.wordsPerMinorFrame - 1);
            }
            if (isTaken(word)) {
                return refuse(347, title::kUnableToSaveSubframe, word);
            }
            if (isInUse(word)) {
                return refuse(341, title::kIllegalValueEntered, word);
            }
            found = found || word == fwp_;
            locations_.push_back(word);
        }
        if (!found) {
            return refuse(348, title::kIllegalValueEntered, fwp_);
        }
        std::sort(locations_.begin(), locations_.end());
        locations_.erase(std::unique(locations_.begin(), locations_.end()), locations_.end());
        const bool single = locations_.size() == 1;
        record_.supercommutated =
            single ? std::string(kNotSupercommutated) : std::to_string(locations_.size());
        record_.locationMode = single ? kNoLocationMode : kEveryLocation;
        return true;
    }

    /// Word/frame locations in a supercommutated subframe could not be read again.
    bool checkMeasurements() {
        if (!record_.isSupercommutated()) {
            return true;
        }
        const auto& cells = format_.cells();
        for (const int word : format_.wordsOf(ref_)) {
            for (int index = 1; index <= cells.cellCount(word); ++index) {
                for (auto at = cells.cell(word, index); at; at = cells.next(at)) {
                    if (cells.isMeasurement(at) && isWordFrame(cells.measurement(at))) {
                        return refuse(356, title::kUnableToSaveSubframe);
                    }
                }
            }
        }
        return true;
    }

    void changeDepth() {
        const int before = format_.cells().cellCount(fwp_);
        format_.allocateCells(parent_, fwp_);
        Measurement fresh;
        // An empty cell of a supercommutated subframe is marked as one of a minor frame, as
        // it always was.
        fresh.locationType = record_.isSupercommutated() ? location_type::kMinorFrameSupercommutated
                                                         : location_type::kSubframe;
        for (int index = before + 1; index <= format_.wordDepth(fwp_); ++index) {
            format_.cells().store(format_.cellAt(fwp_, index), fresh);
        }
    }

    /// Replaces the location type of the measurements of the word that is edited.
    void changeType(std::string_view from, std::string_view to, int count) {
        for (int index = 1; index <= format_.wordDepth(fwp_); ++index) {
            for (auto at = format_.cellAt(fwp_, index); at; at = format_.next(at)) {
                auto measurement = format_.cells().measurement(at);
                if (!format_.cells().isMeasurement(at) || !(measurement.locationType == from)) {
                    continue;
                }
                measurement.locationType = to;
                measurement.locationCount = count;
                if (count > 0) {
                    measurement.locationMode = "E";
                }
                format_.cells().store(at, measurement);
            }
        }
    }

    void supercommutate() {
        changeType(location_type::kSubframe, location_type::kSubframeSupercommutated,
                   static_cast<int>(locations_.size()));
        for (const int word : locations_) {
            if (word != fwp_ && format_.isDataWord(word)) {
                format_.setWord(word, WordType::Subframe, ref_.counter, ref_.index);
                format_.allocateCells(parent_, word);
                copyMeasurements(word);
            }
        }
    }

    void copyMeasurements(int word) {
        for (int index = 1; index <= format_.wordDepth(fwp_); ++index) {
            for (auto at = format_.cellAt(fwp_, index); at; at = format_.next(at)) {
                if (!format_.cells().isMeasurement(at)) {
                    continue;
                }
                const auto to = format_.getFreeCell(parent_, word, index);
                if (!to) {
                    return;
                }
                format_.storeCell(to, at);
            }
        }
    }

    PcmFormat& format_;
    UserInterface* parent_;
    int fwp_;
    Subframe record_;
    const Subframe old_;
    const std::vector<int>& every_;
    SubframeRef ref_;
    std::vector<int> locations_;
};

}  // namespace

bool checkSubframeName(const PcmFormat& format, UserInterface* parent, std::string_view former,
                       std::string_view name) {
    if (name.empty()) {
        return refuseIn(format, parent, 353, title::kIllegalValueEntered);
    }
    if (name != former && subframeNameExists(format, name)) {
        return refuseIn(format, parent, 354, title::kIllegalValueEntered);
    }
    return true;
}

bool checkSubframeDepth(const PcmFormat& format, UserInterface* parent, int counter, int depth) {
    if (depth < 1) {
        return refuseIn(format, parent, 349, title::kIllegalValueEntered);
    }
    if (depth > format.numberOfFrames) {
        return refuseIn(format, parent, 350, title::kIllegalValueEntered, format.numberOfFrames);
    }
    const auto& record = format.idCounters[static_cast<std::size_t>(counter)];
    if (record.depth() % depth != 0) {
        return refuseIn(format, parent, 351, title::kIllegalValueEntered, record.name.view(),
                        record.depth());
    }
    return true;
}

bool saveSubframe(PcmFormat& format, UserInterface* parent, int fwp, const Subframe& record,
                  const Subframe& old, const std::vector<int>& everyLocation) {
    return SubframeSaver(format, parent, fwp, record, old, everyLocation).save();
}

}  // namespace kavu
