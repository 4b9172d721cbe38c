"""Saving: banner, file name field, backup, editions, and awkward targets."""

import os
import stat
import unittest

import kavu
from kavu import CLEAN, FAILED, REPORTED

SIMPLE = "G\\PN:TEST;\r\nG\\106:09;\r\n"
LINE = b"COMMENT: This file saved on 01-02-2026 at 03:04:05 by the KAVU Software;"


class BannerTest(kavu.KavuTest):
    def test_the_banner_is_five_comments_at_the_head_of_the_file(self):
        lines = self.saved(SIMPLE).split(b"\r\n")
        rule = b"COMMENT: " + b"*" * (len(LINE) - len(b"COMMENT: ") - 1) + b";"
        self.assertEqual(lines[0], rule)
        self.assertEqual(lines[1], LINE)
        self.assertEqual(lines[4], rule)
        self.assertTrue(all(line.startswith(b"COMMENT: ") for line in lines[:5]))
        self.assertFalse(lines[5].startswith(b"COMMENT"))

    def test_a_document_of_1996_has_no_banner_at_all(self):
        self.write("old.ini", "[KAVU-9]\r\nIRIGInputVersion=1996\r\n")
        self.assertEqual(self.saved("G\\PN:A;", "--settings", "old.ini"), b"G\\PN:A;\r\n")

    def test_saving_twice_gives_one_banner(self):
        once = self.saved(SIMPLE)
        twice = self.saved(once, name="again.tma")
        self.assertEqual(twice, once)

    def test_a_value_that_holds_the_word_comment_goes_with_the_old_banner(self):
        saved = self.saved("G\\106:09;G\\COM:see COMMENT: below;G\\PN:comment: stays;")
        self.assertNotIn(b"below", saved)
        self.assertIn(b"G\\PN:comment: stays;\r\n", saved)

    def test_what_the_text_of_another_command_has_changed_is_told_with_what_it_was(self):
        """A plain test of the text finds more than it looks for; what that costs is told."""
        command = "G\\COM:see COMMENT: or G\\FN: or G\\106: here;"
        for edition, options, held in (("05", (), "COMMENT:"), ("96", (), "COMMENT:"),
                                       ("05", ("--keep-comments", "--edition", "2009"), "G\\106:"),
                                       ("09", ("--keep-comments",), "G\\FN:")):
            with self.subTest(edition=edition, options=options):
                self.write("in.tma", "G\\106:%s;%sT-1\\COM:a COMMENT: b G\\FN:c;" % (
                    edition, command))
                result = self.run_json("save", "in.tma", "-o", "out.tma", *options)
                self.assertEqual(result.status, REPORTED)
                self.assertNotIn(command.encode(), self.read("out.tma"))
                told = [message for message in result.json["messages"] if command in message["text"]]
                self.assertEqual([message["id"] for message in told], [0], result)
                self.assertIn("'%s'" % held, told[0]["text"])
                self.assertIn(b"T-1\\COM:a COMMENT: b G\\FN:c;", self.read("out.tma"))
        plain = self.run_cli("save", "in.tma", "-o", "out.tma")
        self.assertIn(command, plain.text.replace("\n", " "))

    def test_in_another_group_the_word_comment_stays(self):
        self.assertIn(b"T-1\\COM:a COMMENT: b;\r\n", self.saved("T-1\\COM:a COMMENT: b;"))

    def test_the_file_name_is_the_first_command_from_2009_on(self):
        for number, named in (("07", False), ("09", True), ("11", True)):
            rest = self.without_banner(self.saved("G\\PN:A;G\\106:%s;" % number))
            expected = b"G\\PN:A;\r\nG\\106:%s;\r\n" % number.encode()
            self.assertEqual(rest, (b"G\\FN:out.tma;\r\n" if named else b"") + expected)

    def test_a_file_name_that_is_there_is_replaced_in_its_place(self):
        rest = self.without_banner(self.saved("G\\PN:A;G\\FN:old;G\\106:09;G\\FN:older;"))
        self.assertEqual(rest, b"G\\PN:A;\r\nG\\FN:out.tma;\r\nG\\106:09;\r\nG\\FN:out.tma;\r\n")

    def test_the_file_name_has_no_folder(self):
        self.folder("work/sub")
        self.write("in.tma", SIMPLE)
        self.run_json("save", "in.tma", "-o", "sub/x.tma")
        self.assertIn(b"G\\FN:x.tma;\r\n", self.read("sub/x.tma"))

    def test_a_document_without_any_g_command_can_be_saved(self):
        rest = self.without_banner(self.saved("T-1\\ID:X;"))
        self.assertEqual(rest, b"G\\FN:out.tma;\r\nT-1\\ID:X;\r\n")

    def test_an_empty_document_can_be_saved(self):
        self.assertEqual(self.without_banner(self.saved("")), b"G\\FN:out.tma;\r\n")


class JsonTest(kavu.KavuTest):
    def test_save_names_its_output_and_the_flag_before_the_save(self):
        self.write("in.tma", "P-1\\DLN:L;")
        document = self.run_json("save", "in.tma", "-o", "out.tma", "--answer", "304=yes").json
        self.assertEqual(document["output"], "out.tma")
        self.assertIs(document["changed"], True)
        self.assertEqual(document["file"], "in.tma")

    def test_the_text_form_names_the_output(self):
        self.write("in.tma", SIMPLE)
        result = self.run_cli("save", "in.tma", "-o", "out.tma")
        self.assertEqual(result.text,
                         "Saved as out.tma\nin.tma: 106-09 (2009), 0 messages\n")


class EditionOptionTest(kavu.KavuTest):
    def test_a_document_is_converted_to_the_edition(self):
        for year, number in ((1999, b"99"), (2000, b"00"), (2001, b"01"), (2004, b"04"),
                             (2005, b"05"), (2007, b"07"), (2011, b"11")):
            self.write("in.tma", SIMPLE)
            result = self.run_json("save", "in.tma", "-o", "out.tma", "--edition", str(year))
            self.assertEqual(result.status, REPORTED, result)
            self.assertEqual(result.ids(), [444])
            self.assertIs(result.json["changed"], True)
            self.assertEqual(result.json["version"], year)
            self.assertIn(b"G\\106:" + number + b";\r\n", self.read("out.tma"))

    def test_the_edition_1996_removes_the_field(self):
        self.assertEqual(self.saved(SIMPLE, "--edition", "1996"), b"G\\PN:TEST;\r\n")

    def test_the_documents_own_edition_changes_nothing(self):
        self.write("in.tma", SIMPLE)
        result = self.run_json("save", "in.tma", "-o", "out.tma", "--edition", "2009")
        self.assertEqual(result.status, CLEAN)
        self.assertIs(result.json["changed"], False)

    def test_the_edition_is_for_this_run_and_not_written_to_the_settings(self):
        self.saved(SIMPLE, "--edition", "2005")
        self.assertEqual(self.check(SIMPLE).json["version"], 2009)

    def test_s_groups_need_2005_and_v_groups_2004(self):
        data = "G\\106:%s;S-1\\DLN:;V-1\\ID:X;"
        for number, s_kept, v_kept in (("01", False, False), ("04", False, True),
                                       ("05", True, True), ("11", True, True)):
            saved = self.saved(data % number)
            self.assertEqual(b"S-1\\DLN:;\r\n" in saved, s_kept, number)
            self.assertEqual(b"V-1\\ID:X;\r\n" in saved, v_kept, number)

    def test_a_v_group_without_the_name_of_its_vendor_is_saved_as_it_is(self):
        saved = self.saved("G\\106:09;G\\DSI\\N:1;G\\DSI-1:A;G\\DST-1:RF;T-1\\ID:A;M-1\\ID:A;"
                           "V-1\\ID:A;V-1\\X:1;")
        self.assertIn(b"V-1\\ID:A;\r\nV-1\\X:1;\r\n", saved)


class BackupTest(kavu.KavuTest):
    def test_an_existing_target_is_backed_up(self):
        self.write("out.tma", "old contents")
        self.saved(SIMPLE)
        self.assertEqual(self.read("out.bak"), b"old contents")

    def test_no_backup_is_made_when_the_settings_say_so(self):
        self.write("my.ini", "[KAVU-9]\r\nCreateBackup=0\r\n")
        self.write("out.tma", "old contents")
        self.saved(SIMPLE, "--settings", "my.ini")
        self.assertFalse(self.exists("out.bak"))

    def test_a_file_may_be_saved_over_itself(self):
        self.write("in.tma", SIMPLE)
        self.assertEqual(self.run_json("save", "in.tma", "-o", "in.tma").status, CLEAN)
        self.assertEqual(self.read("in.bak"), SIMPLE.encode())
        self.assertIn(b"G\\FN:in.tma;\r\n", self.read("in.tma"))

    def test_a_backup_file_as_target_stops_the_save(self):
        self.write("in.tma", SIMPLE)
        self.write("out.bak", "old contents")
        result = self.run_json("save", "in.tma", "-o", "out.bak")
        self.assertEqual(result.status, FAILED)
        self.assertIn("Unable to create backup file. File names are the same.",
                      result.json["messages"][0]["text"])
        self.assertEqual(self.read("out.bak"), b"old contents")

    def test_a_dot_in_the_folder_and_none_in_the_name_gives_a_wrong_backup_name(self):
        # The rule looks at the whole path: "a.b/out" is backed up as "a.bak".
        self.folder("work/a.b")
        self.write("a.b/out", "old contents")
        self.write("in.tma", SIMPLE)
        self.assertEqual(self.run_json("save", "in.tma", "-o", "a.b/out").status, CLEAN)
        self.assertEqual(self.read("a.bak"), b"old contents")
        self.assertEqual(os.listdir(self.path("a.b")), ["out"])

    def test_a_backup_that_can_not_be_made_is_a_question(self):
        self.write("in.tma", SIMPLE)
        self.write("out.tma", "old contents")
        os.mkdir(self.path("out.bak"))
        result = self.run_json("save", "in.tma", "-o", "out.tma")
        self.assertEqual(result.status, FAILED)
        self.assertIn("Continue anyway?", result.json["questions"][0]["text"])
        self.assertEqual(self.read("out.tma"), b"old contents")
        result = self.run_json("save", "in.tma", "-o", "out.tma", "--answer-all", "yes")
        self.assertIn(result.status, (CLEAN, REPORTED), result)
        self.assertIn(b"G\\PN:TEST;", self.read("out.tma"))


class TargetTest(kavu.KavuTest):
    def open_to_all(self):
        for folder in (self.root, self.temp, self.home, self.work):
            os.chmod(folder, 0o777)

    def save_as_nobody(self, output):
        self.write("in.tma", SIMPLE)
        self.open_to_all()
        return self.run_json("save", "in.tma", "-o", output, preexec_fn=kavu.drop_privileges)

    def test_a_read_only_target_is_named_so(self):
        path = self.write("out.tma", "old contents")
        os.chmod(path, 0o444)
        result = self.save_as_nobody("out.tma")
        self.assertEqual(result.status, FAILED)
        text = result.json["messages"][-1]["text"]
        self.assertIn("Unable to open 'out.tma'", text)
        self.assertIn("Permission denied (File is Read-Only)", text)
        self.assertEqual(self.read("out.tma"), b"old contents")

    def test_a_read_only_folder(self):
        self.folder("work/sub")
        os.chmod(self.path("sub"), 0o555)
        result = self.save_as_nobody("sub/out.tma")
        self.assertEqual(result.status, FAILED)
        self.assertIn("Permission denied", result.json["messages"][-1]["text"])
        self.assertEqual(os.listdir(self.path("sub")), [])

    def test_a_symbolic_link_stays_one(self):
        self.write("real.tma", "old contents")
        os.symlink("real.tma", self.path("out.tma"))
        saved = self.saved(SIMPLE)
        self.assertTrue(os.path.islink(self.path("out.tma")))
        self.assertEqual(self.read("real.tma"), saved)

    def test_a_hard_link_stays_one(self):
        self.write("other.tma", "old contents")
        os.link(self.path("other.tma"), self.path("out.tma"))
        saved = self.saved(SIMPLE)
        self.assertEqual(self.read("other.tma"), saved)
        self.assertEqual(os.stat(self.path("out.tma")).st_nlink, 2)

    def test_owner_and_mode_stay(self):
        path = self.write("out.tma", "old contents")
        os.chmod(path, 0o640)
        if os.getuid() == 0:
            os.chown(path, 65534, 65534)
        before = os.stat(path)
        self.saved(SIMPLE)
        after = os.stat(path)
        self.assertEqual(stat.S_IMODE(after.st_mode), 0o640)
        self.assertEqual((after.st_uid, after.st_gid), (before.st_uid, before.st_gid))

    def test_a_name_of_255_bytes(self):
        name = "n" * 251 + ".tma"
        self.write("in.tma", SIMPLE)
        self.assertEqual(self.run_json("save", "in.tma", "-o", name).status, CLEAN)
        self.assertIn(b"G\\FN:" + name.encode() + b";\r\n", self.read(name))
        self.assertEqual(self.run_json("save", "in.tma", "-o", name).status, CLEAN)
        self.assertTrue(self.exists("n" * 251 + ".bak"))

    def test_a_source_that_is_read_only_is_opened_and_saved_elsewhere(self):
        path = self.write("in.tma", SIMPLE)
        os.chmod(path, 0o444)
        self.open_to_all()
        result = self.run_json("save", "in.tma", "-o", "out.tma",
                               preexec_fn=kavu.drop_privileges)
        self.assertEqual(result.status, CLEAN, result)
        self.assertEqual(self.read("in.tma"), SIMPLE.encode())

    def test_the_mask_of_the_user_holds_for_a_new_file(self):
        self.saved(SIMPLE)
        mask = os.umask(0)
        os.umask(mask)
        self.assertEqual(stat.S_IMODE(os.stat(self.path("out.tma")).st_mode), 0o666 & ~mask)


if __name__ == "__main__":
    kavu.main()
