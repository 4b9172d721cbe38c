// The PCM streams of the document, and the format of the one that is loaded.
#pragma once

#include <cstdint>
#include <string>

namespace kavu {

class AutomationSession;

/// Methods of the automation by their names and arguments there. Every one throws
/// `AutomationError` on failure.
class AutomationFormats {
  public:
    explicit AutomationFormats(AutomationSession& session) : session_(session) {}

    [[nodiscard]] std::int32_t CountPCMStreams();
    [[nodiscard]] std::string GetPCMStreamName(std::int32_t stream);
    void LoadPCMFormat(std::int64_t hWnd, std::int32_t stream);
    void SavePCMFormat(std::int64_t hWnd);
    [[nodiscard]] bool IsPCMFormatChanged();
    void ShowPCMFormatDialog(std::int64_t hWnd);
    void ShowPCMDisplay(std::int64_t hWnd);
    [[nodiscard]] std::int32_t GetBitRate();
    void SetBitRate(std::int32_t bitRate);
    [[nodiscard]] std::int32_t GetCommonWordLength();
    void SetCommonWordLength(std::int64_t hWnd, std::int32_t length);
    [[nodiscard]] std::string GetFrameSyncPattern();
    void SetFrameSyncPatternByLength(std::int64_t hWnd, std::int32_t newLength);
    void SetFrameSyncPatternByValue(std::int64_t hWnd, const std::string& newFsp);
    [[nodiscard]] std::int32_t GetNumberOfFrames();
    void SetNumberOfFrames(std::int64_t hWnd, std::int32_t frames);
    [[nodiscard]] std::string GetPCMComment();
    void SetPCMComment(const std::string& comment);
    [[nodiscard]] std::int32_t GetWordsPerMinorFrame();
    void SetWordsPerMinorFrame(std::int64_t hWnd, std::int32_t words);

  private:
    AutomationSession& session_;
};

}  // namespace kavu
