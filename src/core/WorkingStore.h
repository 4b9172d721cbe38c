// The private folder in which an open document lives as a set of small text files, one
// for each group instance, and the operations that compose and remove their names.
//
// The text "[kavu]" at the head of many names is a literal part of the file name.
#pragma once

#include "core/files/Environment.h"
#include "core/files/FileIo.h"
#include "core/text/Edition.h"
#include "core/text/Printf.h"

#include <string>
#include <string_view>

namespace kavu {

class Clock;
class RandomSource;
class UserInterface;

// Names in the working store that more than one pass uses.
namespace working {
inline constexpr std::string_view kMessageLog = "KAVU9TMP.TMP";
/// What the store says of itself: see `StoreRecord`.
inline constexpr std::string_view kStoreRecord = "KAVU9REC.TMP";
/// The mark of a store that was recovered: when, and the path of the file that was made of it.
inline constexpr std::string_view kRecovered = "KAVU9RCV.TMP";
inline constexpr std::string_view kData1 = "DATA1.TMP";
/// Commands of the C group that no record can hold, as they are.
inline constexpr std::string_view kUnsplitConversions = "[kavu]CREST.C";
/// Comments of the file in front of commands of the C group.
inline constexpr std::string_view kConversionComments = "[kavu]CCOM.C";
/// The C group as it is written, while the comments are joined with it.
inline constexpr std::string_view kWrittenConversions = "CGROUP.TMP";
inline constexpr std::string_view kData2 = "DATA2.TMP";
inline constexpr std::string_view kGeneral = "[kavu]GTMP.G";
inline constexpr std::string_view kMultiplexScratch = "[kavu]MULTIPLX.TMP";
inline constexpr std::string_view kEuDefinitions = "EuDefinitions";
/// The folder with the former contents of an open operation; a number, its nesting depth,
/// follows.
inline constexpr std::string_view kOpenOperation = "TEMP";
/// The contents of a file of the user before a save overwrites it, and the end of the name of
/// the file next to it that holds the path of the user's file.
inline constexpr std::string_view kFormerFormat = "FORMER%d.TMP";
inline constexpr std::string_view kFormerFiles = "FORMER*.TMP";
inline constexpr std::string_view kFormerOf = ".PATH";
inline constexpr std::string_view kUndoLevels = "undo";
inline constexpr std::string_view kRedoLevels = "redo";
inline constexpr std::string_view kChunkFormat = "[kavu]%8.8ld.C_O";
/// The raw C commands while they are made into chunks, and until all of these are in files:
/// all chunks from this number on are made from it, and are void as long as it exists.
inline constexpr std::string_view kRawConversionsFormat = "[kavu]%8.8ld.C_RAW";
/// True for the name of the folder of an open operation.
[[nodiscard]] bool isOpenOperation(std::string_view name);
}  // namespace working

class WorkingStore {
  public:
    explicit WorkingStore(Environment environment) : environment_(std::move(environment)) {}
    WorkingStore(const WorkingStore&) = delete;
    WorkingStore& operator=(const WorkingStore&) = delete;
    ~WorkingStore();

    /// Makes the folder (mode 0700) under the temporary root and holds a lock on it for as
    /// long as this process lives. Reports failures to the parent. REQUIRES: `random` outlives
    /// the object.
    bool activate(UserInterface* parent, std::string_view applicationName, RandomSource& random);
    /// Deletes the folder with all it holds. A folder that cannot be removed is reported. One
    /// that is kept for recovery stays, which a note says.
    void deactivate(UserInterface* parent);
    /// From here on nothing of the document is deleted: the folder holds what exists nowhere
    /// else, and outlives the run however that ends.
    void keepForRecovery() { isKept_ = true; }
    [[nodiscard]] bool isKeptForRecovery() const { return isKept_; }
    /// Leaves a folder that is kept for recovery to it, and makes another one for the next
    /// document. False if that failed, which has been reported: then no document may be opened.
    bool leaveKeptFolder(UserInterface* parent);
    [[nodiscard]] bool active() const { return !folder_.empty(); }
    /// Without a trailing separator; empty while the store is not active.
    [[nodiscard]] const std::string& folder() const { return folder_; }

    /// The full path of a working file whose name is a printf format of the program.
    template <typename... Args>
    [[nodiscard]] std::string path(PrintfFormat<Args...> format, const Args&... args) const
        requires(sizeof...(Args) > 0) {
        return pathOf(formatPrintf(format, args...));
    }
    [[nodiscard]] std::string path(std::string_view name) const { return pathOf(name); }
    /// The full path of a working file with this very name.
    [[nodiscard]] std::string pathOf(std::string_view name) const;
    template <typename... Args>
    [[nodiscard]] bool exists(PrintfFormat<Args...> format, const Args&... args) const
        requires(sizeof...(Args) > 0) {
        return canRead(path(format, args...));
    }
    [[nodiscard]] bool exists(std::string_view name) const { return canRead(pathOf(name)); }
    /// Deletes every working file that matches (`*` is a wildcard, all other characters
    /// are plain). Failures are reported and the scan goes on; false if there was one.
    bool deleteFiles(UserInterface* parent, std::string_view pattern) const;

    /// Deletes every file of the document, whatever its index, and shows status texts. S
    /// files of an edition before 2005, which nothing reads, stay until the folder goes. Of a
    /// folder that is kept for recovery nothing is deleted. For `DocumentFiles::clear`, which
    /// also forgets the files.
    void clearDocumentFiles(UserInterface* parent, int edition = kLatestEdition) const;
    /// The same at the start of the program, deleting only what exists.
    void verifyNoDocumentFiles(UserInterface* parent) const;

    /// The root under which the folder is made: what the system names, else the folder of the
    /// user's settings, else "/tmp" where that one cannot be written.
    [[nodiscard]] std::string temporaryRoot() const;
    [[nodiscard]] const Environment& environment() const { return environment_; }

  private:
    [[nodiscard]] IoStatus makePrivateFolder() const;
    void takeLock();
    void releaseLock();

    Environment environment_;
    std::string applicationName_;
    RandomSource* random_ = nullptr;
    std::string folder_;
    int lock_ = -1;
    bool isKept_ = false;
};

/// A name from a document as part of a file name: ordinary names stay readable, and no
/// name can leave the folder or equal another name's. Bytes that a file name cannot or
/// should not hold become `%` and two hexadecimal digits.
[[nodiscard]] std::string safeFileName(std::string_view name);

/// The folder for settings. An empty base gives the folder of all users. Always ends in a
/// separator.
[[nodiscard]] std::string supportFolderPath(const Environment& environment, std::string_view name,
                                            std::string_view base, bool mayUseNetwork);
inline constexpr std::string_view kSupportFolderName = "KavuSupportFiles";

/// Makes the folder if needed and checks that files can be written in it. Without it settings
/// are held in memory.
[[nodiscard]] IoStatus prepareSupportFolder(const std::string& folder);

}  // namespace kavu
