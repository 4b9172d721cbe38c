// The rows of async embedded formats and of data merges, and their names in messages.
#pragma once

#include "core/text/PrintfFormat.h"
#include "pcm/model/AsyncFormat.h"
#include "pcm/model/RecordField.h"
#include "vocabulary/PAsyncFields.h"

#include <array>

namespace kavu {

/// The commands of one kind, and its names in messages.
struct AsyncCodes {
    bool isDataMerge;
    PrintfFormat<int> defaultName;  ///< of n
    // As a noun, within a sentence, and at its start.
    std::string_view streamWord;
    std::string_view lowerWord;
    std::string_view word;

    Field count;
    Field name;       ///< n
    Field supercom;   ///< n: "NO", or the number of locations
    Field mode;       ///< n
    Field location;   ///< n, k
    Field interval;   ///< n
    Field length;     ///< n, k; empty if there is none
    Field mask;       ///< n, k; empty if there is none
    Field ranges;     ///< n, k: "NO", or the number of ranges
    Field start;      ///< n, k, j
    Field frameStep;  ///< n, k, j
    Field end;        ///< n, k, j
};

inline constexpr AsyncCodes kAsyncEmbeddedCodes{.isDataMerge = false,
                                                .defaultName = "AsyncDataLink%d",
                                                .streamWord = "Embdedded PCM Stream",
                                                .lowerWord = "embedded",
                                                .word = "Embedded",
                                                .count = p::kAefN,
                                                .name = p::kAefDln,
                                                .supercom = p::kAef1,
                                                .mode = p::kAef2,
                                                .location = p::kAef3,
                                                .interval = p::kAef4,
                                                .length = p::kAef5,
                                                .mask = p::kAef6,
                                                .ranges = p::kAef7,
                                                .start = p::kAef8,
                                                .frameStep = p::kAef9,
                                                .end = p::kAef10};

inline constexpr AsyncCodes kDataMergeCodes{.isDataMerge = true,
                                            .defaultName = "AsyncDataMerge%d",
                                            .streamWord = "Data Merge",
                                            .lowerWord = "data merge",
                                            .word = "Data Merge",
                                            .count = p::kAdmN,
                                            .name = p::kAdmDmn,
                                            .supercom = p::kAdm1,
                                            .mode = p::kAdm2,
                                            .location = p::kAdm3,
                                            .interval = p::kAdm4,
                                            .length = {},
                                            .mask = {},
                                            .ranges = p::kAdm8,
                                            .start = p::kAdm9,
                                            .frameStep = p::kAdm10,
                                            .end = p::kAdm11};

/// A command that only a data merge has: a text or a number of its record. A missing one
/// has the value of a new record.
struct MergeField {
    Field field;
    std::string AsyncFormat::*text = nullptr;
    int AsyncFormat::*number = nullptr;
};

/// Written after the name.
inline constexpr auto kMergeTexts = std::to_array<MergeField>({
    {p::kAdmMp, &AsyncFormat::mergeParity},
    {p::kAdmOhm, &AsyncFormat::overheadMask},
    {p::kAdmFdp, &AsyncFormat::firstDataPosition},
    {p::kAdmDop, &AsyncFormat::dataOrder},
    {p::kAdmSdp, &AsyncFormat::secondDataPosition},
    {p::kAdmUdp, &AsyncFormat::userDataPosition},
});
/// Written after the locations.
inline constexpr auto kMergeValues = std::to_array<MergeField>({
    {p::kAdm5, nullptr, &AsyncFormat::adm5},
    {p::kAdm6, nullptr, &AsyncFormat::adm6},
    {p::kAdm7, &AsyncFormat::adm7},
});

}  // namespace kavu
