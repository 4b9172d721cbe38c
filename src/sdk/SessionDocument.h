// The document of a translator session: what the readers of groups and streams work with, in a
// working store of its own, so that no document of an editor is ever touched.
#pragma once

#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/DocumentHistory.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Clock.h"
#include "pcm/PcmFormat.h"

namespace kavu {

/// The parts in the order in which they are made. The clock and the random source must outlive it.
struct SessionDocument {
    SessionDocument(const Environment& environment, const Clock& clock, RandomSource& random)
        : settings({}),
          store(environment),
          files(store),
          messages(store),
          ticker(clock),
          history(files, document),
          context{clock,    ticker, random,   settings, store,  files,
                  messages, reader, document, steps,    history},
          format(context) {}
    SessionDocument(const SessionDocument&) = delete;
    SessionDocument& operator=(const SessionDocument&) = delete;

    ProfileSettings settings;  ///< the defaults: those of the user are about editing
    WorkingStore store;
    DocumentFiles files;
    Messages messages;
    SecondTicker ticker;
    TmatsReader reader;
    TmatsDocument document;
    DocumentSteps steps;
    DocumentHistory history;
    DocumentContext context;
    PcmFormat format;  ///< the stream that was asked for last
};

}  // namespace kavu
