#include "pcm/model/DuplicateNames.h"

#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "groups/DataSources.h"
#include "groups/MeasurementNames.h"
#include "pcm/PcmFormat.h"

#include <algorithm>

namespace kavu {

int streamNumber(PcmFormat& format, UserInterface* parent) {
    std::vector<std::string> links;
    (void)gatherDataLinks(format.context(), parent, links);
    const auto it = std::find(links.begin(), links.end(), format.streamName.str());
    return it == links.end() ? 0 : static_cast<int>(it - links.begin()) + 1;
}

bool checkNameInOtherStreams(PcmFormat& format, UserInterface* parent,
                             const MeasurementNames& names, std::string_view name, int stream) {
    const auto other = names.checking() ? names.otherStream(name, stream) : std::nullopt;
    if (!other) {
        return true;
    }
    format.context().messages.show(parent, 455, title::kError, kErrorBox, name,
                                   std::to_string(*other));
    return false;
}

bool askEuChange(PcmFormat& format, UserInterface* parent, const MeasurementNames& names,
                 std::string_view name, int stream, bool deleting) {
    if (!names.checking() || !names.measurementInOtherStream(name, stream)) {
        return true;
    }
    const std::string_view verb = deleting ? "delete" : "rename";
    return format.context().messages.show(parent, 457, title::kNote, kYesNoBox, verb, name, verb,
                                          verb, verb, verb) == Button::Yes;
}

}  // namespace kavu
