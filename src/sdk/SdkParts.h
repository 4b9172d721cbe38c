// What a translator session has of other folders.
#pragma once

#include "core/document/DocumentParts.h"
#include "groups/GroupScan.h"
#include "pcm/PcmFormat.h"
#include "sdk/ConversionRecords.h"
#include "sdk/SessionFiles.h"
#include "sdk/SessionTalk.h"

#include <map>
#include <string>
#include <utility>

namespace kavu {

struct SdkParts {
    /// `report` gets what the passes of the editor report. REQUIRES: as of
    /// `DocumentParts`.
    SdkParts(int instance, SessionTalk::Report report, const Environment& environment,
             const Clock& clock, RandomSource& randomSource)
        : random(randomSource),
          document(environment, clock, randomSource, {}),
          format(document.context),
          files(document.store, instance),
          talk(std::move(report)) {}

    RandomSource& random;
    DocumentParts document;  ///< a store of its own; the settings are the defaults: the user's are
                             ///< about editing
    PcmFormat format;        ///< the stream that was asked for last
    SessionFiles files;
    SessionTalk talk;
    TmatsReader reader;  ///< of handles, with the substitutions
    ConversionRecords conversions;
    std::map<char, GroupNames> names;  ///< of the groups that links and sources have
    std::map<std::string, std::size_t, std::less<>> linkPlaces;
};

}  // namespace kavu
