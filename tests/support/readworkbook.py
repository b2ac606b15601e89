"""Prints what a reader of workbooks finds in a file, as JSON."""

import json
import sys

import openpyxl


def color(cell):
    found = cell.font.color
    return found.rgb[2:] if found is not None and found.type == "rgb" else ""


def main(path):
    book = openpyxl.load_workbook(path)
    sheet = book.worksheets[0]
    cells = {}
    for row in sheet.iter_rows():
        for cell in row:
            cells[cell.coordinate] = {
                "value": cell.value,
                "type": cell.data_type,
                "font": cell.font.name,
                "color": color(cell),
                "align": cell.alignment.horizontal or "",
            }
    columns = [
        {
            "first": d.min,
            "last": d.max,
            "width": d.width,
            "font": d.font.name,
            "color": color(d),
            "align": d.alignment.horizontal or "",
        }
        for d in sheet.column_dimensions.values()
    ]
    row = sheet.row_dimensions[1]
    print(
        json.dumps(
            {
                "sheets": len(book.worksheets),
                "merged": [str(r) for r in sheet.merged_cells.ranges],
                "cells": cells,
                "columns": columns,
                "row1": {"font": row.font.name, "color": color(row), "align": row.alignment.horizontal or ""},
            }
        )
    )


main(sys.argv[1])
