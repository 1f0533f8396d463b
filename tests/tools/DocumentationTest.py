"""What the documents say of the project is there: files, and programs in the examples."""

import os
import re
import unittest

ROOT = os.path.realpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", ".."))
FOLDERS = "app bench cmake desktop discovery docs info ledge organize packaging platform resources tests tools updates".split()


def documents():
    """Those that are part of the project, not of a build."""
    for folder, subfolders, files in os.walk(ROOT):
        subfolders[:] = [name for name in subfolders if name != "build" and not name.startswith(".") and name != "node_modules"]
        for name in files:
            if name.endswith(".md"):
                yield os.path.join(folder, name)


def namedFiles(text):
    """Paths from the top of the project that a text names in backticks or links to."""
    for quoted in re.findall(r"`([^`\n]+)`", text):
        word = quoted.split()[0]
        if re.fullmatch(rf"({'|'.join(FOLDERS)})/[\w./-]+", word):
            yield word.rstrip("/")


def sourceTexts():
    for top in FOLDERS:
        for folder, _, files in os.walk(os.path.join(ROOT, top)):
            for name in files:
                if name.endswith((".h", ".cpp", ".mm")):
                    with open(os.path.join(folder, name), encoding="utf-8") as file:
                        yield file.read()


class Documentation(unittest.TestCase):
    def test_files_that_documents_name_exist(self):
        count = 0
        for document in documents():
            with open(document, encoding="utf-8") as file:
                for name in namedFiles(file.read()):
                    count += 1
                    exists = any(os.path.exists(os.path.join(ROOT, name + ending)) for ending in ("", ".h", ".cpp", ".in"))
                    self.assertTrue(exists, f"{os.path.relpath(document, ROOT)} names {name}")
        self.assertGreater(count, 50)

    def test_links_between_documents_lead_somewhere(self):
        for document in documents():
            with open(document, encoding="utf-8") as file:
                links = re.findall(r"\]\(([^)#\s]+)", file.read())
            for link in links:
                if not re.match(r"[a-z]+:", link):
                    self.assertTrue(os.path.exists(os.path.join(os.path.dirname(document), link)),
                                    f"{os.path.relpath(document, ROOT)} links to {link}")

    def test_a_click_is_walked_with_functions_that_exist(self):
        with open(os.path.join(ROOT, "docs", "a-click.md"), encoding="utf-8") as file:
            names = {name.split("::")[-1] for name in re.findall(r"`((?:\w+::)*[A-Za-z]\w+)`", file.read())}
        self.assertGreater(len(names), 15)
        sources = "".join(sourceTexts())
        self.assertEqual([name for name in sorted(names) if not re.search(rf"\b{name}\b", sources)], [])


if __name__ == "__main__":
    unittest.main()
