#!/usr/bin/env python3
"""Writes the documents as pages that a browser shows: packaging/pages.py FOLDER VERSION

FOLDER is where the files are gathered as a customer has them. What is a link between two documents is one
between their pages. One to a document that customers do not have is left as text; one that leads
nowhere is an error.
"""
import html
import os
import posixpath
import re
import shutil
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
START = 'LISEZ-MOI.html'
GUIDE = 'documents/guide-utilisateur.html'
# Where each document goes, by its place in the project.
SHIPPED = {
    'packaging/LISEZ-MOI.md': START,
    'CHANGELOG.md': 'documents/changelog.html',
    'SECURITY.md': 'documents/security.html',
    'THIRD-PARTY.md': 'documents/third-party.html',
    **{f'docs/{name}.md': f'documents/{name}.html' for name in (
        'embedding', 'exploitation', 'guide-utilisateur', 'local-store', 'printed-documents',
        'record-layouts', 'shared-store')},
    **{str(path.relative_to(ROOT)): f'documents/guide/{path.stem}.html'
       for path in (ROOT / 'docs/guide').glob('*.md')},
}
# What stands in the package beside the pages.
OTHERS = {'LICENSE': 'LICENSE.txt'}
IN_FRENCH = re.compile(r'packaging/|docs/(exploitation|guide)')

PAGE = '''<!DOCTYPE html>
<html lang="{language}">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<title>{title}</title>
<link rel="stylesheet" href="{style}">
</head>
<body>
<nav>{navigation}</nav>
{body}</body>
</html>
'''


def words_of(markup):
    return html.unescape(re.sub(r'<[^>]*>', '', markup))


def anchor(heading):
    """As the project's own documents name their headings in links."""
    return re.sub(r'[^\w\- ]', '', words_of(heading).lower()).replace(' ', '-')


class Page:
    def __init__(self, source, folder):
        self.source, self.folder = source, folder
        self.target = SHIPPED[source]
        self.faults = []

    def way_to(self, target):
        return posixpath.relpath(target, posixpath.dirname(self.target) or '.')

    def place_of(self, link):
        """In the package, of what a link of the document names; None for what customers do not have."""
        path = posixpath.normpath(posixpath.join(posixpath.dirname(self.source), link))
        if path in SHIPPED or path in OTHERS:
            return SHIPPED.get(path) or OTHERS[path]
        if path.startswith('docs/images/') and (ROOT / path).is_file():
            target = 'documents' + path.removeprefix('docs')
            (self.folder / target).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(ROOT / path, self.folder / target)
            return target
        if not (ROOT / path).exists():
            self.faults.append(f'{self.source}: {link} is not there')
        return None

    def link(self, found):
        address, text = html.unescape(found[1]), found[2]
        path, _, place = address.partition('#')
        if not path or re.match(r'https?:|mailto:', address):
            return found[0]
        target = self.place_of(path)
        if target is None:
            return text
        way = self.way_to(target) + ('#' + place if place else '')
        return f'<a href="{html.escape(way)}">{text}</a>'

    def picture(self, found):
        target = self.place_of(html.unescape(found[1]))
        return found[0] if target is None else f'<img src="{html.escape(self.way_to(target))}"'

    # A document that is named only is a link too.
    def named(self, found):
        target = SHIPPED.get(found[1])
        if target is None or target == self.target:
            return found[0]
        return f'<a href="{self.way_to(target)}">{target.rsplit("/", 1)[-1]}</a>'

    def body(self):
        done = subprocess.run(['cmark-gfm', '-e', 'table', '-t', 'html', str(ROOT / self.source)],
                              check=True, capture_output=True, text=True)
        text = done.stdout
        text = re.sub(r'<a href="([^"]*)">(.*?)</a>', self.link, text, flags=re.S)
        text = re.sub(r'<img src="([^"]*)"', self.picture, text)
        text = re.sub(r'<code>([\w/-]+\.md)</code>', self.named, text)
        text = re.sub(r'<thead>\s*<tr>(\s*<th[^>]*></th>)*\s*</tr>\s*</thead>', '', text)
        return re.sub(r'<(h\d)>(.*?)</\1>', lambda h: f'<{h[1]} id="{anchor(h[2])}">{h[2]}</{h[1]}>', text)

    def navigation(self, version):
        ways = [(START, 'Tessaline ' + version)]
        if self.target.startswith('documents/guide/'):
            ways.append((GUIDE, "Guide de l'utilisateur"))
        return ' · '.join(f'<a href="{self.way_to(target)}">{text}</a>' for target, text in ways)

    def write(self, version):
        body = self.body()
        title = words_of(re.search(r'<h1[^>]*>(.*?)</h1>', body)[1])
        path = self.folder / self.target
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(PAGE.format(
            language='fr' if IN_FRENCH.match(self.source) else 'en', title=html.escape(title),
            style=self.way_to('documents/style.css'), navigation=self.navigation(version), body=body),
            encoding='utf-8', newline='\n')


def main():
    folder, version = Path(sys.argv[1]), sys.argv[2]
    faults = []
    for source in sorted(SHIPPED):
        page = Page(source, folder)
        page.write(version)
        faults += page.faults
    shutil.copy(ROOT / 'packaging/style.css', folder / 'documents')
    sys.exit('\n'.join(faults) if faults else 0)


if __name__ == '__main__':
    main()
