#include "pcm/write/SubframeWriting.h"

#include "core/TmatsReader.h"
#include "pcm/PcmFormat.h"
#include "pcm/model/SubframeFields.h"

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
        number(counter_field::kCount.field, named, {});
        for (std::size_t i = 0; i < format_.idCounters.size(); ++i) {
            // The numbers are those of the entries and include holes, although the count
            // does not: a reader may not find what follows a hole, and reports it.
            if (!format_.idCounters[i].name.empty()) {
                writeCounter(static_cast<int>(i));
            }
        }
    }

  private:
    template <typename Record>
    void text(const RecordField<Record>& row, const Record& record,
              std::initializer_list<int> numbers) {
        writeCommand(writer_, prefix_, fieldCode(row.field.code, numbers), row.text(record));
    }
    void number(const Field& field, int value, std::initializer_list<int> numbers) {
        writeIntCommand(writer_, prefix_, fieldCode(field.code, numbers), value);
    }

    void writeCounter(int index) {
        const auto& counter = format_.idCounters[static_cast<std::size_t>(index)];
        const int n = index + 1;
        for (const auto& row : kCounterFields) {
            if (row.text != nullptr) {
                text(row, counter, {n});
                continue;
            }
            for (const int fwp : counterWords_[static_cast<std::size_t>(index)]) {
                number(row.field, fwp, {n});
            }
        }
        if (format_.edition() <= subframe_field::kLastEdition) {
            writeSubframes(index);
        }
    }

    void writeSubframes(int index) {
        const auto written = writtenSubframes(format_, index);
        number(subframe_field::kCount.field, static_cast<int>(written.size()), {index + 1});
        int m = 0;
        for (const int j : written) {
            writeSubframe({index, j}, ++m);
        }
    }

    void writeSubframe(SubframeRef ref, int m) {
        const auto& record = *format_.subframe(ref);
        const auto& words = format_.wordsOf(ref);
        const int n = ref.counter + 1;
        for (const auto& row : kSubframeFields) {
            if (row.text == nullptr) {
                writeLocations(row.field, record, words, n, m);
            } else if (isTold(row.field.code, record)) {
                text(row, record, {n, m});
            }
        }
    }

    /// False for the location mode of a subframe of one word, and for the interval of one
    /// without steps.
    static bool isTold(std::string_view code, const Subframe& record) {
        if (code == subframe_field::kLocationMode.field.code) {
            return record.isSupercommutated();
        }
        return code != subframe_field::kInterval.field.code || record.interval.number() > 0;
    }

    void writeLocations(const Field& field, const Subframe& record, const std::vector<int>& words,
                        int n, int m) {
        const std::size_t count = record.locationMode == kEveryLocation ? words.size() : 1;
        for (std::size_t k = 0; k < count; ++k) {
            number(field, words[k], {n, m, static_cast<int>(k + 1)});
        }
    }

    const PcmFormat& format_;
    FileWriter& writer_;
    const std::string& prefix_;
    std::vector<std::vector<int>> counterWords_;
};

}  // namespace

std::vector<int> writtenSubframes(const PcmFormat& format, int counter) {
    const auto& subframes = format.idCounters[static_cast<std::size_t>(counter)].subframes;
    std::vector<int> written;
    for (std::size_t j = 0; j < subframes.size(); ++j) {
        const auto& words = format.wordsOf({counter, static_cast<int>(j)});
        // The counter's index is compared with word positions here: a subframe whose
        // words are all before it is left out, as it always was.
        if (!subframes[j].name.empty() && !subframes[j].hidden && !words.empty() &&
            words.back() >= counter) {
            written.push_back(static_cast<int>(j));
        }
    }
    return written;
}

void writeIdCounters(const PcmFormat& format, FileWriter& writer, const std::string& prefix) {
    SubframeWriter(format, writer, prefix).write();
}

}  // namespace kavu
