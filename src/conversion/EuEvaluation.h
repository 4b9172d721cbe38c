// Converts telemetry values into engineering units as a conversion record defines.
#pragma once

#include "core/files/ProfileFile.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// The polynomial of a record, in ascending or descending powers of the telemetry value.
class EuEvaluation {
  public:
    /// From a record of type "PRS" with "PS1" at "Y" (the fit of order "PS2" over its pairs),
    /// "COE", or "NPC" from edition 2007 on. For any other `why` gives the reason.
    [[nodiscard]] static std::optional<EuEvaluation> make(const ProfileFile& file,
                                                          std::string_view name, int edition,
                                                          std::string& why);

    /// Nothing if there is no finite value, as for a negative power of 0.
    [[nodiscard]] std::optional<double> value(double telemetry) const;

    [[nodiscard]] const std::string& type() const { return type_; }
    [[nodiscard]] const std::vector<double>& coefficients() const { return c_; }
    [[nodiscard]] bool negativePowers() const { return negative_; }

  private:
    std::string type_;
    std::vector<double> c_;
    bool negative_ = false;
};

}  // namespace kavu
