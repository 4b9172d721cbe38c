#!/usr/bin/env python3
"""Makes the measurements of a stream, with their conversions, from a list.

    stream_from_csv.py FILE.tma STREAM LIST.csv

The list has a head with the columns name, word, frame, mask, locations, interval, type, units, low,
high and coefficients (the offset first, with blanks between them). Only name and word are needed. The
file is saved when all rows are made; if one fails it is named, and the file stays as it was.
"""

import csv
import os
import sys
from typing import Dict

import kavu


def stream_number(editor: kavu.Kavu, name: str) -> int:
    """The number of a stream by its name."""
    for number in range(1, editor.CountPCMStreams() + 1):
        if editor.GetPCMStreamName(number) == name:
            return number
    raise SystemExit(f"there is no PCM stream '{name}'")


def make(editor: kavu.Kavu, row: Dict[str, str]) -> None:
    """One measurement with its conversion."""
    name = row["name"]
    editor.CreateMeasurement(0, int(row["word"]), int(row.get("frame") or 1), name, row.get("mask") or "",
                             "", "", "", int(row.get("locations") or 1), int(row.get("interval") or 0))
    if row.get("type"):
        editor.SetMeasurementEuConversionType(name, row["type"])
    if row.get("units"):
        editor.SetMeasurementEuUnits(name, row["units"])
    if row.get("low"):
        editor.SetMeasurementEuLowLimit(name, row["low"])
    if row.get("high"):
        editor.SetMeasurementEuHiLimit(name, row["high"])
    for term, coefficient in enumerate((row.get("coefficients") or "").split()):
        editor.SetMeasurementEuCoefficient(name, term, float(coefficient))


def main(path: str, stream: str, listing: str) -> int:
    """Makes all rows or none."""
    editor = kavu.Kavu()
    editor.OpenTmatsFile(0, os.path.abspath(path))
    try:
        editor.LoadPCMFormat(0, stream_number(editor, stream))
        with open(listing, newline="", encoding="utf-8") as file:
            for number, row in enumerate(csv.DictReader(file), 2):
                try:
                    make(editor, row)
                except (kavu.Error, ValueError) as error:
                    print(f"{listing}:{number}: {row.get('name')}: {error}", file=sys.stderr)
                    return 1
        editor.SaveTmatsFile(0)
    finally:
        editor.CloseTmatsFile(0, False)
    return 0


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
