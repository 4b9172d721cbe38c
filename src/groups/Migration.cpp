#include "groups/Migration.h"

#include "conversion/ConversionStore.h"
#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "core/document/CommandIndex.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupFiles.h"
#include "core/document/GroupRewrite.h"
#include "core/document/Transaction.h"
#include "core/talk/BoxLines.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/UserInterface.h"
#include "core/text/Clock.h"
#include "core/text/Edition.h"
#include "core/text/Text.h"
#include "groups/ConversionMigration.h"
#include "groups/DateForms.h"
#include "groups/GroupScan.h"
#include "groups/Irig11Changes.h"
#include "vocabulary/PGroupFields.h"
#include "vocabulary/StreamType.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <span>

namespace kavu {

namespace {

constexpr std::string_view kVersionCode = "G\\106";
constexpr int kVersionLimit = 2;
/// The first edition whose files state their edition.
constexpr int kFirstTold = 1999;
constexpr int kConvertMethod = 2;

constexpr auto kTo99 = std::to_array<ValueRule>({
    {'T', "RF4", Indices::None, "OTHER", "OTHR"},
    {'T', "GST7", Indices::None, "OTH", "OTHER"},
    {'R', "TC1", Indices::None, "OTH", "OTHR"},
    {'R', "TC7", Indices::None, "OTH", "OT"},
    {'M', "SIF2-", Indices::One, "OTH", "OT"},
    {'A', "SF3-", Indices::One, "OTR", "OTH"},
});

constexpr auto kTo96 = std::to_array<ValueRule>({
    {'T', "RF4", Indices::None, "OTHR", "OTHER"},
    {'T', "GST7", Indices::None, "OTHER", "OTH"},
    {'R', "TC1", Indices::None, "CASS"},
    {'R', "TC1", Indices::None, "OTHR", "OTH"},
    {'R', "TC5", Indices::None, "12.65"},
    {'R', "TC5", Indices::None, "19.0"},
    {'R', "TC7", Indices::None, "OT", "OTH"},
    {'R', "TT"},
    {'R', "TK2-", Indices::One, "RO-TK"},
    {'R', "TK2-", Indices::One, "RO-MUX"},
    {'M', "SIF2-", Indices::One, "OT", "OTH"},
    {'P', "ADM\\N"},
    {'P', "ADM\\DMN-", Indices::One},
    {'P', "ADM1-", Indices::One},
    {'P', "ADM2-", Indices::One},
    {'P', "ADM3-", Indices::Two},
    {'P', "ADM4-", Indices::One},
    {'P', "ADM5-", Indices::One},
    {'P', "ADM6-", Indices::One},
    {'P', "ADM7-", Indices::One},
    {'A', "SF3-", Indices::One, "OTH", "OTR"},
});

constexpr auto kWithout00 = std::to_array<ValueRule>({{'T', "RF4", Indices::None, "FQPSK-B"}});

/// A version key of the settings as a year; a missing or impossible one is the latest.
int settingsEdition(const ProfileSettings& settings, const TextKey& key) {
    const int number = leadingInt(std::string_view(settings.get(key)).substr(0, 10));
    return number <= 0 || number > kLatestEdition ? kLatestEdition : normalisedEdition(number);
}

void report(UserInterface* parent, const IoStatus& status, IoStatus* failure) {
    reportUnableToWrite(parent, status);
    if (failure != nullptr) {
        *failure = status;
    }
}

/// One migration of a document. A step that fails ends it.
class Migration {
  public:
    Migration(DocumentContext& context, ConversionStore& conversions, UserInterface* parent,
              const ConvertStreamStep& convertStream)
        : context_(context),
          conversions_(conversions),
          parent_(parent),
          convertStream_(convertStream) {}

    void run(int input, int target) {
        if (target < 2000) {
            removeIrig00Changes();
        }
        if (goesOn()) {
            changed_ = setVersionField(context_, parent_, target, &status_) || changed_;
            reported_ = !status_.ok();
        }
        if (input == 1996 && target >= 1999) {
            convert96To99();
        } else if (input >= 1999 && target == 1996) {
            convert99To96();
        }
        if (input < 2011 && target >= 2011) {
            addIrig11Changes(input);
        }
        if (goesOn()) {
            for (const auto& line : rangesLeftOut(context_, input, target, status_)) {
                leaveOut(line);
            }
        }
        if (!status_.ok() && !reported_) {
            reportUnableToWrite(parent_, status_);
        }
    }
    [[nodiscard]] bool changed() const { return changed_; }
    [[nodiscard]] bool complete() const { return status_.ok() && !cancelled_; }
    [[nodiscard]] const IoStatus& status() const { return status_; }
    /// What the target cannot say, in lines.
    [[nodiscard]] const std::vector<std::string>& leftOut() const { return leftOut_; }

  private:
    void leaveOut(const std::string& line) {
        leftOut_.push_back(line);
        context_.messages.logText(parent_, title::kWarning, line + ".");
    }

    /// False once a step has failed or the user has cancelled.
    bool goesOn() {
        cancelled_ = cancelled_ || cancelRequested(parent_);
        return complete();
    }

    template <typename Step>
    void forEachFile(char letter, const Step& step) {
        for (int index = kLeastGroupIndex; index <= kMostGroupIndex && goesOn(); ++index) {
            const auto name = groupFile(letter, index);
            PathKind kind = PathKind::Missing;
            status_ = probePath(context_.files.path(name), kind);
            if (status_.ok() && kind != PathKind::Missing) {
                changed_ = step(name, index) || changed_;
            }
        }
    }

    void applyTable(char letter, std::span<const ValueRule> rules) {
        forEachFile(letter, [&](const std::string& name, int index) {
            return applyRules(context_.reader, context_.files, name, letter, index, rules, status_,
                              changedByTextLog(context_.messages, parent_, title::kWarning));
        });
    }

    void convertRecords(RecordChange change) {
        if (goesOn()) {
            changed_ = migrateRecords(context_, conversions_, parent_, change, status_) || changed_;
        }
    }

    void removeIrig00Changes() {
        setStatusText(parent_, "Removing IRIG 106-00 changes");
        applyTable('T', kWithout00);
        convertRecords(RecordChange::Without00);
    }

    void convert96To99() {
        setStatusText(parent_, "Updating file to IRIG 106-99");
        applyTable('T', kTo99);
        setProgressBar(parent_, 20);
        applyTable('R', kTo99);
        convertRecorderDates(1996);
        setProgressBar(parent_, 40);
        applyTable('M', kTo99);
        setProgressBar(parent_, 60);
        applyTable('A', kTo99);
        setProgressBar(parent_, 80);
        convertRecords(RecordChange::To99);
    }

    void convert99To96() {
        setStatusText(parent_, "Updating file from IRIG 106-99 to 106-96");
        applyTable('T', kTo96);
        setProgressBar(parent_, 20);
        applyTable('R', kTo96);
        convertRecorderDates(1999);
        setProgressBar(parent_, 40);
        applyTable('M', kTo96);
        applyTable('P', kTo96);
        setProgressBar(parent_, 60);
        applyTable('A', kTo96);
        setProgressBar(parent_, 80);
        convertRecords(RecordChange::To96);
    }

    /// The dates of modification and of the last calibration of the recorders.
    void convertRecorderDates(int sourceYear) {
        const int currentYear = context_.clock.now().year;
        forEachFile('R', [&](const std::string& name, int) {
            return rewriteGroup(
                context_.files, context_.reader, name, Cut::Commands,
                [&](CommandEdit& command) {
                    const auto view = viewCommand(command.text());
                    if (!equalsIgnoreCase(view.field, "RI4") &&
                        !equalsIgnoreCase(view.field, "RI5")) {
                        return;
                    }
                    const auto date = convertDate(view.value, sourceYear, currentYear);
                    if (!date) {
                        return;
                    }
                    if (date->doubtful) {
                        reportDoubtfulDate(context_, parent_, std::string(view.code), view.value,
                                           date->text);
                    }
                    command.setValue(date->text);
                },
                {}, status_);
        });
    }

    void addIrig11Changes(int input) {
        setStatusText(parent_, "Adding IRIG 106-11 Changes");
        forEachFile('B', [&](const std::string& name, int) {
            return dropThirdBusIndex(context_, name, status_);
        });
        setProgressBar(parent_, 25);
        if (input == 2009 && context_.document.version >= 2011) {
            forEachFile('D', [&](const std::string& name, int index) {
                return joinFilterLists(context_, name, index, status_);
            });
        }
        setProgressBar(parent_, 50);
        if (convertStream_ && goesOn() && needsWordFrames(context_, parent_, status_)) {
            convertStreams();
        }
    }

    /// Converts a stream of class 1 or 2. What stays as it was is listed.
    bool convertStream(const OlderStream& stream, int index) {
        StreamConversion made;
        if (stream.type == stream_type::kClassOne.stored ||
            stream.type == stream_type::kClassTwo.stored) {
            made = convertStream_(parent_, index);
        }
        if (!made.converted && stream.isOlder()) {
            leaveOut(unconvertedLine(stream, index));
        }
        for (const auto& name : made.unconverted) {
            leaveOut(
                formatPrintf("Stream '%s', measurement '%s': it has no word/frame form and "
                             "was not converted",
                             stream.link, name));
        }
        return made.changed;
    }

    void convertStreams() {
        const auto streams = readOlderStreams(context_, status_);
        forEachFile('P', [&](const std::string&, int index) {
            setStatusText(
                parent_, formatPrintf("Converting measurements to Word/Frame (Stream #%d)", index));
            setProgressBar(parent_, 50 + 50.0 * index / kMostGroupIndex);
            yieldToInterface(parent_);
            const auto stream = streams.find(index);
            return stream != streams.end() && convertStream(stream->second, index);
        });
    }

    DocumentContext& context_;
    ConversionStore& conversions_;
    UserInterface* parent_;
    const ConvertStreamStep& convertStream_;
    IoStatus status_;
    bool reported_ = false;
    bool cancelled_ = false;
    bool changed_ = false;
    std::vector<std::string> leftOut_;
};

/// The report of a migration after which the streams are not what they were.
void showLeftOut(UserInterface* parent, const std::vector<std::string>& lines, int from, int to) {
    if (parent == nullptr) {
        return;
    }
    MessageBox box;
    box.titleId = title::kWarning;
    box.title = loadText(title::kWarning).value_or("");
    box.icon = Icon::Warning;
    box.text = formatPrintf(
        "This TMATS file was converted from 106-%2.2d to 106-%2.2d, but not "
        "all of its measurements were:\n\n",
        from, to);
    addLines(box, lines);
    parent->message(box);
}

/// The edition that the G group states; nothing if it states none, or one that is too old, which is
/// logged (442). 443 is logged for one that is too new. A value that no edition has keeps the year
/// that it gives; a remark says so.
std::optional<int> statedEdition(DocumentContext& context, UserInterface* parent,
                                 ByteSource& source, int otherwise) {
    constexpr std::string_view kOuter = " \t\x14\x15";
    const auto value = context.reader.findField(parent, source, {}, kVersionCode, 0);
    const auto first = value ? value->find_first_not_of(kOuter) : std::string_view::npos;
    if (first == std::string_view::npos) {
        return std::nullopt;
    }
    const auto inner = value->substr(first, value->find_last_not_of(kOuter) + 1 - first);
    const auto text = context.reader.applyLimit(parent, kVersionCode, inner, kVersionLimit);
    const int edition = normalisedEdition(leadingInt(text));
    if (edition < kFirstTold) {
        context.messages.log(parent, 442, title::kErrorReading, text, editionNumber(otherwise));
        return std::nullopt;
    }
    if (edition > kLatestEdition) {
        context.messages.log(parent, 443, title::kErrorReading, editionNumber(edition),
                             editionNumber(kLatestEdition));
        return kLatestEdition;
    }
    const bool isNumber = std::all_of(text.begin(), text.end(), isDigit);
    if (parent != nullptr && (!isNumber || !isEdition(edition))) {
        parent->loadRemark(
            formatPrintf("'%s' (%s) is no edition of IRIG 106. The document is "
                         "treated as one of the year %d.",
                         text, kVersionCode, edition));
    }
    return edition;
}

}  // namespace

bool statesEdition(ByteSource& source) {
    TmatsReader reader;
    const auto value = reader.findField(nullptr, source, {}, kVersionCode, 0);
    return value &&
           normalisedEdition(leadingInt(trim(*value).substr(0, kVersionLimit))) >= kFirstTold;
}

int detectVersions(DocumentContext& context, UserInterface* parent, int& inputVersion,
                   IoStatus* failure) {
    inputVersion = settingsEdition(context.settings, setting::kInputEdition);
    ByteSource source;
    auto status = source.open(context.store.pathOf(working::kGeneral));
    if (status.ok()) {
        if (const auto edition = statedEdition(context, parent, source, inputVersion)) {
            inputVersion = *edition;
        }
        status = source.status();
    }
    if (!status.ok() && !isMissing(status)) {
        reportUnableToRead(parent, status);
        if (failure != nullptr) {
            *failure = status;
        }
    }
    return context.settings.get(setting::kOutputMethod) == kConvertMethod
               ? settingsEdition(context.settings, setting::kOutputEdition)
               : inputVersion;
}

bool migrateDocument(DocumentContext& context, ConversionStore& conversions, UserInterface* parent,
                     int input, int target, const ConvertStreamStep& convertStream,
                     IoStatus* failure) {
    context.document.version = target;
    if (input == target) {
        return false;
    }
    const ProgressScope progress(parent, ProgressMode::WithCancel);
    const int from = editionNumber(input);
    const int to = editionNumber(target);
    const auto text = formatPrintf("Converting TMATS file from 106-%2.2d to 106-%2.2d", from, to);
    setStatusText(parent, text);
    Migration migration(context, conversions, parent, convertStream);
    migration.run(input, target);
    if (failure != nullptr) {
        const bool stopped = migration.status().ok() && !migration.complete();
        *failure = stopped ? IoStatus(context.document.path, ECANCELED) : migration.status();
    }
    setProgressBar(parent, -1);
    setStatusText(parent, {});
    if (migration.complete() && !migration.leftOut().empty()) {
        showLeftOut(parent, migration.leftOut(), from, to);
    } else if (migration.changed() && migration.complete()) {
        context.messages.show(parent, -444, title::kNote, kNoteBox, from, to);
    }
    return migration.changed();
}

bool setVersionField(DocumentContext& context, UserInterface* parent, int target,
                     IoStatus* failure) {
    const auto number = formatPrintf("%2.2d", editionNumber(target));
    const auto line = formatPrintf("%s:%s;\r\n", kVersionCode, number);
    bool changed = false;
    ByteSource source;
    auto status = source.open(context.files.path(working::kGeneral));
    const bool missing = isMissing(status);
    const bool told = status.ok() && context.reader.findField(nullptr, source, {}, kVersionCode, 0);
    status = status.ok() ? source.status() : status;
    source.close();
    if (missing) {
        status = target < kFirstTold ? IoStatus() : context.files.put(working::kGeneral, line);
        changed = target >= kFirstTold && status.ok();
    } else if (status.ok() && target < kFirstTold) {
        changed = rewriteCommands(context.files, working::kGeneral, kVersionCode, std::nullopt,
                                  std::nullopt, &status,
                                  changedByTextLog(context.messages, parent, title::kWarning));
    } else if (status.ok() && told) {
        changed =
            rewriteCommands(context.files, working::kGeneral, kVersionCode, std::nullopt, number,
                            &status, changedByTextLog(context.messages, parent, title::kWarning));
    } else if (status.ok()) {
        changed = rewriteGroup(
            context.files, context.reader, working::kGeneral, Cut::Commands, [](CommandEdit&) {},
            [&line](bool) { return line; }, status);
    }
    if (!status.ok()) {
        report(parent, status, failure);
    }
    return changed;
}

VersionOptions readVersionOptions(const DocumentContext& context) {
    VersionOptions options;
    options.inputVersion = settingsEdition(context.settings, setting::kInputEdition);
    options.method = context.settings.get(setting::kOutputMethod);
    options.outputVersion = settingsEdition(context.settings, setting::kOutputEdition);
    return options;
}

bool mayEditVersionOptions(DocumentContext& context, UserInterface* parent) {
    if (!context.document.open || !context.document.changed) {
        return true;
    }
    context.messages.show(parent, -441, title::kNote, kNoteBox,
                          editionNumber(context.document.version));
    return false;
}

namespace {

/// Brings the open document to the edition of the settings, as a whole or not at all. True if
/// a file changed.
bool migrateOpen(DocumentContext& context, ConversionStore& conversions, UserInterface* parent,
                 const ConvertStreamStep& convertStream, IoStatus* failure) {
    Transaction transaction(context, OperationId::ChangeEdition);
    IoStatus status;
    int input = 0;
    const int target = detectVersions(context, parent, input);
    const bool changed = migrateDocument(context, conversions, parent, context.document.version,
                                         target, convertStream, &status);
    if (status.ok()) {
        status = transaction.commit();
        return changed && status.ok();
    }
    if (!transaction.takeBack(parent) && failure != nullptr) {
        *failure = status;
    }
    return false;
}

}  // namespace

bool editVersionOptions(DocumentContext& context, ConversionStore& conversions,
                        UserInterface* parent, const VersionOptions& options,
                        const ConvertStreamStep& convertStream, IoStatus* failure) {
    if (!mayEditVersionOptions(context, parent)) {
        return false;
    }
    const auto before = readVersionOptions(context);
    context.settings.set(setting::kInputEdition, std::to_string(options.inputVersion));
    context.settings.set(setting::kOutputMethod, options.method);
    context.settings.set(setting::kOutputEdition, std::to_string(options.outputVersion));
    bool changed = before.inputVersion != options.inputVersion || before.method != options.method ||
                   before.outputVersion != options.outputVersion;
    auto& document = context.document;
    if (document.open) {
        context.store.deleteFiles(nullptr, working::kMessageLog);
        if (migrateOpen(context, conversions, parent, convertStream, failure)) {
            changed = true;
        }
        context.messages.showLog(parent, document.path);
    }
    return changed;
}

}  // namespace kavu
