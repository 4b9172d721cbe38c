// The file of the open document, as another program may have left it since it was opened or saved.
#pragma once

#include <string>

namespace kavu {

struct DocumentContext;
struct TmatsDocument;
class UserInterface;

enum class DiskState { Same, Changed, Missing };
/// Whether the file at the document's path is still the one that was opened or saved last; Same
/// without a document or a path.
[[nodiscard]] DiskState diskState(const TmatsDocument& document);

/// True if a save under the path would overwrite what another program has written to the
/// document's file, whatever name the path has for it.
[[nodiscard]] bool isChangedByAnother(const TmatsDocument& document, const std::string& path);

enum class ChangedFileChoice { Overwrite, Reopen, SaveElsewhere, Cancel };
/// Asks what a save is to do with such a file (the question `changed-file`). Cancel without a
/// parent. Reopen is offered if its step is installed.
[[nodiscard]] ChangedFileChoice askAboutChangedFile(const DocumentContext& context,
                                                    UserInterface* parent, const std::string& path);

}  // namespace kavu
