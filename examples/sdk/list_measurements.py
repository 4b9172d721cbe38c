#!/usr/bin/env python3
"""Lists the measurements of a stream with their places and masks.

    list_measurements.py FILE LINK
"""

import sys

import kavu_sdk


def main(path: str, link: str) -> int:
    """Prints a line for each fragment of each location."""
    with kavu_sdk.Session(path) as session:
        for measurement in session.measurements(link):
            print(f"{measurement.name}: {measurement.word_length} bits")
            for number, location in enumerate(measurement.locations, 1):
                for fragment in location.fragments:
                    print(f"  location {number}, fragment {fragment.number}: "
                          f"words {list(fragment.word)}, frames {fragment.frame.start} to "
                          f"{fragment.frame.end} by {fragment.frame.interval}, "
                          f"mask {fragment.mask}")
        for error in session.errors:
            print(error.strip(), file=sys.stderr)
    return 0


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
