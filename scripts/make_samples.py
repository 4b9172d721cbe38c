#!/usr/bin/env python3
"""Writes the sample documents, and the strange ones that the tests open.

    make_samples.py           writes them
    make_samples.py --check   exit status 1 if a committed file differs from what is made
"""

import sys
from pathlib import Path

from sample_texts.database import flight_database
from sample_texts.flight_test import flight_test
from sample_texts.mistakes import mistakes
from sample_texts.strange import strange

ROOT = Path(__file__).resolve().parent.parent


def files():
    """{path: bytes} of all files that are made."""
    made = {
        ROOT / "samples/flight-test.tma": flight_test(2009, "flight-test.tma"),
        ROOT / "samples/flight-test-96.tma": flight_test(1996, "flight-test-96.tma"),
        ROOT / "samples/flight-test-11.tma": flight_test(2011, "flight-test-11.tma"),
        ROOT / "samples/flight-test.mdb": flight_database(),
        ROOT / "samples/mistakes.tma": mistakes(),
    }
    for name, content in strange().items():
        made[ROOT / "tests/data/strange" / name] = content
    return made


def check(made):
    wrong = [path for path, content in made.items()
             if not path.exists() or path.read_bytes() != content]
    folder = ROOT / "tests/data/strange"
    wrong += [path for path in folder.glob("*.tma") if path not in made]
    for path in wrong:
        print(f"{path.relative_to(ROOT)} is not what scripts/make_samples.py makes")
    print(f"{len(made)} files compared, {len(wrong)} differ")
    return 1 if wrong else 0


def main(arguments):
    made = files()
    if arguments == ["--check"]:
        return check(made)
    for path, content in made.items():
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)
    print(f"{len(made)} files written")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
