"""A desktop of its own for the editor: a virtual display, a window manager, real keys.

The programs are found through the environment variables KAVU and KAVU_CLI. The titles of
the editor's windows show what it displays, and its files what it does.
"""

import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

SAMPLES = os.path.join(os.path.dirname(os.path.dirname(os.path.dirname(
    os.path.abspath(__file__)))), "samples")

MAIN = r"^KAVU-9 - TMATS Editor"
QUESTION = r"^KAVU-9 Warning$"
PATIENCE = 30  # seconds; the machine may have other things to do


class Desktop:
    """A display with a window manager."""

    def __init__(self, folder, size="1280x1024"):
        self.home = os.path.join(folder, "home")
        self.runtime = os.path.join(folder, "runtime")
        os.mkdir(self.home)
        os.mkdir(self.runtime, 0o700)
        self.manager = None
        reading, writing = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writing), "-screen", "0", size + "x24", "-nolisten", "tcp",
             "-noreset"], pass_fds=[writing], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as pipe:
            number = pipe.readline().strip()
        if not number:
            raise RuntimeError("the virtual display did not start")
        self.display = ":" + number
        self.manager = subprocess.Popen(
            ["openbox", "--sm-disable"], env=self.environment(), stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            # Only a window manager tells of desktops.
            self.wait(lambda: (self.ask("get_num_desktops") or "0") != "0", "the window manager")
        except AssertionError:
            self.close()
            raise

    def environment(self):
        return {"PATH": os.environ.get("PATH", ""), "DISPLAY": self.display, "HOME": self.home,
                "XDG_RUNTIME_DIR": self.runtime, "LC_ALL": "C.UTF-8",
                "DBUS_SESSION_BUS_ADDRESS": "disabled:", "QT_QPA_PLATFORM": "xcb"}

    def close(self):
        for process in (self.manager, self.server):
            if process is not None:
                process.terminate()
                process.wait(10)

    # --- looking ----------------------------------------------------------------------

    def ask(self, *arguments):
        """What xdotool answers, or None."""
        run = subprocess.run(["xdotool", *arguments], env=self.environment(), text=True,
                             capture_output=True, check=False, stdin=subprocess.DEVNULL)
        return run.stdout.strip() if run.returncode == 0 else None

    def titles(self):
        """The visible windows of the editor: number of the window to its title."""
        found = self.ask("search", "--onlyvisible", "--class", "kavu") or ""
        titles = {number: self.ask("getwindowname", number) for number in found.split()}
        return {number: title for number, title in titles.items() if title}

    def active(self):
        return self.ask("getactivewindow", "getwindowname") or ""

    def find(self, pattern):
        for number, title in self.titles().items():
            if re.search(pattern, title):
                return number
        return None

    @staticmethod
    def wait(condition, what, seconds=PATIENCE):
        deadline = time.monotonic() + seconds
        while True:
            found = condition()
            if found:
                return found
            if time.monotonic() > deadline:
                raise AssertionError("waited in vain for " + what)
            time.sleep(0.02)

    # --- doing ------------------------------------------------------------------------

    def key(self, *keys):
        if self.ask("key", "--delay", "30", *keys) is None:
            raise AssertionError("could not press %r" % (keys,))

    def type(self, text):
        if self.ask("type", "--delay", "8", text) is None:
            raise AssertionError("could not type " + text)


class EditorTest(unittest.TestCase):
    """A test with a desktop, a home and a temporary root of its own."""

    screen = "1280x1024"

    def setUp(self):
        self.root = tempfile.mkdtemp(prefix="kavu-app-")
        self.addCleanup(shutil.rmtree, self.root, ignore_errors=True)
        self.temp, self.work = self.folder("temp"), self.folder("work")
        self.desktop = Desktop(self.root, self.screen)
        self.home = self.desktop.home
        self.addCleanup(self.desktop.close)
        self.processes = []
        self.addCleanup(self.end_all)

    def folder(self, name):
        path = os.path.join(self.root, name)
        os.makedirs(path)
        return path

    def end_all(self):
        for process in self.processes:
            if process.poll() is None:
                process.kill()
                process.wait()
            process.stdout.close()

    def environment(self):
        return {**self.desktop.environment(), "TEMP": self.temp}

    # --- files ------------------------------------------------------------------------

    def path(self, name):
        return os.path.join(self.work, name)

    def sample(self, name="flight-test.tma", to="flight.tma"):
        return shutil.copy(os.path.join(SAMPLES, name), self.path(to))

    def read(self, name):
        with open(self.path(name), "rb") as file:
            return file.read()

    def stores(self):
        return sorted(n for n in os.listdir(self.temp) if n.startswith("KAVU-9-"))

    def setting(self, key):
        """A value of the editor's settings, or None."""
        path = os.path.join(self.home, ".config", "KavuSupportFiles", "kavu.ini")
        try:
            with open(path, encoding="latin-1") as file:
                found = re.search(r"(?mi)^%s=(.*?)\s*$" % re.escape(key), file.read())
        except FileNotFoundError:
            return None
        return found.group(1) if found else None

    def saved_by_terminal(self, name, *options):
        """What kavu-cli makes of a file."""
        out = self.path("terminal.tma")
        run = subprocess.run(
            [os.environ["KAVU_CLI"], "--quiet", "--settings", os.path.join(self.root, "cli.ini"),
             "save", self.path(name), "-o", out, *options], env=self.environment(),
            capture_output=True, check=False, stdin=subprocess.DEVNULL)
        # 1: messages were reported, as that of a conversion is.
        self.assertIn(run.returncode, (0, 1), run.stdout + run.stderr)
        with open(out, "rb") as file:
            data = file.read()
        os.remove(out)
        return data

    def assertSameDocument(self, data, expected):
        """The same bytes, but for the time in the banner and the name in `G\\FN`."""
        self.assertEqual(undated(data), undated(expected))

    # --- the editor -------------------------------------------------------------------

    def start(self, *arguments):
        process = subprocess.Popen(
            [os.environ["KAVU"], "--no-splash", *arguments], cwd=self.work,
            env=self.environment(), stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT)
        self.processes.append(process)
        return process

    def start_shown(self, *arguments, title=MAIN):
        process = self.start(*arguments)
        self.shown(title, process)
        return process

    def shown(self, pattern, process=None):
        """Waits until a window of that title has the keyboard."""

        def look():
            if process is not None and process.poll() is not None:
                self.fail("the editor ended with %r: %r" % (process.returncode,
                                                            process.stdout.read()))
            return re.search(pattern, self.desktop.active())

        try:
            Desktop.wait(look, pattern)
        except AssertionError as error:
            self.fail("%s; there are %r, and %r is active" % (
                error, list(self.desktop.titles().values()), self.desktop.active()))
        time.sleep(0.3)  # until the window has given the focus to its control

    def gone(self, pattern):
        Desktop.wait(lambda: not self.desktop.find(pattern), "the end of " + pattern)

    def key(self, *keys):
        self.desktop.key(*keys)

    def type(self, text):
        self.desktop.type(text)

    def ended(self, process, status=0):
        """Waits for the end of the editor, which leaves nothing behind."""
        process.wait(PATIENCE)
        output = process.stdout.read()
        self.assertEqual(process.returncode, status, output)
        self.assertEqual(self.stores(), [], "the working store is still there")
        return output

    # --- what a person does ---------------------------------------------------------------

    def open_by_dialog(self, name, title=None):
        self.key("ctrl+o")
        self.shown(r"^Open TMATS File$")
        self.type(self.path(name))
        self.key("Return")
        self.shown(title or MAIN + ".*" + re.escape(name))

    def choose_edition(self, key="End"):
        """Moves the document to another edition: by default the latest."""
        self.key("alt+o")
        self.key("i")
        self.shown(r"^TMATS Version Numbers")
        self.key("alt+e", "Tab", key, "Return")
        self.shown(r"^KAVU-9$")  # it tells that the document was converted
        self.key("Return")
        self.shown(MAIN)

    def save_as(self, name):
        self.key("ctrl+shift+s")
        self.shown(r"^Save TMATS File")
        self.key("ctrl+a")
        self.type(self.path(name))
        self.key("Return")
        Desktop.wait(lambda: os.path.exists(self.path(name)), name)
        self.shown(MAIN + ".*" + re.escape(name))


def undated(data):
    """A file without what depends on the moment of saving and on its own name."""
    lines = data.split(b"\r\n")
    kept = [re.sub(rb" on \S+ at \S+ by ", b" on DATE at TIME by ", line) for line in lines]
    return [re.sub(rb"^G\\FN:[^;]*;", rb"G\\FN:NAME;", line) for line in kept]


def interrupt(process, number=signal.SIGTERM):
    process.send_signal(number)


def main():
    for name in ("KAVU", "KAVU_CLI"):
        if name not in os.environ:
            sys.exit(name + " must name a program")
    unittest.main(verbosity=2)
