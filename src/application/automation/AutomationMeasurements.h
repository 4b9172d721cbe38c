// The measurements of the loaded format, by name or place.
#pragma once

#include <cstdint>
#include <string>

namespace kavu {

class AutomationSession;

struct OccurrencePlace {
    std::int32_t Fwp{};
    std::int32_t Fn{};
};

/// Methods of the automation by their names and arguments there. Every one throws
/// `AutomationError` on failure.
class AutomationMeasurements {
  public:
    explicit AutomationMeasurements(AutomationSession& session) : session_(session) {}

    void CreateMeasurement(std::int64_t hWnd, std::int32_t fwp, std::int32_t fn,
                           const std::string& name, const std::string& bitMask,
                           const std::string& mesXferOrder, const std::string& mesParity,
                           const std::string& mesParityXferOrder, std::int32_t numberOfLocs,
                           std::int32_t interval);
    void DeleteMeasurement(const std::string& name);
    void EditMeasurementByName(std::int64_t hWnd, const std::string& name);
    void EditMeasurementsAt(std::int64_t hWnd, std::int32_t fwp, std::int32_t fn);
    [[nodiscard]] std::int32_t CountMeasurementsAt(std::int32_t fwp, std::int32_t fn);
    [[nodiscard]] std::int32_t CountMeasurementOccurences(const std::string& name);
    [[nodiscard]] std::string GetMeasurementBitMask(const std::string& name);
    void SetMeasurementBitMask(const std::string& name, const std::string& bitMask);
    [[nodiscard]] std::string GetMeasurementName(std::int32_t fwp, std::int32_t fn,
                                                 std::int32_t mesIndex);
    void SetMeasurementName(const std::string& oldName, const std::string& newName);
    [[nodiscard]] OccurrencePlace GetMeasurementOccurence(const std::string& name,
                                                          std::int32_t occurence);
    [[nodiscard]] std::string GetMeasurementParity(const std::string& name);
    void SetMeasurementParity(const std::string& name, const std::string& parity);
    [[nodiscard]] std::string GetMeasurementParityXfer(const std::string& name);
    void SetMeasurementParityXfer(const std::string& name, const std::string& parityXfer);
    [[nodiscard]] std::int32_t GetMeasurementWordLength(const std::string& name);
    void SetMeasurementWordLength(std::int64_t hWnd, const std::string& name, std::int32_t length);
    [[nodiscard]] std::string GetMeasurementXferOrder(const std::string& name);
    void SetMeasurementXferOrder(const std::string& name, const std::string& xfer);

  private:
    AutomationSession& session_;
};

}  // namespace kavu
