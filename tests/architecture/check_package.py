#!/usr/bin/env python3
"""Makes the Debian package of a built tree, and has it judged by those who judge packages.

    check_package.py CPACK BUILD_DIR SCRATCH
"""

import os
import shutil
import subprocess
import sys
from pathlib import Path


def run(*command, **more):
    return subprocess.run(command, capture_output=True, text=True, check=False,
                          stdin=subprocess.DEVNULL, **more)


def check_package(package, tree):
    environment = {**os.environ, "LC_ALL": "C.UTF-8"}
    judgement = run("lintian", "--allow-root", "--fail-on", "error,warning", str(package),
                    env=environment)
    if judgement.returncode or judgement.stdout:
        yield f"lintian: {judgement.stdout}{judgement.stderr}"
    unpacked = run("dpkg-deb", "-x", str(package), str(tree))
    if unpacked.returncode:
        yield f"dpkg-deb: {unpacked.stderr}"
    judgement = run("appstreamcli", "validate-tree", "--no-net", "--no-color", str(tree),
                    env=environment)
    if judgement.returncode or "Validation was successful" not in judgement.stdout:
        yield f"appstreamcli: {judgement.stdout}{judgement.stderr}"


def main(cpack, build, scratch_text):
    scratch = Path(scratch_text)
    shutil.rmtree(scratch, ignore_errors=True)
    made = run(cpack, "--config", f"{build}/CPackConfig.cmake", "-B", str(scratch))
    packages = sorted(scratch.glob("kavu_*.deb"))
    if made.returncode or len(packages) != 1:
        findings = [f"cpack: {made.stdout}{made.stderr}"]
    else:
        findings = list(check_package(packages[0], scratch / "tree"))
    for finding in findings:
        print(finding)
    print(f"{len(findings)} findings")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
