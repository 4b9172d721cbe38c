#include "groups/NamesInStreams.h"

#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "groups/DataSources.h"
#include "groups/MeasurementNames.h"

#include <algorithm>

namespace kavu {

int streamNumberOf(DocumentContext& context, UserInterface* parent, std::string_view link) {
    std::vector<std::string> links;
    (void)gatherDataLinks(context, parent, links);
    const auto it = std::find(links.begin(), links.end(), link);
    return it == links.end() ? 0 : static_cast<int>(it - links.begin()) + 1;
}

bool isFreeInOtherStreams(const DocumentContext& context, UserInterface* parent,
                          const MeasurementNames& names, std::string_view name, int stream) {
    const auto other = names.checking() ? names.otherStream(name, stream) : std::nullopt;
    if (!other) {
        return true;
    }
    context.messages.show(parent, 455, title::kError, kErrorBox, name, std::to_string(*other));
    return false;
}

}  // namespace kavu
