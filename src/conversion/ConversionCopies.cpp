#include "conversion/ConversionCopies.h"

#include "conversion/ConversionStore.h"
#include "core/document/Transaction.h"
#include "core/talk/FileReports.h"
#include "core/talk/UserInterface.h"

namespace kavu {

bool copyConversionFiles(Transaction& sheet, ConversionStore& conversions, UserInterface* parent) {
    auto status = conversions.writeOut();
    if (status.ok()) {
        status = sheet.keepAll({"[kavu]*.C_*"});
    }
    if (!status.ok()) {
        reportUnableToWrite(parent, status);
    }
    return status.ok();
}

bool restoreConversionFiles(Transaction& sheet, UserInterface* parent) {
    setStatusText(parent, "Restoring EU files");
    const bool restored = sheet.takeBack(parent);
    setStatusText(parent, {});
    return restored;
}

}  // namespace kavu
