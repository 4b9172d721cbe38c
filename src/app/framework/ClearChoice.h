// The way to select nothing in a choice: the Delete key. A list of its own entry for this
// would be taken for a value.
#pragma once

class QComboBox;

namespace kavu {

/// Lets the Delete key empty the choice, and says so where the pointer rests.
void clearOnDelete(QComboBox& box);

}  // namespace kavu
