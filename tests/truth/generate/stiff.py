# SPDX-License-Identifier: MIT
"""Runs stiff.cpp: values with 33 digits by two orders, and what 64-bit numbers make of them."""
import functools
import os
import subprocess
import tempfile

from gmpy2 import mpfr


@functools.lru_cache(None)
def program():
    folder = os.path.dirname(os.path.abspath(__file__))
    path = os.path.join(tempfile.mkdtemp(prefix='stiff.'), 'stiff')
    subprocess.run(['g++', '-std=gnu++17', '-O2', os.path.join(folder, 'stiff.cpp'), '-o', path, '-lquadmath'], check=True)
    return path


def rows(problem, order, kind, times):
    """Values at each time, and the number of steps."""
    done = subprocess.run([program(), problem, str(order), kind, *times], check=True, capture_output=True, text=True)
    lines = [line.split() for line in done.stdout.splitlines()]
    return [[mpfr(v) for v in words[2:]] for words in lines], sum(int(words[1]) for words in lines)


def compare(problem, times):
    """Rows by order 36, rows by order 32, and errors of 64-bit runs; steps of one of these."""
    best, _ = rows(problem, 36, 'quad', times)
    other, _ = rows(problem, 32, 'quad', times)
    errors, steps = [[mpfr(0)] * len(best[0]) for _ in best], 0
    for order in (20, 22, 24):
        rough, steps = rows(problem, order, 'long', times)
        for i, row in enumerate(rough):
            errors[i] = [max(e, abs(a - b)) for e, a, b in zip(errors[i], row, best[i])]
    return best, other, errors, steps
