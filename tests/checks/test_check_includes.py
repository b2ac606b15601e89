#!/usr/bin/env python3
"""Plants one fault after the other in a small tree and expects the check to find each."""

import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
import check_includes


class CheckIncludes(unittest.TestCase):
    def faults(self, files):
        with tempfile.TemporaryDirectory() as folder:
            root = Path(folder)
            tree = {"cmake/Layers.cmake": "set(VX_LAYERS\n    base records link protocol app)\n"}
            tree.update(files)
            for name, text in tree.items():
                path = root / name
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text(text)
            return list(check_includes.faults(root))

    def test_order_of_folders_is_kept(self):
        self.assertEqual([], self.faults({"src/link/a.cpp": '#include "base/b.h"\n#include "link/a.h"\n'}))

    def test_include_of_a_later_folder_is_found(self):
        self.assertEqual(1, len(self.faults({"src/base/a.cpp": '#include "link/a.h"\n'})))

    def test_folder_inside_a_folder_has_its_own_place(self):
        self.assertEqual([], self.faults({"src/link/a.cpp": '#include "protocol/records/r.h"\n'}))
        self.assertEqual(1, len(self.faults({"src/link/a.cpp": '#include "protocol/p.h"\n'})))

    def test_include_without_folder_is_found(self):
        self.assertEqual(1, len(self.faults({"src/link/a.cpp": '#include "a.h"\n'})))

    def test_source_outside_the_folders_is_found(self):
        self.assertEqual(1, len(self.faults({"src/else/a.cpp": "\n"})))

    def test_view_that_reaches_the_engine_is_found(self):
        self.assertEqual([], self.faults({"src/app/x_view.cpp": '#include "protocol/records/r.h"\n'}))
        self.assertEqual(1, len(self.faults({"src/app/x_view.cpp": '#include "protocol/p.h"\n'})))

    def test_form_has_exactly_one_user(self):
        form = {"src/forms/f.ui": ""}
        self.assertEqual(1, len(self.faults(form)))
        self.assertEqual([], self.faults({**form, "src/app/a.cpp": '#include "ui_f.h"\n'}))
        self.assertEqual(
            1,
            len(self.faults({**form, "src/app/a.cpp": '#include "ui_f.h"\n', "src/app/b.cpp": '#include "ui_f.h"\n'})),
        )


if __name__ == "__main__":
    unittest.main()
