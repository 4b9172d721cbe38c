"""A document from its opening to its end, as a user works with the keyboard."""

import os
import time

from desktop import MAIN, QUESTION, Desktop, EditorTest, main, undated


class Documents(EditorTest):
    def test_open_edition_save_as_and_exit(self):
        self.sample()
        before = self.read("flight.tma")
        editor = self.start_shown()
        self.open_by_dialog("flight.tma")
        self.choose_edition()
        self.save_as("later.tma")
        self.key("ctrl+q")
        self.ended(editor)
        expected = self.saved_by_terminal("flight.tma", "--edition", "2011")
        self.assertSameDocument(self.read("later.tma"), expected)
        self.assertNotEqual(expected, before)
        self.assertEqual(self.read("flight.tma"), before)
        self.assertFalse(os.path.exists(self.path("flight.tma.bak")))

    def test_save_writes_what_the_terminal_writes_and_keeps_a_backup(self):
        self.sample()
        before = self.read("flight.tma")
        expected = self.saved_by_terminal("flight.tma")
        editor = self.start_shown(self.path("flight.tma"), title=MAIN + ".*flight")
        self.key("ctrl+s")
        Desktop.wait(lambda: undated(self.read("flight.tma")) == undated(expected),
                     "the saved file")
        time.sleep(0.3)  # keys are not heard before the saving is over
        self.key("ctrl+q")
        self.ended(editor)
        self.assertSameDocument(self.read("flight.tma"), expected)
        backups = [name for name in os.listdir(self.work) if name.endswith(".bak")]
        self.assertEqual(len(backups), 1, os.listdir(self.work))
        self.assertEqual(self.read(backups[0]), before)

    def changed_document(self):
        """An editor with a document whose edition was changed."""
        self.sample()
        editor = self.start_shown(self.path("flight.tma"), title=MAIN + ".*flight")
        self.choose_edition()
        return editor, self.read("flight.tma")

    def test_what_was_undone_is_saved_as_it_was(self):
        editor, _ = self.changed_document()
        expected = self.saved_by_terminal("flight.tma")
        later = self.saved_by_terminal("flight.tma", "--edition", "2011")
        self.shown(MAIN + r".*flight\.tma \(106-11\)\*$")
        self.key("ctrl+z")
        self.shown(MAIN + r".*flight\.tma \(106-09\)$")
        self.save_as("undone.tma")
        self.assertSameDocument(self.read("undone.tma"), expected)
        self.key("ctrl+shift+z")
        self.shown(MAIN + r".*undone\.tma \(106-11\)\*$")
        self.save_as("again.tma")
        self.assertSameDocument(self.read("again.tma"), later)
        self.key("ctrl+q")
        self.ended(editor)
        # Opened again it is the document from before. The editor's settings ask for the edition now.
        self.assertSameDocument(self.saved_by_terminal("undone.tma"), expected)

    def test_close_with_yes_saves(self):
        self.sample()
        expected = self.saved_by_terminal("flight.tma", "--edition", "2011")
        editor, _ = self.changed_document()
        self.key("ctrl+w")
        self.shown(QUESTION)
        self.key("alt+y")
        self.shown(MAIN + "$")
        self.assertSameDocument(self.read("flight.tma"), expected)
        self.key("ctrl+q")
        self.ended(editor)

    def test_close_with_no_drops_the_changes(self):
        editor, before = self.changed_document()
        self.key("ctrl+w")
        self.shown(QUESTION)
        self.key("alt+n")
        self.shown(MAIN + "$")
        self.assertEqual(self.read("flight.tma"), before)
        self.key("ctrl+q")
        self.ended(editor)
        self.assertEqual(os.listdir(self.work), ["flight.tma"])

    def test_close_with_cancel_keeps_the_document_open(self):
        editor, before = self.changed_document()
        self.key("ctrl+w")
        self.shown(QUESTION)
        self.key("Escape")
        self.shown(MAIN + ".*flight")
        self.assertEqual(self.read("flight.tma"), before)
        self.save_as("kept.tma")
        self.key("ctrl+q")
        self.ended(editor)
        self.assertSameDocument(self.read("kept.tma"),
                                self.saved_by_terminal("flight.tma", "--edition", "2011"))

    def test_exit_and_cancel_leaves_the_program_running(self):
        editor, before = self.changed_document()
        self.key("ctrl+q")
        self.shown(QUESTION)
        self.key("Escape")
        self.shown(MAIN + ".*flight")
        self.assertIsNone(editor.poll())
        self.key("alt+F4")
        self.shown(QUESTION)
        self.key("alt+n")
        self.ended(editor)
        self.assertEqual(self.read("flight.tma"), before)

    def test_a_changed_document_is_asked_about_before_the_next_is_opened(self):
        editor, before = self.changed_document()
        self.sample("flight-test-96.tma", "other.tma")
        self.key("ctrl+o")
        self.shown(r"^Open TMATS File$")
        self.type(self.path("other.tma"))
        self.key("Return")
        self.shown(QUESTION)
        self.key("Escape")
        self.shown(MAIN + ".*flight")
        self.assertEqual(self.read("flight.tma"), before)
        self.key("ctrl+q")
        self.shown(QUESTION)
        self.key("alt+n")
        self.ended(editor)


if __name__ == "__main__":
    main()
