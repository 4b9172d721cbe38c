// The KAVU-Update conversion file: the calibrations that were changed since the last save,
// as plain text from which a separate tool applies them to another TMATS file.
#pragma once

#include "core/files/FileIo.h"
#include "core/files/ProfileFile.h"

#include <string_view>

namespace kavu {

struct DocumentContext;
class UserInterface;

class UpdateFile {
  public:
    UpdateFile(DocumentContext& context, UserInterface* parent)
        : context_(context), parent_(parent) {}

    /// Opens the file if the settings ask for one: `EnableUpd`, `UpdPath`, `UpdAppend`. A
    /// file that cannot be opened is reported with message 313 ("Unable to"), and nothing
    /// is written to it: the save goes on, and the calibrations wait for the next one.
    void open();
    /// Writes a record if it was changed from the editing pages and is a pair set or
    /// coefficients. True if it was written: the mark of the change can then be removed.
    bool offer(const ProfileFile::Section& record, std::string_view type);
    /// Flushes what was written to the disk; false if that failed, which has been
    /// reported.
    bool flush();
    void close();

  private:
    void writePairs(const ProfileFile::Section& record);
    void writeCoefficients(const ProfileFile::Section& record);
    bool report(const IoStatus& status);

    DocumentContext& context_;
    UserInterface* parent_;
    FileWriter file_;
};

}  // namespace kavu
