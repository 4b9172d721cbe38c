// The check of a result in a fuzz target.
#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the program with the condition and its place if it does not hold.
#define KAVU_CHECK(condition)                                                              \
    do {                                                                                   \
        if (!(condition)) {                                                                \
            std::fprintf(stderr, "%s:%d: not true: %s\n", __FILE__, __LINE__, #condition); \
            std::abort();                                                                  \
        }                                                                                  \
    } while (false)
