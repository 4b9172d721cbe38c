#include "sdk/SessionTalk.h"

namespace kavu {

/// A question is about what an editor would change; here only the copy in memory changes, and a
/// measurement that needs something made is not to be left out.
Button SessionTalk::message(const MessageBox& box) {
    switch (box.buttons) {
        case Buttons::YesNo:
            return Button::Yes;
        case Buttons::Ok:
            break;
        case Buttons::OkCancel:
        case Buttons::RetryCancel:
        case Buttons::YesNoCancel:
            return Button::Cancel;
    }
    if (!isSilent_) {
        report_(box.text + "\n\n");
    }
    return Button::Ok;
}

void SessionTalk::logged(const LoggedMessage& message) {
    if (log_) {
        log_(message);
    } else if (!isSilent_) {
        report_(message.text + "\n\n");
    }
}

}  // namespace kavu
