"""`xml-import`: TMATS XML to a TMATS file."""

import os
import unittest

import kavu
from kavu import CLEAN, FAILED, REPORTED, USAGE

NAMESPACE = "https://wsmrc2vger.wsmr.army.mil/rcc/manuals/106-11"
DOCUMENT = b"""<?xml version="1.0" encoding="utf-8"?>
<Tmats>
\t<ProgramName>X</ProgramName>
\t<RevisionLevel>9</RevisionLevel>
\t<DataSource Name="S" Type="Tape">
\t\t<DataLink Name="L"><PCMFormatAttributes><InputData><BitRate>1000</BitRate></InputData>
\t\t</PCMFormatAttributes></DataLink>
\t</DataSource>
</Tmats>
"""
COMMANDS = (b"G\\PN:X;\nG\\106:9;\nG\\DSI\\N:1;\nG\\DSI-1:S;\nG\\DST-1:TAP;\n"
            b"R-1\\ID:S;\nM-1\\ID:S;\nP-1\\DLN:L;\nP-1\\D2:1000;\n")


class XmlImportTest(kavu.KavuTest):
    def convert(self, *options, status=CLEAN, source="in.xml", target="out.tma"):
        result = self.run_json("xml-import", source, "-o", target, *options)
        self.assertEqual(result.status, status, result)
        return result.json

    def text(self, name):
        with open(self.path(name), "rb") as file:
            return file.read()

    def test_a_document_becomes_a_tmats_file(self):
        self.write("in.xml", DOCUMENT)
        document = self.convert()
        self.assertEqual(list(document), ["file", "output", "created", "version", "status",
                                          "messages"])
        self.assertEqual((document["file"], document["output"], document["created"],
                          document["version"], document["messages"]),
                         ("in.xml", "out.tma", True, 2009, []))
        self.assertEqual(document["status"],
                         ["Creating TMATS 'G' group...", "IRIG 106 version: 2009",
                          "Creating TMATS 'R' group for data source 'S'...",
                          "Creating TMATS 'M' group for data source 'S'...",
                          "Creating TMATS 'P' group for data link 'L'..."])
        self.assertEqual(self.text("out.tma"), COMMANDS)

    def test_the_result_opens_as_any_tmats_file(self):
        self.write("in.xml", DOCUMENT)
        self.convert()
        tree = self.run_json("tree", "out.tma")
        self.assertEqual(tree.json["dataSources"][0]["name"], "S")

    def test_a_person_reads_the_status_texts(self):
        self.write("in.xml", DOCUMENT)
        result = self.run_cli("xml-import", "in.xml", "-o", "out.tma")
        self.assertEqual(result.status, CLEAN, result)
        self.assertIn("IRIG 106 version: 2009\n", result.text)

    def test_a_malformed_document_makes_an_empty_file_and_tells_the_parsers_reason(self):
        self.write("in.xml", b"<Tmats>\n\n<ProgramName>X</Tmats>\n")
        document = self.convert(status=REPORTED)
        self.assertEqual(document["messages"],
                         [{"id": 0, "title": 0, "text": "in.xml:3: mismatched tag"}])
        self.assertTrue(document["created"])
        self.assertEqual(document["version"], 0)
        self.assertEqual(self.text("out.tma"), b"")

    def test_a_missing_document_makes_an_empty_file_and_says_why(self):
        document = self.convert(status=REPORTED, source="none.xml")
        self.assertEqual(len(document["messages"]), 1)
        self.assertIn("none.xml: ", document["messages"][0]["text"])
        self.assertEqual(self.text("out.tma"), b"")

    def test_an_output_is_never_replaced_by_the_result_of_an_input_that_could_not_be_read(self):
        self.write("in.xml", b"<Tmats>")
        self.write("out.tma", b"G\\PN:KEPT;\r\n")
        for source in ("in.xml", "none.xml"):
            document = self.convert(status=FAILED, source=source)
            self.assertFalse(document["created"])
            self.assertEqual(len(document["messages"]), 1)
            self.assertEqual(self.text("out.tma"), b"G\\PN:KEPT;\r\n")
        self.assertEqual(sorted(os.listdir(self.work)), ["in.xml", "out.tma"])

    def test_an_output_that_exists_is_saved_as_in_the_editor(self):
        self.write("in.xml", DOCUMENT)
        self.write("out.tma", b"G\\PN:OLD;\r\n")
        self.convert()
        self.assertEqual(self.text("out.tma"), COMMANDS)

    def test_the_input_is_not_overwritten(self):
        self.write("in.xml", DOCUMENT)
        document = self.convert(status=FAILED, target="in.xml")
        self.assertFalse(document["created"])
        self.assertEqual(self.text("in.xml"), DOCUMENT)

    def test_an_output_that_cannot_be_written_is_a_failure(self):
        self.write("in.xml", DOCUMENT)
        document = self.convert(status=FAILED, target=os.path.join("none", "out.tma"))
        self.assertFalse(document["created"])
        self.assertEqual(len(document["messages"]), 1)

    def test_a_semicolon_is_one_message_that_names_the_code(self):
        self.write("in.xml", b"<Tmats><ProgramName>a;b</ProgramName></Tmats>")
        document = self.convert(status=REPORTED)
        self.assertEqual(len(document["messages"]), 1)
        self.assertIn("G\\PN", document["messages"][0]["text"])
        self.assertEqual(self.text("out.tma"), b"G\\PN:a;b;\n")
        document = self.convert("--schema", status=REPORTED)
        self.assertEqual(len(document["messages"]), 1)
        self.assertEqual(self.text("out.tma"), b"G\\PN:a,b;\n")

    def test_the_schemas_namespace_and_what_is_left_out_are_notes(self):
        self.write("in.xml", b"<Tmats xmlns='%s'><TmatsFileName>F</TmatsFileName></Tmats>"
                   % NAMESPACE.encode())
        result = self.run_json("xml-import", "in.xml", "-o", "out.tma")
        self.assertEqual((result.status, result.json["messages"]), (CLEAN, []))
        self.assertTrue(any("--schema" in note for note in result.notes), result)
        self.assertTrue(any("/Tmats/TmatsFileName" in note for note in result.notes), result)
        result = self.run_json("xml-import", "in.xml", "-o", "out.tma", "--schema")
        self.assertEqual((result.status, result.notes), (CLEAN, []))
        self.assertEqual(self.text("out.tma"), b"G\\FN:F;\n")

    def test_by_the_schema_what_has_no_command_is_a_message(self):
        self.write("in.xml", b"<Tmats><Strange>1</Strange></Tmats>")
        self.assertEqual(self.convert()["messages"], [])
        document = self.convert("--schema", status=REPORTED)
        self.assertIn("/Tmats/Strange", document["messages"][0]["text"])

    def test_without_an_output_the_usage_is_wrong(self):
        self.write("in.xml", DOCUMENT)
        self.assertEqual(self.run_cli("xml-import", "in.xml").status, USAGE)


if __name__ == "__main__":
    unittest.main()
