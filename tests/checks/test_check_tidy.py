"""The check of a folder by clang-tidy fails where it must."""
import json
import pathlib
import tempfile
import unittest

import check_tidy

SOUND = "int twice(int value)\n{\n    return 2 * value;\n}\n"
UNUSED = "int none(int value)\n{\n    return 0;\n}\n"


class Folder(unittest.TestCase):
    def check(self, sources, header="", together=False):
        with tempfile.TemporaryDirectory() as scratch:
            root = pathlib.Path(scratch)
            folder = root / "src" / "part"
            folder.mkdir(parents=True)
            (root / ".clang-tidy").write_text("Checks: '-*,misc-unused-parameters'\nWarningsAsErrors: '*'\n"
                                              "HeaderFilterRegex: '(src|sim)/.*\\.h$'\n")
            (folder / "part.h").write_text(header)
            commands = []
            for name, text in sources.items():
                path = folder / name
                path.write_text('#include "part.h"\n' + text)
                commands.append({"directory": scratch, "file": str(path),
                                 "command": f"ccache g++ -std=c++17 -o {name}.o -c {path}"})
            if together:
                commands = [{"directory": scratch, "file": f"{root}/src/part/CMakeFiles/part.dir/Unity/unity_0_cxx.cxx",
                             "command": f"g++ -std=c++17 -I{folder} -o unity.o -c unity_0_cxx.cxx"}]
            (root / "compile_commands.json").write_text(json.dumps(commands))
            return check_tidy.main(scratch, scratch, "src/part")

    def test_sound_sources_pass(self):
        self.assertEqual(self.check({"a.cpp": SOUND, "b.cpp": "int one()\n{\n    return 1;\n}\n"}), 0)

    def test_a_finding_in_any_source_fails(self):
        self.assertNotEqual(self.check({"a.cpp": SOUND, "b.cpp": UNUSED}), 0)
        self.assertNotEqual(self.check({"a.cpp": UNUSED, "b.cpp": SOUND}), 0)

    def test_a_finding_in_a_header_fails(self):
        self.assertNotEqual(self.check({"a.cpp": SOUND}, header="#pragma once\ninline " + UNUSED), 0)

    def test_equal_names_of_two_sources_do_not_hide_a_finding(self):
        own = "namespace {\nconstexpr int kSize = 1;\n}\nint size_%s()\n{\n    return kSize;\n}\n"
        self.assertEqual(self.check({"a.cpp": own % "a", "b.cpp": own % "b"}), 0)
        self.assertNotEqual(self.check({"a.cpp": own % "a", "b.cpp": own % "b" + UNUSED}), 0)

    def test_sources_that_the_build_puts_together_are_read(self):
        self.assertEqual(self.check({"a.cpp": SOUND}, together=True), 0)
        self.assertNotEqual(self.check({"a.cpp": SOUND, "b.cpp": UNUSED}, together=True), 0)

    def test_files_of_the_other_platform_are_left_out(self):
        self.assertEqual(self.check({"a.cpp": SOUND, "a_win.cpp": UNUSED}), 0)


if __name__ == "__main__":
    unittest.main()
