# SPDX-License-Identifier: MIT
# Behind examples/notebooks/poincare-section.ipynb: points on the plane and at the energy; symmetry of the regular orbits.
assert count > 10000 and not found.errors
assert x_error < 1e-15 and energy_error < 1e-16
for result in found:
    events = result.solution.events
    assert all(event.rising for event in events[:100]) and (np.diff(events.t) > 1).all()
# An orbit that starts with y' = 0 is its own mirror image: where its curve passes y' = 0 again, on the other side, it does so at
# a right angle, and both halves have the same y.
events = found[0].solution.events
y, speed = events["y"].astype(float), events["y'"].astype(float)
upper, lower = np.sort(y[speed > 0]), np.sort(y[speed < 0])
assert abs(upper.min() - lower.min()) < 1e-3 and abs(upper.max() - lower.max()) < 1e-3
# Far from chaos the curves are thin: neighbours along one lie close together.
angle = np.argsort(np.arctan2(speed, y - 0.31))
gaps = np.hypot(np.diff(y[angle]), np.diff(speed[angle]))
assert gaps.max() < 0.02
