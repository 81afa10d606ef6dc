# SPDX-License-Identifier: MIT
"""Rods, fronts, nerves: larger systems, and stiff ones."""
import mpmath as m

from problem import Asked, Problem


def rod(n):
    """u_t = u_xx on [0, 1], warm at the left end from 0 on, by differences over n + 1 intervals of 1/(n + 1)."""
    c = (n + 1)**2
    lines = []
    for i in range(1, n + 1):
        left = '1' if i == 1 else f'u{i - 1}'
        right = '' if i == n else f' + u{i + 1}'
        lines.append(f"u{i}' = {c}*({left} - 2*u{i}{right});")
    return '\n'.join(lines)


def warm(n, j):
    """Steady state less its expansion in the eigenvectors, which are sines."""
    def value(t):
        N = n + 1
        total = 1 - m.mpf(j) / N
        for k in range(1, n + 1):
            # The steady state 1 - x in sines: its coefficient is cot(k pi/2N)/N.
            rate = 4 * m.mpf(N)**2 * m.sin(k * m.pi / (2 * N))**2
            total -= m.cot(k * m.pi / (2 * N)) / N * m.sin(k * j * m.pi / N) * m.exp(-rate * t)
        return total
    return value


Problem('rod', rod(200), Asked('u1 u2 u50 u100 u200', at='0.01 0.02 0.05', tolerance=('abs', '1e-18'),
                               only={f'u{j}': warm(200, j) for j in (1, 2, 50, 100, 200)},
                               note='18 digits of the warm end; heat flow damps what rounding does.'),
        source="A rod of 200 cells from cold, its left end kept at 1, its right end at 0.")


def fisher(n):
    lines = []
    for i in range(n):
        left = f'u{max(i - 1, 0)}'
        right = f'u{min(i + 1, n - 1)}'
        lines.append(f"u{i}' = 4*({left} - 2*u{i} + {right}) + u{i}*(1 - u{i}) & 1/(1 + exp({i} - 10));")
    return '\n'.join(lines)


Problem('fisher', fisher(100), Asked('u0 u20 u30 u40 u60 u99', at='2 10'), columns=20,
        source="Fisher's front, u_t = u_xx + u*(1 - u), on 100 cells of 1/2. R. A. Fisher, The wave of advance of\n"
        "advantageous genes, Annals of Eugenics 7 (1937) 355-369.")

Problem('hodgkin-huxley', """
v' = 10 - 120*m^3*h*(v - 115) - 36*n^4*(v + 12) - 0.3*(v - 10.613) & 0;
m' = am*(1 - m) - 4*exp(-v/18)*m & am0/(am0 + 4);
h' = 0.07*exp(-v/20)*(1 - h) - h/(exp((30 - v)/10) + 1) & 0.07/(0.07 + 1/(exp(3) + 1));
n' = an*(1 - n) - exp(-v/80)/8*n & an0/(an0 + 1/8);
am = (25 - v)/10/(exp((25 - v)/10) - 1);
an = (10 - v)/100/(exp((10 - v)/10) - 1);
am0 = 2.5/(exp(2.5) - 1);
an0 = 0.1/(exp(1) - 1);
""", Asked('v m h n', at='1 5 10 25 50'), cancels=True,
        source="A. L. Hodgkin, A. F. Huxley, J. Physiol. 117 (1952) 500-544, the sign of the voltage turned round; the rates up\n"
        "of m and n are 0/0 where v is 25 and 10.")

Problem('robertson', """
a' = -0.04*a + 1e4*b*c             & 1;
b' = 0.04*a - 1e4*b*c - 3e7*b*b    & 0;
c' = 3e7*b*b                       & 0;
""", Asked('a b c', at='0.4 4 40', stiff='robertson'),
        Asked('a b c', at='4000', stiff='robertson', slow=True),
        source="Three reactions. H. H. Robertson, The solution of a set of reaction rate equations (1966).")

Problem('vanderpol-1000', "x'' = 1000*(1 - x*x)*x' - x & 2;\n",
        Asked("x x'", at='10 100 800', stiff='vanderpol'), Asked("x x'", at='1000', stiff='vanderpol'),
        source="A relaxation oscillation; the first jump is at 807.")
