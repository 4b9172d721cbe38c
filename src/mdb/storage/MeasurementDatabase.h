// The measurement database: a library of measurement definitions outside any TMATS file, in one
// of three forms.
//
// The file is read once and its records are served from memory; a change is made there and the
// file replaced by a complete new one. Several users may share a file: a change is made with the
// file locked, and not to a file that another program has changed since it was read.
#pragma once

#include "conversion/SampleRate.h"
#include "core/files/IoStatus.h"
#include "mdb/record/MdbFields.h"
#include "mdb/storage/MdbStorage.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace kavu {

class Messages;
class UserFile;
class UserInterface;

class MeasurementDatabase {
  public:
    /// A larger file is not read (EFBIG): it is no database.
    static constexpr std::uint64_t kMostBytes = std::uint64_t{1} << 30;

    /// The messages must outlive the object. The rates say how each sample rate that is read is
    /// cut.
    MeasurementDatabase(const Messages& messages, std::string path, MdbVersion version,
                        const SampleRateOptions& rates);
    MeasurementDatabase(const MeasurementDatabase&) = delete;
    MeasurementDatabase& operator=(const MeasurementDatabase&) = delete;
    ~MeasurementDatabase();

    enum class Opening {
        Ready,
        Missing,  ///< there is no file; the first change makes one
        Failed    ///< it cannot be read, which `status` says, or is a file of another kind
    };
    /// Reads the file, and the position is at its begin.
    Opening open();
    [[nodiscard]] bool isOpen() const { return isOpen_; }
    /// Of the last open.
    [[nodiscard]] const IoStatus& status() const { return status_; }
    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] MdbVersion version() const { return version_; }
    /// True if the file is of no form: it counts as empty, and is kept before it is written.
    [[nodiscard]] bool isUnreadable() const { return isUnreadable_; }
    /// True if another program has changed the file since it was read or written here.
    [[nodiscard]] bool isOutdated() const;

    // --- Reading. REQUIRES: open, or missing. --------------------------------------------------

    /// Lines without a name are no records, and are passed over.
    [[nodiscard]] std::optional<MdbRecord> first();
    [[nodiscard]] std::optional<MdbRecord> next();
    /// The next record of a name, from the position to the end, and then from the begin up to
    /// the position. `columns`, if given, is the number of fields that its line has. The position
    /// is behind the record then; it stays if there is none.
    [[nodiscard]] std::optional<MdbRecord> find(std::string_view name,
                                                std::size_t* columns = nullptr);
    /// The place of the record that was read last.
    [[nodiscard]] std::size_t lastEntry() const { return position_ - 1; }
    /// Sets the position to the begin.
    void rewind() { position_ = 0; }
    [[nodiscard]] std::size_t recordCount() const;

    /// Reads all names into an index, with its progress. False if it was cancelled: then there is
    /// no index.
    bool loadNameIndex(UserInterface* parent);
    /// True if a record has exactly this name. Builds the index if there is none.
    [[nodiscard]] bool contains(std::string_view name);
    /// The first record of a name, as `find` compares it; the position stays.
    [[nodiscard]] std::optional<MdbRecord> lookUp(std::string_view name);
    /// The records whose root word has exactly this name, in their order.
    [[nodiscard]] std::vector<MdbRecord> childrenOf(std::string_view root);

    struct Validation {
        bool hasFaults = false;
        bool isCancelled = false;
    };
    /// Checks every line as the edition wants it: 416 (number of fields), 426 (no name), 413 (a
    /// name found twice), 408 (too long), 409 (not of its list) are appended to the message log.
    [[nodiscard]] Validation validate(UserInterface* parent, int edition);

    // --- Changes. REQUIRES: open, or missing. Each is true once the file has it. -----------------
    // What failed is reported. Message 402 (semi-colon) for a record that the form cannot hold.

    [[nodiscard]] bool canHold(const MdbRecord& record) const { return storage_->canHold(record); }
    bool add(UserInterface* parent, const MdbRecord& record);
    /// Replaces the records of that name, or adds the record. `replaced`, if given, says which.
    bool replace(UserInterface* parent, const MdbRecord& record, bool* replaced = nullptr);
    /// Removes the records of a name; an empty name removes all. `removed`, if given, says whether
    /// there were any.
    bool remove(UserInterface* parent, std::string_view name, bool* removed = nullptr);
    /// Changes by the place of the entry, lines without a name included, as `lastEntry` gives it.
    bool replaceAt(UserInterface* parent, std::size_t entry, const MdbRecord& record);
    /// REQUIRES: the entries rise.
    bool removeAt(UserInterface* parent, const std::vector<std::size_t>& entries);
    /// Makes the empty file if there is none.
    bool makeFile(UserInterface* parent);

    /// Many changes that are written together. From its begin the file is locked; without a
    /// `commit` everything is as before it. Inside, changes report 402 only, and cannot fail
    /// otherwise. One at a time.
    class Batch {
      public:
        enum class IfChanged {
            Ask,     ///< whether the file is to be read again
            Refuse,  ///< for changes by the places of entries
        };
        Batch(MeasurementDatabase& database, UserInterface* parent,
              IfChanged ifChanged = IfChanged::Ask);
        Batch(const Batch&) = delete;
        Batch& operator=(const Batch&) = delete;
        ~Batch();
        /// False if the file could not be locked, or was changed by another program and the user
        /// does not want to go on; this was reported, and there is nothing to commit. While another
        /// program writes the file it is waited for, with a progress window whose Cancel ends that
        /// without a report.
        [[nodiscard]] bool isOpen() const { return isOpen_; }
        bool commit(UserInterface* parent);

      private:
        MeasurementDatabase& database_;
        bool isOpen_ = false;
    };

  private:
    [[nodiscard]] MdbRecord recordAt(std::size_t entry) const;
    [[nodiscard]] bool isRecord(std::size_t entry) const { return !storage_->name(entry).empty(); }
    void forgetIndex();
    void indexNames();
    void indexRoots();
    void noteAppended(const MdbRecord& record);
    bool begin(UserInterface* parent, Batch::IfChanged ifChanged);
    bool mayChange(UserInterface* parent, Batch::IfChanged ifChanged);
    IoStatus write(UserInterface* parent);
    bool change(UserInterface* parent, const std::function<bool()>& work);
    struct Check;
    void checkEntry(Check& check, std::size_t entry);

    const Messages& messages_;
    std::string path_;
    MdbVersion version_;
    SampleRateOptions rates_;
    std::unique_ptr<MdbStorage> storage_;
    std::string stamp_;  ///< of the file when it was read or written last
    bool isOpen_ = false;
    bool isUnreadable_ = false;  ///< the file is of no form, and is kept before it is written
    IoStatus status_;
    std::size_t position_ = 0;
    std::unique_ptr<UserFile> file_;  ///< locked, while a batch is open
    bool hasChanged_ = false;         ///< what is in memory is not in the file

    using Entries = std::vector<std::size_t>;
    bool isIndexed_ = false;
    std::unordered_map<std::string, Entries> places_;  ///< by the name that reads compare with
    std::unordered_set<std::string> names_;
    bool rootsIndexed_ = false;
    std::unordered_map<std::string, Entries> roots_;
};

}  // namespace kavu
