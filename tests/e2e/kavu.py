"""Runs kavu-cli in a folder of its own, and checks the common rules in every run.

The program is found through the environment variable KAVU_CLI. After every run the
temporary root must be as empty as before it, whatever the exit status.
"""

import json
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

NOW = "2026-01-02T03:04:05"
CLEAN, REPORTED, FAILED, USAGE = 0, 1, 2, 64

DATA = os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "data")


class Result:
    """What a run left: its exit status and what it printed."""

    def __init__(self, status, out, err):
        self.status = status
        self.out = out
        self.err = err

    @property
    def text(self):
        return self.out.decode("utf-8")

    @property
    def notes(self):
        """The remarks of the run, each on its line of standard error."""
        lines = self.err.decode("utf-8").splitlines()
        return [line[len("Note: "):] for line in lines if line.startswith("Note: ")]

    @property
    def json(self):
        """The one document on standard output; anything beside it is an error."""
        return json.loads(self.out.decode("utf-8"))

    def ids(self):
        return [message["id"] for message in self.json["messages"]]

    def asked(self):
        return [question["id"] for question in self.json["questions"]]

    def __repr__(self):
        return "status %r\n--- stdout\n%s\n--- stderr\n%s" % (
            self.status, self.out.decode("utf-8", "replace"), self.err.decode("utf-8", "replace"))


class KavuTest(unittest.TestCase):
    """A test with a private temporary root, home and working folder."""

    def setUp(self):
        self.program = os.environ["KAVU_CLI"]
        self.root = tempfile.mkdtemp(prefix="kavu-e2e-")
        self.addCleanup(shutil.rmtree, self.root, ignore_errors=True)
        self.temp = self.folder("temp")
        self.home = self.folder("home")
        self.work = self.folder("work")

    # --- files ----------------------------------------------------------------------

    def folder(self, name):
        path = os.path.join(self.root, name)
        os.makedirs(path, exist_ok=True)
        return path

    def path(self, name):
        return os.path.join(self.work, name)

    def write(self, name, data):
        path = self.path(name)
        with open(path, "wb") as file:
            file.write(data if isinstance(data, bytes) else data.encode("latin-1"))
        return path

    def read(self, name):
        with open(self.path(name), "rb") as file:
            return file.read()

    def exists(self, name):
        return os.path.lexists(self.path(name))

    def store_files(self, name):
        """The files of a folder: name to bytes."""
        folder = self.path(name)
        return {entry: self.read(os.path.join(name, entry)) for entry in os.listdir(folder)}

    # --- runs -----------------------------------------------------------------------

    def environment(self):
        environment = {"PATH": os.environ.get("PATH", ""), "LC_ALL": "C",
                       "TEMP": self.temp, "HOME": self.home}
        for name in ("ASAN_OPTIONS", "UBSAN_OPTIONS", "LLVM_PROFILE_FILE", "LD_PRELOAD"):
            if name in os.environ:
                environment[name] = os.environ[name]
        return environment

    def start(self, *arguments, env=None, **options):
        """Starts a run. A variable of `env` that is None is taken out of the environment."""
        environment = self.environment()
        environment.update(env or {})
        environment = {name: value for name, value in environment.items() if value is not None}
        options.setdefault("stdin", subprocess.DEVNULL)
        options.setdefault("stdout", subprocess.PIPE)
        options.setdefault("stderr", subprocess.PIPE)
        return subprocess.Popen([self.program, *arguments], cwd=self.work, env=environment,
                                **options)

    def finish(self, process, timeout=120):
        out, err = process.communicate(timeout=timeout)
        result = Result(process.returncode, out or b"", err or b"")
        self.assertNothingLeft(result)
        return result

    def run_cli(self, *arguments, **options):
        return self.finish(self.start("--now", NOW, *arguments, **options))

    def run_plain(self, *arguments, **options):
        """A run with nothing but these arguments."""
        return self.finish(self.start(*arguments, **options))

    def run_json(self, *arguments, **options):
        result = self.run_cli("--json", *arguments, **options)
        result.json  # one document, and only one, on standard output
        return result

    def assertNothingLeft(self, result):
        self.assertEqual(os.listdir(self.temp), [], result)

    # --- short cuts -------------------------------------------------------------------

    def check(self, data, *options, status=None, name="in.tma"):
        self.write(name, data)
        result = self.run_json("check", name, *options)
        if status is not None:
            self.assertEqual(result.status, status, result)
        return result

    def stored(self, data, *options, name="in.tma"):
        """The working store of a document: file name to bytes."""
        self.write(name, data)
        into = tempfile.mkdtemp(dir=self.work)
        result = self.run_json("store", name, "--into", into, *options)
        self.assertIn(result.status, (CLEAN, REPORTED), result)
        return self.store_files(into)

    def saved(self, data, *options, name="in.tma", out="out.tma"):
        """The bytes of a document that was opened and saved."""
        self.write(name, data)
        result = self.run_json("save", name, "-o", out, *options)
        self.assertIn(result.status, (CLEAN, REPORTED), result)
        return self.read(out)

    def without_banner(self, data):
        """The saved bytes behind the banner, which must be there, once and in front."""
        lines = data.split(b"\r\n")
        self.assertGreaterEqual(len(lines), 5, data[:500])
        for line in lines[:5]:
            self.assertTrue(line.startswith(b"COMMENT: ") and line.endswith(b";"), lines[:6])
        rest = lines[5:]
        self.assertFalse([line for line in rest if line.startswith(b"COMMENT:")], rest[:10])
        return b"\r\n".join(rest)

    def wait_for(self, condition, process, seconds=30):
        """Waits for what a running process does; the process must still be running."""
        deadline = time.monotonic() + seconds
        while not condition():
            if process.poll() is not None or time.monotonic() > deadline:
                out, err = process.communicate()
                self.fail("too late: %r" % Result(process.returncode, out or b"", err or b""))
            time.sleep(0.0005)

    def store_folder(self):
        """The one working store under the temporary root, or None."""
        entries = os.listdir(self.temp)
        return os.path.join(self.temp, entries[0]) if entries else None


def group_commands(letter, index, count, width=20):
    """Many commands of one group, for runs that must last a while."""
    line = "%s-%d\\X%%0%dd:value of a field;\r\n" % (letter, index, width)
    return "".join(line % i for i in range(count))


def big_document(megabytes, letter="D"):
    """A document that takes a while: one group with commands that no look-up knows."""
    block = group_commands(letter, 1, 2000)
    return ("G\\106:09;\r\n" + block * (megabytes * 1000000 // len(block) + 1)).encode("latin-1")


def interrupt(process, number=signal.SIGINT):
    process.send_signal(number)


def drop_privileges():
    """For the child process of a test that needs a user who may not do everything."""
    if os.getuid() == 0:
        os.setgroups([])
        os.setgid(65534)
        os.setuid(65534)


def main():
    if "KAVU_CLI" not in os.environ:
        sys.exit("KAVU_CLI must name the program to test")
    unittest.main(verbosity=2)
