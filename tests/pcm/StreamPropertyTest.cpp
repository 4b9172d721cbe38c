// Properties of every stream, tested on random ones of every edition.
#include "core/talk/ProfileSettings.h"
#include "core/text/Edition.h"
#include "pcm/StreamGenerator.h"
#include "pcm/StreamModel.h"
#include "pcm/write/WordFrameConversion.h"
#include "support/Seeds.h"

#include <gmock/gmock.h>

namespace kavu {
namespace {

using test::describe;
using test::Lines;
using test::LoadFixture;
using test::occurrences;
using test::StreamGenerator;

constexpr unsigned kSeeds = test::seeds(12);

class StreamProperty : public ::testing::TestWithParam<int> {
  protected:
    /// Runs on a loaded stream for every seed.
    template <typename Visit>
    void forEachStream(const Visit& visit) {
        for (unsigned seed = 1; seed <= kSeeds; ++seed) {
            const StreamGenerator generator(seed * 100 + static_cast<unsigned>(GetParam()),
                                            GetParam());
            LoadFixture stream(GetParam());
            stream.settings.write("WdFrCreation", "0");
            SCOPED_TRACE(::testing::Message() << "edition " << GetParam() << " seed " << seed);
            ASSERT_TRUE(stream.load(generator.pGroup(), generator.dGroup()));
            visit(stream, generator);
            if (::testing::Test::HasFailure()) {
                return;
            }
        }
    }

    static bool saveAndReload(LoadFixture& stream) {
        stream.format.changed = true;
        return savePcmFormat(stream.format, stream.parent) && stream.reload();
    }
    /// Lines that tell of a name that a write loses are left out.
    static Lines without(const Lines& lines, const std::set<std::string>& names) {
        Lines kept;
        for (const auto& line : lines) {
            const auto colon = line.find(": ");
            const auto name = colon == std::string::npos
                                  ? std::string()
                                  : line.substr(colon + 2, line.find(' ', colon + 2) - colon - 2);
            if (!line.starts_with("cell ") || !names.contains(name)) {
                kept.push_back(line);
            }
        }
        return kept;
    }
};

TEST_P(StreamProperty, AFaultlessStreamIsReadClean) {
    forEachStream([](LoadFixture& stream, const StreamGenerator& generator) {
        EXPECT_EQ(stream.result(), 0);
        EXPECT_TRUE(stream.ui.logs.empty()) << stream.ui.logs[0].text;
        EXPECT_TRUE(stream.ui.boxes.empty()) << stream.ui.boxes[0].text;
        EXPECT_EQ(static_cast<std::size_t>(stream.format.cells().nameCount()),
                  generator.measurementCount());
    });
}

// Two things are lost in a write: the places of subframe fragments in interval form, and the
// mask of a supercommutated measurement of every location where another one stands in front.
TEST_P(StreamProperty, AWriteAndAReadGiveTheSameModel) {
    forEachStream([](LoadFixture& stream, const StreamGenerator& generator) {
        const auto before = without(describe(stream.format, true), generator.lost());
        ASSERT_TRUE(saveAndReload(stream));
        EXPECT_EQ(without(describe(stream.format), generator.lost()), before);
        EXPECT_EQ(stream.ui.countLogs(261), static_cast<int>(generator.lost().size()));
    });
}

TEST_P(StreamProperty, ASecondWriteGivesTheSameBytes) {
    forEachStream([](LoadFixture& stream, const StreamGenerator&) {
        ASSERT_TRUE(saveAndReload(stream));
        ASSERT_TRUE(saveAndReload(stream));
        const auto format = stream.read("[kavu]PCMFMT.P01");
        const auto measurements = stream.read("[kavu]PCMMEAS.D01");
        ASSERT_TRUE(saveAndReload(stream));
        EXPECT_EQ(stream.read("[kavu]PCMFMT.P01"), format);
        EXPECT_EQ(stream.read("[kavu]PCMMEAS.D01"), measurements);
    });
}

TEST_P(StreamProperty, TheConversionToWordFrameKeepsEverySample) {
    forEachStream([](LoadFixture& stream, const StreamGenerator& generator) {
        const auto before = occurrences(stream.format);
        const bool converted = convertToWordFrame(stream.format, stream.parent);
        EXPECT_EQ(converted, GetParam() >= 2004);
        EXPECT_EQ(occurrences(stream.format), before);
        EXPECT_EQ(stream.ui.countLogs(461), 0);
        ASSERT_TRUE(saveAndReload(stream));
        // What could not be converted may be what a write loses.
        auto after = occurrences(stream.format);
        for (const auto& [name, count] : before) {
            if (after.contains(name) || !generator.lost().contains(name)) {
                EXPECT_EQ(after[name], count) << name;
            }
        }
    });
}

TEST_P(StreamProperty, TheMoveTo106_11KeepsEverySample) {
    if (GetParam() == 2011) {
        return;
    }
    forEachStream([](LoadFixture& stream, const StreamGenerator& generator) {
        const auto before = occurrences(stream.format);
        stream.format.closeFormat();
        stream.document.version = 2011;
        migrateStream(stream.format, stream.parent, stream.steps_, 1, GetParam());
        ASSERT_TRUE(stream.reload());
        auto after = occurrences(stream.format);
        for (const auto& [name, count] : before) {
            if (after.contains(name) || !generator.lost().contains(name)) {
                EXPECT_EQ(after[name], count) << name;
            }
        }
    });
}

TEST_P(StreamProperty, AParentChangesNothing) {
    forEachStream([](LoadFixture& stream, const StreamGenerator&) {
        const auto told = describe(stream.format);
        stream.parent = nullptr;
        ASSERT_TRUE(stream.reload());
        EXPECT_EQ(describe(stream.format), told);
    });
}

INSTANTIATE_TEST_SUITE_P(EveryEdition, StreamProperty, ::testing::ValuesIn(kEditions));

}  // namespace
}  // namespace kavu
