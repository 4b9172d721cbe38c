// Raw records in the form of their working files: a section for each, under its name.
#pragma once

#include "core/files/IoStatus.h"

#include <string>

namespace kavu {

class DocumentFiles;
class RawRecords;

/// Appends the sections of all records of a chunk to `text`. With `commentsOutside` the comments
/// go to files of their own; the status is that of the one that could not be written.
[[nodiscard]] IoStatus appendSections(DocumentFiles& files, const RawRecords& records,
                                      bool commentsOutside, std::string& text);

}  // namespace kavu
