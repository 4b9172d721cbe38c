// Brings the conversion records of a document to another edition, in one pass over each
// chunk.
#pragma once

#include "core/files/IoStatus.h"

namespace kavu {

class ConversionStore;
struct DocumentContext;
class UserInterface;

enum class RecordChange { To99, To96, Without00 };

/// True if any record changed. A doubtful date is reported to the log, see `reportDoubtfulDate`,
/// and so is a value that the document's edition, the target, makes shorter (315, "is too long"). A
/// record that loses its last value stays a record.
bool migrateRecords(DocumentContext& context, ConversionStore& conversions, UserInterface* parent,
                    RecordChange change, IoStatus& status);

}  // namespace kavu
