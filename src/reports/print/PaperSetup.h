// The paper that reports and calibration sheets are printed on.
#pragma once

#include "drawing/DrawingSurface.h"

#include <optional>

namespace kavu {

class ProfileSettings;

/// The numbers are those of the settings.
enum class PaperSize { A4 = 0, Letter };

struct PaperSetup {
    PaperSize size = PaperSize::A4;
    bool isLandscape = false;

    bool operator==(const PaperSetup&) const = default;
};

/// Reports are wide, sheets are high; each keeps its own orientation.
enum class PaperUse { Reports, Sheets };

[[nodiscard]] PaperSetup readPaper(const ProfileSettings& settings, PaperUse use);
void writePaper(ProfileSettings& settings, PaperUse use, const PaperSetup& paper);
/// Its size in points of 1/72 inch.
[[nodiscard]] DrawingSize paperPoints(const PaperSetup& paper);
/// Whether a surface is wider than it is high; nothing if it has no size.
[[nodiscard]] std::optional<bool> isLandscape(const DrawingSurface& surface);

}  // namespace kavu
