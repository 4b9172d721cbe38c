#include "groups/AttributeEdit.h"

#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupFile.h"
#include "core/document/GroupFiles.h"
#include "core/document/Transaction.h"
#include "core/files/FileIo.h"
#include "core/talk/FileReports.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "core/text/Edition.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "groups/GroupLists.h"
#include "groups/GroupRecord.h"
#include "groups/GroupScan.h"
#include "groups/RGroup.h"
#include "vocabulary/FieldRefusals.h"
#include "vocabulary/FieldRules.h"
#include "vocabulary/GGroupFields.h"
#include "vocabulary/RTrackFields.h"
#include "vocabulary/Vocabularies.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>

namespace kavu {

namespace {

/// Why a change cannot be made; empty if it can.
using Refusal = std::string;

using GroupKey = std::pair<char, int>;

// --- The place of a new command ---------------------------------------------------------------

/// The place after the last command that the writer of the group puts before the new one.
std::size_t placeOf(std::span<const Field> table, const CommandIndex& commands,
                    std::string_view prefix, const VocabularyMatch& added) {
    std::size_t place = 0;
    std::optional<VocabularyMatch> last;
    for (std::size_t i = 0; i < commands.size(); ++i) {
        const auto key = keyOf(commands.at(i));
        if (!startsWithIgnoreCase(key, prefix)) {
            continue;
        }
        const auto matches = matchVocabulary(table, key.substr(prefix.size()));
        if (!matches.empty() && !isWrittenBefore(table, added, matches.front()) &&
            !(last && isWrittenBefore(table, matches.front(), *last))) {
            last = matches.front();
            place = i + 1;
        }
    }
    return place;
}

// --- The rules --------------------------------------------------------------------------------

/// The commands of streams depend on each other in ways that no table states: only their own
/// sheets change them.
constexpr std::string_view kSettable = "GTRMA";

/// The command line's command that edits a group as a whole; empty if there is none.
constexpr std::string_view editorOf(char letter) {
    return letter == 'B' ? "bus" : letter == 'S' ? "message' or 'packet" : "";
}

std::span<const Field> settableFields(char letter) {
    const auto* const vocabulary = findVocabulary(letter);
    return vocabulary == nullptr || kSettable.find(letter) == std::string_view::npos
               ? std::span<const Field>()
               : vocabulary->fields;
}

/// The command line's command for a name that other groups refer to, which must be renamed
/// everywhere; empty for other values. What a recorder records may be set: nothing depends on
/// it.
std::string_view commandInstead(const Field& field, char letter) {
    switch (field.refersTo) {
        case Refers::SourceName:
        case Refers::Source:
            return "source rename";
        case Refers::LinkName:
            return "link rename";
        case Refers::Link:
            return letter == 'M' ? "link rename" : "";
        default:
            return letter == 'G' && field.code == "106" ? "save --edition" : "";
    }
}

Refusal refusedName(const Field& field, char letter, std::string_view now,
                    const std::string& value) {
    const auto instead = commandInstead(field, letter);
    return instead.empty() || now.empty() || now == value
               ? Refusal()
               : formatPrintf("Other groups depend on this value. Use '%s' to change it.", instead);
}

/// The lists of a group that can be set.
const GroupLists& listsOf(char letter) {
    if (letter == 'R') {
        return recorderLists();
    }
    static std::map<char, GroupLists> kLists;
    return kLists.try_emplace(letter, settableFields(letter)).first->second;
}

/// The number of a recorder's tracks; a track is a row with the command that follows.
constexpr std::string_view kTracks = "N";
bool makesTrack(char letter, const Field& field) {
    return letter == 'R' && field.code == trackFields().front().code;
}

/// A group while it is changed.
struct ChangedGroup {
    GroupFile file{};
    /// The rows that were behind their count until a change of this run raised it, by the code of
    /// the list and their number.
    std::set<std::pair<std::string, int>> shown{};
    std::vector<std::string> notes{};
};

/// One change: its group and its new value.
class Change {
  public:
    Change(ChangedGroup& changed, const AttributeChange& change, int edition)
        : changed_(changed),
          group_(changed.file),
          code_(change.code),
          table_(settableFields(change.code.letter)),
          value_(replaceAll(replaceAll(change.value, "\r\n", "\n"), "\n", "\r\n")),
          edition_(edition) {}

    [[nodiscard]] Refusal make() {
        if (!group_.exists() && code_.letter != 'G') {
            return formatPrintf("There is no group %c-%d in this document.", code_.letter,
                                code_.index);
        }
        const auto matches = matchVocabulary(table_, code_.field);
        if (matches.empty()) {
            return formatPrintf("The vocabulary of group %c has no such command.", code_.letter);
        }
        Refusal first;
        for (const auto& match : matches) {
            auto why = refusal(match);
            if (why.empty()) {
                apply(match);
                return {};
            }
            first = first.empty() ? std::move(why) : first;
        }
        return first;
    }

  private:
    [[nodiscard]] std::string codeOf(std::string_view field, const RowNumbers& at) const {
        return groupHead(code_.letter, code_.index) + fieldCode(field, at.at);
    }

    [[nodiscard]] Refusal refusal(const VocabularyMatch& match) const {
        const auto& field = *match.field;
        const RowNumbers& at = match.path;
        for (auto why :
             {editionRefusal(field, edition_), valueRefusal(field, value_, edition_),
              refusedName(field, code_.letter, group_.value(codeOf(field.code, at)), value_),
              refusedRow(match), refusedShownRow(match), refusedSources(field),
              refusedTracks(field)}) {
            if (!why.empty()) {
                return why;
            }
        }
        return {};
    }

    [[nodiscard]] std::size_t rowsOf(const GroupLists::List& list, const RowNumbers& at) const {
        return clampedCount(group_.value(codeOf(list.count.code, at)), list.count.rows);
    }

    /// True for a command that makes the row after the last one of a list a row: in the lists of a
    /// recorder's tracks no other command does.
    [[nodiscard]] bool opensRow(const GroupLists::List& list, const VocabularyMatch& match) const {
        const auto row = static_cast<std::size_t>(match.path.at[list.depth]);
        return match.field->list.empty() && !value_.empty() && row <= list.count.rows &&
               row == rowsOf(list, match.path) + 1;
    }
    [[nodiscard]] std::size_t countedTracks() const {
        return clampedCount(group_.value(codeOf(kTracks, {})), kMostTracks);
    }

    /// A row has to be within the count of each list that it is in.
    [[nodiscard]] Refusal refusedRow(const VocabularyMatch& match) const {
        if (match.path.count == 0) {
            return {};
        }
        for (const auto* list = listsOf(code_.letter).listOf(match.path.stem); list != nullptr;
             list = list->outer) {
            const int row = match.path.at[list->depth];
            const auto rows = rowsOf(*list, match.path);
            if (row > 0 && static_cast<std::size_t>(row) > rows && !opensRow(*list, match)) {
                return formatPrintf("The list has %d rows. Set '%s' first.", static_cast<int>(rows),
                                    codeOf(list->count.code, match.path));
            }
        }
        return {};
    }

    /// The commands that the file has of a row that is no row of its list belong to it as soon as
    /// it is one.
    [[nodiscard]] bool hasRow(const GroupLists::List& list, const RowNumbers& at) const {
        RowNumbers around;
        for (std::size_t i = 0; i < list.depth; ++i) {
            around = around.row(static_cast<std::size_t>(at.at[i]));
        }
        return RowNumbersInFile(group_.commands(), listsOf(code_.letter),
                                groupHead(code_.letter, code_.index))
            .of(list, around)
            .contains(static_cast<std::size_t>(at.at[list.depth]));
    }

    /// True for the command that makes a track of its row, which is none so far.
    [[nodiscard]] bool makesRow(const VocabularyMatch& match) const {
        return makesTrack(code_.letter, *match.field) &&
               group_.value(codeOf(match.field->code, match.path)).empty();
    }

    /// What a row that was behind its count holds is not the property of a new one.
    [[nodiscard]] Refusal refusedShownRow(const VocabularyMatch& match) const {
        const auto* list = listsOf(code_.letter).listOf(match.path.stem);
        for (; list != nullptr; list = list->outer) {
            const auto code = codeOf(list->count.code, match.path);
            const int row = match.path.at[list->depth];
            const bool opens = opensRow(*list, match) && !makesRow(match);
            if (row > 0 &&
                (changed_.shown.contains({code, row}) || (opens && hasRow(*list, match.path)))) {
                return formatPrintf(
                    "Row %d was behind the count, and has commands already. Set '%s' first, and "
                    "look at the row.",
                    row, code);
            }
        }
        return {};
    }

    [[nodiscard]] Refusal refusedSources(const Field& field) const {
        if (code_.letter != 'G' || field.code != kSourceCount) {
            return {};
        }
        const auto rows = clampedCount(group_.value(codeOf(kSourceCount, {})), field.rows);
        return clampedCount(value_, field.rows) >= rows
                   ? Refusal()
                   : Refusal("Use 'source delete' to delete a data source.");
    }

    /// The number of a recorder's tracks must not become less than it is.
    [[nodiscard]] Refusal refusedTracks(const Field& field) const {
        if (code_.letter != 'R' || field.code != kTracks) {
            return {};
        }
        const auto counted = countedTracks();
        int tracks = 0;
        for (std::size_t n = 1; n <= counted; ++n) {
            tracks += group_.value(codeOf("TK1-n", {n})).empty() ? 0 : 1;
        }
        return clampedCount(value_, kMostTracks) >= static_cast<std::size_t>(tracks)
                   ? Refusal()
                   : formatMessage(message::kFewerThanTracks, tracks, tracks);
    }

    /// Notes the rows that a higher count makes rows of the list.
    void noteShownRows(const VocabularyMatch& match, const std::string& code) {
        const auto& lists = listsOf(code_.letter);
        const auto list = std::find_if(
            lists.all().begin(), lists.all().end(),
            [&](const GroupLists::List& each) { return each.count.code == match.field->code; });
        if (list == lists.all().end()) {
            return;
        }
        const RowNumbersInFile inFile(group_.commands(), lists,
                                      groupHead(code_.letter, code_.index));
        const auto before = clampedCount(group_.value(code), list->count.rows);
        const auto now = clampedCount(value_, list->count.rows);
        std::string rows;
        for (const auto row : inFile.of(*list, match.path)) {
            if (row > before && row <= now) {
                changed_.shown.emplace(code, static_cast<int>(row));
                rows += (rows.empty() ? "" : ", ") + std::to_string(row);
            }
        }
        if (!rows.empty()) {
            changed_.notes.push_back(
                formatPrintf("%s: what was behind the count is in the list now (%s).", code, rows));
        }
    }

    /// Notes what a command that makes a row brings into the list with it.
    void noteMadeRow(const VocabularyMatch& match, const std::string& code) {
        if (makesRow(match) && hasRow(*listsOf(code_.letter).listOf(match.path.stem), match.path)) {
            changed_.notes.push_back(formatPrintf(
                "%s makes a track of commands of this number that the file had already.", code));
        }
    }

    /// Counts the rows that the command opens, from the outermost list to the innermost one.
    void openRows(const VocabularyMatch& match, const GroupLists::List* list) {
        if (list == nullptr) {
            return;
        }
        openRows(match, list->outer);
        if (opensRow(*list, match)) {
            const auto code = codeOf(list->count.code, match.path);
            const auto row = std::to_string(match.path.at[list->depth]);
            const auto head = groupHead(code_.letter, code_.index).size();
            set(matchVocabulary(table_, code.substr(head)).front(), code, row);
            // What a track brings with it is noted instead.
            if (!makesRow(match) || !hasRow(*list, match.path)) {
                changed_.notes.push_back(
                    formatPrintf("%s is %s now: the row is a new one.", code, row));
            }
        }
    }

    void set(const VocabularyMatch& match, const std::string& code, const std::string& stored) {
        group_.set(code, stored, [&] {
            return placeOf(table_, group_.commands(), groupHead(code_.letter, code_.index), match);
        });
    }

    void apply(const VocabularyMatch& match) {
        const auto code = codeOf(match.field->code, match.path);
        noteShownRows(match, code);
        if (match.path.count > 0) {
            openRows(match, listsOf(code_.letter).listOf(match.path.stem));
        }
        noteMadeRow(match, code);
        auto stored = storedValue(*match.field, value_, edition_);
        if (stored.empty()) {
            group_.erase(code);
            return;
        }
        toStoredForm(stored);
        set(match, code, stored);
    }

    ChangedGroup& changed_;
    GroupFile& group_;
    const CommandCode& code_;
    std::span<const Field> table_;
    std::string value_;
    int edition_;
};

/// The group of a code, read once; null if it cannot be read.
ChangedGroup* groupOf(DocumentContext& context, UserInterface* parent,
                      std::map<GroupKey, ChangedGroup>& groups, const CommandCode& code) {
    const auto [it, isNew] = groups.try_emplace(GroupKey{code.letter, code.index});
    if (isNew) {
        const auto status = GroupFile::open(context.files, context.reader, code.letter, code.index,
                                            it->second.file);
        if (!status.ok() && !isMissing(status)) {
            reportUnableToRead(parent, status);
            return nullptr;
        }
    }
    return &it->second;
}

/// A code whose values are looked for.
struct Wanted {
    std::string code;
    std::vector<std::string>& values;
};

/// Reads a file command by command: only what is wanted of it is ever in memory.
IoStatus readValues(DocumentContext& context, const GroupKey& group, std::span<Wanted> wanted) {
    ByteSource source;
    auto status = source.open(context.store.pathOf(groupFile(group.first, group.second)));
    if (!status.ok()) {
        return isMissing(status) ? IoStatus() : status;
    }
    std::string command;
    while (context.reader.nextRawCommand(source, command)) {
        const auto view = viewCommand(command);
        for (auto& each : wanted) {
            if (view.hasColon && equalsIgnoreCase(keyOf(view), each.code)) {
                each.values.emplace_back(view.value);
            }
        }
    }
    return source.status();
}

}  // namespace

bool readAttributes(DocumentContext& context, UserInterface* parent,
                    std::span<const CommandCode> codes,
                    std::vector<std::vector<std::string>>& values) {
    const auto before = values.size();
    values.resize(before + codes.size());
    std::vector<GroupKey> order;
    std::map<GroupKey, std::vector<Wanted>> groups;
    for (std::size_t i = 0; i < codes.size(); ++i) {
        const GroupKey key{codes[i].letter, codes[i].index};
        const auto [it, isNew] = groups.try_emplace(key);
        it->second.push_back({codes[i].text(), values[before + i]});
        if (isNew) {
            order.push_back(key);
        }
    }
    return std::all_of(order.begin(), order.end(), [&](const GroupKey& key) {
        const auto status = readValues(context, key, groups.at(key));
        if (!status.ok()) {
            reportUnableToRead(parent, status);
        }
        return status.ok();
    });
}

bool setAttributes(DocumentContext& context, UserInterface* parent,
                   std::span<const AttributeChange> changes) {
    std::map<GroupKey, ChangedGroup> groups;
    for (const auto& change : changes) {
        const auto& code = change.code;
        Refusal why;
        // A group without a table is not read: it may be of any size.
        if (settableFields(code.letter).empty()) {
            why = formatPrintf("The commands of group %c cannot be set one by one.", code.letter);
            if (const auto editor = editorOf(code.letter); !editor.empty()) {
                why += formatPrintf(" Use '%s' with --edit.", editor);
            }
        } else {
            auto* const group = groupOf(context, parent, groups, code);
            if (group == nullptr) {
                return false;
            }
            why = Change(*group, change, context.document.version).make();
        }
        if (!why.empty()) {
            showBox(parent, formatPrintf("%s=%s\n\n", code.text(), change.value) + why,
                    "Unable To Set Attribute");
            return false;
        }
    }
    const auto store = [&] {
        return std::all_of(groups.begin(), groups.end(), [&](const auto& each) {
            const auto& group = each.second.file;
            const auto status = group.changed() ? group.store(context.files) : IoStatus();
            if (!status.ok()) {
                reportUnableToWrite(parent, status);
            }
            return status.ok();
        });
    };
    if (!inTransaction(context, parent, OperationId::SetAttribute, store)) {
        return false;
    }
    for (const auto& [key, group] : groups) {
        for (const auto& note : group.notes) {
            if (parent != nullptr) {
                parent->note(note);
            }
        }
    }
    return true;
}

}  // namespace kavu
