// Sheets with so many pages that their tabs are wider than the pages.
#pragma once

namespace kavu {

class PropertySheet;

/// Makes all tabs of a sheet seen, where the screen has room for them: on a narrow one titles of
/// several words stand on two lines. To be called after the last page.
void showAllTabs(PropertySheet& sheet);

}  // namespace kavu
