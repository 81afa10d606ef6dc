# SPDX-License-Identifier: MIT
# Behind examples/notebooks/shooting.ipynb: f''(0) by Boyd, and energies of the quartic well, published with many more digits
# (F. Vinette, J. Cizek, Upper and lower bounds of the ground state energy of anharmonic oscillators, J. Math. Phys. 32 (1991)).
assert abs(exact - np.longdouble("0.33205733621519629893718006201058")) < 1e-18
assert abs(energy - np.longdouble("1.0603620904841828996470460166926635")) < 1e-17
assert abs(excited - 7.455697937986738392156591347185) < 1e-14
