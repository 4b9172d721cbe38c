// The save of the C group: writes all conversion records as TMATS commands.
#pragma once

namespace kavu {

struct DocumentContext;
class ConversionStore;
class FileWriter;
class UserInterface;

/// Writes all records to the file that is being built, in the order of their chunks, with
/// group indices from 1 without gaps, in the document's edition. Changed calibrations go
/// to the update file as well.
///
/// False if it was cancelled, or if a chunk or a comment could not be read (message 407
/// "Unable to read") or a chunk not be written (313 "Unable to"). A failure of `output`
/// is for its owner to report.
bool saveConversionGroup(DocumentContext& context, ConversionStore& store, UserInterface* parent,
                         FileWriter& output);

}  // namespace kavu
