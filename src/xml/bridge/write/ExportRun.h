// What all parts of an export of TMATS XML share while it runs.
#pragma once

#include "sdk/TranslatorSdk.h"
#include "xml/bridge/write/GroupRows.h"
#include "xml/bridge/write/TagWriter.h"
#include "xml/bridge/write/XmlExportReport.h"
#include "xml/bridge/write/XmlPlan.h"
#include "xml/bridge/write/XmlValues.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace kavu {

class UserInterface;

struct ExportRun {
    ExportRun(TranslatorSdk& theSession, UserInterface* theParent,
              const XmlExportOptions& theOptions, const TagWriter::Sink& sink,
              XmlExportReport& theReport)
        : session(theSession),
          parent(theParent),
          options(theOptions),
          report(theReport),
          tags(sink),
          values(theOptions.dialect) {}

    /// A status text that the report has too.
    void status(std::string text);
    /// A status text with a running number.
    void progress(const std::string& text, std::size_t number, std::size_t count);
    /// True once the user has cancelled.
    [[nodiscard]] bool isCancelled();
    /// A text of the session: a warning if it begins with that word, else an error.
    void say(std::string text);
    /// A line that is a warning whatever it begins with.
    void sayAsWarning(std::string text);
    /// Takes over what the session has said of itself.
    void collect();
    /// A command that the document does not hold.
    void lose(std::string_view code) { report.losses.add(code); }
    /// All commands of a group that were not taken, but for its link.
    void loseRest(const GroupRows& rows, std::string_view link);
    /// Closes the element of a group or of something else that has a name. An empty one leaves no
    /// trace, and with it goes `nameCode`, the command of the name, if there is one; the schema's
    /// dialect keeps it where the schema does.
    void closeNamed(std::string_view nameCode, bool mayBeEmpty = true);
    void markSeen(char letter, std::int64_t number) { seen_.insert({letter, number}); }
    /// Says what the schema has no place for.
    void sayLosses();
    /// All commands of the groups that nothing has led to.
    void loseOtherGroups();

    [[nodiscard]] bool isSchema() const { return options.dialect == XmlDialect::Schema; }
    /// A value of an attribute, escaped.
    [[nodiscard]] std::string attribute(std::string_view name, std::string_view original) const;
    /// The value of a command as an attribute; nothing, which is a loss, if it cannot be one.
    [[nodiscard]] std::string attribute(std::string_view name, const Field& field,
                                        std::string_view value, const std::string& code);
    [[nodiscard]] const XmlPlan& plan(char letter, std::span<const PlanStep> steps,
                                      std::string_view within = {});

    TranslatorSdk& session;
    UserInterface* parent;
    const XmlExportOptions& options;
    XmlExportReport& report;
    TagWriter tags;
    XmlValues values;
    bool isSilent = false;  ///< nothing goes to the errors of the session

  private:
    void sort(std::string text);

    std::set<std::pair<char, std::int64_t>> seen_;  ///< groups that were written
    std::size_t collected_ = 0;                     ///< texts of the session that the report has
    std::map<const PlanStep*, XmlPlan> plans_;
    bool isCancelled_ = false;
};

/// A part of a group of which, in the schema's dialect, only what the schema allows is written: all
/// that is written while it lives.
class CheckedPart {
  public:
    /// `path` is that of the element that is open, in the element of the group. The run must
    /// outlive the part.
    CheckedPart(ExportRun& run, char letter, std::string path = {}, std::string_view without = {})
        : run_(run), letter_(letter), path_(std::move(path)), without_(without) {
        if (run_.isSchema()) {
            run_.tags.beginChecked();
        }
    }
    CheckedPart(const CheckedPart&) = delete;
    CheckedPart& operator=(const CheckedPart&) = delete;
    ~CheckedPart() {
        if (run_.isSchema()) {
            run_.tags.endChecked(SchemaTree(
                letter_, std::move(path_), [this](const std::string& code) { run_.lose(code); },
                without_));
        }
    }

  private:
    ExportRun& run_;
    char letter_;
    std::string path_;
    std::string_view without_;
};

}  // namespace kavu
