#include "vocabulary/PGroupFields.h"

#include "vocabulary/PAsyncFields.h"
#include "vocabulary/PSubframeFields.h"

#include <algorithm>

namespace kavu {

namespace {

using namespace p;

constexpr auto kAttributes = std::to_array<Field>(
    {kDln, kD1, kD2,  kD3,  kD4,  kD5,  kD6,  kD7,  kD8,    kTf,    kF1,    kF2,
     kF3,  kF4, kMfN, kMf1, kMf2, kMf3, kMf4, kMf5, kSync1, kSync2, kSync3, kSync4});
constexpr auto kCounters = std::to_array<Field>(
    {kIsfN, kIsf1, kIsf2, kIdc1, kIdc2, kIdc3, kIdc4, kIdc5, kIdc6, kIdc7, kIdc8, kIdc9, kIdc10});
constexpr auto kSubframes = std::to_array<Field>({kSfN, kSf1, kSf2, kSf3, kSf4, kSf5, kSf6});
constexpr auto kEmbedded = std::to_array<Field>(
    {kAefN, kAefDln, kAef1, kAef2, kAef3, kAef4, kAef5, kAef6, kAef7, kAef8, kAef9, kAef10});
constexpr auto kMerges = std::to_array<Field>({kAdmN, kAdmDmn, kAdmMp, kAdmOhm, kAdmFdp, kAdmDop,
                                               kAdmSdp, kAdmUdp, kAdm1, kAdm2, kAdm3, kAdm4, kAdm5,
                                               kAdm6, kAdm7, kAdm8, kAdm9, kAdm10, kAdm11});
constexpr auto kComments = std::to_array<Field>({kCom});

template <std::size_t... N>
constexpr auto joined(const std::array<Field, N>&... tables) {
    std::array<Field, (N + ...)> all{};
    auto* place = all.begin();
    ((place = std::copy(tables.begin(), tables.end(), place)), ...);
    return all;
}

constexpr auto kFields = joined(kAttributes, kWordLengths, kCounters, kSubframes, kFrameFilters,
                                kEmbedded, kFormatSwitch, kAltTags, kMerges, kComments);

}  // namespace

std::span<const Field> pcmVocabulary() {
    return kFields;
}

}  // namespace kavu
