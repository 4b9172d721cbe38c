#include "conversion/UpdateFile.h"

#include "conversion/ConversionFields.h"
#include "core/TmatsDocument.h"
#include "core/talk/FileReports.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Clock.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "vocabulary/CGroupFields.h"

namespace kavu {

namespace {

// The receiving tool reads a fixed number of coefficients.
constexpr int kWrittenCoefficients = 10;

std::string_view field(const ProfileFile::Section& record, std::string_view key,
                       std::string_view otherwise = {}) {
    return trimTrailingBlanks(record.get(key, otherwise));
}

}  // namespace

bool UpdateFile::report(const IoStatus& status) {
    if (!status.ok()) {
        reportFailedAction(context_.messages, parent_, status, title::kErrorSaving, "Write/Create",
                           {}, kWarningBox);
    }
    return status.ok();
}

void UpdateFile::open() {
    const auto& settings = context_.settings;
    const auto path = settings.get(setting::kUpdatePath);
    if (!settings.get(setting::kWriteUpdates) || path.empty()) {
        return;
    }
    const bool append = settings.get(setting::kAppendUpdates);
    (void)report(file_.open(path, append ? WriteMode::Append : WriteMode::Truncate));
}

bool UpdateFile::offer(const ProfileFile::Section& record, std::string_view type) {
    const bool pairs = type == "PRS";
    if (!file_.isOpen() || (!pairs && type != "COE") || record.integer(recordkey::kChanged) == 0) {
        return false;
    }
    if (file_.position() == 0) {
        const auto now = context_.clock.now();
        file_.write(
            formatPrintf("\n* These items added by KAVU-9 TMATS Editor. Date: %s Time: %s\n",
                         dateText(now), timeText(now)));
    }
    file_.write(record.name());
    file_.write(", ");
    if (pairs) {
        writePairs(record);
    } else {
        writeCoefficients(record);
    }
    file_.write("\n\n");
    return true;
}

void UpdateFile::writePairs(const ProfileFile::Section& record) {
    file_.write("TABLE\n");
    for (int i = 1;; ++i) {
        const auto number = std::to_string(i);
        const auto telemetry = field(record, "PS3-" + number);
        const auto engineering = field(record, "PS4-" + number);
        if (telemetry.empty() || engineering.empty()) {
            break;
        }
        file_.write(telemetry);
        file_.write(", ");
        file_.write(engineering);
        file_.write("\n");
    }
    file_.write("END");
}

void UpdateFile::writeCoefficients(const ProfileFile::Section& record) {
    for (int i = kWrittenCoefficients; i >= 1; --i) {
        if (const auto value = field(record, "CO-" + std::to_string(i)); !value.empty()) {
            file_.write(value);
            file_.write(", ");
        }
    }
    file_.write(field(record, c::kCo.code, "0"));
}

bool UpdateFile::flush() {
    if (!file_.isOpen()) {
        return true;
    }
    const auto status = file_.flush();
    if (!status.ok()) {
        (void)file_.close();
    }
    return report(status);
}

void UpdateFile::close() {
    if (file_.isOpen()) {
        (void)report(file_.close());
    }
}

}  // namespace kavu
