# SPDX-License-Identifier: MIT
"""Where something becomes zero: landings, sections, zeros that lie close together."""
import mpmath as m

from problem import Asked, Problem

Problem('projectile', """
// Thrown through air, with drag along the speed squared.
x'' = -0.01*v*x'        & 0;
y'' = -9.81 - 0.01*v*y' & 0;
x'(0) = 30;
y'(0) = 40;
v = sqrt(x'^2 + y'^2);
""", Asked("x x' y'", until='y', end='100'), Asked('x y', until="y'", end='100'))

Problem('henon-heiles', """
x'' = -x - 2*x*y     & 0;
y'' = -y - x*x + y*y & 0.1;
x'(0) = sqrt(1/4 - 1/100 + 2/3000);
energy = (x'^2 + y'^2 + x^2 + y^2)/2 + x^2*y - y^3/3;
""", Asked("y y' energy", crossings='x', which='up', end='125'),
    source="M. Henon, C. Heiles, The applicability of the third integral of motion, Astron. J. 69 (1964) 73-79.")

Problem('damped-zeros', "x'' = -0.1*x' - 4*x & 1;\n",
        Asked("x'", crossings='x', end='20'), Asked("x", crossings="x'", which='down', end='20'))

Problem('sine-of-square', """
// Zeros ever closer together.
x = sin(t*t);
y' = cos(t) & 0.3;
""", Asked('y', crossings='x', which='down', end='8'), maxStep='0.05')


def parabola(name, text, zeros, source='', columns=None, end='1'):
    """Zeros in closed form."""
    Problem(name, text, Asked('', crossings='x', end=end, zeros=zeros), source=source)


R = m.sqrt
m.mp.dps = 60
# x = (t - 3/20)^2 - 0.0125
parabola('two-zeros', "x'' = 2 & 0.01;\nx'(0) = -0.3;", lambda: [m.mpf('0.15') - R(m.mpf('0.0125')), m.mpf('0.15') + R(m.mpf('0.0125'))])
# x = (t - 1/2)^2 - 2^-40
parabola('two-zeros-close', "x'' = 2 & 0.25 - 9.094947017729282379150390625e-13;\nx'(0) = -1;",
         lambda: [m.mpf('0.5') - m.mpf(2)**-20, m.mpf('0.5') + m.mpf(2)**-20])
parabola('three-zeros', "x = (t - 1/8)*(t - 1/4)*(t - 17/64);", lambda: [m.mpf(1) / 8, m.mpf(1) / 4, m.mpf(17) / 64])
parabola('nearly-touching', "// Comes down to 2^-40 and no zero.\nx'' = 2 & 0.25 + 9.094947017729282379150390625e-13;\nx'(0) = -1;",
         lambda: [])
