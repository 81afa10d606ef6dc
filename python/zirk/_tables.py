# SPDX-License-Identifier: MIT
"""Rows as text and as HTML, without those in the middle when there are many."""

from __future__ import annotations

import html
from typing import Any, List, Optional, Sequence

MOST_ROWS = 10
MOST_COLUMNS = 12


def _chosen(count: int) -> List[Optional[int]]:
    """Indices of rows to be shown; None for a gap."""
    if count <= MOST_ROWS:
        return list(range(count))
    half = MOST_ROWS // 2
    return [*range(half), None, *range(count - half, count)]


def _cell(value: Any) -> str:
    return value if isinstance(value, str) else f"{value:.12g}"


def _cells(names: Sequence[str], table: Any) -> List[List[str]]:
    columns = {name: table.t if name == "t" else table[name] for name in names[:MOST_COLUMNS]}
    more = ["..."] if len(names) > MOST_COLUMNS else []
    rows = [[*columns, *more]]
    for i in _chosen(len(table.t)):
        if i is None:
            rows.append(["..."] * len(rows[0]))
        else:
            rows.append([_cell(column[i]) for column in columns.values()] + more)
    return rows


def text_table(names: Sequence[str], table: Any) -> str:
    rows = _cells(names, table)
    widths = [max(len(row[i]) for row in rows) for i in range(len(rows[0]))]
    return "\n".join("  ".join(cell.rjust(width) for cell, width in zip(row, widths)) for row in rows)


def html_table(names: Sequence[str], table: Any, caption: str) -> str:
    head, *rows = _cells(names, table)

    def line(cells: Sequence[str], kind: str) -> str:
        return "<tr>" + "".join(f"<{kind}>{html.escape(cell)}</{kind}>" for cell in cells) + "</tr>"

    body = "".join(line(row, "td") for row in rows)
    return (
        f"<table><caption>{html.escape(caption)}</caption>"
        f"<thead>{line(head, 'th')}</thead><tbody>{body}</tbody></table>"
    )
