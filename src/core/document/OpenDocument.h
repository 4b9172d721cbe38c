// Opening a document: a TMATS file, or nothing for a new one, becomes the group files of
// the working store.
#pragma once

#include "core/TmatsDocument.h"

#include <string>

namespace kavu {

/// Asks for a file and loads it.
bool openTmatsFileCommand(DocumentContext& context, UserInterface* parent);
/// Asks for a file; returns the filter index chosen, or 0 if cancelled.
int askOpenTmatsFile(DocumentContext& context, UserInterface* parent, std::string& path,
                     const std::string& title = "Open TMATS File");

struct LoadOptions {
    bool create = false;        ///< a new document; the path is not read
    bool makeTemplate = false;  ///< offer to fill a new document with a template
    bool project = false;       ///< leave the conversion pass out
};
/// Closes the open document, and opens the file, whose absolute path is then that of the document.
/// True if a document is open at the end: the file's, or the former one if the user did not let
/// it be closed. The log of the whole load is shown at its end, once.
bool loadDocument(DocumentContext& context, UserInterface* parent, const std::string& path,
                  const LoadOptions& options = {});
/// The file that a name from outside means: the name itself, or with ".tma" or ".tmt" after it; if
/// no file has such a name, the same with its quotes removed and blanks trimmed.
[[nodiscard]] std::string fileOfName(const std::string& name);
/// Opens that file.
bool openFromName(DocumentContext& context, UserInterface* parent, const std::string& name);

/// Splits a file into group files. False if it was cancelled or has failed.
bool splitIntoGroupFiles(DocumentContext& context, UserInterface* parent, const std::string& path);
/// All steps for an existing file, up to the migration. What they report is in the message log.
bool readTmatsFile(DocumentContext& context, UserInterface* parent, const std::string& path,
                   bool project);
/// Makes the group files of a new document; true if any file was made.
bool createNewTmatsFile(DocumentContext& context, UserInterface* parent, bool makeTemplate);

}  // namespace kavu
