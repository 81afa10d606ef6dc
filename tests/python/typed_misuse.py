# SPDX-License-Identifier: MIT
"""What a checker of types must refuse; it is not run."""

import zirk

zirk.solve(1, 2)  # wrong
zirk.solve("x' = 1;", 1, rows=0.5)  # wrong
zirk.solve("x' = 1;", 1, set={"x": [1]})  # wrong
zirk.solve("x' = 1;", 1).statistics.stepz  # wrong
zirk.Model("x' = 1;").where("x")  # wrong
zirk.sweep("x' = 1;", 1, 2)  # wrong
zirk.Integrator("x' = 1;").integrate_to()  # wrong
