#include "groups/GroupScan.h"

#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/FieldIndex.h"
#include "core/document/GroupFiles.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"

#include <algorithm>
#include <cerrno>

namespace kavu {

namespace {

/// Appends the values of `code` for k from 1 to the value of `countCode`. The count is a
/// number from a file: it is cut to the rows that a group can have.
void readRows(FieldIndex& fields, UserInterface* parent, const std::string& prefix,
              std::string_view countCode, std::string_view code, std::vector<std::string>& out) {
    int count = 0;
    fields.findIntField(parent, prefix, countCode, count);
    count = std::min(count, kMostListRows);
    for (int row = 1; row <= count; ++row) {
        if (const auto name = fields.findField(parent, prefix, code, kNameLimit, row)) {
            out.emplace_back(*name);
        }
    }
}

std::string textOf(std::optional<std::string_view> value) {
    return std::string(value.value_or(std::string_view()));
}

/// Calls `read(index, fields)` for every file of a group that is there.
template <typename Read>
bool readGroup(DocumentContext& context, UserInterface* parent, char letter,
               const std::vector<std::string_view>& codes, const Read& read) {
    for (int index = kLeastGroupIndex; index <= kMostGroupIndex; ++index) {
        FieldIndex fields(context.reader, context.store.pathOf(groupFile(letter, index)), codes);
        if (isMissing(fields.status())) {
            continue;
        }
        if (!fields.status().ok()) {
            reportUnableToRead(parent, fields.status());
            return false;
        }
        if (cancelRequested(parent)) {
            return false;
        }
        read(index, fields);
    }
    return true;
}

}  // namespace

bool isMissing(const IoStatus& status) {
    return status.code() == ENOENT;
}

FieldView fieldView(std::string_view command) {
    const auto colon = command.find(':');
    if (colon == std::string_view::npos) {
        return {};
    }
    const auto backslash = command.substr(0, colon).find('\\');
    if (backslash == std::string_view::npos) {
        return {};
    }
    auto value = command.substr(colon + 1);
    if (!value.empty() && value.back() == ';') {
        value.remove_suffix(1);
    }
    return {command.substr(backslash + 1, colon - backslash - 1), value};
}

bool LinkNames::add(std::string_view name) {
    if (name.empty() || !lower_.insert(lowerAscii(trimTrailingBlanks(name))).second) {
        return false;
    }
    names_.emplace_back(name);
    return true;
}

bool LinkNames::has(std::string_view name) const {
    return lower_.contains(lowerAscii(trimTrailingBlanks(name)));
}

GroupNames::GroupNames(DocumentContext& context, UserInterface* parent, char letter) {
    if (letter == 'S' && context.document.version < groupKind('S').firstEdition) {
        return;
    }
    for (int index = kLeastGroupIndex; index <= kMostGroupIndex; ++index) {
        ByteSource source;
        auto status = source.open(context.store.pathOf(groupFile(letter, index)));
        if (isMissing(status)) {
            continue;
        }
        if (status.ok()) {
            const auto prefix = groupPrefix(letter, index);
            // The name stands at the front of most files, and there the look-up ends.
            const auto name =
                context.reader.findField(parent, source, prefix, nameCode(letter), kNameLimit);
            status = source.status();
            if (status.ok() && name) {
                exact_.try_emplace(std::string(*name), index);
                lower_.try_emplace(lowerAscii(*name), index);
                entries_.push_back({index, std::string(*name)});
            }
        }
        if (!status.ok()) {
            reportUnableToRead(parent, status);
            complete_ = false;
        }
    }
}

int GroupNames::find(std::string_view name) const {
    if (const auto it = exact_.find(std::string(name)); it != exact_.end()) {
        return it->second;
    }
    const auto it = lower_.find(lowerAscii(name));
    return it == lower_.end() ? 0 : it->second;
}

std::string_view nameCode(char letter) {
    return std::string_view("TRMV").find(letter) == std::string_view::npos ? "DLN" : "ID";
}

std::string groupPrefix(char letter, int index) {
    std::string prefix(1, letter);
    prefix += '-';
    appendNumber(prefix, index);
    prefix += '\\';
    return prefix;
}

int firstFreeIndex(const DocumentContext& context, char letter) {
    for (int index = kLeastGroupIndex; index <= kMostGroupIndex; ++index) {
        // A file that can not be probed may be there, and must not be overwritten.
        PathKind kind = PathKind::Missing;
        if (probePath(context.store.pathOf(groupFile(letter, index)), kind).ok() &&
            kind == PathKind::Missing) {
            return index;
        }
    }
    return kMostGroupIndex + 1;
}

bool readPcmLinks(DocumentContext& context, UserInterface* parent, std::vector<PcmLinks>& formats) {
    return readGroup(context, parent, 'P',
                     {"DLN", "TF", "AEF\\N", "AEF\\DLN-", "ADM\\N", "ADM\\DMN-"},
                     [&](int index, FieldIndex& fields) {
                         const auto prefix = groupPrefix('P', index);
                         PcmLinks format;
                         format.index = index;
                         format.link = textOf(fields.findField(parent, prefix, "DLN", kNameLimit));
                         format.format = textOf(fields.findField(parent, prefix, "TF", 0));
                         readRows(fields, parent, prefix, "AEF\\N", "AEF\\DLN-%d", format.embedded);
                         readRows(fields, parent, prefix, "ADM\\N", "ADM\\DMN-%d", format.embedded);
                         formats.push_back(std::move(format));
                     });
}

bool readMultiplexes(DocumentContext& context, UserInterface* parent,
                     std::vector<Multiplex>& multiplexes) {
    return readGroup(
        context, parent, 'M', {"ID", "BB\\DLN", "SI\\N", "SI\\DLN-"},
        [&](int index, FieldIndex& fields) {
            const auto prefix = groupPrefix('M', index);
            Multiplex multiplex;
            multiplex.index = index;
            multiplex.source = textOf(fields.findField(parent, prefix, "ID", kNameLimit));
            if (const auto link = fields.findField(parent, prefix, "BB\\DLN", kNameLimit)) {
                multiplex.links.emplace_back(*link);
            }
            readRows(fields, parent, prefix, "SI\\N", "SI\\DLN-%d", multiplex.links);
            multiplexes.push_back(std::move(multiplex));
        });
}

}  // namespace kavu
