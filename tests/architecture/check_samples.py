#!/usr/bin/env python3
"""Opens the sample documents with the built program.

    check_samples.py KAVU_CLI SOURCE_DIR

The flight tests are without a fault and survive a save; for the one with mistakes each message
is reported that the manual's page on messages explains.
"""

import json
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path


class Samples:
    def __init__(self, program, source, scratch):
        self.program = program
        self.source = Path(source)
        self.scratch = Path(scratch)
        self.findings = []
        self.environment = dict(os.environ, TEMP=scratch, XDG_CONFIG_HOME=scratch + "/config")

    def run(self, *arguments):
        result = subprocess.run(
            [self.program, "--json", "--now", "2009-06-14T08:30:00", *map(str, arguments)],
            capture_output=True, text=True, check=False, stdin=subprocess.DEVNULL,
            env=self.environment)
        return result.returncode, json.loads(result.stdout)

    def expect(self, what, got, wanted):
        if got != wanted:
            self.findings.append(f"{what}: {got}, not {wanted}")

    def flight_test(self, name, version):
        path = self.source / "samples" / name
        status, report = self.run("check", path)
        self.expect(f"{name}: status", status, 0)
        self.expect(f"{name}: messages", report["messages"], [])
        self.expect(f"{name}: questions", report["questions"], [])
        self.expect(f"{name}: version", report["version"], version)
        self.expect(f"{name}: changed", report["changed"], False)
        _, tree = self.run("tree", path)
        self.expect(f"{name}: records", len(tree["conversions"]), 150)
        sources = {s["name"]: [link["name"] for link in s["links"]] for s in tree["dataSources"]}
        self.expect(f"{name}: links of the S-band source", sources.get("S-Band Telemetry"),
                    ["PCM Stream 2", "PCM Stream 3"])
        self.expect(f"{name}: number of sources", len(sources), 3)
        saved = self.scratch / name
        status, _ = self.run("save", path, "-o", saved)
        self.expect(f"{name}: status of the save", status, 0)
        again = self.scratch / ("again-" + name)
        os.makedirs(again)
        status, _ = self.run("save", saved, "-o", again / name)
        self.expect(f"{name}: status of the second save", status, 0)
        if saved.read_bytes() != (again / name).read_bytes():
            self.findings.append(f"{name}: a second save differs from the first")
        lost = [line for line in path.read_text("ascii").split(";\n")
                if not line.lstrip().startswith(("COMMENT:", "C-"))
                and line.strip() + ";" not in saved.read_text("ascii")]
        self.expect(f"{name}: commands that a save lost", lost, [])

    def mistakes(self):
        status, report = self.run("check", self.source / "samples/mistakes.tma")
        self.expect("mistakes.tma: status", status, 1)
        told = {m["id"] for m in report["messages"]} | {q["id"] for q in report["questions"]}
        page = (self.source / "docs/manual/messages.md").read_text("utf-8")
        explained = {int(n) for n in re.findall(r"^### (\d+)\b", page, re.MULTILINE)}
        if len(explained) < 6:
            self.findings.append(f"the manual explains few messages: {explained}")
        self.expect("mistakes.tma: messages with a number, against the manual",
                    sorted(told - {0}), sorted(explained))


def main(program, source):
    with tempfile.TemporaryDirectory() as scratch:
        samples = Samples(program, source, scratch)
        samples.flight_test("flight-test.tma", 2009)
        samples.flight_test("flight-test-11.tma", 2011)
        # That edition has no field for itself; who reads such files sets the key.
        old = Path(scratch, "old.ini")
        old.write_text("[KAVU-9]\r\nIRIGInputVersion=1996\r\n", encoding="ascii")
        run = samples.run
        samples.run = lambda *arguments: run("--settings", old, *arguments)
        samples.flight_test("flight-test-96.tma", 1996)
        samples.run = run
        samples.mistakes()
    for finding in samples.findings:
        print(finding)
    print(f"{len(samples.findings)} findings")
    return 1 if samples.findings else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
