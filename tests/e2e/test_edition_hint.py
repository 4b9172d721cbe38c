"""`check` of a file that does not state its edition: which one reads it better."""

import os
import re

import kavu
from kavu import CLEAN, REPORTED

SAMPLES = os.path.join(os.path.dirname(os.path.dirname(kavu.DATA)), "samples")


class EditionHintTest(kavu.KavuTest):
    def sample(self, name="flight-test.tma"):
        with open(os.path.join(SAMPLES, name), "rb") as file:
            return re.sub(rb"G\\106:\d*;", b"", file.read())

    def test_the_hint_is_a_note_and_a_member_and_no_message(self):
        self.write("in.tma", self.sample())
        result = self.run_json("check", "--deep", "in.tma")
        hint = result.json["hint"]
        self.assertIn("was read as 106-11 (2011) of the settings", hint)
        self.assertIn("Read as 106-09 (2009) it has none.", hint)
        self.assertIn(hint, result.notes)
        self.assertNotIn(hint, [message["text"] for message in result.json["messages"]])
        self.assertEqual(result.status, REPORTED)
        text = self.run_cli("check", "in.tma")
        self.assertIn("Note: " + hint, text.err.decode("utf-8"))
        self.assertNotIn(hint, text.text)

    def test_a_file_with_an_edition_has_no_hint(self):
        with open(os.path.join(SAMPLES, "mistakes.tma"), "rb") as file:
            self.write("in.tma", file.read())
        self.assertNotIn("hint", self.run_json("check", "in.tma").json)

    def test_a_file_that_is_read_without_messages_has_no_hint(self):
        self.write("in.tma", self.sample())
        self.write("in.ini", "[KAVU-9]\r\nIRIGInputVersion=2009\r\n")
        result = self.run_json("--settings", "in.ini", "check", "--deep", "in.tma")
        self.assertNotIn("hint", result.json)
        self.assertEqual(result.status, CLEAN)


if __name__ == "__main__":
    kavu.main()
