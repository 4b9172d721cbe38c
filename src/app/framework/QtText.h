// The one place where the bytes of the logic become the toolkit's text, and back.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <QString>
#include <QStringList>

namespace kavu {

/// Bytes that are valid UTF-8 as UTF-8, others as Windows-1252.
[[nodiscard]] QString toQString(std::string_view bytes);
/// The text as UTF-8. Half of a surrogate pair becomes a question mark.
[[nodiscard]] std::string toBytes(const QString& text);
[[nodiscard]] QStringList toQStrings(const std::vector<std::string>& texts);

/// A value that a control shows. What was not edited keeps its bytes, whatever they were:
/// the way through the toolkit's text would lose what is no character.
class ShownText {
  public:
    explicit ShownText(std::string_view bytes = {}) : bytes_(bytes), shown_(toQString(bytes)) {}

    [[nodiscard]] const QString& shown() const { return shown_; }
    [[nodiscard]] const std::string& bytes() const { return bytes_; }
    /// The bytes for what the control holds now.
    [[nodiscard]] std::string bytesOf(const QString& now) const {
        return now == shown_ ? bytes_ : toBytes(now);
    }

  private:
    std::string bytes_;
    QString shown_;
};

}  // namespace kavu
