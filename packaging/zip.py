#!/usr/bin/env python3
"""A zip of a folder, the same for the same files: packaging/zip.py ZIP FOLDER"""
import os
import sys
import time
import zipfile


def files_of(folder):
    for parent, folders, names in os.walk(folder):
        folders.sort()
        for name in sorted(names):
            yield os.path.join(parent, name)


def main():
    target, folder = sys.argv[1:]
    with zipfile.ZipFile(target, 'w', zipfile.ZIP_DEFLATED, compresslevel=9) as archive:
        for path in files_of(folder):
            inner = os.path.relpath(path, os.path.dirname(folder))
            when = time.gmtime(os.stat(path).st_mtime)[:6]
            each = zipfile.ZipInfo(inner, when)
            each.compress_type = zipfile.ZIP_DEFLATED
            each.external_attr = 0o644 << 16
            with open(path, 'rb') as content:
                archive.writestr(each, content.read())


if __name__ == '__main__':
    main()
