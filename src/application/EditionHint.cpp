#include "application/EditionHint.h"

#include "application/Application.h"
#include "application/TrialReading.h"
#include "core/TmatsReader.h"
#include "core/files/FileIo.h"
#include "core/talk/UserInterface.h"
#include "core/text/Edition.h"
#include "core/text/Printf.h"
#include "groups/Migration.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace kavu {

namespace {

/// The number of reports of a reading; nothing if it was cancelled or did not open.
std::optional<std::size_t> reportsOf(const Application& application, UserInterface* parent,
                                     const std::string& path, int edition) {
    TrialReading trial(application, parent);
    return trial.start() && trial.read(path, edition, {})
               ? std::optional(trial.collector().findings().size())
               : std::nullopt;
}

std::vector<int> othersByDistance(int edition) {
    std::vector<int> others(kEditions.begin(), kEditions.end());
    std::erase(others, edition);
    std::stable_sort(others.begin(), others.end(), [edition](int a, int b) {
        return std::abs(a - edition) < std::abs(b - edition);
    });
    return others;
}

bool mayTry(const std::string& path) {
    std::uint64_t size = 0;
    if (path.empty() || !probeSize(path, size).ok() || size > kLargestTried) {
        return false;
    }
    ByteSource file;
    return file.open(path).ok() && !statesEdition(file);
}

std::string counted(std::size_t count) {
    return count == 1 ? std::string("1 message") : formatPrintf("%lu messages", count);
}

}  // namespace

std::optional<EditionHint> findBetterEdition(Application& application, UserInterface* parent) {
    auto& context = application.context();
    const auto path = context.document.path;
    if (!context.document.open || !mayTry(path)) {
        return std::nullopt;
    }
    const ProgressScope progress(parent, ProgressMode::WithCancel, false);
    setProgressText(parent, "Looking whether another edition of IRIG 106 fits this file better");
    EditionHint hint;
    hint.readAs = readVersionOptions(context).inputVersion;
    const auto reports = reportsOf(application, parent, path, hint.readAs);
    if (!reports || *reports == 0) {
        return std::nullopt;
    }
    hint.reports = *reports;
    hint.betterReports = *reports;
    for (const int edition : othersByDistance(hint.readAs)) {
        if (hint.betterReports == 0) {
            break;
        }
        const auto others = reportsOf(application, parent, path, edition);
        if (cancelRequested(parent)) {
            return std::nullopt;
        }
        if (others && *others < hint.betterReports) {
            hint.better = edition;
            hint.betterReports = *others;
        }
    }
    return hint.better == 0 ? std::nullopt : std::optional(hint);
}

std::string hintText(const EditionHint& hint) {
    return formatPrintf(
        "The file does not state its edition (G\\106), and was read as %s of the settings: %s, "
        "its streams included. Read as %s it has %s.",
        editionText(hint.readAs), counted(hint.reports), editionText(hint.better),
        hint.betterReports == 0 ? std::string("none") : counted(hint.betterReports));
}

}  // namespace kavu
