// The conversion records of a document brought to another edition, one pass over each chunk.
#pragma once

#include "core/files/IoStatus.h"

namespace kavu {

class ConversionStore;
struct DocumentContext;
class UserInterface;

enum class RecordChange { To99, To96, Without00 };

/// True if any record changed. A date that needs a person's eye is reported to the log.
bool migrateRecords(DocumentContext& context, ConversionStore& conversions, UserInterface* parent,
                    RecordChange change, IoStatus& status);

}  // namespace kavu
