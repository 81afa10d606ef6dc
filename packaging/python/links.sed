# SPDX-License-Identifier: MIT
# Where the neighbours of docs/python.md are, seen from the folder of the package python3-zirk.
s,\]\(\.\./README\.md\),](../zirk/README.md),g
s,\]\(\.\./examples/,](../zirk/examples/,g
s,\]\(([a-z]+\.md[)#]),](../zirk/docs/\1,g
