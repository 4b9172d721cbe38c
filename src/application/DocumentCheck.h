// What opening the document would report if it were saved now.
#pragma once

#include "core/talk/Findings.h"

#include <optional>
#include <vector>

namespace kavu {

class Application;
class UserInterface;

/// Builds the open document into a scratch file, and reads that with all its streams as an opening
/// would. Nothing of the document changes, and no question is asked. Nothing if there is no
/// document, if it was cancelled, or if it failed, which is reported.
[[nodiscard]] std::optional<std::vector<Finding>> checkDocument(Application& application,
                                                                UserInterface* parent);

}  // namespace kavu
