#include "pcm/model/DuplicateNames.h"

#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "groups/MeasurementNames.h"
#include "groups/NamesInStreams.h"
#include "pcm/PcmFormat.h"

namespace kavu {

int streamNumber(PcmFormat& format, UserInterface* parent) {
    return streamNumberOf(format.context(), parent, format.streamName);
}

bool checkNameInOtherStreams(PcmFormat& format, UserInterface* parent,
                             const MeasurementNames& names, std::string_view name, int stream) {
    return isFreeInOtherStreams(format.context(), parent, names, name, stream);
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
