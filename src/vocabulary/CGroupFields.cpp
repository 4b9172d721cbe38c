#include "vocabulary/CGroupFields.h"

namespace kavu {

namespace {

using namespace c;

constexpr auto kFields = std::to_array<Field>(
    {kDcn,       kTrd1,      kTrd2, kTrd3,    kTrd4,  kTrd5,     kTrd6,    kTrd7, kPoc1, kPoc2,
     kPoc3,      kPoc4,      kMn1,  kMn2,     kMn3,   kMn4,      kBfm,     kFpf,  kBwtN, kBwtb,
     kBwtv,      kMcN,       kMc1,  kMc2,     kMc3,   kMaN,      kMa1,     kMa2,  kMa3,  kSingleMa1,
     kSingleMa2, kSingleMa3, kMot1, kMot2,    kMot3,  kMot4,     kMot5,    kMot6, kSr,   kCrt,
     kDct,       kPsN,       kPs1,  kPs2,     kPs3,   kPs4,      kCoN,     kCo1,  kCo,   kCoTerm,
     kNpcN,      kNpc1,      kNpc,  kNpcTerm, kOth,   kDpat,     kDpa,     kDptm, kDpno, kDpN,
     kDp,        kDpcN,      kDpc,  kDicN,    kDiciN, kDicc,     kDicp,    kBtm,  kPtm,  kVoiE,
     kVoiD,      kVidE,      kVidD, kCom,     kMna,   kFpfInXml, kPs1InXml});

}  // namespace

std::span<const Field> conversionVocabulary() {
    return kFields;
}

}  // namespace kavu
