#include "pcm/edit/FrameEditComment.h"

#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/files/FileIo.h"
#include "core/talk/Messages.h"
#include "core/text/Text.h"
#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"

namespace kavu {

namespace {

std::string commentPath(const PcmFormat& format) {
    return format.context().store.pathOf(kMeasurementComment);
}

}  // namespace

std::optional<std::string> readMeasurementComment(const PcmFormat& format, UserInterface* parent) {
    const auto& messages = format.context().messages;
    const auto path = commentPath(format);
    if (!fileExists(path)) {
        return std::string();
    }
    ByteSource source;
    auto status = source.open(path);
    if (status.ok() && source.size() > kMostComment) {
        messages.show(parent, 324, title::kError, kErrorBox);
        return std::nullopt;
    }
    std::string bytes;
    status = status.ok() ? readWholeFile(path, bytes) : status;
    if (!status.ok()) {
        messages.showFailure(parent, status, 325, title::kError, kErrorBox);
        return std::nullopt;
    }
    fromStoredForm(bytes);
    return bytes;
}

bool storeMeasurementComment(PcmFormat& format, UserInterface* parent, std::string_view comment) {
    const auto& messages = format.context().messages;
    if (comment.find(';') != std::string_view::npos) {
        messages.show(parent, 402, title::kIllegalValueEntered, kErrorBox);
        return false;
    }
    std::string bytes(comment);
    toStoredForm(bytes);
    if (bytes.size() > kMostComment) {
        messages.show(parent, 332, title::kError, kErrorBox);
        return false;
    }
    auto& files = format.context().files;
    const auto status = bytes.empty() ? files.removeIfThere(kMeasurementComment)
                                      : files.put(kMeasurementComment, bytes);
    if (!status.ok()) {
        messages.showFailure(parent, status, 333, title::kError, kErrorBox);
        return false;
    }
    format.changed = true;
    return true;
}

}  // namespace kavu
