#!/usr/bin/env python3
"""Gives all measurements of a stream whose names begin with one prefix another.

    rename_by_prefix.py FILE.tma STREAM OLD NEW

A name that cannot be changed is told with the reason, and stays.
"""

import os
import sys

import kavu
from measurements import names_of
from stream_from_csv import stream_number


def main(path: str, stream: str, old: str, new: str) -> int:
    """Renames, and saves if any name has changed."""
    editor = kavu.Kavu()
    editor.OpenTmatsFile(0, os.path.abspath(path))
    kept = 0
    try:
        editor.LoadPCMFormat(0, stream_number(editor, stream))
        for name in names_of(editor):
            if not name.startswith(old):
                continue
            try:
                editor.SetMeasurementName(name, new + name[len(old):])
                print(f"{name} is {new + name[len(old):]}")
            except kavu.Error as error:
                print(f"{name}: {error}", file=sys.stderr)
                kept += 1
        if editor.IsPCMFormatChanged():
            editor.SaveTmatsFile(0)
    finally:
        editor.CloseTmatsFile(0, False)
    return 1 if kept else 0


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
