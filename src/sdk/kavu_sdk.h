/* Read access to TMATS files (IRIG 106 Chapter 9) for programs in C and whatever can call it.
 *
 * A session is opened on one file, which it never changes, and closed. Functions that return int
 * give 0 or more when they succeed and -1 when they fail, unless they say otherwise; why is then
 * the last of the error texts, but for null pointers and names that are not there; and streams,
 * measurements and fragments may be got one after the other until there are no more. Failures do not
 * end a session. No function throws, and every one takes a null session as one that is not open.
 *
 * Texts are bytes as the file has them, with real line breaks. A text that is returned is owned by
 * the handle that was asked, and lives until that handle is asked for another text of the same
 * kind, is closed, or loads another stream. Streams, locations and fragments count from 1,
 * everything else from 0.
 *
 * One session is for one thread at a time; different sessions have nothing in common. */
#ifndef KAVU_SDK_H
#define KAVU_SDK_H

#include <stddef.h>
#include <stdint.h>

#if defined(__GNUC__)
#define KAVU_SDK_API __attribute__((visibility("default")))
#else
#define KAVU_SDK_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Rises when something is added. What is there stays as it is. */
#define KAVU_SDK_INTERFACE 1

typedef struct kavu_sdk kavu_sdk;
typedef struct kavu_sdk_group kavu_sdk_group;

/* KAVU_SDK_INTERFACE of the library that is loaded. */
KAVU_SDK_API int kavu_sdk_interface(void);

/* --- The session ------------------------------------------------------------------------------ */

/* A session that is not open yet; null if there is no memory for it. */
KAVU_SDK_API kavu_sdk* kavu_sdk_new(void);
/* Closes and frees a session, which may be null. Groups that were opened stay valid. */
KAVU_SDK_API void kavu_sdk_free(kavu_sdk* session);

KAVU_SDK_API int kavu_sdk_open(kavu_sdk* session, const char* path);
KAVU_SDK_API void kavu_sdk_close(kavu_sdk* session);

/* What went wrong since the last open. A number that is out of range gives null. */
KAVU_SDK_API size_t kavu_sdk_error_count(const kavu_sdk* session);
KAVU_SDK_API const char* kavu_sdk_error(const kavu_sdk* session, size_t index);

/* The edition of the standard as a year; 2011 when the file states none. */
KAVU_SDK_API int kavu_sdk_version(const kavu_sdk* session);

/* From here on every value that is read has `to` in place of `from`, in the order of the calls.
 * Two nulls remove all of them. */
KAVU_SDK_API int kavu_sdk_substitute(kavu_sdk* session, const char* from, const char* to);

/* --- Data sources and data links -------------------------------------------------------------- */

KAVU_SDK_API size_t kavu_sdk_source_count(const kavu_sdk* session);
/* Null for an index that is out of range. */
KAVU_SDK_API const char* kavu_sdk_source_name(const kavu_sdk* session, size_t index);
KAVU_SDK_API const char* kavu_sdk_source_type(const kavu_sdk* session, size_t index);

typedef struct kavu_sdk_stream {
    const char* name;
    const char* type;  /* as it is stored: "ONE", "1553"; empty without a P group */
    int named;         /* 0 for a link that no data source names */
    int p, d, b, a, s; /* the numbers of its groups, 0 for none */
} kavu_sdk_stream;

/* Streams are the links of the data sources, in the order of the M groups, then all others. */
KAVU_SDK_API int kavu_sdk_stream_count(const kavu_sdk* session);
KAVU_SDK_API int kavu_sdk_get_stream(const kavu_sdk* session, int number, kavu_sdk_stream* stream);
/* The number of the stream of this name, or -1. */
KAVU_SDK_API int kavu_sdk_find_stream(const kavu_sdk* session, const char* name);
/* Loads a stream, whose measurements the functions below are about. */
KAVU_SDK_API int kavu_sdk_load_stream(kavu_sdk* session, int number);
/* Of the stream that is loaded: 0 without one, or for one that is not PCM. The words include the
 * sync pattern, which is word 0. */
KAVU_SDK_API int kavu_sdk_words_per_frame(const kavu_sdk* session);
KAVU_SDK_API int kavu_sdk_frame_count(const kavu_sdk* session);
/* Bits of a word of the minor frame; 0 for one that is out of range. */
KAVU_SDK_API int kavu_sdk_word_length(const kavu_sdk* session, int word);

/* --- Measurements of the stream that is loaded ------------------------------------------------ */

typedef struct kavu_sdk_range {
    int start, interval, end; /* an interval of 0 is one place */
} kavu_sdk_range;

typedef struct kavu_sdk_measurement {
    const char* name;
    const char* location_type; /* as it is stored; empty on a bus */
    int word_length;           /* bits of the value */
    int locations;
    int bus, message; /* on a bus, from 1; 0 in a PCM stream */
} kavu_sdk_measurement;

typedef struct kavu_sdk_fragment {
    int number;           /* its place in the value, from 1 */
    kavu_sdk_range word;  /* of the minor frame, or of a message */
    kavu_sdk_range frame; /* of the major frame; 0 on a bus */
    int word_length;      /* bits of the word it is in */
    int full_word;        /* 1 if the mask has all of them */
    char transfer_order;  /* 'M', 'L', or 'D' for the default */
} kavu_sdk_fragment;

KAVU_SDK_API size_t kavu_sdk_measurement_count(const kavu_sdk* session);
KAVU_SDK_API int kavu_sdk_get_measurement(kavu_sdk* session, size_t index,
                                          kavu_sdk_measurement* measurement);
/* The index of the measurement of this name, or -1. */
KAVU_SDK_API long kavu_sdk_find_measurement(const kavu_sdk* session, const char* name);
KAVU_SDK_API int kavu_sdk_fragment_count(kavu_sdk* session, size_t index, int location);
KAVU_SDK_API int kavu_sdk_get_fragment(kavu_sdk* session, size_t index, int location, int number,
                                       kavu_sdk_fragment* fragment);
/* Copies the text of a mask with its NUL; -1 if the buffer is too small. */
KAVU_SDK_API int kavu_sdk_mask(kavu_sdk* session, size_t index, int location, int number,
                               char* buffer, size_t size);
/* The value of a mask, the high word first. */
KAVU_SDK_API int kavu_sdk_mask_words(kavu_sdk* session, size_t index, int location, int number,
                                     uint32_t words[2]);
/* The numbers of the bits of a mask, from 1 at the left, as many as there is room for; how many
 * there are is returned. */
KAVU_SDK_API int kavu_sdk_mask_bits(kavu_sdk* session, size_t index, int location, int number,
                                    int* bits, size_t room);

/* --- Groups and conversion records ------------------------------------------------------------ */

/* Opens a group by its letter and number (ignored for G and H), or by its name. Null if there is
 * none. To be closed. */
KAVU_SDK_API kavu_sdk_group* kavu_sdk_open_group(kavu_sdk* session, char letter, int number);
KAVU_SDK_API kavu_sdk_group* kavu_sdk_open_named_group(kavu_sdk* session, char letter,
                                                       const char* name);
/* The same for the conversion record C-n, and for that of a measurement. */
KAVU_SDK_API kavu_sdk_group* kavu_sdk_open_conversion(kavu_sdk* session, int64_t number);
KAVU_SDK_API kavu_sdk_group* kavu_sdk_open_named_conversion(kavu_sdk* session, const char* name);
KAVU_SDK_API void kavu_sdk_close_group(kavu_sdk_group* group);

/* The polynomial of a conversion record, that of its pair set among them: copies as many of its
 * coefficients as there is room for, in ascending powers of the telemetry value, and returns how
 * many there are. `negative`, which may be null, is then 1 if the powers descend: 0, -1, -2. -1 for
 * a record of another type. */
KAVU_SDK_API int kavu_sdk_coefficients(kavu_sdk* session, const kavu_sdk_group* record,
                                       double* coefficients, size_t room, int* negative);
/* The engineering value of a telemetry value; -1 as above, or if it is not finite. */
KAVU_SDK_API int kavu_sdk_evaluate(kavu_sdk* session, const kavu_sdk_group* record,
                                   double telemetry, double* value);

KAVU_SDK_API int64_t kavu_sdk_group_number(const kavu_sdk_group* group);
/* The commands in the order of the file: the field without its group, as "MF1", and the value. Null
 * for an index that is out of range. */
KAVU_SDK_API size_t kavu_sdk_group_size(const kavu_sdk_group* group);
KAVU_SDK_API const char* kavu_sdk_group_field(kavu_sdk_group* group, size_t index);
KAVU_SDK_API const char* kavu_sdk_group_value(kavu_sdk_group* group, size_t index);
/* The first value of a field that is not empty, whatever the case of the field; null for none. */
KAVU_SDK_API const char* kavu_sdk_group_find(kavu_sdk_group* group, const char* field);

#ifdef __cplusplus
}
#endif

#endif
