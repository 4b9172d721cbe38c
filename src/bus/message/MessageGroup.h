// The message data of a data link, from its S group and back. The file is read into the tree, an
// editor changes the tree, and the group is written again from it; what of the file no part of the
// tree has is asked about.
#pragma once

#include "bus/message/MessageStream.h"
#include "core/document/GroupFile.h"

#include <string>
#include <string_view>

namespace kavu {

struct DocumentContext;
class UserInterface;

struct MessageGroup {
    std::string link{};
    int index = 0;  ///< 0 for a link that has no S group yet
    std::string testArticle{};
    std::string comment{};
    MessageStream root{};
    GroupFile kept{};        ///< the file as it was read, with marks
    bool corrected = false;  ///< a value was longer than its field may be; it is as it was

    /// Whether it is what it was: what a form asks before it writes.
    [[nodiscard]] bool holdsTheSame(const MessageGroup& other) const {
        return testArticle == other.testArticle && comment == other.comment && root == other.root;
    }
};

/// Reads the group of a link; a link without one has an empty tree. Values that are too long are
/// reported in the message log. False if the file could not be read, which is reported, or the user
/// has cancelled.
[[nodiscard]] bool loadMessages(DocumentContext& context, UserInterface* parent,
                                std::string_view link, MessageGroup& group);
/// Writes the group, under the first free index if there was none. False if it could not be
/// written, or no index is free, which is reported.
[[nodiscard]] bool storeMessages(DocumentContext& context, UserInterface* parent,
                                 MessageGroup& group);

/// "Edit Message Attributes - Data Link: %s"
[[nodiscard]] std::string messageSheetTitle(std::string_view link);

/// What the file has for a text of a row, and the way back. A value that no list has stays as it
/// is; a parity, an order of parity or an orientation of a measurement is one of two or three
/// whatever it is.
[[nodiscard]] std::string shownValue(const Field& field, std::string_view stored);
[[nodiscard]] std::string storedValue(const Field& field, std::string_view shown);

}  // namespace kavu
