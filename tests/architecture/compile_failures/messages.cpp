// Code that the compiler must refuse, one piece for each value of CASE, and what its error
// must name. Case 0 is valid. check_compile_failures.py compiles them all.
#include "core/talk/Messages.h"

namespace kavu {

constexpr int kCounter = 3;

void example(const Messages& messages, UserInterface* parent, const std::string& name) {
    (void)messages;
    (void)parent;
    (void)name;
#if CASE == 0
    messages.show(parent, 85, title::kError, kErrorBox, name);
    messages.show(parent, -85, title::kError, kErrorBox, "literal");
    messages.log(parent, 160, title::kWarning, 1, kCounter);
    messages.log(parent, 85, 0, name);
    messages.showFailure(parent, {}, 158, title::kNote, kWarningBox, name);
    messages.show(parent, name.empty() ? MessageFor<>(142) : MessageFor<>(143), 87, kErrorBox);
    (void)formatPrintf("%s %d %.2f %%", name, kCounter, 1.5);
    (void)formatMessage(85, name);
#elif CASE == 1   // numberHasNoText
    messages.show(parent, 9999, title::kError, kErrorBox);
#elif CASE == 2   // numberHasNoText
    messages.log(parent, 0, title::kError);
#elif CASE == 3   // textDoesNotFitItsArguments
    messages.show(parent, 85, title::kError, kErrorBox);
#elif CASE == 4   // textDoesNotFitItsArguments
    messages.show(parent, -85, title::kError, kErrorBox, kCounter);
#elif CASE == 5   // textDoesNotFitItsArguments
    messages.log(parent, 160, title::kError, 1, 2, 3);
#elif CASE == 6   // textDoesNotFitItsArguments
    messages.logFailure(parent, {}, 160, title::kError, 1, name);
#elif CASE == 7   // textDoesNotFitItsArguments
    messages.showTitled(parent, 160, name, kErrorBox, 1, 2.0);
#elif CASE == 8   // numberHasNoText
    messages.show(parent, 85, 9999, kErrorBox, name);
#elif CASE == 9   // textDoesNotFitItsArguments
    messages.show(parent, 85, 85, kErrorBox, name);
#elif CASE == 10  // constant
    messages.show(parent, static_cast<int>(name.size()), title::kError, kErrorBox);
#elif CASE == 11  // formatDoesNotFitItsArguments
    (void)formatPrintf("%d", name);
#elif CASE == 12  // formatDoesNotFitItsArguments
    (void)formatPrintf("%s %s", name);
#elif CASE == 13  // formatDoesNotFitItsArguments
    (void)formatPrintf("%s", name, kCounter);
#elif CASE == 14  // constant
    (void)formatPrintf(name.c_str(), kCounter);
#else
#error "no such case"
#endif
}

}  // namespace kavu
