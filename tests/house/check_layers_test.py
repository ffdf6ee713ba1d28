#!/usr/bin/env python3
"""The layer check finds each kind of offence and accepts what is allowed."""
import pathlib
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import check_layers  # noqa: E402


class LayerCheck(unittest.TestCase):
    def offences(self, path, text):
        with tempfile.TemporaryDirectory() as folder:
            file = pathlib.Path(folder) / path
            file.parent.mkdir(parents=True)
            file.write_text(text, encoding="utf-8")
            return list(check_layers.offences(pathlib.Path(folder)))

    def test_accepts_an_include_that_points_down(self):
        self.assertEqual(self.offences("source/a.cpp", '#include "text/text.h"\n'), [])
        self.assertEqual(self.offences("needs/ui/a.cpp", '#include "toolkit/form.h"\n'), [])

    def test_finds_an_include_that_points_up(self):
        self.assertTrue(self.offences("vb/a.h", '#include "source/item_text.h"\n'))

    def test_finds_an_include_between_folders_of_one_row(self):
        self.assertTrue(self.offences("search/a.h", '#include "basket/basket.h"\n'))

    def test_finds_rules_that_see_the_toolkit(self):
        self.assertTrue(self.offences("needs/a.h", '#include "toolkit/form.h"\n'))

    def test_finds_rules_that_see_forms(self):
        self.assertTrue(self.offences("cli/a.h", '#include "basket/ui/basket_form.h"\n'))

    def test_finds_windows_headers_outside_their_places(self):
        self.assertTrue(self.offences("library/file_io.cpp", "#include <windows.h>\n"))
        self.assertEqual(self.offences("library/file_io_win32.cpp", "#include <windows.h>\n"), [])

    def test_finds_windows_code_outside_its_places(self):
        self.assertTrue(self.offences("shell/a.h", '#include "win32/unique_handle.h"\n'))
        self.assertEqual(self.offences("shell/a.h", '#include "win32/registry.h"\n'), [])

    def test_finds_platform_conditions(self):
        self.assertTrue(self.offences("text/a.cpp", "#ifdef _WIN32\n"))

    def test_finds_unknown_folders(self):
        self.assertTrue(self.offences("helpers/a.h", "\n"))


if __name__ == "__main__":
    unittest.main()
