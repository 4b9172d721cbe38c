#include "xml/bridge/write/LinkWriter.h"

#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "xml/bridge/write/AsyncWriter.h"
#include "xml/bridge/write/MeasurementWriter.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

namespace kavu {

namespace {

std::optional<SdkGroup> groupOf(ExportRun& run, const SdkLink& link, char letter) {
    const int number = link.group(letter);
    return number == 0 ? std::nullopt : run.session.openGroup(letter, number);
}

/// The command that names the link of a group.
constexpr std::string_view kLink = "DLN";

bool holdsMessages(const SdkGroup& bus) {
    for (std::size_t place = 0; place < bus.size(); ++place) {
        if (isOfPattern(bus.at(place).field, "NMS\\N-n")) {
            return true;
        }
    }
    return false;
}

}  // namespace

bool LinkWriter::write(const SdkLink& link) {
    run_.status(formatPrintf("Creating DataLink '%s'...", link.name));
    isParsed_ = true;
    run_.tags.open("DataLink" + run_.attribute("Name", link.name));
    const bool isDone = (run_.isSchema() ? writeOne(link) : writeAll(link)) &&
                        (!isParsed_ || conversions_.writeLink(link));
    run_.tags.close(run_.isSchema());
    return isDone;
}

bool LinkWriter::writeAll(const SdkLink& link) {
    return writePcm(link, false) && writeBus(link, {}) &&
           writeSimple(link, 'A', "PAMAttributes", pamPlan()) &&
           writeSimple(link, 'S', "MessageDataAttributes", messagePlan());
}

/// A link has one kind of groups in the schema: the one that the file says most of. A bus without
/// messages is a part of its PCM format, where there are no measurements beside it.
bool LinkWriter::writeOne(const SdkLink& link) {
    const auto sizeOf = [&](char letter) {
        const auto group = groupOf(run_, link, letter);
        return group ? group->size() : std::size_t{0};
    };
    const auto bus = groupOf(run_, link, 'B');
    const bool isBusOfFormat =
        bus && link.group('P') != 0 && link.group('D') == 0 && !holdsMessages(*bus);
    const std::size_t pcm =
        sizeOf('P') + sizeOf('D') + (isBusOfFormat ? bus->size() : std::size_t{0});
    const std::size_t other = std::max(sizeOf('A'), sizeOf('S'));
    if (pcm > 0 && pcm >= std::max(sizeOf('B'), other)) {
        return writePcm(link, isBusOfFormat);
    }
    if (bus && bus->size() >= other) {
        return writeBus(link, " BusParity UserDefined MeasurementName ");
    }
    return sizeOf('A') >= sizeOf('S')
               ? writeSimple(link, 'A', "PAMAttributes", pamPlan())
               : writeSimple(link, 'S', "MessageDataAttributes", messagePlan());
}

bool LinkWriter::writeSimple(const SdkLink& link, char letter, std::string_view element,
                             std::span<const PlanStep> steps, std::string_view without) {
    auto group = groupOf(run_, link, letter);
    if (!group) {
        return true;
    }
    const std::string name(1, letter);
    run_.status("Converting TMATS '" + name + "' group to XML...");
    run_.tags.open(std::string(element), "\n" + name + " Group");
    GroupRows rows(std::move(*group));
    {
        const CheckedPart part(run_, letter, {}, without);
        PlanWriter(run_.tags, run_.values, rows, run_.plan(letter, steps)).run();
    }
    run_.loseRest(rows, kLink);
    // The schema wants a bus in the group of buses.
    run_.closeNamed(rows.code(kLink, {}), letter != 'B');
    return !run_.isCancelled();
}

/// The length of the pattern is that of the text.
void LinkWriter::writeSyncPattern(PlanWriter& plan, const ElementStep& step) {
    auto& rows = plan.rows();
    const auto pattern = rows.take(rows.stem("MF5"), {});
    if (!pattern) {
        return;
    }
    const auto text = trim(*pattern);
    const int length = rows.stem("MF4");
    if (const auto stated = rows.peek(length, {});
        stated && trim(*stated) == std::to_string(text.size())) {
        (void)rows.take(length, {});
    }
    plan.moveAround(step);
    run_.tags.value(step.path.back(), run_.values.plain(*pattern), rows.code("MF5", {}));
}

bool LinkWriter::writePcm(const SdkLink& link, bool hasBus) {
    auto group = groupOf(run_, link, 'P');
    auto measurements = groupOf(run_, link, 'D');
    if (!group && !measurements) {
        return true;
    }
    run_.tags.open("PCMFormatAttributes", "\nP Group");
    std::string linkCode;
    if (group) {
        run_.status("Converting TMATS 'P' group to XML...");
        GroupRows rows(std::move(*group));
        const CheckedPart part(run_, 'P');
        AsyncWriter async(run_, link.number);
        PlanWriter(run_.tags, run_.values, rows, run_.plan('P', pcmPlan()),
                   [&](PlanWriter& plan, const ElementStep& step, const RowNumbers& at) {
                       if (step.code == "MF5") {
                           writeSyncPattern(plan, step);
                           return true;
                       }
                       return async.write(plan, step, at);
                   })
            .run();
        run_.loseRest(rows, kLink);
        linkCode = rows.code(kLink, {});
    }
    // What the stream has wrong is said by the session.
    isParsed_ = !group || !measurements || run_.session.ParseTmatsPcmFormatInfo(link.number) == 0;
    run_.collect();
    bool isDone = !run_.isCancelled();
    if (isDone && measurements) {
        run_.status("Converting TMATS 'D' group to XML...");
        isDone = MeasurementWriter(run_, link).write(std::move(*measurements));
    }
    if (isDone && hasBus) {
        isDone = writeBus(link, " Message ");
    }
    run_.closeNamed(linkCode);
    return isDone;
}

}  // namespace kavu
