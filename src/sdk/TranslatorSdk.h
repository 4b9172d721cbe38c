// Read access to one TMATS file without the document of the editor: a translator, the XML writer
// or a script opens a session on a path, asks for groups, streams and measurements, and closes it.
//
// A session splits the file into working files in a folder of its own, whose names begin with the
// number of the session. It never changes the file. Failures do not end it: they are texts in
// `errors`, which the caller shows.
#pragma once

#include "conversion/EuEvaluation.h"
#include "core/files/Environment.h"
#include "core/text/Clock.h"
#include "groups/DataSources.h"
#include "sdk/SdkGroup.h"
#include "sdk/SdkMeasurement.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace kavu {

class PcmFormat;
class TmatsReader;
class UserInterface;
struct SdkParts;
struct SdkRow;

/// Where a measurement of a bus is: the numbers of its bus, its message and its word, and which
/// part of the value that is. `sortKey` orders measurements by these, each as "%5.5d".
struct SdkBusInfo {
    int bus = 0;
    int message = 0;
    int word = 0;
    int fragment = 0;
    std::string sortKey;
};

/// A data link of a session.
struct SdkLink {
    std::string name;
    int number = 0;       ///< from 1, by which the session knows the stream
    bool isNamed = true;  ///< an M group names it
    std::string type;     ///< the stored `TF` of its P group; empty without one

    /// The number of its group of a letter of `kLinkLetters`; 0 for none.
    [[nodiscard]] int group(char letter) const;
    static constexpr std::string_view kLinkLetters = "PDBAS";
    std::array<int, 5> groups{};  ///< in that order
};

class TranslatorSdk {
  public:
    /// `instance` is part of the names of all files of the session. The clock and the random source
    /// must outlive it.
    TranslatorSdk(const Environment& environment, const Clock& clock, RandomSource& random,
                  int instance = 1);
    TranslatorSdk(const TranslatorSdk&) = delete;
    TranslatorSdk& operator=(const TranslatorSdk&) = delete;
    /// Closes the session.
    ~TranslatorSdk();

    /// Splits a TMATS file and lists its streams. `progress` may be null; it shows the status texts
    /// and can cancel. False, with a box to `progress` and a text in `errors`, if the file could
    /// not be read, ends within a command or was cancelled: no session is active then. Also false
    /// if a session is active, which stays as it is.
    bool open(const std::string& path, UserInterface* progress);
    /// Deletes the files of the session and frees all. The errors stay until the next open.
    void close();
    [[nodiscard]] bool isActive() const { return isActive_; }
    [[nodiscard]] const std::string& path() const { return path_; }

    /// The edition as a year; 2011 when the file states none.
    [[nodiscard]] int version() const;

    /// The data sources of the G group, by their row; a row without a name is among them.
    [[nodiscard]] const std::vector<DataSource>& sources() const { return sources_; }
    /// The links that M groups name, in the order of these groups, each once; after them those that
    /// only a P, B, A or S group has, in this order of letters.
    [[nodiscard]] const std::vector<SdkLink>& links() const { return links_; }
    [[nodiscard]] int streamCount() const { return static_cast<int>(links_.size()); }
    /// The link of exactly that name, or null.
    [[nodiscard]] const SdkLink* findLink(std::string_view name) const;

    /// Opens a group for reading: one of the letters G, H (whose number is ignored), T, R, M, P, D,
    /// B, S, A, V. Nothing if the file has no such group; an unreadable one is an error besides.
    [[nodiscard]] std::optional<SdkGroup> openGroup(char letter, std::int64_t number = 0);
    /// The first group of the letter that has exactly this name as its `ID` or `DLN`.
    [[nodiscard]] std::optional<SdkGroup> openGroup(char letter, std::string_view name);
    /// The numbers of the groups of a letter, ascending.
    [[nodiscard]] std::vector<int> groupNumbers(char letter) const;

    // --- The measurements of one stream. Indices count from 0, locations, fragments and streams
    // from 1. Each query returns 0, or -1 with the reason in `errors`.

    /// Loads the stream of a number (see `links`): its format, its measurements or those of its
    /// messages, which the queries below then read. What the file has wrong is in `errors`. A
    /// stream that is loaded stays as it is. -1 for a number that is no stream, and for a stream
    /// without a group, or without valid words per minor frame; then no stream is loaded.
    int ParseTmatsPcmFormatInfo(int stream);
    /// The number of the stream that is loaded; 0 for none.
    [[nodiscard]] int loadedStream() const { return stream_; }
    /// The format that is loaded, in which all measurements have word/frame locations where that
    /// is possible; without words for a bus.
    [[nodiscard]] const PcmFormat& format() const;

    [[nodiscard]] unsigned measurementCount() const;
    /// In the order of the file. REQUIRES: index < measurementCount().
    [[nodiscard]] const SdkMeasurement& measurement(unsigned index) const {
        return measurements_[index];
    }
    /// The first measurement of exactly this name, else of one that differs only in case.
    [[nodiscard]] std::optional<unsigned> findMeasurement(std::string_view name) const;

    /// A fragment of a location. Null, with an error in the name of this function, if there is
    /// none.
    const SdkFragment* findFragment(unsigned index, int location, int fragment,
                                    std::string_view function);
    /// Start, interval and end of the words and frames of a fragment of a location.
    int GetPcmMeasurementIntervals(unsigned index, int location, int fragment, SdkRange& word,
                                   SdkRange& frame);
    /// Where a bus measurement is.
    int Get1553MeasurementInfo(unsigned index, int location, int fragment, SdkBusInfo& info);
    /// Copies the text of a mask, with its NUL, into a buffer of so many bytes. "FW" for one that
    /// the file does not state.
    int GetMeasurementBitMask(unsigned index, int location, int fragment, char* buffer,
                              std::size_t size);
    /// 1 if the mask has all bits of the word, else 0.
    int IsMeasurementBitMaskAFullWord(unsigned index, int location, int fragment);
    /// The numbers of the bits of a mask, from 1 at the left.
    int GetMeasurementBitMaskBitLocations(unsigned index, int location, int fragment,
                                          std::vector<int>& bits);
    /// The mask of a fragment as two 32-bit words, "%8.8lX%8.8lX". Only for a measurement that is
    /// fragmented.
    int GetMeasurementFragmentMask(unsigned index, int location, int fragment, std::string& words);
    /// The conversion record C-n of a number.
    int GetMeasurementEUInfoByIndex(std::int64_t conversion, SdkGroup& record);
    /// The polynomial of a conversion record: its coefficients, or those of the curve through its
    /// pair set. -1 for a record of any other type, and for pairs that give no curve.
    int GetMeasurementEUCoefficients(const SdkGroup& record, EuEvaluation& evaluation);

    // The conversion records, counted from 0 in the order of the file.
    [[nodiscard]] std::size_t conversionCount() const;
    // REQUIRES: place < conversionCount().
    [[nodiscard]] std::int64_t conversionNumber(std::size_t place) const;
    [[nodiscard]] const std::string& conversionName(std::size_t place) const;
    /// The first record of the number C-n, or of exactly this measurement name.
    [[nodiscard]] std::optional<std::size_t> findConversion(std::int64_t number) const;
    [[nodiscard]] std::optional<std::size_t> findConversion(const std::string& name) const;
    /// Opens a record as a group of the letter C. REQUIRES: place < conversionCount().
    [[nodiscard]] std::optional<SdkGroup> openConversion(std::size_t place);

    /// From here on every value that is read through a handle has `to` in place of `from`. Pairs
    /// apply in the order in which they were added.
    void addSubstitution(std::string_view from, std::string_view to);
    void clearSubstitutions();
    /// A text as a handle would give it, for names of the lists above.
    [[nodiscard]] std::string substituted(std::string_view text) const;

    /// What went wrong since the last open, in order; texts have their line breaks.
    [[nodiscard]] const std::vector<std::string>& errors() const { return errors_; }
    /// Adds a text to the errors and to the file of them.
    void writeError(std::string text);
    /// The path of the file with these texts, which may not exist. REQUIRES: active.
    [[nodiscard]] std::string errorPath() const;

  private:
    bool loadStream(const SdkLink& link);
    bool loadFormat(const SdkLink& link);
    [[nodiscard]] int editionForStream(const std::vector<SdkRow>& rows) const;
    bool checkWords(const SdkGroup& group);
    void checkSubframes(const SdkGroup& group);
    void checkAsyncFormats(const SdkGroup& group);
    void indexMeasurements();
    [[nodiscard]] std::optional<SdkGroup> readGroup(TmatsReader& reader, char letter,
                                                    std::int64_t number);
    bool read(const std::string& path, UserInterface* progress);
    bool startStore(UserInterface* progress);
    bool split(const std::string& path, UserInterface* progress);
    bool nameFiles();
    bool listStreams(UserInterface* progress);
    bool refuse(UserInterface* progress, const std::string& text, const std::string& title);
    void addLink(std::string name, bool isNamed);
    void reportUnreadable(const IoStatus& status);
    void freeAll();

    int instance_;
    bool isActive_ = false;
    std::string path_;
    std::vector<DataSource> sources_;
    std::vector<SdkLink> links_;
    std::vector<std::pair<std::string, std::string>> substitutions_;
    std::vector<std::string> errors_;
    int stream_ = 0;
    std::vector<SdkMeasurement> measurements_;
    std::unordered_map<std::string, unsigned> measurementNames_;        ///< the first of each
    std::unordered_map<std::string, unsigned> foldedMeasurementNames_;  ///< in lower case
    std::unique_ptr<SdkParts> parts_;
};

}  // namespace kavu
