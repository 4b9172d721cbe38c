// Pictures as lists of drawing calls, compared with those in tests/golden/plots. With
// KAVU_WRITE_GOLDEN set they are written again, for review.
#pragma once

#include "support/RecordingSurface.h"
#include "support/TestContext.h"

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

namespace kavu::test {

inline void expectPicture(const RecordingSurface& surface, const std::string& name) {
    const auto path = std::string(KAVU_SOURCE_DIR) + "/tests/golden/plots/" + name + ".txt";
    if (std::getenv("KAVU_WRITE_GOLDEN") != nullptr) {
        writeFile(path, surface.picture());
    }
    EXPECT_EQ(surface.picture(), readFile(path)) << name;
}

}  // namespace kavu::test
