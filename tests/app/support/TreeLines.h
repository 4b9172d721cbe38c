// What a tree shows, as lines.
#pragma once

#include "app/framework/QtText.h"

#include <string>
#include <vector>

#include <QTreeView>

namespace kavu::test {

/// The lines whose branches are open, each behind a blank for each branch that it is in.
inline std::vector<std::string> openLines(const QTreeView& tree) {
    std::vector<std::string> all;
    for (auto at = tree.model()->index(0, 0); at.isValid(); at = tree.indexBelow(at)) {
        std::string line = toBytes(at.data().toString());
        for (auto around = at.parent(); around.isValid(); around = around.parent()) {
            line.insert(0, " ");
        }
        all.push_back(line);
    }
    return all;
}

}  // namespace kavu::test
