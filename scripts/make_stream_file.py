#!/usr/bin/env python3
"""Writes a TMATS file of edition 106-11 with one large PCM stream for the benchmark.

    make_stream_file.py MEASUREMENTS OUT [--every-frame]

The stream has 2047 words and 256 frames. A quarter of the measurements is in every frame, and
so has 256 places; the others are in one frame, in every eighth frame, or in two fragments. With
--every-frame all of them are in every frame. The content depends only on the arguments.
"""

import random
import sys

WORDS = 2047
FRAMES = 256


def document():
    yield "G\\PN:BENCH;"
    yield "G\\106:11;"
    yield "G\\DSI\\N:1;"
    yield "G\\DSI-1:Source;"
    yield "G\\DST-1:RF;"
    yield "T-1\\ID:Source;"
    yield "T-1\\SCO\\N:0;"
    yield "M-1\\ID:Source;"
    yield "M-1\\BSG1:PCM;"
    yield "M-1\\BB\\DLN:PCM Stream 1;"
    yield "M-1\\SI\\N:0;"
    bits = 24 + 16 * (WORDS - 1)
    for field in ["DLN:PCM Stream 1", "D1:NRZ-L", "D2:20000000", "D3:U", "TF:TWO", "F1:16", "F2:M",
                  "F3:NO", f"MF\\N:{FRAMES}", f"MF1:{WORDS}", f"MF2:{bits}", "MF3:FPT", "MF4:24",
                  "MF5:111110101111001100100000", "ISF\\N:1", "ISF1-1:SFID", "ISF2-1:ID",
                  "IDC1-1:1", "IDC2-1:16", "IDC3-1:1", "IDC4-1:8", "IDC5-1:M", "IDC6-1:1",
                  "IDC7-1:1", f"IDC8-1:{FRAMES}", f"IDC9-1:{FRAMES}", "IDC10-1:INC"]:
        yield f"P-1\\{field};"


def fragments(rng, every):
    """Start frame, interval and end frame of each fragment of a measurement."""
    kind = 0 if every else rng.randrange(4)
    if kind == 0:
        return [(1, 1, FRAMES)]
    if kind == 1:
        frame = rng.randrange(1, FRAMES + 1)
        return [(frame, 0, frame)]
    if kind == 2:
        first = rng.randrange(1, 9)
        return [(first, 8, FRAMES - 8 + first)]
    frame = rng.randrange(1, FRAMES + 1)
    return [(frame, 0, frame), (frame, 0, frame)]


def measurements(count, every):
    rng = random.Random(count)
    yield "D-1\\DLN:PCM Stream 1;"
    yield "D-1\\ML\\N:1;"
    yield "D-1\\MLN-1:List;"
    yield f"D-1\\MN\\N-1:{count};"
    for m in range(1, count + 1):
        at = f"-1-{m}"
        yield f"D-1\\MN{at}:MEASUREMENT-{m:06d};"
        yield f"D-1\\MN1{at}:DE;"
        yield f"D-1\\MN2{at}:D;"
        yield f"D-1\\MN3{at}:M;"
        yield f"D-1\\LT{at}:WDFR;"
        yield f"D-1\\MML\\N{at}:1;"
        ranges = fragments(rng, every)
        yield f"D-1\\MNF\\N{at}-1:{len(ranges)};"
        if len(ranges) > 1:
            yield f"D-1\\MWL{at}-1:{16 * len(ranges)};"
        word = rng.randrange(2, WORDS - 1)
        for f, (start, step, end) in enumerate(ranges, 1):
            for code, value in [("WP", word + f - 1), ("WI", 0), ("EWP", word + f - 1),
                                ("FP", start), ("FI", step), ("EFP", end), ("WFM", "FW"),
                                ("WFT", "D"), ("WFP", f)]:
                yield f"D-1\\{code}{at}-1-{f}:{value};"


def main():
    arguments = [argument for argument in sys.argv[1:] if argument != "--every-frame"]
    every = len(arguments) < len(sys.argv) - 1
    if len(arguments) != 2:
        sys.exit(__doc__)
    with open(arguments[1], "w", encoding="ascii", newline="\r\n") as out:
        for part in (document(), measurements(int(arguments[0]), every)):
            for line in part:
                out.write(line + "\n")


if __name__ == "__main__":
    main()
