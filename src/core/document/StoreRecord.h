// What a working store says of itself, for the recovery of a run that died: which file it was
// read from, whether that was read to its end, and which group files belong to it.
#pragma once

#include "core/files/IoStatus.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavu {

/// The file that a document was read from, as it was then.
struct DocumentSource {
    std::string path;  ///< absolute; empty for a new document
    std::uint64_t size = 0;
    std::int64_t modified = 0;  ///< nanoseconds since 1970
    [[nodiscard]] bool operator==(const DocumentSource&) const = default;
};

struct RecordedFile {
    std::string name;
    std::uint64_t size = 0;
    /// A file that was replaced since is another one, of which the size says nothing.
    std::uint64_t inode = 0;
};

struct StoreRecord {
    DocumentSource source;
    bool isSplit = false;   ///< every command of the source is in the store
    bool isLoaded = false;  ///< and the load has ended
    int edition = 0;        ///< of the document, as a year; 0 as long as it is not known
    /// Group files, and raw C commands that are no conversion records yet.
    std::vector<RecordedFile> files;
    /// The numbers of the files of conversion records, as runs from the first to the last one.
    std::vector<std::pair<std::int64_t, std::int64_t>> chunks;
};

[[nodiscard]] std::string storeRecordText(const StoreRecord& record);
/// Nothing for bytes that are no record. Counts and lengths are bounded.
[[nodiscard]] std::optional<StoreRecord> parseStoreRecord(std::string_view text);
/// Reads a record; nothing if there is none, or what is in its place is none.
[[nodiscard]] IoStatus readStoreRecord(const std::string& path, std::optional<StoreRecord>& record);
/// A file as it is now; one that cannot be looked at has size and time 0.
[[nodiscard]] DocumentSource describeSource(const std::string& path);
/// True if the file that the document was read from is still what it was then.
[[nodiscard]] bool isSourceUnchanged(const DocumentSource& source);

/// What a group file of a store folder is, compared with its record.
enum class FileState {
    Whole,
    Missing,
    NoFile,  ///< a folder, a link, a device or a pipe is in its place
    Cut,     ///< it is shorter than it was, or ends within a command
};
/// `recorded` is null for a file of which the record does not know, or has none.
[[nodiscard]] IoStatus probeStoreFile(const std::string& path, const RecordedFile* recorded,
                                      FileState& state);

}  // namespace kavu
