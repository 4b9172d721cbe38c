#include "reports/ReportRun.h"

#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/files/FileIo.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "reports/layout/ReportLayout.h"
#include "reports/writers/ExcelXmlWriter.h"
#include "reports/writers/ReportWorkbook.h"
#include "reports/writers/TextWriter.h"

#include <algorithm>
#include <cerrno>

namespace kavu {

namespace {

constexpr const char* kRunTitle = "Report Generation";

class ReportRun {
  public:
    ReportRun(const ReportSource& source, const ReportOutlets& outlets)
        : source_(source), outlets_(outlets) {}

    bool run() {
        const auto& layout = source_.layout;
        const bool isBus = source_.bus != nullptr;
        const auto delimited = checkedReports(layout, true, isBus);
        const auto kinds = checkedReports(layout, false, isBus);
        const auto destination =
            static_cast<ReportDestination>(layout.number(layout_key::kDestination));
        const auto delimitedPath = layout.text(layout_key::kDelimitedPath);
        if (!delimited.empty() && delimitedPath.empty()) {
            return refuse("Please enter a pathname for ASCII delimited reports first");
        }
        if (!kinds.empty() && destination == ReportDestination::FileText &&
            layout.text(layout_key::kReportPath).empty()) {
            return refuse("Please enter a pathname for printed reports first");
        }
        // What cannot be written is known before anything is made.
        if ((!delimited.empty() && !opens(delimitedPath)) ||
            (!kinds.empty() && isFile(destination) && !opens(outputPath(destination)))) {
            return false;
        }
        return writeDelimited(delimited, delimitedPath) && makeKinds(kinds, destination);
    }

  private:
    bool refuse(const char* text) const {
        showBox(source_.parent, text, kRunTitle, Icon::Information);
        return false;
    }
    [[nodiscard]] bool report(const IoStatus& status) const {
        return reportOpened(source_.context.messages, source_.parent, status);
    }
    static bool isFile(ReportDestination destination) {
        return destination == ReportDestination::FileText ||
               destination == ReportDestination::FileWorkbook;
    }
    [[nodiscard]] std::string outputPath(ReportDestination destination) const {
        switch (destination) {
            case ReportDestination::ScreenText:
                return source_.context.store.pathOf(kShownText);
            case ReportDestination::ScreenWorkbook:
                return source_.context.store.pathOf(kShownWorkbook);
            default:
                return source_.layout.text(layout_key::kReportPath);
        }
    }
    /// Nothing of the file changes by it.
    [[nodiscard]] bool opens(const std::string& path) const {
        PathKind kind = PathKind::Missing;
        auto status = probePath(path, kind);
        if (status.ok() && path.empty()) {
            status = IoStatus(path, ENOENT);
        } else if (status.ok() && kind == PathKind::Missing && !folderExists(folderOf(path))) {
            status = IoStatus(path, ENOENT);
        } else if (status.ok() && kind == PathKind::Folder) {
            status = IoStatus(path, EISDIR);
        }
        return report(status) && (!outlets_.mayWrite || outlets_.mayWrite(path));
    }

    bool writeDelimited(const std::vector<ReportKind>& kinds, const std::string& path) {
        if (kinds.empty()) {
            return true;
        }
        std::string text;
        for (const auto kind : kinds) {
            showKind(kind, true);
            if (auto made = makeDelimitedReport(source_, kind)) {
                text += *made;
            }
            if (isCancelled()) {
                break;
            }
        }
        // Nothing was made of what the layout cannot tell, and the file stays as it was.
        return (text.empty() || report(replaceUserFile(path, text))) && !isCancelled();
    }

    bool makeKinds(const std::vector<ReportKind>& kinds, ReportDestination destination) {
        std::vector<ReportContent> reports;
        for (const auto kind : kinds) {
            showKind(kind, false);
            if (auto made = makeReport(source_, kind)) {
                reports.push_back(std::move(*made));
            }
            if (isCancelled()) {
                break;
            }
        }
        return (reports.empty() || deliver(std::move(reports), destination)) && !isCancelled();
    }

    void showKind(ReportKind kind, bool isDelimited) const {
        const char* const name = kind == ReportKind::Format  ? "PCM Format"
                                 : kind == ReportKind::Frame ? "Major Frame"
                                                             : "Measurement";
        setProgressText(source_.parent,
                        formatPrintf("Creating %s%s Report", isDelimited ? "ASCII " : "", name));
    }
    /// What was made until a cancel is written to its end.
    [[nodiscard]] UserInterface* writingParent() const {
        return isCancelled_ ? nullptr : source_.parent;
    }
    bool isCancelled() {
        isCancelled_ = isCancelled_ || cancelRequested(source_.parent);
        return isCancelled_;
    }

    bool deliver(std::vector<ReportContent> reports, ReportDestination destination) {
        if (destination == ReportDestination::Printer) {
            made_ = std::move(reports);
            return true;
        }
        const bool isText = destination == ReportDestination::ScreenText ||
                            destination == ReportDestination::FileText;
        const auto path = outputPath(destination);
        const auto bytes = isText ? reportText(reports, {}, writingParent()) : workbook(reports);
        if (isFile(destination)) {
            return report(replaceUserFile(path, bytes));
        }
        shownPath_ = path;
        isShownText_ = isText;
        return report(replaceWorkingFile(path, bytes));
    }
    [[nodiscard]] std::string workbook(const std::vector<ReportContent>& reports) const {
        ExcelXmlWriter writer(source_.parent);
        for (const auto& each : reports) {
            writeSheets(each, writer, writingParent());
        }
        return writer.document();
    }

  public:
    /// What is on the screen comes when the progress has gone.
    bool show() {
        if (!made_.empty() && outlets_.print) {
            outlets_.print(std::move(made_));
        }
        if (shownPath_.empty()) {
            return true;
        }
        if (isShownText_) {
            if (outlets_.showText) {
                outlets_.showText(shownPath_);
            }
            return true;
        }
        if (outlets_.openWorkbook && !outlets_.openWorkbook(shownPath_)) {
            source_.context.messages.show(
                source_.parent, 403, title::kError, kErrorBox,
                formatPrintf("No program of this desktop opens '%s'.", shownPath_));
            return false;
        }
        return true;
    }

  private:
    const ReportSource& source_;
    const ReportOutlets& outlets_;
    bool isCancelled_ = false;
    std::vector<ReportContent> made_{};
    std::string shownPath_{};
    bool isShownText_ = false;
};

}  // namespace

bool generateReports(const ReportSource& source, const ReportOutlets& outlets) {
    ReportRun run(source, outlets);
    bool isDone = false;
    {
        const ProgressScope progress(source.parent, ProgressMode::WithCancel);
        isDone = run.run();
    }
    setStatusText(source.parent, {});
    setProgressBar(source.parent, -1);
    return run.show() && isDone;
}

bool reportOpened(const Messages& messages, UserInterface* parent, const IoStatus& status) {
    if (!status.ok()) {
        messages.show(
            parent, 403, title::kError, kErrorBox,
            formatPrintf("Can't open '%s'\n\nReason: %s", status.path(), status.reason()));
    }
    return status.ok();
}

}  // namespace kavu
