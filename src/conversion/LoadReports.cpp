#include "conversion/LoadReports.h"

#include "core/TmatsDocument.h"
#include "core/talk/FileReports.h"

namespace kavu {

void reportUnreadable(const DocumentContext& context, UserInterface* parent,
                      const IoStatus& status) {
    context.messages.showFailure(parent, status, 314, title::kErrorReadingConversion, kErrorBox,
                                 status.path());
}

void reportUnwritable(const DocumentContext& context, UserInterface* parent, const IoStatus& status,
                      std::string_view action, std::string_view name) {
    reportFailedAction(context.messages, parent, status, title::kErrorReadingConversion, action,
                       name);
}

}  // namespace kavu
