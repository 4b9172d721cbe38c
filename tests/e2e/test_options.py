"""The common rules and options: exit status, streams, replies, settings, wrong usage."""

import os
import re
import unittest

import kavu
from kavu import CLEAN, FAILED, REPORTED, USAGE

SIMPLE = "G\\PN:TEST;\r\nG\\106:09;\r\n"
ORPHAN = "G\\106:09;\r\nP-1\\DLN:LINK ONE;\r\nP-1\\TF:ONE;\r\n"
MEMBERS = ["file", "opened", "changed", "version", "messages", "questions"]


class ExitStatusTest(kavu.KavuTest):
    def test_nothing_reported_is_0(self):
        self.check(SIMPLE, status=CLEAN)

    def test_messages_reported_is_1(self):
        result = self.check("G\\106:96;\r\n", status=REPORTED)
        self.assertEqual(result.ids(), [442])

    def test_not_opened_is_2(self):
        self.write("in.tma", "G\\106:09")
        result = self.run_json("check", "in.tma")
        self.assertEqual(result.status, FAILED)
        self.assertEqual(list(result.json)[:6], MEMBERS)
        self.assertIs(result.json["opened"], False)
        self.assertEqual(result.ids(), [157])

    def test_wrong_usage_is_64(self):
        for arguments in ([], ["--json"], ["fly"], ["check"], ["check", "a", "b"],
                          ["save", "a"], ["save", "a", "-o"], ["store", "a"], ["recover"],
                          ["recover", "x"], ["recover", "--list", "x"],
                          ["save", "a", "-o", "b", "--edition", "1997"],
                          ["save", "a", "-o", "b", "--edition", "11"],
                          ["check", "a", "--edition", "2009"],
                          ["check", "a", "--answer", "yes"], ["check", "a", "--answer", "-3=yes"],
                          ["check", "a", "--progress", "sometimes"],
                          ["check", "a", "--now", "2026-02-30T00:00:00x"]):
            with self.subTest(arguments=arguments):
                result = self.run_plain(*arguments)
                self.assertEqual(result.status, USAGE, result)
                self.assertEqual(result.out, b"")
                self.assertTrue(result.err.startswith(b"kavu-cli: "), result)
        self.assertEqual(os.listdir(self.work), [])

    def test_a_question_alone_is_no_message(self):
        result = self.check(ORPHAN, status=CLEAN)
        self.assertEqual(result.asked(), [304])


class HelpTest(kavu.KavuTest):
    def test_help_of_the_program_and_of_each_command(self):
        for arguments in (["--help"], ["check", "--help"], ["save", "--help"],
                          ["store", "--help"], ["tree", "--help"], ["recover", "--help"]):
            result = self.run_plain(*arguments)
            self.assertEqual(result.status, CLEAN)
            self.assertEqual(result.err, b"")
            self.assertIn(b"Exit status", result.out)
            if len(arguments) == 2:
                self.assertIn(arguments[0].encode(), result.out)

    def test_version(self):
        result = self.run_plain("--version")
        self.assertEqual(result.status, CLEAN)
        self.assertRegex(result.text, r"^kavu-cli \d+\.\d+\.\d+\n$")


class JsonShapeTest(kavu.KavuTest):
    def test_check_has_the_members_of_a_file_and_no_other(self):
        document = self.check(SIMPLE, status=CLEAN).json
        self.assertEqual(list(document), MEMBERS)
        self.assertEqual(document, {"file": "in.tma", "opened": True, "changed": False,
                                    "version": 2009, "messages": [], "questions": []})

    def test_every_command_that_opens_a_file_has_them_first(self):
        self.write("in.tma", SIMPLE)
        for arguments in (["check", "in.tma"], ["tree", "in.tma"],
                          ["save", "in.tma", "-o", "out.tma"],
                          ["store", "in.tma", "--into", "store"]):
            document = self.run_json(*arguments).json
            self.assertEqual(list(document)[:6], MEMBERS, arguments)
            self.assertIs(document["opened"], True)

    def test_a_message_has_id_title_and_text(self):
        message = self.check("G\\106:96;\r\n").json["messages"][0]
        self.assertEqual(list(message), ["id", "title", "text"])
        self.assertEqual((message["id"], message["title"]), (442, 75))
        self.assertNotIn("KAVU Error", message["text"])
        self.assertNotIn("\r", message["text"])

    def test_a_question_has_its_reply(self):
        question = self.check(ORPHAN).json["questions"][0]
        self.assertEqual(list(question), ["id", "title", "text", "reply"])
        self.assertEqual((question["id"], question["title"], question["reply"]), (304, 79, "no"))
        self.assertIn("LINK ONE", question["text"])

    def test_bytes_that_are_not_utf8_are_read_as_windows_1252(self):
        data = b"G\\106:09;\r\nP-1\\DLN:caf\xe9 \x80;\r\nP-2\\DLN:caf\xc3\xa9;\r\n"
        texts = [question["text"] for question in self.check(data).json["questions"]]
        self.assertEqual(len(texts), 2)
        self.assertIn("caf\u00e9 \u20ac", texts[0])
        self.assertIn("caf\u00e9", texts[1])

    def test_json_puts_nothing_on_standard_error_but_notes(self):
        result = self.check(ORPHAN)
        self.assertEqual(result.err, b"")


class AnswerTest(kavu.KavuTest):
    def replies(self, *options):
        return [question["reply"] for question in self.check(ORPHAN, *options).json["questions"]]

    def test_the_default_reply_is_no(self):
        self.assertEqual(self.replies(), ["no"])

    def test_an_answer_goes_to_its_question(self):
        self.assertEqual(self.replies("--answer", "304=yes"), ["yes"])
        self.assertEqual(self.replies("--answer", "305=yes"), ["no"])

    def test_an_answer_to_a_name_that_no_question_has_is_wrong_usage(self):
        for answer in ("restored=no", "restore", "=no", "RESTORE=no"):
            result = self.run_plain("--answer", answer, "check", "in.tma")
            self.assertEqual(result.status, USAGE, answer)

    def test_an_answer_for_all(self):
        self.assertEqual(self.replies("--answer-all", "yes"), ["yes"])
        self.assertEqual(self.replies("--answer-all", "yes", "--answer", "304=no"), ["no"])

    def test_cancel_on_a_box_without_cancel_is_no(self):
        self.assertEqual(self.replies("--answer", "304=cancel"), ["no"])

    def test_yes_changes_the_document_and_no_does_not(self):
        self.assertIs(self.check(ORPHAN).json["changed"], False)
        self.assertIs(self.check(ORPHAN, "--answer", "304=yes").json["changed"], True)


class NowAndSettingsTest(kavu.KavuTest):
    def test_now_fixes_the_banner(self):
        self.write("in.tma", SIMPLE)
        result = self.run_plain("save", "in.tma", "-o", "out.tma", "--now", "2031-12-24T23:59:58")
        self.assertEqual(result.status, CLEAN, result)
        self.assertIn(b"COMMENT: This file saved on 12-24-2031 at 23:59:58 by the KAVU Software;",
                      self.read("out.tma").split(b"\r\n"))

    def test_without_now_the_clock_is_used(self):
        self.write("in.tma", SIMPLE)
        self.run_plain("save", "in.tma", "-o", "out.tma")
        self.assertRegex(self.read("out.tma"),
                         rb"COMMENT: This file saved on \d\d-\d\d-20\d\d at \d\d:\d\d:\d\d by ")

    def test_settings_give_the_edition_of_a_file_that_names_none(self):
        self.write("my.ini", "[KAVU-9]\r\nIRIGInputVersion=2005\r\n")
        self.assertEqual(self.check("G\\PN:A;").json["version"], 2011)
        self.assertEqual(self.check("G\\PN:A;", "--settings", "my.ini").json["version"], 2005)

    def test_a_settings_file_of_its_own_leaves_the_support_folder_alone(self):
        self.write("my.ini", "[KAVU-9]\r\n")
        self.check(SIMPLE, "--settings", "my.ini")
        self.assertEqual(os.listdir(self.home), [])

    def test_a_settings_file_that_is_missing_is_remarked(self):
        self.write("in.tma", SIMPLE)
        result = self.run_json("check", "in.tma", "--settings", "absent.ini")
        self.assertEqual(result.status, CLEAN)
        self.assertIn("absent.ini", " ".join(result.notes))

    def test_a_file_that_is_no_settings_file_is_refused_and_stays(self):
        for data in (SIMPLE, "G\\PN:[x];", "hello", "[KAVU-9]\r\nCreateBackup=0\0", "\0\0"):
            self.write("not.ini", data)
            self.write("in.tma", SIMPLE)
            result = self.run_json("save", "in.tma", "-o", "out.tma", "--settings", "not.ini")
            self.assertEqual(result.status, FAILED, result)
            self.assertEqual(result.json["messages"][0]["text"], "'not.ini' is no settings file.")
            self.assertEqual(self.read("not.ini"), data.encode())
            self.assertFalse(self.exists("out.tma"))
        os.mkdir(self.path("folder"))
        for name in ("folder", "/dev/null"):
            result = self.run_json("check", "in.tma", "--settings", name)
            self.assertEqual(result.status, FAILED, result)

    def test_a_settings_file_may_begin_with_comments_and_may_be_empty(self):
        for data in ("", "\r\n; mine\r\n# too\n  [KAVU-9]\r\nCreateBackup=0\r\n", "; only this"):
            self.write("my.ini", data)
            self.assertEqual(self.check(SIMPLE, "--settings", "my.ini").status, CLEAN, data)

    def test_text_in_an_integer_key_reads_as_0(self):
        self.write("my.ini", "[KAVU-9]\r\nCreateBackup=abc\r\n")
        self.write("out.tma", "old")
        self.saved(SIMPLE, "--settings", "my.ini")
        self.assertFalse(self.exists("out.bak"))

    def test_without_settings_the_defaults_hold_and_a_backup_is_made(self):
        self.write("out.tma", "old")
        self.saved(SIMPLE)
        self.assertEqual(self.read("out.bak"), b"old")

    def test_a_batch_run_leaves_the_list_of_recent_files_alone(self):
        self.check(SIMPLE)
        for folder, _, files in os.walk(self.home):
            for name in files:
                with open(os.path.join(folder, name), "rb") as file:
                    self.assertNotIn(b"KAVU_Opened_Files", file.read())

    def test_the_temporary_root_is_temp_then_tmpdir(self):
        self.write("in.tma", SIMPLE)
        other = self.folder("other")
        os.chmod(other, 0o500)
        result = self.run_json("check", "in.tma", env={"TMPDIR": other})
        self.assertEqual(result.status, CLEAN, result)


class TextTest(kavu.KavuTest):
    def test_the_messages_window_and_a_summary_are_on_standard_output(self):
        self.write("in.tma", "G\\106:96;\r\n")
        result = self.run_cli("check", "in.tma")
        self.assertEqual(result.status, REPORTED)
        lines = result.text.splitlines()
        self.assertEqual(lines[0], "KAVU-9 Error Messages")
        self.assertEqual(lines[1], "TMATS File: in.tma")
        self.assertTrue(any("(KAVU Error #442)" in line for line in lines), result)
        self.assertRegex(lines[-1], r"^in\.tma: 106-\d\d \(\d{4}\), 1 message$")

    def test_a_clean_file_prints_one_line(self):
        self.write("in.tma", SIMPLE)
        result = self.run_cli("check", "in.tma")
        self.assertEqual(result.text, "in.tma: 106-09 (2009), 0 messages\n")
        self.assertEqual(result.err, b"")

    def test_errors_go_to_standard_error(self):
        result = self.run_cli("check", "absent.tma")
        self.assertEqual(result.status, FAILED)
        self.assertEqual(result.out, b"")
        self.assertIn(b"Unable to open 'absent.tma'", result.err)
        self.assertIn(b"No such file or directory", result.err)

    def test_a_question_is_shown_with_its_reply(self):
        self.write("in.tma", ORPHAN)
        result = self.run_cli("check", "in.tma")
        self.assertRegex(result.err.decode(), r"(?s)LINK ONE.* -> no\n")

    def test_control_characters_of_a_file_do_not_reach_the_terminal(self):
        self.write("in.tma", b"G\\106:09;\r\nP-1\\DLN:a\x1b[2Jb;\r\n")
        result = self.run_cli("check", "in.tma")
        self.assertNotIn(b"\x1b", result.out + result.err)

    def test_quiet_leaves_notes_out_and_errors_in(self):
        self.write("in.tma", "X-1\\A:B;\r\nG\\106:09;\r\n")
        self.assertTrue(self.run_cli("check", "in.tma").notes)
        self.assertEqual(self.run_cli("check", "in.tma", "--quiet").err, b"")
        self.assertIn(b"Unable to open", self.run_cli("--quiet", "check", "absent.tma").err)


class ProgressTest(kavu.KavuTest):
    def progress(self, *options):
        self.write("in.tma", SIMPLE)
        return self.run_cli("check", "in.tma", *options).err

    def test_off_a_terminal_there_is_none(self):
        self.assertEqual(self.progress(), b"")
        self.assertEqual(self.progress("--progress", "auto"), b"")
        self.assertEqual(self.progress("--progress", "never"), b"")

    def test_always_shows_it(self):
        self.assertNotEqual(self.progress("--progress", "always"), b"")

    def test_quiet_is_stronger(self):
        self.assertEqual(self.progress("--progress", "always", "--quiet"), b"")

    def test_on_a_terminal_auto_shows_a_line_and_wipes_it(self):
        self.write("in.tma", SIMPLE)
        read, write = os.openpty()
        result = self.run_cli("check", "in.tma", stderr=write)
        os.close(write)
        shown = b""
        try:
            while True:
                part = os.read(read, 65536)
                if not part:
                    break
                shown += part
        except OSError:  # the other end is closed
            pass
        os.close(read)
        self.assertEqual(result.status, CLEAN)
        self.assertTrue(shown.startswith(b"\r"), shown)
        self.assertTrue(shown.endswith(b"\r\x1b[K"), shown)
        self.assertIsNone(re.search(rb"\n", shown), shown)


if __name__ == "__main__":
    kavu.main()
