// All files of the conversion records, kept with the sheet of a stream, whose Cancel takes back
// what was done to the records while it was open.
#pragma once

namespace kavu {

class ConversionStore;
class Transaction;
class UserInterface;

/// Keeps the files as they are now, those that are in memory only among them. False, with a
/// report, if not all of them could be kept.
bool copyConversionFiles(Transaction& sheet, ConversionStore& conversions, UserInterface* parent);
/// Takes the sheet back, and the files with it. False if a file could not be put back, which is
/// reported; what was kept of it stays.
bool restoreConversionFiles(Transaction& sheet, UserInterface* parent);

}  // namespace kavu
