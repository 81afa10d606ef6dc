# SPDX-License-Identifier: MIT
"""Oscillators, orbits and falling bodies."""
import mpmath as m

from problem import Asked, Problem

DRIVEN = dict(
    x=lambda t: m.exp(-t / 10) * (m.mpf('1.12375') * m.cos(m.sqrt(m.mpf('3.99')) * t) + m.mpf('0.137375') / m.sqrt(
        m.mpf('3.99')) * m.sin(m.sqrt(m.mpf('3.99')) * t)) + t * t / 4 - t / 40 - m.mpf('0.12375'))

Problem('driven-oscillator', "x'' = t*t - 0.2*x' - 4*x & 1;\n",
        Asked("x x' x''", at='0.1 1 2.5 5 7.5 10', closed=DRIVEN),
        Asked('x', at='10', closed=DRIVEN))

Problem('backwards', "x'' = t*t - 0.2*x' - 4*x & 1;\n",
        Asked("x x'", at='-0.1 -1 -5 -10', closed=DRIVEN))

Problem('drag', """
// Thrown through air; the speed is a name of its own.
x'' = -0.02*v*x'      & 0;
y'' = -9.81 - 0.02*v*y' & 1.5;
x'(0) = 30;
y'(0) = 25;
v = sqrt(x'*x' + y'*y');
""", Asked("x y x' y' v", at='0.5 1 2 4 8'))

Problem('three-bodies', """
// Masses 3, 2 and 1 in a plane, with the distances as names.
x1'' = 2*(x2 - x1)/r12^3 + (x3 - x1)/r13^3   & 1;
y1'' = 2*(y2 - y1)/r12^3 + (y3 - y1)/r13^3   & 0;
x2'' = 3*(x1 - x2)/r12^3 + (x3 - x2)/r23^3   & -2;
y2'' = 3*(y1 - y2)/r12^3 + (y3 - y2)/r23^3   & 0;
x3'' = 3*(x1 - x3)/r13^3 + 2*(x2 - x3)/r23^3 & 1;
y3'' = 3*(y1 - y3)/r13^3 + 2*(y2 - y3)/r23^3 & 5;
y1'(0) = 0.5;
y2'(0) = -0.7;
x3'(0) = -1;
r12 = sqrt((x1 - x2)^2 + (y1 - y2)^2);
r13 = sqrt((x1 - x3)^2 + (y1 - y3)^2);
r23 = sqrt((x2 - x3)^2 + (y2 - y3)^2);
energy = 1.5*(x1'^2 + y1'^2) + x2'^2 + y2'^2 + (x3'^2 + y3'^2)/2 - 6/r12 - 3/r13 - 2/r23;
""", Asked('x1 y1 x2 y2 x3 y3 r12 r13 r23 energy', at='1 3 6 10'))

# Closed form: J0 and J1 themselves. The start values are theirs at 0.1 to 35 digits.
m.mp.dps = 40
start = {(n, d): m.nstr(m.besselj(n, m.mpf('0.1'), derivative=d), 35) for n in (0, 1) for d in (0, 1)}
Problem('bessel', f"""
y'' = -(t*y' + t*t*y)/(t*t)         & {start[0, 0]};
y'(0.1) = {start[0, 1]};
z'' = -(t*z' + (t*t - 1)*z)/(t*t)   & {start[1, 0]};
z'(0.1) = {start[1, 1]};
""", Asked("y y' z z'", at='0.2 0.5 1 10 25 50', closed={
    'y': lambda t: m.besselj(0, t), "y'": lambda t: -m.besselj(1, t), 'z': lambda t: m.besselj(1, t),
    "z'": lambda t: m.besselj(0, t) - m.besselj(1, t) / t}), start='0.1')

Problem('decay', "y' = -y & 1;\n", Asked('y', at='1 10 50 100', closed=dict(y=lambda t: m.exp(-t))),
        Asked('y', at='1e6', only=dict(y=lambda t: m.exp(-t)), tolerance=('abs', '1e-4900'),
              note='Far below the least number of the range: it must be 0 there.'))

Problem('half-life', "N' = -4.9e-18*N & 1;\n",
        Asked('N', at='1e14 1e16 1e17', closed=dict(N=lambda t: m.exp(-m.mpf('4.9e-18') * t))))


def kepler(e):
    """Place and velocity on the ellipse of axis 1 that starts at its near end, by Kepler's equation."""
    e = m.mpf(e)

    def anomaly(t):
        return m.findroot(lambda E: E - e * m.sin(E) - t, t + e * m.sin(t), tol=m.mpf(10)**(-2 * m.mp.dps + 8))

    root = m.sqrt
    return {'x': lambda t: m.cos(anomaly(t)) - e, 'y': lambda t: root(1 - e * e) * m.sin(anomaly(t)),
            "x'": lambda t: -m.sin(anomaly(t)) / (1 - e * m.cos(anomaly(t))),
            "y'": lambda t: root(1 - e * e) * m.cos(anomaly(t)) / (1 - e * m.cos(anomaly(t)))}


Problem('kepler', """
x'' = -x/r^3 & 0.5;
y'' = -y/r^3 & 0;
y'(0) = sqrt(3);
r = sqrt(x*x + y*y);
""", Asked("x y x' y'", at='1 3 10 30 100', closed=kepler('0.5')))

STARS = [(3, 3, '0', '0'), (3, -3, '0', '0'), (-1, 2, '0', '0'), (-3, 0, '0', '-1.25'), (2, 0, '0', '1'),
         (-2, -4, '1.75', '0'), (2, 4, '-1.5', '0')]


def pleiades():
    lines = []
    for axis, place, speed in (('x', 0, 2), ('y', 1, 3)):
        for i, star in enumerate(STARS, 1):
            pulls = ' + '.join(f'{j}*({axis}{j} - {axis}{i})/d{min(i, j)}{max(i, j)}' for j in range(1, 8) if j != i)
            lines += [f"{axis}{i}'' = {pulls} & {star[place]};", f"{axis}{i}'(0) = {star[speed]};"]
    for i in range(1, 8):
        for j in range(i + 1, 8):
            lines.append(f'd{i}{j} = ((x{i} - x{j})^2 + (y{i} - y{j})^2)^1.5;')
    return '\n'.join(lines)


Problem('pleiades', pleiades(), Asked(' '.join(f'{a}{i}' for a in 'xy' for i in range(1, 8)), at='3', demand='1e-14'),
        source="Seven stars in a plane, star i of mass i. E. Hairer, S. P. Norsett, G. Wanner, Solving Ordinary\n"
        "Differential Equations I (1993), section II.10.")

Problem('arenstorf', """
x'' = x + 2*y' - (1 - m)*(x + m)/d - m*(x - (1 - m))/e & 0.994;
y'' = y - 2*x' - (1 - m)*y/d - m*y/e                   & 0;
y'(0) = -2.00158510637908252240537862224;
m = 0.012277471;
d = ((x + m)^2 + y^2)^1.5;
e = ((x - (1 - m))^2 + y^2)^1.5;
away = sqrt((x - 0.994)^2 + y^2 + x'^2 + (y' + 2.00158510637908252240537862224)^2);
""", Asked("x y x' y'", at='8.53260828007897812944586031245'),
    Asked('away', at='17.0652165601579625588917206249', note='It closes to 1e-11.', tolerance=('abs', '1e-11'), size='1'),
    source="A closed orbit about two bodies. R. F. Arenstorf, Amer. J. Math. 85 (1963) 27-35; start and period: E. Hairer,\n"
    "S. P. Norsett, G. Wanner, Solving Ordinary Differential Equations I (1993), section II.0.", digits=50)

Problem('level-pendulum', "p'' = -sin(p) & pi/2;\n", Asked("p p'", at='0.1 1 3', closed=dict(
    # p = 2 asin(k cd(t | k^2)) with k = sin(p(0)/2).
    p=lambda t: 2 * m.asin(m.sqrt(m.mpf(1) / 2) * m.ellipfun('cd', t, m=m.mpf(1) / 2)))),
        source="Let go where it is level, its series has a term at every fourth order only.")

Problem('every-eighth', "x' = 1 + x^8 & 0;\n", Asked('x', at='0.3 0.6 0.9', closed=dict(
    # t = x F(1, 1/8; 9/8; -x^8).
    x=lambda t: m.findroot(lambda x: x * m.hyp2f1(1, m.mpf(1) / 8, m.mpf(9) / 8, -x**8) - t, (t, t * m.mpf('1.01'))))),
        source="The series at the start has a term at every eighth order.")

Problem('lorenz', """
x' = 10*(y - x)     & 1;
y' = x*(28 - z) - y & 1;
z' = x*y - 8/3*z    & 1;
""", Asked('x y z', at='1 5 10 20'), digits=50,
        source="E. N. Lorenz, Deterministic nonperiodic flow, J. Atmos. Sci. 20 (1963) 130-141.")
