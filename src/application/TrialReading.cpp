#include "application/TrialReading.h"

#include "application/Application.h"
#include "application/DocumentService.h"
#include "core/document/OpenDocument.h"
#include "core/talk/ProfileSettings.h"
#include "groups/CountCheck.h"
#include "groups/GroupScan.h"
#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"

#include <set>
#include <vector>

namespace kavu {

TrialReading::TrialReading(const Application& application, UserInterface* parent)
    : application_(application.makeAnother()), collector_(parent) {}

TrialReading::~TrialReading() {
    if (started_) {
        application_->documents().discard(nullptr);
        (void)application_->shutDown(nullptr);
    }
}

bool TrialReading::start() {
    started_ = application_->startUp(nullptr);
    return started_;
}

bool TrialReading::read(const std::string& path, int edition, const std::string& source) {
    auto& context = application_->context();
    // The file is looked at in its own edition, whatever it would be converted to.
    context.settings.overrideForThisRun(setting::kOutputMethod, 1);
    context.settings.overrideForThisRun(setting::kInputEdition, std::to_string(edition));
    collector_.setSource(source);
    return loadDocument(context, &collector_, path) && readStreams(source);
}

bool TrialReading::readStreams(const std::string& source) {
    auto& context = application_->context();
    std::vector<PcmLinks> formats;
    (void)readPcmLinks(context, &collector_, formats);
    std::set<std::string> loaded;
    for (const auto& format : formats) {
        // A link belongs to the first stream of its name.
        if (format.link.empty() || !loaded.insert(format.link).second) {
            continue;
        }
        collector_.setSource("Stream '" + format.link + "'", format.link);
        (void)loadPcmFormat(application_->pcmFormat(), &collector_, application_->pcmSteps(),
                            format.link);
        application_->pcmFormat().closeFormat();
        if (collector_.cancelRequested()) {
            return false;
        }
    }
    collector_.setSource(source);
    checkGroupCounts(context, &collector_);
    return !collector_.cancelRequested();
}

}  // namespace kavu
