// New data sources and streams from a template.
#include "core/TmatsDocument.h"
#include "core/document/GroupFiles.h"
#include "core/document/Transaction.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/UserInterface.h"
#include "groups/DataSources.h"
#include "groups/SourceEdit.h"
#include "groups/SourceList.h"
#include "groups/SourceNames.h"
#include "vocabulary/PAsyncFields.h"
#include "vocabulary/PGroupFields.h"
#include "vocabulary/SGroupFields.h"
#include "vocabulary/StreamType.h"

#include <algorithm>
#include <array>

namespace kavu {

namespace {

constexpr const char* kNewName = "Enter New Data Source Name";
// The same question as for a new document.
constexpr const char* kKindQuestion =
    "Which kind of TMATS Data Source would you like to create?\n\n"
    "RF: Creates a TMATS T-Group definition\n"
    "Tape: Creates a TMATS R-Group definition";

/// A field of a new P group: its setting, and what a bus stream always has.
struct StreamField {
    std::string_view code;
    TextKey setting;
    std::string_view ofBus{};
};
constexpr auto kSignalFields = std::to_array<StreamField>({
    {p::kD1.code, setting::kStreamCode},
    {p::kD2.code, setting::kStreamBitRate},
    {p::kD3.code, setting::kStreamEncryption},
    {p::kD4.code, setting::kStreamPolarity},
    {p::kD5.code, setting::kStreamPolarityCorrection},
    {p::kD6.code, setting::kStreamDirection},
    {p::kD7.code, setting::kStreamRandomized},
    {p::kD8.code, setting::kStreamRandomizerLength},
});
constexpr auto kWordFields = std::to_array<StreamField>({
    {p::kF2.code, setting::kStreamTransferOrder, p::bus::kWordOrder},
    {p::kF3.code, setting::kStreamParity, p::bus::kParity},
    {p::kF4.code, setting::kStreamParityOrder, p::bus::kParityOrder},
});
constexpr auto kSyncFields = std::to_array<StreamField>({
    {p::kSync1.code, setting::kStreamSyncCriteria},
    {p::kSync2.code, setting::kStreamSyncBits},
    {p::kSync3.code, setting::kStreamUnsyncCriteria},
    {p::kSync4.code, setting::kStreamUnsyncBits},
});

struct NewStream {
    bool wanted = false;
    std::string type = "PCM";
    std::string link;

    [[nodiscard]] bool isBus() const { return type == stream_type::kBus1553.stored; }
};

/// The commands of a new P group, in the order in which they are written.
class StreamText {
  public:
    StreamText(const DocumentContext& context, const NewStream& stream, int index)
        : settings_(context.settings), stream_(stream), prefix_(groupHead('P', index)) {}

    std::string make() {
        put(p::kDln.code, stream_.link);
        putAll(kSignalFields);
        put(p::kTf.code, stream_.type);
        const bool bus = stream_.isBus();
        const int wordLength =
            bus ? p::bus::kWordLength : settings_.get(setting::kStreamWordLength);
        put(p::kF1.code, std::to_string(wordLength));
        putAll(kWordFields);
        put(p::kMfN.code,
            std::to_string(bus ? p::bus::kFrames : settings_.get(setting::kStreamFrames)));
        const int words = settings_.get(setting::kStreamWords);
        put(p::kMf1.code, std::to_string(words));
        const std::string pattern =
            bus ? std::string(p::bus::kSyncPattern) : settings_.get(setting::kStreamSyncPattern);
        // The sync word is one of the words of the minor frame.
        const auto bits = static_cast<std::int64_t>(pattern.size()) +
                          std::int64_t{std::max(words - 1, 0)} * std::max(wordLength, 0);
        put(p::kMf2.code, std::to_string(bits));
        put(p::kMf3.code,
            bus ? std::string(p::bus::kSyncType) : settings_.get(setting::kStreamSyncType));
        put(p::kMf4.code, std::to_string(pattern.size()));
        put(p::kMf5.code, pattern);
        putAll(kSyncFields);
        put(p::kIsfN.code, "0");
        put(p::kAefN.code, "0");
        return std::move(text_);
    }

  private:
    void put(std::string_view code, std::string_view value) {
        if (!value.empty()) {
            text_.append(prefix_).append(code).append(":").append(value).append(";\r\n");
        }
    }
    template <typename Fields>
    void putAll(const Fields& fields) {
        for (const auto& field : fields) {
            put(field.code, stream_.isBus() && !field.ofBus.empty() ? std::string(field.ofBus)
                                                                    : settings_.get(field.setting));
        }
    }

    const ProfileSettings& settings_;
    const NewStream& stream_;
    std::string prefix_;
    std::string text_;
};

/// The data that a new stream starts with: an empty bus, or one empty measurement list.
std::string dataText(const NewStream& stream, int index) {
    if (stream.isBus()) {
        return formatPrintf("B-%d\\DLN:%s;\r\n", index, stream.link);
    }
    return formatPrintf(
        "D-%d\\DLN:%s;\r\nD-%d\\ML\\N:1;\r\n"
        "D-%d\\MLN-1:Measurement List;\r\nD-%d\\MN\\N-1:0;\r\n",
        index, stream.link, index, index, index);
}

NewStream askStream(const DocumentContext& context, UserInterface* parent) {
    NewStream stream;
    if (showBox(parent, "Do you want to create a new stream, too?", "New Stream", Icon::Question,
                Buttons::YesNo, Button::Yes) != Button::Yes) {
        return stream;
    }
    const int edition = context.document.version;
    std::vector<std::string> shown = {"PCM", std::string(stream_type::kBus1553.stored)};
    if (edition >= kPacketEdition && edition <= kLastPacketEdition) {
        shown.emplace_back("Packet Telemetry");
    }
    const int choice = parent->chooseFromList("What Type Of Stream?", shown);
    if (choice < 0) {
        return stream;
    }
    stream.wanted = true;
    constexpr auto kTypes = std::to_array<std::string_view>(
        {"PCM", stream_type::kBus1553.stored, stream_type::kPacket.stored});
    stream.type = kTypes.at(static_cast<std::size_t>(choice));
    if (choice == 2 && edition < kPacketEdition) {
        stream.type = "PCM";
    }
    return stream;
}

/// Writes the files of the stream. The multiplex definition names its link even without a
/// stream: the stream's editor makes what is missing.
IoStatus writeStream(DocumentContext& context, const std::string& source, const NewStream& stream,
                     int multiplex, int format, int data) {
    auto status = writeGroupFile(
        context, 'M', multiplex,
        formatPrintf("M-%d\\ID:%s;\r\nM-%d\\BSG1:PCM;\r\nM-%d\\BB\\DLN:%s;\r\nM-%d\\SI\\N:0;\r\n",
                     multiplex, source, multiplex, multiplex, stream.link, multiplex));
    if (status.ok() && stream.wanted) {
        status = writeGroupFile(context, 'P', format, StreamText(context, stream, format).make());
    }
    if (status.ok() && stream.wanted) {
        status = writeGroupFile(context, stream.isBus() ? 'B' : 'D', data, dataText(stream, data));
    }
    return status;
}

/// Asks for the stream and writes it.
bool makeStream(DocumentContext& context, UserInterface* parent, const std::string& source) {
    auto stream = askStream(context, parent);
    LinkNames links;
    if (!gatherLinkNames(context, parent, links)) {
        return false;
    }
    const char dataLetter = stream.isBus() ? 'B' : 'D';
    const int format = indexForNew(context, parent, 'P', "PCM Format");
    const int multiplex = format == 0 ? 0 : indexForNew(context, parent, 'M', "Multiplex");
    const int data = multiplex == 0 ? 0 : indexForNew(context, parent, dataLetter, "PCM Format");
    if (data == 0) {
        return false;
    }
    stream.link =
        uniqueName(formatPrintf("%s Stream %d", stream.isBus() ? "1553" : "PCM", format), links);
    const auto status = writeStream(context, source, stream, multiplex, format, data);
    if (!status.ok()) {
        reportUnableToWrite(parent, status);
    }
    return status.ok();
}

std::optional<std::string> askSourceName(DocumentContext& context, UserInterface* parent,
                                         const std::vector<DataSource>& sources) {
    TextPrompt prompt;
    prompt.title = kNewName;
    prompt.prompt = kNewName;
    prompt.limit = kNameLimit;
    LinkNames names;
    for (const auto& source : sources) {
        names.add(source.name);
        prompt.listed.push_back(source.name);
    }
    return askName(parent, prompt, [&](const std::string& name) {
        if (!isAcceptableName(context, parent, name, kNewName)) {
            return false;
        }
        if (names.has(name)) {
            context.messages.show(parent, 141, title::kError, kErrorBox);
            return false;
        }
        return true;
    });
}

}  // namespace

std::vector<SourceRow> sourcesOfGroup(DocumentContext& context, UserInterface* parent,
                                      char letter) {
    std::vector<DataSource> sources;
    readDataSources(context, parent, sources);
    const GroupNames files(context, parent, letter);
    std::vector<SourceRow> rows;
    const auto isOffered = [letter](char sourceClass) {
        return letter == 'T' ? sourceClass == 'R' : letter != 'R' || sourceClass == 'T';
    };
    for (auto& source : sources) {
        if (!source.name.empty() && isOffered(dataSourceClass(source.type))) {
            const int index = files.find(source.name);
            rows.push_back({std::move(source.name), std::move(source.type), index});
        }
    }
    return rows;
}

bool createStream(DocumentContext& context, UserInterface* parent, const std::string& source) {
    if (!inTransaction(context, parent, OperationId::CreateSource,
                       [&] { return makeStream(context, parent, source); })) {
        return false;
    }
    releaseStream(context);
    return true;
}

bool createDataSource(SourceParts& parts, UserInterface* parent) {
    auto& context = parts.context;
    std::vector<DataSource> sources;
    if (showBox(parent, "Add a new data source/stream?", "New Data Source", Icon::Question,
                Buttons::YesNo, Button::Yes) != Button::Yes ||
        !readDataSources(context, parent, sources)) {
        return false;
    }
    const int rows = static_cast<int>(sources.size());
    if (rows >= kMostListRows) {
        context.messages.show(parent, 303, title::kError, kErrorBox, "data source");
        return false;
    }
    const auto name = askSourceName(context, parent, sources);
    if (!name) {
        return false;
    }
    const int kind = parent->chooseFromList(kKindQuestion, {"RF", "Tape"});
    if (kind < 0) {
        return false;
    }
    const char letter = kind == 0 ? 'T' : 'R';
    const int index = indexForNew(context, parent, letter, letter == 'T' ? "RF" : "Tape");
    if (index == 0) {
        return false;
    }
    Transaction transaction(context, OperationId::CreateSource);
    auto status = appendSource(context, rows, *name, kind == 0 ? "RF" : "TAP");
    if (status.ok()) {
        auto text = formatPrintf("%c-%d\\ID:%s;\r\n", letter, index, *name);
        text += letter == 'T' ? formatPrintf("T-%d\\SCO\\N:0;\r\n", index) : std::string();
        status = writeGroupFile(context, letter, index, text);
    }
    if (!status.ok()) {
        reportUnableToWrite(parent, status);
    }
    if (!endTransaction(transaction, parent, status.ok() && makeStream(context, parent, *name))) {
        return false;
    }
    releaseStream(context);
    return true;
}

}  // namespace kavu
