// A copy of a data source with its streams.
#include "conversion/ConversionStore.h"
#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/GroupFiles.h"
#include "core/document/Transaction.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"
#include "groups/MeasurementNames.h"
#include "groups/SourceConversions.h"
#include "groups/SourceEdit.h"
#include "groups/SourceList.h"
#include "groups/SourceNames.h"
#include "groups/SourceTransfer.h"
#include "vocabulary/StreamType.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr const char* kCopyTitle = "Duplicate Data Source";
constexpr const char* kExists = "This name already exists. Please select another name";
constexpr const char* kAffixTitle = "Measurement Prefix And Suffix";
constexpr std::size_t kLongestAffix = 31;

/// The groups of one stream: its P group and the group with its data.
struct StreamGroups {
    int format = 0;
    char dataLetter = 0;
    int data = 0;
};

/// Finds the streams of links.
class StreamFinder {
  public:
    StreamFinder(DocumentContext& context, UserInterface* parent)
        : measurements_(context, parent, 'D'),
          buses_(context, parent, 'B'),
          messages_(context, parent, 'S') {
        complete_ = readPcmLinks(context, parent, formats_) && measurements_.complete() &&
                    buses_.complete() && messages_.complete();
    }
    [[nodiscard]] bool complete() const { return complete_; }

    [[nodiscard]] StreamGroups find(const std::string& link) const {
        StreamGroups groups;
        const auto format = std::find_if(formats_.begin(), formats_.end(),
                                         [&](const PcmLinks& f) { return f.link == link; });
        std::string letters = "DBS";
        if (format != formats_.end()) {
            groups.format = format->index;
            letters = dataLetterOf(format->format);
        }
        for (const char letter : letters) {
            const auto& names = letter == 'D' ? measurements_ : letter == 'B' ? buses_ : messages_;
            if (const int index = names.find(link); index > 0) {
                groups.dataLetter = letter;
                groups.data = index;
                break;
            }
        }
        return groups;
    }

  private:
    std::vector<PcmLinks> formats_;
    GroupNames measurements_;
    GroupNames buses_;
    GroupNames messages_;
    bool complete_ = false;
};

/// What is copied, and under which name.
struct CopyPlan {
    DataSource source;  ///< the original
    int rows = 0;       ///< of the list of data sources
    std::string newName;
    NameAffixes affixes;
};

class SourceCopier {
  public:
    SourceCopier(SourceParts& parts, UserInterface* parent, CopyPlan plan)
        : parts_(parts),
          parent_(parent),
          plan_(std::move(plan)),
          transfer_(parts.context, plan_.newName, plan_.affixes),
          transaction_(parts.context, OperationId::CopySource) {}

    bool run() {
        return endTransaction(
            transaction_, parent_,
            gather() && copyFiles() && !transfer_.tellTooLong(parent_) && finish());
    }

  private:
    /// Finds the groups, and new names for their links.
    bool gather() {
        auto& context = parts_.context;
        std::vector<Multiplex> multiplexes;
        LinkNames taken;
        if (!readMultiplexes(context, parent_, multiplexes) ||
            !gatherLinkNames(context, parent_, taken)) {
            return false;
        }
        for (const auto& multiplex : multiplexes) {
            if (multiplex.source != plan_.source.name) {
                continue;
            }
            multiplexes_.push_back(multiplex.index);
            for (const auto& link : multiplex.links) {
                if (std::find(links_.begin(), links_.end(), link) != links_.end()) {
                    continue;
                }
                links_.push_back(link);
                const auto newLink = uniqueName(link, taken);
                taken.add(newLink);
                transfer_.renameLink(link, newLink);
            }
        }
        return true;
    }

    bool copyFiles() {
        setStatusText(parent_, "Copying Data Source Files");
        for (const char letter : {'T', 'R'}) {
            const GroupNames groups(parts_.context, parent_, letter);
            if (!groups.complete()) {
                return false;
            }
            if (const int index = groups.find(plan_.source.name); index > 0) {
                if (!copyGroup(letter, index)) {
                    return false;
                }
                break;
            }
        }
        for (const int index : multiplexes_) {
            if (!copyGroup('M', index)) {
                return false;
            }
        }
        const StreamFinder finder(parts_.context, parent_);
        if (!finder.complete()) {
            return false;
        }
        std::vector<StreamGroups> streams;
        setStatusText(parent_, "Copying Stream Files");
        for (const auto& link : links_) {
            streams.push_back(finder.find(link));
            if (streams.back().format > 0 && !copyGroup('P', streams.back().format)) {
                return false;
            }
        }
        setStatusText(parent_, "Copying Measurement Files");
        return std::all_of(streams.begin(), streams.end(), [this](const StreamGroups& stream) {
            return stream.data == 0 || copyGroup(stream.dataLetter, stream.data);
        });
    }

    bool copyGroup(char letter, int index) {
        yieldToInterface(parent_);
        if (transfer_.expects(letter, index)) {
            return true;
        }
        return transfer_.expect(parent_, letter, index) &&
               transfer_.takeFile(parent_, letter, index);
    }

    bool finish() {
        setStatusText(parent_, "Updating Data Source Names");
        const auto status =
            appendSource(parts_.context, plan_.rows, plan_.newName, plan_.source.type);
        if (!status.ok()) {
            reportUnableToWrite(parent_, status);
            return false;
        }
        // The names were changed with the copy; only the files have to be moved in.
        setStatusText(parent_, "Updating Data Link Names");
        setStatusText(parent_, "Updating Measurement Names");
        if (!transfer_.moveIn(parent_)) {
            return false;
        }
        setStatusText(parent_, "Adding EU Conversion Information");
        return !plan_.affixes.wanted || copyConversions(parts_, parent_, transfer_.measurements());
    }

    SourceParts& parts_;
    UserInterface* parent_;
    CopyPlan plan_;
    SourceTransfer transfer_;
    Transaction transaction_;
    std::vector<int> multiplexes_;
    std::vector<std::string> links_;  ///< at most as many as a document can have
};

std::optional<std::string> askCopyName(const DocumentContext& context, UserInterface* parent,
                                       const std::vector<DataSource>& sources,
                                       const std::string& name) {
    LinkNames taken;
    TextPrompt prompt{kCopyTitle, "Enter New Name", name, kNameLimit};
    for (const auto& source : sources) {
        taken.add(source.name);
        prompt.listed.push_back(source.name);
    }
    return askName(parent, prompt, [&](const std::string& entered) {
        if (!isAcceptableName(context, parent, entered, kCopyTitle)) {
            return false;
        }
        if (taken.has(entered)) {
            showBox(parent, kExists, kCopyTitle);
            return false;
        }
        return true;
    });
}

/// What the user wants; nothing if there is nothing to copy or it was cancelled.
std::optional<CopyPlan> askPlan(DocumentContext& context, UserInterface* parent,
                                const std::string& name) {
    std::vector<DataSource> sources;
    if (!readDataSources(context, parent, sources)) {
        return std::nullopt;
    }
    auto row = std::find_if(sources.begin(), sources.end(),
                            [&](const DataSource& source) { return source.name == name; });
    if (name.empty() || row == sources.end()) {
        showBox(parent, formatPrintf("There is no data source '%s' in this document.", name),
                kCopyTitle);
        return std::nullopt;
    }
    if (sources.size() >= static_cast<std::size_t>(kMostListRows)) {
        context.messages.show(parent, 303, title::kError, kErrorBox, "data source");
        return std::nullopt;
    }
    if (showBox(parent, "Do you wish to make a copy of this Data Source?", kCopyTitle,
                Icon::Question, Buttons::YesNo, Button::Yes) != Button::Yes) {
        return std::nullopt;
    }
    CopyPlan plan;
    plan.source = *row;
    plan.rows = static_cast<int>(sources.size());
    const auto newName = askCopyName(context, parent, sources, name);
    if (!newName || !askPrefixSuffix(context, parent, plan.affixes)) {
        return std::nullopt;
    }
    plan.newName = *newName;
    return plan;
}

}  // namespace

bool askPrefixSuffix(DocumentContext& context, UserInterface* parent, NameAffixes& affixes) {
    affixes = {};
    const auto answer = showBox(
        parent,
        "Would you like to change the names of measurements that are copied, by adding a prefix "
        "and/or suffix to each measurement name?",
        "Import Data Source", Icon::Question, Buttons::YesNoCancel, Button::No);
    if (answer != Button::Yes) {
        return answer != Button::Cancel;
    }
    auto& settings = context.settings;
    const auto entered = parent->enterTexts(
        kAffixTitle,
        {{kAffixTitle, "Prefix:", settings.get(setting::kImportPrefix), kLongestAffix},
         {kAffixTitle, "Suffix:", settings.get(setting::kImportSuffix), kLongestAffix}});
    if (!entered) {
        return false;
    }
    for (const auto& text : *entered) {
        if (text.find(';') != std::string::npos || holdsLineBreak(text)) {
            context.messages.show(parent, message::kNoSemicolon, title::kIllegalCharacter,
                                  kErrorBox);
            return false;
        }
    }
    affixes.prefix = entered->at(0);
    affixes.suffix = entered->at(1);
    affixes.wanted = !affixes.prefix.empty() || !affixes.suffix.empty();
    settings.set(setting::kImportPrefix, affixes.prefix);
    settings.set(setting::kImportSuffix, affixes.suffix);
    return true;
}

bool copyDataSource(SourceParts& parts, UserInterface* parent, const std::string& name) {
    auto& context = parts.context;
    auto plan = askPlan(context, parent, name);
    if (!plan) {
        return false;
    }
    context.store.deleteFiles(nullptr, working::kMessageLog);
    ProgressScope progress(parent, ProgressMode::WithCancel);
    const bool done = SourceCopier(parts, parent, std::move(*plan)).run();
    progress.close();
    setProgressBar(parent, -1);
    setStatusText(parent, {});
    context.messages.showLog(parent, context.document.path);
    if (done) {
        parts.measurements.checkForDuplicates(parent);
        releaseStream(context);
    }
    return done;
}

}  // namespace kavu
