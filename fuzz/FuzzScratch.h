// The folder of a fuzz target.
#pragma once

#include "Check.h"
#include "core/files/FileIo.h"

#include <cstdlib>
#include <string>

namespace kavu::fuzz {

/// A folder in memory if possible: an input costs a hundred files.
inline std::string makeScratch() {
    std::string pattern =
        folderExists("/dev/shm") ? "/dev/shm/kavu-fuzz-XXXXXX" : "/tmp/kavu-fuzz-XXXXXX";
    KAVU_CHECK(mkdtemp(pattern.data()) != nullptr);
    return pattern;
}

}  // namespace kavu::fuzz
