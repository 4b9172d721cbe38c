#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/files/FileIo.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "reports/layout/ReportColumns.h"
#include "reports/layout/ReportLayout.h"

#include <algorithm>
#include <cerrno>

namespace kavu {

namespace {

/// No layout of ours is larger by far.
constexpr std::uint64_t kMostLayoutBytes = std::uint64_t{1} << 20;

/// True for a key of a column, which no column of this program has.
bool isColumnKey(std::string_view key) {
    return key.size() > 1 && toUpperAscii(key.front()) == 'M' &&
           std::all_of(key.begin() + 1, key.end(), isDigit);
}

}  // namespace

LayoutFile::LayoutFile(DocumentContext& context) : context_(context) {}

LayoutFile::~LayoutFile() {
    close();
}

std::string LayoutFile::copyPath() const {
    return context_.store.pathOf(kLayoutCopy);
}

bool LayoutFile::report(UserInterface* parent, const IoStatus& status, const char* action) const {
    if (!status.ok()) {
        showBox(
            parent,
            formatPrintf("Unable to %s '%s'\n\nReason: %s", action, status.path(), status.reason()),
            "Report Layout File");
    }
    return status.ok();
}

bool LayoutFile::open(UserInterface* parent, const std::string& path) {
    std::uint64_t size = 0;
    auto status = probeSize(path, size);
    if (status.ok() && !isPlainFile(path)) {
        status = IoStatus(path, EINVAL);
    }
    if (status.ok() && size > kMostLayoutBytes) {
        status = IoStatus(path, EFBIG);
    }
    std::string text;
    if (status.ok()) {
        status = readWholeFile(path, text);
    }
    if (!report(parent, status, "read")) {
        return false;
    }
    close();
    const auto lineEnd = text.empty() || text.find("\r\n") != std::string::npos
                             ? ProfileFile::LineEnd::CrLf
                             : ProfileFile::LineEnd::Lf;
    if (!report(parent, copyFile(path, copyPath()), "copy")) {
        return false;
    }
    copy_.emplace(copyPath(), lineEnd);
    copy_->adopt(text);
    path_ = path;
    isChanged_ = false;
    return true;
}

bool LayoutFile::create(UserInterface* parent, const std::string& path) {
    close();
    copy_.emplace(copyPath());
    copy_->adopt({});
    for (const auto& key : layoutKeys(context_)) {
        copy_->setValue(kReportSection, key.key, key.otherwise);
    }
    path_ = path;
    isChanged_ = true;
    if (report(parent, copy_->flush(), "write")) {
        return true;
    }
    close();
    return false;
}

bool LayoutFile::save(UserInterface* parent) {
    return isOpen() && saveAs(parent, path_);
}

bool LayoutFile::saveAs(UserInterface* parent, const std::string& path) {
    if (!isOpen() || !report(parent, copy_->flush(), "write") ||
        !report(parent, replaceUserFile(path, copy_->serialise()), "write")) {
        return false;
    }
    path_ = path;
    isChanged_ = false;
    return true;
}

void LayoutFile::close() {
    if (isOpen()) {
        copy_.reset();
        (void)deleteFile(copyPath());
    }
    path_.clear();
    isChanged_ = false;
}

ReportLayout LayoutFile::layout() {
    return ReportLayout(*copy_);
}

bool LayoutFile::set(UserInterface* parent, std::string_view key, std::string_view value) {
    const auto before = layout().stored(key);
    std::string text(value);
    toStoredForm(text);
    if (!layout().set(key, value)) {
        showBox(parent, formatPrintf("A layout file cannot hold '%s=%s'.", key, value),
                "Report Layout File");
        return false;
    }
    isChanged_ = isChanged_ || !before || *before != text;
    return report(parent, copy_->flush(), "write");
}

std::vector<LayoutFile::Problem> LayoutFile::problems() const {
    const auto keys = layoutKeys(context_);
    std::vector<Problem> found;
    for (const auto& name : copy_->keyNames(kReportSection)) {
        const auto value = copy_->value(kReportSection, name, {});
        const auto key = std::find_if(keys.begin(), keys.end(), [&](const LayoutKey& each) {
            return equalsIgnoreCase(each.key, name);
        });
        if (key == keys.end()) {
            found.push_back(
                {name, value, isColumnKey(name) ? Problem::Kind::Column : Problem::Kind::Unknown});
        } else if (!canHave(*key, value)) {
            found.push_back({name, value, Problem::Kind::Value});
        }
    }
    return found;
}

}  // namespace kavu
