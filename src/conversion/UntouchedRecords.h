// The conversion records of a load that nobody has asked for yet. They are still the commands of
// the raw group: a document that is opened and saved writes its records straight from them, and
// the sections in which records are found and changed are made when the first one is.
#pragma once

#include "conversion/RawGroup.h"
#include "conversion/RawRecords.h"
#include "core/files/IoStatus.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace kavu {

class DocumentFiles;
class StagedChunks;

/// Records of neighbouring chunks that have been read together.
struct RecordBatch {
    struct Part {
        const RawGroup::Chunk* chunk = nullptr;
        RawRecords records;
    };
    RawGroup::Batch read;     ///< what the records are views of
    std::vector<Part> parts;  ///< those beyond `count` keep their memory for the next batch
    std::size_t count = 0;
};

class UntouchedRecords {
  public:
    /// The chunks of the group have been checked. `name` is that of its file; `edition` rules the
    /// limits. A record that says what is to be done with it is `special`.
    UntouchedRecords(RawGroup group, std::string name, int edition, bool special)
        : group_(std::move(group)), name_(std::move(name)), edition_(edition), special_(special) {}

    /// False if records can only be written from their sections.
    [[nodiscard]] bool canBeWritten() const { return !special_; }

    [[nodiscard]] RawGroup::Chunks& chunks() { return group_.chunks(); }
    /// The records of a chunk; the views live until the next call. Cheap in rising order.
    [[nodiscard]] IoStatus read(std::int64_t number, RawRecords& records);
    /// As many chunks as are read at a time, from `next` on, which goes on to the chunk behind
    /// them; there are none after the last.
    [[nodiscard]] IoStatus readSome(RawGroup::Chunks::iterator& next, RawGroup::Batch& read);
    /// Puts the records of such chunks in place of those in `batch`. `meanwhile` is called while
    /// that is done; it may read the next ones.
    void gather(RawGroup::Batch read, RecordBatch& batch,
                const std::function<void()>& meanwhile) const;
    /// Closes the file between two passes.
    void release() { group_.release(); }

    /// Makes the sections, in `staged`, or in files where they are too many; the comments that
    /// are kept outside go to their files. May be tried again after a failure.
    [[nodiscard]] IoStatus makeSections(DocumentFiles& files, StagedChunks& staged);

  private:
    RawGroup group_;
    std::string name_;
    int edition_;
    bool special_;
};

}  // namespace kavu
