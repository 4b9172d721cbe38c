// The data links of a TMATS XML document: their PCM, bus, PAM and message groups, and the
// conversion records of their measurements.
#pragma once

#include "xml/bridge/write/ConversionWriter.h"
#include "xml/bridge/write/ExportRun.h"
#include "xml/bridge/write/PlanWriter.h"

#include <string_view>

namespace kavu {

class LinkWriter {
  public:
    /// Both must outlive the writer.
    LinkWriter(ExportRun& run, ConversionWriter& conversions)
        : run_(run), conversions_(conversions) {}

    /// Writes one link. False after a cancel.
    bool write(const SdkLink& link);

  private:
    bool writeAll(const SdkLink& link);
    bool writeOne(const SdkLink& link);
    bool writePcm(const SdkLink& link, bool hasBus);
    void writeSyncPattern(PlanWriter& plan, const ElementStep& step);
    bool writeSimple(const SdkLink& link, char letter, std::string_view element,
                     std::span<const PlanStep> steps, std::string_view without = {});
    bool writeBus(const SdkLink& link, std::string_view without) {
        return writeSimple(link, 'B', "BusAttributes", busPlan(), without);
    }

    ExportRun& run_;
    ConversionWriter& conversions_;
    bool isParsed_ = true;  ///< of the link: its measurements can be used
};

}  // namespace kavu
