#!/usr/bin/env python3
"""Makes an installer's bytes those of its contents: packaging/even-msi.py MSI SECONDS

Its own identifier is otherwise drawn anew each time, and the times are those of its making. They stand
in its property set ([MS-OLEPS]): the identifier becomes one that follows from all the rest of the file, the
times SECONDS since 1970.
"""
import hashlib
import struct
import sys
import uuid

SUMMARY = uuid.UUID('f29f85e0-4ff9-1068-ab91-08002b27b3d9').bytes_le
FILETIME, TEXT = 0x40, 0x1E
TEMPLATE, REVISION, CREATED, SAVED = 7, 9, 12, 13
EPOCH = 11644473600


def properties(data):
    """Where each property's value begins, by its number."""
    at = data.index(SUMMARY)
    if data.count(SUMMARY) != 1:
        sys.exit('more than one property set')
    section = at - 28 + struct.unpack_from('<I', data, at + 16)[0]
    count = struct.unpack_from('<I', data, section + 4)[0]
    pairs = (struct.unpack_from('<II', data, section + 8 + 8 * i) for i in range(count))
    return {number: section + offset for number, offset in pairs}


def put_text(data, at, text):
    kind, size = struct.unpack_from('<II', data, at)
    if kind != TEXT or size != len(text) + 1:
        sys.exit('a text of another length')
    data[at + 8:at + 8 + len(text)] = text


def put_time(data, at, seconds):
    if struct.unpack_from('<I', data, at)[0] != FILETIME:
        sys.exit('no time')
    struct.pack_into('<Q', data, at + 4, (seconds + EPOCH) * 10_000_000)


def main():
    path, seconds = sys.argv[1], int(sys.argv[2])
    with open(path, 'rb') as file:
        data = bytearray(file.read())
    where = properties(data)
    for number in (CREATED, SAVED):
        put_time(data, where[number], seconds)
    template = bytes(data[where[TEMPLATE] + 8:]).split(b'\0')[0]
    put_text(data, where[TEMPLATE], template.split(b';')[0] + b';1036')
    put_text(data, where[REVISION], b'{' + b'0' * 36 + b'}')
    drawn = uuid.UUID(bytes=hashlib.sha256(data).digest()[:16], version=4)
    put_text(data, where[REVISION], b'{' + str(drawn).upper().encode() + b'}')
    with open(path, 'wb') as file:
        file.write(data)


if __name__ == '__main__':
    main()
