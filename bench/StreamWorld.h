// An open document with one stream, for the measurements of streams.
#pragma once

#include "core/document/DocumentParts.h"
#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"

#include <array>
#include <cstdlib>
#include <optional>
#include <string>

namespace kavu::bench {

inline constexpr int kFrames = 256;
inline constexpr int kWordFrameEdition = 2011;
inline constexpr int kOlderEdition = 2009;

class FixedRandom : public RandomSource {
  public:
    std::optional<std::array<std::uint8_t, 16>> bytes16() override {
        return std::array<std::uint8_t, 16>{1};
    }
};

/// What the parts of a document stand on.
struct StreamGround {
    static std::string makeFolder() {
        std::string pattern = "/tmp/kavu-bench-XXXXXX";
        return mkdtemp(pattern.data()) == nullptr ? std::string("/tmp") : pattern;
    }

    std::string folder = makeFolder();
    FixedClock clock{CivilTime{2026, 1, 2, 3, 4, 5}};
    FixedRandom random;
};

struct StreamWorld : StreamGround, DocumentParts {
    StreamWorld() : DocumentParts(environment(folder), clock, random, folder + "/kavu.ini") {
        store.activate(nullptr, "KAVU-9", random);
    }
    ~StreamWorld() { store.deactivate(nullptr); }
    static Environment environment(const std::string& folder) {
        Environment environment;
        environment.variable = [folder](const std::string&) { return std::optional(folder); };
        return environment;
    }

    PcmFormat format{context};

    /// Loads the stream "S" of these groups.
    bool load(const std::string& pGroup, const std::string& dGroup) {
        (void)writeWholeFile(store.pathOf("[kavu]PCMFMT.P01"), pGroup);
        (void)writeWholeFile(store.pathOf("[kavu]PCMMEAS.D01"), dGroup);
        return load();
    }
    bool load() {
        format.closeFormat();
        return loadPcmFormat(format, nullptr, {}, "S");
    }
};

}  // namespace kavu::bench
