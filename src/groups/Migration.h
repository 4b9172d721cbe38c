// The edition of a document: how it is found, and how the group files and the conversion
// records are rewritten when a document gets another edition than its file.
#pragma once

#include "core/files/IoStatus.h"
#include "groups/StreamMigration.h"

#include <functional>

namespace kavu {

class ByteSource;
class ConversionStore;
struct DocumentContext;
class UserInterface;

/// The target edition of a document whose group files have just been made. `inputVersion`
/// becomes the edition of the files: that of `G\106`, else that of the settings. Logs 442
/// ("Invalid Version Number") for an edition before 1999 (which then counts as missing)
/// and 443 ("does not support this version") for one after 2011 (which then counts as
/// 2011). A G file that cannot be read is reported, and is in `failure`.
int detectVersions(DocumentContext& context, UserInterface* parent, int& inputVersion,
                   IoStatus* failure = nullptr);

/// True if the commands of a source, read from its beginning, state an edition that counts: one
/// before 1999 does not. Reports nothing.
[[nodiscard]] bool statesEdition(ByteSource& source);

/// Converts the measurements of the stream in this P file to word/frame locations.
using ConvertStreamStep = std::function<StreamConversion(UserInterface*, int pIndex)>;

/// Rewrites the files from one edition to the other and makes `target` the document's
/// version. True if any file changed, which is reported by note 444 ("successfully
/// converted"). A step that is empty counts as done.
///
/// What the target cannot say of the streams is logged, a line for each stream or measurement, and
/// listed in a box in place of note 444: streams and measurements without word/frame locations
/// from 106-11 on, ranges with an end before 106-09, word/frame locations before 106-04.
///
/// A file that cannot be read or written is reported, is in `failure` and ends the migration; so
/// does a cancel (ECANCELED), without a report. Neither can be undone here: the caller abandons
/// the document.
bool migrateDocument(DocumentContext& context, ConversionStore& conversions, UserInterface* parent,
                     int input, int target, const ConvertStreamStep& convertStream,
                     IoStatus* failure = nullptr);

/// Sets `G\106`, or removes it for a target before 1999. True if the G file changed; a
/// failure is reported and is in `failure`.
bool setVersionField(DocumentContext& context, UserInterface* parent, int target,
                     IoStatus* failure = nullptr);

/// What the dialog "TMATS Version Numbers" returns on OK. Editions are years.
struct VersionOptions {
    int inputVersion = 2011;  ///< of a file that does not state it
    int method = 1;           ///< 1: save in the edition that was read, 2: in `outputVersion`
    int outputVersion = 2011;
};
[[nodiscard]] VersionOptions readVersionOptions(const DocumentContext& context);
/// False, after note 441 ("already open and changed"), if the open document has unsaved
/// changes: the dialog is not shown.
bool mayEditVersionOptions(DocumentContext& context, UserInterface* parent);
/// Writes the settings and brings an open document to the target edition. True if a setting or
/// a file changed. After a failure or a cancel the document is in the edition that it had;
/// only if its files could not be put back either, `failure` says so, and the caller abandons
/// the document. REQUIRES: `mayEditVersionOptions`, which is checked again here.
bool editVersionOptions(DocumentContext& context, ConversionStore& conversions,
                        UserInterface* parent, const VersionOptions& options,
                        const ConvertStreamStep& convertStream, IoStatus* failure = nullptr);

}  // namespace kavu
