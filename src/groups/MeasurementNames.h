// The measurement names of all streams of a document, and in which streams each is used:
// all streams that use a name share its conversion record.
#pragma once

#include "core/document/DocumentChange.h"
#include "groups/GroupScan.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace kavu {

/// The files that hold the measurements of data links. Each is opened once for the name
/// in it, and read on request.
class StreamFiles {
  public:
    StreamFiles(DocumentContext& context, UserInterface* parent);
    /// False if a file could not be read during that search, which is reported.
    [[nodiscard]] bool complete() const;

    /// Calls `take` with the name of every measurement of a link: from its D file, else its B
    /// file, else its S file. False if the file could not be read (reported) or the user has
    /// cancelled.
    bool readNames(UserInterface* parent, std::string_view link,
                   const std::function<void(std::string_view)>& take) const;

  private:
    DocumentContext& context_;
    GroupNames measurements_;
    GroupNames buses_;
    GroupNames messages_;
};

/// It follows the document: an undo gathers the names again, a close forgets them.
class MeasurementNames : private DocumentListener {
  public:
    /// The setting `CheckForDupMeasurements` says whether names are checked at first. The context
    /// must outlive the object.
    explicit MeasurementNames(DocumentContext& context);
    MeasurementNames(const MeasurementNames&) = delete;
    MeasurementNames& operator=(const MeasurementNames&) = delete;
    ~MeasurementNames() override;

    /// Gathers the names of all data links again; streams are counted from 1 in the order
    /// of `gatherDataLinks`. With checking on, a name in more than one stream shows message
    /// 456 ("in different streams"), and checking is turned off for this document. False if
    /// the user has cancelled or a file could not be read; then no name is known.
    bool checkForDuplicates(UserInterface* parent);
    /// With `save` the setting is written, too.
    void setChecking(bool on, bool save);
    [[nodiscard]] bool checking() const { return checking_; }

    /// True if a stream other than this one has the name, whether checking is on or not.
    [[nodiscard]] bool measurementInOtherStream(std::string_view name, int stream) const;
    /// The number of the first such stream.
    [[nodiscard]] std::optional<int> otherStream(std::string_view name, int stream) const;
    /// The spelling of a name that is known: as asked, else one that differs only in case; nothing
    /// if no stream has it.
    [[nodiscard]] std::optional<std::string> spelled(std::string_view name) const;
    /// Forgets one name, or all of them.
    void forget(std::optional<std::string_view> name);
    /// The names that were forgotten one by one since they were gathered, the latest one last.
    [[nodiscard]] std::vector<std::string> forgotten(std::size_t from) const;
    [[nodiscard]] std::size_t forgottenCount() const { return forgotten_.size(); }
    /// Restores the names that were forgotten, all but the first `count`.
    void recall(std::size_t count);

    /// The measurement names of one link in the order of its file, an empty list if no file
    /// has the link. False as in `StreamFiles::readNames`.
    bool streamMeasurementNames(UserInterface* parent, std::string_view link,
                                std::vector<std::string>& names) const;
    /// All names that are known, sorted by their bytes.
    [[nodiscard]] std::vector<std::string> names() const;

  private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const {
            return std::hash<std::string_view>()(text);
        }
    };
    /// Nearly every name is in one stream only.
    struct Streams {
        int first = 0;
        std::vector<int> others;
    };
    /// Adds a name; true if it is in more than one stream now.
    bool add(std::string_view name, int stream);
    void documentChanged(const DocumentChange& change) override;

    DocumentContext& context_;
    bool checking_;
    std::unordered_map<std::string, Streams, Hash, std::equal_to<>> streams_;
    std::vector<std::pair<std::string, Streams>> forgotten_;
};

}  // namespace kavu
