# SPDX-License-Identifier: MIT
"""What turns on and off: steep functions, pulses, and trunc."""
import mpmath as m

from problem import Asked, Problem


def logCosh(u):
    return abs(u) + m.log(1 + m.exp(-2 * abs(u))) - m.log(2)


Problem('tanh-of-sine', "y' = tanh(50*sin(t));\n", Asked('y', at='0.01 1 3 3.2 6.25 6.3 9.42 10 15.7 20'))

Problem('one-switch', "y' = (1 + tanh((t - 1)/0.04))/2;\n", Asked('y', at='0.5 0.9 0.99 1 1.01 1.1 2 3', closed=dict(
    y=lambda t: t / 2 + (logCosh((t - 1) * 25) - logCosh(m.mpf(25))) / 50)))

Problem('logistic-switches', """
y' = 1/(1 + exp(-40*(t - 1))) - 2/(1 + exp(-100*(t - 2.5))) + 3/(1 + exp(-10*(t - 4)));
x' = -x + 1/(1 + exp(-200*(t - 3)));
""", Asked('y x', at='0.5 1 2 2.5 3 4 6 10', floor='1e-20', closed=dict(y=lambda t: sum(
    a * (m.log(1 + m.exp(k * (t - b))) - m.log(1 + m.exp(-k * b))) / k
    for a, k, b in [(1, 40, 1), (-2, 100, m.mpf('2.5')), (3, 10, 4)]))))

Problem('pulse', "y' = exp(-(t - 200)*(t - 200));\n", Asked('y', at='100 195 199 200 201 205 400', only=dict(
    y=lambda t: m.sqrt(m.pi) / 2 * (m.erf(t - 200) + m.erf(200))), tolerance=('abs', '5e-18')))


def dose(t):
    """Between doses c = a exp(-0.3 s) + b exp(-20 s), s the time since the last one."""
    b = 5 / (m.mpf('0.3') - 20)
    c, slow = m.mpf(0), lambda s: m.exp(-m.mpf('0.3') * s)
    after = lambda c, s: (c - b) * slow(s) + b * m.exp(-20 * s)
    for _ in range(int(t / 8)):
        c = after(c, 8)
    return after(c, t - 8 * m.floor(t / 8))


Problem('doses', """
// A dose every 8 hours, taken up fast, given off slowly.
c' = 5*exp(-20*(t - 8*trunc(t/8))) - 0.3*c;
""", Asked('c', at='0.1 1 7.99 8 8.01 15.9 16 20 24 40 50', closed=dict(c=dose)))


def saw(s):
    return s - m.floor(s)


Problem('square-waves', """
// +1 and -1 in turn: over 1, over pi/3, and over sqrt(2), which no decimal hits.
odd = trunc(t) - 2*trunc(t/2);
a' = 1 - 2*odd;
p = trunc(3*t/pi);
b' = 1 - 2*(p - 2*trunc(p/2));
q = trunc(t/sqrt(2));
c' = 1 - 2*(q - 2*trunc(q/2)) - c;
x'' = -x + 1 - 2*odd;
""", Asked("a b c x x'", at='0.5 1 1.5 2.9 3.5 7.3 12 20', floor='1e-17', closed=dict(
    a=lambda t: 1 - abs(1 - 2 * saw(t / 2)),
    b=lambda t: m.pi / 3 * (1 - abs(1 - 2 * saw(3 * t / m.pi / 2))))))

Problem('trunc-of-state', """
// Jumps where the state says, at times that no formula of t gives; the jump of n is felt by x, and drives it on, so that
// it never slides along a jump.
x'' = -x + 0.05*trunc(3*x') & 1.97;
n = trunc(3*x');
y' = trunc(4.5*sin(t)) + trunc(5*x);
z' = trunc(t*t/3)*cos(t);
""", Asked("x x' y z", at='0.3 1 2 3 5 8 10'))

Problem('removable', """
// u/(exp(u) - 1) is 1 where u is 0; u passes 0 once at sqrt(2), and as a state again and again.
u = t - sqrt(2);
y' = u/(exp(u) - 1);
s' = 0.7*cos(1.3*t) & -0.2;
z' = s/(1 - exp(-s)) - 0.5*z;
""", Asked('y s z', at='1 1.4 1.5 2 5 10 20', closed=dict(
    y=lambda t: m.quad(lambda s: (s - m.sqrt(2)) / m.expm1(s - m.sqrt(2)),
                       [0, 1, m.mpf('1.2')] + ([2, t] if t > 2 else [t])),
    s=lambda t: m.mpf('0.7') / m.mpf('1.3') * m.sin(m.mpf('1.3') * t) - m.mpf('0.2'))))
