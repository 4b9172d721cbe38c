// The commands that are kept of one P or D group, on their way to the file that was written.
#pragma once

#include "core/command/CommandPath.h"
#include "core/files/IoStatus.h"
#include "pcm/model/StreamKept.h"
#include "pcm/read/RowRules.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kavu {

class PcmFormat;

class KeptGroup {
  public:
    /// Both must outlive the object.
    KeptGroup(const PcmFormat& format, const RowRules& rules) : format_(format), rules_(rules) {}

    /// Adds a command, whose numbers are those in the file from now on.
    void add(const KeptCommand& command, const RowNumbers& numbers);
    /// Adds one that no row of the file can have.
    void addText(std::string text) { lost_.push_back(std::move(text)); }
    [[nodiscard]] bool empty() const { return commands_.empty() && lost_.empty(); }

    /// Compares the commands with the written file: rows that the model does not have get numbers
    /// after those that were written, and what the file has is no longer lost.
    [[nodiscard]] IoStatus compare(const std::string& path);
    /// What the file has lost, without the heads.
    [[nodiscard]] const std::vector<std::string>& lost() const { return lost_; }
    /// What the file states now in other words.
    [[nodiscard]] const std::vector<std::string>& replaced() const { return replaced_; }

  private:
    struct Entry {
        std::string stem;
        RowNumbers at;
        std::string value;  ///< with the `:` and the `;`
        int missingRow = -1;
        bool isRepeat = false;
        std::string list{};  ///< of the missing row
    };
    [[nodiscard]] static std::string codeOf(const Entry& entry);
    [[nodiscard]] std::string listOf(const Entry& entry) const;
    void moveRows(const std::unordered_map<std::string, int>& highest);

    const PcmFormat& format_;
    const RowRules& rules_;
    std::vector<Entry> commands_;
    std::vector<std::string> lost_;
    std::vector<std::string> replaced_;
};

/// A command without its head: its code with other numbers, and its value.
[[nodiscard]] std::string withNumbers(std::string_view text, const RowNumbers& numbers);

}  // namespace kavu
