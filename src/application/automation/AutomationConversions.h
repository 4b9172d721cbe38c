// The conversion to engineering units of one measurement, by name.
#pragma once

#include <cstdint>
#include <string>

namespace kavu {

class AutomationSession;

struct ConversionPair {
    std::int32_t X{};
    double Y{};
};

/// Methods of the automation by their names and arguments there. Every one throws
/// `AutomationError` on failure.
class AutomationConversions {
  public:
    explicit AutomationConversions(AutomationSession& session) : session_(session) {}

    void ShowMeasurementEuDialog(std::int64_t hWnd, const std::string& mesName);
    [[nodiscard]] std::string GetMeasurementEuBinaryFormat(const std::string& mesName);
    void SetMeasurementEuBinaryFormat(const std::string& mesName, const std::string& format);
    [[nodiscard]] std::int32_t GetMeasurementEuCoefficientOrderOfFit(const std::string& mesName);
    [[nodiscard]] double GetMeasurementEuCoefficient(const std::string& mesName, std::int32_t term);
    void SetMeasurementEuCoefficient(const std::string& mesName, std::int32_t term,
                                     double coefficient);
    [[nodiscard]] std::string GetMeasurementEuConversionType(const std::string& mesName);
    void SetMeasurementEuConversionType(const std::string& mesName, const std::string& type);
    [[nodiscard]] std::string GetMeasurementEuDescription(const std::string& mesName);
    void SetMeasurementEuDescription(const std::string& mesName, const std::string& description);
    [[nodiscard]] std::string GetMeasurementEuHiLimit(const std::string& mesName);
    void SetMeasurementEuHiLimit(const std::string& mesName, const std::string& hiLimit);
    [[nodiscard]] std::string GetMeasurementEuHiValue(const std::string& mesName);
    void SetMeasurementEuHiValue(const std::string& mesName, const std::string& hiValue);
    [[nodiscard]] std::string GetMeasurementEuHiWarning(const std::string& mesName);
    void SetMeasurementEuHiWarning(const std::string& mesName, const std::string& hiWarn);
    [[nodiscard]] std::string GetMeasurementEuLowLimit(const std::string& mesName);
    void SetMeasurementEuLowLimit(const std::string& mesName, const std::string& lowLimit);
    [[nodiscard]] std::string GetMeasurementEuLowValue(const std::string& mesName);
    void SetMeasurementEuLowValue(const std::string& mesName, const std::string& lowValue);
    [[nodiscard]] std::string GetMeasurementEuLowWarning(const std::string& mesName);
    void SetMeasurementEuLowWarning(const std::string& mesName, const std::string& lowWarn);
    [[nodiscard]] std::int32_t GetMeasurementEuPairSetNumberOfPairs(const std::string& mesName);
    [[nodiscard]] ConversionPair GetMeasurementEuPairSet(const std::string& mesName,
                                                         std::int32_t pair);
    void SetMeasurementEuPairSet(const std::string& mesName, std::int32_t pair, std::int32_t x,
                                 double y);
    [[nodiscard]] std::string GetMeasurementEuSampleRate(const std::string& mesName);
    void SetMeasurementEuSampleRate(const std::string& mesName, const std::string& sampleRate);
    [[nodiscard]] std::string GetMeasurementEuUnits(const std::string& mesName);
    void SetMeasurementEuUnits(const std::string& mesName, const std::string& units);

  private:
    AutomationSession& session_;
};

}  // namespace kavu
