// The save of the C group: all conversion records are written anew as TMATS commands.
#pragma once

namespace kavu {

struct DocumentContext;
class ConversionStore;
class FileWriter;
class UserInterface;

/// Writes all records to the file that is being built, in the order of their chunks, with
/// group indices from 1 without holes, in the document's edition. Changed calibrations go
/// to the update file as well.
///
/// False if it was cancelled, or if a chunk or a comment could not be read (message 407)
/// or a chunk not be written (313). A failure of `output` is its owner's to report.
bool saveConversionGroup(DocumentContext& context, ConversionStore& store, UserInterface* parent,
                         FileWriter& output);

}  // namespace kavu
