"""Ten thousand calls of a compiled client. `scripts/bench_automation` holds a release build to the clock."""

import os
import unittest

from private_bus import PrivateBusTest

COUNT = 10000


class SpeedTest(PrivateBusTest):
    def setUp(self):
        super().setUp()
        self.start_bus()
        self.server = self.start_server()

    def took(self, how):
        """The seconds of the calls; each has given the right name."""
        result = self.run_program(os.environ["CALL_CLIENT"], self.sample(), str(COUNT), how)
        self.assertEqual(result.returncode, 0, result.stderr)
        return float(result.stdout)

    def test_calls_in_flight(self):
        seconds = self.took("flight")
        print("in flight: %.3f s" % seconds)
        if "KAVU_BENCH" in os.environ:
            self.assertLess(seconds, 2)

    def test_calls_one_after_another(self):
        seconds = self.took("row")
        print("one after another: %.3f s" % seconds)
        if "KAVU_BENCH" in os.environ:
            self.assertLess(seconds, 4)


if __name__ == "__main__":
    unittest.main()
