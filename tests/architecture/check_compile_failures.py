#!/usr/bin/env python3
"""Compiles code that must not compile, and reports what was accepted.

    check_compile_failures.py COMPILER SOURCE_DIR

Each file of the folder compile_failures holds pieces of code for values of CASE. Case 0 must
compile. The others must be refused, and the compiler must name what is in the comment
after their `#elif CASE == N`: a piece that is refused for another reason proves nothing.
"""

import os
import re
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

CASE = re.compile(r"^#elif CASE == (\d+) +// (\w+)$", re.M)


def compile_case(compiler, source_dir, path, case):
    result = subprocess.run(
        [compiler, "-std=c++20", "-fsyntax-only", f"-DCASE={case}", "-I", source_dir / "src", path],
        capture_output=True, text=True, check=False, stdin=subprocess.DEVNULL,
        env={**os.environ, "LC_ALL": "C"})
    return result.returncode, result.stderr


def finding(compiler, source_dir, path, case, named):
    """What is wrong with a case, or nothing."""
    code, errors = compile_case(compiler, source_dir, path, case)
    place = f"{path.name}, case {case}"
    if case == 0:
        return f"{place}: refused\n{errors}" if code != 0 else None
    if code == 0:
        return f"{place}: compiles"
    return None if named in errors else f"{place}: refused without '{named}'\n{errors}"


def main(compiler, source_dir):
    source_dir = Path(source_dir)
    jobs = []
    for path in sorted((Path(__file__).parent / "compile_failures").glob("*.cpp")):
        cases = [(int(number), named) for number, named in CASE.findall(path.read_text())]
        if [number for number, _ in cases] != list(range(1, len(cases) + 1)) or not cases:
            print(f"{path.name}: the cases are not numbered from 1")
            return 1
        jobs += [(path, case, named) for case, named in [(0, None), *cases]]
    with ThreadPoolExecutor(max_workers=os.cpu_count()) as pool:
        findings = [text for text in pool.map(
            lambda job: finding(compiler, source_dir, *job), jobs) if text]
    print("\n".join(findings) or f"{len(jobs)} cases are as they must be")
    return 1 if findings or not jobs else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
