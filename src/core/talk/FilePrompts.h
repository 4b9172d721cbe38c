// The prompts for a TMATS file, and what is asked before one is chosen to be written.
#pragma once

#include "core/talk/UserInterface.h"

#include <optional>
#include <string>
#include <string_view>

namespace kavu {

class ProfileSettings;
struct TmatsDocument;

/// Asks for a file to open; the dialog starts in the folder of the open document, else of the last
/// one.
[[nodiscard]] FilePrompt openTmatsPrompt(const TmatsDocument& document,
                                         const ProfileSettings& settings, std::string title);
/// Asks for a file to save as: starts in the same folder, adds ".tma" to a name without an
/// extension, and asks before it takes another file than that of the open document. `path` is shown
/// at first, and may be empty.
[[nodiscard]] FilePrompt saveTmatsPrompt(const TmatsDocument& document,
                                         const ProfileSettings& settings, std::string title,
                                         std::string path);

/// The path, with the extension ('.tma') added if its file name has none. The name of a file that
/// is there is left as it is.
[[nodiscard]] std::string withExtension(const std::string& path, std::string_view extension);

/// The path with this extension (".xml") in place of the one that its file name has, or after it. A
/// dot at the start of a name begins no extension.
[[nodiscard]] std::string withOtherExtension(const std::string& path, std::string_view extension);

/// The question before a file is replaced, with its name, size and date. Nothing if there is no
/// such file, or if it is `own`, by whatever name.
[[nodiscard]] std::optional<std::string> overwriteQuestion(const std::string& path,
                                                           const std::string& own);
inline constexpr const char* kFileExistsTitle = "File Already Exists";

}  // namespace kavu
