// ID counters and subframes by their names: the operations that other programs call. An
// unknown name fails, and so does a value that the field's rules refuse. Functions with a
// parent report to it, all others are silent.
#pragma once

#include "pcm/PcmFormat.h"

#include <optional>
#include <string>
#include <string_view>

namespace kavu {

// --- ID counters ----------------------------------------------------------------------------

/// `canCreateAt` is checked first: messages 231, 177.
bool createSFID(PcmFormat& format, UserInterface* parent, int fwp);
/// Question 129, messages 359, 360.
bool deleteSFID(PcmFormat& format, UserInterface* parent, std::string_view name);
[[nodiscard]] int getNumberOfSFIDs(const PcmFormat& format);

struct SFIDInfo {
    std::string name;
    int fwp = -1;  ///< -1 if no word holds it
};
/// The n-th counter that has a name, from 1.
[[nodiscard]] std::optional<SFIDInfo> getSFIDInfo(const PcmFormat& format, int number);

[[nodiscard]] std::optional<std::string> getSFIDCountDirection(const PcmFormat& format,
                                                               std::string_view name);
/// "INC" or "DEC"; the end value follows.
bool setSFIDCountDirection(PcmFormat& format, std::string_view name, std::string_view direction);
[[nodiscard]] std::optional<int> getSFIDCounterLength(const PcmFormat& format,
                                                      std::string_view name);
/// 1 to the length of the counter's word.
bool setSFIDCounterLength(PcmFormat& format, std::string_view name, int length);
[[nodiscard]] std::optional<int> getSFIDEndFrame(const PcmFormat& format, std::string_view name);
/// Above the start frame, at most the number of frames; the end value follows.
bool setSFIDEndFrame(PcmFormat& format, std::string_view name, int frame);
[[nodiscard]] std::optional<int> getSFIDEndValue(const PcmFormat& format, std::string_view name);
/// 1 to 999.
bool setSFIDEndValue(PcmFormat& format, std::string_view name, int value);
[[nodiscard]] std::optional<int> getSFIDMSBStartBit(const PcmFormat& format, std::string_view name);
/// 1 to 99.
bool setSFIDMSBStartBit(PcmFormat& format, std::string_view name, int bit);
/// Messages 361, 365.
bool setSFIDName(PcmFormat& format, UserInterface* parent, std::string_view oldName,
                 std::string_view newName);
[[nodiscard]] std::optional<int> getSFIDStartFrame(const PcmFormat& format, std::string_view name);
/// At least 1, below the end frame; the end value follows.
bool setSFIDStartFrame(PcmFormat& format, std::string_view name, int frame);
[[nodiscard]] std::optional<int> getSFIDStartValue(const PcmFormat& format, std::string_view name);
/// 0 to 999; the end value follows.
bool setSFIDStartValue(PcmFormat& format, std::string_view name, int value);
[[nodiscard]] std::optional<std::string> getSFIDTransferOrder(const PcmFormat& format,
                                                              std::string_view name);
/// "M", "L", and from 106-09 on "D".
bool setSFIDTransferOrder(PcmFormat& format, std::string_view name, std::string_view order);
[[nodiscard]] std::optional<int> getSFIDWordLength(const PcmFormat& format, std::string_view name);
/// 1 to 99 bits.
bool setSFIDWordLength(PcmFormat& format, std::string_view name, int length);

// --- subframes ------------------------------------------------------------------------------

/// Question 123.
bool deleteSubframe(PcmFormat& format, UserInterface* parent, std::string_view name);
[[nodiscard]] std::optional<int> getSubframeDepth(const PcmFormat& format, std::string_view name);
/// Messages 349 to 351.
bool setSubframeDepth(PcmFormat& format, UserInterface* parent, std::string_view name, int depth);
/// The name of the counter.
[[nodiscard]] std::optional<std::string> getSubframeIDCounter(const PcmFormat& format,
                                                              std::string_view name);
/// Message 359 if there is no counter of that name, 352.
bool setSubframeIDCounter(PcmFormat& format, UserInterface* parent, std::string_view name,
                          std::string_view counter);

struct SubframeLocations {
    int fwp = -1;  ///< the first word
    int locations = 1;
    int interval = 0;  ///< of an "FI", else 0
};
[[nodiscard]] std::optional<SubframeLocations> getSubframeLocations(const PcmFormat& format,
                                                                    std::string_view name);
/// From the first word on by the interval; one location ends supercommutation. Messages of
/// `saveSubframe`.
bool setSubframeLocations(PcmFormat& format, UserInterface* parent, std::string_view name,
                          int locations, int interval);
[[nodiscard]] std::optional<std::string> getSubframeName(const PcmFormat& format, int fwp);
/// Messages 353, 354.
bool setSubframeName(PcmFormat& format, UserInterface* parent, std::string_view oldName,
                     std::string_view newName);

}  // namespace kavu
