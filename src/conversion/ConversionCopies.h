// Keeps all files of the conversion records with the sheet of a stream, whose Cancel undoes
// changes of the records made while it was open.
#pragma once

namespace kavu {

class ConversionStore;
class Transaction;
class UserInterface;

/// Keeps the files as they are now, including those that are only in memory. False, with a
/// report, if not all of them could be kept.
bool copyConversionFiles(Transaction& sheet, ConversionStore& conversions, UserInterface* parent);
/// Takes the sheet back, and the files with it. False if a file could not be put back, which is
/// reported; its kept contents stay.
bool restoreConversionFiles(Transaction& sheet, UserInterface* parent);

}  // namespace kavu
