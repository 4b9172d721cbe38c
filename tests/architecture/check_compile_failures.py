#!/usr/bin/env python3
"""Compiles code that must not compile, and reports what was accepted.

    check_compile_failures.py COMPILER SOURCE_DIR

Each file of the folder compile_failures holds pieces of code for values of CASE. Case 0 must
compile. The others must be refused, and the compiler must name what is in the comment
after their `#elif CASE == N`: a piece that is refused for another reason proves nothing.

Every piece is compiled by itself, so that no refusal hides another one. What they include is
compiled once for all of them: the headers take most of the time, the pieces next to nothing.
"""

import os
import re
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

INCLUDE = re.compile(r'^#include ".+"$', re.M)
CASE = re.compile(r"^#elif CASE == (\d+) +// (\w+)$", re.M)


def run(compiler, source_dir, *arguments):
    result = subprocess.run(
        [compiler, "-std=c++20", "-I", source_dir / "src", *arguments],
        capture_output=True, text=True, check=False, stdin=subprocess.DEVNULL,
        env={**os.environ, "LC_ALL": "C"})
    return result.returncode, result.stderr


def precompile(compiler, source_dir, header, files):
    """Compiles what the files include; true if the compiler took it."""
    includes = sorted({line for path in files for line in INCLUDE.findall(path.read_text())})
    header.write_text("\n".join(includes) + "\n")
    code, errors = run(compiler, source_dir, "-x", "c++-header", header, "-o", f"{header}.gch")
    if code != 0:
        print(f"the headers are refused\n{errors}")
    return code == 0


def finding(compiler, source_dir, header, path, case, named):
    """What is wrong with a case, or nothing."""
    code, errors = run(compiler, source_dir, "-fsyntax-only", f"-DCASE={case}", "-include",
                       header, path)
    place = f"{path.name}, case {case}"
    if case == 0:
        return f"{place}: refused\n{errors}" if code != 0 else None
    if code == 0:
        return f"{place}: compiles"
    return None if named in errors else f"{place}: refused without '{named}'\n{errors}"


def main(compiler, source_dir):
    source_dir = Path(source_dir)
    files = sorted((Path(__file__).parent / "compile_failures").glob("*.cpp"))
    jobs = []
    for path in files:
        cases = [(int(number), named) for number, named in CASE.findall(path.read_text())]
        if [number for number, _ in cases] != list(range(1, len(cases) + 1)) or not cases:
            print(f"{path.name}: the cases are not numbered from 1")
            return 1
        jobs += [(path, case, named) for case, named in [(0, None), *cases]]
    with tempfile.TemporaryDirectory() as folder:
        header = Path(folder) / "headers.h"
        if not precompile(compiler, source_dir, header, files):
            return 1
        with ThreadPoolExecutor(max_workers=os.cpu_count()) as pool:
            findings = [text for text in pool.map(
                lambda job: finding(compiler, source_dir, header, *job), jobs) if text]
    print("\n".join(findings) or f"{len(jobs)} cases are as they must be")
    return 1 if findings or not jobs else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
