"""The guide's pages: alike in both languages, no dead link, no missing picture, captions as the
program has them, and pages of HTML that come out the same every time.

usage: guide_pages_test.py PROJECT-FOLDER
"""
import filecmp
import importlib.machinery
import importlib.util
import re
import shutil
import sys
import tempfile
import unittest
import urllib.parse
from html.parser import HTMLParser
from pathlib import Path

PROJECT = Path(sys.argv.pop(1)).resolve()
GUIDE = PROJECT / "docs" / "guide"
LANGUAGES = ("sk", "en")

# What is bold on a page is a caption of the program. These do not stand in texts.h.
OTHER_CAPTIONS = {"Const", "Declare", "Type", "Private", "Public"}


def load_builder():
    loader = importlib.machinery.SourceFileLoader("guide", str(PROJECT / "scripts" / "guide"))
    spec = importlib.util.spec_from_loader("guide", loader)
    module = importlib.util.module_from_spec(spec)
    sys.dont_write_bytecode = True
    loader.exec_module(module)
    return module


BUILDER = load_builder()


def text_of(language, page):
    return (GUIDE / language / f"{page}.md").read_text(encoding="utf-8")


def prose_of(text):
    """The text without its fenced blocks and code spans."""
    return re.sub(r"`[^`\n]*`", "", re.sub(r"^```.*?^```$", "", text, flags=re.M | re.S))


def shape_of(text):
    """What a page is made of, in order: headings by level, pictures, fenced blocks, tables' rows,
    numbered lines."""
    without_code = re.sub(r"^```(\w*).*?^```$", r"<fence \1>", text, flags=re.M | re.S)
    shape = []
    for line in without_code.split("\n"):
        if match := re.match(r"#+ |<fence \w*>|\||\d+\. |- ", line):
            shape.append(match.group(0))
        shape += re.findall(r"!\[[^\]]*\]\(([^)]*)\)", line)
    return shape


def captions():
    source = (PROJECT / "src" / "text" / "user_texts.h").read_text(encoding="utf-8")
    return {text.replace("&", "").strip() for text in re.findall(r'u"((?:[^"\\]|\\.)*)"', source)}


class Page(HTMLParser):
    def __init__(self, html):
        super().__init__()
        self.ids, self.links, self.resources = set(), [], []
        self.feed(html)

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        if "id" in values:
            self.ids.add(values["id"])
        if tag == "a":
            self.links.append(values["href"])
        elif tag == "link":
            self.resources.append(values["href"])
        elif "src" in values:
            self.resources.append(values["src"])


class PagesTest(unittest.TestCase):
    def test_both_languages_have_the_same_pages(self):
        for language in LANGUAGES:
            self.assertEqual(sorted(path.stem for path in (GUIDE / language).glob("*.md")),
                             sorted(BUILDER.PAGES), language)

    def test_both_languages_have_the_same_shape(self):
        for page in BUILDER.PAGES:
            self.assertEqual(shape_of(text_of("sk", page)), shape_of(text_of("en", page)), page)

    def test_every_picture_is_shown_and_every_shown_picture_is_there(self):
        there = {path.name for path in (GUIDE / "images").glob("*")}
        for language in LANGUAGES:
            shown = set()
            for page in BUILDER.PAGES:
                shown |= {picture.removeprefix("../images/") for picture in
                          re.findall(r"!\[[^\]]+\]\(([^)]*)\)", text_of(language, page))}
            self.assertEqual(shown, there, language)

    def test_bold_words_are_captions_of_the_program(self):
        known = captions() | OTHER_CAPTIONS
        for language in LANGUAGES:
            for page in BUILDER.PAGES:
                for bold in re.findall(r"\*\*([^*]+)\*\*", prose_of(text_of(language, page))):
                    caption = " ".join(bold.split())
                    self.assertTrue(caption in known, f"{language}/{page}: {caption}")

    def test_readme_counts_the_bundled_library_as_its_report_does(self):
        readme = (PROJECT / "README.md").read_text(encoding="utf-8")
        report = (PROJECT / "data" / "Win32.report.md").read_text(encoding="utf-8")
        told = re.findall(r"\b(\d+,\d+)\s+(?:procedures|constants|records)", readme)
        everyday = re.search(r"^\| `Win32.api` \| (\d+) \| (\d+) \| (\d+) \|$", report, re.M)
        in_all = re.findall(r"^(\d+) in the libraries", report, re.M)
        self.assertEqual(len(in_all), 3)
        self.assertEqual([count.replace(",", "") for count in told], [*everyday.groups(), *in_all])

    def test_the_caption_check_knows_a_wrong_caption(self):
        self.assertIn("Uložiť ako...", captions())
        self.assertNotIn("Ulož ako...", captions())


@unittest.skipUnless(shutil.which("pandoc"), "pandoc is not installed")
class HtmlTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.out = Path(cls.folder.name) / "guide"
        cls.build(cls.out)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    @staticmethod
    def build(out):
        sys.argv = ["guide", str(out)]
        BUILDER.main()

    def page(self, path):
        return Page(path.read_text(encoding="utf-8"))

    def files(self, out):
        return sorted(path.relative_to(out) for path in out.rglob("*") if path.is_file())

    def test_links_lead_to_pages_and_places_that_are_there(self):
        for path in self.out.rglob("*.html"):
            for link in self.page(path).links:
                if re.match(r"\w+:", link):
                    continue
                name, _, place = urllib.parse.unquote(link).partition("#")
                target = (path.parent / name).resolve() if name else path
                self.assertTrue(target.is_file(), f"{path}: {link}")
                if place:
                    self.assertIn(place, self.page(target).ids, f"{path}: {link}")

    def test_nothing_is_loaded_from_elsewhere(self):
        for path in self.out.rglob("*.html"):
            for resource in self.page(path).resources:
                self.assertTrue((path.parent / resource).resolve().is_relative_to(self.out))
                self.assertTrue((path.parent / resource).is_file(), f"{path}: {resource}")
        self.assertNotRegex((self.out / "guide.css").read_text(encoding="utf-8"), r"url\(|@import")

    def test_building_again_elsewhere_gives_the_same_bytes(self):
        with tempfile.TemporaryDirectory() as folder:
            again = Path(folder) / "another" / "place"
            self.build(again)
            files = self.files(self.out)
            self.assertEqual(files, self.files(again))
            for file in files:
                self.assertTrue(filecmp.cmp(self.out / file, again / file, shallow=False), file)


if __name__ == "__main__":
    unittest.main()
