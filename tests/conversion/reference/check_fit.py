#!/usr/bin/env python3
"""Compares the arithmetic of fits with that of fit_reference.py, bit by bit.

    check_fit.py FIT_PROBE

Over 2000 random pair sets and over the reference data sets, for which it also prints the
digits that agree with the certified coefficients.
"""

import math
import random
import struct
import subprocess
import sys
from fractions import Fraction

import fit_reference as reference
import nist

SETS = 2000
# Digits of each order that the manual promises for the reference data; a fit that lost some
# would be another one.
LEAST_DIGITS = {"Norris": 12, "Pontius": 10, "Filip": 0, "Wampler1": 6, "Wampler2": 9,
                "Wampler3": 6, "Wampler4": 6, "Wampler5": 6}


def bits(value):
    if math.isnan(value):
        return "nan"
    return str(struct.unpack("<Q", struct.pack("<d", value))[0])


def from_probe(word):
    value = struct.unpack("<d", struct.pack("<Q", int(word)))[0]
    return "nan" if math.isnan(value) else word


def random_set(rng):
    n = rng.choice([1, 2, 3, 4, rng.randint(5, 20), rng.randint(21, 99)])
    kind = rng.randrange(7)
    if kind == 0:
        x = [float(rng.randint(0, 65535)) for _ in range(n)]
    elif kind == 1:
        x = [float(i) for i in range(n)]
    elif kind == 2:
        x = [float(rng.randint(-3, 3)) for _ in range(n)]
    elif kind == 3:
        x = [rng.uniform(-1, 1) for _ in range(n)]
    elif kind == 4:
        x = [30000 + 4000.0 * i / n for i in range(n)]
    elif kind == 5:
        x = [rng.uniform(-1, 1) * 10 ** rng.randint(-200, 200) for _ in range(n)]
    else:
        x = [float(rng.randint(-2048, 2047)) for _ in range(n)]
    true = [rng.uniform(-2, 2) / 1000 ** j for j in range(rng.randint(1, 6))]
    noise = rng.choice([0.0, 1e-6, 0.01, 1.0])
    y = [sum(c * reference.power(v, j) for j, c in enumerate(true)) + rng.gauss(0, noise)
         for v in x]
    if rng.random() < 0.1:
        y = [round(v, 1) if math.isfinite(v) else v for v in y]
    if rng.random() < 0.03:
        y = [y[0]] * n
    # Mostly an order that can be fitted, now and then one that is refused.
    order = rng.randint(-1, 11) if rng.random() < 0.2 else rng.randint(0, min(10, n - 1))
    return order, rng.randint(0, 11), x, y


def expected(order, max_order, x, y):
    x = list(x)
    words = [str(reference.best_fit_order(x, y, max_order))]
    c = reference.least_squares_fit(x, y, order)
    words.append("0" if c is None else "1")
    words += [bits(v) for v in x]
    if c is not None:
        words += [bits(v) for v in c]
        computed = [reference.evaluate(v, c, order) for v in x]
        words += [bits(v) for v in computed]
        errors = [a - b for a, b in zip(computed, y)]
        words.append(bits(reference.correlation(y, errors)))
        words.append(bits(reference.root_mean_square(y, computed)))
        if order >= 1:
            words += [bits(v) for v in reference.diagnostics(x, y, order, c)]
    return words


def probe(program, sets):
    lines = []
    for order, max_order, x, y in sets:
        pairs = " ".join(plain_bits(a) + " " + plain_bits(b) for a, b in zip(x, y))
        lines.append("%d %d %d %s\n" % (order, max_order, len(x), pairs))
    out = subprocess.run([program], input="".join(lines), capture_output=True, text=True,
                         check=True).stdout
    results = []
    for line in out.splitlines():
        words = line.split()
        results.append(words[:2] + [from_probe(word) for word in words[2:]])
    return results


def plain_bits(value):
    return str(struct.unpack("<Q", struct.pack("<d", value))[0])


def exact_fit(x, y, order):
    """The least-squares solution in exact fractions: it proves that the data stand right."""
    x = [Fraction(repr(v)) for v in x]
    y = [Fraction(repr(v)) for v in y]
    m = order + 1
    rows = [[sum(v ** (r + s) for v in x) for s in range(m)] +
            [sum(v ** r * w for v, w in zip(x, y))] for r in range(m)]
    for i in range(m):
        rows[i] = [v / rows[i][i] for v in rows[i]]
        for r in range(m):
            if r != i:
                factor = rows[r][i]
                rows[r] = [a - factor * b for a, b in zip(rows[r], rows[i])]
    return [row[m] for row in rows]


def digits(value, certified):
    if value == certified:
        return 15.0
    return max(0.0, min(15.0, -math.log10(abs(float((Fraction(value) - Fraction(certified)) /
                                                     Fraction(certified))))))


def words_to_doubles(words):
    return [math.nan if w == "nan" else struct.unpack("<d", struct.pack("<Q", int(w)))[0]
            for w in words]


def main():
    program = sys.argv[1]
    rng = random.Random(20260102)
    sets = [random_set(rng) for _ in range(SETS)]
    names = list(nist.SETS)
    sets += [(nist.SETS[name][0], 10, nist.SETS[name][1], nist.SETS[name][2]) for name in names]
    results = probe(program, sets)
    assert len(results) == len(sets), (len(results), len(sets))
    failures = 0
    fitted = 0
    for index, (one, words) in enumerate(zip(sets, results)):
        want = expected(*one)
        fitted += want[1] == "1"
        if words != want:
            failures += 1
            if failures <= 5:
                print("set %d, order %d of %d pairs, differs:\n  %s\n  %s"
                      % (index, one[0], len(one[2]), want, words))
    print("%d pair sets, %d fitted, %d differ" % (len(sets), fitted, failures))

    print("\ndata set   order  best  digits that agree with the certified coefficients")
    for name, words in zip(names, results[SETS:]):
        order, x, y, certified = nist.SETS[name]
        for value, right in zip(exact_fit(x, y, order), certified):
            if digits(value, right) < 13:
                failures += 1
                print("%s: the data are not those of the certified coefficients" % name)
                break
        c = words_to_doubles(words[2 + len(x):2 + len(x) + order + 1])
        agree = [digits(value, right) for value, right in zip(c, certified)]
        print("%-10s %5d %5s  %4.1f  (%s)" % (name, order, words[0], min(agree),
                                            " ".join("%.1f" % d for d in agree)))
        if min(agree) < LEAST_DIGITS[name]:
            failures += 1
            print("%s: %d digits are promised" % (name, LEAST_DIGITS[name]))
    return 1 if failures or fitted < SETS * 2 // 3 else 0


if __name__ == "__main__":
    sys.exit(main())
