// Loading a stream from its group files, and the state of one load. All messages of a
// load are gathered in the message log and shown when it ends.
#pragma once

#include "core/TmatsDocument.h"
#include "core/document/CommandIndex.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "pcm/PcmFormat.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class ConversionStore;

/// The answer to the question for an ID counter (messages 357 and 358, "no ID Counter has
/// been defined"): it is asked once in a load, and a No holds for the rest of it.
struct CounterQuestion {
    bool refused = false;
};

/// The state of one read of a P or D group. Edits use it without fields for the steps that
/// they share with a load, which then report and place in the same way. A null parent
/// reports nothing and answers every question as No.
class PcmLoad {
  public:
    PcmLoad(PcmFormat& loaded, UserInterface* window) : format(loaded), parent(window) {}
    PcmLoad(const PcmLoad&) = delete;
    PcmLoad& operator=(const PcmLoad&) = delete;

    PcmFormat& format;
    UserInterface* parent;
    CommandIndex* fields = nullptr;  ///< of the group that is being read
    std::string prefix;              ///< "P-1\" or "D-1\"
    int result = 0;                  ///< 0 clean, 1 corrected
    bool abort = false;              ///< a fatal error or a cancel
    CounterQuestion counterQuestion;
    bool isNew = false;            ///< there was no P group: the format comes from the settings
    bool leavesOut = false;        ///< something of the file is not in the format
    bool countsSubframes = false;  ///< a counter of the P group has an `SF\N` above 0

    [[nodiscard]] int edition() const { return format.edition(); }
    void corrected() { result = 1; }

    /// Takes the messages in place of the log: an edit shows them immediately.
    std::function<void(int id, MessageTitle titleId, const std::string& text)> report;
    /// If false, a check makes no hidden subframe.
    bool mayMakeSubframes = true;

    /// Appends a message to the log. Endless reports are cut off: after `kMostMessages`
    /// one last text says so.
    template <typename... Args>
    void log(MessageFor<Args...> id, MessageTitle titleId, const Args&... args) {
        if (report) {
            report(id.id(), titleId, formatMessage(id, args...));
        } else if (mayLog()) {
            format.context().messages.log(parent, id, titleId, args...);
        }
    }
    /// Logs, without a number, what the read leaves out. The stream is not clean then, but the
    /// format is what it was read as: it has not changed.
    void logLeftOut(MessageTitle titleId, const std::string& text);
    /// Appends the commands that were read last to a message.
    void logLastCommands(std::string_view commands);
    static constexpr int kMostMessages = 10'000;
    /// True once no further message is taken: a loop need not make their texts any more.
    [[nodiscard]] bool logIsFull() const { return parent == nullptr || messages_ > kMostMessages; }

    /// A numbered yes-no question in a box; No without a parent.
    template <typename... Args>
    [[nodiscard]] bool ask(MessageFor<Args...> id, MessageTitle titleId, const Args&... args) {
        return format.context().messages.show(parent, id, titleId, kYesNoBox, args...) ==
               Button::Yes;
    }

    /// The value of a field, which lives as long as `fields`.
    [[nodiscard]] std::optional<std::string_view> text(std::string_view field, int limit);
    /// The value, or nothing; a negative number counts as 0.
    [[nodiscard]] std::optional<int> number(std::string_view field);
    /// The value cut to its limit, as a number; a negative one counts as 0.
    [[nodiscard]] std::optional<int> limitedNumber(std::string_view field, int limit);
    /// How much has been read of `fields`, for `leaveOut`.
    [[nodiscard]] std::size_t readSoFar() const { return read_.size(); }
    /// What has been read since then is not in the model: a save keeps it as it is.
    void leaveOut(std::size_t from);
    /// Lets the interface paint; true if the user has cancelled.
    [[nodiscard]] bool cancelled();
    /// A status text, at most once a second.
    template <typename... Args>
    void status(PrintfFormat<Args...> text, const Args&... args) {
        if (parent != nullptr && statusDue()) {
            parent->setStatusText(formatPrintf(text, args...));
        }
    }
    void progress(double percent) { setProgressBar(parent, percent); }

  private:
    [[nodiscard]] bool mayLog();
    [[nodiscard]] bool statusDue();
    [[nodiscard]] std::optional<CommandIndex::Found> take(std::string_view field);

    std::vector<std::size_t> read_;  ///< the places in `fields`
    int messages_ = 0;
    std::size_t commandBytes_ = 0;
};

/// What a load needs of other subsystems. A step that is not installed counts as done.
struct PcmSteps {
    /// Brings the bus definitions of the stream into the working store; false fails the load.
    std::function<bool(UserInterface*, PcmFormat&)> loadBusDefinitions;
    /// The same for packet telemetry.
    std::function<bool(UserInterface*, PcmFormat&)> loadPacketDefinitions;
    /// Lets the user choose a stream; empty if none was chosen.
    std::function<std::string(UserInterface*)> selectStream;
    /// Lets the user choose how new measurements state their places: true for word/frame
    /// locations, nothing after a Cancel. If not installed, a choice of two is shown.
    std::function<std::optional<bool>(UserInterface&, bool wordFrame)> chooseDefinitionMode;
    /// A name that no group bears gets a new format; without this there is no such stream.
    bool makesNewFormats = false;
    /// The conversion records whose sample rates follow the stream; may be null.
    ConversionStore* conversions = nullptr;
};

/// What a load has found.
struct PcmLoadReport {
    int result = 0;  ///< 0 clean, 1 corrected, -1 failed
};

/// Loads the stream of a link name, or, without a name, the one that the user chooses. A
/// stream that is in memory already stays as it is. False if there is no such stream or the
/// load has failed; then no format is in memory, unless there was no such stream.
bool loadPcmFormat(PcmFormat& format, UserInterface* parent, const PcmSteps& steps,
                   std::optional<std::string_view> streamName, PcmLoadReport* report = nullptr);

/// The P or D group whose `DLN` equals the name exactly, the lowest index of those; 0 if
/// there is none.
[[nodiscard]] int findStreamGroup(PcmFormat& format, UserInterface* parent, char letter,
                                  std::string_view streamName);
/// Gives the format a D group: that of its stream, else the first free index, whose working
/// files are cleared of what a former stream has left.
void giveMeasurementGroup(PcmFormat& format, UserInterface* parent);

/// Reads the P group `format.pGroup`, or makes a new format if there is none: 0, 1 with
/// corrections, -1 on failure or cancel.
int readPcmGroup(PcmLoad& load);
/// Makes a new format from the settings; false if its words could not be allocated.
bool makeNewFormat(PcmLoad& load);
/// Reads the D group of the stream, after deciding whether measurements get hidden
/// subframes as they need them: 0, 1 with corrections, -1 on failure or cancel.
int readMeasurements(PcmLoad& load);

// Working files of the loaded stream.
inline constexpr std::string_view kMeasurementComment = "[kavu]TmpPCMMEASCOM";
inline constexpr std::string_view kFrameFilterFile = "[kavu]TmpPCMFMT.MFF";
inline constexpr std::string_view kFormatSwitchFile = "[kavu]TmpPCMFMT.FFI";
inline constexpr std::string_view kAltTagFile = "[kavu]TmpPCMFMT.ALTTAG";
/// Of a D group, by its index.
inline constexpr std::string_view kSmfFormat = "[kavu]DSMF0000.D%2.2d";
inline constexpr std::string_view kTagFormat = "[kavu]DTAG0000.D%2.2d";
inline constexpr std::string_view kDataChunkFormat = "[kavu]D%8.8ld.D%2.2d";

}  // namespace kavu
