# SPDX-License-Identifier: MIT
"""A problem of the collection: text, what is asked, values and tolerances, and the two files made from them.

Values come from Taylor series with 40 digits or more, and are confirmed by extrapolated midpoint rules that call the
functions themselves, and by closed forms where there are some. 25 digits must agree, or nothing is written.

Tolerances: 1e-18 of the value, and what rounding to 64 bits must be expected to do, ten times. The latter is measured:
the problem is solved by the same Taylor series, in steps like those of the command, in arithmetic of 58 to 63 bits, and
the largest of the errors, each scaled to 64 bits, is taken. So it contains how the problem answers to decimals that are
not binary numbers (0.1), to rounding at any moment and to the length of the run. What is demanded of a problem replaces
this, unless the value is zero but for rounding. Where a formula cancels for a moment, as u/(exp(u) - 1) at u = 0 does,
only literals and the state after each step are rounded: series of 58 bits would go to pieces there.
"""
import os
import sys

import gmpy2
import mpmath
from gmpy2 import mpfr

import stiff
from midpoint import Replay
from reader import System
from taylor import Run, allRoots

FOLDER = os.path.join(os.path.dirname(os.path.abspath(__file__)), '..')
ALL = {}


def precision(bits):
    context = gmpy2.get_context()
    context.precision = bits
    context.emax, context.emin = 2**40, -2**40


class Disagreement(Exception):
    """Two computations of one value differ."""


class Asked:
    """One call of the command: rows at times, or where an expression is zero."""

    def __init__(self, columns, at=None, end=None, crossings=None, which='', until=None, demand=None, closed=None,
                 options='', note='', only=None, tolerance=None, slow=False, size='0', zeros=None, stiff=None,
                 floor='0'):
        self.columns = columns.split()
        self.at = at.split() if at else None
        self.end = end or self.at[-1]
        self.crossings, self.which, self.until = crossings, which, until
        self.demand, self.closed, self.options, self.note = demand, closed or {}, options, note
        self.only, self.tolerance, self.slow, self.size, self.zeros = only, tolerance, slow, size, zeros
        self.stiff, self.floor = stiff, floor

    def arguments(self, start):
        words = [f'-t {self.end}']
        if start != '0':
            words.append(f'--start={start}')
        if self.crossings:
            words.append(f'"--crossings={self.crossings}{":" + self.which if self.which else ""}"')
        elif self.until:
            words.append(f'"--until={self.until}" --last')
        elif self.at == [self.end]:
            words.append('--last')
        else:
            words.append('--at=' + ','.join(self.at))
        words.append('-c "' + ','.join(['t'] + self.columns) + '"')
        return ' '.join(words + ([self.options] if self.options else []))

    def watched(self):
        return [w for w in (self.crossings, self.until) if w]

    def solve(self, system, start, **options):
        """Rows (time, values) and the run."""
        run = Run(system, start, **options)
        nodes = [system.expression(c) for c in self.columns]
        rows = []
        if self.at:
            times = [mpfr(t) for t in self.at]
            while times:
                while times and (abs(times[0] - mpfr(start)) <= abs(run.t - mpfr(start))):
                    values = run.at(times[0])
                    rows.append((times.pop(0), [values[n] for n in nodes]))
                if times:
                    run.step(self.end)
            return rows, run
        zero = system.expression((self.crossings or self.until))
        while run.step(self.end):
            begin, h = run.begin, run.t - run.begin
            for root, rising in allRoots(run.series.c[zero], h, first=begin == mpfr(start)):
                if self.which and rising != (self.which == 'up'):
                    continue
                values = run.at(begin + root)
                rows.append((begin + root, [values[n] for n in nodes]))
                if self.until:
                    return rows, run
        return rows, run


class Problem:
    def __init__(self, name, text, *asked, digits=40, maxStep=None, start='0', source='', columns=22, parts=1,
                 confirm=True, cancels=False):
        self.name, self.text, self.asked, self.digits, self.maxStep = name, text, asked, digits, maxStep
        self.start, self.source, self.columns, self.parts, self.confirm = start, source, columns, parts, confirm
        self.cancels = cancels
        ALL[name] = self

    def make(self):
        lines = []
        for asked in self.asked:
            lines += self.answer(asked)
        with open(os.path.join(FOLDER, self.name + '.zirk'), 'w') as file:
            file.write(''.join('// ' + line + '\n' for line in self.source.strip().split('\n') if self.source))
            file.write(self.text.strip() + '\n')
        with open(os.path.join(FOLDER, self.name + '.truth'), 'w') as file:
            file.write('# Made by generate/make. time name value, and what may differ: rel (of the value) or abs.\n')
            file.write('\n'.join(lines) + '\n')

    def known(self, asked):
        """From closed forms alone, computed twice with different precision; the tolerance is given."""
        lines = ['# Closed form.' + (f' {asked.note}' if asked.note else ''), self.call(asked)]
        for time in asked.at:
            for name in asked.columns:
                found = []
                for digits in (60, 90):
                    mpmath.mp.dps = digits
                    precision(int(digits * 3.4))
                    found.append(mpfr(mpmath.nstr(asked.only[name](mpmath.mpf(time)), digits)))
                if found[0] != found[1] and abs(found[0] / found[1] - 1) > mpfr('1e-32'):
                    raise Disagreement(f'{self.name}: {name} at {time}: {found}')
                lines.append(f'{time} {name} {text(found[1])} ' + ' '.join(asked.tolerance))
        return lines

    def knownZeros(self, asked):
        """Zeros in closed form. How far rounding moves them: 1e-18 of the terms of x, all below 1, over its slope."""
        precision(250)
        mpmath.mp.dps = 60
        zeros = asked.zeros()
        lines = ['# Zeros in closed form.', self.call(asked)]
        for i, zero in enumerate(zeros):
            distance = min(abs(zero - other) for other in zeros if other != zero)
            lines.append(self.line(f'#{i + 1}', 't', mpfr(mpmath.nstr(zero, 50)), mpfr('2e-20') / mpfr(str(distance))))
        return lines + [f'rows {len(zeros)}']

    def byStiff(self, asked):
        """Many steps in compiled 113-bit arithmetic; 64-bit runs of the same program are the measure of rounding."""
        precision(120)
        best, other, errors, steps = stiff.compare(asked.stiff, asked.at)
        agreed = min(self.same(name, time, a, b, [a], asked) for time, first, second in zip(asked.at, best, other)
                     for name, a, b in zip(asked.columns, first, second))
        lines = [f'# Series of order 36 and 32 in 113 bits agree to {agreed} digits. {steps} steps in 64 bits.',
                 self.call(asked)]
        for time, values, units in zip(asked.at, best, errors):
            for name, value, unit in zip(asked.columns, values, units):
                lines.append(self.line(time, name, value, unit))
        return lines

    def call(self, asked):
        return ('slow ' if asked.slow else '') + 'arguments: ' + asked.arguments(self.start)

    def answer(self, asked):
        if asked.only:
            return self.known(asked)
        if asked.stiff:
            return self.byStiff(asked)
        if asked.zeros:
            return self.knownZeros(asked)
        precision(int(self.digits * 3.33) + 80)
        system = System(self.text, asked.columns + asked.watched())
        rows, run = asked.solve(system, self.start, digits=self.digits, maxStep=self.maxStep)
        nodes = [system.expression(c) for c in asked.columns]
        lines = [f'# Taylor series of {self.digits} digits: {run.steps} steps.' +
                 (f' {asked.note}' if asked.note else '')]
        agreed = 99
        if self.confirm:
            try:
                agreed = self.replayed(asked, rows, run, nodes, self.columns, self.parts)
            except Disagreement:
                agreed = self.replayed(asked, rows, run, nodes, self.columns + 4, 3 * self.parts)
            lines[0] += f' Extrapolation agrees to {agreed} digits.'
        for name, form in asked.closed.items():
            mpmath.mp.prec = int(self.digits * 3.33) + 40
            closedAgreed = 99
            for time, values in rows:
                exact = mpfr(mpmath.nstr(form(mpmath.mpf(str(time))), self.digits + 5))
                closedAgreed = min(closedAgreed,
                                   self.same(name, time, values[asked.columns.index(name)], exact, values,
                                             asked))
            lines[0] += f' Closed form of {name}: to {closedAgreed} digits.'
        units, timeUnits = self.roundingUnits(asked, rows)
        lines.append(self.call(asked))
        for i, (time, values) in enumerate(rows):
            where = asked.at[i] if asked.at else f'#{i + 1}'
            if not asked.at:
                lines.append(self.line(where, 't', time, timeUnits[i]))
            for k, value in enumerate(values):
                lines.append(self.line(where, asked.columns[k], value, units[i][k], asked.demand, asked.tolerance,
                                       asked.floor))
        if not asked.at:
            lines.append(f'rows {len(rows)}')
        return lines

    def replayed(self, asked, rows, run, nodes, columns, parts):
        replay, agreed = Replay(run, columns, parts), 99
        for time, values in rows:
            again = replay.at(time)
            for name, node, value in zip(asked.columns, nodes, values):
                agreed = min(agreed, self.same(name, time, value, again[node], values, asked))
        return agreed

    def same(self, name, time, a, b, values, asked):
        """Digits to which two values agree, of the value; of the largest in the row for what is nearly zero."""
        size = max(abs(a), mpfr(asked.size))
        if size < mpfr('1e-8') * max(abs(v) for v in values):
            size = max(abs(v) for v in values)
        if a == b:
            return self.digits
        if size == 0:
            size = mpfr(1)
        if not gmpy2.is_finite(a) or not gmpy2.is_finite(b):
            raise Disagreement(f'{self.name}: {name} at {time}: {a} {b}')
        digits = int(-gmpy2.log10(abs(a - b) / size))
        if digits < 25:
            raise Disagreement(f'{self.name}: {name} at {time}: {text(a)} and {text(b)} agree to {digits} digits')
        return min(digits, self.digits)

    def roundingUnits(self, asked, rows):
        """Errors to expect from rounding to 64 bits, per row and column, and of the row's time."""
        units = [[mpfr(0)] * len(values) for _, values in rows]
        timeUnits = [mpfr(0)] * len(rows)
        for bits in range(58, 64):
            precision(200 if self.cancels else bits)
            system = System(self.text, asked.columns + asked.watched())
            rough, _ = asked.solve(system, self.start, order=27, maxStep=self.maxStep,
                                   rounded=bits if self.cancels else 0)
            precision(200)
            if len(rough) != len(rows):
                raise Disagreement(f'{self.name}: {len(rough)} rows in {bits} bits')
            for i, (time, values) in enumerate(rough):
                scale = mpfr(2)**(bits - 64)
                timeUnits[i] = max(timeUnits[i], abs(time - rows[i][0]) * scale)
                for k, value in enumerate(values):
                    units[i][k] = max(units[i][k], abs(value - rows[i][1][k]) * scale)
        return units, timeUnits

    def line(self, where, name, value, unit, demand=None, given=None, floor='0'):
        if given:
            return f'{where} {name} {text(value)} ' + ' '.join(given)
        tolerance = max(abs(value) * mpfr('1e-18') + 10 * unit, mpfr(floor))
        size = abs(value)
        if demand and tolerance < size / 1000:
            tolerance = mpfr(demand) * size
        kind = 'rel' if size > 0 and tolerance < size / 1000 else 'abs'
        if kind == 'rel':
            tolerance /= size
        if not gmpy2.is_finite(tolerance):
            raise Disagreement(f'{self.name}: {name} at {where} has no tolerance')
        return f'{where} {name} {text(value)} {kind} {"{0:.1e}".format(float(tolerance)) if tolerance > 1e-300 else shortText(tolerance)}'


def text(value):
    return '{0:.29e}'.format(value) if value != 0 else '0'


def shortText(value):
    return '{0:.1e}'.format(value) if value != 0 else '0'


def main():
    names, failed = sys.argv[1:] or list(ALL), []
    for name in names:
        try:
            ALL[name].make()
            print(name, flush=True)
        except Exception as error:
            failed.append(name)
            print(f'{name} FAILED: {type(error).__name__} {error}', flush=True)
    sys.exit(1 if failed else 0)
