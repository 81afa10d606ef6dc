# SPDX-License-Identifier: MIT
"""Taylor series of any order and precision (GMP and MPFR numbers), for a system of reader.py.

Jumps of trunc end a step. Steps as in A. Jorba, M. Zou, A software package for the numerical integration of ODEs by means
of high-order Taylor methods, Experimental Mathematics 14 (2005) 99-117.
"""
from operator import mul

import gmpy2
from gmpy2 import mpfr

ELEMENTARY = {
    'sin': gmpy2.sin, 'cos': gmpy2.cos, 'tan': gmpy2.tan, 'cotan': lambda u: 1 / gmpy2.tan(u), 'asin': gmpy2.asin,
    'acos': gmpy2.acos, 'atan': gmpy2.atan, 'acotan': lambda u: gmpy2.atan(1 / u), 'sinh': gmpy2.sinh,
    'cosh': gmpy2.cosh, 'tanh': gmpy2.tanh, 'cotanh': lambda u: 1 / gmpy2.tanh(u), 'asinh': gmpy2.asinh,
    'acosh': gmpy2.acosh, 'atanh': gmpy2.atanh, 'argcotanh': lambda u: gmpy2.atanh(1 / u), 'sqrt': gmpy2.sqrt,
    'exp': gmpy2.exp, 'ln': gmpy2.log, 'trunc': gmpy2.trunc,
}


class Values:
    """Values of all nodes at one moment, or of the rates alone, by the functions themselves; `held` gives the value of
    each trunc."""

    def __init__(self, system, rounded=0):
        self.rounded = rounded
        self.all = self.program(system, range(len(system.nodes)))
        self.rates = self.program(system, system.rateOf)

    def program(self, system, wanted):
        needed, stack = set(), list(wanted)
        while stack:
            i = stack.pop()
            if i not in needed:
                needed.add(i)
                node = system.nodes[i]
                count = 0 if node[0] in ('number', 'pi', 'time', 'variable') else \
                    2 if node[0] in ('add', 'sub', 'mul', 'div', 'pow') else 1
                stack.extend(node[1:1 + count])
        lines = ['def evaluate(t, y, held):']
        space = dict(F=ELEMENTARY, const_pi=gmpy2.const_pi, mpfr=mpfr)
        signs = dict(add='+', sub='-', mul='*', div='/')
        for i, node in enumerate(system.nodes):
            if i not in needed:
                continue
            kind = node[0]
            if kind == 'number':
                space[f'c{i}'] = mpfr(node[1], self.rounded)
                text = f'c{i}'
            elif kind == 'pi':
                space[f'c{i}'] = gmpy2.const_pi()
                text = f'c{i}'
            elif kind == 'time':
                text = 't'
            elif kind == 'variable':
                text = f'y[{node[1]}]'
            elif kind in signs:
                text = f'v{node[1]}{signs[kind]}v{node[2]}'
            elif kind == 'neg':
                text = f'-v{node[1]}'
            elif kind == 'pow':
                text = f'v{node[1]}**v{node[2]}'
            elif kind == 'trunc':
                text = f'held[{i}] if {i} in held else F_trunc(v{node[1]})'
            else:
                text = f'F_{kind}(v{node[1]})'
            lines.append(f'    v{i} = {text}')
        lines.append('    return [' + ', '.join(f'v{i}' for i in wanted) + ']')
        for name, function in ELEMENTARY.items():
            space['F_' + name] = function
        exec('\n'.join(lines), space)
        return space['evaluate']


class Series:
    """Coefficients of all nodes around one moment."""

    def __init__(self, system, rounded=0):
        self.system = system
        self.c = [[] for _ in system.nodes]
        self.extra = {}
        self.work = [self.worker(i, node) for i, node in enumerate(system.nodes)]
        self.numbers = {i: (mpfr(n[1], rounded) if n[0] == 'number' else gmpy2.const_pi())
                        for i, n in enumerate(system.nodes) if n[0] in ('number', 'pi')}

    def expand(self, t, y, held, order):
        self.t, self.held = t, held
        for c in self.c:
            c.clear()
        for c in self.extra.values():
            c.clear()
        variables = [self.c[i] for i in range(len(y))]
        rates = [self.c[i] for i in self.system.rateOf]
        for c, value in zip(variables, y):
            c.append(value)
        for k in range(order):
            for work in self.work:
                if work:
                    work(k)
            for c, rate in zip(variables, rates):
                c.append(rate[k] / (k + 1))
        return variables

    def worker(self, i, node):
        c, kind = self.c, node[0]
        C = c[i]
        zero = mpfr(0)
        if kind == 'variable':
            return None
        if kind in ('number', 'pi'):
            return lambda k: C.append(zero if k else self.numbers[i])
        if kind == 'time':
            return lambda k: C.append(self.t if k == 0 else mpfr(1) if k == 1 else zero)
        A = c[node[1]]
        if kind == 'trunc':
            return lambda k: C.append(zero if k else self.held[i])
        if kind == 'neg':
            return lambda k: C.append(-A[k])
        if kind in ('add', 'sub', 'mul', 'div'):
            B = c[node[2]]
            constantA = self.system.nodes[node[1]][0] in ('number', 'pi')
            constantB = self.system.nodes[node[2]][0] in ('number', 'pi')
            if kind == 'add':
                return lambda k: C.append(A[k] + B[k])
            if kind == 'sub':
                return lambda k: C.append(A[k] - B[k])
            if kind == 'mul':
                if constantA:
                    return lambda k: C.append(A[0] * B[k])
                if constantB:
                    return lambda k: C.append(A[k] * B[0])
                return lambda k: C.append(sum(map(mul, A, reversed(B))))
            if constantB:
                return lambda k: C.append(A[k] / B[0])
            return lambda k: C.append((A[k] - sum(map(mul, B[1:], reversed(C)))) / B[0])
        # D holds j*u_j from j = 1 on.
        D = self.extra.setdefault(('D', node[1]), [])

        def slopes(k):
            if len(D) < k:
                D.append(k * A[k])

        value = ELEMENTARY.get(kind)
        if kind == 'exp':
            def work(k):
                slopes(k)
                C.append(sum(map(mul, D, reversed(C))) / k if k else value(A[0]))
        elif kind in ('sin', 'cos', 'sinh', 'cosh'):
            other = {'sin': 'cos', 'cos': 'sin', 'sinh': 'cosh', 'cosh': 'sinh'}[kind]
            partner = self.extra.setdefault((other, i), [])
            sign = -1 if kind == 'cos' else 1
            signOther = -1 if kind == 'sin' else 1

            def work(k):
                slopes(k)
                if k == 0:
                    C.append(value(A[0]))
                    partner.append(ELEMENTARY[other](A[0]))
                    return
                mine = sign * sum(map(mul, D, reversed(partner))) / k
                partner.append(signOther * sum(map(mul, D, reversed(C))) / k)
                C.append(mine)
        elif kind in ('tan', 'cotan', 'tanh', 'cotanh'):
            # W = 1 +- V*V
            W = self.extra.setdefault(('W', i), [])
            sign = 1 if kind in ('tan', 'cotan') else -1
            all_ = -1 if kind == 'cotan' else 1

            def work(k):
                slopes(k)
                C.append(all_ * sum(map(mul, D, reversed(W))) / k if k else value(A[0]))
                W.append(sign * sum(map(mul, C, reversed(C))) + (0 if k else 1))
        elif kind == 'sqrt':
            def work(k):
                C.append((A[k] - sum(map(mul, C[1:], reversed(C[1:])))) / (2 * C[0]) if k else value(A[0]))
        elif kind == 'pow':
            E = c[node[2]]

            def work(k):
                if k == 0:
                    C.append(A[0]**E[0])
                else:
                    a = E[0]
                    C.append(sum((a * j - (k - j)) * A[j] * C[k - j] for j in range(1, k + 1)) / (k * A[0]))
        else:
            # V' = u'/R; G holds j*V_j from j = 1 on.
            R = c[node[2]]
            G = self.extra.setdefault(('G', i), [])

            def work(k):
                if k == 0:
                    C.append(value(A[0]))
                    return
                G.append((k * A[k] - sum(map(mul, R[1:k], reversed(G)))) / R[0])
                C.append(G[-1] / k)
        return work


def horner(c, h):
    value = c[-1]
    for a in reversed(c[:-1]):
        value = value * h + a
    return value


class Run:
    """A run in the precision of the current context of gmpy2. With `rounded`, literals and the state after each step are
    rounded to so many bits, but not what happens in between."""

    def __init__(self, system, start='0', digits=40, maxStep=None, order=None, rounded=0):
        self.system, self.rounded = system, rounded
        self.values = Values(system, rounded)
        self.series = Series(system, rounded)
        self.order = order or int(digits * 2.302585 / 2) + 2
        self.maxStep = maxStep
        self.t = mpfr(start)
        # Start values are made from constants; what else is in the graph may have no value yet.
        self.y = [self.constant(node) for node in system.startOf]
        self.truncs = [i for i, n in enumerate(system.nodes) if n[0] == 'trunc']
        self.held = {}
        self.steps = 0
        self.grid = [self.t]
        self.heldOn = []
        self.begin, self.polynomials = self.t, [[v] for v in self.y]
        self.direction = 1
        self.settled = False

    def constant(self, node):
        kind, *operands = self.system.nodes[node]
        if kind == 'number':
            return mpfr(operands[0])
        if kind == 'pi':
            return gmpy2.const_pi()
        if kind == 'time':
            return self.t
        v = [self.constant(o) for o in operands[:2 if kind in ('add', 'sub', 'mul', 'div', 'pow') else 1]]
        if kind in ('add', 'sub', 'mul', 'div', 'pow', 'neg'):
            return {'add': lambda: v[0] + v[1], 'sub': lambda: v[0] - v[1], 'mul': lambda: v[0] * v[1],
                    'div': lambda: v[0] / v[1], 'pow': lambda: v[0]**v[1], 'neg': lambda: -v[0]}[kind]()
        return ELEMENTARY[kind](v[0])

    def settle(self):
        """Values of trunc just after this moment in the direction of the run."""
        tiny = mpfr(2)**(-gmpy2.get_context().precision // 2)
        plain = self.values.all(self.t, self.y, self.held)
        for i in self.truncs:
            self.held.setdefault(i, plain[i])
        for i in self.truncs:
            u = self.values.all(self.t, self.y, self.held)[self.system.nodes[i][1]]
            nearest = gmpy2.rint(u)
            if abs(u - nearest) > tiny * max(abs(u), 1):
                self.held[i] = gmpy2.trunc(u)
                continue
            self.series.expand(self.t, self.y, self.held, 4)
            slope = self.series.c[self.system.nodes[i][1]][1] * self.direction
            beside = nearest + (mpfr(1) / 2 if slope > 0 else -mpfr(1) / 2)
            self.held[i] = gmpy2.trunc(beside) if slope != 0 else gmpy2.trunc(nearest)
            self.series.expand(self.t, self.y, self.held, 4)
            if self.series.c[self.system.nodes[i][1]][1] * self.direction * slope < 0:
                raise ValueError(f'slides along a jump at {self.t}')
        self.settled = True

    def step(self, end):
        end = mpfr(end)
        if end == self.t:
            return False
        self.direction = 1 if end > self.t else -1
        if not self.settled:
            self.settle()
        c = self.series.expand(self.t, self.y, self.held, self.order)
        norm = max(max(abs(p[0]) for p in c), mpfr('1e-4000'))
        if all(p[0] == 0 for p in c):
            norm = max(max(abs(p[1]) for p in c), mpfr('1e-4000'))
        h = abs(end - self.t)
        # Where a series has a term at every eighth order only, the last two may be zero or rounding.
        for k in range(self.order - 7, self.order + 1):
            last = max(abs(p[k]) for p in c)
            if last > 0:
                h = min(h, gmpy2.exp(gmpy2.log(norm / last) / k - 2))
        if self.maxStep:
            h = min(h, mpfr(self.maxStep))
        arrives = h >= abs(end - self.t)
        h = (end - self.t) if arrives else self.direction * h
        jump = self.firstJump(h)
        if jump is not None:
            h, arrives = jump, False
        if not arrives:
            # What the time moves by once it is rounded, so that it never runs ahead of the state.
            h = (self.t + h) - self.t
        self.begin = self.t
        self.polynomials = [list(p) for p in c]
        self.heldOn.append(dict(self.held))
        self.lastHeld = self.heldOn[-1]
        self.y = [mpfr(horner(p, h), self.rounded) for p in c]
        self.t = end if arrives else self.t + h
        self.grid.append(self.t)
        self.steps += 1
        if jump is not None:
            self.settle()
        return True

    def firstJump(self, h):
        """Nearest moment of the step, after its begin, at which the operand of a trunc leaves its interval."""
        first = None
        for i in self.truncs:
            c = self.series.c[self.system.nodes[i][1]]
            if all(v == 0 for v in c[1:]):
                continue
            held = self.held[i]
            low, high = (held if held > 0 else held - 1), (held if held < 0 else held + 1)
            for level in {low, high}:
                shifted = [c[0] - level] + c[1:]
                root = firstRoot(shifted, h)
                if root is not None and (first is None or abs(root) < abs(first)):
                    first = root
        return first

    def at(self, time):
        """Values of all nodes at a time of the last step."""
        time = mpfr(time)
        y = [horner(p, time - self.begin) for p in self.polynomials]
        return self.values.all(time, y, self.lastHeld if self.steps else self.held)


def firstRoot(c, h, samples=64):
    """First simple root of a polynomial in (0, h] at which it leaves the side on which it goes on from 0."""
    tiny = mpfr(2)**(-gmpy2.get_context().precision // 2)
    points = [h * i / samples for i in range(samples + 1)]
    values = [horner(c, p) for p in points]
    start = 0
    scale = max(abs(v) for v in values)
    if abs(values[0]) <= tiny * scale:
        start = 1
    for i in range(start, samples):
        if values[i] == 0 and i > 0:
            return points[i]
        if values[i] * values[i + 1] < 0:
            a, b, fa = points[i], points[i + 1], values[i]
            for _ in range(12):
                middle = (a + b) / 2
                fm = horner(c, middle)
                if fa * fm <= 0:
                    b = middle
                else:
                    a, fa = middle, fm
            x = (a + b) / 2
            derivative = [k * v for k, v in enumerate(c)][1:]
            for _ in range(9):
                x = x - horner(c, x) / horner(derivative, x)
            return x
    if values[samples] == 0:
        return points[samples]
    return None


def allRoots(c, h, first, samples=64):
    """Roots of a polynomial in (0, h], each with whether it rises there; `first`: a zero at 0 itself does not count."""
    roots = []
    points = [h * i / samples for i in range(samples + 1)]
    values = [horner(c, p) for p in points]
    derivative = [k * v for k, v in enumerate(c)][1:]
    tiny = mpfr(2)**(-gmpy2.get_context().precision // 2) * max(abs(v) for v in values)
    start = 1 if abs(values[0]) <= tiny else 0
    for i in range(start, samples):
        if values[i] * values[i + 1] < 0:
            a, b, fa = points[i], points[i + 1], values[i]
            for _ in range(12):
                middle = (a + b) / 2
                fm = horner(c, middle)
                if fa * fm <= 0:
                    b = middle
                else:
                    a, fa = middle, fm
            x = (a + b) / 2
            for _ in range(9):
                x = x - horner(c, x) / horner(derivative, x)
            roots.append((x, values[i + 1] > values[i]))
    return roots
