# SPDX-License-Identifier: MIT
"""The problems of T. E. Hull, W. H. Enright, B. M. Fellen, A. E. Sedgwick, Comparing numerical methods for ordinary
differential equations, SIAM J. Numer. Anal. 9 (1972) 603-637, and the class F with breaks that joined them later, to 20."""
import mpmath as m

from motions import kepler
from problem import Asked, Problem

SOURCE = "T. E. Hull, W. H. Enright, B. M. Fellen, A. E. Sedgwick, SIAM J. Numer. Anal. 9 (1972) 603-637, problem "
LATER = "A problem with breaks from the collection of W. H. Enright, J. D. Pryce, ACM Trans. Math. Software 13 (1987) 1-27, "


def detest(name, text, columns, closed=None, demand='1e-16', at='20', source=SOURCE, **more):
    Problem(f'detest-{name.lower()}', text, Asked(columns, at=at, closed=closed, demand=demand), source=source + name + '.',
            **more)


detest('A1', "y' = -y & 1;", 'y', dict(y=lambda t: m.exp(-t)))
detest('A2', "y' = -y^3/2 & 1;", 'y', dict(y=lambda t: 1 / m.sqrt(1 + t)))
detest('A3', "y' = y*cos(t) & 1;", 'y', dict(y=lambda t: m.exp(m.sin(t))))
detest('A4', "y' = y/4*(1 - y/20) & 1;", 'y', dict(y=lambda t: 20 / (1 + 19 * m.exp(-t / 4))))
detest('A5', "y' = (y - t)/(y + t) & 4;", 'y')

detest('B1', "y1' = 2*(y1 - y1*y2) & 1;\ny2' = -(y2 - y1*y2) & 3;", 'y1 y2')
detest('B2', "y1' = -y1 + y2 & 2;\ny2' = y1 - 2*y2 + y3 & 0;\ny3' = y2 - y3 & 1;", 'y1 y2 y3', dict(
    y1=lambda t: 1 + m.exp(-t) / 2 + m.exp(-3 * t) / 2, y2=lambda t: 1 - m.exp(-3 * t),
    y3=lambda t: 1 - m.exp(-t) / 2 + m.exp(-3 * t) / 2))
detest('B3', "y1' = -y1 & 1;\ny2' = y1 - y2^2 & 0;\ny3' = y2^2 & 0;", 'y1 y2 y3', dict(y1=lambda t: m.exp(-t)))
detest('B4', "y1' = -y2 - y1*y3/r & 3;\ny2' = y1 - y2*y3/r & 0;\ny3' = y1/r & 0;\nr = sqrt(y1^2 + y2^2);", 'y1 y2 y3')
detest('B5', "y1' = y2*y3 & 0;\ny2' = -y1*y3 & 1;\ny3' = -0.51*y1*y2 & 1;", 'y1 y2 y3', dict(
    y1=lambda t: m.ellipfun('sn', t, m=m.mpf('0.51')), y2=lambda t: m.ellipfun('cn', t, m=m.mpf('0.51')),
    y3=lambda t: m.ellipfun('dn', t, m=m.mpf('0.51'))))


def chain(n, row, first='1'):
    return '\n'.join(f"y{i}' = {row(i)} & {first if i == 1 else 0};" for i in range(1, n + 1))


def names(n):
    return ' '.join(f'y{i}' for i in range(1, n + 1))


detest('C1', chain(10, lambda i: '-y1' if i == 1 else 'y9' if i == 10 else f'y{i - 1} - y{i}'), names(10),
       dict(y5=lambda t: m.exp(-t) * t**4 / 24))
detest('C2', chain(10, lambda i: '-y1' if i == 1 else '9*y9' if i == 10 else f'{i - 1}*y{i - 1} - {i}*y{i}'), names(10),
       dict(y3=lambda t: m.exp(-t) * (1 - m.exp(-t))**2))


def tridiagonal(n):
    return chain(n, lambda i: ' '.join([f'-2*y{i}'] + ([f'+ y{i - 1}'] if i > 1 else []) +
                                       ([f'+ y{i + 1}'] if i < n else [])))


def eigen(n, j):
    """Component j from the eigenvectors of the matrix, which are sines."""
    return lambda t: m.mpf(2) / (n + 1) * m.fsum(
        m.sin(k * m.pi / (n + 1)) * m.sin(k * j * m.pi / (n + 1)) * m.exp(-4 * t * m.sin(k * m.pi / (2 * n + 2))**2)
        for k in range(1, n + 1))


detest('C3', tridiagonal(10), names(10), {f'y{j}': eigen(10, j) for j in range(1, 11)})
detest('C4', tridiagonal(51), names(51), {f'y{j}': eigen(51, j) for j in (1, 2, 25, 51)})

MASSES = ['0.000954786104043', '0.000285583733151', '0.0000437273164546', '0.0000517759138449', '0.00000277777777778']
PLACES = ['3.42947415189 3.35386959711 1.35494901715', '6.64145542550 5.97156957878 2.18231499728',
          '11.2630437207 14.6952576794 6.27960525067', '-30.1552268759 1.65699966404 1.43785752721',
          '-21.1238353380 28.4465098142 15.3882659679']
SPEEDS = ['-0.557160570446 0.505696783289 0.230578543901', '-0.415570776342 0.365682722812 0.169143213293',
          '-0.325325669158 0.189706021964 0.0877265322780', '-0.0240476254170 -0.287659532608 -0.117219543175',
          '-0.176860753121 -0.216393453025 -0.0148647893090']


def planets():
    lines = ['k = 2.95912208286;', 'm0 = 1.00000597682;'] + [f'm{i} = {v};' for i, v in enumerate(MASSES, 1)]
    for axis, letter in enumerate('xyz'):
        for j in range(1, 6):
            pulls = ''.join(f' + m{k}*(({letter}{k} - {letter}{j})/d{min(j, k)}{max(j, k)} - {letter}{k}/r{k})'
                            for k in range(1, 6) if k != j)
            lines.append(f"{letter}{j}'' = k*(-(m0 + m{j})*{letter}{j}/r{j}{pulls}) & {PLACES[j - 1].split()[axis]};")
            lines.append(f"{letter}{j}'(0) = {SPEEDS[j - 1].split()[axis]};")
    for j in range(1, 6):
        lines.append(f'r{j} = (x{j}^2 + y{j}^2 + z{j}^2)^1.5;')
        for k in range(j + 1, 6):
            lines.append(f'd{j}{k} = ((x{j} - x{k})^2 + (y{j} - y{k})^2 + (z{j} - z{k})^2)^1.5;')
    return '\n'.join(lines)


detest('C5', planets(), ' '.join(f'{a}{j}' for j in range(1, 6) for a in 'xyz'))

for i, e in enumerate(['0.1', '0.3', '0.5', '0.7', '0.9'], 1):
    detest(f'D{i}', f"x'' = -x/r^3 & 1 - {e};\ny'' = -y/r^3 & 0;\ny'(0) = sqrt((1 + {e})/(1 - {e}));\n"
           "r = sqrt(x*x + y*y);", "x y x' y'", kepler(e), demand='1e-15')

detest('E1', "y'' = -(y'/(t + 1) + (1 - 0.25/(t + 1)^2)*y) & 0.6713967071418030;\ny'(0) = 0.0954005144474746;", "y y'")
detest('E2', "y'' = (1 - y^2)*y' - y & 2;", "y y'")
detest('E3', "y'' = y^3/6 - y + 2*sin(2.78535*t) & 0;", "y y'")
detest('E4', "y'' = 0.032 - 0.4*y'^2 & 30;", "y y'", {
    'y': lambda t: 30 + m.mpf('2.5') * m.log(m.cosh(m.sqrt(m.mpf('0.0128')) * t)),
    "y'": lambda t: m.sqrt(m.mpf('0.08')) * m.tanh(m.sqrt(m.mpf('0.0128')) * t)})
detest('E5', "y'' = sqrt(1 + y'^2)/(25 - t) & 0;", "y y'", {"y'": lambda t: m.sinh(m.log(25 / (25 - t)))})

ODD = "odd = trunc(t) - 2*trunc(t/2);\n"
detest('F1', ODD + "y'' = 2*a*y' - (pi*pi + a*a)*y + 1 - 2*odd & 0;\na = 0.1;", "y y'", source=LATER)
detest('F2', ODD + "y' = 55 - (1.5 - odd)*y & 110;", 'y', source=LATER)
detest('F3', "y'' = 0.01*y'*(1 - y^2) - y - sin(pi*(t - trunc(t))) & 0;", "y y'", source=LATER)
detest('F4', "// Another law from 10 on.\nlate = trunc(t/10);\n"
       "y' = (1 - late)*(-2/21 - 120*(t - 5)/(1 + 4*(t - 5)^2)^16) - 2*late*y & 1;", 'y', at='5 10 20', source=LATER)


def powers(t):
    c = 1 / m.fsum(m.mpf(i)**(m.mpf(4) / 3) for i in range(1, 20))
    return m.exp(c * m.fsum(abs(t - i)**(m.mpf(4) / 3) - m.mpf(i)**(m.mpf(4) / 3) for i in range(1, 20)))


detest('F5', "// Every i of the sum is a branch point that no power series passes; up to before the first.\n"
       "c = 1/(" + ' + '.join(f'{i}^(4/3)' for i in range(1, 20)) + ");\n"
       "y' = -c*4/3*y*(" + ' + '.join(f'({i} - t)^(1/3)' for i in range(1, 20)) + ") & 1;", 'y', dict(y=powers),
       at='0.5 0.9375', source=LATER)
