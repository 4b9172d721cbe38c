// Random valid streams, the same for the same seed: P and D groups of every location type of
// an edition, with counters, subframes, async formats, fragments and variable word lengths.
#pragma once

#include "pcm/LoadFixture.h"

#include <numeric>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace kavu::test {

class StreamGenerator {
  public:
    StreamGenerator(unsigned seed, int edition) : random_(seed), edition_(edition) {
        makeFrame();
        makeAsyncFormats();
        const int count = below(30);
        for (int m = 0; m < count; ++m) {
            name_ = "M" + std::to_string(m);
            measurements_.push_back(measurement());
        }
        std::shuffle(measurements_.begin(), measurements_.end(), random_);
    }

    [[nodiscard]] const Commands& pGroup() const { return format_; }
    [[nodiscard]] Commands dGroup() const {
        return listOf(measurements_) + Commands{"COM:made from a seed"};
    }
    /// Names of measurements that lose their places in a write: subframe fragments in interval
    /// form.
    [[nodiscard]] const std::set<std::string>& lost() const { return lost_; }
    [[nodiscard]] std::size_t measurementCount() const { return measurements_.size(); }

  private:
    struct Subframe {
        std::string name;
        std::vector<int> words;
        int depth;
        [[nodiscard]] int positions() const { return static_cast<int>(words.size()) * depth; }
    };

    int below(int count) {
        return count <= 1 ? 0 : std::uniform_int_distribution<int>(0, count - 1)(random_);
    }
    bool oneIn(int count) { return below(count) == 0; }
    template <typename T>
    const T& oneOf(const std::vector<T>& from) {
        return from[static_cast<std::size_t>(below(static_cast<int>(from.size())))];
    }
    static std::string text(int number) { return std::to_string(number); }
    std::string bits(int length) {
        std::string mask(static_cast<std::size_t>(length), '0');
        std::generate(mask.begin(), mask.end(), [this] { return oneIn(2) ? '1' : '0'; });
        mask[static_cast<std::size_t>(below(length))] = '1';
        return mask;
    }
    std::string mask(int word) {
        return oneIn(2) ? "FW" : bits(lengths_[static_cast<std::size_t>(word)]);
    }
    int maskBits(int word, const std::string& mask) const {
        return mask == "FW" ? lengths_[static_cast<std::size_t>(word)]
                            : static_cast<int>(std::count(mask.begin(), mask.end(), '1'));
    }

    // --- the frame ------------------------------------------------------------------------

    void add(const std::string& code, const std::string& value) {
        format_.push_back(code + ":" + value);
    }

    void makeFrame() {
        words_ = 40 + below(20);  // enough for all that takes a word of its own
        // From 106-11 on a stream without a counter asks for one.
        frames_ =
            edition_ >= 2011 ? oneOf<int>({2, 4, 8, 16, 60}) : oneOf<int>({1, 2, 4, 8, 16, 60});
        lengths_.assign(static_cast<std::size_t>(words_), 12);
        for (int n = below(4); n > 0; --n) {
            lengths_[static_cast<std::size_t>(1 + below(words_ - 1))] = 8 + below(20);
        }
        free_.resize(static_cast<std::size_t>(words_ - 1));
        std::iota(free_.begin(), free_.end(), 1);
        std::shuffle(free_.begin(), free_.end(), random_);
        const bool other = oneIn(3);
        add("D1", other ? "OTHER" : "NRZ-L");
        add("D2", text(1000 * (1 + below(5000))));
        add("D3", oneOf<std::string>({"E", "U"}));
        add("D4", "N");
        add("D6", "R");
        add("D8", "N/A");
        add("TF", "TWO");
        add("F1", "12");
        add("F2", oneOf<std::string>({"M", "L"}));
        add("F3", "NO");
        add("MF\\N", text(frames_));
        add("MF1", text(words_));
        add("MF2", text(24 + std::accumulate(lengths_.begin() + 1, lengths_.end(), 0)));
        add("MF3", "FPT");
        add("MF4", "24");
        add("MF5", "111110101111001100100000");
        add("SYNC1", "2");
        add("SYNC4", "NS");
        int n = 0;
        for (int word = 1; word < words_; ++word) {
            if (lengths_[static_cast<std::size_t>(word)] != 12) {
                add("MFW1-" + text(++n), text(word));
                add("MFW2-" + text(n), text(lengths_[static_cast<std::size_t>(word)]));
            }
        }
        add("COM", other ? "[KAVU: D1=own-code]a comment" : "a comment");
        makeCounters();
    }

    int takeWord() {
        const int word = free_.back();
        free_.pop_back();
        return word;
    }

    void makeCounters() {
        const int counters = frames_ == 1 ? 0 : 1 + below(2);
        add("ISF\\N", text(counters));
        for (int n = 1; n <= counters; ++n) {
            const auto at = "-" + text(n);
            const int first = 1 + below(3);
            add("ISF1" + at, "SFID" + text(n));
            add("ISF2" + at, oneOf<std::string>({"ID", "OT"}));
            counters_.push_back(takeWord());
            add("IDC1" + at, text(counters_.back()));
            add("IDC2" + at, "12");
            add("IDC3" + at, text(1 + below(4)));
            add("IDC4" + at, "8");
            add("IDC5" + at, "M");
            add("IDC6" + at, text(first));
            add("IDC7" + at, "1");
            add("IDC8" + at, text(first + frames_ - 1));
            add("IDC9" + at, text(frames_));
            add("IDC10" + at, "INC");
            if (edition_ < 2011) {
                makeSubframes(n);
            }
        }
    }

    void makeSubframes(int n) {
        const int count = below(4);
        add("SF\\N-" + text(n), text(count));
        for (int m = 1; m <= count; ++m) {
            const auto at = "-" + text(n) + "-" + text(m);
            Subframe subframe{"SUB " + text(n) + "." + text(m), {}, frames_};
            if (frames_ % 4 == 0 && oneIn(3)) {
                subframe.depth = frames_ / 2;
            }
            const int kind = below(3);
            add("SF1" + at, subframe.name);
            if (kind == 2) {
                makeEveryLocation(at, subframe);
            } else if (kind == 1 && makeInterval(at, subframe)) {
            } else {
                subframe.words = {takeWord()};
                add("SF2" + at, "NO");
                add("SF4" + at + "-1", text(subframe.words[0]));
            }
            add("SF6" + at, text(subframe.depth));
            subframes_.push_back(subframe);
        }
    }

    void makeEveryLocation(const std::string& at, Subframe& subframe) {
        subframe.words = {takeWord(), takeWord()};
        std::sort(subframe.words.begin(), subframe.words.end());
        add("SF2" + at, "2");
        add("SF3" + at, "EL");
        add("SF4" + at + "-1", text(subframe.words[0]));
        add("SF4" + at + "-2", text(subframe.words[1]));
    }

    bool isFree(int word) const {
        return std::find(free_.begin(), free_.end(), word) != free_.end();
    }

    bool makeInterval(const std::string& at, Subframe& subframe) {
        const int first = free_.back();
        const int interval = 1 + below(5);
        if (!isFree(first + interval) || !isFree(first + 2 * interval)) {
            return false;
        }
        for (int i = 0; i < 3; ++i) {
            subframe.words.push_back(first + i * interval);
            std::erase(free_, subframe.words.back());
        }
        add("SF2" + at, "3");
        add("SF3" + at, "FI");
        add("SF4" + at + "-1", text(first));
        add("SF5" + at, text(interval));
        return true;
    }

    void makeAsyncFormats() {
        const int count = below(3);
        add("AEF\\N", text(count));
        for (int n = 1; n <= count; ++n) {
            const auto at = "-" + text(n);
            add("AEF\\DLN" + at, "EMBEDDED " + text(n));
            const int locations = 1 + below(2);
            add("AEF1" + at, locations == 1 ? "NO" : text(locations));
            if (locations > 1) {
                add("AEF2" + at, "EL");
            }
            for (int k = 1; k <= locations; ++k) {
                const int word = takeWord();
                const auto place = at + "-" + text(k);
                const auto slot = bits(lengths_[static_cast<std::size_t>(word)]);
                add("AEF3" + place, text(word));
                add("AEF5" + place, text(static_cast<int>(slot.size())));
                add("AEF6" + place, slot);
                if (edition_ >= 2011) {
                    add("AEF7" + place, oneIn(2) ? "NO" : "1");
                    if (format_.back().ends_with(":1")) {
                        add("AEF8" + place + "-1", "1");
                        add("AEF9" + place + "-1", "2");
                        add("AEF10" + place + "-1", text(frames_));
                    }
                }
            }
        }
        if (oneIn(3)) {
            add("ADM\\N", "1");
            add("ADM\\DMN-1", "MERGED");
            add("ADM\\MP-1", "NO");
            add("ADM1-1", "NO");
            add("ADM3-1-1", text(takeWord()));
            add("ADM5-1", "0");
            add("ADM6-1", "1");
            add("ADM7-1", "NO");
        }
        minor_ = free_;
        std::sort(minor_.begin(), minor_.end());
    }

    // --- measurements ---------------------------------------------------------------------

    Commands head(const std::string& type) {
        Commands commands = {"MN@:" + name_, "MN1@:" + oneOf<std::string>({"DE", "EV", "OD"}),
                             "MN2@:D", "MN3@:" + oneOf<std::string>({"M", "L", "D"}),
                             "LT@:" + type};
        if (edition_ == 2009 && oneIn(3)) {
            commands.push_back("MFOT@:F");
        }
        return commands;
    }

    Commands measurement() {
        const bool wordFrames = edition_ >= 2004;
        if (edition_ >= 2011 || (wordFrames && oneIn(3))) {
            return wordFrame();
        }
        switch (below(subframes_.empty() ? 4 : 9)) {
            case 0:
                return minorWord();
            case 1:
                return minorSupercom(oneIn(2));
            case 2:
                return minorFragments(oneIn(2));
            case 3:
                return counterWord();
            case 4:
            case 5:
                return subframeWord();
            case 6:
                return subframeSupercom(oneIn(2));
            case 7:
                return subframeFragments();
            default:
                return subframeIntervalFragments();
        }
    }

    Commands minorWord() {
        const int word = oneOf(minor_);
        return head("MF") + Commands{"MF@:" + text(word), "MFM@:" + mask(word)};
    }
    Commands counterWord() {
        const int word = counters_.empty() ? oneOf(minor_) : oneOf(counters_);
        return head("MF") + Commands{"MF@:" + text(word)};
    }

    /// First word, interval and count such that all words are plain ones.
    bool interval(int& first, int& step, int& count) {
        for (int tries = 0; tries < 20; ++tries) {
            first = oneOf(minor_);
            step = 1 + below(6);
            count = 0;
            while (std::find(minor_.begin(), minor_.end(), first + count * step) != minor_.end()) {
                ++count;
            }
            if (count >= 2) {
                return true;
            }
        }
        return false;
    }
    std::vector<int> someMinorWords() {
        auto words = minor_;
        std::shuffle(words.begin(), words.end(), random_);
        words.resize(std::min<std::size_t>(words.size(), static_cast<std::size_t>(2 + below(3))));
        return words;
    }

    Commands minorSupercom(bool every) {
        int first = 0;
        int step = 0;
        int count = 0;
        if (every) {
            const auto words = someMinorWords();
            auto commands = head("MFSC") +
                            Commands{"MFS\\N@:" + text(static_cast<int>(words.size())), "MFS1@:E"};
            int k = 0;
            for (const int word : words) {
                ++k;
                commands.push_back("MFSW@-" + text(k) + ":" + text(word));
                commands.push_back("MFSM@-" + text(k) + ":" + mask(word));
            }
            return commands;
        }
        if (!interval(first, step, count)) {
            return minorWord();
        }
        return head("MFSC") + Commands{"MFS\\N@:" + text(count), "MFS1@:I", "MFS2@:" + text(first),
                                       "MFS3@:FW", "MFS4@:" + text(step)};
    }

    Commands minorFragments(bool every) {
        int first = 0;
        int step = 0;
        int count = 0;
        int total = 0;
        if (every) {
            Commands rest;
            auto words = someMinorWords();
            std::vector<int> numbers(words.size());
            std::iota(numbers.begin(), numbers.end(), 1);
            std::shuffle(numbers.begin(), numbers.end(), random_);
            for (std::size_t i = 0; i < words.size(); ++i) {
                const auto at = "@-" + text(static_cast<int>(i) + 1);
                const auto part = mask(words[i]);
                total += maskBits(words[i], part);
                rest = rest + Commands{"FMF6" + at + ":" + text(words[i]), "FMF7" + at + ":" + part,
                                       "FMF8" + at + ":" + oneOf<std::string>({"M", "L"}),
                                       "FMF9" + at + ":" + text(numbers[i])};
            }
            return head("MFFR") +
                   Commands{"FMF\\N@:" + text(static_cast<int>(words.size())),
                            "FMF1@:" + text(total), "FMF2@:E"} +
                   rest;
        }
        if (!interval(first, step, count)) {
            return minorWord();
        }
        for (int i = 0; i < count; ++i) {
            total += lengths_[static_cast<std::size_t>(first + i * step)];
        }
        return head("MFFR") + Commands{"FMF\\N@:" + text(count),
                                       "FMF1@:" + text(total),
                                       "FMF2@:I",
                                       "FMF3@:" + text(first),
                                       "FMF4@:FW",
                                       "FMF5@:" + text(step)};
    }

    Commands subframeWord() {
        const auto& subframe = oneOf(subframes_);
        return head("SF") + Commands{"SF1@:" + subframe.name,
                                     "SF2@:" + text(1 + below(subframe.positions())), "SFM@:FW"};
    }

    Commands subframeSupercom(bool every) {
        const auto& subframe = oneOf(subframes_);
        const int positions = subframe.positions();
        // In interval form the first place of the frame must be the first position as well,
        // which only a subframe of one word makes sure of.
        if (!every && subframe.words.size() == 1) {
            const int step = 1 + below(3);
            const int first = 1 + below(positions);
            const int count = 1 + (positions - first) / step;
            return head("SFSC") + Commands{"SFS1@:" + subframe.name,
                                           "SFS\\N@:" + text(count),
                                           "SFS2@:I",
                                           "SFS3@:" + text(first),
                                           "SFS4@:FW",
                                           "SFS5@:" + text(step)};
        }
        std::vector<int> all(static_cast<std::size_t>(positions));
        std::iota(all.begin(), all.end(), 1);
        std::shuffle(all.begin(), all.end(), random_);
        all.resize(std::min<std::size_t>(all.size(), static_cast<std::size_t>(2 + below(4))));
        auto commands =
            head("SFSC") + Commands{"SFS1@:" + subframe.name,
                                    "SFS\\N@:" + text(static_cast<int>(all.size())), "SFS2@:E"};
        int k = 0;
        for (const int position : all) {
            ++k;
            commands.push_back("SFS6@-" + text(k) + ":" + text(position));
            commands.push_back("SFS7@-" + text(k) + ":" + (oneIn(2) ? "FW" : bits(8)));
        }
        return commands;
    }

    /// One fragment number for each word of a subframe, in some of its frames.
    Commands subframeFragments() {
        const auto& subframe = oneOf(subframes_);
        const auto count = static_cast<int>(subframe.words.size());
        auto commands =
            head("SFFR") + Commands{"FSF\\N@:" + text(count), "FSF1@:" + text(12 * count),
                                    "FSF2\\N@:1", "FSF3@-1:" + subframe.name, "FSF4@-1:E"};
        int j = 0;
        for (int fn = 1 + below(2); fn <= subframe.depth; fn += 1 + below(4)) {
            for (int number = 1; number <= count; ++number) {
                const auto at = "@-1-" + text(++j);
                commands = commands + Commands{"FSF8" + at + ":" + text((fn - 1) * count + number),
                                               "FSF9" + at + ":FW", "FSF10" + at + ":M",
                                               "FSF11" + at + ":" + text(number)};
            }
        }
        return commands;
    }

    Commands subframeIntervalFragments() {
        for (const auto& subframe : subframes_) {
            if (subframe.words.size() != 1 || subframe.depth > 9) {
                continue;
            }
            lost_.insert(name_);
            const int bits = lengths_[static_cast<std::size_t>(subframe.words[0])] * subframe.depth;
            return head("SFFR") + Commands{"FSF\\N@:" + text(subframe.depth),
                                           "FSF1@:" + text(bits),
                                           "FSF2\\N@:1",
                                           "FSF3@-1:" + subframe.name,
                                           "FSF4@-1:I",
                                           "FSF5@-1:1",
                                           "FSF6@-1:FW",
                                           "FSF7@-1:1"};
        }
        return subframeWord();
    }

    // --- word/frame -----------------------------------------------------------------------

    struct Range {
        int word = 0;
        int wordInterval = 0;
        int endWord = 0;
        int frame = 1;
        int frameInterval = 1;
        int endFrame = 1;
    };

    /// The fragments of a location go together, so a subframe that is less deep than the major
    /// frame is for a location of one fragment only.
    Range range(bool single) {
        Range r;
        r.word = r.endWord = oneOf(minor_);
        r.endFrame = frames_;
        const bool ends = edition_ >= 2009;
        if (edition_ >= 2011 && frames_ > 1 && oneIn(2)) {
            r.frame = 1 + below(frames_);
            r.frameInterval = below(3);
            r.endFrame = r.frameInterval == 0 ? r.frame : r.frame + below(frames_ - r.frame + 1);
        } else if (edition_ < 2011 && !subframes_.empty() && oneIn(2)) {
            const auto& subframe = oneOf(subframes_);
            if (subframe.words.size() == 1 && (single || subframe.depth == frames_)) {
                r.word = r.endWord = subframe.words[0];
                r.frame = r.endFrame = 1 + below(subframe.depth);
                r.frameInterval = 0;
                if (ends && oneIn(2)) {
                    r.frameInterval = 1 + below(3);
                    r.endFrame = r.frame + below(subframe.depth - r.frame + 1);
                }
            }
        } else if (ends && oneIn(2)) {
            int count = 0;
            if (interval(r.word, r.wordInterval, count)) {
                r.endWord = r.word + (count - 1) * r.wordInterval;
            } else {
                r.wordInterval = 0;
                r.word = r.endWord = oneOf(minor_);
            }
        }
        return r;
    }

    Commands fragment(int k, int f, int count) {
        const auto r = range(count == 1);
        const auto at = "@-" + text(k) + "-" + text(f) + ":";
        Commands commands = {"WP" + at + text(r.word), "WI" + at + text(r.wordInterval),
                             "FP" + at + text(r.frame), "FI" + at + text(r.frameInterval)};
        if (edition_ >= 2009) {
            commands.push_back("EWP" + at + text(r.endWord));
            commands.push_back("EFP" + at + text(r.endFrame));
        }
        const auto part = mask(r.word);
        length_ += maskBits(r.word, part);
        return commands + Commands{"WFM" + at + part,
                                   "WFT" + at + oneOf<std::string>({"M", "L", "D"}),
                                   "WFP" + at + text(f)};
    }

    Commands wordFrame() {
        const int locations = 1 + below(3);
        auto commands = head("WDFR");
        if (edition_ >= 2011 && counters_.size() > 1) {
            commands.push_back("IDCN@:SFID" + text(1 + below(2)));
        }
        commands.push_back("MML\\N@:" + text(locations));
        for (int k = 1; k <= locations; ++k) {
            const int fragments = oneIn(2) ? 1 : 2 + below(2);
            commands.push_back("MNF\\N@-" + text(k) + ":" + text(fragments));
            length_ = 0;
            Commands rest;
            for (int f = 1; f <= fragments; ++f) {
                rest = rest + fragment(k, f, fragments);
            }
            if (fragments > 1) {
                commands.push_back("MWL@-" + text(k) + ":" + text(length_));
            }
            commands = commands + rest;
        }
        return commands;
    }

    std::mt19937 random_;
    int edition_;
    int words_ = 0;
    int frames_ = 0;
    std::vector<int> lengths_;
    std::vector<int> free_;
    std::vector<int> minor_;  ///< words for measurements of every minor frame
    std::vector<int> counters_;
    std::vector<Subframe> subframes_;
    Commands format_;
    std::vector<Commands> measurements_;
    std::set<std::string> lost_;
    std::string name_;
    int length_ = 0;
};

}  // namespace kavu::test
