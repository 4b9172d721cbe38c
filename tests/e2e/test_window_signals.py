"""The editor is stopped while it starts: its working store goes with it."""

import os
import shutil
import signal
import subprocess
import tempfile
import time
import unittest

SECONDS = 60


class WindowSignalsTest(unittest.TestCase):
    def setUp(self):
        self.root = tempfile.mkdtemp(prefix="kavu-e2e-")
        self.addCleanup(shutil.rmtree, self.root, ignore_errors=True)
        self.temp = os.path.join(self.root, "temp")
        os.mkdir(self.temp)

    def start(self, *arguments):
        environment = {"PATH": os.environ.get("PATH", ""), "LC_ALL": "C.UTF-8", "HOME": self.root,
                       "TEMP": self.temp, "XDG_RUNTIME_DIR": self.root,
                       "QT_QPA_PLATFORM": "offscreen"}
        for name in ("ASAN_OPTIONS", "UBSAN_OPTIONS"):
            if name in os.environ:
                environment[name] = os.environ[name]
        return subprocess.Popen([os.environ["KAVU"], *arguments], env=environment,
                                stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                stderr=subprocess.DEVNULL)

    def wait_for_store(self, process):
        end = time.monotonic() + SECONDS
        while time.monotonic() < end and process.poll() is None:
            if os.listdir(self.temp):
                return
            time.sleep(0.001)
        self.fail("no working store was made")

    def stop(self, process, number):
        process.send_signal(number)
        process.wait(timeout=SECONDS)
        self.assertEqual(os.listdir(self.temp), [])

    def test_a_signal_as_soon_as_there_is_a_store_removes_it(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            process = self.start("--no-splash")
            self.wait_for_store(process)
            self.stop(process, number)

    def test_a_signal_some_time_into_the_start_does_as_well(self):
        for milliseconds in (20, 100, 300, 600):
            process = self.start()
            # The program has taken over the signal before it makes anything.
            time.sleep(milliseconds / 1000)
            if os.listdir(self.temp):
                self.stop(process, signal.SIGTERM)
            else:
                process.kill()
                process.wait(timeout=SECONDS)
                shutil.rmtree(self.temp)
                os.mkdir(self.temp)


if __name__ == "__main__":
    unittest.main()
