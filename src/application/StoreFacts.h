// What can be said of the working stores that dead runs left behind, before one of them is
// recovered.
#pragma once

#include "core/document/StoreRecord.h"
#include "core/files/IoStatus.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kavu {

class Clock;

struct StoreFacts {
    /// Nothing if the store does not say what it holds, as one of an older program.
    std::optional<StoreRecord> record;
    bool isRecovered = false;
    std::string recoveredAs;  ///< the path of the file that was made of it
    bool isEmpty = false;     ///< nothing of a document is in it, nor of a file of the user

    /// The file was not read to its end: some of it is in the store and some is not.
    [[nodiscard]] bool isIncomplete() const { return record && !record->isSplit; }
};
/// Reads the names of a store's files, its record and its mark, and nothing else. What cannot be
/// read counts as not there.
[[nodiscard]] StoreFacts describeStore(const std::string& folder);
/// What is to be said of an incomplete store: what is missing, and where it can be had.
[[nodiscard]] std::string incompleteText(const std::string& folder, const StoreFacts& facts);
/// The path of a file that does not exist, next to the document that was read: never that of
/// the document itself. Empty if the store does not say which document that was.
[[nodiscard]] std::string proposedName(const StoreFacts& facts);
/// Marks a store as recovered.
[[nodiscard]] IoStatus markRecovered(const std::string& folder, const std::string& output,
                                     const Clock& clock);

/// The lock by which a run says that its working store is in use. As long as the object exists,
/// nobody else takes the folder for an unused one.
class StoreClaim {
  public:
    explicit StoreClaim(const std::string& folder);
    StoreClaim(const StoreClaim&) = delete;
    StoreClaim& operator=(const StoreClaim&) = delete;
    ~StoreClaim();

    /// True if another run, or this one, works in the folder.
    [[nodiscard]] bool isInUse() const { return isInUse_; }

  private:
    int descriptor_ = -1;
    bool isInUse_ = false;
};

/// A working store under the temporary root whose process is gone.
struct AbandonedStore {
    std::string folder;
    std::int64_t modified = 0;  ///< seconds since 1970
};
/// The abandoned stores of this user, newest first. Only the folders are examined,
/// nothing in them is read. `failure`, if given, says why the root could not be listed.
[[nodiscard]] std::vector<AbandonedStore> findAbandonedStores(const std::string& temporaryRoot,
                                                              IoStatus* failure = nullptr);

}  // namespace kavu
