#include "groups/GroupLists.h"

#include "core/TmatsDocument.h"
#include "core/text/Text.h"

#include <algorithm>
#include <optional>

namespace kavu {

namespace {

constexpr std::size_t kShortestStem = 2;

/// The field of a code that begins with the prefix, whatever its case.
std::optional<FieldPath> pathOf(std::string_view code, std::string_view prefix) {
    code = trimRight(code);
    return startsWithIgnoreCase(code, prefix) ? parseField(code.substr(prefix.size()))
                                              : std::nullopt;
}

/// "EV\PM\" of "EV\PM\MN"; empty for a code of one part.
std::string_view sectionOf(std::string_view code) {
    auto last = code;
    for (auto rest = afterHead(last); !rest.empty(); rest = afterHead(last)) {
        last = rest;
    }
    return code.substr(0, code.size() - last.size());
}

RowNumbers numbersAround(const RowNumbers& at, std::size_t depth) {
    RowNumbers around;
    for (std::size_t i = 0; i < depth; ++i) {
        around = around.row(static_cast<std::size_t>(at.at[i]));
    }
    return around;
}

/// The lists that a list is in, from the outermost to itself.
std::vector<const GroupLists::List*> chainOf(const GroupLists::List& list) {
    std::vector<const GroupLists::List*> chain;
    for (const auto* each = &list; each != nullptr; each = each->outer) {
        chain.insert(chain.begin(), each);
    }
    return chain;
}

bool wasRead(const GroupRow& owner, const GroupLists::List& list, std::size_t number) {
    const auto read = owner.fileRows.find(list.count.code);
    return read != owner.fileRows.end() && read->second.contains(number);
}

}  // namespace

// --- Lists --------------------------------------------------------------------------------------

GroupLists::GroupLists(std::span<const Field> table) {
    std::unordered_map<std::string_view, List*> byCount;
    for (const auto& field : table) {
        const auto in = byCount.find(field.list);
        if (in != byCount.end()) {
            in->second->fields.push_back(field);
            for (const auto code :
                 {field.code, field.codeRead, field.codeToXml, field.codeFromXml}) {
                if (!code.empty()) {
                    codes_.emplace(lowerAscii(stemOf(code)), in->second);
                    // The count of an inner list begins like the codes of that.
                    addStems(governsRows(field) ? std::string_view() : stemOf(code), *in->second);
                }
            }
        }
        if (governsRows(field)) {
            auto& list = lists_.emplace_back();
            list.count = field;
            list.outer = in == byCount.end() ? nullptr : in->second;
            list.depth = list.outer == nullptr ? 0 : list.outer->depth + 1;
            byCount.emplace(field.code, &list);
        }
    }
}

void GroupLists::addStems(std::string_view code, const List& list) {
    const auto add = [&](std::string_view stem) {
        if (stem.size() >= kShortestStem) {
            stems_.emplace(lowerAscii(stem), &list);
        }
    };
    if (const auto section = sectionOf(code); !section.empty()) {
        add(section);
        return;
    }
    if (auto front = sectionOf(list.count.code); !front.empty()) {
        front.remove_suffix(1);
        add(code.starts_with(front) ? front : std::string_view());
    }
    while (!code.empty() && isDigit(code.back())) {
        code.remove_suffix(1);
    }
    add(code);
}

const GroupLists::List* GroupLists::listOf(std::string_view stem) const {
    auto code = lowerAscii(stem);
    if (const auto known = codes_.find(code); known != codes_.end()) {
        return known->second;
    }
    for (; code.size() >= kShortestStem; code.pop_back()) {
        if (const auto shared = stems_.find(code); shared != stems_.end()) {
            return shared->second;
        }
    }
    return nullptr;
}

// --- Rows of the file ---------------------------------------------------------------------------

RowNumbersInFile::RowNumbersInFile(const CommandIndex& commands, const GroupLists& lists,
                                   std::string_view prefix) {
    for (std::size_t place = 0; place < commands.size(); ++place) {
        const auto path = pathOf(commands.at(place).code, prefix);
        const auto* list = path ? lists.listOf(path->stem) : nullptr;
        for (; list != nullptr; list = list->outer) {
            if (list->depth < static_cast<std::size_t>(path->count)) {
                numbers_[{list, numbersAround(*path, list->depth).at}].insert(
                    static_cast<std::size_t>(path->at[list->depth]));
            }
        }
    }
}

const std::set<std::size_t>& RowNumbersInFile::of(const GroupLists::List& list,
                                                  const RowNumbers& around) const {
    static const std::set<std::size_t> kNone;
    const auto found = numbers_.find({&list, around.at});
    return found == numbers_.end() ? kNone : found->second;
}

// --- Room for them ------------------------------------------------------------------------------

namespace {

class RowInserter {
  public:
    RowInserter(const GroupFile& kept, const GroupLists& lists, std::string_view prefix,
                int edition)
        : kept_(kept),
          lists_(lists),
          prefix_(prefix),
          edition_(edition),
          inFile_(kept.commands(), lists, prefix) {}

    /// Makes room in the lists of a row; `outer` is its list, and `at` its numbers in the file.
    void inRow(GroupRow& row, const GroupLists::List* outer, const RowNumbers& at) {
        for (const auto& list : lists_.all()) {
            const auto rows =
                list.outer == outer ? row.lists.find(list.count.code) : row.lists.end();
            if (rows != row.lists.end()) {
                inList(row, list, rows->second, at);
            }
        }
    }

  private:
    void inList(GroupRow& owner, const GroupLists::List& list, std::vector<GroupRow>& rows,
                const RowNumbers& at) {
        for (const auto number : inFile_.of(list, at)) {
            if (number > rows.size() || rows.size() >= list.count.rows) {
                break;
            }
            if (!wasRead(owner, list, number)) {
                rows.insert(rows.begin() + static_cast<std::ptrdiff_t>(number - 1),
                            fromFile(list, at.row(number)));
            }
        }
        for (auto& row : rows) {
            if (row.fileRow > 0) {
                inRow(row, &list, at.row(row.fileRow));
            }
        }
    }

    /// A row with all values that the file has of it. They stay unread: what is not written of it
    /// is asked about.
    [[nodiscard]] GroupRow fromFile(const GroupLists::List& list, const RowNumbers& at) const {
        GroupRow row;
        row.fileRow = static_cast<std::size_t>(at.last());
        for (const auto& field : knownFields(list.fields, edition_)) {
            if (!governsRows(field)) {
                row.set(field.code, valueOf(field, at));
                continue;
            }
            const auto inner = std::find_if(
                lists_.all().begin(), lists_.all().end(),
                [&](const GroupLists::List& each) { return each.count.code == field.code; });
            const auto stated = valueOf(field, at);
            const auto count = clampedCount(stated, field.rows);
            if (!stated.empty()) {
                row.lists[std::string(field.code)];
            }
            for (std::size_t number = 1; number <= count; ++number) {
                row.lists[std::string(field.code)].push_back(fromFile(*inner, at.row(number)));
                row.fileRows[std::string(field.code)].insert(number);
            }
        }
        return row;
    }
    [[nodiscard]] std::string valueOf(const Field& field, const RowNumbers& at) const {
        const auto code = field.codeRead.empty() ? field.code : field.codeRead;
        const auto found = kept_.commands().peek(std::string(prefix_) + fieldCode(code, at.at));
        return found ? std::string(found->value) : std::string();
    }

    const GroupFile& kept_;
    const GroupLists& lists_;
    std::string_view prefix_;
    int edition_;
    RowNumbersInFile inFile_;
};

/// Gives the commands of a file the numbers that their rows have now.
class RowRenumbering {
  public:
    RowRenumbering(const GroupFile& kept, const GroupLists& lists, std::string_view prefix,
                   const GroupRow& record)
        : lists_(lists),
          prefix_(prefix),
          record_(record),
          inFile_(kept.commands(), lists, prefix) {}

    /// False for a command of a row that was deleted.
    [[nodiscard]] bool move(std::string& code) {
        const auto path = pathOf(code, prefix_);
        const auto* const list = path ? lists_.listOf(path->stem) : nullptr;
        if (list == nullptr) {
            return true;
        }
        RowNumbers now = *path;
        const GroupRow* owner = &record_;
        for (const auto* each : chainOf(*list)) {
            if (each->depth >= static_cast<std::size_t>(path->count) || owner == nullptr) {
                break;
            }
            const auto& rows = rowsOf(*owner, *each, numbersAround(*path, each->depth));
            const auto number = static_cast<std::size_t>(path->at[each->depth]);
            const auto found = rows.now.find(number);
            if (found == rows.now.end() && wasRead(*owner, *each, number)) {
                return false;
            }
            if (found != rows.now.end()) {
                now.at[each->depth] = static_cast<int>(found->second);
                owner = found->second <= rows.count
                            ? &owner->rows(each->count.code)[found->second - 1]
                            : nullptr;
            } else {
                owner = nullptr;
            }
        }
        if (now.at != path->at) {
            code = compose(*path, now);
        }
        return true;
    }

  private:
    struct Rows {
        std::map<std::size_t, std::size_t> now;  ///< the number in the file and the one now
        std::size_t count = 0;
    };
    [[nodiscard]] const Rows& rowsOf(const GroupRow& owner, const GroupLists::List& list,
                                     const RowNumbers& around) {
        const auto [it, isNew] = rows_.try_emplace({&owner, &list});
        auto& known = it->second;
        if (!isNew) {
            return known;
        }
        const auto rows = owner.rows(list.count.code);
        known.count = rows.size();
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (rows[i].fileRow > 0) {
                known.now.emplace(rows[i].fileRow, i + 1);
            }
        }
        // A row of the file that found no room moves behind all others.
        const auto& inFile = inFile_.of(list, around);
        auto last = inFile.empty() ? rows.size() : std::max(rows.size(), *inFile.rbegin());
        for (const auto number : inFile) {
            if (number <= rows.size() && !known.now.contains(number) &&
                !wasRead(owner, list, number)) {
                known.now.emplace(number, ++last);
            }
        }
        return known;
    }
    [[nodiscard]] std::string compose(const FieldPath& path, const RowNumbers& now) const {
        std::string code(prefix_);
        code += path.stem;
        for (std::size_t i = 0; i < static_cast<std::size_t>(path.count); ++i) {
            code += '-';
            appendNumber(code, now.at[i]);
        }
        return code;
    }

    const GroupLists& lists_;
    std::string_view prefix_;
    const GroupRow& record_;
    RowNumbersInFile inFile_;
    std::map<std::pair<const GroupRow*, const GroupLists::List*>, Rows> rows_;
};

}  // namespace

void makeRoom(GroupRow& record, const GroupFile& kept, const GroupLists& lists,
              std::string_view prefix, int edition) {
    RowInserter(kept, lists, prefix, edition).inRow(record, nullptr, {});
}

GroupFile keptAtRows(const GroupFile& kept, const GroupLists& lists, std::string_view prefix,
                     const GroupRow& record) {
    auto moved = kept;
    RowRenumbering mover(kept, lists, prefix, record);
    moved.recode([&](std::string& code) { return mover.move(code); });
    return moved;
}

SettledGroup settleRows(const GroupFile& kept, char letter, int index, std::span<const Field> table,
                        const GroupRow& record, int edition) {
    const GroupLists lists(table);
    const auto prefix = groupHead(letter, index);
    SettledGroup settled{.record = record, .kept = {}};
    makeRoom(settled.record, kept, lists, prefix, edition);
    settled.kept = keptAtRows(kept, lists, prefix, settled.record);
    return settled;
}

bool storeTable(DocumentContext& context, UserInterface* parent, char letter, int index,
                std::span<const Field> table, const GroupRow& record, const GroupFile& kept) {
    const int edition = context.document.version;
    const auto settled = settleRows(kept, letter, index, table, record, edition);
    GroupWriter writer(letter, index);
    writer.writeTable(table, settled.record, edition);
    return storeGroup(context, parent, letter, index, writer.text(), settled.kept);
}

}  // namespace kavu
