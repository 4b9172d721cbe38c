#include "application/FindingCollector.h"

#include <cstdlib>

namespace kavu {

void FindingCollector::keep(int id, const std::string& title, const std::string& text) {
    auto finding = findingOfText(text, source_);
    finding.id = std::abs(id);
    finding.title = title;
    if (finding.place.stream.empty()) {
        finding.place.stream = stream_;
    }
    findings_.push_back(std::move(finding));
}

Button FindingCollector::message(const MessageBox& box) {
    keep(box.id, box.title, box.text);
    switch (box.buttons) {
        case Buttons::Ok:
            return Button::Ok;
        case Buttons::YesNo:
            return box.name.empty() ? Button::No : box.defaultButton;
        case Buttons::OkCancel:
        case Buttons::RetryCancel:
        case Buttons::YesNoCancel:
            break;
    }
    return Button::Cancel;
}

void FindingCollector::logged(const LoggedMessage& message) {
    keep(message.id, message.title, message.text);
}

void FindingCollector::loadRemark(const std::string& text) {
    keep(0, {}, text);
}

}  // namespace kavu
