"""`dbase`, `xml`, and the import of tables into the measurement database."""

import os
import shutil
import struct
import unittest

import kavu
from kavu import CLEAN, FAILED, REPORTED, USAGE

XML = b'<?xml version="1.0"?>\n<R>\n\t<M>\n\t\t<Name>A</Name>\n\t</M>\n\t<M>\n\t\t<Name>B</Name>\n\t</M>\n</R>\n'
COLUMNS = [(b"MEAS", b"C", 8), (b"NOTE", b"C", 10), (b"MEMO", b"M", 10)]
ROWS = [b" A       first", b"*B       gone", b" C       third"]


def table(columns, rows):
    """The bytes of a dBase table; each row begins with its mark."""
    length = 1 + sum(column[2] for column in columns)
    head = b"\x03\x7e\x01\x02" + struct.pack("<IHI", len(rows), 33 + 32 * len(columns), length)
    data = head.ljust(32, b"\0")
    for name, kind, size in columns:
        data += (name.ljust(11, b"\0") + kind).ljust(16, b"\0") + bytes([size]).ljust(16, b"\0")
    return data + b"\r" + b"".join(row.ljust(length) for row in rows) + b"\x1a"


class DbaseTest(kavu.KavuTest):
    def setUp(self):
        super().setUp()
        self.write("t.dbf", table(COLUMNS, ROWS))

    def dbase(self, *arguments, status=CLEAN):
        result = self.run_json("dbase", *arguments)
        self.assertEqual(result.status, status, result)
        return result.json

    def test_info_tells_numbers_and_columns(self):
        document = self.dbase("info", "t.dbf")
        self.assertEqual([document[key] for key in ("rows", "rowLength", "headerLength")],
                         [3, 29, 129])
        self.assertEqual(document["columns"][0], {"name": "MEAS", "length": 8, "type": "C"})
        self.assertEqual((document["messages"], document["questions"]), ([], []))
        self.assertNotIn("file", document)

    def test_rows_are_shown_with_their_mark(self):
        rows = self.dbase("rows", "t.dbf")["rows"]
        self.assertEqual(rows[1], {"row": 1, "deleted": True, "values": ["B", "gone", ""]})

    def test_a_cell_is_written_or_a_row_added(self):
        self.assertEqual(self.dbase("set", "t.dbf", "note", "new", "--row", "0")["row"], 0)
        self.assertEqual(self.dbase("set", "t.dbf", "0", "D")["row"], 3)
        rows = self.dbase("rows", "t.dbf")["rows"]
        self.assertEqual([row["values"][:2] for row in rows],
                         [["A", "new"], ["B", "gone"], ["C", "third"], ["D", ""]])

    def test_a_long_text_is_cut_with_a_message(self):
        document = self.dbase("set", "t.dbf", "MEAS", "123456789", "--row", "2", status=REPORTED)
        self.assertIn("WARNING (Row: 2, Col: 0): Field 'MEAS' was truncated to 8 characters.",
                      document["messages"][0]["text"])

    def test_rows_are_found(self):
        self.assertEqual(self.dbase("find", "t.dbf", "NOTE", "IR")["rows"], [0, 2])
        self.assertEqual(self.dbase("find", "t.dbf", "NOTE", "IR", "--case")["rows"], [])
        self.assertEqual(self.dbase("find", "t.dbf", "1", "third", "--whole")["rows"], [2])

    def test_purge_needs_a_yes(self):
        before = self.read("t.dbf")
        self.assertEqual(self.dbase("purge", "t.dbf", "--answer-all", "yes")["purged"], 0)
        self.assertEqual(self.read("t.dbf"), before)
        document = self.dbase("purge", "t.dbf", "--yes")
        self.assertEqual(document["purged"], 1)
        self.assertEqual(document["questions"][0]["name"], "purge")
        self.assertEqual(self.read("t.dbf"), table(COLUMNS, [ROWS[0], ROWS[2]]))

    def test_what_cannot_be_done_is_a_message_without_a_number(self):
        self.write("bad.dbf", b"bad")
        for arguments in (("info", "none.dbf"), ("info", "bad.dbf"),
                          ("set", "t.dbf", "NONE", "x"), ("set", "t.dbf", "MEAS", "x", "--row", "3"),
                          ("set", "t.dbf", "MEMO", "x"), ("find", "t.dbf", "9", "x")):
            document = self.dbase(*arguments, status=FAILED)
            self.assertEqual([message["id"] for message in document["messages"]], [0], arguments)
        self.assertEqual(self.read("t.dbf"), table(COLUMNS, ROWS))

    def test_a_row_is_a_number(self):
        self.assertEqual(self.run_cli("dbase", "set", "t.dbf", "0", "x", "--row", "-2").status,
                         USAGE)


class XmlTest(kavu.KavuTest):
    def setUp(self):
        super().setUp()
        self.write("f.xml", XML)

    def xml(self, *arguments, status=CLEAN, root="R"):
        result = self.run_json("xml", *arguments, "--root", root)
        self.assertEqual(result.status, status, result)
        return result.json

    def test_select_gives_count_and_texts(self):
        document = self.xml("select", "f.xml", "/M/Name")
        self.assertEqual((document["count"], document["texts"]), (2, ["A", "B"]))
        self.assertEqual(self.xml("select", "f.xml", "/M//Name")["count"], 0)
        self.assertEqual(self.xml("select", "none.xml", "/M")["texts"], [])
        self.assertFalse(os.path.exists(self.path("none.xml")))

    def test_set_makes_what_is_missing(self):
        self.assertTrue(self.xml("set", "f.xml", "/M/Data[@Type=\"x\"]/P", "1")["done"])
        self.assertIn(b'\t\t<Data Type="x">\n\t\t\t<P>1</P>\n\t\t</Data>\n', self.read("f.xml"))
        self.assertTrue(self.xml("set", "new.xml", "/A", "<&>")["done"])
        self.assertEqual(self.read("new.xml"), b"<R>\n\t<A>&lt;&amp;&gt;</A>\n</R>\n")
        self.assertFalse(self.xml("set", "f.xml", "/M[9]", "x")["done"])

    def test_attributes_are_set(self):
        self.assertTrue(self.xml("set-attribute", "f.xml", "/M", "Unit", "V")["done"])
        self.assertEqual(self.xml("select", "f.xml", "/M[@Unit='V']")["count"], 1)
        self.assertFalse(self.xml("set-attribute", "f.xml", "/X", "Unit", "V")["done"])

    def test_remove_takes_all_nodes_or_the_first_of_a_value(self):
        self.assertTrue(self.xml("remove", "f.xml", "/M/Name", "B")["done"])
        self.assertEqual(self.xml("select", "f.xml", "/M/Name")["texts"], ["A"])
        self.assertFalse(self.xml("remove", "f.xml", "/M/Name", "B")["done"])
        self.assertTrue(self.xml("remove", "f.xml", "/M")["done"])
        self.assertEqual(self.xml("select", "f.xml", "/M")["count"], 0)

    def test_an_unreadable_file_is_kept(self):
        self.write("f.xml", b"<R><M></R>")
        self.assertEqual(self.xml("select", "f.xml", "/")["count"], 1)
        self.assertFalse(os.path.exists(self.path("f.xml.unreadable")))
        document = self.xml("set", "f.xml", "/A", "1", status=REPORTED)
        self.assertIn("mismatched tag", document["messages"][0]["text"])
        self.assertEqual(self.read("f.xml.unreadable"), b"<R><M></R>")
        self.assertEqual(self.read("f.xml"), b"<R>\n\t<A>1</A>\n</R>\n")

    def test_a_root_that_is_no_name_is_told(self):
        document = self.xml("select", "f.xml", "/M", root="a b", status=FAILED)
        self.assertIn("Unable to load xml data from: 'f.xml'", document["messages"][0]["text"])


class ImportTest(kavu.KavuTest):
    DATABASE = ("--database", "db.otb", "--database-version", "1")

    def imported(self, *arguments, status=REPORTED):
        result = self.run_json("mdb", "import", *arguments, *self.DATABASE)
        self.assertEqual(result.status, status, result)
        return result.json

    def names(self):
        return self.run_json("mdb", "list", *self.DATABASE).json["names"]

    def test_a_delimited_file_is_imported(self):
        self.write("in.csv", b"A,one\nB,two\nA,three\n")
        document = self.imported("in.csv", "--map", "Measurement Name=1", "--map", "26=2")
        self.assertEqual([document[key] for key in ("converted", "skipped", "refused")],
                         [2, ["A"], []])
        self.assertEqual(document["messages"][0]["id"], 424)
        self.assertEqual(self.names(), ["A", "B"])

    def test_a_header_names_the_fields(self):
        self.write("in.csv", b"Text;Tag\none;A\n")
        self.imported("in.csv", "--header", "--delimiter", "semicolon", "--map", "0=tag",
                      "--map", "measurement description=Text")
        record = self.run_json("mdb", "get", "A", *self.DATABASE).json["record"]
        self.assertEqual(record["Measurement Description"], "one")

    def test_a_table_is_imported(self):
        self.write("in.dbf", table(COLUMNS, ROWS))
        self.imported("in.dbf", "--map", "0=meas", "--map", "26=NOTE")
        self.assertEqual(self.names(), ["A", "C"])

    def test_fixed_columns_are_imported(self):
        self.write("in.asc", b"A   one\nBB\n\nC   two\n")
        document = self.imported("in.asc", "--map", "0=1,3", "--map", "26=5,10")
        self.assertEqual([message["id"] for message in document["messages"]], [422, 424])
        self.assertEqual(self.names(), ["A", "C"])

    def test_what_is_refused_is_listed(self):
        self.write("in.csv", b"A,a;b\nB,ok\n")
        document = self.imported("in.csv", "--map", "0=1", "--map", "26=2")
        self.assertEqual((document["converted"], document["refused"]), (1, ["A"]))
        self.assertEqual(document["messages"][0]["id"], 402)

    def test_nothing_converted_leaves_the_target_as_it_was(self):
        self.write("db.otb", b"OLD" + b";" * 35 + b"\r\n")
        self.write("in.csv", b"A,one\n")
        self.write("empty.csv", b"")
        self.write("in.asc", b"A one\n")
        self.write("in.dbf", table(COLUMNS, ROWS))
        cases = [(425, "in.csv", "26=2"), (419, "empty.csv", "0=1"), (421, "in.asc", "0=1"),
                 (423, "in.dbf", "0=NONE"), (0, "none.csv", "0=1"), (0, "in.dbf", "0=MEMO")]
        for number, source, mapping in cases:
            document = self.imported(source, "--map", mapping, "--overwrite", status=FAILED)
            self.assertEqual([m["id"] for m in document["messages"]], [number], (source, mapping))
            self.assertNotIn("converted", document)
        document = self.imported("in.csv", "--map", "0=1", "--map", "26=7", "--overwrite",
                                 status=FAILED)
        self.assertEqual(document["questions"][0]["id"], 420)
        self.assertEqual(self.read("db.otb"), b"OLD" + b";" * 35 + b"\r\n")

    def test_profiles_are_kept_in_the_settings(self):
        self.write("in.txt", b"one|A\n")
        self.imported("in.txt", "--delimiter", "|", "--map", "0=2", "--map", "26=1",
                      "--save-profile", "My [list]")
        self.write("other.txt", b"two|B\n")
        self.imported("other.txt", "--profile", "my [LIST]")
        self.assertEqual(self.names(), ["A", "B"])
        listed = self.run_json("mdb", "profiles").json["profiles"]
        self.assertEqual(listed, [{"title": "My [list]", "kind": "delimited"}])
        result = self.run_json("mdb", "profiles", "--delete", "My [list]")
        self.assertEqual(result.json["profiles"], [])
        self.assertEqual(self.run_json("mdb", "profiles", "--delete", "My [list]").status, FAILED)

    def test_wrong_usage_is_told(self):
        self.write("in.dat", b"A\n")
        for arguments in (("in.dat", "--map", "0=1"), ("in.dat", "--kind", "x", "--map", "0=1"),
                          ("in.csv",), ("in.csv", "--map", "nothing=1"), ("in.csv", "--map", "0"),
                          ("in.asc", "--map", "0=x,1"), ("in.csv", "--map", "0=1", "--delimiter",
                                                         "ab")):
            self.assertEqual(self.run_cli("mdb", "import", *arguments).status, USAGE, arguments)


if __name__ == "__main__":
    unittest.main()
