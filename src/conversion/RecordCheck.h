// The check of the C group while it is loaded: which commands make records, and what is wrong
// with them.
#pragma once

#include "conversion/ChunkScan.h"
#include "conversion/RawGroup.h"
#include "conversion/RawRecords.h"
#include "core/files/FileIo.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kavu {

struct DocumentContext;
class KeyValueStore;
class UserInterface;

class RecordCheck {
  public:
    /// `names` holds the measurement names of the whole load; `edition` rules the limits.
    RecordCheck(DocumentContext& context, KeyValueStore& names, UserInterface* parent, int edition)
        : context_(context), names_(names), parent_(parent), edition_(edition) {}

    /// Makes the working file of the check: "DATA2.TMP" holds the names by group index
    /// (message 313 "Unable to" if it cannot be made).
    bool open();
    /// Checks the commands of a chunk, which has been scanned, and notes in it what was found.
    /// `percent` is for the progress bar. False if it was cancelled, or a name could not be noted,
    /// which has been reported. Logs 318 for a name and 315 for a value that is too long, 317 for a
    /// duplicate measurement, and without a number each count that does not say what is there; the
    /// document counts as changed where a value or a record is not kept.
    bool check(RawGroup::Chunk& chunk, const ChunkScan& scan, double percent);
    /// Closes the working file; false if it was not complete. Notes how many groups have no
    /// name, how many commands are no part of their record, and how many change their spelling.
    bool close();

    /// True if a record has a key of the program: what is to be done with it is known only
    /// when it is taken apart.
    [[nodiscard]] bool foundKeysOfTheProgram() const { return foundKeysOfTheProgram_; }

  private:
    /// What the chunk holds of one group index.
    struct Group {
        bool isRefused = false;  ///< its name belongs to another record, as 317 has reported
        std::string_view name;   ///< within the bytes of the chunk
    };
    bool checkName(RawGroup::Chunk& chunk, const ChunkScan::Notable& notable, double percent);
    void takeFinding(const RecordUse::Finding& finding);
    void restyle(std::size_t commands, std::string_view example);
    void leaveOut(std::size_t commands, std::string_view example);
    void reportTooLong(const ChunkScan::Notable& notable);
    void showProgress(std::string_view name, double percent);

    DocumentContext& context_;
    KeyValueStore& names_;
    UserInterface* parent_;
    int edition_;
    unsigned measurements_ = 0;
    int unnamed_ = 0;          ///< group indices without a name
    std::size_t leftOut_ = 0;  ///< commands that are no part of their record
    std::string firstLeftOut_;
    std::size_t restyled_ = 0;  ///< commands that are written in another spelling
    std::string firstRestyled_;
    std::size_t polled_ = 0;  ///< commands since the user interface was last asked
    bool foundKeysOfTheProgram_ = false;
    FileWriter namesFile_;

    ByGroupIndex<Group> groups_;  ///< of the chunk in work
};

}  // namespace kavu
