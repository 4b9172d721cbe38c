#!/usr/bin/env python3
"""Writes a large but valid TMATS file for the benchmark.

    make_bench_file.py SIZE_MB OUT [SOURCES] [--only D|C]

25 MB are about 600,000 commands: a third each of P commands, D commands, and the rest, which
is C records of 20 fields, bus messages and vendor commands. There are 24 data sources, three
times as many as in the largest file from the field that we know; 98 are the most that a
document can have. Every link has its home, so that opening the file asks nothing. The content
depends on the size and the number of sources alone.
"""

import random
import sys

EDITION = 9
MOST_SOURCES = 98  # 99 links are one too many for a document
WORDS = ("pressure temperature sensor bridge channel range gain offset left right forward aft "
         "upper lower primary backup filtered raw calibrated nominal").split()


def prose(rng, length):
    """Text of exactly LENGTH characters, as people write remarks."""
    text = ""
    while len(text) < length:
        text += rng.choice(WORDS) + " "
    return text[:length - 1] + "."


def general(sources):
    yield "G\\PN:BENCH;"
    yield f"G\\106:{EDITION:02d};"
    yield f"G\\DSI\\N:{sources};"
    for n in range(1, sources + 1):
        yield f"G\\DSI-{n}:Source {n};"
        yield f"G\\DST-{n}:RF;"
    for n in range(1, sources + 1):
        yield f"T-{n}\\ID:Source {n};"
        yield f"T-{n}\\SCO\\N:0;"
    for n in range(1, sources):
        yield f"M-{n}\\ID:Source {n};"
        yield f"M-{n}\\BSG1:PCM;"
        yield f"M-{n}\\BB\\DLN:PCM Stream {n};"
        yield f"M-{n}\\SI\\N:0;"


def pcm(count, rng, streams):
    """Formats with very many subframes."""
    share = count // streams
    for n in range(1, streams + 1):
        p = f"P-{n}\\"
        head = [f"DLN:PCM Stream {n}", "D1:NRZ-L", "D2:1000000", "TF:ONE", "F1:16", "F2:M",
                "F3:NO", "MF\\N:256", "MF1:512", "MF3:FPT", "MF4:16", "MF5:1110101110010000",
                "ISF\\N:1", "ISF1-1:SFID", "ISF2-1:ID", "IDC1-1:1"]
        for field in head:
            yield f"{p}{field};"
        for m in range(1, (share - len(head)) // 5 + 1):
            yield f"{p}SF1-1-{m}:SUBFRAME-{n:02d}-{m:06d};"
            yield f"{p}SF2-1-{m}:NO;"
            yield f"{p}SF4-1-{m}-1:{rng.randrange(2, 512)};"
            yield f"{p}SF6-1-{m}:{2 ** rng.randrange(1, 9)};"
            yield f"{p}COM-{m}:{prose(rng, 87)};"


def measurements(count, rng, streams):
    """Lists of measurements in minor words, masks included."""
    share = count // streams
    for n in range(1, streams + 1):
        d = f"D-{n}\\"
        rows = (share - 4) // 7
        yield f"{d}DLN:PCM Stream {n};"
        yield f"{d}ML\\N:1;"
        yield f"{d}MLN-1:List;"
        yield f"{d}MN\\N-1:{rows};"
        for m in range(1, rows + 1):
            yield f"{d}MN-1-{m}:MEASUREMENT-{n:02d}-{m:06d};"
            yield f"{d}MN1-1-{m}:DE;"
            yield f"{d}MN2-1-{m}:D;"
            yield f"{d}LT-1-{m}:MF;"
            yield f"{d}MF-1-{m}:{rng.randrange(2, 512)};"
            yield f"{d}MFM-1-{m}:{rng.randrange(2 ** 64):064b};"
            yield f"{d}COM-1-{m}:{prose(rng, 80)};"


def records(count, rng, streams):
    """Conversion records of 20 fields."""
    for n in range(1, count // 20 + 1):
        c = f"C-{n}\\"
        stream = (n - 1) % streams + 1
        for field in (f"DCN:MEASUREMENT-{stream:02d}-{(n - 1) // streams + 1:06d}",
                      f"TRD1:{prose(rng, 40)}", f"TRD2:M-{rng.randrange(1000)}", f"TRD3:SN{n}",
                      "TRD4:U", "TRD5:02-11-2009", f"TRD7:{prose(rng, 60)}",
                      f"POC1:{prose(rng, 48)}", f"POC2:{prose(rng, 64)}",
                      f"MN1:Measurement number {n}, {prose(rng, 200)}", "MN3:PSI", "MN4:PCM",
                      "BFM:UNS", f"MOT1:{rng.random() * 100:.6f}",
                      f"MOT2:{-rng.random() * 100:.6f}", f"SR:{rng.randrange(1, 2000)}",
                      "DCT:COE", "CO\\N:1", f"CO:{rng.random():.9f}",
                      f"CO-1:{rng.random():.9f}"):
            yield f"{c}{field};"


def others(count, rng, sources):
    """A bus and the commands of a vendor."""
    yield f"M-{sources}\\ID:Source {sources};"
    yield f"M-{sources}\\BSG1:PCM;"
    yield f"M-{sources}\\BB\\DLN:Bus 1;"
    yield f"M-{sources}\\SI\\N:0;"
    rows = count // 2 // 5
    yield "B-1\\DLN:Bus 1;"
    yield "B-1\\NBS\\N:1;"
    yield f"B-1\\NMS\\N-1:{rows};"
    for m in range(1, rows + 1):
        yield f"B-1\\MID-1-{m}:{m};"
        yield f"B-1\\MNA-1-{m}:MESSAGE-{m:024d};"
        yield f"B-1\\SPR-1-{m}:{prose(rng, 70)};"
        yield f"B-1\\TRA-1-{m}:{rng.randrange(31):05b};"
        yield f"B-1\\MN\\N-1-{m}:0;"
    for n in range(1, sources + 1):
        for _ in range(count // 2 // sources):
            yield f"V-{n}\\REC\\SET:{prose(rng, 28)};"


def commands(total, seed, sources, only):
    """About TOTAL commands; the last source has a bus, every other a stream. With ONLY all but
    the head of the document are measurements, or conversion records."""
    rng = random.Random(seed)
    third = int(total / 3)
    streams = sources - 1
    if only == "D":
        yield from general(sources)
        yield from measurements(int(total), rng, streams)
        return
    if only == "C":
        yield from general(sources)
        yield from records(int(total), rng, streams)
        return
    yield from general(sources)
    yield from pcm(third, rng, streams)
    yield from measurements(third, rng, streams)
    yield from records(int(third * 0.7), rng, streams)
    yield from others(int(third * 0.3), rng, sources)


def main(*arguments):
    arguments = list(arguments)
    only = ""
    if "--only" in arguments[:-1]:
        at = arguments.index("--only")
        only = arguments[at + 1]
        del arguments[at:at + 2]
    size_mb, path, sources = (arguments + ["24"])[:3]
    size = int(float(size_mb) * 1_000_000)
    sources = min(max(int(sources), 2), MOST_SOURCES)
    # Longer indices make longer commands, so the number of commands for the size is found
    # by making them twice.
    total = size / 41.7
    total *= size / sum(len(command) + 2 for command in commands(total, size, sources, only))
    count = 0
    with open(path, "w", encoding="ascii", newline="") as out:
        for command in commands(total, size, sources, only):
            out.write(command + "\r\n")
            count += 1
        written = out.tell()
    print(f"{path}: {written / 1e6:.1f} MB, {count} commands")
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
