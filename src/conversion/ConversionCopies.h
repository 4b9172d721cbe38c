// Copies of all files of the conversion records, in a folder of the working store, for an
// editor whose Cancel takes back what it has done to the records.
#pragma once

namespace kavu {

class ConversionStore;
struct DocumentContext;
class UserInterface;

/// Copies the files as they are now, in place of earlier copies. False, with a report and
/// without any copy, if not all of them could be copied.
bool copyConversionFiles(DocumentContext& context, ConversionStore& conversions,
                         UserInterface* parent);
/// Puts the files back as they were copied, deletes those that have come since, and the
/// copies with them. Nothing happens without copies. False if a file could not be put back,
/// which is reported; its copy stays then.
bool restoreConversionFiles(DocumentContext& context, ConversionStore& conversions,
                            UserInterface* parent);
/// Deletes the copies, if there are any.
void deleteConversionCopies(DocumentContext& context, UserInterface* parent);

}  // namespace kavu
