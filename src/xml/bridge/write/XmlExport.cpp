#include "xml/bridge/write/XmlExport.h"

#include "core/files/UserFile.h"
#include "core/text/Printf.h"
#include "xml/bridge/write/ExportRun.h"
#include "xml/bridge/write/PlanWriter.h"
#include "xml/bridge/write/SourceWriter.h"

#include <string_view>
#include <utility>

namespace kavu {

namespace {

constexpr std::string_view kInstance = "http://www.w3.org/2001/XMLSchema-instance";
constexpr std::string_view kBanner = "KAVU: an editor for TMATS files (IRIG 106 Chapter 9)";

std::string rootTag(XmlDialect dialect) {
    const std::string schema = std::string(kSchemaNamespace) + "/Tmats_01-2011.xsd";
    const std::string instance = "Tmats xmlns:xsi=\"" + std::string(kInstance) + "\"";
    if (dialect == XmlDialect::Schema) {
        return instance + " xmlns=\"" + std::string(kSchemaNamespace) + "\" xsi:schemaLocation=\"" +
               std::string(kSchemaNamespace) + " " + schema + "\"";
    }
    return instance + " xsi:noNamespaceSchemaLocation=\"" + schema + "\"";
}

/// Replaces markup in what the session reads, and ends that when it goes.
class MarkupSubstitution {
  public:
    explicit MarkupSubstitution(ExportRun& run) : session_(run.session) {
        session_.clearSubstitutions();
        if (!run.isSchema()) {
            session_.addSubstitution("&", "&amp;");
            session_.addSubstitution("<", "&lt;");
        }
    }
    MarkupSubstitution(const MarkupSubstitution&) = delete;
    MarkupSubstitution& operator=(const MarkupSubstitution&) = delete;
    ~MarkupSubstitution() { session_.clearSubstitutions(); }

  private:
    TranslatorSdk& session_;
};

void writeHead(ExportRun& run) {
    run.tags.line("<?xml version=\"1.0\" encoding=\"utf-8\"?>");
    run.tags.open(rootTag(run.options.dialect));
    run.tags.writeWaiting();
    run.tags.comment(formatPrintf("\nThis XML file created on %s at %s by the KAVU Bridge Software",
                                  dateText(run.options.now), timeText(run.options.now)));
    run.tags.comment(kBanner);
    run.tags.comment("\n\nG Group");
}

void writePlan(ExportRun& run, GroupRows& rows, std::span<const PlanStep> steps) {
    const CheckedPart part(run, 'G');
    PlanWriter(run.tags, run.values, rows, run.plan('G', steps)).run();
}

/// The commands of the airborne hardware are one block of text, as they are.
void writeHardware(ExportRun& run) {
    const auto group = run.session.openGroup('H');
    if (!group || group->size() == 0) {
        return;
    }
    run.status("Converting TMATS 'H' group to XML...");
    run.tags.open(std::string(kHardwareElement), "\nH Group");
    for (std::size_t place = 0; place < group->size(); ++place) {
        const auto command = group->at(place);
        if (run.isSchema()) {
            run.tags.comment(xmlCommentText(run.values.original(command.text)));
            run.lose(command.code);
        } else {
            run.tags.block(run.values.plain(command.text));
        }
    }
    run.tags.close();
}

/// The closing block of the values that have no text.
void sayBadValues(ExportRun& run) {
    const auto& bad = run.values.badValues();
    if (bad.empty()) {
        return;
    }
    run.sayAsWarning(
        "Warning: The following errors were encountered. These errors are TMATS values found, that "
        "did not match");
    run.sayAsWarning(
        "any of the enumerated values as defined in the TMATS/XML schema. The value from the TMATS "
        "file has");
    run.sayAsWarning(
        "been written as-is, but the XML file generated will no longer validate against the "
        "schema.\n");
    for (const auto& value : bad) {
        run.sayAsWarning(formatPrintf("\t%s. Value found: '%s'", value.description, value.value));
    }
    run.sayAsWarning("");
}

bool convert(ExportRun& run) {
    run.status("Converting TMATS file to XML...");
    auto group = run.session.openGroup('G');
    if (!group) {
        run.say("Unable to open 'General Information' file");
        return false;
    }
    const MarkupSubstitution substitution(run);
    group = run.session.openGroup('G');
    GroupRows general(std::move(*group));
    writeHead(run);
    run.status("Converting TMATS 'G' group to XML...");
    writePlan(run, general, generalHeadPlan());
    SourceWriter sources(run);
    if (!sources.write(general)) {
        return false;
    }
    writePlan(run, general, generalTailPlan());
    run.loseRest(general, {});
    run.loseOtherGroups();
    sources.loseRest();
    writeHardware(run);
    run.tags.close();
    run.sayLosses();
    sayBadValues(run);
    run.report.badValues = run.values.badValues();
    return true;
}

}  // namespace

bool tmatsToXml(TranslatorSdk& session, UserInterface* parent, const XmlExportOptions& options,
                const TagWriter::Sink& sink, XmlExportReport& report) {
    ExportRun run(session, parent, options, sink, report);
    const bool isDone = convert(run);
    run.collect();
    return isDone;
}

XmlLosses countXmlLosses(TranslatorSdk& session, UserInterface* parent,
                         const XmlExportOptions& options) {
    XmlExportReport report;
    const TagWriter::Sink nowhere = [](std::string_view) {};
    ExportRun run(session, parent, options, nowhere, report);
    run.isSilent = true;
    (void)convert(run);
    return report.losses;
}

bool tmatsToXmlFile(TranslatorSdk& session, UserInterface* parent, const XmlExportOptions& options,
                    const std::string& path, XmlExportReport& report) {
    UserFile file;
    const auto failed = [&](const IoStatus& status) {
        if (!status.ok()) {
            auto text = formatPrintf("Unable to create XML file '%s'.", path);
            session.writeError(text);
            report.errors.push_back(std::move(text));
        }
        return !status.ok();
    };
    if (failed(file.claim(path)) || failed(file.prepare(false)) || failed(file.open())) {
        return false;
    }
    const auto sink = [&](std::string_view text) { file.writer().write(text); };
    if (!tmatsToXml(session, parent, options, sink, report) || failed(file.finish())) {
        return false;
    }
    if (options.announce) {
        options.announce(report);
    }
    return !failed(file.commit());
}

}  // namespace kavu
