#!/usr/bin/env python3
"""Kills the program at many points of an operation on the document.

Recovery makes of the remaining store the document as it was before the operation, or as it is
after it: never a part of the operation.
"""

import json
import os
import random
import signal
import unittest
from concurrent.futures import ThreadPoolExecutor

import support
from torture_test import recorded_calls

SEED = 20261122
POINTS = 24
WORKERS = 2
LINK = "PCM1"

OTHER = support.lines(
    "G\\106:09", "G\\DSI\\N:1", "G\\DSI-1:Pod", "G\\DST-1:RF", "T-1\\ID:Pod", "M-1\\ID:Pod",
    "M-1\\BB\\DLN:Pod Link", "P-1\\DLN:Pod Link", "P-1\\TF:ONE", "D-1\\DLN:Pod Link",
    "D-1\\ML\\N:1", "D-1\\MLN-1:JUST ONE", "D-1\\MN\\N-1:1", "D-1\\MN-1-1:DELTA",
    *support.conversion(1, "DELTA", "DCT:NON"))

EDITION = "1996"
# Something to change in each group, for the way back to an old edition.
DATED = support.small_document().replace(b"G\\106:09", b"G\\106:99") + support.lines(
    "T-1\\RF4:OTHR", "R-1\\TC1:OTHR", "R-1\\RI4:05-06-2001", "M-1\\SIF2-1:OT", "A-1\\SF3-1:OTH",
    "C-1\\TRD5:05-06-2001")

# A link of packets, which only these editions know.
PACKETS = support.small_document().replace(b"G\\106:09", b"G\\106:07").replace(
    b"P-1\\TF:ONE", b"P-1\\TF:PKTM").replace(b"S-1\\NS\\N:0", b"S-1\\TFL:100")

SOURCES = {"change_edition": DATED, "packet": PACKETS}


def steps(*edits):
    return json.dumps([{"do": do, "at": at, "values": values} for do, at, values in edits])


BUS_STEPS = steps(("set", [], {"TA": "Plane"}),
                  ("add", [1], {"MNA": "New", "TRA": "00101", "STA": "00010", "TRM": "1",
                                "DWC": "4"}),
                  ("add", [1, 1], {"MN": "ON THE BUS"}))
MESSAGE_STEPS = steps(("set", [], {"TA": "Plane"}), ("add", [], {"name": "Inertial"}))
PACKET_STEPS = steps(("set", [], {"TA": "Plane", "VID": "010"}))

# What comes in front of the source, and behind it.
OPERATIONS = {
    "delete": (["--answer", "140=yes", "source", "delete"], ["RF"]),
    "copy": (["source", "copy"], ["RF", "Second", "--prefix", "B_"]),
    "import": (["source", "import"], ["{other}", "Pod", "--conversions"]),
    "rename": (["source", "rename"], ["RF", "Radio"]),
    "rename_link": (["link", "rename"], [LINK, "Renamed"]),
    "set": (["set"], ["G\\PN=ANOTHER", "T-1\\RF1=1450.5", "M-1\\BSG1=PCM"]),
    "rewrite": (["--answer", "241=yes", "rewrite"], [LINK]),
    "bus": (["bus"], [LINK, "--edit", BUS_STEPS]),
    "message": (["message"], [LINK, "--edit", MESSAGE_STEPS]),
    "packet": (["packet"], [LINK, "--edit", PACKET_STEPS]),
}


def tree_of(folder):
    """Names, bytes and times of all files below a folder, but for the mark of a recovery."""
    return {str(path.relative_to(folder)): (path.read_bytes(), path.stat().st_mtime_ns)
            for path in sorted(folder.rglob("*"))
            if path.is_file() and path.name != support.RECOVERED}


def content_of(document):
    """What a document says, without what each save writes anew."""
    return sorted(support.plain_commands(document)), support.conversion_records(document)


def run(case, name, faults):
    """Runs an operation from the load up to the save."""
    if name == "change_edition":
        return case.run(case.source, EDITION, case.target, faults=faults,
                        program=case.workshop.change_edition)
    front, behind = OPERATIONS[name]
    other = case.root / "other.tma"
    other.write_bytes(OTHER)
    behind = [str(other) if part == "{other}" else part for part in behind]
    return case.run("--now", support.NOW, *front, case.source, *behind, "-o", case.target,
                    faults=faults)


class Expected:
    """What a run that nobody kills writes and does."""

    def __init__(self, workshop, name, source):
        case = workshop.case(f"{name}-before", source)
        case.save()
        self.before = content_of(support.contents(case.target))
        case.remove()
        case = workshop.case(f"{name}-recorded", source)
        log = workshop.folder / f"{name}.log"
        self.source = source
        self.outcome = run(case, name, {"LOG": log})
        self.calls = recorded_calls(log)
        written = support.contents(case.target)
        self.after = None if written is None else content_of(written)
        self.removal = min((call.number for call in self.calls
                            if call.name == "unlink" and call.path.startswith(str(case.temp))
                            and call.path.endswith("/[kavu]GTMP.G")), default=0)
        self.links = [call.number for call in self.calls if call.name == "link"]
        case.remove()


class OperationKillTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.workshop = support.Workshop()
        cls.addClassCleanup(cls.workshop.close)

    def recovered(self, case):
        """What is recovered from the one store that is left, and the problems on the way."""
        left = sorted(case.temp.iterdir())
        if len(left) != 1:
            return None, [f"not one store is left: {left}"]
        outcome = case.run("--json", "recover", "--list")
        stores = [store["folder"] for store in json.loads(outcome.out)["stores"]]
        if stores != [str(left[0])]:
            return None, [f"recover --list finds {stores}"]
        before = tree_of(left[0])
        output = case.root / "recovered.tma"
        outcome = case.run("--now", support.NOW, "recover", left[0], "-o", output)
        problems = [] if tree_of(left[0]) == before else ["recover has changed the store"]
        written = support.contents(output)
        if written is None:
            return None, [*problems, f"nothing is recovered: {outcome}"]
        return content_of(written), problems

    def kill_at(self, name, expected, number):
        case = self.workshop.case(f"{name}-{number}", expected.source)
        outcome = run(case, name, {"KILL_AT": number})
        if outcome.status != -signal.SIGKILL:
            return None, f"{name} call {number}: it was not killed: {outcome}"
        content, problems = self.recovered(case)
        if support.contents(case.source) != expected.source:
            problems.append("the source is damaged")
        state = ("before" if content == expected.before else
                 "after" if content == expected.after else None)
        if state is None and not problems:
            commands = content[0]
            problems.append(
                "a part of the operation: more than before: "
                f"{[c for c in commands if c not in expected.before[0]][:4]}, less: "
                f"{[c for c in expected.before[0] if c not in commands][:4]}, records: "
                f"{sorted(content[1].keys() ^ expected.before[1].keys())[:4]}")
        case.remove()
        if not problems:
            return state, None
        call = expected.calls[number - 1]
        return state, (f"{name} killed at call {number} of {len(expected.calls)}, {call.name} "
                       f"{os.path.basename(call.path)}: " + "; ".join(problems))

    def kill_in(self, name):
        expected = Expected(self.workshop, name, SOURCES.get(name, support.small_document()))
        self.assertIsNotNone(expected.after, expected.outcome)
        self.assertFalse(expected.after == expected.before, "an operation that changes nothing")
        self.assertGreater(len(expected.links), 0, "nothing was kept")
        # From the first file that is kept to the first file of the store that is deleted.
        first, last = expected.links[0], expected.removal
        chooser = random.Random(f"{SEED}-{name}")
        within = range(first, last + 1)
        # Half of the points where files are kept and changed, and half anywhere.
        near = [number for number in within if number <= expected.links[-1] + 40]
        points = sorted({*chooser.sample(near, min(POINTS // 2, len(near))),
                         *chooser.sample(within, min(POINTS // 2, len(within))), last})
        with ThreadPoolExecutor(WORKERS) as pool:
            found = list(pool.map(lambda number: self.kill_at(name, expected, number), points))
        problems = [text for _, text in found if text is not None]
        states = [state for state, _ in found]
        print(f"{name}: {len(points)} kills in {len(expected.calls)} calls, "
              f"{states.count('before')} give the document of before, {states.count('after')} that "
              f"of after, {len(problems)} findings", flush=True)
        self.assertEqual(problems, [])
        self.assertGreater(states.count("before"), 0)
        self.assertGreater(states.count("after"), 0)

    def test_killed_in_a_deletion(self):
        self.kill_in("delete")

    def test_killed_in_a_copy(self):
        self.kill_in("copy")

    def test_killed_in_an_import(self):
        self.kill_in("import")

    def test_killed_in_a_rename_of_a_source(self):
        self.kill_in("rename")

    def test_killed_in_a_rename_of_a_link(self):
        self.kill_in("rename_link")

    def test_killed_in_a_change_of_attributes(self):
        self.kill_in("set")

    def test_killed_in_a_rewrite_of_a_stream(self):
        self.kill_in("rewrite")

    def test_killed_in_an_edit_of_buses(self):
        self.kill_in("bus")

    def test_killed_in_an_edit_of_messages(self):
        self.kill_in("message")

    def test_killed_in_an_edit_of_packets(self):
        self.kill_in("packet")

    def test_killed_in_a_change_of_the_edition(self):
        self.kill_in("change_edition")


if __name__ == "__main__":
    unittest.main(verbosity=2)
