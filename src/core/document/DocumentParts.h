// The parts of an open document, made and tied together in the one order that works: of the editor,
// of a session that reads a file without one, and of every program that tests or measures a pass.
#pragma once

#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/DocumentHistory.h"
#include "core/files/Environment.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Clock.h"

#include <string>

namespace kavu {

/// The working store is not active yet, and no step is installed.
struct DocumentParts {
    /// The clock and the random source must outlive it. An empty settings path is that of settings
    /// that are never kept.
    DocumentParts(const Environment& environment, const Clock& clock, RandomSource& random,
                  const std::string& settingsPath)
        : settings(settingsPath),
          store(environment),
          files(store),
          messages(store),
          ticker(clock),
          history(files, document),
          context{clock,    ticker, random,   settings, store,  files,
                  messages, reader, document, steps,    history} {}
    DocumentParts(const DocumentParts&) = delete;
    DocumentParts& operator=(const DocumentParts&) = delete;

    ProfileSettings settings;
    WorkingStore store;
    DocumentFiles files;
    Messages messages;
    SecondTicker ticker;
    TmatsReader reader;
    TmatsDocument document;
    DocumentSteps steps;
    DocumentHistory history;
    DocumentContext context;
};

}  // namespace kavu
