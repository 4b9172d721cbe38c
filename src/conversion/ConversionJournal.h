// What happens to the files of the conversion records while it listens: the files as they
// were, from the first change on, so that they can be put back.
#pragma once

#include "conversion/ConversionStore.h"

#include <map>
#include <optional>
#include <string>

namespace kavu {

/// Files of the records by their paths.
struct ConversionFileState {
    std::optional<std::int64_t> chunk;    ///< nothing for a comment file
    std::optional<std::string> contents;  ///< nothing if the file was not there
};
using ConversionFileStates = std::map<std::string, ConversionFileState>;

class ConversionJournal {
  public:
    /// The store must outlive it. Journals end in the order opposite to that in which they
    /// began.
    explicit ConversionJournal(ConversionStore& store);
    ConversionJournal(const ConversionJournal&) = delete;
    ConversionJournal& operator=(const ConversionJournal&) = delete;
    ~ConversionJournal();

    /// The files that are not what they were when this was asked last, as they were then. A
    /// file that could not be read is left out, and `status` tells of it.
    [[nodiscard]] ConversionFileStates take(IoStatus& status);
    /// Puts files back, and gives what they held until then. What could not be put back is not
    /// among these; `status` tells of it.
    [[nodiscard]] ConversionFileStates exchange(const ConversionFileStates& files,
                                                IoStatus& status);

  private:
    void note(const std::string& path, std::optional<std::int64_t> chunk);

    ConversionStore& store_;
    decltype(ConversionStore::beforeChange) outer_;
    ConversionFileStates before_;
    IoStatus failure_;
};

/// Bytes that the contents of files take.
[[nodiscard]] std::size_t bytesOf(const ConversionFileStates& files);

}  // namespace kavu
