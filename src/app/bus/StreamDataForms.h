// The editors of the message data and the packets of a link: what the tree, the menu and the sheets
// of other folders open.
#pragma once

#include <string>
#include <string_view>

class QWidget;

namespace kavu {

class Application;
struct FormContext;

/// Reads the message data of a link and runs its sheet. Without a name the user chooses among the
/// links that have message data. In a document of an edition without it nothing opens, after
/// message 73 ("not introduced until"). True if the group was written.
bool editMessages(FormContext& form, Application& application, const std::string& link,
                  QWidget* window = nullptr);
/// The same among the links of one data source.
bool editMessagesOf(FormContext& form, Application& application, std::string_view source,
                    QWidget* window = nullptr);
/// Reads the packets of a link and runs their sheet; as above with message 73. True if the group or
/// a conversion was written.
bool editPackets(FormContext& form, Application& application, const std::string& link,
                 QWidget* window = nullptr);

}  // namespace kavu
