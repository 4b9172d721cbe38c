// Chunks of records that are not in their files yet. A document that is opened and saved
// reads its records once and changes none of them; a file for each chunk would cost more
// than all the work on it. As long as chunks are here, the raw commands that they were
// made from stay in the working store: a run that is killed loses nothing.
#pragma once

#include "core/files/IoStatus.h"

#include <cstdint>
#include <map>
#include <string>

namespace kavu {

class DocumentFiles;

class StagedChunks {
  public:
    /// A chunk beyond this many staged bytes is written to its file immediately.
    static constexpr std::uint64_t kDefaultLimit = std::uint64_t{64} << 20;

    explicit StagedChunks(std::uint64_t limit = kDefaultLimit) : limit_(limit) {}

    /// Keeps a chunk here, or writes it to its file if the limit is reached.
    IoStatus put(DocumentFiles& files, std::int64_t number, std::string&& bytes);
    /// The bytes of a chunk, or null if it is not here. Valid until the next change.
    [[nodiscard]] const std::string* find(std::int64_t number) const;
    [[nodiscard]] const std::map<std::int64_t, std::string>& all() const { return chunks_; }
    void renumber(std::int64_t from, std::int64_t to);
    void erase(std::int64_t number);

    /// Sets the file with the raw commands of the chunks; it is deleted when all of them
    /// are written.
    void standFor(std::string rawName) { rawName_ = std::move(rawName); }
    /// Writes all chunks to their files and deletes the raw commands. After a failure
    /// everything is as it was, and the call may be repeated.
    IoStatus writeOut(DocumentFiles& files);
    /// Forgets the chunks; files stay.
    void clear();

  private:
    std::uint64_t limit_;
    std::uint64_t total_ = 0;
    std::map<std::int64_t, std::string> chunks_;
    std::string rawName_;
};

}  // namespace kavu
