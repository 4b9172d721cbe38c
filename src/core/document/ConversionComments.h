// The comments of a file that are in front of commands of the C group, where the user wants them
// kept. That group is written from records, which know nothing of them; so they are kept next to
// it, by the name of the record and the code of the command, and joined with it by a save.
#pragma once

#include "core/files/IoStatus.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kavu {

class DocumentFiles;
class FileWriter;
class TmatsReader;

/// Gathers them while a file is sorted.
class ConversionComments {
  public:
    /// Takes a command of the group, to know the names of its records.
    void note(std::string_view command);
    /// Takes the comments, each on a line, in front of a command; those after the last command of
    /// the group for an empty one.
    void add(std::string_view command, std::string_view lines);
    [[nodiscard]] bool empty() const { return places_.empty(); }
    /// Writes the file of the document that keeps them; none if there are none.
    [[nodiscard]] IoStatus store(DocumentFiles& files) const;

  private:
    struct Place {
        std::int64_t index;
        std::string code;
        std::string lines;
    };
    std::unordered_map<std::int64_t, std::string> names_;
    std::vector<Place> places_;
    std::int64_t last_ = 0;
};

/// Gives the comments of a record to another name. Does nothing without any.
[[nodiscard]] IoStatus renameConversionComments(DocumentFiles& files, TmatsReader& reader,
                                                std::string_view oldName, std::string_view newName);
/// Copies the written group, with each comment in front of its command. What is left of a record
/// follows it, what is left of all of them the last one.
[[nodiscard]] IoStatus joinConversionComments(const DocumentFiles& files, TmatsReader& reader,
                                              const std::string& group, FileWriter& target);

}  // namespace kavu
