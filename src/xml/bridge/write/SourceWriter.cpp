#include "xml/bridge/write/SourceWriter.h"

#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "vocabulary/GGroupFields.h"
#include "vocabulary/MGroupFields.h"
#include "xml/bridge/write/PlanWriter.h"

#include <algorithm>
#include <array>
#include <unordered_set>
#include <utility>

namespace kavu {

namespace {

const Field& typeField() {
    const auto fields = generalFields();
    return *std::find_if(fields.begin(), fields.end(),
                         [](const Field& field) { return field.code == kSourceType; });
}

/// Which of the two groups a source has, by the text of its type; 0 for neither.
char classOf(std::string_view typeText) {
    if (typeText == "RF") {
        return 'T';
    }
    return typeText == "Tape" || typeText == "Storage" ? 'R' : char{};
}

}  // namespace

SourceWriter::SourceWriter(ExportRun& run)
    : run_(run), conversions_(run), links_(run, conversions_) {}

void SourceWriter::list(GroupRows& general) {
    const int count = general.takeCount(general.stem(kSourceCount), {});
    const int name = general.stem(stemOf(kSourceName));
    const int type = general.stem(stemOf(kSourceType));
    const auto stems = std::to_array({name, type});
    for (int row = general.nextRow(stems, {}, 0); row != 0 && row <= count;
         row = general.nextRow(stems, {}, row)) {
        const RowNumbers at{static_cast<std::size_t>(row)};
        Source source;
        source.nameCode = general.code(stemOf(kSourceName), at);
        source.name = run_.values.original(general.take(name, at).value_or(""));
        const auto stored = general.take(type, at);
        source.type = run_.values.original(stored.value_or("OTH"));
        source.typeText = run_.values.choiceText(
            typeField().choices, stored.value_or("OTH"),
            formatPrintf("Data Source Type for Data Source '%s'", source.name));
        if (source.typeText.starts_with(kNoChoice)) {
            run_.lose(general.code(stemOf(kSourceType), at));
            source.typeText = "Other";
        }
        source.links = linksOf(source.name, source.hasMultiplex);
        sources_.push_back(std::move(source));
    }
}

/// The links that the multiplex group of a source names, each once.
std::vector<std::string> SourceWriter::linksOf(const std::string& source, bool& isThere) {
    std::vector<std::string> links;
    auto group = run_.session.openGroup('M', source);
    isThere = group.has_value();
    if (!group) {
        return links;
    }
    GroupRows rows(std::move(*group));
    const auto add = [&](std::optional<std::string_view> value) {
        if (value) {
            auto name = run_.values.original(*value);
            if (std::find(links.begin(), links.end(), name) == links.end()) {
                links.push_back(std::move(name));
            }
        }
    };
    add(rows.take(rows.stem(kBasebandLink), {}));
    const auto stems = std::to_array({rows.stem(stemOf(kSubcarrierLink))});
    for (int row = rows.nextRow(stems, {}, 0); row != 0; row = rows.nextRow(stems, {}, row)) {
        add(rows.take(stems[0], {static_cast<std::size_t>(row)}));
    }
    return links;
}

/// Links that no source names are those of the last one. In the schema's dialect a link that two
/// sources name is written once: a reader would make two groups of it.
void SourceWriter::assignLinks() {
    std::unordered_set<std::string> named;
    for (auto& source : sources_) {
        std::vector<std::string> own;
        for (const auto& link : source.links) {
            if (named.insert(link).second || !run_.isSchema()) {
                own.push_back(link);
            }
        }
        source.links = std::move(own);
    }
    for (const auto& link : run_.session.links()) {
        if (!named.contains(link.name)) {
            sources_.back().links.push_back(link.name);
        }
    }
}

/// Conversion records that no link has: that of the measurement that a multiplex group names is in
/// that source, all others are in the first one.
void SourceWriter::assignRecords() {
    const auto records = conversions_.withoutLink();
    for (const auto record : records) {
        const auto& name = run_.session.conversionName(record);
        auto home = sources_.begin();
        for (auto source = sources_.begin(); source != sources_.end(); ++source) {
            if (source->hasMultiplex && conversions_.isNamedBy(source->name, name)) {
                home = source;
                break;
            }
        }
        home->records.push_back(record);
    }
}

bool SourceWriter::write(GroupRows& general) {
    list(general);
    if (sources_.empty()) {
        run_.say("Warning. No data sources were defined in this file.");
        Source all;
        all.typeText = "Other";
        sources_.push_back(std::move(all));
        assignLinks();
        assignRecords();
        auto& tags = run_.tags;
        tags.open("DataSource Type=\"Other\"");
        writeMultiplex(sources_.back());
        const bool isDone = writeLinks(sources_.back());
        tags.close(run_.isSchema());
        return isDone;
    }
    assignLinks();
    assignRecords();
    return std::all_of(sources_.begin(), sources_.end(),
                       [&](const Source& source) { return writeSource(source); });
}

bool SourceWriter::writeSource(const Source& source) {
    run_.status(formatPrintf("Converting TMATS Data Source '%s'...", source.name));
    run_.tags.open("DataSource" + run_.attribute("Name", source.name) + " Type=\"" +
                   source.typeText + "\"");
    writeRadioOrRecorder(source);
    if (!source.hasMultiplex) {
        run_.say(formatPrintf("Unable to locate 'Mux/Mod' information for Data Source '%s'",
                              source.name));
    } else if (source.links.empty()) {
        run_.say(
            formatPrintf("Warning: No DataLink commands were found in the "
                         "Multiplex/Modulation section, for Data Source '%s'.",
                         source.name));
    }
    writeMultiplex(source);
    const bool isDone = writeLinks(source);
    if (isDone) {
        writeVendor(source.name);
    }
    run_.closeNamed(source.nameCode);
    return isDone;
}

void SourceWriter::writeGroup(SdkGroup group, std::string_view element,
                              std::span<const PlanStep> plan) {
    const std::string letter(1, group.letter());
    run_.status("Converting TMATS '" + letter + "' group to XML...");
    run_.tags.open(std::string(element), "\n" + letter + " Group");
    GroupRows rows(std::move(group));
    {
        const CheckedPart part(run_, rows.letter());
        PlanWriter(run_.tags, run_.values, rows, run_.plan(rows.letter(), plan)).run();
    }
    run_.loseRest(rows, "ID");
    run_.closeNamed({});
}

void SourceWriter::writeRadioOrRecorder(const Source& source) {
    auto letter = classOf(source.typeText);
    if (letter == 0 && run_.isSchema()) {
        letter = run_.session.openGroup('R', source.name) ? 'R' : 'T';
        if (!run_.session.openGroup(letter, source.name)) {
            return;
        }
    }
    if (letter == 0) {
        return;
    }
    auto group = run_.session.openGroup(letter, source.name);
    if (!group) {
        const char* const what = letter == 'T' ? "RF" : "Tape/Storage";
        run_.say(
            formatPrintf("Warning: Unable to locate '%s Attributes' information for Data "
                         "Source '%s'.\nNo %s Attributes information will be converted.\n",
                         what, source.name, what));
        return;
    }
    if (letter == 'T') {
        writeGroup(std::move(*group), "TransmissionAttributes", transmissionPlan());
    } else {
        writeGroup(std::move(*group), "RecorderReproducerAttributes", recorderPlan());
    }
}

void SourceWriter::writeMultiplex(const Source& source) {
    constexpr std::string_view kElement = "MultiplexModulationGroup";
    if (!source.hasMultiplex) {
        run_.tags.open(std::string(kElement));
        conversions_.writeRecords(source.records);
        run_.tags.close();
        return;
    }
    auto group = run_.session.openGroup('M', source.name);
    if (!group) {
        return;
    }
    run_.status("Converting TMATS 'M' group to XML...");
    run_.tags.open(std::string(kElement), "\nM Group");
    GroupRows rows(std::move(*group));
    {
        const CheckedPart part(run_, 'M');
        PlanWriter(run_.tags, run_.values, rows, run_.plan('M', multiplexPlan()),
                   [&](PlanWriter& plan, const ElementStep&, const RowNumbers&) {
                       plan.closeTo(0);
                       conversions_.writeRecords(source.records);
                       return true;
                   })
            .run();
    }
    run_.loseRest(rows, "ID");
    run_.closeNamed({});
}

bool SourceWriter::writeLinks(const Source& source) {
    for (const auto& name : source.links) {
        const auto* const link = run_.session.findLink(name);
        if (link == nullptr || !isWanted(name)) {
            continue;
        }
        if (run_.isCancelled() || !links_.write(*link)) {
            return false;
        }
    }
    if (run_.isSchema()) {
        writeMentionedLinks(source);
    }
    return true;
}

bool SourceWriter::isWanted(const std::string& link) const {
    const auto& wanted = run_.options.links;
    return wanted.empty() || std::find(wanted.begin(), wanted.end(), link) != wanted.end();
}

/// The schema wants every link that a source names to be in that source. One whose groups are
/// elsewhere, or nowhere, is there by name alone.
void SourceWriter::writeMentionedLinks(const Source& source) {
    std::unordered_set<std::string> there;
    for (const auto& name : source.links) {
        if (run_.session.findLink(name) != nullptr && isWanted(name)) {
            there.insert(name);
        }
    }
    const auto mention = [&](const std::optional<SdkGroup>& group,
                             std::initializer_list<std::string_view> patterns) {
        for (std::size_t place = 0; group && place < group->size(); ++place) {
            const auto command = group->at(place);
            const auto name = run_.values.original(command.value);
            const bool names = std::any_of(patterns.begin(), patterns.end(), [&](auto pattern) {
                return isOfPattern(command.field, pattern);
            });
            if (names && !command.value.empty() && there.insert(name).second) {
                run_.tags.open("DataLink" + run_.attribute("Name", name));
                run_.tags.close(true);
            }
        }
    };
    mention(run_.session.openGroup('R', source.name),
            {"CDLN-n", "ANM-n-m", "UCNM-n-m", "MCNM-n-m", "ENAM-n-m"});
    mention(run_.session.openGroup('M', source.name), {kBasebandLink, kSubcarrierLink});
    for (const auto& name : source.links) {
        const auto* const link = run_.session.findLink(name);
        if (link != nullptr && isWanted(name) && link->group('P') != 0) {
            mention(run_.session.openGroup('P', link->group('P')), {"AEF\\DLN-n"});
        }
    }
}

/// The commands of a vendor are his: they are comments, as they are.
void SourceWriter::writeVendor(const std::string& source) {
    auto group = run_.session.openGroup('V', source);
    if (!group) {
        return;
    }
    const auto vendor = group->value("VN");
    if (!vendor) {
        run_.loseRest(GroupRows(std::move(*group)), "ID");
        return;
    }
    run_.status("Converting TMATS 'V' group to XML...");
    run_.tags.open(
        "VendorSpecificAttributes" + run_.attribute("Vendor", run_.values.original(*vendor)),
        "\nV Group");
    for (std::size_t place = 0; place < group->size(); ++place) {
        const auto command = group->at(place);
        if (equalsIgnoreCase(command.field, "ID") || equalsIgnoreCase(command.field, "VN")) {
            continue;
        }
        run_.tags.comment(xmlCommentText(run_.values.original(command.text)));
        if (run_.isSchema()) {
            run_.lose(command.code);
        }
    }
    run_.tags.close(run_.isSchema());
    // What is in a comment is still in the document.
    run_.markSeen(group->letter(), group->number());
}

void SourceWriter::loseRest() {
    if (run_.options.links.empty()) {
        conversions_.loseRest();
    }
}

}  // namespace kavu
