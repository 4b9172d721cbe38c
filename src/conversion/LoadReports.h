// How the load of the C group reports a file that fails.
#pragma once

#include <string_view>

namespace kavu {

struct DocumentContext;
class IoStatus;
class UserInterface;

/// Message 314: the path and the system's reason.
void reportUnreadable(const DocumentContext& context, UserInterface* parent,
                      const IoStatus& status);
/// Message 313. `name` is shown for the file; empty shows its path.
void reportUnwritable(const DocumentContext& context, UserInterface* parent, const IoStatus& status,
                      std::string_view action, std::string_view name = {});

}  // namespace kavu
