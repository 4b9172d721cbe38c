// Walks the controls of a window and reports what would hinder a user: a control without a
// name for the screen reader, a label without a control, text that does not fit, a tab order
// that jumps. The test of each window calls it.
#pragma once

#include <string>
#include <vector>

#include <QWidget>

namespace kavu::test {

/// Findings over all visible controls, each as one readable line; empty is good. The window
/// is shown for it.
[[nodiscard]] std::vector<std::string> checkWindow(QWidget& window);

/// The same, one aspect each.
[[nodiscard]] std::vector<std::string> checkNames(const QWidget& window);
[[nodiscard]] std::vector<std::string> checkText(const QWidget& window);
[[nodiscard]] std::vector<std::string> checkTabOrder(const QWidget& window);

/// The controls that take the focus by the Tab key, in that order.
[[nodiscard]] std::vector<QWidget*> tabChain(const QWidget& window);

}  // namespace kavu::test
