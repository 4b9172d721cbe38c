#!/usr/bin/env python3
"""Makes the Debian packages of a built tree, and has them judged by those who judge packages.

    check_package.py CPACK BUILD_DIR SCRATCH
"""

import os
import shutil
import subprocess
import sys
from pathlib import Path


PACKAGES = ["kavu", "libkavu-sdk-dev", "libkavu-sdk1", "python3-kavu", "python3-kavu-sdk"]


def run(*command, **more):
    return subprocess.run(command, capture_output=True, text=True, check=False,
                          stdin=subprocess.DEVNULL, **more)


def check_package(package, tree):
    environment = {**os.environ, "LC_ALL": "C.UTF-8"}
    judgement = run("lintian", "--allow-root", "--fail-on", "error,warning", str(package),
                    env=environment)
    if judgement.returncode or judgement.stdout:
        yield f"lintian: {judgement.stdout}{judgement.stderr}"
    tree.mkdir(parents=True)
    unpacked = run("dpkg-deb", "-x", str(package), str(tree))
    if unpacked.returncode:
        yield f"dpkg-deb: {unpacked.stderr}"
    if not (tree / "usr/share/metainfo").exists():
        return
    judgement = run("appstreamcli", "validate-tree", "--no-net", "--no-color", str(tree),
                    env=environment)
    if judgement.returncode or "Validation was successful" not in judgement.stdout:
        yield f"appstreamcli: {judgement.stdout}{judgement.stderr}"


def main(cpack, build, scratch_text):
    scratch = Path(scratch_text)
    shutil.rmtree(scratch, ignore_errors=True)
    made = run(cpack, "--config", f"{build}/CPackConfig.cmake", "-B", str(scratch))
    packages = sorted(scratch.glob("*.deb"))
    names = sorted(package.name.partition("_")[0] for package in packages)
    if made.returncode or names != PACKAGES:
        findings = [f"cpack: {names}; {made.stdout}{made.stderr}"]
    else:
        findings = []
        for package in packages:
            findings += check_package(package, scratch / "tree" / package.stem)
    for finding in findings:
        print(finding)
    print(f"{len(findings)} findings")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
