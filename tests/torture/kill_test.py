#!/usr/bin/env python3
"""Kills the program at many points of an open and of a save.

The source is never damaged; the target is untouched, whole, or its former contents are
whole in the backup; the store that is left is found, and what was split is rebuilt from it
without a change in the store.
"""

import collections
import json
import os
import random
import signal
import time
import unittest
from concurrent.futures import ThreadPoolExecutor

import support
from torture_test import recorded_calls

FORMER = b"G\\PN:FORMER;\r\n" + b"G\\COM:what the target held before;\r\n" * 400
SEED = 20240506
POINTS = 50
TIMED_POINTS = 25
WORKERS = 2


def tree_of(folder):
    """Names, bytes and times of a folder's files, but for the mark of a recovery."""
    return {path.name: (path.read_bytes(), path.stat().st_mtime_ns)
            for path in sorted(folder.iterdir())
            if path.is_file() and path.name != support.RECOVERED}


class Expected:
    """What a run that nobody kills writes and does."""

    def __init__(self, workshop, command, source):
        self.command = command
        self.source = source
        case = workshop.case(f"{command}-recorded", source, FORMER)
        log = workshop.folder / f"{command}.log"
        started = time.monotonic()
        outcome = run(case, command, {"LOG": log})
        self.seconds = time.monotonic() - started
        self.status = outcome.status
        self.calls = recorded_calls(log)
        # The right output is that of a save, also for a run that only opens.
        case.target.unlink()
        case.save()
        self.output = support.contents(case.target)
        self.plain = support.plain_commands(self.output)
        self.records = support.conversion_records(self.output)
        # The order of what happens: the source is read to its end and closed, all is in
        # the store, and at the end the store is emptied.
        # The file may be looked at later, for a change by others or for its edition.
        of_source = [call for call in self.calls if call.path == str(case.source)]
        first_read = next(call.number for call in of_source if call.name == "read")
        self.split_done = next(call.number for call in of_source
                               if call.name == "close" and call.number > first_read)
        general = str(case.temp)
        self.removal = min(call.number for call in self.calls
                           if call.name == "unlink" and call.path.startswith(general)
                           and call.path.endswith("[kavu]GTMP.G"))
        case.remove()


def run(case, command, faults=None):
    if command == "check":
        return case.run("--now", support.NOW, "check", case.source, faults=faults)
    return case.save(faults=faults)


def start(case, command):
    if command == "check":
        return case.start("--now", support.NOW, "check", case.source)
    return case.start("--now", support.NOW, "save", case.source, "-o", case.target)


class KillTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.rebuilt = collections.Counter()
        cls.workshop = support.Workshop()
        cls.addClassCleanup(cls.workshop.close)
        source = support.medium_document()
        cls.expected = {command: Expected(cls.workshop, command, source)
                        for command in ("check", "save")}

    def test_the_medium_document_is_saved_whole(self):
        expected = self.expected["save"]
        self.assertIn(expected.status, (0, 1))
        self.assertGreater(len(support.commands_of(expected.source)), 5000)
        self.assertEqual(support.conversion_records(expected.source).keys(),
                         expected.records.keys())
        self.assertEqual(sorted(support.plain_commands(expected.source)), sorted(expected.plain))

    # --- one kill ------------------------------------------------------------------------

    def files_problems(self, case, expected):
        problems = []
        if support.contents(case.source) != expected.source:
            problems.append("the source is damaged")
        target = support.contents(case.target)
        if target not in (FORMER, expected.output) and support.contents(case.backup) != FORMER:
            problems.append("the target is partial and the backup is not whole")
        return problems

    def listed_stores(self, case):
        outcome = case.run("--json", "recover", "--list")
        stores = json.loads(outcome.out)["stores"] if outcome.status in (0, 1) else None
        return [store["folder"] for store in stores] if stores is not None else str(outcome)

    def content_problems(self, output, expected, all_split):
        problems = []
        plain = support.plain_commands(output)
        right = set(expected.plain)
        strange = [command for command in plain if command not in right]
        if strange:
            problems.append(f"commands that nobody wrote: {strange[:3]}")
        if len(plain) != len(set(plain)):
            problems.append("commands are doubled")
        records = support.conversion_records(output)
        for name, fields in records.items():
            if name not in expected.records:
                problems.append(f"a conversion that nobody wrote: {name}")
            elif all_split and fields != expected.records[name]:
                problems.append(f"the conversion {name} has changed: {str(fields)[:300]}")
        if all_split and sorted(plain) != sorted(expected.plain):
            lost = right - set(plain)
            problems.append(f"{len(lost)} commands are lost: {sorted(lost)[:3]}")
        if all_split and records.keys() != expected.records.keys():
            lost = expected.records.keys() - records.keys()
            problems.append(f"{len(lost)} conversions are lost: {sorted(lost)[:3]}")
        return problems

    def recovery_problems(self, case, expected, all_split):
        left = sorted(path for path in case.temp.iterdir())
        if len(left) > 1:
            return [f"more than one store is left: {left}"]
        listed = self.listed_stores(case)
        if listed != [str(path) for path in left]:
            return [f"recover --list finds {listed}, left are {left}"]
        if not left:
            return []
        before = tree_of(left[0])
        output = case.root / "recovered.tma"
        outcome = case.run("--now", support.NOW, "recover", left[0], "-o", output)
        problems = []
        if tree_of(left[0]) != before:
            problems.append("recover has changed the store")
        if sorted(case.temp.iterdir()) != left:
            problems.append("recover has left something of its own")
        recovered = support.contents(output)
        if outcome.status in (0, 1) and recovered is not None:
            self.rebuilt[expected.command, all_split] += 1
            problems += self.content_problems(recovered, expected, all_split)
        elif all_split:
            problems.append("nothing is recovered")
        elif outcome.status != 2:
            problems.append("recover ends with no output and no failure")
        return [f"{problem}\n{outcome}" for problem in problems]

    def kill_at(self, command, number, torn):
        expected = self.expected[command]
        case = self.workshop.case(f"{command}-{number}-{torn}", expected.source, FORMER)
        faults = {"KILL_AT": number, **({"SHORT": 1} if torn else {})}
        outcome = run(case, command, faults)
        if outcome.status != -signal.SIGKILL:
            return f"{command} call {number}: it was not killed: {outcome}"
        # In front of the closing of the source all is read, but not all is in the store.
        all_split = expected.split_done < number <= expected.removal
        problems = (self.files_problems(case, expected)
                    + self.recovery_problems(case, expected, all_split))
        case.remove()
        if not problems:
            return None
        call = expected.calls[number - 1]
        return (f"{command} killed at call {number} of {len(expected.calls)}, {call.name} "
                f"{os.path.basename(call.path)}{' torn' if torn else ''}, all split: "
                f"{all_split}: " + "; ".join(problems))

    def points_of(self, command):
        chooser = random.Random(f"{SEED}-{command}")
        calls = self.expected[command].calls
        count = len(calls)
        # One point in each of as many parts of the run: random, and spread over all of it.
        points = [chooser.randint(count * part // POINTS + 1, count * (part + 1) // POINTS)
                  for part in range(POINTS)]
        torn = [call.number for call in calls if call.name == "write"]
        return ([(number, False) for number in points]
                + [(number, True) for number in chooser.sample(torn, min(POINTS // 5, len(torn)))])

    def kill_at_points(self, command):
        points = self.points_of(command)
        self.assertGreaterEqual(len(points), POINTS)
        with ThreadPoolExecutor(WORKERS) as pool:
            found = list(pool.map(lambda point: self.kill_at(command, *point), points))
        findings = [text for text in found if text is not None]
        expected = self.expected[command]
        whole = self.rebuilt[command, True]
        print(f"{command}: {len(points)} kills in {len(expected.calls)} calls, {whole} stores "
              f"rebuilt whole, {self.rebuilt[command, False]} in part, {len(findings)} findings",
              flush=True)
        self.assertEqual(len(findings), 0, "\n\n".join(findings[:10]))
        # Kills that leave nothing to rebuild would prove nothing.
        self.assertGreater(whole, POINTS // 4)

    def test_killed_at_calls_of_an_open(self):
        self.kill_at_points("check")

    def test_killed_at_calls_of_a_save(self):
        self.kill_at_points("save")

    # --- by the clock --------------------------------------------------------------------

    def kill_after(self, command, number, delay):
        expected = self.expected[command]
        case = self.workshop.case(f"{command}-timed-{number}", expected.source, FORMER)
        process = start(case, command)
        time.sleep(delay)
        process.kill()
        process.communicate()
        # Where it was is not known, so no more is asked than holds at every point.
        problems = (self.files_problems(case, expected)
                    + self.recovery_problems(case, expected, False))
        case.remove()
        return process.returncode == -signal.SIGKILL, problems

    def kill_by_the_clock(self, command):
        chooser = random.Random(f"{SEED}-{command}-clock")
        latest = self.expected[command].seconds
        killed = 0
        findings = []
        attempts = 0
        while killed < TIMED_POINTS and attempts < 20 * TIMED_POINTS:
            attempts += 1
            delay = chooser.uniform(0, latest)
            was_running, problems = self.kill_after(command, attempts, delay)
            killed += was_running
            if not was_running:
                # The machine is faster than it was; what is later would miss as well.
                latest = max(delay, latest / 2)
            findings += [f"{command} after {delay:.4f} s: {problem}" for problem in problems]
        print(f"{command}: {killed} kills by the clock in {attempts} runs", flush=True)
        self.assertEqual(findings, [])
        self.assertEqual(killed, TIMED_POINTS)

    def test_killed_by_the_clock_in_an_open(self):
        self.kill_by_the_clock("check")

    def test_killed_by_the_clock_in_a_save(self):
        self.kill_by_the_clock("save")


if __name__ == "__main__":
    unittest.main(verbosity=2)
