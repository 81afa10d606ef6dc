# SPDX-License-Identifier: MIT
"""Ten problems as a user of SciPy writes them, and as a user of zirk does. The truths are those of tests/truth."""

import math

import numpy as np

PROBLEMS = {}


class Problem:
    """end; rates(t, state) and start for solve_ivp, text for zirk.solve; names are what the parts of the state are called."""

    def __init__(self, name, names, end, start, rates, text, options=None, written=None):
        """`written`: lines of Python that make the text, where a loop does."""
        self.name, self.names, self.end, self.start, self.rates, self.text = name, names.split(), end, start, rates, text
        self.options, self.written = options or {}, written
        PROBLEMS[name] = self


def kepler(t, state):
    x, y, vx, vy = state.tolist()
    cube = (x * x + y * y) ** 1.5
    return [vx, vy, -x / cube, -y / cube]


Problem("kepler", "x y x' y'", 100, [0.5, 0, 0, math.sqrt(3)], kepler, """
    r = sqrt(x^2 + y^2);
    x'' = -x/r^3 & 1/2;
    y'' = -y/r^3 & 0;  y'(0) = sqrt(3);
""")


def three_bodies(t, state):
    x1, y1, x2, y2, x3, y3, *speeds = state.tolist()
    a = ((x1 - x2) ** 2 + (y1 - y2) ** 2) ** -1.5
    b = ((x1 - x3) ** 2 + (y1 - y3) ** 2) ** -1.5
    c = ((x2 - x3) ** 2 + (y2 - y3) ** 2) ** -1.5
    ax1, ay1 = 2 * a * (x2 - x1) + b * (x3 - x1), 2 * a * (y2 - y1) + b * (y3 - y1)
    ax2, ay2 = 3 * a * (x1 - x2) + c * (x3 - x2), 3 * a * (y1 - y2) + c * (y3 - y2)
    ax3, ay3 = 3 * b * (x1 - x3) + 2 * c * (x2 - x3), 3 * b * (y1 - y3) + 2 * c * (y2 - y3)
    return [*speeds, ax1, ay1, ax2, ay2, ax3, ay3]


Problem("three-bodies", "x1 y1 x2 y2 x3 y3", 10, [1, 0, -2, 0, 1, 5, 0, 0.5, 0, -0.7, -1, 0], three_bodies, """
    r12 = sqrt((x1 - x2)^2 + (y1 - y2)^2);
    r13 = sqrt((x1 - x3)^2 + (y1 - y3)^2);
    r23 = sqrt((x2 - x3)^2 + (y2 - y3)^2);
    x1'' = 2*(x2 - x1)/r12^3 + (x3 - x1)/r13^3   & 1;
    y1'' = 2*(y2 - y1)/r12^3 + (y3 - y1)/r13^3   & 0;   y1'(0) = 1/2;
    x2'' = 3*(x1 - x2)/r12^3 + (x3 - x2)/r23^3   & -2;
    y2'' = 3*(y1 - y2)/r12^3 + (y3 - y2)/r23^3   & 0;   y2'(0) = -7/10;
    x3'' = 3*(x1 - x3)/r13^3 + 2*(x2 - x3)/r23^3 & 1;   x3'(0) = -1;
    y3'' = 3*(y1 - y3)/r13^3 + 2*(y2 - y3)/r23^3 & 5;
""")


def pleiades(t, state):
    x, y = state[:7], state[7:14]
    across, up = x[None] - x[:, None], y[None] - y[:, None]
    cubes = (across**2 + up**2 + np.eye(7)) ** 1.5
    masses = np.arange(1, 8)
    return np.concatenate([state[14:], (masses * across / cubes).sum(1), (masses * up / cubes).sum(1)])


STARS = [3, 3, -1, -3, 2, -2, 2], [3, -3, 2, 0, 0, -4, 4], [0, 0, 0, 0, 0, 1.75, -1.5], [0, 0, 0, -1.25, 1, 0, 0]
Problem("pleiades", " ".join(f"{a}{i}" for a in "xy" for i in range(1, 8)), 3, np.concatenate(STARS), pleiades, "".join(
    f"d{i}{j} = ((x{i} - x{j})^2 + (y{i} - y{j})^2)^1.5;\n" for i in range(1, 8) for j in range(i + 1, 8)) + "".join(
    f"{a}{i}'' = " + " + ".join(f"{j}*({a}{j} - {a}{i})/d{min(i, j)}{max(i, j)}" for j in range(1, 8) if j != i)
    + f" & {STARS[n][i - 1]}; {a}{i}'(0) = {STARS[n + 2][i - 1]};\n" for n, a in enumerate("xy") for i in range(1, 8)),
    written=3)  # fmt: skip


def arenstorf(t, state):
    x, y, vx, vy = state.tolist()
    m = 0.012277471
    d, e = ((x + m) ** 2 + y**2) ** 1.5, ((x - 1 + m) ** 2 + y**2) ** 1.5
    ax = x + 2 * vy - (1 - m) * (x + m) / d - m * (x - 1 + m) / e
    return [vx, vy, ax, y - 2 * vx - (1 - m) * y / d - m * y / e]


Problem("arenstorf", "x y x' y'", 8.53260828007897812944586031245, [0.994, 0, 0, -2.00158510637908252240537862224], arenstorf, """
    m = 0.012277471;
    d = ((x + m)^2 + y^2)^1.5;  e = ((x - 1 + m)^2 + y^2)^1.5;
    x'' = x + 2*y' - (1 - m)*(x + m)/d - m*(x - 1 + m)/e & 0.994;
    y'' = y - 2*x' - (1 - m)*y/d - m*y/e & 0;  y'(0) = -2.00158510637908252240537862224;
""")


def lorenz(t, state):
    x, y, z = state.tolist()
    return [10 * (y - x), x * (28 - z) - y, x * y - 8 / 3 * z]


Problem("lorenz", "x y z", 20, [1, 1, 1], lorenz, """
    x' = 10*(y - x) & 1;
    y' = x*(28 - z) - y & 1;
    z' = x*y - 8/3*z & 1;
""")


def pendulum(t, state):
    p, v = state.tolist()
    return [v, -math.sin(p)]


Problem("level-pendulum", "p p'", 3, [math.pi / 2, 0], pendulum, """
    p'' = -sin(p) & pi/2;
""")


def hodgkin_huxley(t, state):
    v, m, h, n = state.tolist()
    am = 1 if v == 25 else (25 - v) / 10 / (math.exp((25 - v) / 10) - 1)
    an = 0.1 if v == 10 else (10 - v) / 100 / (math.exp((10 - v) / 10) - 1)
    dv = 10 - 120 * m**3 * h * (v - 115) - 36 * n**4 * (v + 12) - 0.3 * (v - 10.613)
    dh = 0.07 * math.exp(-v / 20) * (1 - h) - h / (math.exp((30 - v) / 10) + 1)
    return [dv, am * (1 - m) - 4 * math.exp(-v / 18) * m, dh, an * (1 - n) - math.exp(-v / 80) / 8 * n]


AM, AN = 2.5 / (math.exp(2.5) - 1), 0.1 / (math.exp(1) - 1)
Problem("hodgkin-huxley", "v m h n", 50, [0, AM / (AM + 4), 0.07 / (0.07 + 1 / (math.exp(3) + 1)), AN / (AN + 1 / 8)], hodgkin_huxley, """
    am = (25 - v)/10/(exp((25 - v)/10) - 1);   am0 = 2.5/(exp(2.5) - 1);
    an = (10 - v)/100/(exp((10 - v)/10) - 1);  an0 = 0.1/(exp(1) - 1);
    v' = 10 - 120*m^3*h*(v - 115) - 36*n^4*(v + 12) - 0.3*(v - 10.613) & 0;
    m' = am*(1 - m) - 4*exp(-v/18)*m & am0/(am0 + 4);
    h' = 0.07*exp(-v/20)*(1 - h) - h/(exp((30 - v)/10) + 1) & 0.07/(0.07 + 1/(exp(3) + 1));
    n' = an*(1 - n) - exp(-v/80)/8*n & an0/(an0 + 1/8);
""")


def van_der_pol(t, state):
    x, v = state.tolist()
    return [v, 1000 * (1 - x * x) * v - x]


Problem("vanderpol-1000", "x x'", 1000, [2, 0], van_der_pol, """
    x'' = 1000*(1 - x*x)*x' - x & 2;
""")


def robertson(t, state):
    a, b, c = state.tolist()
    return [-0.04 * a + 1e4 * b * c, 0.04 * a - 1e4 * b * c - 3e7 * b * b, 3e7 * b * b]


Problem("robertson", "a b c", 40, [1, 0, 0], robertson, """
    a' = -0.04*a + 1e4*b*c & 1;
    b' = 0.04*a - 1e4*b*c - 3e7*b*b & 0;
    c' = 3e7*b*b & 0;
""")


def rod(t, state):
    return 40401 * (np.append(1, state[:-1]) - 2 * state + np.append(state[1:], 0))


CELLS = 200
Problem("rod", " ".join(f"u{i}" for i in range(1, CELLS + 1)), None, np.zeros(CELLS), rod, "".join(
    f"u{i}' = 40401*({f'u{i - 1}' if i > 1 else 1} - 2*u{i} + {f'u{i + 1}' if i < CELLS else 0});\n" for i in range(1, CELLS + 1)),
    written=1,
    # Which cells know of each other.
    options={"LSODA": {"lband": 1, "uband": 1}, "Radau": {"jac_sparsity": np.abs(np.subtract.outer(range(CELLS), range(CELLS))) <= 1}}
)  # fmt: skip
