// The JSON documents of the program. Names and order of the members are a contract with
// scripts: they change only by adding.
#pragma once

#include "cli/ScriptedInterface.h"
#include "core/text/PlaceIndex.h"

#include <cstddef>
#include <string>

#include <nlohmann/json.hpp>

namespace kavu::cli {

using Json = nlohmann::ordered_json;

/// What every command that opens a file reports about it.
struct OpenedFile {
    std::string file;
    bool opened = false;
    bool changed = false;  ///< at the end of the command, before any save clears it
    int version = 0;       ///< the edition, as a year
};

/// The first members in every document of a command that opens a file.
[[nodiscard]] Json fileMembers(const OpenedFile& file, const ScriptedInterface& ui);

/// What was reported, in order.
[[nodiscard]] Json messageMembers(const ScriptedInterface& ui);
/// What was asked, and the replies, in order.
[[nodiscard]] Json questionMembers(const ScriptedInterface& ui);

/// A text of the logic, bytes of any kind, as a JSON string.
[[nodiscard]] Json jsonText(const std::string& bytes);

/// An object with as many members as a file has fields. `Json` itself looks through all members
/// for each one that is set.
class JsonMembers {
  public:
    /// Makes room for so many members.
    void reserve(std::size_t count) { members_.reserve(count); }
    /// Sets a member; one that is there already keeps its place.
    void set(std::string key, Json value);
    /// The object; this one is empty then.
    [[nodiscard]] Json take();

  private:
    Json::object_t members_;
    PlaceIndex places_;
};

/// The document as it is printed, with the line feed at its end.
[[nodiscard]] std::string printed(const Json& document);

}  // namespace kavu::cli
