"""What the tests of the built program share: a folder of its own for each run, the run
itself with the shim for file calls, and documents to work on."""

import os
import re
import shutil
import stat
import subprocess
import tempfile
import unittest
from pathlib import Path

TIMEOUT = 30  # seconds; a run takes some milliseconds, one that takes longer hangs
NOBODY = 65534
NOW = "2024-05-06T07:08:09"
# What a recovery leaves in the store that it has read.
RECOVERED = "KAVU9RCV.TMP"


def needed(name):
    path = os.environ.get(name)
    if not path or not os.path.exists(path):
        raise SystemExit(f"{name} must name a built file; it is {path!r}")
    return path


def scratch_root():
    """Memory where there is some: thousands of runs wait for the disk otherwise."""
    shared = Path("/dev/shm")
    usable = shared.is_dir() and os.access(shared, os.W_OK | os.X_OK)
    return str(shared) if usable else None


class Workshop:
    """A folder for the runs of one test class, and copies of the program and the shim that
    every user of the machine can reach."""

    def __init__(self):
        for name in ("KAVU_CLI", "KAVU_FAULTSHIM", "KAVU_CHANGE_EDITION"):
            needed(name)
        self.folder = Path(tempfile.mkdtemp(prefix="kavu-torture-", dir=scratch_root()))
        self.folder.chmod(0o755)
        self.program = self._copy("KAVU_CLI")
        self.shim = self._copy("KAVU_FAULTSHIM")
        self.change_edition = self._copy("KAVU_CHANGE_EDITION")
        self._count = 0

    def _copy(self, name):
        target = self.folder / Path(needed(name)).name
        shutil.copy(needed(name), target)
        target.chmod(0o755)
        return target

    def close(self):
        shutil.rmtree(self.folder, ignore_errors=True)

    def case(self, name, source, former=None, older_backup=None):
        return Case(self, self.folder / name, source, former, older_backup)


class Outcome:
    """How a run ended. A run that had to be ended from here has no status."""

    def __init__(self, status, out, err):
        self.status = status
        self.out = out
        self.err = err

    def __str__(self):
        return f"status {self.status}\n--- out\n{self.out}\n--- err\n{self.err}"


class Case:
    """The files of one run: source, target, backup, temporary root and settings are all
    below `root`."""

    def __init__(self, workshop, root, source, former, older_backup):
        self.workshop = workshop
        self.root = root
        self.source = root / "source" / "in.tma"
        self.target = root / "target" / "out.tma"
        self.backup = root / "target" / "out.bak"
        self.temp = root / "temp"
        self.home = root / "home"
        self.settings = root / "home" / "kavu.ini"
        for folder in (root, self.source.parent, self.target.parent, self.temp, self.home):
            folder.mkdir()
        self.source.write_bytes(source)
        if former is not None:
            self.target.write_bytes(former)
        if older_backup is not None:
            self.backup.write_bytes(older_backup)

    def environment(self, faults=None):
        variables = {
            "PATH": os.environ.get("PATH", "/usr/bin:/bin"),
            "TEMP": str(self.temp),
            "HOME": str(self.home),
            "LC_ALL": "C",
        }
        if faults is not None:
            variables["LD_PRELOAD"] = str(self.workshop.shim)
            variables["KAVU_FAULT_ROOT"] = str(self.root)
            for key, value in faults.items():
                variables["KAVU_FAULT_" + key] = str(value)
        return variables

    def command(self, arguments, program=None):
        return [str(program or self.workshop.program), *map(str, arguments)]

    def run(self, *arguments, faults=None, user=None, wrapper=(), program=None):
        """Runs the program, or another one. `user` is the number of the user it runs as."""
        options = {}
        if user is not None and os.geteuid() == 0:
            options = {"user": user, "group": user, "extra_groups": []}
        try:
            done = subprocess.run([*wrapper, *self.command(arguments, program)],
                                  env=self.environment(faults), cwd=self.root,
                                  stdin=subprocess.DEVNULL, capture_output=True,
                                  timeout=TIMEOUT, check=False, **options)
        except subprocess.TimeoutExpired as expired:
            return Outcome(None, text_of(expired.stdout), text_of(expired.stderr))
        return Outcome(done.returncode, text_of(done.stdout), text_of(done.stderr))

    def start(self, *arguments, faults=None):
        return subprocess.Popen(self.command(arguments), env=self.environment(faults),
                                cwd=self.root, stdin=subprocess.DEVNULL,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def save(self, *options, target=None, **settings):
        return self.run("--now", NOW, "save", self.source, "-o", target or self.target, *options,
                        **settings)

    def give_to(self, user, *paths):
        if os.geteuid() == 0:
            for path in paths:
                os.chown(path, user, user)

    def left_in_temp(self):
        return sorted(str(path.relative_to(self.temp)) for path in self.temp.rglob("*"))

    def remove(self):
        shutil.rmtree(self.root, ignore_errors=True)


def text_of(raw):
    return (raw or b"").decode("utf-8", "replace")


def contents(path):
    """The bytes of a file, or nothing if there is none."""
    try:
        return Path(path).read_bytes()
    except FileNotFoundError:
        return None


class WorkshopTest(unittest.TestCase):
    """A test with a workshop for the class and a case for each test method."""

    longMessage = True

    @classmethod
    def setUpClass(cls):
        cls.workshop = Workshop()
        cls.addClassCleanup(cls.workshop.close)

    def new_case(self, source, former=None, older_backup=None, name=None):
        case = self.workshop.case(name or self.id().split(".")[-1], source, former, older_backup)
        self.addCleanup(case.remove)
        return case

    def assertSaved(self, outcome, target, right):
        self.assertIn(outcome.status, (0, 1), outcome)
        self.assertEqual(contents(target), right, outcome)

    def assertFailed(self, outcome, *words):
        self.assertEqual(outcome.status, 2, outcome)
        for word in words:
            self.assertIn(str(word), outcome.err, outcome)


# --- documents ---------------------------------------------------------------------------

def lines(*commands):
    return "".join(command + ";\r\n" for command in commands).encode()


def conversion(index, name, *fields):
    return [f"C-{index}\\DCN:{name}", f"C-{index}\\TRD1:INT", f"C-{index}\\MN1:TEST",
            f"C-{index}\\BFM:UNS", *(f"C-{index}\\{field}" for field in fields)]


def small_document():
    """Every group, two chunks of conversions, and a comment that needs a file of its own."""
    commands = [
        "COMMENT: a remark in front", "G\\FN:in.tma", "G\\106:09", "G\\PN:TEST", "G\\OD:05-06-2009",
        "G\\DSI\\N:2", "G\\DSI-1:RF", "G\\DST-1:RF", "G\\DSI-2:TAPE", "G\\DST-2:TAP",
        "G\\COM:two lines\r\nof text",
        "T-1\\ID:RF", "T-1\\RF1:2250.5",
        "R-1\\ID:TAPE", "R-1\\N:1", "R-1\\TK1-1:1", "R-1\\DSI-1:PCM2", "R-1\\CDT-1:PCMIN",
        "R-1\\CDLN-1:PCM2",
        "M-1\\ID:RF", "M-1\\BB\\DLN:PCM1",
        "P-1\\DLN:PCM1", "P-1\\D1:NRZ-L", "P-1\\D2:1000000", "P-1\\F1:16", "P-1\\TF:ONE",
        "P-2\\DLN:PCM2", "P-2\\D1:NRZ-L", "P-2\\TF:ONE",
        "D-1\\DLN:PCM1", "D-1\\ML\\N:1", "D-1\\MLN-1:JUST ONE", "D-1\\MN\\N-1:2",
        "D-1\\MN-1-1:MEAS1", "D-1\\MN-1-2:MEAS2",
        "D-2\\DLN:PCM2", "D-2\\ML\\N:1", "D-2\\MLN-1:JUST ONE", "D-2\\MN\\N-1:1",
        "D-2\\MN-1-1:MEAS30",
        "B-1\\DLN:PCM1", "B-1\\NBS\\N:1", "B-1\\BNA-1:BUS",
        "S-1\\DLN:PCM1", "S-1\\NS\\N:0",
        "A-1\\DLN:PCM1", "A-1\\A1:NRZ",
    ]
    for index in range(1, 31):
        commands += conversion(index, f"MEAS{index}", "DCT:COE", "CO\\N:1", "CO1:N", "CO:0.5",
                               "CO-1:1.25")
    commands += conversion(31, "LONG", "DCT:NON", "COM:" + "A long story. " * 2300)
    commands += ["H\\TA:XYZ", "H\\ST1\\N:0", "V-1\\ID:RF", "V-1\\VN:KAV"]
    return lines(*commands)


def medium_document(measurements=900):
    """Some thousands of commands in groups that are larger than every buffer."""
    commands = ["G\\FN:in.tma", "G\\106:09", "G\\PN:MEDIUM", "G\\DSI\\N:1", "G\\DSI-1:RF",
                "G\\DST-1:RF", "T-1\\ID:RF", "M-1\\ID:RF", "M-1\\BB\\DLN:PCM1", "P-1\\DLN:PCM1",
                "P-1\\D1:NRZ-L", "P-1\\F1:16", "P-1\\TF:ONE", "D-1\\DLN:PCM1", "D-1\\ML\\N:1",
                "D-1\\MLN-1:JUST ONE", f"D-1\\MN\\N-1:{measurements}"]
    for index in range(1, measurements + 1):
        commands += [f"D-1\\MN-1-{index}:M{index}", f"D-1\\LT-1-{index}:WDFR",
                     f"D-1\\MNF\\N-1-{index}:1", f"D-1\\WP-1-{index}-1-1-1:{index % 99 + 1}"]
    for index in range(1, measurements + 1):
        comment = [f"COM:{'Words without end. ' * 1800}"] if index % 300 == 0 else []
        commands += conversion(index, f"M{index}", "DCT:COE", "CO\\N:1", "CO1:N",
                               f"CO:{index}.5", "CO-1:1.25", *comment)
    commands += ["H\\TA:XYZ", "V-1\\ID:RF"]
    return lines(*commands)


# --- reading what the program wrote --------------------------------------------------------

def commands_of(document):
    """The commands of a file, without comments and without the name of the file itself."""
    found = [command.strip(b"\r\n\t ") for command in document.split(b";")]
    return [command for command in found
            if command and not command.upper().startswith(b"COMMENT:")
            and not command.startswith(b"G\\FN:")]


CONVERSION = re.compile(rb"C-\d+\\(.*)", re.DOTALL)


def plain_commands(document):
    return [command for command in commands_of(document) if not CONVERSION.match(command)]


def conversion_records(document):
    """Name to fields of the conversions, without their numbers, which a save gives anew."""
    records = {}
    name = None
    for command in commands_of(document):
        match = CONVERSION.match(command)
        if not match:
            continue
        code, _, value = match.group(1).partition(b":")
        if code == b"DCN":
            name = value
            records[name] = []
        else:
            records[name].append((code, value))
    return records


def mode_of(path):
    return stat.S_IMODE(os.stat(path).st_mode)
