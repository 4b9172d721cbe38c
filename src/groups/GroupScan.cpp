#include "groups/GroupScan.h"

#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/CommandIndex.h"
#include "core/document/GroupFiles.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"

#include <algorithm>
#include <cerrno>

namespace kavu {

namespace {

/// Reads one group file after the other, by the codes of its fields.
class GroupFields {
  public:
    GroupFields(TmatsReader& reader, UserInterface* parent, char letter)
        : reader_(reader), parent_(parent), letter_(letter) {}

    IoStatus open(const DocumentContext& context, int index,
                  std::initializer_list<std::string_view> codes) {
        index_ = index;
        commands_.clear();
        return commands_.readFile(reader_, context.store.pathOf(groupFile(letter_, index)),
                                  Comments::Skip, codes);
    }
    [[nodiscard]] int index() const { return index_; }
    /// The value; empty if there is none.
    [[nodiscard]] std::string text(std::string_view pattern, int limit, int row = 0) {
        const auto found = commands_.findField(reader_, parent_, codeOf(pattern, row), limit);
        return std::string(found.value_or(std::string_view()));
    }
    /// Appends the values of `pattern` for k from 1 to the value of `count`, a number from a
    /// file, which is limited to the rows that a group can have.
    void readRows(std::string_view count, std::string_view pattern, std::vector<std::string>& out) {
        const int rows =
            std::min(commands_.findIntField(parent_, codeOf(count, 0)).value_or(0), kMostListRows);
        for (int row = 1; row <= rows; ++row) {
            if (auto name = text(pattern, kNameLimit, row); !name.empty()) {
                out.push_back(std::move(name));
            }
        }
    }

  private:
    [[nodiscard]] std::string codeOf(std::string_view pattern, int row) const {
        std::string code;
        appendCode(code, letter_, index_, pattern, std::span(&row, 1));
        return code;
    }

    TmatsReader& reader_;
    UserInterface* parent_;
    char letter_;
    int index_ = 0;
    CommandIndex commands_;
};

/// Calls `read(fields)` for every existing file of a group.
template <typename Read>
bool readGroup(DocumentContext& context, UserInterface* parent, char letter,
               std::initializer_list<std::string_view> codes, const Read& read) {
    GroupFields fields(context.reader, parent, letter);
    for (int index = kLeastGroupIndex; index <= kMostGroupIndex; ++index) {
        const auto status = fields.open(context, index, codes);
        if (isMissing(status)) {
            continue;
        }
        if (!status.ok()) {
            reportUnableToRead(parent, status);
            return false;
        }
        if (cancelRequested(parent)) {
            return false;
        }
        read(fields);
    }
    return true;
}

}  // namespace

bool isMissing(const IoStatus& status) {
    return status.code() == ENOENT;
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
            const auto prefix = groupHead(letter, index);
            // Most files begin with the name, where the look-up ends.
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

int firstFreeIndex(const DocumentContext& context, char letter) {
    for (int index = kLeastGroupIndex; index <= kMostGroupIndex; ++index) {
        // A file that cannot be probed may exist, and must not be overwritten.
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
                     [&](GroupFields& fields) {
                         PcmLinks format;
                         format.index = fields.index();
                         format.link = fields.text("DLN", kNameLimit);
                         format.format = fields.text("TF", 0);
                         fields.readRows("AEF\\N", "AEF\\DLN-n", format.embedded);
                         fields.readRows("ADM\\N", "ADM\\DMN-n", format.embedded);
                         formats.push_back(std::move(format));
                     });
}

bool readMultiplexes(DocumentContext& context, UserInterface* parent,
                     std::vector<Multiplex>& multiplexes) {
    return readGroup(context, parent, 'M', {"ID", "BB\\DLN", "SI\\N", "SI\\DLN-"},
                     [&](GroupFields& fields) {
                         Multiplex multiplex;
                         multiplex.index = fields.index();
                         multiplex.source = fields.text("ID", kNameLimit);
                         if (auto link = fields.text("BB\\DLN", kNameLimit); !link.empty()) {
                             multiplex.links.push_back(std::move(link));
                         }
                         fields.readRows("SI\\N", "SI\\DLN-n", multiplex.links);
                         multiplexes.push_back(std::move(multiplex));
                     });
}

}  // namespace kavu
