"""Files that cannot be opened, and outputs that cannot be written."""

import os
import resource
import signal
import subprocess
import unittest

import kavu
from kavu import CLEAN, FAILED, REPORTED

SIMPLE = "G\\PN:TEST;\r\nG\\106:09;\r\n"


class UnreadableTest(kavu.KavuTest):
    def refused(self, *arguments, **options):
        result = self.run_json(*arguments, **options)
        self.assertEqual(result.status, FAILED, result)
        self.assertIs(result.json["opened"], False)
        self.assertEqual(len(result.json["messages"]), 1, result)
        return result.json["messages"][0]["text"]

    def test_a_missing_file(self):
        text = self.refused("check", "absent.tma")
        self.assertIn("Unable to open 'absent.tma'", text)
        self.assertIn("Reason: No such file or directory", text)

    def test_an_empty_name(self):
        self.assertEqual(self.refused("check", ""), "No pathname was entered")

    def test_a_folder_in_place_of_a_file(self):
        os.mkdir(self.path("folder.tma"))
        text = self.refused("check", "folder.tma")
        self.assertIn("folder.tma", text)
        self.assertIn("Is a directory", text)

    def test_a_file_without_read_permission(self):
        path = self.write("in.tma", SIMPLE)
        os.chmod(path, 0)
        for folder in (self.root, self.temp, self.home, self.work):
            os.chmod(folder, 0o777)
        text = self.refused("check", "in.tma", preexec_fn=kavu.drop_privileges)
        self.assertIn("Permission denied", text)

    def test_every_command_gives_its_document_when_opening_fails(self):
        for arguments in (["check", "x"], ["tree", "x"], ["save", "x", "-o", "y"],
                          ["store", "x", "--into", "z"]):
            self.assertIn("Unable to open 'x'", self.refused(*arguments))
        self.assertEqual(os.listdir(self.work), [])

    def test_a_temporary_root_that_can_not_be_used(self):
        path = self.write("in.tma", SIMPLE)
        result = self.run_json("check", "in.tma", env={"TEMP": path + "/root"})
        self.assertEqual(result.status, FAILED)
        self.assertIs(result.json["opened"], False)
        self.assertIn("Unable to create temporary directory", result.json["messages"][0]["text"])

    def test_a_default_extension_is_tried(self):
        self.write("one.tma", SIMPLE)
        self.write("two.tmt", SIMPLE)
        self.assertEqual(self.run_json("check", "one").json["file"], "one.tma")
        self.assertEqual(self.run_json("check", "two").json["file"], "two.tmt")
        self.assertEqual(self.run_json("check", '"one"').json["file"], "one.tma")


class UnwritableTest(kavu.KavuTest):
    def not_saved(self, output, **options):
        self.write("in.tma", SIMPLE)
        result = self.run_json("save", "in.tma", "-o", output, **options)
        self.assertEqual(result.status, FAILED, result)
        self.assertIs(result.json["opened"], True)
        self.assertNotIn("output", result.json)
        return " ".join(message["text"] for message in result.json["messages"])

    def test_a_folder_that_is_not_there(self):
        text = self.not_saved("absent/out.tma")
        self.assertIn("absent/out.tma", text)
        self.assertIn("No such file or directory", text)

    def test_a_folder_in_place_of_the_output(self):
        os.mkdir(self.path("out.tma"))
        self.assertIn("out.tma", self.not_saved("out.tma"))
        self.assertEqual(os.listdir(self.path("out.tma")), [])

    def test_a_full_device(self):
        text = self.not_saved("/dev/full")
        self.assertIn("/dev/full", text)

    def test_a_name_that_is_too_long(self):
        text = self.not_saved("n" * 256 + ".tma")
        self.assertIn("File name too long", text)

    def test_a_file_size_limit_is_a_failed_write_and_the_backup_is_whole(self):
        self.write("out.tma", "G\\PN:OLD;\r\n")
        self.write("big.tma", kavu.big_document(1))
        limit = 600000

        def limited():
            resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))

        # The limit holds for the working store too, so either step may meet it first.
        result = self.run_json("save", "big.tma", "-o", "out.tma", preexec_fn=limited)
        self.assertEqual(result.status, FAILED, result)
        self.assertIn("File too large", str(result.json["messages"]))
        self.assertEqual(self.read("out.tma"), b"G\\PN:OLD;\r\n")


class StandardOutputTest(kavu.KavuTest):
    def test_a_full_standard_output_is_told_and_exits_2(self):
        self.write("in.tma", SIMPLE)
        with open("/dev/full", "wb") as full:
            for arguments in (["check", "in.tma"], ["--json", "tree", "in.tma"], ["--help"],
                              ["recover", "--list"]):
                result = self.run_plain(*arguments, stdout=full)
                self.assertEqual(result.status, FAILED, arguments)
                self.assertIn(b"standard output", result.err)

    def test_a_closed_standard_output_is_told_and_exits_2(self):
        self.write("in.tma", SIMPLE)
        result = self.run_cli("save", "in.tma", "-o", "out.tma",
                              preexec_fn=lambda: os.close(1))
        self.assertEqual(result.status, FAILED)
        self.assertIn(b"standard output", result.err)
        # Nothing of what was printed went into a file that took the number.
        self.assertEqual(self.without_banner(self.read("out.tma")),
                         b"G\\FN:out.tma;\r\nG\\PN:TEST;\r\nG\\106:09;\r\n")

    def test_closed_standard_streams_do_no_harm_to_the_files(self):
        self.write("in.tma", SIMPLE)

        def close_all():
            for descriptor in (0, 1, 2):
                os.close(descriptor)

        result = self.run_cli("save", "in.tma", "-o", "out.tma", preexec_fn=close_all)
        self.assertEqual(result.status, FAILED)
        self.assertIn(b"G\\PN:TEST;\r\n", self.read("out.tma"))

    def test_a_reader_that_went_away_does_not_kill_the_run(self):
        self.write("in.tma", SIMPLE)
        read, write = os.pipe()
        os.close(read)
        result = self.run_cli("--json", "check", "in.tma", stdout=write)
        os.close(write)
        self.assertEqual(result.status, FAILED)
        self.assertIn(b"Broken pipe", result.err)


class NameTest(kavu.KavuTest):
    """What a name on the command line means."""

    def test_quotes_and_outer_blanks_are_part_of_a_name(self):
        for name in (" a.tma", "a.tma ", '"a".tma', "' a '", '"a"'):
            self.write(name, "G\\106:11;G\\PN:%s;" % len(name))
            result = self.run_json("get", name, "G\\PN")
            self.assertEqual(result.status, CLEAN, result)
            self.assertEqual((result.json["file"], result.json["values"]),
                             (name, {"G\\PN": [str(len(name))]}))

    def test_what_is_no_file_is_refused_by_name(self):
        os.mkfifo(self.path("pipe.tma"))
        os.mkdir(self.path("folder.tma"))
        os.symlink("pipe.tma", self.path("link.tma"))
        self.write("in.tma", "G\\106:11;")
        for name in ("pipe.tma", "folder.tma", "link.tma", "/dev/null", "/dev/zero"):
            for command in (("check", name), ("save", name, "-o", "out.tma"),
                            ("source", "import", "in.tma", name, "X", "-o", "out.tma")):
                result = self.run_json(*command)
                self.assertEqual(result.status, FAILED, result)
                self.assertIn("Unable to open '%s'\n\nReason: Is a" % name,
                              "".join(each["text"] for each in result.json["messages"]))
                self.assertFalse(self.exists("out.tma"))


if __name__ == "__main__":
    kavu.main()
