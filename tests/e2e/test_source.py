"""The commands that change the set of data sources: `source` and `link`.

A golden file has what an operation does to a whole sample: the difference between the document
that is only saved and the one that was changed and saved. Nothing else may differ.
`KAVU_WRITE_GOLDEN=1` writes the files again.
"""

import difflib
import os
import unittest

import kavu
from kavu import CLEAN, FAILED, REPORTED, USAGE

ROOT = os.path.dirname(os.path.dirname(kavu.DATA))
SAMPLES = os.path.join(ROOT, "samples")
GOLDEN = os.path.join(ROOT, "tests", "golden", "sources")
EDITIONS = {"96": "flight-test-96.tma", "09": "flight-test.tma", "11": "flight-test-11.tma"}
SAME_NAMES = "[KAVU-9]\r\nCheckForDupMeasurements=0\r\n"

OTHER = (b"G\\106:09;\nG\\DSI\\N:2;\nG\\DSI-1:Pod;\nG\\DST-1:RF;\nG\\DSI-2:Box;\nG\\DST-2:SSR;\n"
         b"T-1\\ID:Pod;\nT-1\\TID:P1;\nR-1\\ID:Box;\nR-1\\CDLN-1:Pod Bus;\n"
         b"M-1\\ID:Pod;\nM-1\\BB\\DLN:PCM Stream 1;\nM-1\\SI\\N:0;\n"
         b"M-2\\ID:Box;\nM-2\\BB\\DLN:Pod Bus;\nM-2\\SI\\N:0;\n"
         b"P-1\\DLN:PCM Stream 1;\nP-1\\TF:ONE;\nP-2\\DLN:Pod Bus;\nP-2\\TF:1553;\n"
         b"D-1\\DLN:PCM Stream 1;\nD-1\\ML\\N:1;\nD-1\\MN\\N-1:1;\nD-1\\MN-1-1:POD-TEMP;\n"
         b"B-1\\DLN:Pod Bus;\nB-1\\MN-1-1-1:POD-SPEED;\n"
         b"C-1\\DCN:POD-TEMP;\nC-1\\DCT:NON;\nC-2\\DCN:POD-SPEED;\nC-2\\DCT:NON;\n"
         b"C-3\\DCN:ELSEWHERE;\nC-3\\DCT:NON;\n")


class SourceTest(kavu.KavuTest):
    def sample(self, edition="09"):
        with open(os.path.join(SAMPLES, EDITIONS[edition]), "rb") as file:
            return file.read()

    def run_on(self, edition, *command, options=(), status=None):
        """Runs a command on a sample; gives the result and the two saved documents."""
        if status is None:
            # The one of 106-96 does not say so. Read as one of 106-11 it has records with commands
            # that are told, because they are not saved.
            status = REPORTED if edition == "96" else CLEAN
        self.write("in.tma", self.sample(edition))
        before = self.saved(self.sample(edition), name="in.tma", out="out.tma")
        os.remove(self.path("out.tma"))
        at = 2  # FILE stands behind the two words of the command
        result = self.run_json(*options, *command[:at], "in.tma", *command[at:], "-o", "out.tma")
        self.assertEqual(result.status, status, result)
        return result, before, self.read("out.tma") if self.exists("out.tma") else None

    def compare(self, name, edition, *command, **options):
        result, before, after = self.run_on(edition, *command, **options)
        lines = [self.named_records(text) for text in (before, after)]
        difference = "\n".join(difflib.unified_diff(*lines, "saved", name, lineterm="", n=0))
        path = os.path.join(GOLDEN, name + ".diff")
        if "KAVU_WRITE_GOLDEN" in os.environ:
            os.makedirs(GOLDEN, exist_ok=True)
            with open(path, "w", encoding="latin-1", newline="") as file:
                file.write(difference + "\n")
        with open(path, encoding="latin-1", newline="") as file:
            self.assertEqual(difference + "\n", file.read())
        return result, after

    def named_records(self, document):
        """The lines, with the conversion records under their names and in their order: a new
        record moves the numbers of those behind it."""
        lines, records, block = [], {}, None
        for line in document.decode("latin-1").split("\r\n"):
            head, _, rest = line.partition("\\")
            if not head.startswith("C-"):
                # Line breaks of a comment do not end its record.
                (lines if block is None or line[1:2] in "-\\" else block).append(line)
                continue
            if rest.startswith("DCN:"):
                block = records.setdefault(rest, [])
                self.assertEqual(head, "C-%d" % len(records))
            block.append("C\\" + rest)
        return lines + [line for name in sorted(records) for line in records[name]]

    def names(self, result):
        return [source["name"] for source in result.json["dataSources"]]

    def links(self, result, source):
        found = [entry for entry in result.json["dataSources"] if entry["name"] == source]
        self.assertEqual(len(found), 1, result)
        return [link["name"] for link in found[0]["links"]]

    def assertOpensCleanly(self):
        """The new document opens, and its streams load, with nothing that the sample has not."""
        told = []
        for name in ("in.tma", "out.tma"):
            result = self.run_json("check", "--deep", name)
            self.assertIn(result.status, (CLEAN, REPORTED), result)
            told.append({message["id"] for message in result.json["messages"]})
        self.assertLessEqual(told[1], told[0])

    # --- list -----------------------------------------------------------------------------

    def test_list_shows_groups_and_links(self):
        self.write("in.tma", self.sample())
        result = self.run_cli("source", "list", "in.tma")
        self.assertEqual(result.status, CLEAN, result)
        lines = result.text.splitlines()
        self.assertEqual(lines[0].split("  ")[0], "L-Band Telemetry")
        self.assertIn("T-2  M-2  PCM Stream 2, PCM Stream 3", lines[1])
        self.assertIn("STO  R-1  M-3  1553 Bus 1", lines[2])
        result = self.run_json("source", "list", "in.tma")
        self.assertEqual(self.names(result),
                         ["L-Band Telemetry", "S-Band Telemetry", "Onboard Recorder"])
        tree = self.run_json("tree", "in.tma").json
        self.assertEqual(result.json["dataSources"], tree["dataSources"])
        self.assertFalse(result.json["changed"])

    # --- rename -----------------------------------------------------------------------------

    def test_rename_a_source(self):
        for edition in EDITIONS:
            result, _ = self.compare("rename-" + edition, edition, "source", "rename",
                                     "L-Band Telemetry", "Upper Antenna")
            self.assertTrue(result.json["changed"])
            self.assertEqual(self.names(result)[0], "Upper Antenna")
            self.assertOpensCleanly()

    def test_rename_a_recorder(self):
        self.compare("rename-recorder", "09", "source", "rename", "Onboard Recorder", "SSR 1")
        self.assertOpensCleanly()

    def test_a_source_name_that_exists_is_refused(self):
        result, _, after = self.run_on("09", "source", "rename", "L-Band Telemetry",
                                       "S-Band Telemetry", status=FAILED)
        self.assertEqual(result.ids(), [141])
        self.assertIsNone(after)

    def test_rename_a_link(self):
        for edition in EDITIONS:
            self.compare("link-" + edition, edition, "link", "rename", "PCM Stream 1", "Flutter")
            self.assertOpensCleanly()

    def test_a_link_name_that_exists_or_is_too_long_is_refused(self):
        result, _, after = self.run_on("09", "link", "rename", "PCM Stream 1", "PCM Stream 2",
                                       status=FAILED)
        self.assertEqual(result.ids(), [374])
        self.assertIsNone(after)
        result, _, after = self.run_on("09", "link", "rename", "PCM Stream 1", "N" * 33,
                                       status=FAILED)
        self.assertIn("no more than 32 characters", result.json["messages"][0]["text"])
        self.assertIsNone(after)

    # --- copy -------------------------------------------------------------------------------

    def test_copy(self):
        for edition in ("96", "11"):
            result, _ = self.compare("copy-" + edition, edition, "source", "copy",
                                     "L-Band Telemetry", "Second Aircraft", "--prefix", "B_")
            self.assertEqual(self.links(result, "Second Aircraft"), ["PCM Stream 1 2"])
            self.assertOpensCleanly()

    def test_copy_with_several_links(self):
        result, after = self.compare("copy-links", "09", "source", "copy", "S-Band Telemetry",
                                     "S-Band 2", "--suffix", "_2")
        self.assertEqual(self.links(result, "S-Band 2"), ["PCM Stream 2 2", "PCM Stream 3 2"])
        self.assertOpensCleanly()

    def test_copy_a_recorder_with_its_bus(self):
        self.compare("copy-recorder", "09", "source", "copy", "Onboard Recorder", "Recorder 2",
                     "--prefix", "R2.")
        self.assertOpensCleanly()

    def test_a_copy_without_other_names_reports_the_equal_ones(self):
        result, _, after = self.run_on("09", "source", "copy", "L-Band Telemetry", "Second",
                                       status=REPORTED)
        self.assertEqual(result.ids(), [456])
        self.assertIsNotNone(after)

    # --- delete -----------------------------------------------------------------------------

    def test_delete(self):
        for edition in EDITIONS:
            result, after = self.compare("delete-" + edition, edition, "source", "delete",
                                         "L-Band Telemetry", options=("--answer", "140=yes"))
            self.assertEqual(result.asked(), [140])
            self.assertEqual(self.names(result), ["S-Band Telemetry", "Onboard Recorder"])
            self.assertOpensCleanly()

    def test_delete_asks_and_does_nothing_after_no(self):
        result, _, after = self.run_on("09", "source", "delete", "L-Band Telemetry",
                                       status=FAILED)
        self.assertEqual(result.asked(), [140])
        self.assertEqual(result.json["questions"][0]["title"], 83)
        self.assertIsNone(after)

    def test_other_references_are_listed_and_follow_only_if_asked_to(self):
        data = OTHER + b"R-1\\DSI-1:Pod;R-1\\EV\\N:1;R-1\\EV\\DLN-1:Pod Bus;"
        for command, old, code in ((("source", "rename", "in.tma", "Pod", "New"), "Pod", "R-1\\DSI-1"),
                                   (("link", "rename", "in.tma", "Pod Bus", "New"), "Pod Bus",
                                    "R-1\\EV\\DLN-1")):
            for options, reply in (((), "no"), (("--all-references",), "yes")):
                self.write("in.tma", data)
                result = self.run_json("--answer-all", "yes", *command, *options, "-o", "out.tma")
                asked = [each for each in result.json["questions"]
                         if each.get("name") == "all-references"]
                self.assertEqual([each["reply"] for each in asked], [reply], result)
                self.assertIn("'%s'" % old, asked[0]["text"])
                self.assertIn("\n%s\n" % code, asked[0]["text"])
                value = "New" if reply == "yes" else old
                self.assertIn(("%s:%s;\r\n" % (code, value)).encode(), self.read("out.tma"))
                os.remove(self.path("out.tma"))
        result = self.run_json("--answer", "all-references=cancel", "source", "rename", "in.tma", "Pod",
                               "New", "-o", "out.tma")
        self.assertEqual(result.status, FAILED)
        self.assertFalse(self.exists("out.tma"))

    def test_delete_says_before_what_else_goes_and_can_leave_it(self):
        data = OTHER + (b"T-2\\ID:Stray;M-3\\ID:Stray;M-3\\BB\\DLN:Loose;P-3\\DLN:Loose;P-3\\TF:ONE;"
                        b"D-3\\DLN:Loose;D-3\\ML\\N:0;")
        for options, reply in (((), "yes"), (("--answer", "unreferenced=no"), "no")):
            self.write("in.tma", data)
            result = self.run_json("--answer", "140=yes", *options, "source", "delete", "in.tma", "Pod",
                                   "-o", "out.tma")
            question = result.json["questions"][-1]
            self.assertEqual((question["name"], question["reply"]), ("unreferenced", reply), result)
            for group in ("T-2 'Stray'", "M-3 'Stray'", "P-3 'Loose'", "D-3 'Loose'"):
                self.assertIn(group, question["text"])
            saved = self.read("out.tma")
            for line in (b"T-1\\ID:Stray;", b"M-2\\BB\\DLN:Loose;", b"D-1\\DLN:Loose;"):
                self.assertEqual(line in saved, reply == "no", line)
            self.assertNotIn(b"ID:Pod;", saved)
            os.remove(self.path("out.tma"))
        result = self.run_json("--answer", "140=yes", "--answer", "unreferenced=cancel", "source",
                               "delete", "in.tma", "Pod", "-o", "out.tma")
        self.assertEqual(result.status, FAILED)

    def test_delete_all(self):
        name = "in.tma"
        self.write(name, self.sample())
        for source in ("S-Band Telemetry", "Onboard Recorder", "L-Band Telemetry"):
            result = self.run_json("--answer", "140=yes", "source", "delete", name, source, "-o",
                                   "out.tma")
            self.assertEqual(result.status, CLEAN, result)
            name = "out.tma"
        self.assertEqual(self.names(result), [])
        saved = self.read("out.tma")
        self.assertIn(b"G\\DSI\\N:0;", saved)
        for head in (b"\nT-", b"\nR-", b"\nM-", b"\nP-", b"\nD-", b"\nB-"):
            self.assertNotIn(head, saved)

    def test_rows_and_commands_that_no_list_shows_are_nobody_elses(self):
        data = OTHER.replace(b"G\\DSI\\N:2;\n", b"G\\DSI\\N:2;\nG\\DSI-3:Ghost;G\\DSIX-1:pod;"
                             b"G\\DSIX-2:box;G\\DSIX-3:ghost;G\\XYZ-1:free;G\\POC9-1:contact;")
        kept = {b"G\\DSI-3:Ghost;", b"G\\DSIX-1:pod;", b"G\\DSIX-2:box;", b"G\\DSIX-3:ghost;",
                b"G\\XYZ-1:free;", b"G\\POC9-1:contact;"}
        moved = {b"G\\DSI-4:Ghost;", b"G\\DSIX-1:pod;", b"G\\DSIX-2:box;", b"G\\DSIX-4:ghost;",
                 b"G\\XYZ-1:free;", b"G\\POC9-1:contact;", b"G\\DSI\\N:3;"}
        shorter = {b"G\\DSI-1:Box;", b"G\\DSIX-1:box;", b"G\\DSI-2:Ghost;", b"G\\DSIX-2:ghost;",
                   b"G\\XYZ-1:free;", b"G\\POC9-1:contact;", b"G\\DSI\\N:1;"}
        for command, lines in (
                (("source", "rename", "in.tma", "Box", "Chest"), kept),
                (("link", "rename", "in.tma", "Pod Bus", "Bus"), kept),
                (("source", "copy", "in.tma", "Pod", "Pod Two"), moved | {b"G\\DSI-3:Pod Two;"}),
                (("source", "delete", "in.tma", "Pod"), shorter)):
            with self.subTest(command=command):
                self.write("in.tma", data)
                result = self.run_json("--answer-all", "yes", *command, "-o", "out.tma")
                self.assertIn(result.status, (CLEAN, REPORTED), result)
                saved = set(self.read("out.tma").split(b"\r\n"))
                self.assertEqual(lines - saved, set())
                os.remove(self.path("out.tma"))

    def test_delete_does_not_bring_groups_that_are_not_saved(self):
        # The remark at the opening has said that they will not be saved.
        data = OTHER + (b"T-0\\ID:Pod;T-0\\RF1:zero;T-100\\ID:Pod;T-100\\RF1:hundred;"
                        b"M-100\\ID:Pod;M-0\\ID:Nobody;P-0\\DLN:Nobody;P-100\\DLN:Pod Bus;")
        self.write("in.tma", data)
        result = self.run_json("source", "delete", "in.tma", "Box", "-o", "out.tma",
                               "--answer-all", "yes")
        self.assertEqual(result.status, REPORTED, result)
        self.assertIn("will not be saved", " ".join(result.notes))
        saved = self.read("out.tma")
        self.assertIn(b"T-1\\TID:P1;", saved)
        for text in (b"zero", b"hundred", b"T-0", b"T-2", b"T-100", b"M-2", b"M-0", b"P-2", b"P-0"):
            self.assertNotIn(text, saved)

    def test_delete_keeps_what_a_wrong_count_hides(self):
        for count in (b"G\\DSI\\N:1;\n", b""):
            data = OTHER.replace(b"G\\DSI\\N:2;\n", count)
            self.write("in.tma", data)
            result = self.run_json("--answer", "140=yes", "source", "delete", "in.tma", "Pod",
                                   "-o", "out.tma")
            self.assertEqual(result.status, CLEAN, result)
            saved = self.read("out.tma").split(b"\r\n")
            for line in (b"G\\DSI\\N:0;", b"G\\DSI-1:Box;", b"G\\DST-1:SSR;", b"R-1\\ID:Box;",
                         b"M-1\\ID:Box;", b"P-1\\DLN:Pod Bus;", b"B-1\\DLN:Pod Bus;"):
                self.assertIn(line, saved)
            self.assertNotIn(b"T-1\\ID:Pod;", saved)

    # --- import -----------------------------------------------------------------------------

    def test_import_from_another_sample(self):
        self.write("other.tma", self.sample("11"))
        result, _ = self.compare("import-11", "11", "source", "import", "other.tma",
                                 "L-Band Telemetry", "--conversions", "--prefix", "K_",
                                 status=REPORTED)
        self.assertEqual(result.ids(), [458, 458])
        self.assertEqual(self.links(result, "L-Band Telemetry 2"), ["PCM Stream 1 2"])
        self.assertOpensCleanly()

    def test_import_of_each_kind(self):
        self.write("other.tma", OTHER)
        result, _ = self.compare("import-rf", "09", "source", "import", "other.tma", "Pod",
                                 "--conversions", status=REPORTED)
        self.assertEqual(result.ids(), [458])
        result, _ = self.compare("import-recorder", "09", "source", "import", "other.tma", "Box",
                                 "--recorder")
        self.assertEqual(self.links(result, "Box"), ["Pod Bus"])

    def test_conversions_that_are_there_are_kept_and_told(self):
        self.write("settings.ini", SAME_NAMES)
        self.write("other.tma", self.sample("09"))
        result, _ = self.compare("import-same-names", "09", "source", "import", "other.tma",
                                 "L-Band Telemetry", "--conversions",
                                 options=("--settings", self.path("settings.ini")),
                                 status=REPORTED)
        self.assertEqual(set(result.ids()), {458, 459})

    def test_names_of_other_streams_are_refused_where_they_are_checked(self):
        self.write("other.tma", self.sample("09"))
        result, _, after = self.run_on("09", "source", "import", "other.tma",
                                       "L-Band Telemetry", status=FAILED)
        self.assertEqual(result.ids(), [458, 458, 455])
        self.assertIsNone(after)

    def test_sources_behind_one_with_two_links_are_not_offered(self):
        # The second source of the sample has two links.
        self.write("other.tma", self.sample("09"))
        for name, options in (("S-Band Telemetry", ()), ("Onboard Recorder", ("--recorder",))):
            result, _, after = self.run_on("11", "source", "import", "other.tma", name, *options,
                                           status=FAILED)
            self.assertIsNone(after)

    def test_a_source_that_the_other_file_has_not_is_told(self):
        self.write("other.tma", OTHER)
        result, _, after = self.run_on("09", "source", "import", "other.tma", "Nobody",
                                       status=FAILED)
        self.assertEqual([message["text"] for message in result.json["messages"]],
                         ["There is no 'Nobody' in this list."])
        self.assertIsNone(after)

    def test_a_broken_file_brings_nothing(self):
        whole = self.sample("11")
        self.write("other.tma", b"")
        self.run_on("09", "source", "import", "other.tma", "L-Band Telemetry", status=FAILED)
        for length in (1000, len(whole) // 3, len(whole) // 2, len(whole) - 20):
            # The last command has lost its end.
            self.write("other.tma", whole[:whole.rindex(b":", 0, length) + 1])
            result, _, after = self.run_on("09", "source", "import", "other.tma",
                                           "L-Band Telemetry", "--prefix", "X_", status=FAILED)
            self.assertEqual(result.ids(), [157])
            self.assertIsNone(after)

    # --- the command line ------------------------------------------------------------------

    def test_wrong_usage(self):
        for arguments in (["source"], ["link"], ["source", "move", "a"], ["source", "list"],
                          ["source", "rename", "in.tma", "A", "B"],
                          ["source", "copy", "in.tma", "A", "-o", "x"],
                          ["link", "rename", "in.tma", "A", "-o", "x"]):
            result = self.run_cli(*arguments)
            self.assertEqual(result.status, USAGE, arguments)

    def test_help(self):
        for arguments in (["source"], ["source", "import"], ["link", "rename"]):
            result = self.run_cli(*arguments, "--help")
            self.assertEqual(result.status, CLEAN)
            self.assertIn("Usage: kavu-cli " + " ".join(arguments), result.text)

    def test_names_are_taken_as_they_stand(self):
        # Also those that are replies to other questions.
        for name in ("yes", "no", "cancel", "2"):
            result, _, after = self.run_on("09", "source", "copy", "L-Band Telemetry", name,
                                           "--prefix", "X_")
            self.assertIn(name, self.names(result))


if __name__ == "__main__":
    kavu.main()
