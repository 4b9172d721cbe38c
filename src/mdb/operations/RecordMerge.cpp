#include "mdb/operations/RecordMerge.h"

#include "core/text/Printf.h"
#include "mdb/record/MdbFields.h"

#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace kavu {

namespace {

/// Names the records of a list so that each is known again in another: the name, and how many of
/// that name were before it.
class Keys {
  public:
    std::string of(const PackedRecord& record) {
        const std::string name(record.name());
        return name + '\n' + std::to_string(++counts_[name]);
    }

  private:
    std::unordered_map<std::string, std::size_t> counts_;
};

/// A record as it was, and what the edit has made of it.
struct Former {
    const PackedRecord* record = nullptr;
    const EditedRecord* edited = nullptr;  ///< null if it was removed
    bool isPresent = false;
};

class Merging {
  public:
    Merging(const std::vector<EditedRecord>& former, const std::vector<EditedRecord>& edited) {
        std::unordered_map<std::size_t, const EditedRecord*> byEntry;
        for (const auto& row : edited) {
            if (row.entry) {
                byEntry[*row.entry] = &row;
            }
        }
        Keys keys;
        formers_.reserve(former.size());
        for (const auto& row : former) {
            const auto found = byEntry.find(row.entry.value_or(0));
            byKey_[keys.of(row.record)] = formers_.size();
            formers_.push_back({&row.record, found == byEntry.end() ? nullptr : found->second});
        }
    }

    void take(const EditedRecord& present) {
        const auto found = byKey_.find(keys_.of(present.record));
        if (found == byKey_.end()) {
            added_.emplace(present.record.name());
            result_.rows.push_back(present);
            return;
        }
        auto& known = formers_[found->second];
        known.isPresent = true;
        const bool isTheirs = present.record != *known.record;
        if (known.edited == nullptr) {
            if (isTheirs) {
                report(present.record, "was deleted here and changed there: it stays");
                result_.rows.push_back(present);
            }
        } else if (known.edited->isChanged) {
            result_.rows.push_back(merged(known, present));
        } else {
            result_.rows.push_back(present);
        }
    }

    /// What has no place among the present records goes behind them.
    RecordMerge end(const std::vector<EditedRecord>& edited) {
        for (const auto& known : formers_) {
            if (!known.isPresent && known.edited != nullptr && known.edited->isChanged) {
                report(known.edited->record, "was changed here and deleted there: it is added");
                result_.rows.push_back({.record = known.edited->record, .isChanged = true});
            }
        }
        for (const auto& row : edited) {
            if (row.entry) {
                continue;
            }
            if (added_.contains(std::string(row.record.name()))) {
                report(row.record, "was added here and there: both are in the list");
            }
            result_.rows.push_back(row);
        }
        return std::move(result_);
    }

  private:
    void report(const PackedRecord& record, const char* what) {
        result_.conflicts.push_back(formatPrintf("Measurement '%s' %s.", record.name(), what));
    }

    EditedRecord merged(const Former& known, const EditedRecord& present) {
        EditedRecord row = present;
        const auto& mine = known.edited->record;
        for (std::size_t field = 0; field < mdbfield::kCount; ++field) {
            const auto before = (*known.record)[field];
            if (mine[field] == before || mine[field] == present.record[field]) {
                continue;
            }
            if (present.record[field] != before) {
                result_.conflicts.push_back(
                    formatPrintf("Measurement '%s': '%s' was changed here to '%s' and there to "
                                 "'%s': it is '%s'.",
                                 mine.name(), mdbFields()[field].label, mine[field],
                                 present.record[field], mine[field]));
            }
            row.record.set(field, mine[field]);
            row.isChanged = true;
        }
        return row;
    }

    std::vector<Former> formers_;
    std::unordered_map<std::string, std::size_t> byKey_;
    Keys keys_;
    std::unordered_set<std::string> added_;  ///< by the other
    RecordMerge result_;
};

}  // namespace

RecordMerge mergeRecords(const std::vector<EditedRecord>& former,
                         const std::vector<EditedRecord>& edited,
                         const std::vector<EditedRecord>& present) {
    Merging merging(former, edited);
    for (const auto& row : present) {
        merging.take(row);
    }
    return merging.end(edited);
}

}  // namespace kavu
