// How the values of a group are reported that are longer than their fields may be.
#pragma once

namespace kavu {

struct DocumentContext;
class UserInterface;

/// While it lives, values over their limits go to the message log in place of a box for each. At
/// the end the log is shown and gone.
class LengthReport {
  public:
    /// Both must outlive the object.
    LengthReport(const DocumentContext& context, UserInterface* parent);
    LengthReport(const LengthReport&) = delete;
    LengthReport& operator=(const LengthReport&) = delete;
    ~LengthReport();

    [[nodiscard]] bool hasAny() const { return over_ != 0; }

  private:
    const DocumentContext& context_;
    UserInterface* parent_;
    int over_ = 0;
};

}  // namespace kavu
