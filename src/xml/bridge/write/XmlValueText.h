// Values of a TMATS file as they are written to a TMATS XML document.
#pragma once

#include "xml/bridge/BridgeValues.h"

#include <string>
#include <string_view>

namespace kavu {

/// A text as it is in an element or attribute. Bytes that are not UTF-8 are read as Windows-1252;
/// what XML cannot hold becomes U+FFFD.
///
/// The classic dialect replaces the umlauts and the sharp s by their names, then the markup, the
/// ampersand of these names included, writes a line feed as a reference and a carriage return as a
/// blank. REQUIRES there: the reading session has replaced `&` and `<` before, so both are escaped
/// twice in the file.
[[nodiscard]] std::string xmlValueText(std::string_view value, XmlDialect dialect);

/// What is written of a text inside a comment: two hyphens in a row would end it, and so would one
/// at its end.
[[nodiscard]] std::string xmlCommentText(std::string_view text);

}  // namespace kavu
