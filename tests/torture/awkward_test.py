#!/usr/bin/env python3
"""Targets and sources that are not just a file: each of them either works and stays what
it was, or is refused with its name and the reason, and nothing is lost."""

import os
import resource
import signal
import stat
import subprocess
import time
import unittest

import support
from support import NOBODY, contents, mode_of

FORMER = b"G\\PN:FORMER;\r\n"
SOURCE = support.small_document()


class AwkwardTest(support.WorkshopTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        case = cls.workshop.case("right", SOURCE)
        outcome = case.save()
        cls.right = contents(case.target)
        if outcome.status not in (0, 1) or not cls.right:
            raise AssertionError(f"a plain save fails: {outcome}")
        case.remove()

    def case_of_nobody(self, former=FORMER):
        """Everything belongs to a user for whom permissions hold; they do not for root."""
        case = self.new_case(SOURCE, former)
        case.give_to(NOBODY, case.root, *case.root.rglob("*"))
        return case

    def right_for(self, name):
        """The right output under another name, which stands in the file."""
        return self.right.replace(b"G\\FN:out.tma;", b"G\\FN:" + os.fsencode(name) + b";")

    def assertNothingLeft(self, case):
        self.assertEqual(case.left_in_temp(), [])

    # --- permissions ---------------------------------------------------------------------

    def test_read_only_file(self):
        case = self.case_of_nobody()
        case.target.chmod(0o444)
        outcome = case.save(user=NOBODY)
        self.assertFailed(outcome, case.target, "Permission denied", "(File is Read-Only)")
        self.assertEqual(contents(case.target), FORMER)
        self.assertEqual(mode_of(case.target), 0o444)
        self.assertNothingLeft(case)

    def test_read_only_folder(self):
        case = self.case_of_nobody(former=None)
        case.target.parent.chmod(0o555)
        outcome = case.save(user=NOBODY)
        self.assertFailed(outcome, case.target, "Permission denied")
        self.assertEqual(os.listdir(case.target.parent), [])
        self.assertNothingLeft(case)

    def test_file_in_read_only_folder_stays_without_a_backup(self):
        case = self.case_of_nobody()
        case.target.parent.chmod(0o555)
        outcome = case.save(user=NOBODY)
        self.assertFailed(outcome, case.backup, "Permission denied", "Continue anyway?")
        self.assertEqual(contents(case.target), FORMER)
        self.assertNothingLeft(case)

    def test_file_in_read_only_folder_is_saved_on_yes(self):
        case = self.case_of_nobody()
        case.target.parent.chmod(0o555)
        outcome = case.save("--answer-all", "yes", user=NOBODY)
        self.assertSaved(outcome, case.target, self.right)
        self.assertIn("Continue anyway?", outcome.err)
        self.assertFalse(case.backup.exists())
        self.assertNothingLeft(case)

    def test_folder_that_can_be_written_but_not_listed(self):
        case = self.case_of_nobody()
        case.target.parent.chmod(0o333)
        self.assertSaved(case.save(user=NOBODY), case.target, self.right)
        self.assertEqual(contents(case.backup), FORMER)

    def test_temporary_root_that_can_not_be_listed(self):
        case = self.case_of_nobody()
        case.temp.chmod(0o333)
        self.assertSaved(case.save(user=NOBODY), case.target, self.right)
        self.assertNothingLeft(case)
        # "No folder was left behind" would be a guess.
        outcome = case.run("recover", "--list", user=NOBODY)
        self.assertFailed(outcome, case.temp, "Permission denied")
        self.assertNotIn("No folder", outcome.out)

    def test_unreadable_source(self):
        case = self.case_of_nobody()
        case.source.chmod(0)
        outcome = case.save(user=NOBODY)
        self.assertFailed(outcome, case.source, "Permission denied")
        self.assertEqual(contents(case.target), FORMER)
        self.assertNothingLeft(case)

    def test_target_that_can_be_written_but_not_read(self):
        case = self.case_of_nobody()
        case.target.chmod(0o200)
        outcome = case.save(user=NOBODY)
        self.assertFailed(outcome, case.target, "Permission denied")
        self.assertEqual(contents(case.target), FORMER)
        self.assertNothingLeft(case)

    def test_temporary_root_that_can_not_be_written(self):
        case = self.case_of_nobody()
        case.temp.chmod(0o555)
        outcome = case.save(user=NOBODY)
        self.assertFailed(outcome, case.temp, "Permission denied")
        self.assertEqual(contents(case.target), FORMER)

    def test_other_owner_and_mode_stay(self):
        case = self.new_case(SOURCE, FORMER)
        self.assertEqual(os.geteuid(), 0, "only root can make a file of another user")
        os.chown(case.target, 1234, 2345)
        case.target.chmod(0o640)
        self.assertSaved(case.save(), case.target, self.right)
        info = case.target.stat()
        self.assertEqual((info.st_uid, info.st_gid), (1234, 2345))
        self.assertEqual(stat.S_IMODE(info.st_mode), 0o640)
        self.assertEqual(contents(case.backup), FORMER)

    def test_file_of_another_user_that_the_group_may_write(self):
        case = self.case_of_nobody()
        self.assertEqual(os.geteuid(), 0, "only root can make a file of another user")
        os.chown(case.target, 1234, NOBODY)
        case.target.chmod(0o664)
        self.assertSaved(case.save(user=NOBODY), case.target, self.right)
        info = case.target.stat()
        self.assertEqual((info.st_uid, info.st_gid), (1234, NOBODY))
        self.assertEqual(stat.S_IMODE(info.st_mode), 0o664)

    # --- links and folders ---------------------------------------------------------------

    def test_symbolic_link_stays(self):
        case = self.new_case(SOURCE)
        real = case.root / "real.tma"
        real.write_bytes(FORMER)
        case.target.symlink_to("../real.tma")
        self.assertSaved(case.save(), real, self.right)
        self.assertTrue(case.target.is_symlink())
        self.assertEqual(os.readlink(case.target), "../real.tma")
        self.assertEqual(contents(case.backup), FORMER)
        self.assertFalse(case.backup.is_symlink())

    def test_dangling_link_stays_and_its_file_is_made(self):
        case = self.new_case(SOURCE)
        case.target.symlink_to("../real.tma")
        self.assertSaved(case.save(), case.root / "real.tma", self.right)
        self.assertTrue(case.target.is_symlink())

    def test_link_into_a_missing_folder(self):
        case = self.new_case(SOURCE)
        case.target.symlink_to("../missing/real.tma")
        self.assertFailed(case.save(), case.target, "No such file or directory")
        self.assertTrue(case.target.is_symlink())
        self.assertNothingLeft(case)

    def test_link_to_itself(self):
        case = self.new_case(SOURCE)
        case.target.symlink_to("out.tma")
        self.assertFailed(case.save(), case.target, "Too many levels of symbolic links")
        self.assertNothingLeft(case)

    def test_hard_link_stays(self):
        case = self.new_case(SOURCE, FORMER)
        other = case.root / "other.tma"
        os.link(case.target, other)
        inode = case.target.stat().st_ino
        self.assertSaved(case.save(), case.target, self.right)
        self.assertEqual(contents(other), self.right)
        self.assertEqual(case.target.stat().st_ino, inode)
        self.assertEqual(case.target.stat().st_nlink, 2)
        self.assertEqual(contents(case.backup), FORMER)

    def assertLinkBecomesBackup(self, case):
        self.assertSaved(case.save(), case.target, self.right)
        self.assertFalse(case.backup.is_symlink())
        self.assertEqual(contents(case.backup), FORMER)
        self.assertNothingLeft(case)

    def test_backup_that_is_a_hard_link_of_the_target(self):
        case = self.new_case(SOURCE, FORMER)
        os.link(case.target, case.backup)
        self.assertLinkBecomesBackup(case)

    def test_backup_that_is_a_link_to_the_target(self):
        case = self.new_case(SOURCE, FORMER)
        case.backup.symlink_to("out.tma")
        self.assertLinkBecomesBackup(case)

    def test_backup_that_is_a_link_to_another_file(self):
        case = self.new_case(SOURCE, FORMER)
        other = case.root / "other"
        other.write_bytes(b"of somebody else")
        case.backup.symlink_to("../other")
        self.assertLinkBecomesBackup(case)
        self.assertEqual(contents(other), b"of somebody else")

    def test_folder_in_place_of_a_file(self):
        case = self.new_case(SOURCE)
        case.target.mkdir()
        (case.target / "inside").write_bytes(b"x")
        self.assertFailed(case.save(), case.target, "Is a directory")
        self.assertEqual(os.listdir(case.target), ["inside"])
        self.assertNothingLeft(case)

    def test_folder_in_place_of_the_backup(self):
        case = self.new_case(SOURCE, FORMER)
        case.backup.mkdir()
        self.assertFailed(case.save(), case.backup, "Is a directory")
        self.assertEqual(contents(case.target), FORMER)
        self.assertTrue(case.backup.is_dir())

    def test_file_in_place_of_a_folder(self):
        case = self.new_case(SOURCE, FORMER)
        target = case.target / "deeper.tma"
        self.assertFailed(case.save(target=target), target, "Not a directory")
        self.assertEqual(contents(case.target), FORMER)

    def test_missing_folder(self):
        case = self.new_case(SOURCE)
        target = case.root / "missing" / "out.tma"
        self.assertFailed(case.save(target=target), target, "No such file or directory")

    def test_folder_as_source(self):
        case = self.new_case(SOURCE, FORMER)
        outcome = case.run("save", case.root, "-o", case.target)
        self.assertFailed(outcome, case.root, "Is a directory")
        self.assertEqual(contents(case.target), FORMER)

    def test_missing_source(self):
        case = self.new_case(SOURCE, FORMER)
        case.source.unlink()
        self.assertFailed(case.save(), case.source, "No such file or directory")
        self.assertEqual(contents(case.target), FORMER)

    # --- names ---------------------------------------------------------------------------

    def test_name_of_255_bytes(self):
        case = self.new_case(SOURCE)
        target = case.target.parent / ("n" * 251 + ".tma")
        target.write_bytes(FORMER)
        self.assertSaved(case.save(target=target), target, self.right_for(target.name))
        self.assertEqual(contents(target.with_suffix(".bak")), FORMER)

    def test_new_file_with_a_name_of_255_bytes_without_extension(self):
        case = self.new_case(SOURCE)
        target = case.target.parent / ("n" * 255)
        self.assertSaved(case.save(target=target), target, self.right_for(target.name))

    def test_name_of_255_bytes_whose_backup_would_be_longer(self):
        case = self.new_case(SOURCE)
        target = case.target.parent / ("n" * 255)
        target.write_bytes(FORMER)
        outcome = case.save(target=target)
        self.assertFailed(outcome, target.name + ".bak", "File name too long", "Continue anyway?")
        self.assertEqual(contents(target), FORMER)
        outcome = case.save("--answer-all", "yes", target=target)
        self.assertSaved(outcome, target, self.right_for(target.name))
        self.assertEqual(os.listdir(target.parent), [target.name])

    def test_name_over_255_bytes(self):
        case = self.new_case(SOURCE)
        target = case.target.parent / ("n" * 252 + ".tma")
        self.assertFailed(case.save(target=target), target, "File name too long")
        self.assertEqual(os.listdir(case.target.parent), [])

    def test_name_with_strange_bytes(self):
        case = self.new_case(SOURCE)
        name = b"a \xff\n'\"\\.tma"
        target = os.path.join(os.fsencode(case.target.parent), name)
        outcome = case.run("--now", support.NOW, "save", case.source, "-o", os.fsdecode(target))
        self.assertIn(outcome.status, (0, 1), outcome)
        self.assertEqual(os.listdir(os.fsencode(case.target.parent)), [name])

    # --- target and source are one -------------------------------------------------------

    def assertSavedInPlace(self, case, target):
        self.assertSaved(case.save(target=target), case.source,
                         self.right_for(os.path.basename(target)))

    def test_target_is_the_source(self):
        case = self.new_case(SOURCE)
        self.assertSavedInPlace(case, case.source)
        self.assertEqual(contents(case.source.with_suffix(".bak")), SOURCE)

    def test_target_is_a_link_to_the_source(self):
        case = self.new_case(SOURCE)
        case.target.symlink_to(case.source)
        self.assertSavedInPlace(case, case.target)
        self.assertTrue(case.target.is_symlink())
        self.assertEqual(contents(case.backup), SOURCE)

    def test_target_is_a_hard_link_of_the_source(self):
        case = self.new_case(SOURCE)
        os.link(case.source, case.target)
        self.assertSavedInPlace(case, case.target)
        self.assertEqual(case.source.stat().st_nlink, 2)
        self.assertEqual(contents(case.backup), SOURCE)

    def test_source_is_the_backup_of_the_target(self):
        case = self.new_case(SOURCE, FORMER)
        case.source.rename(case.backup)
        outcome = case.run("--now", support.NOW, "save", case.backup, "-o", case.target)
        self.assertSaved(outcome, case.target, self.right)
        self.assertEqual(contents(case.backup), FORMER)

    def test_target_is_a_backup_file(self):
        case = self.new_case(SOURCE, None, FORMER)
        outcome = case.save(target=case.backup)
        self.assertFailed(outcome, "Unable to create backup file. File names are the same.")
        self.assertEqual(contents(case.backup), FORMER)

    # --- space ---------------------------------------------------------------------------

    def mounted(self, case, folder, size, prepare=":"):
        """A wrapper that gives the program a file system of its own, so small that it gets
        full, and copies it to "after" when the program has ended."""
        script = (f'mount -t tmpfs -o size={size} tmpfs "{folder}" || exit 99; {prepare}; "$@"; '
                  f'status=$?; mkdir "{case.root}/after"; cp -a "{folder}/." "{case.root}/after"; '
                  'exit $status')
        return ["unshare", "-m", "sh", "-c", script, "sh"]

    def can_mount(self):
        probe = subprocess.run(["unshare", "-m", "sh", "-c", "mount -t tmpfs tmpfs /mnt"],
                               capture_output=True, check=False)
        return probe.returncode == 0

    def on_full_target(self, case, *options):
        """Saves to a target without room for the new contents. Gives the outcome and the
        folder to look at: where nothing can be mounted, a limit for the size of a file
        stands for the full file system."""
        if self.can_mount():
            former = case.root / "former"
            former.write_bytes(FORMER)
            wrapper = self.mounted(case, case.target.parent, "24k",
                                   f'cp "{former}" "{case.target}"')
            return case.save(*options, wrapper=wrapper), case.root / "after", \
                "No space left on device"
        case.target.write_bytes(FORMER)
        # The small store files stay below the limit, the output does not.
        wrapper = ["prlimit", f"--fsize={len(self.right) - 1000}"]
        return case.save(*options, wrapper=wrapper), case.target.parent, "File too large"

    def in_place(self, case):
        """The options of a save that overwrites the target itself."""
        case.settings.write_text("[KAVU-9]\r\nSaveInPlace=1\r\n")
        return ("--settings", case.settings)

    def test_full_file_system_leaves_the_file_as_it_was(self):
        case = self.new_case(SOURCE)
        outcome, folder, reason = self.on_full_target(case)
        self.assertFailed(outcome, case.target, reason)
        self.assertEqual(contents(folder / "out.tma"), FORMER)
        self.assertEqual(os.listdir(folder), ["out.tma"])
        self.assertNothingLeft(case)

    def test_in_place_a_full_file_system_keeps_the_backup(self):
        case = self.new_case(SOURCE)
        outcome, folder, reason = self.on_full_target(case, *self.in_place(case))
        self.assertFailed(outcome, case.target, reason)
        self.assertEqual(contents(folder / "out.bak"), FORMER)
        self.assertNothingLeft(case)

    def test_in_place_a_full_file_system_gets_the_former_contents_back_on_yes(self):
        case = self.new_case(SOURCE)
        outcome, folder, reason = self.on_full_target(case, "--answer-all", "yes",
                                                      *self.in_place(case))
        self.assertFailed(outcome, case.target, reason)
        self.assertEqual(contents(folder / "out.tma"), FORMER)
        self.assertNothingLeft(case)

    def test_full_temporary_root(self):
        case = self.new_case(SOURCE, FORMER)
        if self.can_mount():
            outcome = case.save(wrapper=self.mounted(case, case.temp, "24k"))
            self.assertFailed(outcome, case.temp, "No space left on device")
            self.assertEqual(os.listdir(case.root / "after"), [])
        else:
            outcome = case.save(wrapper=["prlimit", "--fsize=2000"])
            self.assertFailed(outcome, case.temp, "File too large")
            self.assertNothingLeft(case)
        self.assertEqual(contents(case.target), FORMER)

    def test_full_device(self):
        case = self.new_case(SOURCE)
        outcome = case.save(target="/dev/full")
        self.assertFailed(outcome, "/dev/full", "No space left on device")
        self.assertTrue(stat.S_ISCHR(os.stat("/dev/full").st_mode))
        self.assertNothingLeft(case)

    def test_null_device(self):
        case = self.new_case(SOURCE)
        self.assertIn(case.save(target="/dev/null").status, (0, 1))
        self.assertTrue(stat.S_ISCHR(os.stat("/dev/null").st_mode))

    def test_file_size_limit(self):
        case = self.new_case(SOURCE, FORMER)
        limit = len(self.right) // 2

        outcome = case.save(wrapper=["prlimit", f"--fsize={limit}"])
        self.assertFailed(outcome, "File too large")
        self.assertIn(FORMER, (contents(case.target), contents(case.backup)))
        self.assertNothingLeft(case)

    def test_few_descriptors(self):
        case = self.new_case(SOURCE, FORMER)
        for limit in range(4, 12):
            outcome = case.save(wrapper=["prlimit", f"--nofile={limit}"])
            if outcome.status == 2:
                self.assertIn("Too many open files", outcome.err, f"limit {limit}")
                self.assertEqual(contents(case.target), FORMER, f"limit {limit}")
            elif outcome.status != 127:  # the program could not even be loaded
                self.assertSaved(outcome, case.target, self.right)
                break
        self.assertSaved(outcome, case.target, self.right)

    # --- a source that moves ---------------------------------------------------------------

    LARGE = support.medium_document(2000)

    def stopped_while_reading(self, case):
        """The program, stopped after its first read of the source."""
        log = case.root / "calls.log"
        case.run("check", case.source)  # the first run of all makes the settings file
        case.run("check", case.source, faults={"LOG": log})
        reads = [line.split("\t") for line in log.read_text().splitlines()
                 if "\tread\t" in line and line.split("\t")[3] == str(case.source)]
        self.assertGreater(len(reads), 1, "the source is read in one go")
        process = case.start("--now", support.NOW, "save", case.source, "-o", case.target,
                             faults={"STOP_AT": reads[1][0]})
        self.addCleanup(process.communicate)
        self.addCleanup(process.kill)
        _, status = os.waitpid(process.pid, os.WUNTRACED)
        self.assertTrue(os.WIFSTOPPED(status), "the program did not stop")
        return process

    def finish(self, process):
        process.send_signal(signal.SIGCONT)
        out, err = process.communicate(timeout=support.TIMEOUT)
        return support.Outcome(process.returncode, support.text_of(out), support.text_of(err))

    def assertNoticed(self, case, outcome):
        self.assertFailed(outcome, case.source, "changed by another program")
        self.assertEqual(contents(case.target), FORMER)
        self.assertNothingLeft(case)

    def test_source_that_is_appended_to_while_it_is_read(self):
        case = self.new_case(self.LARGE, FORMER)
        process = self.stopped_while_reading(case)
        with open(case.source, "ab") as source:
            source.write(b"G\\PO:LATE;\r\n")
        self.assertNoticed(case, self.finish(process))

    def test_source_that_is_overwritten_while_it_is_read(self):
        case = self.new_case(self.LARGE, FORMER)
        process = self.stopped_while_reading(case)
        with open(case.source, "r+b") as source:
            source.seek(len(self.LARGE) - 100)
            source.write(b"X")
        self.assertNoticed(case, self.finish(process))

    def test_source_that_is_cut_while_it_is_read(self):
        case = self.new_case(self.LARGE, FORMER)
        process = self.stopped_while_reading(case)
        # At the end of a command, so that the cut is no syntax error.
        os.truncate(case.source, self.LARGE.index(b"\r\n", 300 * 1024) + 2)
        self.assertNoticed(case, self.finish(process))

    def test_source_that_is_replaced_while_it_is_read(self):
        case = self.new_case(self.LARGE, FORMER)
        process = self.stopped_while_reading(case)
        other = case.root / "other.tma"
        other.write_bytes(SOURCE)
        other.rename(case.source)
        self.assertNoticed(case, self.finish(process))

    def test_source_that_is_deleted_while_it_is_read(self):
        case = self.new_case(self.LARGE, FORMER)
        process = self.stopped_while_reading(case)
        case.source.unlink()
        self.assertNoticed(case, self.finish(process))

    # --- a store that loses a file ---------------------------------------------------------

    def stopped_behind_the_load(self, case):
        """A save, stopped when the document is loaded, and the store in which it is."""
        log = case.root / "calls.log"
        case.save(faults={"LOG": log})
        calls = [line.split("\t") for line in log.read_text().splitlines()
                 if not line.endswith("\tmissing")]
        first = min(int(call[0]) for call in calls if call[2] == "w"
                    and call[3].startswith(str(case.target.parent)))
        loaded = max(int(call[0]) for call in calls if call[1] == "rename"
                     and call[-1].endswith("KAVU9REC.TMP") and int(call[0]) < first)
        case.target.write_bytes(FORMER)
        case.backup.unlink()
        process = case.start("--now", support.NOW, "save", case.source, "-o", case.target,
                             faults={"STOP_AT": loaded + 1})
        self.addCleanup(process.communicate)
        self.addCleanup(process.kill)
        _, status = os.waitpid(process.pid, os.WUNTRACED)
        self.assertTrue(os.WIFSTOPPED(status), "the program did not stop")
        store, = case.temp.iterdir()
        return process, store

    def assertLossNoticed(self, pattern):
        case = self.new_case(SOURCE, FORMER, name=f"vanished-{len(pattern)}")
        process, store = self.stopped_behind_the_load(case)
        gone = sorted(store.glob(pattern))
        self.assertTrue(gone, f"there is no {pattern} in {sorted(store.iterdir())}")
        for path in gone:
            path.unlink()
        outcome = self.finish(process)
        self.assertFailed(outcome, gone[0], "No such file or directory")
        self.assertEqual(contents(case.target), FORMER)
        self.assertIsNone(contents(case.backup), "nothing was to be written")
        self.assertNothingLeft(case)

    def test_group_file_that_vanishes(self):
        self.assertLossNoticed("[[]kavu]PCMFMT.P02")

    def test_conversions_that_vanish(self):
        self.assertLossNoticed("[[]kavu]*.C_*")

    def test_pipe_without_a_writer_as_source(self):
        case = self.new_case(SOURCE, FORMER)
        case.source.unlink()
        os.mkfifo(case.source)
        outcome = case.save()
        self.assertIsNotNone(outcome.status, "it waits for a writer")

    def test_pipe_without_a_reader_as_target(self):
        case = self.new_case(SOURCE)
        os.mkfifo(case.target)
        outcome = case.save()
        self.assertIsNotNone(outcome.status, "it waits for a reader")
        self.assertFailed(outcome, case.target, "No such device or address")
        self.assertTrue(stat.S_ISFIFO(case.target.stat().st_mode))

    def test_pipe_as_target(self):
        case = self.new_case(SOURCE)
        os.mkfifo(case.target)
        with subprocess.Popen(["cat", case.target], stdout=subprocess.PIPE) as reader:
            time.sleep(0.1)
            outcome = case.save()
            read = reader.communicate()[0]
        self.assertIn(outcome.status, (0, 1), outcome)
        self.assertEqual(read, self.right)


if __name__ == "__main__":
    unittest.main(verbosity=2)
