// The way out: the group files are joined into one TMATS file, and a document is closed.
#pragma once

#include "core/TmatsDocument.h"

#include <string>

namespace kavu {

class ByteSource;

/// Copies the commands of one group file into the file that is being built.
bool copyGroupFile(DocumentContext& context, UserInterface* parent, ByteSource& source,
                   FileWriter& target, const std::string& progressText, unsigned& lineCounter,
                   bool withComments);
/// Puts the banner at the head of the G file; does nothing below edition 1999. Without the setting
/// that keeps them all comments go, and every command with "COMMENT:" in its text, which is logged.
bool writeBanner(DocumentContext& context, UserInterface* parent);
/// Sets `G\FN` to the name of the file without its folder; does nothing below edition
/// 2009. Logs every command that gets the name because its value holds "G\FN:".
bool writeFileNameField(DocumentContext& context, UserInterface* parent, const std::string& path);

/// Saves under the document's path; without one, or for a read-only file, as
/// `saveDocumentAs`.
bool saveDocument(DocumentContext& context, UserInterface* parent);
/// Asks for a name and saves under it.
bool saveDocumentAs(DocumentContext& context, UserInterface* parent);
/// Joins the group files into the file at this path, which becomes the document's. The file is
/// replaced when the new one is complete, or is written in place, as `SaveTarget`, and copied to
/// its
/// ".bak" before that if the setting says so. If it is the document's and another program has
/// changed it since, asks first (`askAboutChangedFile`). The two functions above go the same way.
bool saveDocumentTo(DocumentContext& context, UserInterface* parent, const std::string& path);

enum class CloseResult { Closed = 1, Cancelled = 2 };
/// Asks to save a changed document, and closes it.
CloseResult closeDocument(DocumentContext& context, UserInterface* parent);
/// Closes the document, and asks nothing: what was changed in it is lost.
void dropDocument(DocumentContext& context, UserInterface* parent);

}  // namespace kavu
