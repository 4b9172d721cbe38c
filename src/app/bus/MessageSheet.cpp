#include "app/bus/MessageSheet.h"

#include "app/bus/GroupTreePage.h"
#include "app/bus/MessageTree.h"
#include "app/framework/FieldForm.h"
#include "core/TmatsDocument.h"

namespace kavu {

namespace {

constexpr char kMessagePageKey[] = "LastSMessagePage";
constexpr char kMiscPage[] = "Misc";

}  // namespace

MessageSheet::MessageSheet(FormContext& form, DocumentContext& document, MessageGroup& group,
                           const MeasurementNames* names, QWidget* parent)
    : PropertySheet(form, "MessageAttributes", messageSheetTitle(group.link), kMessagePageKey,
                    parent),
      form_(form),
      document_(document),
      group_(group),
      before_(group),
      edit_(document, group, names),
      tree_(std::make_unique<MessageTree>(form, group, edit_)) {
    auto streams = std::make_unique<GroupTreePage>(form, "SMessageStreams", "Message Data", *tree_,
                                                   QStringLiteral("Message data"));
    editor_ = &streams->editor();
    addPage(std::move(streams));
    misc_[std::string(message_field::kTestArticle.code)] = group.testArticle;
    misc_[std::string(message_field::kComment.code)] = group.comment;
    addPage(std::make_unique<FieldPage>(form, kMiscPage, kMiscPage, messageFields(), misc_));
    setWriter([this] { return write(); });
}

MessageSheet::~MessageSheet() = default;

bool MessageSheet::write() {
    group_.testArticle = misc_[std::string(message_field::kTestArticle.code)];
    group_.comment = misc_[std::string(message_field::kComment.code)];
    if (group_.holdsTheSame(before_)) {
        return true;
    }
    isWritten_ = storeMessages(document_, &form_.ui, group_);
    return isWritten_;
}

}  // namespace kavu
