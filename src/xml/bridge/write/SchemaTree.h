// A part of a document that the schema is to allow: its elements are collected, what the schema has
// no place for is taken out, and the rest is written.
#pragma once

#include "vocabulary/SchemaElements.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavu {

/// Marks the text of a value that is none of the choices of its field.
inline constexpr char kNoChoice = 1;

/// An element that is waiting to be written.
struct SchemaPart {
    std::string tag{};      ///< name and attributes
    std::string comment{};  ///< in front of it
    std::string text{};     ///< escaped; `kNoChoice` is in front of what no choice stands for
    std::string code{};     ///< of the command that the text is from; empty for none
    std::vector<SchemaPart> inside{};
    bool isValue = false;
    bool isKept = false;     ///< is written although it is empty
    bool isChecked = false;  ///< the schema allows it, with all that is in it

    [[nodiscard]] std::string_view name() const;
};

class SchemaTree {
  public:
    /// Called with the code of a command that is not in the document after all.
    using Lose = std::function<void(const std::string& code)>;

    /// `letter` is that of the group whose elements the schema's table has; `path` that of the part
    /// in the group, empty for the group itself.
    /// Elements of the names in `without`, each between two blanks, have no place here.
    SchemaTree(char letter, std::string path, Lose lose, std::string_view without = {})
        : letter_(letter), path_(std::move(path)), lose_(std::move(lose)), without_(without) {}

    /// Takes out of a part what the schema does not allow. False if nothing of it may stay.
    bool check(SchemaPart& part) const;

  private:
    bool checkInside(SchemaPart& part, const std::string& path) const;
    bool checkValue(SchemaPart& part, const std::string& path) const;
    void chooseOne(SchemaPart& part, const std::string& path) const;
    bool addRequired(SchemaPart& part, const std::string& path) const;
    void dropFurther(SchemaPart& part, const std::string& path) const;
    void lose(const SchemaPart& part) const;

    char letter_;
    std::string path_;
    Lose lose_;
    std::string_view without_;
};

}  // namespace kavu
