#include "groups/SourceList.h"

#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/CarriedCommands.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupFiles.h"
#include "core/document/GroupRewrite.h"
#include "core/talk/Messages.h"
#include "core/text/Text.h"
#include "groups/GroupLists.h"
#include "vocabulary/GGroupFields.h"

#include <map>
#include <set>

namespace kavu {

namespace {

/// The indices of a command of a row of the list, known or not; nothing for another command.
std::optional<FieldPath> sourceRowOf(std::string_view code) {
    static const GroupLists kLists(generalFields());
    const auto prefix = groupHead('G', 0);
    const auto path = startsWithIgnoreCase(code, prefix)
                          ? parseField(trimRight(code).substr(prefix.size()))
                          : std::nullopt;
    const auto* const list = path && path->count > 0 ? kLists.listOf(path->stem) : nullptr;
    return list != nullptr && list->count.code == kSourceCount ? path : std::nullopt;
}

/// The command at another row.
std::string atRow(const std::string& command, const FieldPath& path, std::int64_t row) {
    const auto front = groupHead('G', 0) + std::string(path.stem) + "-";
    const auto rest = command.find_first_not_of("0123456789", front.size());
    return front + std::to_string(row) + command.substr(std::min(rest, command.size()));
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

IoStatus RoomForSource::find(DocumentContext& context, int row) {
    std::set<std::int64_t> taken;
    auto status = forEachCommand(context.reader, context.store.pathOf(working::kGeneral),
                                 [&taken](const std::string& command) {
                                     if (const auto path = sourceRowOf(viewCommand(command).code)) {
                                         taken.insert(path->at[0]);
                                     }
                                     return true;
                                 });
    row_ = row;
    unused_ = row;
    while (taken.contains(++unused_)) {
    }
    return isMissing(status) ? IoStatus() : status;
}

bool RoomForSource::isInTheWay(std::string_view code) const {
    const auto path = sourceRowOf(code);
    return path && path->at[0] == row_;
}

std::string RoomForSource::moved(const std::string& command) const {
    const auto path = sourceRowOf(viewCommand(command).code);
    return path ? atRow(command, *path, unused_) : command;
}

IoStatus appendSource(DocumentContext& context, int rows, std::string_view name,
                      std::string_view type) {
    const int row = rows + 1;
    const SourceCodes codes;
    const auto count = formatPrintf("%s:%d;", codes.count, row);
    RoomForSource room;
    if (auto status = room.find(context, row); !status.ok()) {
        return status;
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
        if (room.isInTheWay(code)) {
            command.replace(room.moved(command.text()));
        }
    };
    return editGeneral(context, edit, [&] {
        return (counted ? std::string() : count + "\r\n") + codes.rowText(row, name, type);
    });
}

IoStatus readUncountedSources(DocumentContext& context, int counted,
                              std::vector<DataSource>& rows) {
    const SourceCodes codes;
    std::map<std::int64_t, DataSource> found;
    auto status = forEachCommand(
        context.reader, context.store.pathOf(working::kGeneral), [&](const std::string& command) {
            const auto view = viewCommand(command);
            const bool isName = startsWithIgnoreCase(view.code, codes.name);
            const bool isType = !isName && startsWithIgnoreCase(view.code, codes.type);
            const auto path = sourceRowOf(view.code);
            const auto row = isName   ? leadingInteger(view.code.substr(codes.name.size()))
                             : isType ? leadingInteger(view.code.substr(codes.type.size()))
                             : path   ? std::int64_t{path->at[0]}
                                      : 1;
            if ((isName || isType || path) && (row < 1 || row > counted)) {
                auto& source = found[row];
                source.row = static_cast<int>(row);
                auto& text = isName ? source.name : source.type;
                text = text.empty() && (isName || isType) ? std::string(view.value) : text;
            }
            return true;
        });
    status = isMissing(status) ? IoStatus() : status;
    for (auto& [row, source] : found) {
        rows.push_back(std::move(source));
    }
    return status;
}

IoStatus rewriteSources(DocumentContext& context, std::span<const DataSource> rows,
                        std::span<const DataSource> uncounted) {
    const SourceCodes codes;
    std::map<int, int> numbers;
    for (const auto& some : {rows, uncounted}) {
        for (const auto& source : some) {
            numbers.emplace(source.row, static_cast<int>(numbers.size()) + 1);
        }
    }
    std::set<std::string> seen;
    std::string repeated;  // rows are read by their first command; others stay, after it
    const auto edit = [&](CommandEdit& command) {
        const auto code = viewCommand(command.text()).code;
        const bool isOfRow =
            startsWithIgnoreCase(code, codes.name) || startsWithIgnoreCase(code, codes.type);
        const auto path = sourceRowOf(code);
        const auto now = path ? numbers.find(path->at[0]) : numbers.end();
        if (isOfRow) {
            if (now != numbers.end() && !seen.insert(lowerAscii(trimRight(code))).second) {
                repeated += atRow(command.text(), *path, now->second) + "\r\n";
            }
            command.erase();
        } else if (equalsIgnoreCase(code, codes.count)) {
            command.erase();
        } else if (path) {
            // What no table knows of a row goes where the row goes, or with it.
            if (now == numbers.end()) {
                command.erase();
            } else if (now->second != path->at[0]) {
                command.replace(atRow(command.text(), *path, now->second));
            }
        }
    };
    return editGeneral(context, edit, [&] {
        auto text = formatPrintf("%s:%d;\r\n", codes.count, rows.size());
        int row = 0;
        for (const auto& some : {rows, uncounted}) {
            for (const auto& source : some) {
                ++row;
                // A row without a name stays: the numbers of the others depend on it.
                text += codes.rowText(row, source.name, source.type);
            }
        }
        return text + repeated;
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
