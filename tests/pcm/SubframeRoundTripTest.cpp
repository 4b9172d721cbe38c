// Counters, subframes and async formats written as commands and read back, over generated
// streams of every edition, and over senseless commands.
#include "pcm/StreamCommands.h"
#include "pcm/StreamFixture.h"

#include <array>
#include <random>

namespace kavu {
namespace {

using test::StreamFixture;

using test::Commands;

/// What a model holds, as text: two models are the same if these are.
std::string textOfStream(const PcmFormat& format) {
    std::string text;
    for (std::size_t i = 0; i < format.idCounters.size(); ++i) {
        const auto& c = format.idCounters[i];
        for (const std::string_view field :
             {c.name.view(), c.type.view(), c.wordLength.view(), c.msbStartBit.view(),
              c.counterLength.view(), c.transferOrder.view(), c.initialValue.view(),
              c.startFrame.view(), c.endValue.view(), c.endFrame.view(), c.countDirection.view()}) {
            text.append(field).append("|");
        }
        text += "\n";
        for (const auto& s : c.subframes) {
            for (const std::string_view field :
                 {s.name.view(), s.supercommutated.view(), s.locationMode.view(), s.interval.view(),
                  s.depth.view(), std::string_view(s.hidden ? "H" : "")}) {
                text.append(field).append("|");
            }
            text += "\n";
        }
    }
    for (int fwp = 0; fwp < format.wordsPerMinorFrame; ++fwp) {
        const auto& word = format.word(fwp);
        text +=
            formatPrintf("%d:%d,%d,%d,%d\n", fwp, static_cast<int>(word.type), word.idCounterIndex,
                         word.subframeIndex, format.cells().cellCount(fwp));
    }
    const auto places = asyncPlaces(format);
    for (std::size_t i = 0; i < places.size(); ++i) {
        const auto& a = format.asyncFormats[i];
        text += formatPrintf("%d %s %s %s %d %d %d %s %s %s %s %s %s %s\n", a.isDataMerge ? 1 : 0,
                             a.dataLinkName.view(), a.supercom.view(), a.locationMode.view(),
                             a.interval, a.adm5, a.adm6, a.adm7, a.mergeParity, a.overheadMask,
                             a.firstDataPosition, a.dataOrder, a.secondDataPosition,
                             a.userDataPosition);
        for (const auto& place : places[i]) {
            text += formatPrintf(" %d %s", place.fwp, place.mask);
            for (const auto& range : place.frames) {
                text += formatPrintf(" %d-%d-%d", range.start, range.interval, range.end);
            }
            for (int fn = 1; fn <= format.numberOfFrames; ++fn) {
                text += isAsyncAt(format, place.fwp, fn, static_cast<int>(i) + 1) ? "*" : ".";
            }
            text += "\n";
        }
    }
    return text;
}

class Generator {
  public:
    explicit Generator(unsigned seed) : random_(seed) {}

    int number(int least, int most) {
        return std::uniform_int_distribution<int>(least, most)(random_);
    }
    bool chance(int percent) { return number(1, 100) <= percent; }
    template <std::size_t N>
    std::string one(const std::array<const char*, N>& of) {
        return of[static_cast<std::size_t>(number(0, static_cast<int>(N) - 1))];
    }

  private:
    std::mt19937 random_;
};

/// A stream that a reader takes without a correction.
class SubframeGenerator {
  public:
    SubframeGenerator(unsigned seed, int edition) : g_(seed), edition_(edition) {
        frames = 1 << g_.number(1, 5);
        words = g_.number(40, 120);
        for (int fwp = 12; fwp < words; ++fwp) {
            free_.push_back(fwp);
        }
    }

    Commands commands() {
        const int counters = g_.number(edition_ >= 2011 ? 1 : 0, 4);
        add("ISF\\N:" + std::to_string(counters));
        for (int n = 1; n <= counters; ++n) {
            counter(n);
        }
        asyncFormats();
        return commands_;
    }

    int words = 0;
    int frames = 0;

  private:
    void add(const std::string& command) { commands_.push_back(command); }
    int takeWord() {
        const auto at = static_cast<std::size_t>(g_.number(0, static_cast<int>(free_.size()) - 1));
        const int word = free_[at];
        free_.erase(free_.begin() + static_cast<std::ptrdiff_t>(at));
        return word;
    }

    void counter(int n) {
        const auto head = [n](const char* code) { return code + std::to_string(n) + ":"; };
        const bool up = g_.chance(60);
        const int start = g_.chance(80) ? 1 : g_.number(1, frames - 1);
        const int end = g_.chance(80) ? frames : g_.number(start, frames);
        const int initial = up ? g_.number(0, 3) : end - start + g_.number(1, 5);
        add(head("ISF1-") + "Counter " + std::to_string(n));
        add(head("ISF2-") + g_.one(std::array{"ID", "OT"}));
        add(head("IDC1-") + std::to_string(takeWord()));
        add(head("IDC2-") + "16");
        add(head("IDC3-") + std::to_string(g_.number(1, 16)));
        add(head("IDC4-") + std::to_string(g_.number(1, 16)));
        if (g_.chance(70)) {
            add(head("IDC5-") + g_.one(std::array{"M", "L"}));
        }
        add(head("IDC6-") + std::to_string(initial));
        add(head("IDC7-") + std::to_string(start));
        add(head("IDC8-") + std::to_string(up ? initial + end - start : initial - (end - start)));
        add(head("IDC9-") + std::to_string(end));
        add(head("IDC10-") + (up ? "INC" : "DEC"));
        if (edition_ < 2011) {
            const int subframes = g_.number(0, 3);
            add(head("SF\\N-") + std::to_string(subframes));
            for (int m = 1; m <= subframes; ++m) {
                subframe(n, m);
            }
        }
    }

    void subframe(int n, int m) {
        const auto index = "-" + std::to_string(n) + "-" + std::to_string(m);
        add("SF1" + index + ":SUB" + index);
        const int kind = g_.number(0, 2);
        if (kind == 0) {
            add("SF2" + index + ":NO");
            add("SF4" + index + "-1:" + std::to_string(takeWord()));
        } else if (kind == 1) {
            const int count = g_.number(2, 4);
            add("SF2" + index + ":" + std::to_string(count));
            add("SF3" + index + ":EL");
            for (int k = 1; k <= count; ++k) {
                add("SF4" + index + "-" + std::to_string(k) + ":" + std::to_string(takeWord()));
            }
        } else {
            interval(index);
        }
        add("SF6" + index + ":" + std::to_string(1 << g_.number(1, 4)));
    }

    void interval(const std::string& index) {
        // Two words that are free, and the step between them.
        int first = takeWord();
        int second = takeWord();
        if (first > second) {
            std::swap(first, second);
        }
        add("SF2" + index + ":2");
        add("SF3" + index + ":FI");
        add("SF4" + index + "-1:" + std::to_string(first));
        add("SF5" + index + ":" + std::to_string(second - first));
    }

    void asyncFormats() {
        const int embedded = g_.number(0, 3);
        add("AEF\\N:" + std::to_string(embedded));
        for (int n = 1; n <= embedded; ++n) {
            add("AEF\\DLN-" + std::to_string(n) + ":Link " + std::to_string(n));
            locations(n, "AEF", "AEF7-", 8);
        }
        const int merges = g_.number(0, 3);
        add("ADM\\N:" + std::to_string(merges));
        for (int n = 1; n <= merges; ++n) {
            const auto number = std::to_string(n);
            add("ADM\\DMN-" + number + ":Merge " + number);
            if (g_.chance(50)) {
                add("ADM\\MP-" + number + ":" + g_.one(std::array{"EV", "OD", "NO"}));
                add("ADM\\OHM-" + number + ":1100");
                add("ADM\\FDP-" + number + ":LSB");
                add("ADM\\DOP-" + number + ":M");
                add("ADM\\SDP-" + number + ":FOLLOWING");
                add("ADM\\UDP-" + number + ":MSB");
            }
            add("ADM5-" + number + ":" + std::to_string(g_.number(0, 9)));
            add("ADM6-" + number + ":" + std::to_string(g_.number(0, 9)));
            add("ADM7-" + number + ":" + g_.one(std::array{"NO", "YES", "1"}));
            locations(n, "ADM", "ADM8-", 9);
        }
    }

    /// `start` is the number of the code of a range's start frame.
    void locations(int n, const std::string& kind, const std::string& ranges, int start) {
        const auto number = std::to_string(n);
        const int shape = g_.number(0, 2);
        const int count = shape == 0 ? 1 : 2;
        if (shape == 0) {
            add(kind + "1-" + number + ":NO");
        } else {
            add(kind + "1-" + number + ":2");
            add(kind + "2-" + number + (shape == 1 ? ":EL" : ":FI"));
        }
        std::vector<int> taken(static_cast<std::size_t>(count));
        for (auto& word : taken) {
            word = takeWord();
        }
        if (shape == 2) {
            std::sort(taken.begin(), taken.end());
            add(kind + "4-" + number + ":" + std::to_string(taken[1] - taken[0]));
        }
        for (int k = 1; k <= count; ++k) {
            const auto index = number + "-" + std::to_string(k);
            if (shape != 2 || k == 1) {
                add(kind + "3-" + index + ":" +
                    std::to_string(taken[static_cast<std::size_t>(k - 1)]));
            }
            if (kind == "AEF") {
                const int bits = g_.number(1, 16);
                std::string mask;
                for (int i = 0; i < bits; ++i) {
                    mask += g_.chance(50) ? '1' : '0';
                }
                add("AEF6-" + index + ":" + mask);
            }
            if (edition_ >= 2011) {
                frameRanges(index, kind, ranges, start);
            }
        }
    }

    void frameRanges(const std::string& index, const std::string& kind, const std::string& ranges,
                     int start) {
        const int count = g_.number(0, 2);
        add(ranges + index + (count == 0 ? ":NO" : ":" + std::to_string(count)));
        for (int j = 1; j <= count; ++j) {
            const int from = g_.number(1, frames);
            const auto range = "-" + index + "-" + std::to_string(j) + ":";
            add(kind + std::to_string(start) + range + std::to_string(from));
            add(kind + std::to_string(start + 1) + range + std::to_string(g_.number(0, 3)));
            add(kind + std::to_string(start + 2) + range + std::to_string(g_.number(from, frames)));
        }
    }

    Generator g_;
    int edition_;
    std::vector<int> free_;
    Commands commands_;
};

TEST(SubframeRoundTrip, AStreamOfEveryEditionComesBackAsItWas) {
    for (const int edition : kEditions) {
        StreamFixture f(edition);
        for (unsigned seed = 0; seed < 60; ++seed) {
            SCOPED_TRACE(formatPrintf("edition %d, seed %d", edition, seed));
            SubframeGenerator generator(seed, edition);
            const auto commands = generator.commands();
            f.start(generator.words, generator.frames);
            ASSERT_TRUE(f.read(commands));
            ASSERT_EQ(f.result(), 0) << (f.ui.logs.empty() ? "" : f.ui.logs.back().text);
            ASSERT_TRUE(f.ui.logs.empty());
            ASSERT_TRUE(f.ui.boxes.empty());
            const auto first = textOfStream(f.format);
            const auto text = f.writtenText();
            f.start(generator.words, generator.frames);
            ASSERT_TRUE(f.readText(text));
            EXPECT_EQ(f.result(), 0);
            EXPECT_EQ(textOfStream(f.format), first);
            EXPECT_EQ(f.writtenText(), text);
        }
    }
}

/// Every word and slot of the model leads to a record that is there.
void expectSound(const PcmFormat& format) {
    for (int fwp = 1; fwp < format.wordsPerMinorFrame; ++fwp) {
        const auto& word = format.word(fwp);
        const int depth = format.wordDepth(fwp);
        if (word.type == WordType::Subframe) {
            const auto* const record = format.subframeOfWord(fwp);
            ASSERT_NE(record, nullptr);
            EXPECT_FALSE(record->name.empty());
            EXPECT_EQ(format.cells().cellCount(fwp), depth);
        } else {
            EXPECT_EQ(format.cells().cellCount(fwp), 1);
        }
        for (int index = 1; index <= format.cells().cellCount(fwp); ++index) {
            for (auto at = format.cellAt(fwp, index); at; at = format.next(at)) {
                EXPECT_LE(format.cells().asyncNumber(at), format.asyncCount());
            }
        }
    }
    EXPECT_LE(format.asyncCount(), kMostAsyncFormats);
    EXPECT_LE(format.idCounters.size(), 99U);
}

std::string nonsense(Generator& g) {
    switch (g.number(0, 5)) {
        case 0:
            return std::to_string(g.number(-3, 12));
        case 1:
            return std::to_string(g.number(1, 31));
        case 2:
            return g.one(std::array{"1000000000", "-2147483648", "99999999999999999999", "0", "256",
                                    "2048", "65536"});
        case 3:
            return g.one(std::array{"NO", "FI", "EL", "NA", "INC", "DEC", "YES", "fi"});
        case 4:
            return g.one(std::array{"0101", "A", "SFID", "SF-3", " ", "1:2", "\x14\x15"});
        default:
            return std::string(static_cast<std::size_t>(g.number(1, 80)), '1');
    }
}

TEST(SubframeRoundTrip, CommandsThatMakeNoSenseLeaveASoundModel) {
    constexpr std::array kCodes{
        "ISF\\N",     "ISF1-@",      "ISF2-@",     "IDC1-@",   "IDC2-@",   "IDC3-@",   "IDC4-@",
        "IDC6-@",     "IDC7-@",      "IDC8-@",     "IDC9-@",   "IDC10-@",  "SF\\N-@",  "SF1-@-@",
        "SF2-@-@",    "SF3-@-@",     "SF4-@-@-@",  "SF5-@-@",  "SF6-@-@",  "AEF\\N",   "AEF1-@",
        "AEF2-@",     "AEF3-@-@",    "AEF4-@",     "AEF5-@-@", "AEF6-@-@", "AEF7-@-@", "AEF8-@-@-@",
        "AEF9-@-@-@", "AEF10-@-@-@", "ADM\\N",     "ADM1-@",   "ADM2-@",   "ADM3-@-@", "ADM4-@",
        "ADM8-@-@",   "ADM9-@-@-@",  "ADM11-@-@-@"};
    for (const int edition : {1996, 2009, 2011}) {
        StreamFixture f(edition);
        f.parent = nullptr;
        for (unsigned seed = 0; seed < 80; ++seed) {
            SCOPED_TRACE(formatPrintf("edition %d, seed %d", edition, seed));
            Generator g(seed);
            Commands commands{"ISF\\N:" + std::to_string(g.number(0, 4)),
                              "AEF\\N:" + std::to_string(g.number(0, 4)),
                              "ADM\\N:" + std::to_string(g.number(0, 4))};
            for (int n = 1; n <= 3; ++n) {
                commands.push_back("SF\\N-" + std::to_string(n) + ":3");
            }
            const int count = g.number(1, 120);
            for (int i = 0; i < count; ++i) {
                auto code = std::string(kCodes[static_cast<std::size_t>(
                    g.number(0, static_cast<int>(kCodes.size()) - 1))]);
                for (auto at = code.find('@'); at != std::string::npos; at = code.find('@')) {
                    code.replace(at, 1, std::to_string(g.number(1, 4)));
                }
                commands.insert(commands.begin() + (g.chance(20) ? 0 : static_cast<long>(i)),
                                code + ":" + nonsense(g));
            }
            f.start(g.number(1, 64), g.number(1, 32));
            ASSERT_TRUE(f.read(commands));
            expectSound(f.format);
            const auto text = f.writtenText();
            f.start(f.format.wordsPerMinorFrame, f.format.numberOfFrames);
            ASSERT_TRUE(f.readText(text));
            expectSound(f.format);
        }
    }
}

}  // namespace
}  // namespace kavu
