"""A session bus of its own for each test, with the server that the bus starts.

The program is found through the environment variable KAVU. There is no display unless a test puts
one into the environment.
"""

import os
import shutil
import signal
import subprocess
import tempfile
import time
import unittest
import xml.etree.ElementTree

import dbus
import dbus.bus

SECONDS = 60
SOURCE = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
LIBRARY = os.path.join(SOURCE, "src", "app", "automation", "kavu.xml")
NAME, PATH, INTERFACE = "Kavu.Kavu", "/Kavu/Kavu", "Kavu.IKavu"
GUI_NAME, GUI_PATH, GUI_INTERFACE = "Kavu.KavuGui", "/Kavu/KavuGui", "Kavu.IKavuGui"


def interfaces_of(text):
    """What each interface tells of its methods and signals, without what the bus adds."""
    found = {}
    for interface in xml.etree.ElementTree.fromstring(text).iter("interface"):
        if interface.get("name").startswith("org.freedesktop."):
            continue
        found[interface.get("name")] = [
            (member.tag, member.get("name"),
             [(arg.get("name"), arg.get("type"),
               arg.get("direction", "in" if member.tag == "method" else "out"))
              for arg in member.findall("arg")])
            for member in interface if member.tag in ("method", "signal", "property")]
    return found


def type_library():
    with open(LIBRARY, encoding="utf-8") as file:
        return interfaces_of(file.read())


class Proxy:
    """The methods of an interface as functions, with the types of the type library."""

    def __init__(self, bus, name, path, interface):
        self._call = lambda *what: bus.call_blocking(name, path, interface, *what, timeout=SECONDS)
        self._signatures = {method: "".join(kind for _, kind, direction in arguments
                                            if direction == "in")
                            for tag, method, arguments in type_library()[interface]
                            if tag == "method"}

    def __getattr__(self, method):
        return lambda *arguments: self._call(method, self._signatures[method], arguments)


class PrivateBusTest(unittest.TestCase):
    """A bus, and folders that are the user's."""

    def setUp(self):
        self.root = tempfile.mkdtemp(prefix="kavu-bus-")
        self.addCleanup(shutil.rmtree, self.root, ignore_errors=True)
        self.temp = self.folder("temp")
        self.home = self.folder("home")
        self.work = self.folder("work")
        self.data = self.folder("home/.local/share")
        os.chmod(self.folder("run"), 0o700)
        self.environment = {
            "PATH": os.environ.get("PATH", ""), "LC_ALL": "C.UTF-8", "HOME": self.home,
            "TEMP": self.temp, "TMPDIR": self.temp, "XDG_RUNTIME_DIR": self.folder("run"),
            "XDG_DATA_HOME": self.data, "XDG_DATA_DIRS": self.folder("share")}
        for name in ("ASAN_OPTIONS", "UBSAN_OPTIONS", "PYTHONPATH", "PYTHONDONTWRITEBYTECODE"):
            if name in os.environ:
                self.environment[name] = os.environ[name]
        self.program = os.environ["KAVU"]

    def folder(self, name):
        path = os.path.join(self.root, name)
        os.makedirs(path, exist_ok=True)
        return path

    def write(self, name, text, encoding="utf-8"):
        path = os.path.join(self.work, name)
        with open(path, "w", encoding=encoding, newline="") as file:
            file.write(text)
        return path

    def sample(self, name="flight-test.tma"):
        """A copy of a sample in the working folder."""
        return shutil.copy(os.path.join(SOURCE, "samples", name), self.work)

    def end(self, process):
        if process.poll() is None:
            process.kill()
        process.wait(timeout=SECONDS)

    # --- bus --------------------------------------------------------------------------------

    def start_bus(self, *options):
        """Starts the bus; its address goes into the environment of all that is started later."""
        self.bus_process = subprocess.Popen(
            ["dbus-daemon", *(options or ["--session"]), "--nofork", "--print-address=1",
             "--address=unix:dir=" + self.environment["XDG_RUNTIME_DIR"]],
            env=self.environment, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.addCleanup(self.bus_process.stdout.close)
        self.addCleanup(self.end, self.bus_process)
        self.address = self.bus_process.stdout.readline().decode().strip()
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = self.address
        self.bus = self.connect()

    def connect(self):
        """Another client."""
        connection = dbus.bus.BusConnection(self.address)
        connection.set_exit_on_disconnect(False)
        self.addCleanup(connection.close)
        return connection

    def start_server(self, *arguments):
        """Starts the server itself, without the bus, and waits until it has its names."""
        process = self.start("-Embedding", *arguments)
        self.wait_until(lambda: self.bus.name_has_owner(NAME) and
                        self.bus.name_has_owner(GUI_NAME))
        return process

    def start(self, *arguments):
        process = subprocess.Popen([self.program, *arguments], env=self.environment,
                                   stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL)
        self.addCleanup(self.end, process)
        return process

    def run_program(self, *command, **more):
        return subprocess.run(command, env=self.environment, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=SECONDS,
                              check=False, **more)

    def wait_until(self, condition, seconds=SECONDS):
        end = time.monotonic() + seconds
        while not condition():
            self.assertLess(time.monotonic(), end, "nothing has come")
            time.sleep(0.01)

    # --- calls ------------------------------------------------------------------------------

    def kavu(self, bus=None):
        """The interface on a connection."""
        return Proxy(bus or self.bus, NAME, PATH, INTERFACE)

    def gui(self, bus=None):
        return Proxy(bus or self.bus, GUI_NAME, GUI_PATH, GUI_INTERFACE)

    def fails(self, error, method, *arguments):
        """Calls, and gives the text of the error that has to come."""
        with self.assertRaises(dbus.DBusException) as caught:
            method(*arguments)
        name = caught.exception.get_dbus_name()
        wanted = error if "." in error else "Kavu.Error." + error
        self.assertEqual(name, wanted, caught.exception.get_dbus_message())
        return caught.exception.get_dbus_message()

    def terminate(self, process):
        process.send_signal(signal.SIGTERM)
        self.assertEqual(process.wait(timeout=SECONDS), 0)
