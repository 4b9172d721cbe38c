// How the load of the C group reports a file that fails.
#pragma once

#include <string_view>

namespace kavu {

struct DocumentContext;
class IoStatus;
class UserInterface;

/// Message 314 ("Unable to read"): the path and the system's reason.
void reportUnreadable(const DocumentContext& context, UserInterface* parent,
                      const IoStatus& status);
/// Message 313 ("Unable to"). `name` is shown for the file; its path if that is empty.
void reportUnwritable(const DocumentContext& context, UserInterface* parent, const IoStatus& status,
                      std::string_view action, std::string_view name = {});

}  // namespace kavu
