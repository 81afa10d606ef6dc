# SPDX-License-Identifier: MIT
# Behind examples/notebooks/first-steps.ipynb: periods against the arithmetic-geometric mean, in more digits than the solver has.
import mpmath

mpmath.mp.dps = 30


def true_period(start, length=1):
    # Start and g as the text has them, or as the double that a float is.
    return 2 * mpmath.pi / mpmath.sqrt(mpmath.mpf("9.81") / length) / mpmath.agm(1, mpmath.cos(mpmath.mpf(start) / 2))


assert abs(mpmath.mpf(str(period)) / true_period(3) - 1) < 1e-17
assert abs(mpmath.mpf(str(closed_form)) / true_period(3) - 1) < 1e-18
assert len(periods) == 31
for start, value in zip(starts, periods):
    assert abs(mpmath.mpf(str(value)) / true_period(float(start)) - 1) < 2e-17, start
last = np.diff(zirk.solve(model, 20, set={"length": "1/3", "phi": "pi/2"}, crossings="phi:down").events.t)[0]
assert abs(mpmath.mpf(str(last)) / true_period(mpmath.pi / 2, mpmath.mpf(1) / 3) - 1) < 1e-17
