#!/usr/bin/env python3
"""Lets every file call of an open and a save fail once, one by one.

A first run records the calls. Then each of them fails in a run of its own, and each time:
the program ends by itself; the source is untouched; the former contents of the target or
the new ones are whole, in the target or in its backup, and a partial target has been
reported; a run that says it is done has written exactly the right bytes; a run that failed
says which file and why; and nothing stays in the temporary root.
"""

import errno
import os
import re
import signal
import subprocess
import unittest
from collections import namedtuple
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import support

FORMER = b"G\\PN:FORMER;\r\n" + b"G\\COM:what the target held before;\r\n" * 40
OLDER_BACKUP = b"G\\PN:OLDER;\r\n"
ERRORS = (errno.ENOSPC, errno.EIO, errno.EACCES)
WORKERS = 2
# The part of a run in which calls are to fail; the others are as in another plan.
ALL, LOAD, BUILD = range(3)
# The message of a file that can not be created calls this one by its name.
CALLED_BY_NAME = {"DATA2.TMP"}
SOURCES = Path(__file__).resolve().parents[2] / "src"

Call = namedtuple("Call", "number name access path second missing")
Fault = namedtuple("Fault", "call code short")


GUID = re.compile(r"KAVU-9-[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}")


def without_guid(text):
    """The store has a new name in each run."""
    return GUID.sub("KAVU-9-GUID", text)


def is_important(call):
    """On the files of the user, not on the program's own."""
    return call.path.startswith(("source/", "target/")) or call.path == "target"


def recorded_calls(log):
    missing = set()
    rows = []
    for line in without_guid(log.read_text()).splitlines():
        cells = line.split("\t")
        if cells[1] == "missing":
            missing.add(int(cells[0]))
        else:
            rows.append(cells)
    return [Call(int(number), name, access, path, second, int(number) in missing)
            for number, name, access, path, second in rows]


class Plan:
    """One way to run the program, and what a good run of it makes."""

    def __init__(self, name, options, source, settings=None, backs_up=True, puts_back=False,
                 former=FORMER, older_backup=OLDER_BACKUP, part=ALL):
        self.name = name
        self.options = options
        self.source = source
        self.settings = settings
        self.backs_up = backs_up and former is not None
        self.puts_back = puts_back
        self.in_place = "SaveInPlace=1" in (settings or "")
        self.former = former
        self.older_backup = older_backup
        self.part = part
        self.right = None
        self.calls = []

    def case(self, workshop, name):
        case = workshop.case(f"{self.name}-{name}", self.source, self.former, self.older_backup)
        if self.settings is not None:
            case.settings.write_text(self.settings)
        return case

    def run(self, case, faults):
        options = list(self.options)
        if self.settings is not None:
            options += ["--settings", case.settings]
        return case.save(*options, faults=faults)

    def keeps_source(self, case):
        return support.contents(case.source) == self.source

    def record(self, workshop):
        """A good run: what it writes, and the calls it makes."""
        case = self.case(workshop, "recorded")
        log = workshop.folder / f"{self.name}.log"
        outcome = self.run(case, {"LOG": log})
        problems = []
        if outcome.status not in (0, 1):
            problems.append(f"a run without faults fails: {outcome}")
        self.right = support.contents(case.target)
        if self.backs_up and support.contents(case.backup) != self.former:
            problems.append("a run without faults makes no backup")
        if case.left_in_temp():
            problems.append(f"a run without faults leaves {case.left_in_temp()}")
        self.calls = [call._replace(path=os.path.relpath(call.path, case.root),
                                    second=call.second and os.path.relpath(call.second, case.root))
                      for call in recorded_calls(log)]
        case.remove()
        return problems


class OperationPlan(Plan):
    """An operation on the data sources, from the load on up to the save."""

    def __init__(self, *words):
        super().__init__("-".join(words[:2]), words, support.small_document(), part=LOAD)

    def case(self, workshop, name):
        case = super().case(workshop, name)
        (case.root / "OTHER").write_bytes(self.source)
        return case

    def run(self, case, faults):
        group, verb, *options = self.options
        return case.run("--now", support.NOW, "--answer", "140=yes", group, verb, case.source,
                        *options, "-o", case.target, faults=faults)

    def last_of_work(self):
        """The last call that changes a group but the general one, which the save changes."""
        return max(call.number for call in self.calls
                   if call.name in ("rename", "unlink") and call.number < self.first_of_target
                   and "[kavu]" in call.path and "GTMP.G" not in call.path)


class RecoverPlan(Plan):
    """A recovery of the store that a killed run has left behind."""

    def __init__(self, name, files):
        super().__init__(name, [], b"")
        self.files = files

    def case(self, workshop, name):
        case = super().case(workshop, name)
        case.source.unlink()
        store = self.store(case)
        store.mkdir()
        for file, contents in self.files.items():
            (store / file).write_bytes(contents)
        return case

    @staticmethod
    def store(case):
        return case.root / "source" / "store"

    def run(self, case, faults):
        return case.run("--now", support.NOW, "recover", self.store(case), "-o", case.target,
                        faults=faults)

    def keeps_source(self, case):
        return self.files == files_of(self.store(case))


def files_of(folder):
    """The files of a store, but for the mark of a recovery."""
    return {path.name: path.read_bytes() for path in folder.iterdir()
            if path.name != support.RECOVERED}


# What may fail without failing the run, each with the reason why. In every such run the
# output is compared all the same.
def is_closing_of_read_file(plan, fault):
    return fault.call.name == "close" and fault.call.access in "rd"


def is_removal(plan, fault):
    return fault.call.name in ("unlink", "rmdir") and fault.call.path.startswith("temp/")


def is_behind_the_save(plan, fault):
    return fault.call.number > plan.last_of_save and fault.call.path.startswith("temp")


def is_cleaning_of_new_store(plan, fault):
    return (fault.call.number < plan.open_of_source and fault.call.path.startswith("temp/")
            and fault.call.name in ("opendir", "readdir"))


def is_probe_of_source(plan, fault):
    return (fault.call.path == "source/in.tma" and fault.call.number < plan.open_of_source
            and (fault.call.name == "stat" or fault.call.access == "w"))


def is_done_again_by_copy(plan, fault):
    call = fault.call
    same = [other.number for other in plan.calls
            if (other.name, other.access, other.path) == (call.name, call.access, call.path)
            and other.number < plan.copy_to_backup]
    return (call.name == "stat" or call.name == "open" and call.access == "w") and (
        plan.backs_up and call.number in same[:-1])


def is_hidden(call):
    """Of the files beside the target: the lock, the new file and the new backup."""
    return call.path.startswith("target/.")


def is_lock_of_target(plan, fault):
    return fault.call.path.endswith(".kavu-lock")


def is_opened_for_writing_later(plan, call):
    return any(other.name == "open" and other.access == "w" and other.path == call.path
               and other.number > call.number for other in plan.calls)


def is_closing_of_probed_target(plan, fault):
    return (fault.call.name == "close" and fault.call.path == "target/out.tma"
            and (not plan.in_place or is_opened_for_writing_later(plan, fault.call)))


def is_missing_leftover(plan, fault):
    return fault.call.name == "unlink" and fault.call.missing and is_hidden(fault.call)


def is_closing_of_empty_file(plan, fault):
    return (fault.call.name == "close" and is_hidden(fault.call)
            and is_opened_for_writing_later(plan, fault.call))


def is_mode_of_backup(plan, fault):
    return (fault.call.name in ("stat", "chmod", "chown") and is_hidden(fault.call)
            and fault.call.path.endswith(".bak"))


def is_folder_that_takes_no_file(plan, fault):
    return (fault.call.name in ("open", "stat", "chmod", "chown") and is_hidden(fault.call)
            and fault.call.path.endswith(".kavu-new"))


def is_folder_that_may_not_be_read(plan, fault):
    return (fault.call.path == "target" and fault.call.name == "open"
            and fault.code == errno.EACCES)


def is_file_of_names(plan, fault):
    return fault.call.path.endswith(".sdk") and fault.call.name in ("write", "close", "stat")


def is_settings(plan, fault):
    return fault.call.path.startswith("home")


def is_probe_of_missing_file(plan, fault):
    return fault.call.missing and fault.call.name in ("stat", "lstat", "open", "access")


def is_lock(plan, fault):
    return fault.call.path.startswith("temp/") and (
        fault.call.name == "flock" or fault.call.name == "open" and fault.call.access == "d")


def is_look_behind_the_work(plan, fault):
    return (isinstance(plan, OperationPlan) and fault.call.number > plan.last_of_work()
            and (fault.call.access in "rd" or fault.call.name == "stat"))


def is_message_log(plan, fault):
    return fault.call.path.endswith("/KAVU9TMP.TMP")


def is_backup_that_is_given_up(plan, fault):
    if not plan.puts_back or not plan.backs_up:
        return False
    call = fault.call
    folder = call.path == "target" and any(
        other.name == "open" and other.access == "w" and other.path == "target/out.tma"
        and other.number > call.number for other in plan.calls)
    return (folder or "target/out.bak" in (call.path, call.second)
            or is_hidden(call) and call.path.endswith(".bak"))


def is_refused_replacement(plan, fault):
    return (fault.call.name == "rename" and fault.call.path.endswith(".kavu-new")
            and fault.code == errno.EACCES)


def is_look_for_a_folder_to_start_in(plan, fault):
    return fault.call.name == "stat" and fault.call.path == "source"


def is_look_at_the_disk(plan, fault):
    others = [call for call in plan.calls
              if call.path == fault.call.path and call.name != "stat"]
    last = max((call.number for call in others), default=0)
    if fault.call.path == "source/in.tma":
        # The document is looked at as soon as it is open, and an import may read it once more.
        last = min((call.number for call in others if call.name == "close"), default=last)
    return (fault.call.name == "stat" and fault.call.path in ("source/in.tma", "target/out.tma")
            and fault.call.number > last)


def is_look_for_lost_groups(plan, fault):
    return (fault.call.name == "stat" and "[kavu]" in fault.call.path
            and plan.last_of_source < fault.call.number < plan.first_of_target)


def is_look_for_the_record(plan, fault):
    """The record of a store is made of the sizes of its files."""
    return (fault.call.name == "stat" and fault.call.path.startswith("temp/")
            and any(name in fault.call.path for name in ("[kavu]", "DATA1.TMP", "KAVU9REC.TMP")))


def is_behind_the_recovery(plan, fault):
    replaced = max((call.number for call in plan.calls
                    if call.name == "rename" and call.second == "target/out.tma"), default=0)
    return (0 < replaced < fault.call.number
            and (fault.call.path == "source/store" or support.RECOVERED in fault.call.path))


def is_record_behind_the_save(plan, fault):
    in_place = max((call.number for call in plan.calls
                    if call.name in ("write", "rename") and not is_hidden(call)
                    and "target/" in call.path + call.second), default=0)
    replaced = max((call.number for call in plan.calls
                    if call.name == "rename" and call.second == "target/out.tma"), default=0)
    return "KAVU9REC.TMP" in fault.call.path and fault.call.number > max(in_place, replaced) > 0


def is_look_at_the_target(plan, fault):
    return fault.call.name == "stat" and fault.call.path == "target/out.tma"


def is_first_look_at_a_store(plan, fault):
    listings = [call.number for call in plan.calls
                if call.path == "source/store" and call.name in ("opendir", "open")]
    return (fault.call.path == "source/store" and bool(listings)
            and fault.call.number < max(listings)
            or fault.call.path == "source/store/KAVU9REC.TMP")


def commit_of(plan):
    """The call by which the operation of a run has happened; 0 if there is none."""
    return max((call.number for call in plan.calls
                if call.name == "rename" and "/undo/" in call.second), default=0)


def is_look_at_kept_file(plan, fault):
    return (fault.call.name in ("open", "fstat", "read", "stat")
            and "/TEMP" in fault.call.path and "[kavu]" in fault.call.path)


def is_file_of_no_change(plan, fault):
    """What is written of a group that turns out to stay as it is goes again."""
    after = [other for other in plan.calls if other.number > fault.call.number
             and other.path == fault.call.path and other.name in ("rename", "unlink")]
    return (fault.call.name in ("write", "close") and fault.call.path.endswith(".new")
            and bool(after) and after[0].name == "unlink")


def is_link(plan, fault):
    return fault.call.name == "link"


def is_write_after_an_operation(plan, fault):
    return (fault.call.name == "write" and fault.code == errno.ENOSPC
            and 0 < commit_of(plan) < fault.call.number < plan.first_of_target)


HARMLESS = [
    ("that another program changes the file is noticed the next time", is_look_at_the_disk),
    ("what cannot be looked at is not taken for lost: the build reads it, and stops for it",
     is_look_for_lost_groups),
    ("what the record of the store does not name is recovered as it is there",
     is_look_for_the_record),
    ("the document is saved, and the record says of it what the save before knew",
     is_record_behind_the_save),
    ("a target that cannot be looked at is not the file of the document, or is noticed the next time",
     is_look_at_the_target),
    ("the document is saved; that its store could not be marked is told", is_behind_the_recovery),
    ("what a store says of itself decides what is told of it; what is in it is read again",
     is_first_look_at_a_store),
    ("former contents that cannot be compared count as other than those of now",
     is_look_at_kept_file),
    ("a new file without a change would not have taken the place of the old one",
     is_file_of_no_change),
    ("where no link can be made the former contents are copied", is_link),
    ("on a full disk the way back of the operation goes, and the write is done again",
     is_write_after_an_operation),
    ("nothing is lost by the closing of a file that was only read", is_closing_of_read_file),
    ("a scratch file that can not be removed goes with the folder", is_removal),
    ("the document is saved; what is left behind is told", is_behind_the_save),
    ("a store that was just made holds nothing to delete", is_cleaning_of_new_store),
    ("the open of the source tells what a probe could not, and whether it is read-only does "
     "not matter for a save under another name", is_probe_of_source),
    ("the copy to the backup does the same again, and stops for it", is_done_again_by_copy),
    ("the lock keeps other runs out; without it the save is no worse", is_lock_of_target),
    ("nothing is written by the look whether the target may be written",
     is_closing_of_probed_target),
    ("what a killed run might have left is not there", is_missing_leftover),
    ("new files are made empty first, for their owner only; nothing has been written yet",
     is_closing_of_empty_file),
    ("a backup that cannot have all attributes has the mode at least", is_mode_of_backup),
    ("where no file can be made beside the target, it is written in place",
     is_folder_that_takes_no_file),
    ("a dialog that asks for a file starts elsewhere if the folder cannot be looked at",
     is_look_for_a_folder_to_start_in),
    ("where the new file may not take the place of the target, it is written in place",
     is_refused_replacement),
    ("a folder in which one may write and not read can not be synchronised",
     is_folder_that_may_not_be_read),
    ("a load only asks which names there are, and knows that without the file it writes them to",
     is_file_of_names),
    ("settings have defaults, and a run does not need to store them", is_settings),
    ("a file that is not there holds nothing to lose", is_probe_of_missing_file),
    ("the lock only keeps a living store out of the list of abandoned ones", is_lock),
    ("the names in other streams and the list of data sources are looked at when all is done",
     is_look_behind_the_work),
    ("a message that can not be logged is still told to whoever runs the program", is_message_log),
    ("the answer yes goes on without a backup; the former contents are kept in the store",
     is_backup_that_is_given_up),
]


def harmless(plan, fault):
    for reason, matches in HARMLESS:
        if matches(plan, fault):
            return reason
    return None


class Judge:
    """Holds one run with a fault against what must be true."""

    def __init__(self, plan, case, fault, outcome):
        self.plan = plan
        self.case = case
        self.fault = fault
        self.outcome = outcome
        self.problems = []

    def verdict(self):
        if self.outcome.status is None:
            return ["it hangs"]
        if self.outcome.status not in (0, 1, 2):
            return [f"it ends with status {self.outcome.status}"]
        self._source()
        self._target()
        if self.outcome.status == 2:
            self._message()
        else:
            self._success()
        self._temporary_root()
        return self.problems

    def _source(self):
        if not self.plan.keeps_source(self.case):
            self.problems.append("the source has changed")

    def _target(self):
        target = support.contents(self.case.target)
        backup = support.contents(self.case.backup)
        if target in (self.plan.former, self.plan.right):
            return
        if self.plan.former is None:
            # A file that was not there has nothing to lose; a partial one must be reported.
            if self.outcome.status != 2:
                self.problems.append("the target is partial and the run says it is done")
        elif self.plan.puts_back:
            self.problems.append("the target is neither the former nor the new file")
        elif backup != self.plan.former:
            self.problems.append("the target is partial and the backup is not the former file")
        elif self.outcome.status != 2:
            self.problems.append("the target is partial and the run says it is done")

    def _says_why(self):
        err = without_guid(self.outcome.err)
        paths = [self.case.root / path for path in (self.fault.call.path, self.fault.call.second)
                 if path]
        if is_hidden(self.fault.call):
            # The user knows the files that they are made for.
            paths += [self.case.target, self.case.backup]
        if not is_important(self.fault.call):
            # Of a scratch file the user is told the folder.
            paths += [path.parent for path in paths]
            paths += [path.name for path in paths if path.name in CALLED_BY_NAME]
        return (os.strerror(self.fault.code) in err
                and any(str(path) in err for path in paths))

    def _message(self):
        # Whether it was another program that changed the file cannot be told by then.
        took_for_changed = (is_look_at_the_target(self.plan, self.fault)
                            and "Another program has changed the file" in self.outcome.err
                            and str(self.case.target) in self.outcome.err)
        if not took_for_changed and not self._says_why():
            self.problems.append("the message does not name the file and the reason")

    def _success(self):
        if support.contents(self.case.target) != self.plan.right:
            self.problems.append("the run says it is done, and the output is not right")
        if harmless(self.plan, self.fault) is None:
            self.problems.append("the run says it is done, and no reason is known")

    def _temporary_root(self):
        left = self.case.left_in_temp()
        if not left:
            return
        if not (is_removal(self.plan, self.fault) or is_behind_the_save(self.plan, self.fault)
                or self.outcome.status == 2 and self.fault.call.name in ("opendir", "readdir")):
            self.problems.append(f"left in the temporary root: {left[:5]}")
        elif not self._says_why():
            self.problems.append(f"left in the temporary root without a word: {left[:5]}")


class TortureTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.workshop = support.Workshop()
        cls.addClassCleanup(cls.workshop.close)

    def faults_of(self, plan):
        first, last = {ALL: (1, len(plan.calls)), LOAD: (plan.last_of_source, plan.first_of_target),
                       BUILD: (plan.first_of_target, len(plan.calls))}[plan.part]
        calls = plan.calls[first - 1:last]
        for call in calls:
            codes = ERRORS if is_important(call) else (ERRORS[call.number % len(ERRORS)],)
            for code in codes:
                yield Fault(call, code, False)
            if call.name == "write":
                yield Fault(call, errno.ENOSPC, True)

    def faults_of_operation(self, plan):
        """An operation looks into every group many times, and for ninety-nine of each: the
        first and the last call of each kind on each file that is there tell enough. A group
        keeps its numbers where there can be no folder for the new ones, so that is no fault."""
        kinds = {}
        for fault in self.faults_of(plan):
            call = fault.call
            if not call.missing and call.name != "mkdir":
                kind = (call.name, call.access, call.path, call.second, fault.short)
                kinds.setdefault(kind, []).append(fault)
        return [fault for faults in kinds.values() for fault in {faults[0], faults[-1]}]

    def judge(self, plan, fault):
        short = "-short" if fault.short else ""
        case = plan.case(self.workshop, f"{fault.call.number}-{fault.code}{short}")
        faults = {"AT": fault.call.number, "ERRNO": fault.code}
        if fault.short:
            faults["SHORT"] = 1
        outcome = plan.run(case, faults)
        problems = Judge(plan, case, fault, outcome).verdict()
        case.remove()
        if not problems:
            return outcome.status, None
        call = fault.call
        return outcome.status, (
                f"call {call.number} {call.name}({call.path} {call.second}) access {call.access} "
                f"missing {call.missing} fails with {errno.errorcode[fault.code]}{short}: "
                f"{'; '.join(problems)}\n{outcome}")

    def torture(self, plan):
        problems = plan.record(self.workshop)
        self.assertEqual(problems, [])
        of_target = [call.number for call in plan.calls if call.path.startswith("target")]
        plan.first_of_target = min(of_target)
        # A look at the file, by which a change by others is noticed, reads nothing of it.
        plan.last_of_source = max(call.number for call in plan.calls
                                  if call.path.startswith("source/") and call.name != "stat")
        plan.last_of_save = max(of_target)
        plan.open_of_source = min(call.number for call in plan.calls
                                  if call.path.startswith("source/") and call.access in "rd")
        plan.copy_to_backup = max(
            [call.number for call in plan.calls
             if call.name == "write" and is_hidden(call) and call.path.endswith(".bak")],
            default=0)
        names = {call.name for call in plan.calls}
        self.assertLessEqual({"open", "read", "write", "close", "fsync", "mkdir", "rmdir"}, names)
        operation = isinstance(plan, OperationPlan)
        faults = self.faults_of_operation(plan) if operation else list(self.faults_of(plan))
        with ThreadPoolExecutor(WORKERS) as pool:
            verdicts = list(pool.map(lambda fault: self.judge(plan, fault), faults))
        found = [text for _, text in verdicts if text is not None]
        failed = sum(status == 2 for status, _ in verdicts)
        print(f"{plan.name}: {len(plan.calls)} calls, {len(faults)} faults, {failed} failed runs, "
              f"{len(found)} findings", flush=True)
        # Faults that nobody notices would prove nothing.
        self.assertGreater(len(faults), 200)
        self.assertGreater(failed, 100)
        heads = "\n".join(text.splitlines()[0] for text in found)
        self.assertEqual(len(found), 0, f"{heads}\n\n" + "\n\n".join(found[:20]))

    def test_with_backup(self):
        self.torture(Plan("backup", [], support.small_document()))

    def test_without_backup_the_former_contents_are_put_back(self):
        self.torture(Plan("put-back", ["--answer-all", "yes"], support.small_document(),
                          settings="[KAVU-9]\r\nCreateBackup=0\r\nSaveInPlace=1\r\n",
                          backs_up=False, puts_back=True))

    def test_with_backup_and_put_back(self):
        self.torture(Plan("both", ["--answer-all", "yes"], support.small_document(),
                          settings="[KAVU-9]\r\nSaveInPlace=1\r\n", puts_back=True, part=BUILD))

    def test_without_backup_the_target_is_never_partial(self):
        self.torture(Plan("no-backup", [], support.small_document(),
                          settings="[KAVU-9]\r\nCreateBackup=0\r\n", backs_up=False,
                          puts_back=True, part=BUILD))

    def test_with_a_first_backup(self):
        self.torture(Plan("first-backup", [], support.small_document(), older_backup=None,
                          part=BUILD))

    def test_with_a_new_target(self):
        self.torture(Plan("new-target", [], support.small_document(), former=None,
                          older_backup=None, part=BUILD))

    def abandoned_store(self, name, is_point, arguments=(), source=None):
        """The files of the store of a run that is killed at a point of its calls."""
        plan = Plan(name, list(arguments), source or support.small_document())
        self.assertEqual(plan.record(self.workshop), [])
        points = [call.number for call in plan.calls if is_point(call)]
        self.assertTrue(points, "there is no such point in a run")
        case = plan.case(self.workshop, "killed")
        self.addCleanup(case.remove)
        outcome = plan.run(case, {"KILL_AT": points[len(points) // 2]})
        self.assertEqual(outcome.status, -signal.SIGKILL, outcome)
        stores = list(case.temp.iterdir())
        self.assertEqual(len(stores), 1)
        return files_of(stores[0])

    # A conversion whose date has to change brings all of them to their files.
    MIGRATED = (["--edition", "1996"], "C-1\\TRD5:05-06-2001")

    def abandoned_migration(self, name, is_point):
        arguments, command = self.MIGRATED
        source = support.small_document().replace(b"G\\106:09", b"G\\106:99")
        return self.abandoned_store(name, is_point, arguments, source + support.lines(command))

    def test_recovery_of_raw_conversions(self):
        # In the middle of the conversion some chunks are in their files and some are not.
        files = self.abandoned_migration(
            "kill-raw", lambda call: call.name == "rename" and call.second.endswith(".C_O"))
        self.assertTrue(any(text.startswith(b"C-") for text in files.values()))
        self.torture(RecoverPlan("recover-raw", files))

    def test_recovery_of_conversions_in_their_files(self):
        files = self.abandoned_migration(
            "kill-chunks", lambda call: call.name == "open" and call.path == "target/out.tma"
            and call.access == "w")
        self.assertFalse(any(text.startswith(b"C-") for text in files.values()))
        self.assertTrue(any(name.endswith(".C_O") for name in files))
        self.torture(RecoverPlan("recover-chunks", files))

    def test_recovery_of_a_whole_store(self):
        files = self.abandoned_store(
            "kill-whole", lambda call: call.name == "open" and call.path == "target/out.tma"
            and call.access == "w")
        self.torture(RecoverPlan("recover-whole", files))

    def test_copy_of_a_data_source(self):
        plan = OperationPlan("source", "copy", "RF", "COPY", "--prefix", "X_")
        self.torture(plan)
        self.assertIn(b"T-2\\ID:COPY;", plan.right)
        self.assertIn(b"\\DCN:X_", plan.right)

    def test_delete_of_a_data_source(self):
        plan = OperationPlan("source", "delete", "RF")
        self.torture(plan)
        self.assertNotIn(b"T-1\\ID:RF;", plan.right)

    def test_import_of_a_data_source(self):
        plan = OperationPlan("source", "import", "OTHER", "RF", "--conversions", "--prefix", "Y_")
        self.torture(plan)
        self.assertIn(b"T-2\\ID:RF 2;", plan.right)

    def test_with_migration(self):
        source = support.small_document().replace(b"G\\106:09", b"G\\106:07")
        self.torture(Plan("migration", ["--edition", "2011"], source, part=LOAD))

    def test_with_migration_back(self):
        source = support.small_document().replace(b"G\\106:09", b"G\\106:99") + support.lines(
            "T-1\\RF4:OTHR", "R-1\\TC1:OTHR", "R-1\\TC7:OT", "R-1\\RI4:05-06-2001",
            "M-1\\SIF2-1:OT", "P-1\\ADM\\N:1", "A-1\\SF3-1:OTH", "C-1\\TRD5:05-06-2001")
        plan = Plan("migration-back", ["--edition", "1996"], source, part=LOAD)
        self.torture(plan)
        for command in (b"T-1\\RF4:OTHER;", b"R-1\\TC1:OTH;", b"M-1\\SIF2-1:OTH;"):
            self.assertIn(command, plan.right)


class ShimTest(unittest.TestCase):
    """A file call that goes past the shim would never be tested."""

    COUNTED = {
        "open", "open64", "openat", "openat64", "creat", "__open_2", "__open64_2", "__read_chk",
        "read", "pread", "write", "pwrite", "lseek", "close", "fsync", "fdatasync",
        "sync_file_range", "ftruncate", "flock", "rename", "renameat2", "link", "truncate",
        "unlink", "mkdir", "rmdir", "access", "opendir", "readdir", "readdir64", "closedir",
        "chmod", "chown", "realpath", "__realpath_chk", "stat", "stat64", "lstat", "lstat64",
        "fstat", "fstat64",
    }
    # Every other name by which the system's library touches files.
    OTHER = {
        "fopen", "fopen64", "freopen", "fdopen", "tmpfile", "mkstemp", "mkstemp64", "mkdtemp",
        "openat2", "readv", "writev", "preadv", "pwritev", "pread64", "pwrite64", "lseek64",
        "ftruncate64", "truncate64", "sendfile", "copy_file_range", "mmap", "mmap64",
        "msync", "renameat", "unlinkat", "mkdirat", "linkat", "symlink",
        "symlinkat", "readlink", "readlinkat", "fchmod",
        "fchmodat", "fchown", "lchown", "utimensat", "futimens", "utimes", "faccessat",
        "euidaccess", "scandir", "ftw", "nftw", "fts_open", "glob", "fstatat", "fstatat64",
        "statx", "statfs", "statvfs", "fstatvfs", "remove", "lockf", "lockf64", "opendir64",
        "fdopendir", "posix_fallocate", "posix_fallocate64", "fallocate", "dup", "dup2", "splice",
        "syncfs", "sync", "__xstat", "__fxstat", "__lxstat", "__pread_chk",
        "__openat_2", "__readlink_chk",
    }
    # The path of the program itself, which is no file of a document.
    ALLOWED = {"readlink", "__readlink_chk"}

    def imported(self):
        done = subprocess.run(["nm", "-D", "--undefined-only", support.needed("KAVU_CLI")],
                              capture_output=True, text=True, check=True)
        return {line.split()[-1].split("@")[0] for line in done.stdout.splitlines() if line.strip()}

    def test_every_file_call_of_the_program_passes_the_shim(self):
        names = self.imported()
        self.assertIn("open", {name.removesuffix("64") for name in names})
        self.assertEqual(names & (self.OTHER - self.ALLOWED), set())

    def test_no_source_uses_file_streams(self):
        # Their calls come from inside the library, where no shim sees them. The parser of
        # the command line links them for a use that the program does not make.
        sources = [path for path in SOURCES.rglob("*") if path.suffix in (".cpp", ".h")]
        self.assertGreater(len(sources), 50)
        users = [str(path) for path in sources
                 if re.search(r"#include <(fstream|filesystem|cstdio)>", path.read_text())]
        self.assertEqual(users, [])


if __name__ == "__main__":
    unittest.main(verbosity=2)
