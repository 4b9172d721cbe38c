// The way in for a document: a TMATS file, or nothing in the case of a new one, becomes
// the group files of the working store.
#pragma once

#include "core/TmatsDocument.h"

#include <string>

namespace kavu {

/// Asks for a file and loads it.
bool openTmatsFileCommand(DocumentContext& context, UserInterface* parent);
/// Asks for a file; the filter index chosen, or 0.
int askOpenTmatsFile(DocumentContext& context, UserInterface* parent, std::string& path,
                     const std::string& title = "Open TMATS File");

struct LoadOptions {
    bool create = false;        ///< a new document; the path is not read
    bool makeTemplate = false;  ///< offer to fill a new document with a template
    bool project = false;       ///< leave the conversion pass out
};
/// Closes a present document, and opens the file. True if a document is open at the end:
/// the file's, or the present one if the user did not let it be closed (then the path of
/// the document is not `path`).
bool loadDocument(DocumentContext& context, UserInterface* parent, const std::string& path,
                  const LoadOptions& options = {});
/// The entry for a name from outside: quotes removed, blanks trimmed, and if no file has
/// that name, tried with ".tma" and ".tmt" behind it.
bool openFromName(DocumentContext& context, UserInterface* parent, const std::string& name);

/// Splits a file into group files. False if it was cancelled or has failed.
bool splitIntoGroupFiles(DocumentContext& context, UserInterface* parent, const std::string& path);
/// The whole road of an existing file, up to the migration.
bool readTmatsFile(DocumentContext& context, UserInterface* parent, const std::string& path,
                   bool project);
/// Makes the group files of a new document; true if any file was made.
bool createNewTmatsFile(DocumentContext& context, UserInterface* parent, bool makeTemplate);

}  // namespace kavu
