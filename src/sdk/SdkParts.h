// What a translator session has of other folders.
#pragma once

#include "groups/GroupScan.h"
#include "sdk/ConversionRecords.h"
#include "sdk/SessionDocument.h"
#include "sdk/SessionFiles.h"
#include "sdk/SessionTalk.h"

#include <map>
#include <string>
#include <utility>

namespace kavu {

struct SdkParts {
    /// `report` gets what the passes of the editor report. REQUIRES: as of `SessionDocument`.
    SdkParts(int instance, SessionTalk::Report report, const Environment& environment,
             const Clock& clock, RandomSource& randomSource)
        : random(randomSource),
          document(environment, clock, randomSource),
          files(document.store, instance),
          talk(std::move(report)) {}

    RandomSource& random;
    SessionDocument document;
    SessionFiles files;
    SessionTalk talk;
    TmatsReader reader;  ///< of handles, with the substitutions
    ConversionRecords conversions;
    std::map<char, GroupNames> names;  ///< of the groups that links and sources have
    std::map<std::string, std::size_t, std::less<>> linkPlaces;
};

}  // namespace kavu
