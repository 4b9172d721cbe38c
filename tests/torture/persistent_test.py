#!/usr/bin/env python3
"""Faults that do not go away: from some call on a disk takes no change any more.

The source is never damaged. The target is what it was or what it should be; if it is neither,
its former contents are where the program says they are, also when the run has ended. Of a
store that is left behind recovery makes the document as it was before the operation or as it
is after it.
"""

import errno
import json
import random
import re
import unittest
from concurrent.futures import ThreadPoolExecutor

import operation_kill_test as operations
import support
from torture_test import recorded_calls

SEED = 20261123
POINTS = 10
WORKERS = 2
FORMER = b"G\\PN:FORMER;\r\n" + b"G\\COM:what the target held before;\r\n" * 40
PROMISE = re.compile(r"(?:They are|What it held before is) in '([^']+)'")
LEFT_BEHIND = re.compile(r"The folder '([^']+)' is left behind")
# Only a save in place has former contents to put back.
IN_PLACE = "[KAVU-9]\r\nSaveInPlace=1\r\nCreateBackup=0\r\n"

SOURCES = {**operations.SOURCES, "word_frame": support.medium_document(20)}
COMMANDS = {
    **{name: None for name in operations.OPERATIONS},
    "save": lambda case: ["save", case.source, "-o", case.target],
    "word_frame": lambda case: ["word-frame", case.source, operations.LINK, "-o", case.target],
    "recover": lambda case: ["recover", case.source.parent / "store", "-o", case.target],
    "change_edition": None,
}


class Disk:
    """What dies: everything, the disk of the store, or the one of the target."""

    def __init__(self, name, folder, code):
        self.name = name
        self.folder = folder
        self.code = code


DISKS = [Disk("all", lambda case: case.root, errno.EIO),
         Disk("all-full", lambda case: case.root, errno.ENOSPC),
         Disk("store", lambda case: case.temp, errno.EIO),
         Disk("target", lambda case: case.target.parent, errno.EROFS),
         Disk("target-full", lambda case: case.target.parent, errno.ENOSPC)]


class Plan:
    def __init__(self, workshop, name, backs_up):
        self.workshop = workshop
        self.name = name
        self.backs_up = backs_up
        self.source = SOURCES.get(name, support.small_document())
        self.store = None
        if name == "recover":
            self.store = self.killed_store()
        case = self.case("before")
        case.save(target=case.root / "before.tma")
        self.before = operations.content_of(support.contents(case.root / "before.tma"))
        case.remove()
        case = self.case("recorded")
        log = workshop.folder / f"{name}-{backs_up}.log"
        self.outcome = self.run(case, {"LOG": log})
        self.calls = recorded_calls(log)
        self.right = support.contents(case.target)
        self.after = operations.content_of(self.right)
        self.folder_of = {disk.name: str(disk.folder(case)) for disk in DISKS}
        case.remove()

    def killed_store(self):
        """A whole store, with its record, of a run that was killed before it saved."""
        case = self.workshop.case(f"{self.name}-{self.backs_up}-killed", self.source)
        log = self.workshop.folder / "killed.log"
        case.save(faults={"LOG": log})
        first = min(call.number for call in recorded_calls(log)
                    if call.path.startswith(str(case.target.parent)) and call.access == "w")
        case.target.unlink()
        case.save(faults={"KILL_AT": first})
        store, = case.temp.iterdir()
        files = {path.name: path.read_bytes() for path in store.iterdir() if path.is_file()}
        case.remove()
        return files

    def case(self, name):
        case = self.workshop.case(f"{self.name}-{self.backs_up}-{name}", self.source, FORMER)
        if not self.backs_up:
            support_folder = case.home / ".config" / "KavuSupportFiles"
            support_folder.mkdir(parents=True)
            (support_folder / "kavu.ini").write_text(IN_PLACE)
        if self.store is not None:
            store = case.source.parent / "store"
            store.mkdir()
            for name, contents in self.store.items():
                (store / name).write_bytes(contents)
        return case

    def run(self, case, faults):
        command = COMMANDS[self.name]
        if command is None:
            return operations.run(case, self.name, faults)
        return case.run("--now", support.NOW, *command(case), faults=faults)

    def points(self, disk, chooser):
        """Calls that change something on the disk, most of them on the files of the user."""
        folder = self.folder_of[disk.name]
        changing = [call for call in self.calls
                    if f"{folder}/" in call.path + "/" and call.name != "stat"
                    and (call.access not in "rd" or call.name in ("rename", "unlink", "mkdir"))]
        near = [call for call in changing if "/target/" in call.path]
        return sorted({call.number for group in (changing, near)
                       for call in chooser.sample(group, min(POINTS, len(group)))})


class Judge:
    def __init__(self, plan, disk, number, case, outcome):
        self.plan = plan
        self.disk = disk
        self.number = number
        self.case = case
        self.outcome = outcome
        self.problems = []

    def verdict(self):
        if self.outcome.status not in (0, 1, 2):
            return [f"it ends with status {self.outcome.status}"]
        if support.contents(self.case.source) != self.plan.source:
            self.problems.append("the source has changed")
        self._target()
        for path in PROMISE.findall(self.outcome.err):
            if support.contents(path) != FORMER:
                self.problems.append(f"what '{path}' was said to hold is not there")
        self._store()
        return self.problems

    def _target(self):
        target = support.contents(self.case.target)
        if self.outcome.status != 2:
            if target != self.plan.right:
                self.problems.append("the run says it is done, and the output is not right")
        elif (target not in (FORMER, self.plan.right)
              and support.contents(self.case.backup) != FORMER
              and not any(support.contents(path) == FORMER
                          for path in PROMISE.findall(self.outcome.err))):
            self.problems.append("the former contents of the target are nowhere")

    def _store(self):
        left = sorted(self.case.temp.iterdir())
        promised = LEFT_BEHIND.findall(self.outcome.err)
        if promised and [str(path) for path in left] != promised:
            self.problems.append(f"{promised} was to be left behind, and there is {left}")
        elif left and not promised and self.disk.code == errno.ENOSPC:
            self.problems.append(f"it leaves {left} behind without a word")
        elif promised:
            self._recovery(left[0])

    def _recovery(self, store):
        listed = self.case.run("--json", "recover", "--list")
        if [entry["folder"] for entry in json.loads(listed.out)["stores"]] != [str(store)]:
            self.problems.append("recovery does not offer the store")
            return
        output = self.case.root / "recovered.tma"
        outcome = self.case.run("--now", support.NOW, "recover", store, "-o", output)
        recovered = support.contents(output)
        if recovered is None or operations.content_of(recovered) not in (self.plan.before,
                                                                         self.plan.after):
            self.problems.append(f"recovery does not give the document back: {outcome}")


class PersistentTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.workshop = support.Workshop()
        cls.addClassCleanup(cls.workshop.close)
        cls.left_behind = 0
        cls.failed = 0

    def judge(self, plan, disk, number):
        case = plan.case(f"{disk.name}-{number}")
        outcome = plan.run(case, {"AT": number, "ERRNO": disk.code,
                                  "PERSIST": disk.folder(case)})
        problems = Judge(plan, disk, number, case, outcome).verdict()
        kept = bool(LEFT_BEHIND.search(outcome.err))
        case.remove()
        if not problems:
            return outcome.status, kept, None
        call = plan.calls[number - 1]
        return outcome.status, kept, (
            f"{plan.name}, backups {plan.backs_up}, disk {disk.name} dies at call {number} of "
            f"{len(plan.calls)}, {call.name} {call.path}: {'; '.join(problems)}\n{outcome}")

    def persist(self, name):
        for backs_up in (True, False):
            plan = Plan(self.workshop, name, backs_up)
            self.assertIn(plan.outcome.status, (0, 1), plan.outcome)
            chooser = random.Random(f"{SEED}-{name}-{backs_up}")
            faults = [(disk, number) for disk in DISKS for number in plan.points(disk, chooser)]
            with ThreadPoolExecutor(WORKERS) as pool:
                verdicts = list(pool.map(lambda fault: self.judge(plan, *fault), faults))
            found = [text for _, _, text in verdicts if text is not None]
            failed = sum(status == 2 for status, _, _ in verdicts)
            kept = sum(left for _, left, _ in verdicts)
            print(f"{name}, backups {backs_up}: {len(faults)} disks that die in "
                  f"{len(plan.calls)} calls, {failed} failed runs, {kept} stores left behind, "
                  f"{len(found)} findings", flush=True)
            self.assertEqual(len(found), 0, "\n\n".join(found[:10]))
            self.assertGreater(failed, len(faults) // 4)
            if not backs_up:
                # Former contents that nobody had to keep would prove nothing.
                self.assertGreater(kept, 0)


def make_test(name):
    return lambda self: self.persist(name)


for operation in COMMANDS:
    setattr(PersistentTest, f"test_{operation}", make_test(operation))


if __name__ == "__main__":
    unittest.main(verbosity=2)
