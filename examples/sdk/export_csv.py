#!/usr/bin/env python3
"""Writes all measurements of a file, with their places and conversions, as delimited text.

    export_csv.py FILE OUT.csv
"""

import csv
import sys
from typing import Iterator, List

import kavu_sdk

COLUMNS = ["stream", "measurement", "bits", "location", "fragment", "first word", "word interval",
           "last word", "first frame", "frame interval", "last frame", "mask", "conversion"]


def rows(session: kavu_sdk.Session, stream: kavu_sdk.Stream) -> Iterator[List[object]]:
    """A row for each fragment; one without a place for a measurement that has none."""
    for measurement in session.measurements(stream.number):
        record = session.conversion(measurement.name)
        kind = record.get("DCT", "") if record is not None else ""
        head = [stream.name, measurement.name, measurement.word_length]
        if not measurement.locations:
            yield head + [""] * 9 + [kind]
        for number, location in enumerate(measurement.locations, 1):
            for fragment in location.fragments:
                yield head + [number, fragment.number, fragment.word.start,
                              fragment.word.interval, fragment.word.end, fragment.frame.start,
                              fragment.frame.interval, fragment.frame.end, fragment.mask, kind]


def main(path: str, output: str) -> int:
    """Streams that cannot be read are named, and left out."""
    with kavu_sdk.Session(path) as session, open(output, "w", newline="",
                                                  encoding="utf-8") as file:
        writer = csv.writer(file)
        writer.writerow(COLUMNS)
        left_out = 0
        for stream in session.streams():
            try:
                writer.writerows(rows(session, stream))
            except kavu_sdk.Error as error:
                print(f"{stream.name}: {error}", file=sys.stderr)
                left_out += 1
    return 1 if left_out else 0


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
