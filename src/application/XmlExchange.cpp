#include "application/XmlExchange.h"

#include "application/Application.h"
#include "application/DocumentService.h"
#include "core/WorkingStore.h"
#include "core/files/FileIo.h"
#include "core/talk/FilePrompts.h"
#include "core/talk/SilentInterface.h"
#include "core/text/Clock.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "sdk/TranslatorSdk.h"
#include "xml/bridge/read/XmlToTmats.h"
#include "xml/bridge/write/XmlExport.h"

#include <utility>

namespace kavu {

namespace {

constexpr const char* kCounting = "Counting what the chosen form leaves out";

std::size_t placeOf(XmlDialect dialect) {
    return dialect == XmlDialect::Schema ? 1 : 0;
}

/// For a reading that only counts: nothing is said, and a cancel is remembered.
class CountingInterface : public SilentInterface {
  public:
    using SilentInterface::SilentInterface;
    Button message(const MessageBox&) override { return Button::Ok; }
};

std::string countedSummary(std::size_t total, std::string_view none, std::string_view one,
                           std::string_view several) {
    if (total == 0) {
        return std::string(none);
    }
    return total == 1 ? std::string(one) : std::to_string(total) + std::string(several);
}

XmlLossTable tableOf(const std::vector<XmlLeftOut>& leftOut) {
    XmlLossTable table;
    std::size_t total = 0;
    for (const auto& each : leftOut) {
        total += each.count;
        table.rows.push_back({each.path, std::to_string(each.count)});
    }
    table.summary =
        countedSummary(total, "In this form every text of the document becomes part of a command.",
                       "In this form 1 text of the document is lost:",
                       " texts of the document are lost in this form:");
    return table;
}

XmlLossTable tableOf(const XmlLosses& losses) {
    XmlLossTable table;
    for (const auto& loss : losses.list()) {
        table.rows.push_back({loss.code, std::to_string(loss.count)});
    }
    table.summary = countedSummary(losses.total(),
                                   "In this form the XML file holds every command of the document.",
                                   "In this form 1 command of the document is lost:",
                                   " commands of the document are lost in this form:");
    return table;
}

/// The lines of texts that have line breaks of their own, without those that are blank.
void addLines(const std::vector<std::string>& texts, std::vector<std::string>& lines) {
    for (const auto& text : texts) {
        for (std::size_t start = 0; start <= text.size();) {
            const auto end = std::min(text.find('\n', start), text.size());
            if (const auto line = trimRight(std::string_view(text).substr(start, end - start));
                !line.empty()) {
                lines.emplace_back(line);
            }
            start = end + 1;
        }
    }
}

}  // namespace

// --- import -------------------------------------------------------------------------------------

XmlImport::XmlImport(Application& application, std::string input)
    : application_(application), input_(std::move(input)) {}

std::string XmlImport::proposedOutput() const {
    return withOtherExtension(input_, ".tma");
}

bool XmlImport::read(UserInterface* parent) {
    const ProgressScope progress(parent, ProgressMode::WithCancel, false);
    setProgressText(parent, kCounting);
    CountingInterface counting(parent);
    XmlToTmats import({}, input_, {}, XmlDialect::Classic);
    if (!import.convert(&counting) || counting.cancelRequested()) {
        return false;
    }
    proposed_ = import.isInSchemaNamespace() ? XmlDialect::Schema : XmlDialect::Classic;
    // One that has no command has a reason for it.
    fault_ = import.commands().empty() && !import.messages().empty() ? import.messages().front()
                                                                     : std::string();
    losses_[placeOf(XmlDialect::Classic)] = tableOf(import.leftOut());
    return true;
}

std::optional<XmlLossTable> XmlImport::losses(UserInterface* parent, XmlDialect dialect) {
    auto& known = losses_[placeOf(dialect)];
    if (!known) {
        const ProgressScope progress(parent, ProgressMode::WithCancel, false);
        setProgressText(parent, kCounting);
        CountingInterface counting(parent);
        XmlToTmats import({}, input_, {}, dialect);
        if (import.convert(&counting) && !counting.cancelRequested()) {
            known = tableOf(import.leftOut());
        }
    }
    return known;
}

bool XmlImport::run(UserInterface* parent, XmlDialect dialect, const std::string& output) {
    said_.clear();
    output_.clear();
    if (!fault_.empty() && fileExists(output)) {
        showBox(parent, formatPrintf("%s\n\n'%s' stays as it is.", fault_, output),
                kXmlImportTitle);
        return false;
    }
    const ProgressScope progress(parent, ProgressMode::WithCancel, false);
    XmlToTmats import(
        [&](XmlStatusLevel, const std::string& text) {
            said_.push_back(text);
            setStatusText(parent, text);
            setProgressText(parent, text);
        },
        input_, output, dialect);
    if (!import.run(application_.context(), parent)) {
        return false;
    }
    addLines(import.messages(), said_);
    if (!import.commands().empty()) {
        output_ = output;
    }
    return true;
}

bool XmlImport::open(UserInterface* parent) {
    return !output_.empty() && application_.documents().openNamed(parent, output_);
}

// --- export -------------------------------------------------------------------------------------

XmlExport::XmlExport(Application& application, UserInterface* parent)
    : application_(application), parent_(parent), snapshot_(application, parent) {}

XmlExport::~XmlExport() = default;

bool XmlExport::open() {
    const ProgressScope progress(parent_, ProgressMode::WithCancel, false);
    setProgressText(parent_, "Reading the document");
    if (!snapshot_.make(kXmlExportTitle)) {
        return false;
    }
    auto& context = application_.context();
    session_ =
        std::make_unique<TranslatorSdk>(context.store.environment(), context.clock, context.random);
    return session_->open(snapshot_.path(), parent_);
}

std::vector<std::string> XmlExport::links() const {
    std::vector<std::string> names;
    for (const auto& link : session_->links()) {
        names.push_back(link.name);
    }
    return names;
}

std::string XmlExport::proposedOutput() const {
    const auto& path = application_.context().document.path;
    return path.empty() ? std::string() : withOtherExtension(path, ".xml");
}

std::optional<XmlLossTable> XmlExport::losses(UserInterface* parent, XmlDialect dialect,
                                              const std::vector<std::string>& links) {
    auto& known = losses_[placeOf(dialect)];
    if (links.empty() && known) {
        return known;
    }
    const ProgressScope progress(parent, ProgressMode::WithCancel, false);
    setProgressText(parent, kCounting);
    CountingInterface counting(parent);
    XmlExportOptions options;
    options.dialect = dialect;
    options.links = links;
    auto table = tableOf(countXmlLosses(*session_, &counting, options));
    if (counting.cancelRequested()) {
        return std::nullopt;
    }
    if (links.empty()) {
        known = table;
    }
    return table;
}

bool XmlExport::run(UserInterface* parent, XmlDialect dialect,
                    const std::vector<std::string>& links, const std::string& output) {
    said_.clear();
    XmlExportOptions options;
    options.dialect = dialect;
    options.links = links;
    options.now = application_.context().clock.now();
    XmlExportReport report;
    bool isWritten = false;
    {
        const ProgressScope progress(parent, ProgressMode::WithCancel, false);
        setProgressText(parent, "Converting TMATS file to XML...");
        isWritten = tmatsToXmlFile(*session_, parent, options, output, report);
    }
    if (!isWritten) {
        for (const auto& error : report.errors) {
            showBox(parent, error, kXmlExportTitle);
        }
        return false;
    }
    addLines(report.status, said_);
    addLines(report.errors, said_);
    addLines(report.warnings, said_);
    return true;
}

std::string whyNotOutput(const TmatsDocument& document, const std::string& input,
                         const std::string& output) {
    bool isSame = false;
    if (probeSameFile(output, input, isSame).ok() && isSame) {
        return formatPrintf("'%s' is the input; it is not overwritten.", output);
    }
    if (document.open && !document.path.empty() &&
        probeSameFile(output, document.path, isSame).ok() && isSame) {
        return formatPrintf("'%s' is open in the editor; it is not overwritten.", output);
    }
    return {};
}

}  // namespace kavu
