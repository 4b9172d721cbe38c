// The editing half of ConversionStore: the working copy of a chunk, comments, private
// pairs, fits.
#include "conversion/ConversionFields.h"
#include "conversion/ConversionStore.h"
#include "conversion/CurveFit.h"
#include "conversion/EuNumbers.h"
#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/Transaction.h"
#include "core/files/FileIo.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Text.h"
#include "vocabulary/CGroupFields.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr std::size_t kLongestCommentRecord = 499;

std::string decoded(std::string_view stored) {
    std::string text(stored);
    fromStoredForm(text);
    return text;
}

/// Calls `visit` with key and value of each pair of a comment record's row.
template <typename Visit>
void forEachPair(std::string_view row, Visit visit) {
    while (!row.empty()) {
        const auto end = row.find(' ');
        const auto pair = row.substr(0, end);
        row.remove_prefix(end == std::string_view::npos ? row.size() : end + 1);
        const auto equals = pair.find('=');
        if (equals != std::string_view::npos) {
            visit(pair.substr(0, equals), pair.substr(equals + 1));
        }
    }
}

}  // namespace

// --- The working copy --------------------------------------------------------------------

bool ConversionStore::beginDefinitionEdit(UserInterface* parent, const std::string& name,
                                          const std::string& newName) {
    const auto place = locateDefinition(name);
    if (!place.found) {
        return false;
    }
    const auto working = context_.store.pathOf(working::kData1);
    if (!report(parent, writeOut(), "Write/Create") ||
        !report(parent, copyFile(place.path, working), "Copy")) {
        return false;
    }
    if (place.section != newName) {
        ProfileFile copy(working);
        if (!report(parent, copy.load(), "Read") || !copy.renameSection(place.section, newName) ||
            !report(parent, copy.flush(), "Write/Create")) {
            return false;
        }
    }
    return copyComment(parent, commentPath(context_.store, place.section),
                       commentCopyPath(context_.store, newName)) &&
           separatePairs(parent, newName, true);
}

bool ConversionStore::findComment(UserInterface* parent, const std::string& path,
                                  bool& found) const {
    PathKind kind = PathKind::Missing;
    const bool known = report(parent, probePath(path, kind), "Read");
    found = kind != PathKind::Missing;
    return known;
}

bool ConversionStore::copyComment(UserInterface* parent, const std::string& from,
                                  const std::string& to) const {
    bool found = false;
    if (!findComment(parent, from, found)) {
        return false;
    }
    if (found) {
        return report(parent, copyFile(from, to), "Copy");
    }
    // One left by an earlier edit would be taken for this record's.
    return removeCommentCopy(parent, to);
}

bool ConversionStore::removeCommentCopy(UserInterface* parent, const std::string& path) const {
    bool found = false;
    return findComment(parent, path, found) &&
           (!found || report(parent, deleteFile(path), "Delete"));
}

bool ConversionStore::separatePairs(UserInterface* parent, const std::string& name,
                                    bool workingCopy) {
    IoStatus status;
    const auto comment = readEuComment(name, workingCopy, &status);
    if (!report(parent, status, "Read")) {
        return false;
    }
    auto [record, plain] = splitCommentRecord(comment);
    if (record.empty()) {
        return true;
    }
    std::string_view pairs = record;
    pairs.remove_prefix(pairs.find(':') + 1);
    pairs = trim(pairs.substr(0, pairs.find(']')));
    return edit(parent, name, workingCopy,
                [&](ProfileFile& file, const std::string& section) {
                    // Those that are there already are newer.
                    return pairs.empty() ||
                           !file.value(section, recordkey::kCommentRecord, "").empty() ||
                           file.setValue(section, recordkey::kCommentRecord, pairs);
                }) &&
           writeEuComment(parent, name, std::move(plain), workingCopy);
}

bool ConversionStore::isInWorkingCopy(const std::string& name) const {
    const auto working = context_.store.pathOf(working::kData1);
    return fileExists(working) && ProfileFile(working).containsExactly(name);
}

bool ConversionStore::commitDefinitionEdit(UserInterface* parent, const std::string& name) {
    const auto place = locateDefinition(name);
    if (!place.found) {
        return false;
    }
    std::string bytes;
    if (!report(parent, readWholeFile(context_.store.pathOf(working::kData1), bytes), "Read")) {
        return false;
    }
    const auto file = chunk(place.chunk);
    file->parse(bytes);
    if (!report(parent, store(place.chunk, *file), "Write/Create")) {
        return false;
    }
    const auto comment = commentName(place.section);
    const auto commentCopy = commentCopyPath(context_.store, name);
    bool found = false;
    if (!findComment(parent, commentCopy, found)) {
        return false;
    }
    if (!found) {
        return removeComment(parent, place.section);
    }
    commentFiles_.insert(comment);
    return report(parent, context_.files.adopt(commentCopy, comment), "Write/Create");
}

bool ConversionStore::openDefinitionForEdit(UserInterface* parent, const std::string& name,
                                            bool& isTemplate) {
    isTemplate = false;
    if (name.empty()) {
        showBox(parent, "ERROR: No measurement name",
                std::string(loadText(title::kInternalError).value_or("")));
        return false;
    }
    if (!ProfileFile::canBeSection(name)) {
        showBox(parent, "ERROR: A data conversion record cannot have this measurement name",
                std::string(loadText(title::kError).value_or("")));
        return false;
    }
    Transaction transaction(context_, OperationId::EditConversion);
    if (!createDefaultDefinition(parent, name, true)) {
        return false;
    }
    const auto place = locateDefinition(name);
    const auto file = chunk(place.chunk);
    if (!report(parent, file->load(), "Read")) {
        return false;
    }
    isTemplate = file->integer(place.section, recordkey::kTemplate, 0) != 0;
    file->removeKey(place.section, recordkey::kTemplate);
    return report(parent, store(place.chunk, *file), "Write/Create") &&
           report(parent, transaction.commitUnasked(), "Write/Create") &&
           beginDefinitionEdit(parent, name, name);
}

bool ConversionStore::edit(
    UserInterface* parent, const std::string& name, bool workingCopy,
    const std::function<bool(ProfileFile&, const std::string& section)>& change) {
    if (workingCopy) {
        ProfileFile copy(context_.store.pathOf(working::kData1));
        // If the record is missing there, a change would make half a record.
        return report(parent, copy.load(), "Read") && copy.containsExactly(name) &&
               change(copy, name) && report(parent, copy.flush(), "Write/Create");
    }
    const auto place = locateDefinition(name);
    if (!place.found) {
        return false;
    }
    const auto file = chunk(place.chunk);
    if (!report(parent, file->load(), "Read")) {
        return false;
    }
    if (!change(*file, place.section)) {
        discardChanges(place.chunk, *file);
        return false;
    }
    return report(parent, store(place.chunk, *file), "Write/Create");
}

// --- Comments ----------------------------------------------------------------------------

std::string ConversionStore::readEuComment(const ProfileFile::Section& record, IoStatus* status) {
    if (const auto text = record.get(kCommentCode); !text.empty()) {
        return decoded(text);
    }
    std::string bytes;
    if (auto listed = list(); !listed.ok() || commentFiles_.empty()) {
        if (status != nullptr) {
            *status = std::move(listed);
        }
        return bytes;
    }
    if (const auto file = commentName(record.name()); commentFiles_.contains(file)) {
        auto read = readWholeFile(context_.files.path(file), bytes);
        if (status != nullptr) {
            *status = std::move(read);
        }
    }
    return decoded(bytes);
}

std::string ConversionStore::readEuComment(const std::string& name, bool fromWorkingCopy,
                                           IoStatus* status) {
    std::string section = name;
    std::string text;
    IoStatus read;
    if (fromWorkingCopy) {
        const ProfileFile copy(context_.store.pathOf(working::kData1));
        read = copy.load();
        text = copy.value(name, kCommentCode, "");
    } else {
        const auto place = locateDefinition(name);
        if (!place.found) {
            return {};
        }
        section = place.section;
        const auto file = chunk(place.chunk);
        read = file->load();
        text = file->value(section, kCommentCode, "");
    }
    if (text.empty() && read.ok()) {
        const auto path = fromWorkingCopy ? commentCopyPath(context_.store, section)
                                          : commentPath(context_.store, section);
        PathKind kind = PathKind::Missing;
        read = probePath(path, kind);
        if (read.ok() && kind != PathKind::Missing) {
            read = readWholeFile(path, text);
        }
    }
    if (status != nullptr) {
        *status = std::move(read);
    }
    return decoded(text);
}

bool ConversionStore::writeEuComment(UserInterface* parent, const std::string& name,
                                     std::string text, bool toWorkingCopy) {
    toStoredForm(text);
    std::string measurement;
    bool inFile = false;
    const bool stored =
        edit(parent, name, toWorkingCopy, [&](ProfileFile& file, const std::string& section) {
            measurement = section;
            file.removeKey(section, kCommentCode);
            inFile = text.size() + file.serialisedSize() > kFullChunk;
            if (inFile) {
                return report(parent, putComment(section, text, toWorkingCopy), "Write/Create");
            }
            return text.empty() || file.setValue(section, kCommentCode, text);
        });
    if (!stored) {
        return false;
    }
    if (!inFile) {
        return toWorkingCopy
                   ? removeCommentCopy(parent, commentCopyPath(context_.store, measurement))
                   : removeComment(parent, measurement);
    }
    if (!toWorkingCopy) {
        commentFiles_.insert(commentName(measurement));
    }
    return true;
}

IoStatus ConversionStore::putComment(const std::string& measurement, const std::string& text,
                                     bool toWorkingCopy) {
    if (toWorkingCopy) {
        return replaceWorkingFile(commentCopyPath(context_.store, measurement), text);
    }
    const auto file = commentName(measurement);
    return context_.files.put(file, text);
}

std::string ConversionStore::commentRecordGet(const std::string& name, std::string_view key) {
    std::string row;
    const bool working = isInWorkingCopy(name);
    if (working) {
        row = ProfileFile(context_.store.pathOf(working::kData1))
                  .value(name, recordkey::kCommentRecord, "");
    } else if (const auto place = locateDefinition(name); place.found) {
        row = chunk(place.chunk)->value(place.section, recordkey::kCommentRecord, "");
    }
    if (row.empty()) {
        // A record not edited since the load has them in its comment.
        return commentRecordValue(readEuComment(name, working), key).value_or(std::string());
    }
    std::optional<std::string> value;
    forEachPair(row, [&](std::string_view pairKey, std::string_view pairValue) {
        if (!value && pairKey == key) {
            value = pairValue;
        }
    });
    return value.value_or(std::string());
}

bool ConversionStore::commentRecordSet(UserInterface* parent, const std::string& name,
                                       std::string_view key, std::string_view value) {
    const bool working = isInWorkingCopy(name);
    if (!separatePairs(parent, name, working)) {
        return false;
    }
    return edit(parent, name, working, [&](ProfileFile& file, const std::string& section) {
        std::string row;
        const auto append = [&row](std::string_view pairKey, std::string_view pairValue) {
            row.append(row.empty() ? "" : " ").append(pairKey).append("=").append(pairValue);
        };
        forEachPair(file.value(section, recordkey::kCommentRecord, ""),
                    [&](std::string_view pairKey, std::string_view pairValue) {
                        if (pairKey != key) {
                            append(pairKey, pairValue);
                        }
                    });
        if (!value.empty()) {
            append(key, value);
        }
        if (row.size() > kLongestCommentRecord) {
            return false;
        }
        if (row.empty()) {
            file.removeKey(section, recordkey::kCommentRecord);
            return true;
        }
        return file.setValue(section, recordkey::kCommentRecord, row);
    });
}

// --- Fits --------------------------------------------------------------------------------

bool ConversionStore::writeFitCoefficients(UserInterface* parent, const std::string& name,
                                           int order, std::span<const double> coefficients) {
    if (order < 0 || coefficients.size() <= static_cast<std::size_t>(order)) {
        return false;
    }
    const int precision = floatPrecision(context_.settings);
    return edit(parent, name, true, [&](ProfileFile& file, const std::string& section) {
        const int former = file.integer(section, c::kCoN.code, 0);
        bool good = file.setValue(section, c::kCo1.code, "Y") &&
                    file.setValue(section, c::kCoN.code, std::to_string(order));
        for (int i = 0; i <= order; ++i) {
            const auto text = exponentText(coefficients[static_cast<std::size_t>(i)], precision);
            good = good &&
                   file.setValue(section, i == 0 ? c::kCo.code : "CO-" + std::to_string(i), text);
        }
        // Remaining terms of a higher order would get into the update file, which takes the
        // first ten whatever their count says.
        for (int i = order + 1; i <= std::clamp(former, kHighestOrder, kMostTerms); ++i) {
            file.removeKey(section, "CO-" + std::to_string(i));
        }
        return good;
    });
}

}  // namespace kavu
