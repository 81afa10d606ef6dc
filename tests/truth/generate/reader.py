# SPDX-License-Identifier: MIT
"""Reads a text of equations as mathematics, independently of the program that is measured.

The result is a list of nodes, operands before what is made from them; equal formulas are one node. A literal stays text,
so that it is rounded to the precision in which the numbers are wanted.
"""
import re

FUNCTIONS = {
    'sin': 'sin', 'cos': 'cos', 'tan': 'tan', 'cotan': 'cotan', 'asin': 'asin', 'acos': 'acos', 'atan': 'atan',
    'acotan': 'acotan', 'sinh': 'sinh', 'cosh': 'cosh', 'tanh': 'tanh', 'cotanh': 'cotanh', 'asinh': 'asinh',
    'acosh': 'acosh', 'atanh': 'atanh', 'argcotanh': 'argcotanh', 'sqrt': 'sqrt', 'exp': 'exp', 'ln': 'ln',
    'trunc': 'trunc',
}
TOKEN = re.compile(r"\s+|//[^\n]*|/\*.*?\*/|(?P<number>(\d+\.?\d*|\.\d+)([eE][+-]?\d+)?)|(?P<name>[A-Za-z_]\w*)"
                   r"(?P<primes>('\d+|'*))|(?P<mark>[-+*/^()=;&])", re.S)


class System:
    """nodes: tuples (operation, operands...). variables: (name, node of its rate, node of its start)."""

    def __init__(self, text, watched=()):
        self.nodes = []
        self.known = {}
        self.rates = {}
        self.starts = {}
        self.definitions = {}
        self.orders = {}
        self.names = []
        self.tokens = list(self.scan(text))
        self.place = 0
        while self.place < len(self.tokens):
            self.statement()
        self.variables = [name + "'" * i for name in self.rates for i in range(self.orders[name])]
        self.made = {}
        self.inProgress = set()
        for i in range(len(self.variables)):
            self.node('variable', i)
        self.rateOf = []
        for name in self.rates:
            for i in range(1, self.orders[name]):
                self.rateOf.append(self.node('variable', self.variables.index(name + "'" * i)))
            self.rateOf.append(self.build(self.rates[name]))
        self.startOf = [self.build(self.starts.get(name, ('number', '0'))) for name in self.variables]
        self.expressions = {name: self.build(('name', name)) for name in self.definitions}
        for expression in watched:
            self.expression(expression)

    def expression(self, text):
        """Node of a formula in the names of the system."""
        if text not in self.expressions:
            self.tokens, self.place = list(self.scan(text)), 0
            self.expressions[text] = self.build(self.sum())
        return self.expressions[text]

    @staticmethod
    def scan(text):
        place = 0
        while place < len(text):
            match = TOKEN.match(text, place)
            if not match:
                raise ValueError('unexpected ' + text[place:place + 20])
            place = match.end()
            if match['number']:
                yield ('number', match['number'])
            elif match['name']:
                primes = match['primes']
                if len(primes) > 1 and primes[1] != "'":
                    primes = "'" * int(primes[1:])
                yield ('name', match['name'], primes)
            elif match['mark']:
                yield ('mark', match['mark'])

    # Grammar --------------------------------------------------------------------------------------------------------

    def ahead(self, *marks):
        return self.place < len(self.tokens) and self.tokens[self.place][0] == 'mark' \
            and self.tokens[self.place][1] in marks

    def take(self, mark=None):
        token = self.tokens[self.place]
        if mark and token[1] != mark:
            raise ValueError(f'{mark} expected, not {token}')
        self.place += 1
        return token

    def statement(self):
        _, name, primes = self.take()
        if self.ahead('('):
            self.take('(')
            self.take()
            self.take(')')
            self.take('=')
            self.starts[name + primes] = self.sum()
        else:
            self.take('=')
            formula = self.sum()
            if primes:
                self.rates[name] = formula
                self.orders[name] = len(primes)
            else:
                self.definitions[name] = formula
            self.names.append(name)
            if self.ahead('&'):
                self.take()
                self.starts.setdefault(name, self.sum())
        self.take(';')

    def sum(self):
        left = self.product()
        while self.ahead('+', '-'):
            left = ('add' if self.take()[1] == '+' else 'sub', left, self.product())
        return left

    def product(self):
        left = self.signed()
        while self.ahead('*', '/'):
            left = ('mul' if self.take()[1] == '*' else 'div', left, self.signed())
        return left

    def signed(self):
        if self.ahead('+', '-'):
            return ('neg', self.signed()) if self.take()[1] == '-' else self.signed()
        return self.power()

    def power(self):
        base = self.atom()
        if self.ahead('^'):
            self.take()
            return ('pow', base, self.signed())
        return base

    def atom(self):
        token = self.take()
        if token == ('mark', '('):
            inner = self.sum()
            self.take(')')
            return inner
        if token[0] == 'number':
            return token
        if token[1] in FUNCTIONS:
            self.take('(')
            inner = self.sum()
            self.take(')')
            return (FUNCTIONS[token[1]], inner)
        if token[0] != 'name':
            raise ValueError(f'unexpected {token}')
        return ('pi',) if token[1] == 'pi' else ('time',) if token[1] == 't' else ('name', token[1] + token[2])

    # Nodes ----------------------------------------------------------------------------------------------------------

    def node(self, *key):
        if key not in self.known:
            self.known[key] = len(self.nodes)
            self.nodes.append(key)
        return self.known[key]

    def build(self, tree):
        kind = tree[0]
        if kind == 'name':
            return self.named(tree[1])
        if kind in ('number', 'pi', 'time'):
            return self.node(*tree)
        if kind == 'pow':
            return self.powerOf(self.build(tree[1]), tree[2])
        operands = [self.build(operand) for operand in tree[1:]]
        if kind in ('asin', 'acos', 'atan', 'acotan', 'asinh', 'acosh', 'atanh', 'argcotanh', 'ln'):
            return self.node(kind, operands[0], self.slopeBelow(kind, operands[0]))
        return self.node(kind, *operands)

    def named(self, name):
        if name in self.made:
            return self.made[name]
        if name in self.inProgress:
            raise ValueError('loop through ' + name)
        self.inProgress.add(name)
        plain = name.rstrip("'")
        if name in self.variables:
            made = self.node('variable', self.variables.index(name))
        elif plain in self.rates and len(name) - len(plain) == self.orders[plain]:
            made = self.build(self.rates[plain])
        else:
            made = self.build(self.definitions[name])
        self.inProgress.remove(name)
        self.made[name] = made
        return made

    def powerOf(self, base, exponent):
        number = constantOf(exponent)
        if number is not None and number == int(number) and abs(number) <= 64:
            result, square, count = None, base, abs(int(number))
            while count:
                if count & 1:
                    result = square if result is None else self.node('mul', result, square)
                count >>= 1
                if count:
                    square = self.node('mul', square, square)
            if result is None:
                return self.node('number', '1')
            return result if number > 0 else self.node('div', self.node('number', '1'), result)
        if number is not None:
            return self.node('pow', base, self.build(exponent))
        logarithm = self.inverse('ln', base)
        return self.node('exp', self.node('mul', self.build(exponent), logarithm))

    def inverse(self, kind, operand):
        return self.node(kind, operand, self.slopeBelow(kind, operand))

    def slopeBelow(self, kind, u):
        """R in f(u)' = u'/R."""
        one = self.node('number', '1')
        square = self.node('mul', u, u)
        if kind == 'ln':
            return u
        if kind == 'asin':
            return self.node('sqrt', self.node('sub', one, square))
        if kind == 'acos':
            return self.node('neg', self.node('sqrt', self.node('sub', one, square)))
        if kind == 'atan':
            return self.node('add', one, square)
        if kind == 'acotan':
            return self.node('neg', self.node('add', one, square))
        if kind == 'asinh':
            return self.node('sqrt', self.node('add', one, square))
        if kind == 'acosh':
            return self.node('sqrt', self.node('sub', square, one))
        return self.node('sub', one, square)


def constantOf(tree):
    """Value of an exponent that is written as a signed number, or None."""
    if tree[0] == 'number':
        return float(tree[1])
    if tree[0] == 'neg':
        inner = constantOf(tree[1])
        return None if inner is None else -inner
    return None
