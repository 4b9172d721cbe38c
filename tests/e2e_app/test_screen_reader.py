"""The display of a stream as a screen reader sees it: over the accessibility bus."""

import json
import os
import re
import statistics
import subprocess

from desktop import MAIN, EditorTest, main

WORDS, FRAMES = 2047, 256
REQUESTS = 400
ANSWER = 50  # ms for one answer
SHEET = r"^Edit PCM Attributes"
LATE, LATE_FRAME = 2040, 200  # the word of the one measurement, and a frame


class SessionBus:
    """A session bus that starts the accessibility bus when it is asked for."""

    def __init__(self, environment):
        self.daemon = subprocess.Popen(
            ["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address"],
            env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL, text=True)
        self.address = self.daemon.stdout.readline().strip()
        if not self.address:
            self.close()
            raise RuntimeError("the session bus did not start")
        # A desktop with assistive technology has its bus before programs are started.
        begun = subprocess.run(
            ["dbus-send", "--bus=" + self.address, "--dest=org.a11y.Bus", "--print-reply",
             "/org/a11y/bus", "org.a11y.Bus.GetAddress"], env=environment, text=True,
            capture_output=True, check=False, stdin=subprocess.DEVNULL, timeout=60)
        if begun.returncode != 0:
            self.close()
            raise RuntimeError("the accessibility bus did not start: " + begun.stderr)

    def close(self):
        # What the bus has started ends with it.
        self.daemon.terminate()
        self.daemon.wait(10)
        self.daemon.stdout.close()


def write_big_stream(path):
    """A stream with the most words that the display shows; a measurement is in a late one."""
    commands = [
        "G\\PN:BIG", "G\\106:09", "G\\DSI\\N:1", "G\\DSI-1:Link", "G\\DST-1:RF", "T-1\\ID:Link",
        "M-1\\ID:Link", "M-1\\BB1:PCM", "M-1\\BSG1:PCM", "M-1\\BB\\DLN:Big Stream",
        "P-1\\DLN:Big Stream", "P-1\\D1:RNRZ-L", "P-1\\D2:1000000", "P-1\\TF:TWO", "P-1\\F1:16",
        "P-1\\F2:M", "P-1\\F3:NO", "P-1\\F4:T", "P-1\\MF\\N:%d" % FRAMES, "P-1\\MF1:%d" % WORDS,
        "P-1\\MF2:%d" % (24 + 16 * (WORDS - 1)), "P-1\\MF3:FPT", "P-1\\MF4:24",
        "P-1\\MF5:111110101111001100100000", "D-1\\DLN:Big Stream", "D-1\\ML\\N:1",
        "D-1\\MLN-1:List 1", "D-1\\MN\\N-1:1", "D-1\\MN-1-1:LATE", "D-1\\MN1-1-1:DE",
        "D-1\\MN2-1-1:D", "D-1\\MN3-1-1:M", "D-1\\LT-1-1:MF", "D-1\\MF-1-1:%d" % LATE,
        "D-1\\MFM-1-1:FW"]
    with open(path, "w", encoding="latin-1", newline="\r\n") as file:
        file.writelines(command + ";\n" for command in commands)


def spoken(word, frame):
    """What is said of a place of that stream; its first word is the sync pattern."""
    text = "FSP" if word == 0 else "LATE" if word == LATE else "empty"
    return "FWP %d FN %d: %s" % (word, frame, text)


class ScreenReader(EditorTest):
    def setUp(self):
        super().setUp()
        self.bus = SessionBus(self.desktop.environment())
        self.addCleanup(self.bus.close)

    def environment(self):
        return {**super().environment(), "DBUS_SESSION_BUS_ADDRESS": self.bus.address,
                "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}

    def hear(self):
        """What a screen reader hears of the grid."""
        run = subprocess.run(
            [os.environ["SCREEN_READER"], "kavu", "Major frame", str(REQUESTS)],
            env=self.environment(), text=True, capture_output=True, check=False, timeout=300,
            stdin=subprocess.DEVNULL)
        self.assertEqual(run.returncode, 0, run.stderr)
        return json.loads(run.stdout)

    def show_frame(self):
        write_big_stream(self.path("big.tma"))
        editor = self.start_shown(self.path("big.tma"), title=MAIN + ".*big")
        self.key("ctrl+5")
        self.shown(r"^Select Data Link")
        self.key("Return")
        self.shown(SHEET)
        self.key("alt+v")
        self.shown(r"^PCM Format Display - Data Link: Big Stream")
        return editor

    def end(self, editor):
        self.key("alt+c")
        self.shown(SHEET)
        self.key("Escape")
        self.shown(MAIN)
        self.key("ctrl+q")
        self.ended(editor)

    def assertQuick(self, what, answers):
        """In the median and on average; of many also 9 of 10, as the machine may be busy."""
        times = sorted(answers)
        median, late = statistics.median(times), times[len(times) * 9 // 10]
        print("  %s: %d answers, median %.2f ms, 9 of 10 in %.2f ms, at most %.2f ms, all in "
              "%.0f ms" % (what, len(times), median, late, times[-1], sum(times)), flush=True)
        self.assertLess(median, ANSWER, what)
        if len(times) >= 100:
            self.assertLess(late, ANSWER, what)
        self.assertLess(sum(times), len(times) * ANSWER, what)

    def assertOnlyInView(self, heard):
        """As many cells as have room in the grid on the screen, and not one more."""
        left, top, width, height = heard["place"]
        _, _, cell_width, cell_height = heard["firstCell"]
        self.assertEqual(heard["firstCell"][:2], [left, top])
        self.assertEqual(heard["columns"], -(-width // cell_width))
        self.assertEqual(heard["rows"], -(-height // cell_height))
        self.assertLess(heard["lastCell"][0], left + width)
        self.assertLess(heard["lastCell"][1], top + height)
        self.assertEqual(heard["children"], heard["rows"])
        self.assertEqual(heard["all"]["listed"], heard["columns"] * heard["rows"])
        self.assertEqual(heard["all"]["strange"], 0)
        self.assertTrue(heard["leadsBack"])

    def assertHears(self, heard, word, frame):
        """The names of the cells from that place on, in the order of the rows."""
        columns, rows = heard["columns"], heard["rows"]
        self.assertEqual(heard["all"]["rowNames"],
                         ["FN %d" % (frame + row) for row in range(rows)])
        names = [spoken(word + column, frame + row) for row in range(rows)
                 for column in range(columns)]
        self.assertEqual(heard["all"]["names"], names[::heard["all"]["step"]])
        for row, column, name in heard["single"]["cells"]:
            self.assertEqual(name, spoken(word + column, frame + row))

    def assertAnswersQuickly(self, heard):
        print("\n%d x %d of %d x %d cells are in view" % (heard["columns"], heard["rows"], WORDS,
                                                        FRAMES))
        # A name and a role for each cell that was heard: nothing grows with the frame.
        self.assertEqual(len(heard["all"]["answers"]), 2 * len(heard["all"]["names"]))
        self.assertGreaterEqual(len(heard["single"]["answers"]), REQUESTS)
        self.assertQuick("how many there are, and where",
                         heard["sizes"] + heard["places"] + heard["numbers"])
        self.assertQuick("the list of the rows, and of the cells of each", heard["all"]["lists"])
        self.assertQuick("name and role of the listed", heard["all"]["answers"])
        self.assertQuick("the cell at a row and column, its name", heard["single"]["answers"])

    def test_only_the_cells_in_view_are_exposed_and_answer_quickly(self):
        editor = self.show_frame()
        heard = self.hear()
        self.assertOnlyInView(heard)
        self.assertHears(heard, 0, 1)
        self.assertAnswersQuickly(heard)
        self.end(editor)

    def test_the_cells_of_a_late_place_are_exposed_when_it_comes_into_view(self):
        editor = self.show_frame()
        self.key("alt+w", "ctrl+a")
        self.type("%d %d" % (LATE, LATE_FRAME))
        self.key("Return")
        heard = self.hear()
        names = heard["all"]["names"]
        self.assertIn("FWP %d FN %d: LATE" % (LATE, LATE_FRAME), names)
        word, frame = map(int, re.match(r"FWP (\d+) FN (\d+):", names[0]).groups())
        self.assertOnlyInView(heard)
        self.assertHears(heard, word, frame)
        self.assertAnswersQuickly(heard)
        self.end(editor)

    def test_cells_of_the_smallest_zoom_answer_quickly(self):
        editor = self.show_frame()
        self.key("alt+z", "Home")
        heard = self.hear()
        self.assertGreater(heard["columns"] * heard["rows"], 10000)
        self.assertOnlyInView(heard)
        self.assertHears(heard, 0, 1)
        self.assertAnswersQuickly(heard)
        self.end(editor)


if __name__ == "__main__":
    main()
