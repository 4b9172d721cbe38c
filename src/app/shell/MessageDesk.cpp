#include "app/shell/MessageDesk.h"

#include "app/framework/DialogDoor.h"
#include "core/text/Printf.h"

#include <QWidget>

namespace kavu {

namespace {

constexpr const char* kTitleOfMessages = "KAVU-9 Error Messages";
constexpr const char* kRemark = "Remark";
constexpr const char* kOpening = "Opening";
constexpr const char* kOperation = "Operation";

}  // namespace

MessageDesk::MessageDesk(UserInterface& ui, DialogDoor& door, MessagesWindow::GoTo goTo,
                         QWidget& owner)
    : ui_(ui), door_(door), goTo_(std::move(goTo)), owner_(owner) {}

MessageDesk::~MessageDesk() {
    delete window_;
}

void MessageDesk::begin(const std::string& path, const std::vector<std::string>& remarks) {
    subtitle_ = path.empty() ? std::string() : formatPrintf("TMATS %s: %s", "File", path);
    std::vector<Finding> findings;
    findings.reserve(remarks.size());
    for (const auto& remark : remarks) {
        findings.push_back(findingOfText(remark, kRemark));
    }
    model_.setFindings(std::move(findings));
    isOpening_ = true;
    if (window_ != nullptr) {
        window_->setSubtitle(subtitle_);
    }
}

void MessageDesk::clear() {
    model_.setFindings({});
    subtitle_.clear();
    if (window_ != nullptr) {
        window_->hide();
    }
}

bool MessageDesk::take(MessageReport report) {
    for (auto& finding : report.findings) {
        finding.source =
            report.stream.empty() ? isOpening_ ? kOpening : kOperation : finding.source;
    }
    if (!report.findings.empty()) {
        model_.removeSource(report.findings.front().source);
        model_.append(std::move(report.findings));
    }
    // A dialog would not let the window be used; and a stream's sheet waits for its report.
    if (!report.stream.empty() || door_.depth() > 0) {
        return false;
    }
    subtitle_ = report.content.subtitle;
    show();
    return true;
}

void MessageDesk::renew(std::vector<Finding> findings, const std::string& subtitle) {
    model_.setFindings(std::move(findings));
    subtitle_ = subtitle;
    show();
}

void MessageDesk::show() {
    if (window_ == nullptr) {
        window_ = new MessagesWindow(ui_, door_, {kTitleOfMessages, subtitle_, {}}, model_, goTo_,
                                     &owner_);
        window_->setModal(false);
    }
    window_->setSubtitle(subtitle_);
    window_->show();
    window_->raise();
    window_->activateWindow();
}

}  // namespace kavu
