"""`xml-export`."""

import os
import re
import subprocess
import unittest
import xml.etree.ElementTree as ElementTree

import kavu
import tmats_commands
import xml_documents
from kavu import CLEAN, FAILED, REPORTED, USAGE

SMALL = (b"G\\PN:P;\nG\\106:09;\nG\\DSI\\N:1;\nG\\DSI-1:S;\nG\\DST-1:RF;\nT-1\\ID:S;\nT-1\\TID:x;\n"
         b"M-1\\ID:S;\nM-1\\BSG1:PCM;\nM-1\\BB\\DLN:L;\nP-1\\DLN:L;\nP-1\\D2:5;\n")
SAMPLES = os.path.join(os.path.dirname(os.path.dirname(kavu.DATA)), "samples")


class XmlExportTest(kavu.KavuTest):
    def export(self, *arguments, status=CLEAN):
        result = self.run_json("xml-export", *arguments)
        self.assertEqual(result.status, status, result)
        return result.json

    def test_a_file_is_converted(self):
        self.write("in.tma", SMALL)
        document = self.export("in.tma", "-o", "out.xml")
        self.assertEqual((document["file"], document["output"], document["created"]),
                         ("in.tma", "out.xml", True))
        self.assertEqual(document["status"][0], "Converting TMATS file to XML...")
        self.assertEqual([document[key] for key in ("errors", "warnings", "badValues", "losses")],
                         [[], [], [], []])
        for member in ("opened", "changed", "messages", "questions"):
            self.assertNotIn(member, document)
        with open(self.path("out.xml"), encoding="utf-8") as file:
            text = file.read()
        self.assertIn("created on 01-02-2026 at 03:04:05", text)
        self.assertIn("\t\t\t\t<InputData>\n\t\t\t\t\t<BitRate>5</BitRate>\n", text)
        self.assertEqual(ElementTree.fromstring(text.encode()).find("ProgramName").text, "P")

    def test_a_bad_value_is_listed_and_gives_status_1(self):
        self.write("in.tma", SMALL + b"G\\SC:Q;\n")
        document = self.export("in.tma", "-o", "out.xml", status=REPORTED)
        self.assertEqual(document["badValues"],
                         [{"description": "TMATS command 'G\\SC'", "value": "Q"}])
        self.assertEqual(document["warnings"][-2:], ["\tTMATS command 'G\\SC'. Value found: 'Q'", ""])

    def test_what_the_document_does_not_hold_is_noted(self):
        self.write("in.tma", SMALL + b"T-1\\NEW:1;\nV-1\\ID:S;\nV-1\\A:1;\n")
        result = self.run_cli("xml-export", "in.tma", "-o", "out.xml")
        self.assertEqual(result.status, CLEAN, result)
        self.assertEqual(result.notes, ["2 commands are not in the document: T-1\\NEW, V-1\\A"])

    def test_only_the_wanted_links_are_in_the_document(self):
        self.write("in.tma", SMALL + b"P-2\\DLN:K;\nP-2\\D2:6;\n")
        self.export("in.tma", "-o", "out.xml", "--stream", "K")
        root = ElementTree.parse(self.path("out.xml")).getroot()
        self.assertEqual([link.get("Name") for link in root.iter("DataLink")], ["K"])

    def test_a_stream_that_no_link_has_is_no_error(self):
        self.write("in.tma", SMALL)
        self.assertTrue(self.export("in.tma", "-o", "out.xml", "--stream", "none")["created"])

    def test_a_file_without_a_general_group_leaves_no_output(self):
        self.write("in.tma", b"T-1\\ID:S;\n")
        document = self.export("in.tma", "-o", "out.xml", status=FAILED)
        self.assertFalse(document["created"])
        self.assertIn("Unable to open 'General Information' file", document["errors"])
        self.assertFalse(os.path.exists(self.path("out.xml")))

    def test_an_output_that_exists_is_replaced_only_on_request(self):
        self.write("in.tma", SMALL)
        self.write("out.xml", b"mine")
        document = self.export("in.tma", "-o", "out.xml", status=FAILED)
        self.assertEqual(document["errors"],
                         ["'out.xml' exists. With --overwrite it would be replaced."])
        with open(self.path("out.xml"), "rb") as file:
            self.assertEqual(file.read(), b"mine")
        self.export("in.tma", "-o", "out.xml", "--overwrite")
        with open(self.path("out.xml"), "rb") as file:
            self.assertTrue(file.read().startswith(b"<?xml"))

    def test_a_failure_leaves_the_file_that_was_there(self):
        self.write("in.tma", b"T-1\\ID:S;\n")
        self.write("out.xml", b"mine")
        self.export("in.tma", "-o", "out.xml", "--overwrite", status=FAILED)
        with open(self.path("out.xml"), "rb") as file:
            self.assertEqual(file.read(), b"mine")

    def test_a_missing_input_fails(self):
        document = self.export("none.tma", "-o", "out.xml", status=FAILED)
        self.assertFalse(document["created"])
        self.assertFalse(os.path.exists(self.path("out.xml")))

    def test_an_output_that_cannot_be_created_is_an_error(self):
        self.write("in.tma", SMALL)
        target = os.path.join("none", "out.xml")
        document = self.export("in.tma", "-o", target, status=FAILED)
        self.assertFalse(document["created"])
        self.assertEqual(document["errors"], ["Unable to create XML file '%s'." % target])

    def test_the_input_is_never_the_output(self):
        self.write("in.tma", SMALL)
        self.export("in.tma", "-o", "in.tma", "--overwrite", status=FAILED)
        with open(self.path("in.tma"), "rb") as file:
            self.assertEqual(file.read(), SMALL)

    def test_arguments_are_checked(self):
        self.assertEqual(self.run_cli("xml-export", "in.tma").status, USAGE)

    def test_the_samples_are_well_formed(self):
        for name in sorted(os.listdir(SAMPLES)):
            if name.endswith(".tma"):
                self.export(os.path.join(SAMPLES, name), "-o", name + ".xml", status=REPORTED)
                ElementTree.parse(self.path(name + ".xml"))


class GeneratedTest(kavu.KavuTest):
    """Documents whose values the schema has a place for."""

    def test_nothing_of_a_document_is_lost_in_the_dialect_of_the_schema(self):
        for seed in range(30):
            self.write("in.tma", xml_documents.Maker(seed).text())
            result = self.run_json("xml-export", "in.tma", "-o", "out.xml", "--schema",
                                   "--overwrite")
            self.assertEqual(result.json["losses"], [], "seed %d" % seed)
            self.assertEqual(result.json["warnings"],
                             [text for text in result.json["warnings"]
                              if text.startswith("Warning: No DataLink") or
                              text.startswith("Warning. No data sources")], "seed %d" % seed)
            ElementTree.parse(self.path("out.xml"))

    def test_each_document_comes_back_by_the_dialect_of_the_schema(self):
        for seed in range(30):
            data = xml_documents.Maker(seed).text()
            self.write("in.tma", data)
            self.run_cli("xml-export", "in.tma", "-o", "out.xml", "--schema", "--overwrite")
            self.run_cli("xml-import", "out.xml", "-o", "back.tma", "--schema")
            self.assertEqual(tmats_commands.missing(data, self.text("back.tma")), [],
                             "seed %d" % seed)

    def text(self, name):
        with open(self.path(name), "rb") as file:
            return file.read()


FOLDER = os.environ.get("KAVU_XSD", "")
SCHEMA = os.path.join(FOLDER, "Tmats_01-2011.xsd")


@unittest.skipUnless(FOLDER, "KAVU_XSD names no folder with the schema")
class SchemaTest(kavu.KavuTest):
    """What is written, validated by xmllint."""

    def validate(self, schema, paths):
        """The faults that xmllint finds, each without its place."""
        result = subprocess.run(["xmllint", "--noout", "--schema", schema] + paths,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
        lines = result.stderr.decode("utf-8").splitlines()
        self.assertEqual(sum(line.endswith((" validates", " fails to validate")) for line in lines),
                         len(paths), lines[:5])
        return sorted(re.sub(r"^.*?Element ", "Element ", line) for line in lines
                      if not line.endswith((" validates", " fails to validate")))

    def export(self, source, name, *arguments):
        result = self.run_cli("xml-export", source, "-o", name, "--quiet", *arguments)
        self.assertIn(result.status, (CLEAN, REPORTED), result)
        return self.path(name)

    def test_the_dialect_of_the_schema_is_valid_and_comes_back(self):
        paths = []
        for name in sorted(os.listdir(SAMPLES)):
            if name.endswith(".tma"):
                paths.append(self.export(os.path.join(SAMPLES, name), name + ".xml", "--schema"))
        recorders = os.path.join(FOLDER, "..", "real")
        if os.path.isdir(recorders):
            for name in sorted(os.listdir(recorders)):
                paths.append(self.export(os.path.join(recorders, name), name + ".xml", "--schema"))
        for seed in range(1000):
            data = xml_documents.Maker(seed).text()
            self.write("in.tma", data)
            paths.append(self.export("in.tma", "%d.xml" % seed, "--schema"))
            self.run_cli("xml-import", "%d.xml" % seed, "-o", "back.tma", "--schema", "--quiet")
            with open(self.path("back.tma"), "rb") as file:
                self.assertEqual(tmats_commands.missing(data, file.read()), [], "seed %d" % seed)
        self.assertEqual(self.validate(SCHEMA, paths), [])

    def plain_schema(self):
        """The schema without its namespace, for the classic dialect."""
        with open(SCHEMA, "rb") as file:
            text = file.read()
        text = re.sub(rb'targetNamespace="[^"]*"', b"", text)
        text = re.sub(rb'(\s)xmlns="[^"]*"', rb"\1", text)
        self.write("plain.xsd", text)
        return self.path("plain.xsd")

    def test_the_classic_dialect_differs_from_the_schema_in_what_is_known(self):
        self.write("in.tma", CLASSIC)
        found = self.validate(self.plain_schema(), [self.export("in.tma", "out.xml")])
        self.assertEqual([re.sub(r": .*", "", line) for line in found], CLASSIC_FAULTS, found)


# A document of all that the classic dialect writes otherwise than the schema, and the faults that
# this makes. Each of them is a test of its own in the tests of the library.
CLASSIC = b"""G\\SC:C;
G\\DSI\\N:2;
G\\DSI-1:S;
G\\DST-1:STO;
R-1\\ID:S;
R-1\\TC5:15.0;
R-1\\RI3:Y;
R-1\\N:3;
R-1\\TK1-1:1;
R-1\\PDTF-1:1;
R-1\\TK1-2:2;
R-1\\TDTF-2:1;
R-1\\TK1-3:3;
R-1\\MFD\\N-3:1;
R-1\\MFD\\MT-3-1:RTBC;
G\\DSI-2:T;
G\\DST-2:DRS;
M-1\\ID:S;
M-1\\BB\\DLN:L;
M-2\\ID:T;
M-2\\RC:1;
B-1\\DLN:L;
B-1\\BP:OD;
B-2\\DLN:K;
B-2\\NBS\\N:1;
B-2\\BID-1:000;
B-2\\BNA-1:b;
B-2\\BT-1:1553;
B-2\\NMS\\N-1:1;
B-2\\MNA-1-1:m;
B-2\\MID-1-1:1;
B-2\\TRN-1-1:x;
P-3\\DLN:J;
P-3\\MF\\N:1;
P-3\\MF1:8;
D-3\\DLN:J;
D-3\\SMF\\N:1;
D-3\\SMF\\SMN-1:A;
D-3\\SMF\\MFOT-1:N;
D-3\\MLN-1:l;
D-3\\SMF\\N-1:1;
D-3\\SMF\\SMN-1-1:A;
D-3\\MN\\N-1:1;
D-3\\MN-1-1:A;
C-2\\DCN:B;
C-2\\MC\\N:2;
C-2\\MC1-1:1;
C-2\\MC1-2:2;
C-2\\DCT:PTM;
C-2\\PTM:H;
C-1\\DCN:A;
C-1\\BFM:SIG;
C-1\\DCT:DER;
C-1\\DPAT:N;
C-1\\DPA:x;
H\\A:1;
"""
CLASSIC_FAULTS = [
    "Element 'Algorithm', attribute 'Type'",
    "Element 'BinaryFormat'",
    "Element 'BusParity'",
    "Element 'DataSource', attribute 'Type'",
    "Element 'DataTypeFormat'",
    "Element 'FilterOverwriteTag'",
    "Element 'Housing'",
    "Element 'InflightCalibration'",
    "Element 'OriginalRecording'",
    "Element 'PcmDataTypeAttributes'",
    "Element 'RemoteTerminal'",
    "Element 'SecurityClassification'",
    "Element 'SelectedMeasurementName'",
    "Element 'Type'",
]


if __name__ == "__main__":
    unittest.main()
