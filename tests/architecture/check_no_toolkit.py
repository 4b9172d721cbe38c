#!/usr/bin/env python3
"""Configures the tree with the toolkit forbidden, and asserts that nothing asks for it.

    check_no_toolkit.py CMAKE SOURCE_DIR BUILD_DIR
"""

import shutil
import subprocess
import sys
from pathlib import Path


def main(cmake, source, build):
    shutil.rmtree(build, ignore_errors=True)
    # With a disabled package find_package(... REQUIRED) is an error, installed or not.
    command = [cmake, "-S", source, "-B", build, "-G", "Ninja", "-DKAVU_TESTS=OFF",
               "-DKAVU_APP=OFF", "-DCMAKE_DISABLE_FIND_PACKAGE_Qt6=ON",
               "-DCMAKE_DISABLE_FIND_PACKAGE_Qt5=ON"]
    run = subprocess.run(command, capture_output=True, text=True, check=False)
    if run.returncode:
        print(run.stdout, run.stderr)
        return 1
    ninja = Path(build, "build.ninja").read_text(encoding="utf-8")
    if "bin/kavu-cli" not in ninja:
        print("the program for the terminal is not part of the build")
        return 1
    if "Qt6" in ninja:
        print("the build mentions the toolkit")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
