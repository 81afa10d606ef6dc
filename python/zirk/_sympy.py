# SPDX-License-Identifier: MIT
"""Equations of sympy as text."""

from __future__ import annotations

import re
from typing import Any, Dict, Iterable, List, Mapping, Optional, Tuple, Union

from ._numbers import text_of

# Functions of sympy by their names here.
_FUNCTIONS = {
    "sin": "sin", "cos": "cos", "tan": "tan", "cot": "cotan",
    "asin": "asin", "acos": "acos", "atan": "atan", "acot": "acotan",
    "sinh": "sinh", "cosh": "cosh", "tanh": "tanh", "coth": "cotanh",
    "asinh": "asinh", "acosh": "acosh", "atanh": "atanh", "acoth": "argcotanh",
    "exp": "exp", "log": "ln",
}  # fmt: skip
_RECIPROCALS = {"sec": "cos", "csc": "sin", "sech": "cosh", "csch": "sinh"}
_NAME = re.compile(r"[A-Za-z_][A-Za-z0-9_]*")


def _writer(time: Any) -> Any:
    """A printer whose output zirk reads as the same formula."""
    from sympy.core.function import AppliedUndef
    from sympy.printing.precedence import PRECEDENCE
    from sympy.printing.str import StrPrinter

    class Writer(StrPrinter):  # type: ignore[misc]
        def _print_Symbol(self, expr: Any) -> str:
            if expr == time:
                return "t"
            return name_of(expr.name)

        def _print_Function(self, expr: Any) -> str:
            name = expr.func.__name__
            if isinstance(expr, AppliedUndef):
                if expr.args != (time,):
                    raise ValueError(f"{expr} is not a function of {time} alone")
                return name_of(name)
            arguments = [self._print(argument) for argument in expr.args]
            if name in _RECIPROCALS:
                return f"(1/{_RECIPROCALS[name]}({arguments[0]}))"
            if name not in _FUNCTIONS or len(arguments) != 1:
                raise ValueError(f"there is no function here for {expr}")
            return f"{_FUNCTIONS[name]}({arguments[0]})"

        def _print_Abs(self, expr: Any) -> str:
            return f"sqrt(({self._print(expr.args[0])})^2)"

        def _print_Pow(self, expr: Any, rational: bool = False) -> str:
            if expr.exp.is_Rational and (expr.exp.p, expr.exp.q) == (1, 2):
                return f"sqrt({self._print(expr.base)})"
            base = self.parenthesize(expr.base, PRECEDENCE["Pow"], strict=False)
            if expr.exp.is_Integer:
                return f"{base}^{expr.exp}" if expr.exp > 0 else f"(1/{base}^{-expr.exp})"
            return f"{base}^({self._print(expr.exp)})"

        def _print_Derivative(self, expr: Any) -> str:
            variable, order = derivative_of(expr, time)
            return variable + "'" * order

        def _print_Pi(self, expr: Any) -> str:
            return "pi"

        def _print_Exp1(self, expr: Any) -> str:
            return "exp(1)"

        def _print_Rational(self, expr: Any) -> str:
            return f"({expr.p}/{expr.q})"

        def _print_Float(self, expr: Any) -> str:
            # 21 figures tell 64 bits apart; a Float of a double is that double.
            return f"({text_of(float(expr))})" if expr._prec == 53 else f"({expr.evalf(21)})"

        def emptyPrinter(self, expr: Any) -> str:
            raise ValueError(f"zirk has no word for {expr!r}")

        _print_Relational = _print_Piecewise = _print_Integral = _print_Infinity = _print_NaN = emptyPrinter
        _print_NegativeInfinity = _print_ComplexInfinity = _print_ImaginaryUnit = emptyPrinter
    return Writer()


def name_of(name: str) -> str:
    if not _NAME.fullmatch(name):
        raise ValueError(f"{name!r} is not a name here: letters, figures and _, not beginning with a figure")
    if name == "t":
        raise ValueError('"t" is the time here; give another name, or say which symbol is the time')
    return name


def derivative_of(expr: Any, time: Any) -> Tuple[str, int]:
    """The name and the number of primes of x(t) or Derivative(x(t), t, ...)."""
    function, order = expr, 0
    if type(expr).__name__ == "Derivative":
        function = expr.expr
        if any(variable != time for variable in expr.variables):
            raise ValueError(f"{expr} is not a derivative by {time}")
        order = len(expr.variables)
    name = function.name if hasattr(function, "name") else function.func.__name__
    return name_of(name), order


def from_sympy(
    rhs: Union[Mapping[Any, Any], Iterable[Any]],
    start: Mapping[Any, Any],
    time: Optional[Any] = None,
    parameters: Optional[Mapping[Any, Any]] = None,
) -> str:
    """The text of equations that sympy has. Needs sympy.

    rhs        : {x: right-hand side of x', ...} with symbols or functions x(t), or equations whose left side is the
                 highest derivative, Eq(x(t).diff(t, 2), -x(t))
    start      : start values, by x for x and by x(t).diff(t) or "x'" for derivatives; those left out are 0
    time       : the symbol of the time; without it the one called t
    parameters : values of the other symbols, as definitions, so that they can be set

    ValueError for what has no form here.

    >>> import sympy, zirk
    >>> x, v, k = sympy.symbols("x v k")
    >>> text = zirk.from_sympy({x: v, v: -k*sympy.sin(x)}, {x: 1}, parameters={k: sympy.Rational(1, 3)})
    >>> print(text, end="")
    k = (1/3);
    x' = v & 1;
    v' = -k*sin(x) & 0;
    >>> zirk.solve(text, 1).names
    ['k', 'x', 'v']
    """
    import sympy

    time = sympy.Symbol("t") if time is None else time
    writer = _writer(time)

    def written(value: Any) -> str:
        return str(writer.doprint(sympy.sympify(value))) if not isinstance(value, str) else value

    equations: List[Tuple[str, int, str]] = []
    if isinstance(rhs, Mapping):
        for left, right in rhs.items():
            name, order = derivative_of(sympy.sympify(left), time)
            equations.append((name, order + 1, written(right)))
    else:
        for equation in rhs:
            name, order = derivative_of(equation.lhs, time)
            equations.append((name, order, written(equation.rhs)))
    values: Dict[Tuple[str, int], str] = {}
    for key, value in start.items():
        if isinstance(key, str):
            place = key.rstrip("'"), len(key) - len(key.rstrip("'"))
        else:
            place = derivative_of(sympy.sympify(key), time)
        values[place] = written(value)
    lines = [f"{name_of(str(name))} = {written(value)};" for name, value in (parameters or {}).items()]
    for name, order, right in equations:
        first = f" & {values.pop((name, 0), '0')}" if order > 0 else ""
        lines.append(f"{name}{chr(39) * order} = {right}{first};")
        for k in range(1, order):
            if (name, k) in values:
                lines.append(f"{name}{chr(39) * k}(0) = {values.pop((name, k))};")
    if values:
        raise ValueError(f"start values of what has no equation: {sorted(values)}")
    return "\n".join(lines) + "\n"
