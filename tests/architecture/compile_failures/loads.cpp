// The same for the messages of a load: see messages.cpp.
#include "pcm/PcmLoad.h"

namespace kavu {

void example(PcmLoad& load, std::string_view name) {
#if CASE == 0
    load.log(212, title::kIllegalValueFound, name, 1, 2);
    (void)load.ask(357, title::kError);
#elif CASE == 1  // textDoesNotFitItsArguments
    load.log(212, title::kIllegalValueFound, name, name, 2);
#elif CASE == 2  // textDoesNotFitItsArguments
    load.log(239, title::kErrorReadingMeasurement, 1);
#elif CASE == 3  // numberHasNoText
    (void)load.ask(9999, title::kError);
#else
#error "no such case"
#endif
    (void)name;
}

}  // namespace kavu
