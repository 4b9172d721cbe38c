// The open document: what the program knows of it outside its group files.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace kavu {

class Clock;
class DocumentFiles;
class DocumentHistory;
class FileWriter;
class Messages;
class ProfileSettings;
class RandomSource;
class SecondTicker;
class TmatsReader;
class UserInterface;
class WorkingStore;
struct ConversionRuns;

enum class DocumentKind { None = 0, TmatsFile = 2 };

struct TmatsDocument {
    std::string path;  ///< empty for a new document that was never saved
    DocumentKind kind = DocumentKind::None;
    bool open = false;
    bool changed = false;   ///< differs from the file on the disk; `DocumentHistory` knows when
    bool created = false;   ///< made by Create New and not saved since
    bool readOnly = false;  ///< the file on the disk cannot be written
    int version = 2011;     ///< the edition, as a year
    /// The file at the path as it was opened or saved last (`fileStamp`); empty if there was none.
    std::string diskStamp{};
};

/// The passes of higher folders that opening, saving and closing a document run, in the places
/// where it cannot go on without them. A step that is not installed counts as done. Who only
/// follows what has happened is a `DocumentListener`.
struct DocumentSteps {
    /// Gathers the measurement names of all data links. False if it was cancelled.
    std::function<bool(UserInterface*)> gatherMeasurementNames;
    /// Takes what was noted of "DATA1.TMP" while it was written.
    std::function<void(ConversionRuns&&)> noteConversions;
    /// Moves the C commands of "DATA1.TMP" into conversion chunks, for an edition.
    std::function<bool(UserInterface*, int edition)> loadConversions;
    /// Writes the C group to the file that is being built.
    std::function<bool(UserInterface*, FileWriter&)> saveConversions;
    /// Sets the input edition of the group files and returns the target edition; 0 if the
    /// files could not be read, which has been reported.
    std::function<int(UserInterface*, int& inputVersion)> detectVersions;
    /// Rewrites the group files for the target; true if any file changed. Nothing if it
    /// failed, which has been reported, or was cancelled: the load is abandoned.
    std::function<std::optional<bool>(UserInterface*, int inputVersion, int targetVersion)> migrate;
    std::function<bool(UserInterface*)> validateDataLinks;
    std::function<void()> releasePcmFormat;
    /// Loads the file at the document's path again; what was changed here is lost.
    std::function<bool(UserInterface*)> reopenDocument;
    /// Writes the editor that is open to its group files; false stops the save.
    std::function<bool(UserInterface*)> storeOpenEditor;
    /// Creates the stream of a new document on a data source of this name.
    std::function<bool(UserInterface*, const std::string& dataSource)> createStream;
};

/// What every pass over a document works with. The application owns all of it.
struct DocumentContext {
    const Clock& clock;
    SecondTicker& ticker;
    RandomSource& random;
    ProfileSettings& settings;
    WorkingStore& store;
    DocumentFiles& files;  ///< through which every file of the document changes
    const Messages& messages;
    TmatsReader& reader;
    TmatsDocument& document;
    DocumentSteps& steps;
    DocumentHistory& history;  ///< what can be undone, and the listeners to changes
};

}  // namespace kavu
