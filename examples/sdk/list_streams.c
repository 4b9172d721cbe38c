/* Lists the data links of a TMATS file and how many measurements each has.
 *
 *     cc list_streams.c -lkavu_sdk -o list_streams
 *     ./list_streams FILE */
#include <kavu_sdk.h>

#include <stdio.h>

static void list_streams(kavu_sdk *session) {
    kavu_sdk_stream stream;
    int number;
    for (number = 1; kavu_sdk_get_stream(session, number, &stream) == 0; ++number) {
        const char *const state = kavu_sdk_load_stream(session, number) == 0 ? "" : " (unreadable)";
        printf("%d %s %s: %zu measurements%s\n", number, stream.name, stream.type,
               kavu_sdk_measurement_count(session), state);
    }
}

int main(int argc, char **argv) {
    kavu_sdk *const session = kavu_sdk_new();
    int status = 2;
    size_t index;
    if (argc != 2 || session == NULL) {
        fprintf(stderr, "usage: list_streams FILE\n");
    } else if (kavu_sdk_open(session, argv[1]) == 0) {
        printf("106-%02d\n", kavu_sdk_version(session) % 100);
        list_streams(session);
        status = 0;
    }
    for (index = 0; index < kavu_sdk_error_count(session); ++index) {
        fputs(kavu_sdk_error(session, index), stderr);
    }
    kavu_sdk_free(session);
    return status;
}
