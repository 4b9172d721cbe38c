/* A translator is a module that makes the setup file of a ground system from a TMATS file. The
 * editor loads the modules in the folder "TranslatorSupportFiles" of the user's settings whose
 * names end in
 * ".so", if they belong to the user or to root and nobody else can write them, and shows each in
 * File, Translators.
 *
 * A module exports one function:
 *
 *     const kavu_translator *kavu_translator_module(void);
 *
 * Nothing may be thrown out of a function of a module. */
#ifndef KAVU_TRANSLATOR_H
#define KAVU_TRANSLATOR_H

#include <kavu_sdk.h>

#ifdef __cplusplus
extern "C" {
#endif

#define KAVU_TRANSLATOR_INTERFACE 1

/* An item of a translator that the user can set. Its key is unique in its section. */
typedef struct kavu_translator_item {
    const char* section;
    const char* key;
    const char* description;
    const char* value; /* the default */
} kavu_translator_item;

/* What a conversion works with; all of it is valid until the conversion returns. The functions of
 * the session are those of kavu_sdk.h: a module calls them through this table, so that it need not
 * be linked with the library. */
typedef struct kavu_translator_run {
    const char* input;  /* the path of the TMATS file */
    const char* output; /* where the setup file is to be written; it may exist */
    kavu_sdk* session;  /* open on the input; the module does not close it */
    const int* streams; /* the numbers of the streams to convert */
    size_t stream_count;
    void* host; /* first argument of the three that follow */
    /* The value of an item; null for one that the module does not have. */
    const char* (*item)(void* host, const char* section, const char* key);
    /* Writes a line to the log that the user is asked to look at. */
    void (*message)(void* host, const char* text);
    /* Shows what is being done; 1 if the user has cancelled. */
    int (*progress)(void* host, const char* text);

    int (*get_stream)(const kavu_sdk* session, int number, kavu_sdk_stream* stream);
    int (*load_stream)(kavu_sdk* session, int number);
    int (*words_per_frame)(const kavu_sdk* session);
    int (*frame_count)(const kavu_sdk* session);
    int (*word_length)(const kavu_sdk* session, int word);
    size_t (*measurement_count)(const kavu_sdk* session);
    int (*get_measurement)(kavu_sdk* session, size_t index, kavu_sdk_measurement* measurement);
    int (*fragment_count)(kavu_sdk* session, size_t index, int location);
    int (*get_fragment)(kavu_sdk* session, size_t index, int location, int number,
                        kavu_sdk_fragment* fragment);
    int (*mask)(kavu_sdk* session, size_t index, int location, int number, char* buffer,
                size_t size);
    int (*mask_bits)(kavu_sdk* session, size_t index, int location, int number, int* bits,
                     size_t room);
    kavu_sdk_group* (*open_group)(kavu_sdk* session, char letter, int number);
    kavu_sdk_group* (*open_named_conversion)(kavu_sdk* session, const char* name);
    void (*close_group)(kavu_sdk_group* group);
    size_t (*group_size)(const kavu_sdk_group* group);
    const char* (*group_field)(kavu_sdk_group* group, size_t index);
    const char* (*group_value)(kavu_sdk_group* group, size_t index);
    const char* (*group_find)(kavu_sdk_group* group, const char* field);
} kavu_translator_run;

typedef struct kavu_translator {
    int interface;         /* KAVU_TRANSLATOR_INTERFACE */
    const char* vendor;    /* whose setup file it makes; also names its items in the settings */
    const char* title;     /* the entry of the menu, with an "&" */
    const char* extension; /* of the setup file: ".csv" */
    const kavu_translator_item* items;
    size_t item_count;
    /* 0 when the setup file was written. */
    int (*convert)(const kavu_translator_run* run);
} kavu_translator;

#ifdef __cplusplus
}
#endif

#endif
