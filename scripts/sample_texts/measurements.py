"""The instrumentation of the invented test aircraft KESTREL-7: 150 measurements."""

from dataclasses import dataclass, field


@dataclass
class Measurement:
    """One measurement: where it is and how its counts become engineering units.

    `place` is ("MF", word), ("MFSC", first, interval, count), ("MFSE", words),
    ("SF", subframe, position), ("SFSC", subframe, first, interval, count),
    ("MFFR", words), ("BUS", message, words) or () for one that lies in no stream.
    `conversion` is (type, values); the values depend on the type.
    """
    name: str
    text: str
    unit: str
    low: float
    high: float
    place: tuple
    conversion: tuple
    sensor: str = "TRANSDUCER"
    bits: int = 16
    format: str = "UNS"
    comment: str = ""
    rate: str = ""
    extra: dict = field(default_factory=dict)


def number(value):
    """A number as an engineer would type it."""
    return f"{value:.6g}"


def line(low, high, bits):
    """Coefficients of the straight line from all counts to LOW..HIGH."""
    return ("COE", [low, (high - low) / (2 ** bits - 1)])


def pairs(low, high, bits, points, bend=0.0):
    """A pair set; BEND makes it a little crooked in the middle, as real sensors are."""
    top = 2 ** bits - 1
    rows = []
    for i in range(points):
        x = i / (points - 1)
        rows.append((round(top * x), low + (high - low) * (x + bend * x * (1 - x))))
    return ("PRS", rows)


# Words of stream 1 that are reserved for supercommutated measurements and subframes.
STREAM_1_TAKEN = {18, 19, 20, 28, 34, 35, 36, 44, 47, 50, 51, 52, 60}


def stream_1():
    """Flight data at 16 bits: 64 words, 32 minor frames."""
    out = []
    word = iter([w for w in range(14, 64) if w not in STREAM_1_TAKEN])

    def add(name, text, unit, low, high, conversion=None, place=None, **more):
        out.append(Measurement(name, text, unit, low, high, place or ("MF", next(word)),
                               conversion or line(low, high, 16), **more))

    for e in (1, 2):
        add(f"ENG{e}-N1", f"Engine {e} fan speed", "PCT", 0, 110, sensor="TACHOMETER")
        add(f"ENG{e}-N2", f"Engine {e} core speed", "PCT", 0, 115, sensor="TACHOMETER")
        add(f"ENG{e}-EGT", f"Engine {e} exhaust gas temperature", "DEGC", -50, 1000,
            pairs(-50, 1000, 16, 8, 0.08), sensor="THERMOCOUPLE K")
        add(f"ENG{e}-OIL-P", f"Engine {e} oil pressure", "PSI", 0, 120)
        add(f"ENG{e}-OIL-T", f"Engine {e} oil temperature", "DEGC", -40, 180,
            pairs(-40, 180, 16, 6, 0.03), sensor="RTD")
        add(f"ENG{e}-FF", f"Engine {e} fuel flow", "LB/HR", 0, 9000, sensor="TURBINE METER")
        add(f"ENG{e}-PLA", f"Engine {e} power lever angle", "DEG", 0, 130, sensor="RVDT")
        add(f"ENG{e}-VIB-FAN", f"Engine {e} fan vibration", "IPS", 0, 5,
            sensor="ACCELEROMETER")
        add(f"ENG{e}-VIB-CORE", f"Engine {e} core vibration", "IPS", 0, 5,
            sensor="ACCELEROMETER")
    add("ADC-PT", "Total pressure", "INHG", 0, 80, ("COE", [0.0, 1.2207e-3, 1.5e-9]))
    add("ADC-PS", "Static pressure", "INHG", 0, 32, ("COE", [0.0, 4.8829e-4, -2.1e-10]))
    add("ADC-AOA", "Angle of attack, nose boom vane", "DEG", -20, 40, format="TWO",
        conversion=("COE", [10.0, 9.1555e-4]))
    add("ADC-AOS", "Angle of sideslip, nose boom vane", "DEG", -30, 30, format="TWO",
        conversion=("COE", [0.0, 9.1555e-4]))
    add("ADC-OAT", "Outside air temperature", "DEGC", -70, 60, pairs(-70, 60, 16, 5, 0.02),
        sensor="RTD")
    for axis, first, text in (("X", 2, "longitudinal"), ("Y", 3, "lateral"), ("Z", 4, "normal")):
        add(f"IMU-N{axis}", f"Load factor, {text}", "G", -4, 10, ("COE", [3.0, 2.1363e-4]),
            ("MFSC", first, 16, 4), format="TWO", sensor="ACCELEROMETER", rate="4000")
    for axis, text in (("P", "Roll"), ("Q", "Pitch"), ("R", "Yaw")):
        add(f"IMU-{axis}", f"{text} rate", "DEG/S", -200, 200, ("COE", [0.0, 6.1036e-3]),
            format="OFF", sensor="RATE GYRO")
    add("ATT-PITCH", "Pitch attitude", "DEG", -90, 90, ("COE", [0.0, 2.7466e-3]), format="ONE")
    add("ATT-ROLL", "Roll attitude", "DEG", -180, 180, ("COE", [0.0, 5.4932e-3]), format="SIG")
    add("ATT-HDG", "Magnetic heading", "DEG", 0, 360)
    for side in ("L", "R"):
        add(f"SURF-ELEV-{side}", f"Elevator position, {side}", "DEG", -25, 15, sensor="LVDT",
            conversion=pairs(-25, 15, 16, 9, 0.05), comment="CAL")
        add(f"SURF-AIL-{side}", f"Aileron position, {side}", "DEG", -20, 20, sensor="LVDT",
            conversion=pairs(-20, 20, 16, 9, -0.04))
        add(f"SURF-FLAP-{side}", f"Flap position, {side}", "DEG", 0, 40, sensor="POTENTIOMETER")
    add("SURF-RUD", "Rudder position", "DEG", -30, 30, sensor="LVDT",
        conversion=pairs(-30, 30, 16, 7, 0.02), place=("MFSE", [13, 47]), rate="2000")
    add("SURF-STAB", "Stabilizer trim", "UNIT", 0, 15, sensor="POTENTIOMETER")
    for i in range(1, 7):
        add(f"MLG-SG-{i:02d}", f"Main gear strain, bridge {i}", "USTR", -2500, 2500,
            ("COE", [-2500.0, 7.6295e-2]), ("SF", "SF-LOADS", i), sensor="STRAIN GAGE",
            rate="62.5")
    for i in range(1, 13):
        add(f"BAY-TC-{i:02d}", f"Equipment bay temperature {i}", "DEGC", -55, 125,
            pairs(-55, 125, 16, 4, 0.01), ("SF", "SF-TEMP", i), sensor="THERMOCOUPLE T",
            rate="31.25")
    gear = ("DIS", 2, [("0", "UP AND LOCKED"), ("1", "IN TRANSIT"), ("3", "DOWN AND LOCKED")])
    add("GEAR-POS", "Landing gear position", "", 0, 3, gear, ("SF", "SF-DISCRETE", 1), bits=2,
        rate="125", sensor="SWITCH")
    for i, (name, text) in enumerate((("WOW-L", "Weight on wheels, left"),
                                      ("WOW-R", "Weight on wheels, right"),
                                      ("EVENT-MARK", "Pilot event marker")), 2):
        states = ("PRESSED", "RELEASED") if name == "EVENT-MARK" else ("ON GROUND", "IN FLIGHT")
        add(name, text, "", 0, 1, ("DIS", 1, [("1", states[0]), ("0", states[1])]),
            ("SF", "SF-DISCRETE", i), bits=1, rate="125", sensor="SWITCH")
    for part, text, place in (("H", "high order", ("MF", 5)), ("L", "low order", ("MF", 6)),
                              ("M", "microseconds", ("SFSC", "SF-TIME", 1, 8, 4))):
        add(f"TIME-{text.split()[0].upper()[:4]}", f"Time word, {text}", "", 0, 65535,
            ("PTM", part), place, sensor="TIME CODE", rate="" if part != "M" else "125")
    return out


def stream_2():
    """Structural loads at 12 bits: 48 words, 16 minor frames, fragments and a float."""
    out = []
    word = iter(range(2, 48))

    def add(name, text, unit, low, high, conversion=None, place=None, **more):
        out.append(Measurement(name, text, unit, low, high, place or ("MF", next(word)),
                               conversion or line(low, high, 12), bits=more.pop("bits", 12),
                               **more))

    for side in ("L", "R"):
        for i in range(1, 9):
            add(f"WING-{side}-BM-{i:02d}", f"Wing bending moment {side}, station {i}", "KNM",
                -50, 400, sensor="STRAIN GAGE",
                conversion=pairs(-50, 400, 12, 3 + i, 0.01 * i) if i % 2 else None)
    for i in range(1, 9):
        add(f"WT-ACC-{i:02d}", f"Wing tip acceleration {i}", "G", -25, 25,
            ("COE", [-25.0, 1.221e-2]), sensor="ACCELEROMETER", format="OFF")
    add("GPS-LAT", "Position latitude", "DEG", -90, 90, ("COE", [0.0, 4.190951586e-8]),
        ("MFFR", [30, 31, 32]), format="TWO", bits=32, sensor="RECEIVER")
    add("GPS-LON", "Position longitude", "DEG", -180, 180, ("COE", [0.0, 8.381903172e-8]),
        ("MFFR", [33, 34, 35]), format="TWO", bits=32, sensor="RECEIVER")
    add("GPS-ALT", "Altitude above the ellipsoid", "FT", -1000, 60000, ("NON",),
        ("MFFR", [36, 37, 38]), format="FPT", bits=32, sensor="RECEIVER")
    add("FUEL-QTY", "Fuel quantity, total", "LB", 0, 12000, ("NON",), ("MF", 39),
        format="BWT", sensor="CAPACITANCE PROBE")
    for i in range(1, 5):
        add(f"BRAKE-TH-{i}", f"Brake temperature {i}, thermistor", "DEGC", 0, 600,
            ("NPC", [-32.5, 81920.0, -1.6e7]), ("MF", 39 + i), sensor="THERMISTOR")
    for i in range(1, 4):
        add(f"HYD-P-{i}", f"Hydraulic pressure, system {i}", "PSI", 0, 4000,
            place=("SF", "SF-HYD", i), rate="62.5")
    add("FUEL-DENS", "Fuel density", "LB/GAL", 6, 7.2,
        ("OTH", "Density from capacitance and temperature by the table FD-3 of the report"),
        ("SF", "SF-HYD", 4), rate="62.5", comment="TABLE")
    return out


def stream_3():
    """The equipment pod at 16 bits: 32 words, 8 minor frames."""
    out = []
    word = iter(range(2, 30))

    def add(name, text, unit, low, high, conversion=None, place=None, **more):
        out.append(Measurement(name, text, unit, low, high, place or ("MF", next(word)),
                               conversion or line(low, high, more.get("bits", 16)), **more))

    add("POD-V28", "Pod supply voltage", "V", 0, 40)
    add("POD-I28", "Pod supply current", "A", 0, 60)
    for i in range(1, 9):
        add(f"POD-T-{i}", f"Pod temperature {i}", "DEGC", -55, 125, pairs(-55, 125, 16, 5, 0.02),
            ("SF", "SF-POD", i), sensor="RTD", rate="12.5")
    for i in range(1, 5):
        add(f"POD-P-{i}", f"Pod pressure {i}", "PSIA", 0, 50)
    add("POD-MODE", "Pod operating mode", "", 0, 7,
        ("DIS", 3, [("0", "OFF"), ("1", "STANDBY"), ("2", "TEST"), ("3", "OPERATE"),
                    ("7", "FAIL")]), bits=3, sensor="DIGITAL")
    add("POD-CHAN", "Selected channel, four decimal digits", "", 0, 9999, ("NON",),
        format="BCD", sensor="DIGITAL")
    add("POD-GAIN", "Receiver gain", "DB", -60, 60, ("COE", [0.0, 3.6622e-3]), format="SIM",
        sensor="DIGITAL")
    add("POD-CRC", "Check word of the pod", "", 0, 65535,
        ("SP", ), sensor="DIGITAL", comment="CRC")
    add("POD-AZ", "Antenna azimuth", "DEG", 0, 360, format="INT", sensor="RESOLVER")
    add("POD-EL", "Antenna elevation", "DEG", -30, 90, sensor="RESOLVER",
        conversion=("COE", [0.0, 2.7466e-3]), format="TWO", place=("MFSC", 14, 8, 2), rate="200")
    return out


BUS_MESSAGES = [
    # name, terminal name, address, sub terminal name, sub address, transmit, words
    ("INS-ATT", "INS", "00101", "ATTITUDE", "00001", "1", 12),
    ("INS-NAV", "INS", "00101", "NAVIGATION", "00010", "1", 14),
    ("ADC-DATA", "ADC", "00110", "AIR DATA", "00001", "1", 10),
    ("RALT-DATA", "RALT", "01001", "HEIGHT", "00011", "1", 4),
    ("STORES-CMD", "SMS", "01100", "STORES", "00100", "0", 2),
]


def bus():
    """What the recorder takes from the avionics bus."""
    out = []

    def add(message, words, name, text, unit, low, high, conversion=None, **more):
        bits = 16 * len(words)
        out.append(Measurement(name, text, unit, low, high, ("BUS", message, words),
                               conversion or line(low, high, bits), bits=bits,
                               sensor="BUS", rate=more.pop("rate", "50"), **more))

    for i, axis in enumerate(("PITCH", "ROLL", "YAW")):
        add(1, [2 + i], f"INS-{axis}", f"Inertial {axis.lower()} angle", "SC", -1, 1,
            ("COE", [0.0, 3.0518e-5]), format="TWO")
        add(1, [5 + i], f"INS-{axis}-RATE", f"Inertial {axis.lower()} rate", "SC/S", -4, 4,
            ("COE", [0.0, 1.2207e-4]), format="TWO")
    for i, (name, text) in enumerate((("LAT", "latitude"), ("LON", "longitude"))):
        add(2, [2 + 2 * i, 3 + 2 * i], f"INS-{name}", f"Inertial {text}", "SC", -1, 1,
            ("COE", [0.0, 4.6566e-10]), format="TWO", rate="25")
    for i, axis in enumerate(("VN", "VE", "VD", "ALT")):
        add(2, [7 + i], f"INS-{axis}", f"Inertial {axis}", "FT/S" if axis != "ALT" else "FT",
            -4096, 4096, ("COE", [0.0, 0.125]), format="TWO", rate="25")
    for i, (name, unit, low, high) in enumerate((
            ("CAS", "KT", 0, 1024), ("TAS", "KT", 0, 1024), ("MACH", "MACH", 0, 4),
            ("ALT-BARO", "FT", -1500, 80000), ("VSI", "FT/MIN", -40000, 40000),
            ("TAT", "DEGC", -100, 156))):
        add(3, [1 + i], f"BADC-{name}", f"Air data {name}", unit, low, high, rate="16")
    for i in range(2):
        add(4, [1 + i], f"RALT-{i + 1}", f"Radar height {i + 1}", "FT", 0, 5000, rate="25")
    add(4, [3], "RALT-VALID", "Radar height validity", "", 0, 1,
        ("DIS", 1, [("0", "INVALID"), ("1", "VALID")]), rate="25")
    add(4, [4], "RALT-BIT", "Self test result", "", 0, 65535, ("NON",), rate="25")
    for part, text in (("H", "HIGH"), ("L", "LOW")):
        add(1, [9 if part == "H" else 10], f"INS-TAG-{text}", f"Bus time tag, {text.lower()}",
            "", 0, 65535, ("BTM", part))
    for i in (1, 2):
        add(5, [i], f"STORE-{i}", f"Store station {i} state", "", 0, 3,
            ("DIS", 2, [("0", "EMPTY"), ("1", "LOADED"), ("2", "ARMED"), ("3", "RELEASED")]),
            rate="10")
    return out


def elsewhere():
    """Measurements that are in no word: a sum of others, voice and video."""
    return [
        Measurement("MACH-DER", "Mach number from pressures", "MACH", 0, 2.5, (),
                    ("DER", ["ADC-PT", "ADC-PS"], ["3.5", "1.4"],
                     "SQRT(5*((ADC-PT/ADC-PS)**(1/3.5)-1))"), sensor="DERIVED"),
        Measurement("HOT-MIC", "Cockpit hot microphone", "", 0, 0, (), ("VOI",), sensor="AUDIO",
                    bits=8),
        Measurement("HUD-VIDEO", "Head-up display camera", "", 0, 0, (), ("VID",),
                    sensor="CAMERA", bits=8),
    ]
