#include "conversion/LoadReports.h"

#include "core/Messages.h"
#include "core/TmatsDocument.h"

namespace kavu {

void reportUnreadable(const DocumentContext& context, UserInterface* parent,
                      const IoStatus& status) {
    context.messages.showFailure(parent, status, 314, title::kErrorReadingConversion, kErrorBox,
                                 status.path());
}

void reportUnwritable(const DocumentContext& context, UserInterface* parent, const IoStatus& status,
                      std::string_view action, std::string_view name) {
    context.messages.showFailure(parent, status, 313, title::kErrorReadingConversion, kErrorBox,
                                 action, name.empty() ? std::string_view(status.path()) : name);
}

}  // namespace kavu
