// The document of the pictures in the edition of a picture.
#pragma once

#include "core/TmatsDocument.h"
#include "gallery/Screenshots.h"

namespace kavu {

struct EditionStage {
    /// REQUIRES: there is a document.
    EditionStage(ScreenshotStage& stage, int edition)
        : document(stage.document->document),
          context{stage.document->clock,    stage.document->ticker, stage.document->random,
                  stage.document->settings, stage.document->store,  stage.document->files,
                  stage.document->messages, stage.document->reader, document,
                  stage.document->steps,    stage.document->history},
          form(stage.form) {
        document.version = edition;
        form.edition = edition;
    }
    EditionStage(const EditionStage&) = delete;
    EditionStage& operator=(const EditionStage&) = delete;

    TmatsDocument document;
    DocumentContext context;
    FormContext form;
};

}  // namespace kavu
