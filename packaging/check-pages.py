#!/usr/bin/env python3
"""Reads the pages of a package and fails where one is not as a customer needs it:
packaging/check-pages.py FOLDER

  - Every link and picture leads to what is in the folder, to a heading that is there.
  - Every page and picture is reached from LISEZ-MOI.html.
  - A page says its language and character set, and no mark of how it was written is left in its text.
"""
import os
import re
import sys
from html.parser import HTMLParser
from pathlib import Path
from urllib.parse import unquote

LEFT = re.compile(r'\]\(|\*\*|```|^\s*\||^#+ |raw HTML omitted', re.M)


class Page(HTMLParser):
    def __init__(self, text):
        super().__init__()
        self.anchors, self.ways, self.words = set(), [], []
        self.language = self.characters = None
        self.quoted = 0
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        each = dict(attributes)
        self.anchors.add(each.get('id'))
        self.ways += [each[name] for name in ('href', 'src') if name in each]
        self.quoted += tag in ('code', 'pre', 'style')
        if tag == 'html':
            self.language = each.get('lang')
        if tag == 'meta':
            self.characters = each.get('charset', self.characters)

    def handle_endtag(self, tag):
        self.quoted -= tag in ('code', 'pre', 'style')

    def handle_data(self, data):
        if not self.quoted:
            self.words.append(data)

    def handle_comment(self, data):
        self.words.append(data)


def check(folder):
    pages = {path: Page(path.read_text(encoding='utf-8')) for path in sorted(folder.rglob('*.html'))}
    faults = []
    reached = set()
    for path, page in pages.items():
        name = path.relative_to(folder)
        if page.language not in ('fr', 'en') or page.characters != 'utf-8':
            faults.append(f'{name}: language or character set')
        faults += [f'{name}: {found[0]!r} is left' for found in LEFT.finditer(''.join(page.words))]
        for way in page.ways:
            if re.match(r'https?:|mailto:', way):
                continue
            file, _, place = way.partition('#')
            target = Path(os.path.normpath(path.parent / unquote(file))) if file else path
            if not target.exists() or folder not in (target, *target.parents):
                faults.append(f'{name}: {way} leads nowhere')
            elif place and unquote(place) not in pages[target].anchors:
                faults.append(f'{name}: {way} names no heading')
            if target != path:
                reached.add(target)
    for path in sorted((folder / 'documents').rglob('*')):
        if path.is_file() and path not in reached:
            faults.append(f'{path.relative_to(folder)} is not reached from any page')
    return len(pages), faults


def main():
    count, faults = check(Path(sys.argv[1]).resolve())
    for fault in faults:
        print(fault)
    print(f'{count} pages, {len(faults)} faults')
    return 1 if faults or count == 0 else 0


if __name__ == '__main__':
    sys.exit(main())
