"""The major frame of a stream, edited by keys from the opened document to the saved file."""

import os
import re
import time

from desktop import MAIN, SAMPLES, Desktop, EditorTest, main

SHEET = r"^Edit PCM Attributes.*PCM Stream 1"
DISPLAY = r"^PCM Format Display - Data Link: PCM Stream 1$"
GOLDEN = os.path.join(os.path.dirname(SAMPLES), "tests", "golden", "frames", "flight-test.tma")


class MajorFrame(EditorTest):
    # --- windows ----------------------------------------------------------------------

    def opened(self, pattern, keys):
        """Presses keys and waits for a window of that title that was not there before them."""
        before = set(self.desktop.titles())
        self.key(*keys)

        def look():
            number = self.desktop.ask("getactivewindow")
            return number not in before and re.search(pattern, self.desktop.active())

        try:
            Desktop.wait(look, pattern)
        except AssertionError as error:
            self.fail("%s after %r; there are %r, and %r is active" % (
                error, keys, list(self.desktop.titles().values()), self.desktop.active()))
        time.sleep(0.15)  # until the window has given the focus to its control

    def back_to(self, pattern, keys):
        """Presses keys that close the active window, and waits for the one under it."""
        number = self.desktop.ask("getactivewindow")
        self.key(*keys)
        Desktop.wait(lambda: number not in self.desktop.titles(), "the end of a window")
        self.shown(pattern)

    def fill(self, text):
        """Replaces what stands in the field that has the keyboard."""
        self.key("ctrl+a")
        self.type(text)

    def tabs(self, count):
        self.key(*["Tab"] * count)

    # --- the display ------------------------------------------------------------------

    def open_display(self):
        self.opened(r"^Select Data Link$", ["ctrl+5"])
        self.opened(SHEET, ["Home", "Return"])
        self.opened(DISPLAY, ["alt+v"])

    def go_to(self, fwp, fn=1):
        self.key("ctrl+g")
        self.type("%d %d" % (fwp, fn))
        self.key("Return")

    def ask_numbers(self, entry, numbers):
        """Chooses an entry of the menu "Edit" and fills its prompts, but for the last OK."""
        keys = ["alt+e", entry]
        for number in numbers:
            self.opened(r"^Enter Value$", keys)
            self.fill(str(number))
            keys = ["Return"]

    def insert_words(self, after, count):
        self.ask_numbers("n", [after, count])
        self.back_to(DISPLAY, ["Return"])

    def move_words(self, first, last, after):
        self.ask_numbers("m", [first, last, after])
        self.back_to(DISPLAY, ["Return"])

    def delete_words(self, first, last):
        """Of the words only the first holds something that is asked about."""
        self.ask_numbers("l", [first, last])
        self.opened(r"^Delete This Entry\?$", ["Return"])
        self.back_to(DISPLAY, ["alt+y"])

    def add_counter(self, fwp, name):
        """An ID counter with its most significant bit first, that begins with 0."""
        definition = r"^Create New ID Counter Definition \(FWP: %d\)$" % fwp
        self.go_to(fwp)
        self.opened(r"^Which type of subframe", ["alt+e", "b"])
        self.opened(definition, ["Tab", "Return"])
        self.fill(name)
        self.tabs(5)
        self.key("Down")  # the transfer order
        self.tabs(1)
        self.opened(r"^Enter New Value$", ["space"])
        self.fill("0")
        self.back_to(definition, ["Return"])
        self.key(*["shift+Tab"] * 6)
        self.back_to(DISPLAY, ["Return"])

    def add_subframe(self, fwp, name, depth):
        """A subframe of the last of two counters."""
        self.go_to(fwp)
        self.opened(r"^Which type of subframe", ["alt+e", "b"])
        self.opened(r"^Create New Subframe Definition \(FWP: %d\)$" % fwp, ["Return"])
        self.fill(name)
        self.tabs(1)
        self.key("Down")
        self.tabs(1)
        self.fill(str(depth))
        self.back_to(DISPLAY, ["Return"])

    def new_word(self, fwp, name, types_down):
        """Begins a measurement, and stays in the list of types."""
        self.go_to(fwp)
        self.opened(r"^Define \(FWP: %d  FN: 1\)$" % fwp, ["alt+e", "e"])
        self.opened(r"^Edit Data Word Definition \(FWP: %d  FN: 1\)$" % fwp, ["Return"])
        self.type(name)
        self.tabs(1)
        self.key(*["Down"] * types_down)

    def add_in_subframe(self, fwp, fn, name):
        self.go_to(fwp, fn)
        self.opened(r"^Edit Data Word Definition \(FWP: %d  FN: %d\)$" % (fwp, fn),
                    ["alt+e", "e"])
        self.type(name)
        self.back_to(DISPLAY, ["Return"])

    def add_supercommutated(self, fwp, name, count, interval):
        self.new_word(fwp, name, 1)
        self.tabs(9)
        self.key("Down")  # first word and interval
        self.tabs(2)
        self.fill(str(count))
        self.tabs(1)
        self.fill(str(interval))
        self.back_to(DISPLAY, ["Return"])

    def edit_fragment(self, key, fwp):
        """A fragment with its most significant bit first."""
        self.opened(r"^Edit Fragment Definition$", [key])
        self.tabs(1)
        self.key("Home")
        self.tabs(1)
        self.fill(str(fwp))
        self.back_to(r"^Edit Data Word Definition", ["Return"])

    def add_fragmented(self, fwp, name, bits, other):
        """A measurement of two fragments, the first at its place."""
        self.new_word(fwp, name, 2)
        self.tabs(6)
        self.fill(str(bits))
        self.tabs(1)
        self.key("Down", "Down")  # every location
        self.edit_fragment("alt+e", fwp)
        self.edit_fragment("alt+a", other)
        # From the list of location definitions back to the length, where Return is OK.
        self.back_to(DISPLAY, ["shift+Tab", "Return"])

    def close_display(self):
        self.back_to(SHEET, ["alt+c"])
        self.back_to(MAIN + ".*flight", ["Return"])

    # --- tests ------------------------------------------------------------------------

    def test_words_that_were_added_moved_and_deleted_are_in_the_saved_file(self):
        self.sample()
        before = self.read("flight.tma")
        editor = self.start_shown(self.path("flight.tma"), title=MAIN + ".*flight")
        self.open_display()
        self.insert_words(after=63, count=8)
        self.add_counter(63, "AUX-ID")
        self.add_subframe(64, "SF-AUX", depth=8)
        self.add_in_subframe(64, 3, "AUX-TEMP")
        self.add_supercommutated(65, "AUX-VIB", 2, 2)
        self.add_fragmented(68, "AUX-POS", 32, 69)
        # Every word that was added moves up by two.
        self.move_words(61, 62, after=70)
        # The second of the two that were moved, and a word that stayed empty.
        self.delete_words(70, 71)
        self.close_display()
        self.save_as("edited.tma")
        self.key("ctrl+q")
        self.ended(editor)
        with open(GOLDEN, "rb") as file:
            self.assertSameDocument(self.read("edited.tma"), file.read())
        self.assertSameDocument(self.read("edited.tma"), self.saved_by_terminal("edited.tma"))
        self.assertEqual(self.read("flight.tma"), before)

    def test_the_display_comes_back_where_it_was_left(self):
        self.sample()
        places = []
        for _ in range(3):
            editor = self.start_shown(self.path("flight.tma"), title=MAIN + ".*flight")
            self.open_display()
            self.close_display()
            self.key("ctrl+q")
            self.ended(editor)
            places.append([self.setting(key) for key in ("PCMx", "PCMy", "PCMdx", "PCMdy")])
        self.assertNotIn(None, places[0])
        # Its frame, which the window manager adds, must not make it wander.
        self.assertEqual(places, [places[0]] * 3)


if __name__ == "__main__":
    main()
