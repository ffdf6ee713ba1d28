#!/usr/bin/env python3
import importlib.util
import pathlib
import tempfile
import unittest

spec = importlib.util.spec_from_file_location(
    "check_paths", pathlib.Path(__file__).with_name("check_paths.py"))
check_paths = importlib.util.module_from_spec(spec)
spec.loader.exec_module(check_paths)


class OffencesTest(unittest.TestCase):
    def offences(self, text):
        with tempfile.TemporaryDirectory() as name:
            project = pathlib.Path(name)
            for path in ["src/text/text.h", "tests/house/a.py"] + check_paths.DOCUMENTS:
                (project / path).parent.mkdir(parents=True, exist_ok=True)
                (project / path).write_text("", encoding="utf-8")
            (project / "README.md").write_text(text, encoding="utf-8")
            return list(check_paths.offences(project))

    def test_accepts_what_exists(self):
        self.assertEqual(self.offences("`src/text/text.h` and `text/text.h`, `tests/house`"), [])
        self.assertEqual(self.offences("[it](docs/release.md) and [more](https://example.org/a)"), [])

    def test_finds_a_path_that_does_not_exist(self):
        self.assertEqual(self.offences("\n`src/text/gone.h`"), ["README.md:2: no src/text/gone.h"])

    def test_finds_a_path_within_a_command(self):
        self.assertTrue(self.offences("`python3 tests/gone.py .`"))

    def test_finds_a_dead_link(self):
        self.assertTrue(self.offences("[it](docs/gone.md)"))

    def test_passes_over_what_is_no_path_of_the_project(self):
        self.assertEqual(self.offences("`build/native/a` `Private/Public` `a/b.h` `--json`"), [])


if __name__ == "__main__":
    unittest.main()
