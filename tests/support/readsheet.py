#!/usr/bin/env python3
"""Prints the first sheet of a workbook as JSON: its cells row by row, as openpyxl reads them."""
import json
import sys

import openpyxl

sheet = openpyxl.load_workbook(sys.argv[1]).worksheets[0]
print(json.dumps([[cell.value for cell in row] for row in sheet.iter_rows()]))
