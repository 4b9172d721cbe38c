// The measurement names of all streams of the document, for the rule that a name may be
// used in one stream only.
#pragma once

#include "core/TmatsDocument.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kavu {

class MeasurementNames {
  public:
    explicit MeasurementNames(DocumentContext& context) : context_(context) {}
    MeasurementNames(const MeasurementNames&) = delete;
    MeasurementNames& operator=(const MeasurementNames&) = delete;

    /// Gathers the names of all data links if the check is on. A name in more than one
    /// stream brings message 456 once, and turns the check off for this document. False if
    /// it was cancelled; then no name is known.
    bool checkForDuplicates(UserInterface* parent);
    /// Turns the check on or off; with `save` in the settings too.
    void setChecking(bool on, bool save);
    [[nodiscard]] bool checking() const { return checking_; }
    /// A stream other than `stream` (they count from 1) that has the name, or 0.
    [[nodiscard]] int measurementInOtherStream(std::string_view name, int stream) const;
    /// Forgets one name, or all.
    void forget(std::optional<std::string_view> name);
    /// Names that are known.
    [[nodiscard]] std::size_t count() const { return streams_.size(); }

    /// The names of a data link's measurements in file order: those of its D group, else
    /// of its B group, else of its S group. False if it was cancelled or could not be read.
    bool streamMeasurementNames(UserInterface* parent, std::string_view link,
                                std::vector<std::string>& names) const;

  private:
    void add(std::string&& name, int stream, bool& repeated);

    DocumentContext& context_;
    bool checking_ = true;
    /// The first stream of a name; nearly all names have no other.
    std::unordered_map<std::string, int> streams_;
    std::map<std::string, std::vector<int>, std::less<>> furtherStreams_;
};

/// The group files that hold measurements, by link name, read once for many links.
class MeasurementFiles {
  public:
    MeasurementFiles(DocumentContext& context, UserInterface* parent);
    ~MeasurementFiles();
    MeasurementFiles(const MeasurementFiles&) = delete;
    MeasurementFiles& operator=(const MeasurementFiles&) = delete;

    /// Calls `take` with each name of the link's measurements.
    bool forEachName(UserInterface* parent, std::string_view link,
                     const std::function<void(std::string_view name)>& take) const;

  private:
    DocumentContext& context_;
    struct Names;
    std::unique_ptr<Names> names_;
};

}  // namespace kavu
