// The subframes of the loaded format, by name; hidden ones do not exist here.
#pragma once

#include <cstdint>
#include <string>

namespace kavu {

class AutomationSession;

struct SubframePlaces {
    std::int32_t Fwp{};
    std::int32_t NumberOfLocs{};
    std::int32_t Interval{};
};

/// Methods of the automation by their names and arguments there. Every one throws
/// `AutomationError` on failure.
class AutomationSubframes {
  public:
    explicit AutomationSubframes(AutomationSession& session) : session_(session) {}

    void CreateSubframe(std::int64_t hWnd, std::int32_t fwp, const std::string& name,
                        std::int32_t depth, std::int32_t numberOfLocs, std::int32_t interval);
    void DeleteSubframe(std::int64_t hWnd, const std::string& name);
    void EditSubframe(std::int64_t hWnd, const std::string& name);
    [[nodiscard]] std::int32_t GetSubframeDepth(const std::string& name);
    void SetSubframeDepth(std::int64_t hWnd, const std::string& name, std::int32_t depth);
    [[nodiscard]] std::string GetSubframeIDCounter(const std::string& sfName);
    void SetSubframeIDCounter(std::int64_t hWnd, const std::string& sfName,
                              const std::string& iDName);
    [[nodiscard]] SubframePlaces GetSubframeLocations(const std::string& name);
    void SetSubframeLocations(std::int64_t hWnd, const std::string& name, std::int32_t numberOfLocs,
                              std::int32_t interval);
    [[nodiscard]] std::string GetSubframeName(std::int32_t fwp);
    void SetSubframeName(std::int64_t hWnd, const std::string& oldName, const std::string& newName);

  private:
    AutomationSession& session_;
};

}  // namespace kavu
