#include "groups/SourceList.h"

#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/CarriedCommands.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupFiles.h"
#include "core/document/GroupRewrite.h"
#include "core/talk/Messages.h"
#include "core/text/Text.h"
#include "vocabulary/GGroupFields.h"

#include <map>
#include <set>

namespace kavu {

namespace {

/// Calls `visit(row, isName, value)` for every name and every type of the list, whatever the
/// count says.
template <typename Visit>
IoStatus forEachRow(DocumentContext& context, const Visit& visit) {
    const SourceCodes codes;
    const auto status = forEachCommand(
        context.reader, context.store.pathOf(working::kGeneral), [&](const std::string& command) {
            const auto view = viewCommand(command);
            const bool isName = startsWithIgnoreCase(view.code, codes.name);
            if (isName || startsWithIgnoreCase(view.code, codes.type)) {
                const auto& front = isName ? codes.name : codes.type;
                visit(leadingInteger(view.code.substr(front.size())), isName, view.value);
            }
            return true;
        });
    return isMissing(status) ? IoStatus() : status;
}

/// Changes the G file, or makes it. Rows may move; what is in front of one moves with it.
IoStatus editGeneral(DocumentContext& context, const Visit& edit,
                     const std::function<std::string()>& tail) {
    PathKind kind = PathKind::Missing;
    if (auto status = probePath(context.files.path(working::kGeneral), kind); !status.ok()) {
        return status;
    }
    if (kind == PathKind::Missing) {
        return context.files.put(working::kGeneral, tail());
    }
    CarriedCommands carried(CarriedCommands::Follow::Values);
    auto status = gatherCarried(context.files, context.reader, working::kGeneral, carried);
    if (!status.ok()) {
        return status;
    }
    rewriteGroup(
        context.files, context.reader, working::kGeneral, Cut::Commands,
        [&edit](CommandEdit& command) {
            if (CarriedCommands::isCarried(viewCommand(command.text()))) {
                command.erase();
            } else {
                edit(command);
            }
        },
        [&](bool) { return tail(); }, status);
    return status.ok() ? putCarriedBack(context.files, context.reader, working::kGeneral, carried)
                       : status;
}

}  // namespace

IoStatus appendSource(DocumentContext& context, int rows, std::string_view name,
                      std::string_view type) {
    const int row = rows + 1;
    const SourceCodes codes;
    const auto nameCode = formatPrintf("%s%d", codes.name, row);
    const auto typeCode = formatPrintf("%s%d", codes.type, row);
    const auto count = formatPrintf("%s:%d;", codes.count, row);
    std::set<std::int64_t> taken;
    if (auto status = forEachRow(
            context, [&](std::int64_t number, bool, std::string_view) { taken.insert(number); });
        !status.ok()) {
        return status;
    }
    std::int64_t unused = row;
    while (taken.contains(++unused)) {
    }
    bool counted = false;
    const auto edit = [&](CommandEdit& command) {
        const auto code = viewCommand(command.text()).code;
        if (equalsIgnoreCase(code, codes.count)) {
            command.replace(counted ? std::string() : count);
            counted = true;
            return;
        }
        // A row after the old count must not be taken for the new one. It may be the only
        // one that names a group, so it is moved.
        const bool isName = equalsIgnoreCase(code, nameCode);
        if (isName || equalsIgnoreCase(code, typeCode)) {
            command.replace(formatPrintf("%s%d", isName ? codes.name : codes.type, unused) +
                            command.text().substr(code.size()));
        }
    };
    return editGeneral(context, edit, [&] {
        return (counted ? std::string() : count + "\r\n") + codes.rowText(row, name, type);
    });
}

IoStatus readUncountedSources(DocumentContext& context, int counted,
                              std::vector<DataSource>& rows) {
    std::map<std::int64_t, DataSource> found;
    const auto status =
        forEachRow(context, [&](std::int64_t row, bool isName, std::string_view value) {
            if (row < 1 || row > counted) {
                auto& text = isName ? found[row].name : found[row].type;
                text = text.empty() ? std::string(value) : text;
            }
        });
    for (auto& [row, source] : found) {
        rows.push_back(std::move(source));
    }
    return status;
}

IoStatus rewriteSources(DocumentContext& context, std::span<const DataSource> rows,
                        std::span<const DataSource> uncounted) {
    const SourceCodes codes;
    const auto edit = [&](CommandEdit& command) {
        const auto code = viewCommand(command.text()).code;
        if (equalsIgnoreCase(code, codes.count) || startsWithIgnoreCase(code, codes.name) ||
            startsWithIgnoreCase(code, codes.type)) {
            command.erase();
        }
    };
    return editGeneral(context, edit, [&] {
        auto text = formatPrintf("%s:%d;\r\n", codes.count, rows.size());
        int row = 0;
        for (const auto& some : {rows, uncounted}) {
            for (const auto& source : some) {
                ++row;
                // A row without a name stays: the numbers of the others depend on it.
                text += source.name.empty() ? std::string()
                                            : codes.rowText(row, source.name, source.type);
            }
        }
        return text;
    });
}

int indexForNew(DocumentContext& context, UserInterface* parent, char letter,
                std::string_view called) {
    const int index = firstFreeIndex(context, letter);
    if (index <= kMostGroupIndex) {
        return index;
    }
    context.messages.show(parent, 303, title::kError, kErrorBox, called);
    return 0;
}

IoStatus writeGroupFile(DocumentContext& context, char letter, int index, const std::string& text) {
    return context.files.put(groupFile(letter, index), text);
}

void releaseStream(DocumentContext& context) {
    if (context.steps.releasePcmFormat) {
        context.steps.releasePcmFormat();
    }
}

}  // namespace kavu
