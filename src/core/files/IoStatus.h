// The outcome of a file operation.
#pragma once

#include <string>
#include <utility>

namespace kavu {

/// Success, or the path and the system's error number of what failed.
class [[nodiscard]] IoStatus {
  public:
    IoStatus() = default;
    IoStatus(std::string path, int code) : path_(std::move(path)), code_(code) {}

    [[nodiscard]] bool ok() const { return code_ == 0; }
    [[nodiscard]] int code() const { return code_; }
    [[nodiscard]] const std::string& path() const { return path_; }
    /// The system's text for the error, such as "No space left on device".
    [[nodiscard]] std::string reason() const;

  private:
    std::string path_;
    int code_ = 0;
};

}  // namespace kavu
