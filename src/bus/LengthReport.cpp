#include "bus/LengthReport.h"

#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "core/talk/Messages.h"

namespace kavu {

LengthReport::LengthReport(const DocumentContext& context, UserInterface* parent)
    : context_(context), parent_(parent) {
    // Without a parent nobody would take the log away again.
    context_.reader.setLogFile(parent == nullptr ? std::string() : context_.messages.logPath(),
                               &over_);
}

LengthReport::~LengthReport() {
    context_.reader.setLogFile({});
    if (over_ != 0) {
        context_.messages.showLog(parent_, std::string(working::kMessageLog));
    }
}

}  // namespace kavu
