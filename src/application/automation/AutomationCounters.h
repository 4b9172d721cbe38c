// The ID counters of the loaded format, by name; numbers count from 1.
#pragma once

#include <cstdint>
#include <string>

namespace kavu {

class AutomationSession;

struct CounterPlace {
    std::string Name{};
    std::int32_t Fwp{};
};

/// Methods of the automation by their names and arguments there. Every one throws
/// `AutomationError` on failure.
class AutomationCounters {
  public:
    explicit AutomationCounters(AutomationSession& session) : session_(session) {}

    void CreateSFID(std::int64_t hWnd, std::int32_t fwp);
    void DeleteSFID(std::int64_t hWnd, const std::string& name);
    void EditSFID(std::int64_t hWnd, const std::string& name);
    [[nodiscard]] std::int32_t GetNumberOfSFIDs();
    [[nodiscard]] CounterPlace GetSFIDInfo(std::int32_t sFIDNumber);
    [[nodiscard]] std::string GetSFIDCountDirection(const std::string& name);
    void SetSFIDCountDirection(const std::string& name, const std::string& direction);
    [[nodiscard]] std::int32_t GetSFIDCounterLength(const std::string& name);
    void SetSFIDCounterLength(const std::string& name, std::int32_t length);
    [[nodiscard]] std::int32_t GetSFIDEndFrame(const std::string& name);
    void SetSFIDEndFrame(const std::string& name, std::int32_t value);
    [[nodiscard]] std::int32_t GetSFIDEndValue(const std::string& name);
    void SetSFIDEndValue(const std::string& name, std::int32_t value);
    [[nodiscard]] std::int32_t GetSFIDMSBStartBit(const std::string& name);
    void SetSFIDMSBStartBit(const std::string& name, std::int32_t startBit);
    void SetSFIDName(std::int64_t hWnd, const std::string& oldName, const std::string& newName);
    [[nodiscard]] std::int32_t GetSFIDStartFrame(const std::string& name);
    void SetSFIDStartFrame(const std::string& name, std::int32_t frame);
    [[nodiscard]] std::int32_t GetSFIDStartValue(const std::string& name);
    void SetSFIDStartValue(const std::string& name, std::int32_t value);
    [[nodiscard]] std::string GetSFIDTransferOrder(const std::string& name);
    void SetSFIDTransferOrder(const std::string& name, const std::string& transferOrder);
    [[nodiscard]] std::int32_t GetSFIDWordLength(const std::string& name);
    void SetSFIDWordLength(const std::string& name, std::int32_t length);

  private:
    AutomationSession& session_;
};

}  // namespace kavu
