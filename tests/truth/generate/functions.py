# SPDX-License-Identifier: MIT
"""Every function on its whole domain: as a definition of t, under an integral, and of a state that moves through the
domain; and powers of all kinds. Closed forms by mpmath."""
import mpmath as m

from problem import Asked, Problem


def area(f, start):
    """Integral of f from the start, by quadrature in pieces."""
    def from_(t):
        a = m.mpf(start)
        return m.quad(f, m.linspace(a, t, 9)) if t != a else m.mpf(0)
    return from_


def sweep(name, function, f, start, at, antiderivative=None, maxStep=None, digits=40):
    """y = f(t) and its integral q from the start on."""
    a = antiderivative
    closed = dict(y=f, q=(lambda t: a(t) - a(m.mpf(start))) if a else area(f, start))
    Problem(name, f"y = {function}(t);\nq' = {function}(t);\n",
            Asked('y q', at=at, closed=closed), start=start, maxStep=maxStep, digits=digits)


def state(name, function, rate, start, argument='s', at='0.5 1 2 3 5 8 10', closed=None, maxStep=None):
    """A state s, z = f of it, its integral r, and p with p' = (f(s))' by the chain of the solver itself: p' = z*s'."""
    Problem(name, f"s' = {rate} & {start};\nz = {function}({argument});\nr' = z;\np' = z*s' & 1;\n",
            Asked('s z r p', at=at, closed=closed or {}), maxStep=maxStep)


sweep('sin', 'sin', m.sin, '-5', '-4 -1 0 0.1 2 7 20', lambda t: -m.cos(t))
sweep('cos', 'cos', m.cos, '-5', '-4 -1 0 0.1 2 7 20', m.sin)
sweep('tan', 'tan', m.tan, '-1.5', '-1.25 -1 -0.1 0 0.5 1 1.5 1.5625', lambda t: -m.log(m.cos(t)))
sweep('cotan', 'cotan', m.cot, '0.0625', '0.125 0.5 1 1.5 2 3 3.125', lambda t: m.log(m.sin(t)))
sweep('cotan-negative', 'cotan', m.cot, '-3', '-2.5 -2 -1 -0.5 -0.0625', lambda t: m.log(-m.sin(t)))
sweep('asin', 'asin', m.asin, '-0.9990234375', '-0.999 -0.9 -0.5 0 0.1 0.5 0.9 0.999 0.9990234375 0.999999',
      lambda t: t * m.asin(t) + m.sqrt(1 - t * t))
sweep('acos', 'acos', m.acos, '-0.9990234375', '-0.999 -0.9 -0.5 0 0.1 0.5 0.9 0.999 0.9990234375 0.999999',
      lambda t: t * m.acos(t) - m.sqrt(1 - t * t))
sweep('atan', 'atan', m.atan, '-20', '-10 -2 -1 -0.1 0 0.5 1 20 1000',
      lambda t: t * m.atan(t) - m.log(1 + t * t) / 2)
sweep('acotan', 'acotan', lambda t: m.atan(1 / t), '0.0625', '0.1 0.5 1 2 10 1000',
      lambda t: t * m.atan(1 / t) + m.log(1 + t * t) / 2)
sweep('acotan-negative', 'acotan', lambda t: m.atan(1 / t), '-20', '-10 -2 -1 -0.5 -0.0625',
      lambda t: t * m.atan(1 / t) + m.log(1 + t * t) / 2)
sweep('sinh', 'sinh', m.sinh, '-20', '-10 -1 -0.1 0 0.5 3 20', m.cosh)
sweep('cosh', 'cosh', m.cosh, '-20', '-10 -1 -0.1 0 0.5 3 20', m.sinh)
sweep('tanh', 'tanh', m.tanh, '-30', '-20 -10 -1 -0.1 0 0.5 1 3 10 30', lambda t: m.log(m.cosh(t)))
sweep('cotanh', 'cotanh', m.coth, '0.0625', '0.1 0.5 1 2 10 30', lambda t: m.log(m.sinh(t)))
sweep('cotanh-negative', 'cotanh', m.coth, '-30', '-10 -1 -0.5 -0.0625', lambda t: m.log(-m.sinh(t)))
sweep('asinh', 'asinh', m.asinh, '-100', '-10 -1 -0.1 0 0.001 1 10 100 1e6',
      lambda t: t * m.asinh(t) - m.sqrt(1 + t * t))
sweep('acosh', 'acosh', m.acosh, '1.01', '1.0625 1.5 2 10 1e6', lambda t: t * m.acosh(t) - m.sqrt(t - 1) * m.sqrt(t + 1))
sweep('atanh', 'atanh', m.atanh, '-0.999', '-0.9 -0.5 -0.1 0 0.001 0.5 0.9 0.999',
      lambda t: t * m.atanh(t) + m.log(1 - t * t) / 2)
sweep('argcotanh', 'argcotanh', m.acoth, '1.001', '1.0625 1.5 2 10 1000',
      lambda t: t * m.acoth(t) + m.log(t * t - 1) / 2)
sweep('argcotanh-negative', 'argcotanh', m.acoth, '-50', '-10 -2 -1.5 -1.001',
      lambda t: t * m.acoth(t) + m.log(t * t - 1) / 2)
sweep('sqrt', 'sqrt', m.sqrt, '0.000030517578125', '0.0001 0.01 1 2 100 1e9', lambda t: t * m.sqrt(t) * 2 / 3)
sweep('exp', 'exp', m.exp, '-50', '-20 -1 -0.1 0 0.5 1 20 50', m.exp)
sweep('ln', 'ln', m.log, '0.000030517578125', '0.001 0.5 1 1.0625 3 1000 1e9', lambda t: t * m.log(t) - t)
sweep('trunc', 'trunc', lambda t: m.sign(t) * m.floor(abs(t)), '-3.5', '-3.25 -2.5 -1.5 -0.5 0.5 1.5 4.75',
      lambda t: m.floor(abs(t)) * (abs(t) - (m.floor(abs(t)) + 1) / 2))

# The operand is a state that goes to and fro, so the function must come back from the ends of its domain.
swing = "1.3*cos(t)"
for name, argument in [('sin', '4*s'), ('cos', '4*s'), ('tan', 's'), ('cotan', 's + 1.6'), ('asin', '0.75*s'),
                       ('acos', '0.75*s'), ('atan', '8*s'), ('acotan', 's + 1.5'), ('acotan', 's - 1.5'),
                       ('sinh', '6*s'), ('cosh', '6*s'), ('tanh', '20*s'), ('cotanh', 's - 1.5'), ('asinh', '30*s'),
                       ('acosh', 's + 2.31'), ('atanh', '0.75*s'), ('argcotanh', 's - 2.4'), ('sqrt', 's + 1.31'),
                       ('exp', '12*s'), ('ln', 's + 1.31')]:
    minus = '-below' if '-' in argument and name == 'acotan' else ''
    sign = -1 if minus else 1
    state(f'state-{name}{minus}', name, swing, '0', argument, closed=dict(s=lambda t: m.mpf('1.3') * m.sin(t)))

Problem('powers', """
// Whole, broken, negative and moving exponents.
u' = 0.25*u & 0.5;
cube = u^3;
square2 = u^-2;
root = u^0.5;
half5 = u^2.5;
third = u^(-1/3);
moving = u^t;
two = 2^t;
self = (t + 1)^(t + 1);
sign = -u^2;
tower = 2^u^2;
whole = (-2)^3;
a' = cube;
b' = square2;
c' = root;
d' = half5;
e' = moving;
f' = two;
g' = self;
h' = third;
""", Asked('u cube square2 root half5 third moving two self sign tower whole a b c d e f g h', at='0.5 1 2 4',
           closed=dict(u=lambda t: m.exp(t / 4) / 2, cube=lambda t: m.exp(3 * t / 4) / 8,
                       two=lambda t: m.mpf(2)**t, self=lambda t: (t + 1)**(t + 1), whole=lambda t: m.mpf(-8),
                       a=lambda t: (m.exp(3 * t / 4) - 1) / 6, b=lambda t: 8 * (1 - m.exp(-t / 2)),
                       c=lambda t: 8 * (m.exp(t / 8) - 1) / m.sqrt(2), f=lambda t: (m.mpf(2)**t - 1) / m.log(2),
                       h=lambda t: -12 * m.mpf(2)**(m.mpf(1) / 3) * (m.exp(-t / 12) - 1),
                       moving=lambda t: (m.exp(t / 4) / 2)**t,
                       tower=lambda t: m.mpf(2)**(m.exp(t / 2) / 4))))

Problem('powers-through-zero', """
// A negative base with whole exponents.
s = sin(t);
a' = s^3;
b' = s^4;
c' = (s - 2)^-3;
d' = sqrt(s*s + 0.01)^3;
e' = (s*s + 0.01)^1.5;
f' = (s + 1/2)^5;
g = (-s)^3;
""", Asked('a b c d e f g', at='0.5 2 3.5 5 10', closed=dict(
    a=lambda t: m.mpf(2) / 3 - m.cos(t) + m.cos(t)**3 / 3,
    b=lambda t: 3 * t / 8 - m.sin(2 * t) / 4 + m.sin(4 * t) / 32, g=lambda t: -m.sin(t)**3)))

Problem('roots-of-small', """
// Down to e^-600.
s' = -10*s & 1;
y = sqrt(s);
z = s^1.5;
w = 1/sqrt(s);
""", Asked('s y z w', at='1 10 30 50 60', closed=dict(
    s=lambda t: m.exp(-10 * t), y=lambda t: m.exp(-5 * t), z=lambda t: m.exp(-15 * t), w=lambda t: m.exp(5 * t))))

Problem('roots-of-big', """
// Up to e^600.
s' = 10*s & 1;
y = sqrt(s);
q' = sqrt(s);
p' = s^-0.5;
""", Asked('s y q p', at='1 10 30 50 60', closed=dict(
    s=lambda t: m.exp(10 * t), y=lambda t: m.exp(5 * t), q=lambda t: (m.exp(5 * t) - 1) / 5,
    p=lambda t: (1 - m.exp(-5 * t)) / 5)))
