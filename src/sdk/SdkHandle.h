// What the C interface knows a session by.
#pragma once

#include "sdk/TranslatorSdk.h"
#include "sdk/kavu_sdk.h"

#include <memory>

struct kavu_sdk {
    kavu::TranslatorSdk* session;
    std::shared_ptr<void> owned;  ///< what it lives in; nothing for a session of this program
};
