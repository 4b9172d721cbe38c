// Texts of tool tips.
#pragma once

#include <QString>

namespace kavu {

/// A tool tip that shows a text as it is. The toolkit takes any text that looks so for markup,
/// and values and names come from files.
[[nodiscard]] inline QString plainToolTip(const QString& text) {
    return text.isEmpty() ? QString()
                          : QStringLiteral("<p style='white-space:pre-wrap'>") +
                                text.toHtmlEscaped() + QStringLiteral("</p>");
}

}  // namespace kavu
