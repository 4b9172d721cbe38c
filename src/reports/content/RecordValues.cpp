#include "reports/content/RecordValues.h"

#include "conversion/ConversionFields.h"
#include "conversion/ConversionStore.h"
#include "conversion/DefinitionEdit.h"
#include "conversion/EuNumbers.h"
#include "core/files/ProfileFile.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "vocabulary/CGroupFields.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>

namespace kavu {

namespace {

/// A count of a file is not believed beyond this.
constexpr int kMostListed = 100'000;
/// Records between two looks whether the user has cancelled.
constexpr std::size_t kPollRecords = 1024;

using Record = ProfileFile::Section;

std::string stored(const Record& record, std::string_view code) {
    std::string text(record.get(code));
    fromStoredForm(text);
    return text;
}

std::string item(const Record& record, const Field& row, int number) {
    return stored(record, fieldCode(row.code, {number}));
}

int countOf(const Record& record, const Field& row) {
    return std::clamp(record.integer(row.code), 0, kMostListed);
}

/// The texts with ", " between; nothing if none of them says anything.
std::string listText(const std::vector<std::string>& texts) {
    std::string text;
    bool says = false;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        text += i > 0 ? ", " : "";
        text += texts[i];
        says = says || !texts[i].empty();
    }
    return says ? text : std::string();
}

/// What a conversion has as its data: coefficients as they are stored, pairs as numbers, events.
std::string conversionData(const Record& record, int precision) {
    const auto type = record.get(kTypeCode);
    std::vector<std::string> texts;
    if (equalsIgnoreCase(type, "COE")) {
        texts.push_back(stored(record, c::kCo.code));
        for (int i = 1; i <= countOf(record, c::kCoN); ++i) {
            texts.push_back(item(record, c::kCoTerm, i));
        }
    } else if (equalsIgnoreCase(type, "PRS")) {
        texts = {stored(record, c::kPs1.code), stored(record, c::kPs2.code)};
        for (int i = 1; i <= countOf(record, c::kPsN); ++i) {
            texts.push_back(exponentText(leadingDouble(item(record, c::kPs3, i)), precision) + "=" +
                            exponentText(leadingDouble(item(record, c::kPs4, i)), precision));
        }
    } else if (equalsIgnoreCase(type, "DIS")) {
        for (int i = 1; i <= countOf(record, c::kDicN); ++i) {
            texts.push_back(item(record, c::kDicc, i) + "=" + item(record, c::kDicp, i));
        }
    }
    return listText(texts);
}

}  // namespace

bool isOfRecord(const ReportColumn& column) {
    switch (column.id) {
        case ReportColumnId::RecordField:
        case ReportColumnId::CommentString:
        case ReportColumnId::ConversionType:
        case ReportColumnId::ConversionData:
            return true;
        default:
            return false;
    }
}

RecordValues::RecordValues(ConversionStore& store, const std::vector<ReportColumn>& columns,
                           int precision,
                           const std::function<bool(const std::string& lowerName)>& wanted,
                           UserInterface* parent) {
    std::vector<ReportColumn> taken;
    std::copy_if(columns.begin(), columns.end(), std::back_inserter(taken), isOfRecord);
    if (taken.empty()) {
        return;
    }
    const bool needsComment = std::any_of(taken.begin(), taken.end(), [](const auto& column) {
        return column.id == ReportColumnId::CommentString;
    });
    std::size_t count = 0;
    for (const auto number : store.chunkNumbers()) {
        const auto chunk = store.chunk(number);
        if (cancelRequested(parent) || !chunk) {
            return;
        }
        yieldToInterface(parent);
        for (const auto& record : chunk->sections()) {
            if (++count % kPollRecords == 0 && cancelRequested(parent)) {
                return;
            }
            auto lower = lowerAscii(record.name());
            if (record.name().empty() || !wanted(lower) || exact_.contains(record.name())) {
                continue;
            }
            const auto comment = needsComment ? store.readEuComment(record) : std::string();
            auto& values = exact_[record.name()];
            for (const auto& column : taken) {
                if (column.id == ReportColumnId::CommentString) {
                    values.push_back(commentStringValue(comment, column.text));
                } else if (column.id == ReportColumnId::ConversionData) {
                    values.push_back(conversionData(record, precision));
                } else {
                    values.push_back(stored(record, column.id == ReportColumnId::ConversionType
                                                        ? kTypeCode
                                                        : column.code));
                }
            }
            folded_.try_emplace(std::move(lower), record.name());
        }
    }
}

const std::vector<std::string>* RecordValues::find(std::string_view name) const {
    if (const auto found = exact_.find(std::string(name)); found != exact_.end()) {
        return &found->second;
    }
    const auto spelling = folded_.find(lowerAscii(name));
    return spelling == folded_.end() ? nullptr : &exact_.at(spelling->second);
}

}  // namespace kavu
