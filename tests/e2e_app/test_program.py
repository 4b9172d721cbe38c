"""The program apart from the document: its start, its end, its windows on the screen."""

import os
import re
import signal
import subprocess
import time

from desktop import MAIN, Desktop, EditorTest, interrupt, main


def write_big_document(path, megabytes):
    """A file that takes seconds: one group with commands that no look-up knows."""
    line = "D-1\\X%020d:value of a field;\r\n"
    block = "".join(line % i for i in range(2000)).encode("latin-1")
    with open(path, "wb") as file:
        file.write(b"G\\106:09;\r\n")
        for _ in range(megabytes * 1000000 // len(block) + 1):
            file.write(block)


class Program(EditorTest):
    def geometry(self):
        window = self.desktop.find(MAIN)
        text = self.desktop.ask("getwindowgeometry", "--shell", window)
        values = dict(re.findall(r"(\w+)=(\d+)", text))
        return tuple(int(values[name]) for name in ("X", "Y", "WIDTH", "HEIGHT"))

    def test_the_window_comes_back_where_it_was(self):
        editor = self.start_shown()
        window = self.desktop.find(MAIN)
        self.desktop.ask("windowsize", "--sync", window, "900", "640")
        self.desktop.ask("windowmove", "--sync", window, "120", "90")
        time.sleep(0.5)
        before = self.geometry()
        self.assertEqual(before[2:], (900, 640))
        self.key("ctrl+q")
        self.ended(editor)
        for key in ("X", "Y", "DX", "DY"):
            self.assertRegex(self.setting(key) or "", r"^\d+$")
        editor = self.start_shown()
        Desktop.wait(lambda: self.geometry() == before, "the geometry %r, not %r" % (
            before, self.geometry()), 5)
        self.key("ctrl+q")
        self.ended(editor)

    def test_a_second_start_gets_its_own_working_store(self):
        first = self.start_shown()
        self.assertEqual(len(self.stores()), 1)
        second = self.start()
        Desktop.wait(lambda: len(self.stores()) == 2, "the second working store")
        Desktop.wait(lambda: len([t for t in self.desktop.titles().values()
                                  if re.search(MAIN, t)]) == 2, "the second window")
        interrupt(second)
        second.wait(30)
        self.assertEqual(second.stdout.read(), b"")
        self.assertEqual(len(self.stores()), 1)
        interrupt(first)
        self.ended(first, first.wait(30))

    def test_signals_end_the_program_and_leave_nothing_behind(self):
        self.sample()
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(signal=number):
                editor = self.start_shown(self.path("flight.tma"), title=MAIN + ".*flight")
                interrupt(editor, number)
                editor.wait(30)
                self.assertEqual(self.stores(), [])
                self.assertEqual(editor.stdout.read(), b"")

    def test_switches_of_automation_end_the_program_without_a_window(self):
        environment = {**self.environment(), "DISPLAY": ":no-such-display"}
        for switch in ("-RegServer", "/regserver", "-UnregServer", "/UNREGSERVER"):
            with self.subTest(switch=switch):
                run = subprocess.run([os.environ["KAVU"], switch], env=environment, timeout=30,
                                     capture_output=True, check=False, stdin=subprocess.DEVNULL)
                self.assertEqual((run.returncode, run.stdout, run.stderr), (0, b"", b""))
        self.assertEqual(os.listdir(self.temp), [])

    def test_a_server_without_a_bus_says_so_and_leaves_nothing_behind(self):
        environment = {**self.environment(), "DISPLAY": ":no-such-display"}
        for switch in ("-Embedding", "/embedding"):
            with self.subTest(switch=switch):
                run = subprocess.run([os.environ["KAVU"], switch], env=environment, timeout=30,
                                     capture_output=True, check=False, stdin=subprocess.DEVNULL)
                self.assertEqual((run.returncode, run.stdout), (2, b""))
                self.assertIn(b"there is no session bus", run.stderr)
        self.assertEqual(os.listdir(self.temp), [])

    def test_version_and_help_need_no_display(self):
        environment = {**self.environment(), "DISPLAY": ":no-such-display"}
        for option, expected in (("--version", rb"^kavu \d+\.\d+\.\d+\n$"),
                                 ("--help", rb"(?s)kavu.*--version.*--help|kavu.*--help.*--version")):
            with self.subTest(option=option):
                run = subprocess.run([os.environ["KAVU"], option], env=environment, timeout=30,
                                     capture_output=True, check=False, stdin=subprocess.DEVNULL)
                self.assertEqual(run.returncode, 0, run.stderr)
                self.assertRegex(run.stdout, expected)

    def test_the_last_file_is_offered_again(self):
        self.sample()
        editor = self.start_shown()
        self.open_by_dialog("flight.tma")
        self.key("ctrl+w")
        self.shown(MAIN + "$")
        self.key("ctrl+q")
        self.ended(editor)
        self.assertIn(self.path("flight.tma"), self.settings_text())

    def settings_text(self):
        path = os.path.join(self.home, ".config", "KavuSupportFiles", "kavu.ini")
        with open(path, encoding="latin-1") as file:
            return file.read()


class GermanLocale(EditorTest):
    """Numbers of a file keep their points in a country of commas."""

    def environment(self):
        environment = super().environment()
        if hasattr(self, "locales"):
            environment.update(LOCPATH=self.locales, LC_ALL="de_DE.UTF-8", LANG="de_DE.UTF-8")
        return environment

    def test_the_same_bytes_are_saved_as_by_the_terminal(self):
        self.sample()
        expected = self.saved_by_terminal("flight.tma", "--edition", "2011")
        locales = self.folder("locales")
        # A character map that is not there in full makes it warn, and end with 1.
        subprocess.run(["localedef", "--no-archive", "-i", "de_DE", "-f", "UTF-8",
                        os.path.join(locales, "de_DE.UTF-8")], check=False,
                       capture_output=True, stdin=subprocess.DEVNULL)
        self.locales = locales
        shown = subprocess.run(["locale", "decimal_point"], env=self.environment(), text=True,
                               capture_output=True, check=True, stdin=subprocess.DEVNULL)
        self.assertEqual(shown.stdout.strip(), ",", shown.stderr)
        editor = self.start_shown(self.path("flight.tma"), title=MAIN + ".*flight")
        self.choose_edition()
        self.save_as("later.tma")
        self.key("ctrl+q")
        self.ended(editor)
        self.assertSameDocument(self.read("later.tma"), expected)
        self.assertIn(b"0.5", expected)


class LongLoad(EditorTest):
    def test_esc_asks_and_no_goes_on_and_yes_leaves_no_document(self):
        write_big_document(self.path("big.tma"), 720)
        editor = self.start_shown()
        self.key("ctrl+o")
        self.shown(r"^Open TMATS File$")
        self.type(self.path("big.tma"))
        self.key("Return")
        self.shown(r"^Operation In Progress$")
        self.key("Escape")
        self.shown(r"^Cancel Operation$")
        self.key("alt+n")
        self.shown(r"^Operation In Progress$")
        self.key("Escape")
        self.shown(r"^Cancel Operation$")
        self.key("alt+y")
        self.shown(MAIN + "$", editor)
        store = os.path.join(self.temp, self.stores()[0])
        groups = [n for n in os.listdir(store) if re.search(r"\.[GTRMPDBSA]$", n)]
        self.assertEqual(groups, [])
        self.key("ctrl+q")
        self.ended(editor)


class WindowOnScreen(EditorTest):
    """The editor on a screen of its own size, which all of its window fits."""

    def outer(self):
        """The window with its frame: left, top, right, bottom."""
        window = self.desktop.find(MAIN)
        run = subprocess.run(["xwininfo", "-frame", "-id", window],
                             env=self.desktop.environment(), text=True, capture_output=True,
                             check=True)
        values = {name: int(value) for name, value in re.findall(
            r"(Absolute upper-left X|Absolute upper-left Y|Width|Height): +(-?\d+)", run.stdout)}
        left, top = values["Absolute upper-left X"], values["Absolute upper-left Y"]
        return left, top, left + values["Width"], top + values["Height"]

    def on_screen(self):
        width, height = (int(part) for part in self.screen.split("x"))
        left, top, right, bottom = self.outer()
        return left >= 0 and top >= 0 and right <= width and bottom <= height

    def check(self, **scaling):
        self.scaling = scaling
        for settings in ("", "X=0\r\nY=0\r\nDX=1024\r\nDY=600\r\n"):
            folder = os.path.join(self.home, ".config", "KavuSupportFiles")
            os.makedirs(folder, exist_ok=True)
            with open(os.path.join(folder, "kavu.ini"), "wb") as file:
                file.write(("[KAVU-9]\r\n" + settings).encode())
            editor = self.start_shown(self.sample())
            try:
                Desktop.wait(self.on_screen, "the window on the screen", 5)
            except AssertionError:
                self.fail("the window is at %r" % (self.outer(),))
            self.key("ctrl+q")
            self.ended(editor)

    def environment(self):
        return {**super().environment(), **getattr(self, "scaling", {})}


class SmallestScreen(WindowOnScreen):
    screen = "1024x600"

    def test_all_of_the_window_is_on_the_screen(self):
        self.check()

    def test_all_of_the_window_is_on_the_screen_with_large_letters(self):
        # Letters of twice the size alone: the screen stays as large as it is.
        self.check(QT_FONT_DPI="192", QT_ENABLE_HIGHDPI_SCALING="0")


class DoubledScreen(WindowOnScreen):
    screen = "1920x1200"

    def test_all_of_the_window_is_on_the_screen(self):
        self.check(QT_SCALE_FACTOR="2")


class SmallScreen(EditorTest):
    screen = "640x480"

    def test_a_small_screen_asks_and_no_ends_the_start(self):
        editor = self.start()
        self.shown(r"^KAVU-9 ", editor)
        self.assertNotRegex(self.desktop.active(), MAIN)
        self.key("alt+n")
        editor.wait(30)
        self.assertEqual(self.stores(), [])

    def test_a_small_screen_asks_and_yes_goes_on(self):
        editor = self.start()
        self.shown(r"^KAVU-9 ", editor)
        self.assertNotRegex(self.desktop.active(), MAIN)
        self.key("alt+y")
        self.shown(MAIN, editor)
        self.key("ctrl+q")
        self.ended(editor)


if __name__ == "__main__":
    main()
