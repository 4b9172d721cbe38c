#include "pcm/structure/StreamSummary.h"

#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/CommandIndex.h"
#include "core/document/GroupFiles.h"
#include "groups/DocumentTree.h"
#include "groups/GroupScan.h"
#include "pcm/PcmFormat.h"
#include "pcm/model/SubframeFields.h"
#include "pcm/structure/SubframeEdit.h"
#include "vocabulary/PGroupFields.h"
#include "vocabulary/StreamType.h"

#include <algorithm>

namespace kavu {

namespace {

std::string counted(std::size_t count, std::string_view what) {
    auto text = std::to_string(count).append(" ").append(what);
    return count == 1 ? text : text + "s";
}

}  // namespace

StreamSummary summariseStream(const PcmFormat& format) {
    StreamSummary summary;
    summary.kind = streamKindText(format.typeFormat);
    summary.words = format.wordsPerMinorFrame;
    summary.frames = format.numberOfFrames;
    summary.bitRate = format.bitRate.str();
    summary.counters = countIdCounters(format);
    for (const auto& counter : format.idCounters) {
        summary.subframes += static_cast<int>(std::count_if(
            counter.subframes.begin(), counter.subframes.end(),
            [](const Subframe& subframe) { return !subframe.name.empty() && !subframe.hidden; }));
    }
    summary.measurements = static_cast<std::size_t>(format.cells().nameCount());
    return summary;
}

StreamSummary readStreamSummary(DocumentContext& context, UserInterface* parent, int pGroup,
                                std::size_t measurements) {
    const auto wanted = std::to_array({p::kTf.code, p::kD2.code, p::kMf1.code, p::kMfN.code,
                                       p::kIsfN.code, codeHead(subframe_field::kCount.field.code)});
    CommandIndex fields;
    const auto status = fields.readFile(
        context.reader, context.store.pathOf(groupFile('P', pGroup)), Comments::Skip, wanted);
    StreamSummary summary;
    if (!status.ok()) {
        reportUnableToRead(parent, status);
        return summary;
    }
    // A value that is too long is reported when the stream is loaded.
    const auto prefix = groupHead('P', pGroup);
    const auto text = [&](std::string_view code) {
        const auto found = fields.find(prefix + std::string(code));
        return found ? std::optional(found->value) : std::nullopt;
    };
    const auto number = [&](std::string_view code, int otherwise, int most) {
        return std::min(
            fields.findIntField(nullptr, prefix + std::string(code)).value_or(otherwise), most);
    };
    summary.kind = streamKindText(text(p::kTf.code).value_or(stream_type::kClassOne.stored));
    summary.words = number(p::kMf1.code, 1, kMostWords);
    summary.frames = number(p::kMfN.code, 1, kMostFrames);
    summary.bitRate = text(p::kD2.code).value_or("").substr(0, p::kD2.limit);
    summary.counters = number(counter_field::kCount.field.code, 0, kMostIdCounters);
    for (int n = 1; n <= summary.counters && context.document.version < kHiddenSubframesEdition;
         ++n) {
        summary.subframes +=
            number(fieldCode(subframe_field::kCount.field.code, {n}), 0, kMostSubframes);
    }
    summary.measurements = measurements;
    return summary;
}

std::string summaryText(const StreamSummary& summary) {
    const auto size = [](int count) { return static_cast<std::size_t>(std::max(0, count)); };
    auto text =
        counted(size(summary.words), "word") + ", " + counted(size(summary.frames), "frame");
    if (!summary.bitRate.empty()) {
        text += ", " + summary.bitRate + " bit/s";
    }
    if (summary.counters > 0) {
        text += ", " + counted(size(summary.counters), "ID counter");
    }
    if (summary.subframes > 0) {
        text += ", " + counted(size(summary.subframes), "subframe");
    }
    return text + ", " + counted(summary.measurements, "measurement");
}

}  // namespace kavu
