#include "groups/GroupScan.h"

#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/CommandIndex.h"
#include "core/document/GroupFiles.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "vocabulary/PAsyncFields.h"
#include "vocabulary/PGroupFields.h"
#include "vocabulary/References.h"
#include "vocabulary/Vocabularies.h"

#include <algorithm>
#include <cerrno>

namespace kavu {

namespace {

/// Reads one group file after the other, by the codes of its fields.
class GroupFields {
  public:
    GroupFields(TmatsReader& reader, UserInterface* parent, char letter)
        : reader_(reader), parent_(parent), letter_(letter) {}

    /// Reads those commands of a file that begin with one of the codes.
    IoStatus open(const DocumentContext& context, int index,
                  std::span<const std::string_view> codes) {
        index_ = index;
        commands_.clear();
        return commands_.readFile(reader_, context.store.pathOf(groupFile(letter_, index)),
                                  Comments::Skip, codes);
    }
    [[nodiscard]] int index() const { return index_; }
    /// The value; empty if there is none.
    [[nodiscard]] std::string text(const Field& field, int row = 0) {
        const auto found = commands_.findField(reader_, parent_, codeOf(field.code, row),
                                               static_cast<int>(field.limit));
        return std::string(found.value_or(std::string_view()));
    }
    /// Appends all names of this kind, in the order of the vocabulary. Those of a list are read
    /// for k from 1 to its count, a number from a file, which is limited to the rows that a
    /// group can have. `list` is the code of the only list to be read; empty for all.
    void readNames(Refers kind, std::vector<std::string>& out, std::string_view list = {}) {
        for (const auto& field : findVocabulary(letter_)->fields) {
            if (field.refersTo != kind || (!list.empty() && field.list != list)) {
                continue;
            }
            const int rows = field.list.empty() ? 1 : countOf(field.list);
            for (int row = 1; row <= rows; ++row) {
                if (auto name = text(field, row); !name.empty()) {
                    out.push_back(std::move(name));
                }
            }
        }
    }
    /// The first name of this kind; empty if there is none.
    [[nodiscard]] std::string name(Refers kind) {
        std::vector<std::string> names;
        readNames(kind, names);
        return names.empty() ? std::string() : std::move(names.front());
    }

  private:
    [[nodiscard]] int countOf(std::string_view list) {
        const auto count = commands_.findIntField(parent_, codeOf(list, 0));
        return std::min(count.value_or(0), kMostListRows);
    }
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

/// The codes of what a group names, with the counts of their lists.
std::vector<std::string_view> codesOfNames(char letter) {
    std::vector<std::string_view> codes;
    for (const auto& field : findVocabulary(letter)->fields) {
        if (field.refersTo != Refers::No) {
            codes.push_back(stemOf(field.code));
            if (!field.list.empty()) {
                codes.push_back(field.list);
            }
        }
    }
    return codes;
}

/// Calls `read(fields)` for every existing file of a group.
template <typename Read>
bool readGroup(DocumentContext& context, UserInterface* parent, char letter,
               std::span<const std::string_view> codes, const Read& read) {
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
    if (name.empty() || !known_.emplace(trimTrailingBlanks(name)).second) {
        return false;
    }
    names_.emplace_back(name);
    return true;
}

bool LinkNames::has(std::string_view name) const {
    return known_.contains(std::string(trimTrailingBlanks(name)));
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
                context.reader.findField(parent, source, prefix, ownNameOf(letter), kNameLimit);
            status = source.status();
            if (status.ok() && name) {
                indexOf_.try_emplace(std::string(*name), index);
                entries_.push_back({index, std::string(*name)});
            } else if (status.ok()) {
                nameless_.push_back(index);
            }
        }
        if (!status.ok()) {
            reportUnableToRead(parent, status);
            complete_ = false;
        }
    }
}

int GroupNames::find(std::string_view name) const {
    const auto it = indexOf_.find(std::string(name));
    return it == indexOf_.end() ? 0 : it->second;
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
    // The type as the file has it, of any length.
    constexpr Field kWholeType{.code = p::kTf.code};
    auto codes = codesOfNames('P');
    codes.push_back(kWholeType.code);
    return readGroup(context, parent, 'P', codes, [&](GroupFields& fields) {
        PcmLinks format;
        format.index = fields.index();
        format.link = fields.name(Refers::LinkName);
        format.format = fields.text(kWholeType);
        fields.readNames(Refers::Link, format.embedded);
        fields.readNames(Refers::Link, format.async, p::kAefN.code);
        formats.push_back(std::move(format));
    });
}

bool readMultiplexes(DocumentContext& context, UserInterface* parent,
                     std::vector<Multiplex>& multiplexes) {
    return readGroup(context, parent, 'M', codesOfNames('M'), [&](GroupFields& fields) {
        Multiplex multiplex;
        multiplex.index = fields.index();
        multiplex.source = fields.name(Refers::Source);
        fields.readNames(Refers::Link, multiplex.links);
        multiplexes.push_back(std::move(multiplex));
    });
}

}  // namespace kavu
