// What a translator session has of other folders.
#pragma once

#include "groups/GroupScan.h"
#include "sdk/ConversionRecords.h"
#include "sdk/SessionDocument.h"
#include "sdk/SessionFiles.h"
#include "sdk/SessionTalk.h"
#include "sdk/TranslatorSdk.h"

#include <map>
#include <string>

namespace kavu {

struct TranslatorSdk::Parts {
    Parts(TranslatorSdk& owner, const Environment& environment, const Clock& clock,
          RandomSource& randomSource)
        : random(randomSource),
          document(environment, clock, randomSource),
          files(document.store, owner.instance_),
          talk([&owner](const std::string& text) { owner.writeError(text); }) {}

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
