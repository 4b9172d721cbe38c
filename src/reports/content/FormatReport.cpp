#include "reports/content/FormatReport.h"

#include "core/TmatsDocument.h"
#include "core/text/Printf.h"
#include "pcm/PcmFormat.h"
#include "reports/layout/ReportLayout.h"
#include "vocabulary/PGroupFields.h"

#include <span>
#include <utility>

namespace kavu {

namespace {

using Shown = std::pair<std::string_view, std::string_view>;

// The words of this report, which differ from those of the sheet in places.
constexpr Shown kEncryption[] = {{"E", "Encrypted"}, {"U", "Unencrypted"}};
constexpr Shown kDirection[] = {{"N", "Normal"}, {"R", "Reversed"}};
constexpr Shown kPolarity[] = {{"N", "Normal"}, {"I", "Inverted"}};
constexpr Shown kYesNo[] = {{"Y", "Yes"}, {"N", "No"}};
constexpr Shown kRandomizer[] = {{"STD", "Standard"}, {"OTH", "Other"}};
constexpr Shown kParities[] = {{"EV", "Even"}, {"NO", "None"}, {"OD", "Odd"}};
constexpr Shown kWordOrders[] = {{"M", "MSB"}, {"L", "LSB"}, {"D", "Default"}, {"", "Default"}};
constexpr Shown kParityOrders[] = {{"L", "Leads Word"}, {"T", "Trails Word"}};
constexpr Shown kSyncTypes[] = {{"FPT", "Fixed Pattern"}, {"OTH", "Other"}};
constexpr std::string_view kOtherCode = "OTHER";

/// The text of a stored value; the value itself if none is known.
std::string shownValue(std::span<const Shown> texts, std::string_view value) {
    for (const auto& [stored, shown] : texts) {
        if (stored == value) {
            return std::string(shown);
        }
    }
    return std::string(value);
}

std::string codeText(const PcmFormat& format) {
    auto text = format.pcmCode.str();
    if (text == kOtherCode && !format.nonStandardCode.empty()) {
        text += formatPrintf("(%s)", format.nonStandardCode);
    }
    return text;
}

class FormatLines {
  public:
    explicit FormatLines(std::vector<ReportLine>& lines) : lines_(lines) {}

    void section(std::string heading, bool isFirst = false) {
        if (!isFirst) {
            blank();
        }
        lines_.push_back({.lead = std::move(heading), .isHeading = true});
        blank();
    }
    void heading(std::string lead) {
        lines_.push_back({.lead = std::move(lead), .isHeading = true});
    }
    void field(std::string lead, std::string value) {
        lines_.push_back({.lead = std::move(lead), .value = std::move(value)});
    }
    void field(std::string lead, int value) { field(std::move(lead), std::to_string(value)); }

  private:
    void blank() { lines_.push_back({.isOnPaperOnly = true}); }

    std::vector<ReportLine>& lines_;
};

void addInputData(FormatLines& lines, const PcmFormat& format) {
    lines.section("Input Data", true);
    lines.field("\tPCM Code:\t\t\t", codeText(format));
    lines.field("\tEncryption:\t\t\t", shownValue(kEncryption, format.encryption));
    lines.field("\tBit Rate:\t\t\t", format.bitRate.str() + " (bps)");
    lines.field("\tData Direction:\t\t\t", shownValue(kDirection, format.dataDirection));
    lines.field("\tPolarity:\t\t\t", shownValue(kPolarity, format.polarity));
    lines.field("\tData Randomized:\t\t", shownValue(kYesNo, format.dataRandomized));
    lines.field("\tAuto Polarity Correction:\t", shownValue(kYesNo, format.autoPolarityCorrection));
    lines.field("\tRandomizer Length:\t\t", shownValue(kRandomizer, format.randomizerLength));
}

void addFormatData(FormatLines& lines, const PcmFormat& format) {
    lines.section("Format Data");
    lines.field("\tType Format:\t\t\t", format.typeFormat.str());
    lines.field("\tCommon Word Length:\t\t", format.commonWordLength);
    lines.field("\tParity:\t\t\t\t", shownValue(kParities, format.parity));
    lines.field("\tWord Transfer Order:\t\t", shownValue(kWordOrders, format.wordTransferOrder));
    lines.field("\tParity Transfer Order:\t\t",
                shownValue(kParityOrders, format.parityTransferOrder));
}

void addFrames(FormatLines& lines, const PcmFormat& format) {
    lines.section("Minor Frame");
    lines.field("\tNumber Of Minor Frames:\t\t", format.numberOfFrames);
    lines.field("\tBits Per Minor Frame:\t\t", format.bitsPerMinorFrame);
    lines.field("\tWords Per Minor Frame:\t\t", format.wordsPerMinorFrame);
    lines.section("Frame Sync");
    lines.field("\tSync Type:\t\t", shownValue(kSyncTypes, format.syncType));
    lines.field("\tSync Pattern Length:\t", format.syncLength);
    lines.field("\tSync Pattern:\t\t", format.syncPattern.str());
    lines.section("Sync Criteria");
    lines.heading("\tIn Sync");
    lines.field("\t\tCriteria:\t\t", format.inSyncCriteria.str());
    lines.field("\t\tSync Pattern:\t\t", format.inSyncPatternCriteria.str());
    lines.heading("\tOut Of Sync");
    lines.field("\t\tNumber Of Disagrees:\t", format.outOfSyncDisagrees.str());
    lines.field("\t\tSync Pattern:\t\t", format.outOfSyncPatternCriteria.str());
}

}  // namespace

ReportContent makeFormatReport(const DocumentContext& context, const ReportLayout& layout,
                               const PcmFormat& format) {
    ReportContent report{
        .kind = ReportKind::Format,
        .head = reportHead(context, layout, format.streamName, layout_key::kFormatTitle,
                           layout_key::kFormatLeft, layout_key::kFormatRight),
        .sheet = "PCM Format"};
    FormatLines lines(report.lines);
    addInputData(lines, format);
    addFormatData(lines, format);
    addFrames(lines, format);
    return report;
}

}  // namespace kavu
