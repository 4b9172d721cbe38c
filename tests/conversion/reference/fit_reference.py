"""The arithmetic of curve fits, written a second time and step by step.

Nothing here is clever: every power is computed where it is used, every sum runs in the order
in which it is defined, and Python's floats are never fused or reassociated.
"""

import math

SMALLEST = 2.2250738585072014e-308


def power(base, exponent):
    try:
        return math.pow(base, exponent)
    except OverflowError:
        return -math.inf if base < 0 and exponent % 2 == 1 else math.inf


def divide(a, b):
    """Division as the hardware does it."""
    if b != 0.0:
        return a / b
    if a == 0.0 or math.isnan(a):
        return math.nan
    return math.copysign(math.inf, a) * math.copysign(1.0, b)


def root(value):
    return math.sqrt(value) if value >= 0 else math.nan


def least_squares_fit(x, y, order):
    """The coefficients, or None. Zeros in x are replaced in place."""
    n = len(x)
    if order >= n or order < 0 or order > 10:
        return None
    m = order + 1
    matrix = [[0.0] * (m + 2) for _ in range(m + 1)]
    for r in range(1, m + 1):
        for s in range(1, m + 1):
            total = 0.0
            for k in range(n):
                if (r == 1 or s == 1) and x[k] == 0.0:
                    x[k] = SMALLEST
                total += power(x[k], r - 1) * power(x[k], s - 1)
            matrix[r][s] = total
        total = 0.0
        for k in range(n):
            total += power(x[k], r - 1) * y[k]
        matrix[r][m + 1] = total
    for i in range(1, m + 1):
        p, v = i, matrix[i][i]
        for j in range(i + 1, m + 1):
            if abs(v) <= abs(matrix[j][i]):
                v = matrix[j][i]
                p = j
        if p != i:
            matrix[i], matrix[p] = matrix[p], matrix[i]
    for s in range(2, m + 2):
        if matrix[1][1] == 0.0:
            return None
        matrix[1][s] = matrix[1][s] / matrix[1][1]
    for k in range(2, m + 1):
        for i in range(k, m + 1):
            total = 0.0
            for t in range(1, k):
                total += matrix[i][t] * matrix[t][k]
            matrix[i][k] = matrix[i][k] - total
        for s in range(k + 1, m + 2):
            total = 0.0
            for t in range(1, k):
                total += matrix[k][t] * matrix[t][s]
            if matrix[k][k] == 0.0:
                return None
            matrix[k][s] = (matrix[k][s] - total) / matrix[k][k]
    c = [0.0] * m
    c[order] = matrix[m][m + 1]
    for i in range(1, order + 1):
        r = m - i
        total = 0.0
        for s in range(r + 1, m + 1):
            total += matrix[r][s] * c[s - 1]
        c[r - 1] = matrix[r][m + 1] - total
    return c


def diagnostics(x, y, k, c):
    """SSE, smallest and largest scaled residual of a fit of order k."""
    n = len(x)
    table = [0.0] * (n * (k + 1))
    for i in range(n):
        table[i] = 1.0
        for j in range(1, k + 1):
            table[i + (k + 1) * j] = table[i + (k + 1) * (j - 1)] * x[i]
    d = [float(j) * c[j + 1] for j in range(k)]
    sse = 0.0
    scaled = []
    for i in range(n):
        computed = 0.0
        for j in range(k, -1, -1):
            computed = computed * x[i] + c[j]
        residual = y[i] - computed
        sse += residual * residual
        slope = 0.0
        for j in range(k):
            slope += table[i + (k + 1) * j] * d[j]
        if slope == 0.0:
            slope = 1e-10
        scaled.append(divide(residual, slope))
    least = greatest = scaled[0]
    for value in scaled:
        if value < least:
            least = value
        if value > greatest:
            greatest = value
    return sse, least, greatest


def best_fit_order(x, y, max_order):
    n = len(x)
    if max_order >= n:
        max_order = n - 1
    if n < 1 or max_order < 0 or max_order > 10:
        return 0
    previous_sse = None
    for k in range(1, max_order + 1):
        c = least_squares_fit(x, y, k)
        if c is None:
            break
        sse, least, greatest = diagnostics(x, y, k, c)
        if sse == 0.0:
            return k
        if k > 1:
            gain = abs(1 - divide(sse, previous_sse))
            if gain <= 0.3:
                return k - 1
            if max(abs(least), abs(greatest)) <= 1.0:
                return k
        previous_sse = sse
    return min(max_order, n - 1)


def evaluate(x, c, order):
    total = 0.0
    for i in range(order + 1):
        p = 1.0 if i == 0 else x if i == 1 else power(x, i)
        total += c[i] * p
    return total


def population_deviation(v):
    n = len(v)
    s = 0.0
    q = 0.0
    for value in v:
        s += value
        q += value * value
    if n <= 1:
        return 0.0
    w = (q - s * s / n) / n
    return math.sqrt(w) if w >= 0 else 0.0


def correlation(y, errors):
    total = 0.0
    for e in errors:
        total += power(e, 2)
    deviation = population_deviation(y)
    spread = len(y) * deviation * deviation
    if spread == 0.0:
        return 0.0
    w = 1 - total / spread
    return 0.0 if w < 0 else root(w)


def root_mean_square(y, computed):
    if not y:
        return 0.0
    total = 0.0
    for a, b in zip(y, computed):
        if b - a != 0.0:
            total += power(b - a, 2)
    return root(total / len(y))
