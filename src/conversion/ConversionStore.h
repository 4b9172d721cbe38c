// The conversion records of the open document. They live in the chunk files of the working
// store; this object finds them, makes, renames and deletes them, and keeps their
// comments.
//
// A record is found by its exact name, else by a name that differs only in case. Names are
// held in an index, so that a look-up costs no search through the files; the files are
// written before an operation that changes records returns. Records that were loaded and
// not changed since are in their files only after `writeOut`.
#pragma once

#include "conversion/ConversionFiles.h"
#include "conversion/StagedChunks.h"
#include "conversion/UntouchedRecords.h"
#include "core/document/DocumentChange.h"
#include "core/files/ProfileFile.h"

#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kavu {

struct DocumentContext;
class UserInterface;

/// Where a record is, or where a new one is to go.
struct RecordPlace {
    bool found = false;
    std::int64_t chunk = 0;
    std::string path;     ///< of the chunk
    std::string section;  ///< the name as the chunk spells it; as asked if not found
};

class ConversionStore : private DocumentListener {
  public:
    /// While it lives, changed chunks wait in memory instead of being written with each change: for
    /// many records that are made one after the other. One at a time.
    class Batch {
      public:
        explicit Batch(ConversionStore& store) : store_(store) { store_.isBatch_ = true; }
        Batch(const Batch&) = delete;
        Batch& operator=(const Batch&) = delete;
        ~Batch() { (void)write(nullptr); }
        /// Writes what waits, and ends the batch. False if a file could not be written, which is
        /// reported; its records are as they were before.
        bool write(UserInterface* parent);

      private:
        ConversionStore& store_;
    };

    /// Listens to the changes of the document as long as it lives.
    explicit ConversionStore(DocumentContext& context);
    ConversionStore(const ConversionStore&) = delete;
    ConversionStore& operator=(const ConversionStore&) = delete;
    ~ConversionStore() override;

    /// Forgets all that is known of the files, and records that are not in files yet: the
    /// document was closed, or other code has written its chunks.
    void forget();
    /// Takes over the records of a load. They stay raw commands until one of them is asked for.
    void hold(UntouchedRecords&& records);
    /// The records of the load, to be written from their raw commands; null once a record was
    /// asked for, or if one can only be written from its section.
    [[nodiscard]] UntouchedRecords* untouched();
    /// Writes all records to their files. To be called before the files are read other than
    /// through this object.
    IoStatus writeOut();
    /// How many bytes of records may wait for `writeOut`.
    std::uint64_t stagingLimit = StagedChunks::kDefaultLimit;

    /// Returns the calculated sample rate of a measurement, empty if there is none.
    std::function<std::string(std::string_view measurement)> sampleRateStep;
    /// Adds the default comment strings to a new record.
    std::function<void(UserInterface*, const std::string& name)> defaultCommentStep;

    /// Updates what is known of the records after files of the document were put back.
    void follow(const std::vector<DocumentFile>& files);

    /// The place of a record. The search begins at the chunk found last and wraps once
    /// around. A new record goes to the first chunk of less than 30000 bytes.
    [[nodiscard]] RecordPlace locateDefinition(std::string_view name);

    // The operations below are true on success. A file that cannot be read or written is
    // reported with message 313 ("Unable to").

    /// Makes a record from the default keys of the settings if there is none of the name.
    bool createDefaultDefinition(UserInterface* parent, const std::string& name, bool asTemplate);
    /// Copies the chunk of a record to "DATA1.TMP", and renames the record to `newName`
    /// there; its comment file is copied, too.
    bool beginDefinitionEdit(UserInterface* parent, const std::string& name,
                             const std::string& newName);
    /// Replaces the record's chunk by "DATA1.TMP".
    bool commitDefinitionEdit(UserInterface* parent, const std::string& name);
    /// Begins the edit of a record, which is made if there is none. `isTemplate` is set
    /// if it was never edited before; it then no longer is a template. An empty name is
    /// reported.
    bool openDefinitionForEdit(UserInterface* parent, const std::string& name, bool& isTemplate);
    /// Also false if there is a record of the new name.
    bool renameDefinition(UserInterface* parent, const std::string& newName,
                          const std::string& oldName);
    bool deleteDefinition(UserInterface* parent, const std::string& name);

    /// The record names of a chunk, or of all chunks for a negative number; nothing if
    /// there is no such chunk.
    [[nodiscard]] std::optional<std::vector<std::string>> definitionNames(std::int64_t chunkNumber);

    /// The comment with real line breaks; empty if there is none. `status`, if given,
    /// reports a file that could not be read.
    [[nodiscard]] std::string readEuComment(const std::string& name, bool fromWorkingCopy,
                                            IoStatus* status = nullptr);
    /// The comment of a record that a pass visits. `status`, if given, reports a comment
    /// file that could not be read.
    [[nodiscard]] std::string readEuComment(const ProfileFile::Section& record,
                                            IoStatus* status = nullptr);
    /// Stores a comment, in the record if the file it is in stays within 30000 bytes, else
    /// in a file of its own.
    bool writeEuComment(UserInterface* parent, const std::string& name, std::string text,
                        bool toWorkingCopy);
    /// A pair of the private data that is stored in the comment. These work on "DATA1.TMP"
    /// if it exists and holds the record, else on the record in its chunk. The edit of a
    /// record takes the pairs out of its comment; the save puts them back.
    [[nodiscard]] std::string commentRecordGet(const std::string& name, std::string_view key);
    /// False also if the pairs would be longer than 499 characters.
    bool commentRecordSet(UserInterface* parent, const std::string& name, std::string_view key,
                          std::string_view value);
    /// Moves the private pairs from the comment into a key of the record, as every edit does.
    bool separatePairs(UserInterface* parent, const std::string& name, bool workingCopy);
    /// Stores a fit in the working copy: coefficients by ascending power, c[0] to
    /// c[order].
    bool writeFitCoefficients(UserInterface* parent, const std::string& name, int order,
                              std::span<const double> coefficients);

    /// The display texts of the binary formats and the conversion types of an edition.
    [[nodiscard]] static std::vector<std::string_view> binaryFormatList(int edition);
    [[nodiscard]] static std::vector<std::string_view> conversionTypeList(int edition);

    // --- For passes over all records ----------------------------------------------------

    /// The numbers of all chunks, ascending. `status`, if given, reports a store that
    /// could not be listed; then there are none.
    [[nodiscard]] std::vector<std::int64_t> chunkNumbers(IoStatus* status = nullptr);
    /// A chunk, read if it is not in memory. After a change it must be passed to `store`.
    [[nodiscard]] std::shared_ptr<ProfileFile> chunk(std::int64_t number);
    /// Writes a chunk that was changed, in a `Batch` later, and indexes its names again.
    [[nodiscard]] IoStatus store(std::int64_t number, ProfileFile& chunk);
    /// Forgets the changes of a chunk that were not stored.
    void discardChanges(std::int64_t number, ProfileFile& chunk);

  private:
    struct Holder {
        std::string name;
        std::int64_t chunk;
    };
    struct Recent {
        std::int64_t number;
        std::shared_ptr<ProfileFile> file;
    };

    IoStatus touch();
    IoStatus writeStaged();
    IoStatus writeWaiting();
    IoStatus flush(std::int64_t number, ProfileFile& chunk);
    IoStatus list();
    void index();
    /// The sections from `first` on; 0 is what is before them.
    void indexChunk(std::int64_t number, const ProfileFile& chunk, std::size_t first = 1);
    void unindexChunk(std::int64_t number);
    void indexAgain(std::int64_t number, const ProfileFile& chunk);
    void setSize(std::int64_t number, std::uint64_t size);
    [[nodiscard]] const Holder* nearest(const std::vector<Holder>& holders, std::string_view name,
                                        bool exact) const;
    [[nodiscard]] std::int64_t chunkForNewRecord() const;
    void forgetChunk(std::int64_t number);
    void documentChanged(const DocumentChange& change) override;
    IoStatus writePending() override;
    void followChunk(std::int64_t number);

    void fillDefaults(ProfileFile& chunk, const std::string& name, bool asTemplate) const;
    bool removeComment(UserInterface* parent, const std::string& measurement);
    IoStatus putComment(const std::string& measurement, const std::string& text,
                        bool toWorkingCopy);
    /// Deletes the comment of a working copy, if there is one.
    bool removeCommentCopy(UserInterface* parent, const std::string& path) const;
    /// Finds whether there is a comment file. False if that cannot be known, which is
    /// reported: a comment taken for missing would be deleted.
    bool findComment(UserInterface* parent, const std::string& path, bool& found) const;
    bool copyComment(UserInterface* parent, const std::string& from, const std::string& to) const;
    /// True if "DATA1.TMP" holds the record.
    [[nodiscard]] bool isInWorkingCopy(const std::string& name) const;
    /// Changes the record that `name` means, in the working copy or in its chunk.
    bool edit(UserInterface* parent, const std::string& name, bool workingCopy,
              const std::function<bool(ProfileFile&, const std::string& section)>& change);
    bool report(UserInterface* parent, const IoStatus& status, std::string_view action) const;

    DocumentContext& context_;
    bool listed_ = false;
    bool indexed_ = false;
    std::int64_t remembered_ = 0;
    std::map<std::int64_t, std::uint64_t> sizes_;
    std::set<std::int64_t> roomy_;  ///< chunks that take another record
    std::int64_t firstMissing_ = 0;
    std::unordered_set<std::string> commentFiles_;                ///< names
    std::unordered_map<std::string, std::vector<Holder>> names_;  ///< by lower-case name
    std::unordered_map<std::int64_t, std::vector<std::string>> namesOfChunk_;
    std::list<Recent> recent_;
    bool isBatch_ = false;
    std::map<std::int64_t, std::shared_ptr<ProfileFile>> waiting_;  ///< changed in a `Batch`
    std::optional<UntouchedRecords> untouched_;
    StagedChunks staged_;
    bool stagedInOperation_ = false;  ///< and not by the load of the document
};

}  // namespace kavu
