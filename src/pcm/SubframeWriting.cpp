#include "pcm/SubframeWriting.h"

#include "core/TmatsReader.h"
#include "pcm/PcmFormat.h"
#include "pcm/SubframeCodes.h"

namespace kavu {

namespace {

/// Writes the commands of one group under its prefix.
class SubframeWriter {
  public:
    SubframeWriter(const PcmFormat& format, FileWriter& writer, const std::string& prefix)
        : format_(format), writer_(writer), prefix_(prefix) {
        counterWords_.resize(format.idCounters.size());
        for (int fwp = 1; fwp < format.wordsPerMinorFrame; ++fwp) {
            const auto& word = format.word(fwp);
            const auto index = static_cast<std::size_t>(word.idCounterIndex);
            if (word.type == WordType::IdCounter && index < counterWords_.size()) {
                counterWords_[index].push_back(fwp);
            }
        }
    }

    void write() {
        int named = 0;
        for (const auto& counter : format_.idCounters) {
            named += counter.name.empty() ? 0 : 1;
        }
        number(subframe_code::kCounterCount, named);
        for (std::size_t i = 0; i < format_.idCounters.size(); ++i) {
            // The numbers are those of the entries, holes counted in, although the count is
            // not: what is behind a hole may be lost to a reader, and is reported there.
            if (!format_.idCounters[i].name.empty()) {
                writeCounter(static_cast<int>(i));
            }
        }
    }

  private:
    template <typename... Args>
    void text(std::string_view code, std::string_view value, const Args&... args) {
        writeCommand(writer_, prefix_, formatPrintf(code, args...), value);
    }
    template <typename... Args>
    void number(std::string_view code, int value, const Args&... args) {
        writeIntCommand(writer_, prefix_, formatPrintf(code, args...), value);
    }

    void writeCounter(int index) {
        const auto& counter = format_.idCounters[static_cast<std::size_t>(index)];
        const int n = index + 1;
        text(subframe_code::kCounterName, counter.name, n);
        text(subframe_code::kCounterType, counter.type, n);
        for (const int fwp : counterWords_[static_cast<std::size_t>(index)]) {
            number(subframe_code::kCounterWord, fwp, n);
        }
        text(subframe_code::kWordLength, counter.wordLength, n);
        text(subframe_code::kMsbStartBit, counter.msbStartBit, n);
        text(subframe_code::kCounterLength, counter.counterLength, n);
        text(subframe_code::kTransferOrder, counter.transferOrder, n);
        text(subframe_code::kInitialValue, counter.initialValue, n);
        text(subframe_code::kStartFrame, counter.startFrame, n);
        text(subframe_code::kEndValue, counter.endValue, n);
        text(subframe_code::kEndFrame, counter.endFrame, n);
        text(subframe_code::kCountDirection, counter.countDirection, n);
        if (format_.edition() < 2011) {
            writeSubframes(index);
        }
    }

    void writeSubframes(int index) {
        const auto& subframes = format_.idCounters[static_cast<std::size_t>(index)].subframes;
        std::vector<int> written;
        for (std::size_t j = 0; j < subframes.size(); ++j) {
            const auto& words = format_.wordsOf({index, static_cast<int>(j)});
            // The counter's index stands in for a word position here: a subframe whose words
            // all lie in front of it is left out, as it always was.
            if (!subframes[j].name.empty() && !subframes[j].hidden && !words.empty() &&
                words.back() >= index) {
                written.push_back(static_cast<int>(j));
            }
        }
        number(subframe_code::kSubframeCount, static_cast<int>(written.size()), index + 1);
        int m = 0;
        for (const int j : written) {
            writeSubframe({index, j}, ++m);
        }
    }

    void writeSubframe(SubframeRef ref, int m) {
        const auto& record = *format_.subframe(ref);
        const auto& words = format_.wordsOf(ref);
        const int n = ref.counter + 1;
        text(subframe_code::kSubframeName, record.name, n, m);
        text(subframe_code::kSupercommutated, record.supercommutated, n, m);
        if (record.isSupercommutated()) {
            text(subframe_code::kLocationMode, record.locationMode, n, m);
        }
        const bool every = record.locationMode == kEveryLocation;
        const std::size_t count = every ? words.size() : 1;
        for (std::size_t k = 0; k < count; ++k) {
            number(subframe_code::kLocation, words[k], n, m, static_cast<int>(k + 1));
        }
        if (record.interval.number() > 0) {
            text(subframe_code::kInterval, record.interval, n, m);
        }
        text(subframe_code::kDepth, record.depth, n, m);
    }

    const PcmFormat& format_;
    FileWriter& writer_;
    const std::string& prefix_;
    std::vector<std::vector<int>> counterWords_;
};

}  // namespace

void writeIdCounters(const PcmFormat& format, FileWriter& writer, const std::string& prefix) {
    SubframeWriter(format, writer, prefix).write();
}

}  // namespace kavu
