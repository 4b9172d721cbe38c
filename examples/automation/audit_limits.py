#!/usr/bin/env python3
"""Writes the conversions and limits of all measurements of a file to a sheet, with what looks wrong.

    audit_limits.py FILE.tma OUT.csv

The exit status is 1 if anything looks wrong.
"""

import csv
import os
import sys
from typing import Callable, List

import kavu
from measurements import names_of

COLUMNS = ["stream", "measurement", "type", "units", "low limit", "low warning", "low value",
           "high value", "high warning", "high limit", "remarks"]


def told(get: Callable[[str], str], name: str) -> str:
    """A field of a conversion; empty where the record or the edition has none."""
    try:
        return get(name)
    except (kavu.NotFound, kavu.NotInEdition):
        return ""


def remarks(fields: List[str]) -> str:
    """What is wrong with limits in rising order."""
    found = []
    numbers = []
    for field in fields:
        try:
            numbers.append(float(field))
        except ValueError:
            if field:
                found.append(f"'{field}' is no number")
    if numbers != sorted(numbers):
        found.append("limits do not rise")
    return "; ".join(found)


def rows_of(editor: kavu.Kavu, stream: str) -> List[List[str]]:
    """A row for each measurement of the loaded format."""
    rows = []
    for name in names_of(editor):
        kind = told(editor.GetMeasurementEuConversionType, name)
        limits = [told(get, name) for get in (
            editor.GetMeasurementEuLowLimit, editor.GetMeasurementEuLowWarning,
            editor.GetMeasurementEuLowValue, editor.GetMeasurementEuHiValue,
            editor.GetMeasurementEuHiWarning, editor.GetMeasurementEuHiLimit)]
        rows.append([stream, name, kind, told(editor.GetMeasurementEuUnits, name), *limits,
                     remarks(limits) if kind else "no conversion"])
    return rows


def main(path: str, output: str) -> int:
    """All streams, one after the other; the file stays as it is."""
    editor = kavu.Kavu()
    editor.OpenTmatsFile(0, os.path.abspath(path))
    rows: List[List[str]] = []
    try:
        for number in range(1, editor.CountPCMStreams() + 1):
            editor.LoadPCMFormat(0, number)
            rows += rows_of(editor, editor.GetPCMStreamName(number))
    finally:
        editor.CloseTmatsFile(0, False)
    with open(output, "w", newline="", encoding="utf-8") as file:
        writer = csv.writer(file)
        writer.writerow(COLUMNS)
        writer.writerows(rows)
    return 1 if any(row[-1] for row in rows) else 0


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
