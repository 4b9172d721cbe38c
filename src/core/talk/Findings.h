// What is wrong with a document, or worth a look, as a list: each finding has its text, its number,
// the place that it is about and what has found it. The messages of a load, its remarks and
// the results of a check all become findings.
#pragma once

#include "core/talk/UserInterface.h"

#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// What a finding is about, as far as its text says. The parts that it does not name are empty.
struct FindingPlace {
    char letter = 0;            ///< of the group
    int group = 0;              ///< its index, 0 for a group without one
    std::string code{};         ///< of the command, with its group: "P-1\MF4"
    std::string stream{};       ///< a data link
    std::string measurement{};  ///< its name
    [[nodiscard]] bool isKnown() const {
        return letter != 0 || !stream.empty() || !measurement.empty();
    }
    [[nodiscard]] bool operator==(const FindingPlace&) const = default;
};

struct Finding {
    int id = 0;           ///< of the message without its sign; 0 for a text without a number
    std::string title{};  ///< of the message
    std::string text{};
    std::string commands{};  ///< that were read last before it
    std::string source{};    ///< what has found it, in words: "File", "Stream 'X'", "Check"
    FindingPlace place{};
};

/// The place that a text names: its first command, and the names in quotes after the words
/// "measurement", "stream", "data link" and "format".
[[nodiscard]] FindingPlace placeIn(std::string_view text);
/// A place in words, the most exact part of it: the command, else the measurement, the stream.
[[nodiscard]] std::string placeText(const FindingPlace& place);

/// The findings of a message log. `logged` are the messages that were reported since the log
/// before, in their order; those that are not in the log are left out, as logs are thrown away
/// unseen. A log of other contents gives one finding for each line that is not blank.
[[nodiscard]] std::vector<Finding> findingsOfLog(const std::vector<LoggedMessage>& logged,
                                                 const std::vector<std::string>& lines,
                                                 const std::string& source);
/// A remark, or another text without a number.
[[nodiscard]] Finding findingOfText(std::string text, std::string source);
/// The lines that a file or a print of findings has: for each its heading, a blank line, its text
/// and another blank line, as the message log has them.
[[nodiscard]] std::vector<std::string> linesOfFindings(const std::vector<Finding>& findings);

}  // namespace kavu
