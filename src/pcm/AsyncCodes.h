// The codes of async embedded formats and of data merges in the P group: n is the record, k
// the location, j the range of frames, all from 1.
#pragma once

#include <string_view>

namespace kavu {

struct AsyncCodes {
    bool isDataMerge;
    std::string_view defaultName;  ///< a printf format of n
    // What messages call it: as the thing itself, within a sentence, and at its head.
    std::string_view streamWord;
    std::string_view lowerWord;
    std::string_view word;

    std::string_view count;
    std::string_view name;       ///< n
    std::string_view supercom;   ///< n
    std::string_view mode;       ///< n
    std::string_view location;   ///< n, k
    std::string_view interval;   ///< n
    std::string_view length;     ///< n, k; empty without one
    std::string_view mask;       ///< n, k; empty without one
    std::string_view ranges;     ///< n, k
    std::string_view start;      ///< n, k, j
    std::string_view frameStep;  ///< n, k, j
    std::string_view end;        ///< n, k, j
};

inline constexpr AsyncCodes kAsyncEmbeddedCodes{.isDataMerge = false,
                                                .defaultName = "AsyncDataLink%d",
                                                .streamWord = "Embdedded PCM Stream",
                                                .lowerWord = "embedded",
                                                .word = "Embedded",
                                                .count = "AEF\\N",
                                                .name = "AEF\\DLN-%d",
                                                .supercom = "AEF1-%d",
                                                .mode = "AEF2-%d",
                                                .location = "AEF3-%d-%d",
                                                .interval = "AEF4-%d",
                                                .length = "AEF5-%d-%d",
                                                .mask = "AEF6-%d-%d",
                                                .ranges = "AEF7-%d-%d",
                                                .start = "AEF8-%d-%d-%d",
                                                .frameStep = "AEF9-%d-%d-%d",
                                                .end = "AEF10-%d-%d-%d"};

inline constexpr AsyncCodes kDataMergeCodes{.isDataMerge = true,
                                            .defaultName = "AsyncDataMerge%d",
                                            .streamWord = "Data Merge",
                                            .lowerWord = "data merge",
                                            .word = "Data Merge",
                                            .count = "ADM\\N",
                                            .name = "ADM\\DMN-%d",
                                            .supercom = "ADM1-%d",
                                            .mode = "ADM2-%d",
                                            .location = "ADM3-%d-%d",
                                            .interval = "ADM4-%d",
                                            .length = "",
                                            .mask = "",
                                            .ranges = "ADM8-%d-%d",
                                            .start = "ADM9-%d-%d-%d",
                                            .frameStep = "ADM10-%d-%d-%d",
                                            .end = "ADM11-%d-%d-%d"};

namespace merge_code {

inline constexpr std::string_view kMergeParity = "ADM\\MP-%d";
inline constexpr std::string_view kOverheadMask = "ADM\\OHM-%d";
inline constexpr std::string_view kFirstDataPosition = "ADM\\FDP-%d";
inline constexpr std::string_view kDataOrder = "ADM\\DOP-%d";
inline constexpr std::string_view kSecondDataPosition = "ADM\\SDP-%d";
inline constexpr std::string_view kUserDataPosition = "ADM\\UDP-%d";
inline constexpr std::string_view kAdm5 = "ADM5-%d";
inline constexpr std::string_view kAdm6 = "ADM6-%d";
inline constexpr std::string_view kAdm7 = "ADM7-%d";

}  // namespace merge_code

}  // namespace kavu
