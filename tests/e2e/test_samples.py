"""The documents that come with the program, through every command."""

import os
import unittest

import kavu
from kavu import CLEAN, FAILED, REPORTED

SAMPLES = os.path.join(os.path.dirname(os.path.dirname(kavu.DATA)), "samples")
FLIGHTS = {"flight-test.tma": 2009, "flight-test-96.tma": 1996, "flight-test-11.tma": 2011}


class SamplesTest(kavu.KavuTest):
    def options(self, name):
        """A document of 1996 can not name its edition: the settings do."""
        self.write("my.ini", "[KAVU-9]\r\nIRIGInputVersion=%d\r\n" % FLIGHTS[name])
        return ["--settings", "my.ini"]

    def sample(self, name):
        return os.path.join(SAMPLES, name)

    def test_the_flight_tests_open_without_a_message(self):
        for name, edition in FLIGHTS.items():
            with self.subTest(sample=name):
                result = self.run_json("check", self.sample(name), *self.options(name))
                self.assertEqual(result.status, CLEAN, result)
                self.assertEqual(result.json["version"], edition)
                self.assertIs(result.json["changed"], False)
                self.assertEqual(result.json["questions"], [])

    def test_the_flight_tests_show_their_sources_and_streams(self):
        for name in FLIGHTS:
            with self.subTest(sample=name):
                tree = self.run_json("tree", self.sample(name), *self.options(name)).json
                self.assertEqual([source["class"] for source in tree["dataSources"]],
                                 ["R", "R", "T"])
                links = [link for source in tree["dataSources"] for link in source["links"]]
                # 1996 knows no class 2: a format of the second stream's kind is another one.
                second = "OTHR" if name == "flight-test-96.tma" else "PCM (Class 2)"
                self.assertEqual([link["kind"] for link in links],
                                 ["PCM (Class 1)", second, "PCM (Class 1)", "1553"])
                self.assertTrue(all(link["measurements"] > 0 for link in links), links)
                self.assertGreaterEqual(len(tree["conversions"]), 100)

    def test_the_flight_tests_are_saved_and_stay_as_they_are_then(self):
        for name in FLIGHTS:
            with self.subTest(sample=name):
                options = self.options(name)
                self.run_json("save", self.sample(name), "-o", "out.tma", *options)
                once = self.read("out.tma")
                result = self.run_json("save", "out.tma", "-o", "out.tma", *options)
                self.assertEqual(result.status, CLEAN, result)
                self.assertEqual(self.read("out.tma"), once)

    def test_the_flight_tests_have_a_store(self):
        for name in FLIGHTS:
            with self.subTest(sample=name):
                into = "store-" + name
                result = self.run_json("store", self.sample(name), "--into", into,
                                       *self.options(name))
                self.assertEqual(result.status, CLEAN, result)
                files = os.listdir(self.path(into))
                for file in ("[kavu]GTMP.G", "[kavu]DSRCE.T01", "[kavu]DSRCE.T02",
                             "[kavu]DSRCE.R01", "[kavu]PCMFMT.P01", "[kavu]PCMMEAS.D01",
                             "[kavu]00000000.C_O"):
                    self.assertIn(file, files)

    def test_the_file_of_mistakes_is_opened_and_its_mistakes_are_told(self):
        result = self.run_json("check", self.sample("mistakes.tma"))
        self.assertEqual(result.status, REPORTED, result)
        self.assertGreaterEqual(len(set(result.ids())), 3, result.ids())
        self.assertTrue(result.notes)

    def test_the_samples_move_to_every_edition_and_back(self):
        for year in (1996, 1999, 2000, 2001, 2004, 2005, 2007, 2011):
            with self.subTest(edition=year):
                result = self.run_json("save", self.sample("flight-test.tma"), "-o", "out.tma",
                                       "--edition", str(year))
                self.assertEqual(result.status, REPORTED, result)
                # Its third stream has ranges with ends, and word/frame locations.
                loses = year < 2009
                self.assertEqual(444 in result.ids(), not loses)
                self.assertEqual(any("but not all of its measurements" in message["text"]
                                     for message in result.json["messages"]), loses)
                self.write("my.ini", "[KAVU-9]\r\nIRIGInputVersion=%d\r\n" % year)
                again = self.run_json("check", "out.tma", "--settings", "my.ini")
                self.assertEqual(again.json["version"], year)
                back = self.run_json("save", "out.tma", "-o", "back.tma", "--settings", "my.ini",
                                     "--edition", "2009")
                self.assertIs(back.json["opened"], True)


if __name__ == "__main__":
    kavu.main()
