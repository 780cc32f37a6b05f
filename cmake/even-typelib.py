#!/usr/bin/env python3
"""Takes out of a type library when it was compiled: cmake/even-typelib.py FILE

The compiler writes it as a text and as a number; the same source is to give the same bytes.
"""
import re
import struct
import sys
import time

WRITTEN = re.compile(rb'(Created by WIDL version \S+ at )(\w{3} \w{3} [ \d]\d [\d:]{8} \d{4})')


def main():
    with open(sys.argv[1], 'rb') as file:
        data = file.read()
    found = WRITTEN.search(data)
    if not found:
        sys.exit('no time of its making')
    seconds = time.mktime(time.strptime(found[2].decode(), '%a %b %d %H:%M:%S %Y'))
    number = struct.pack('<I', int(seconds))
    if data.count(number) != 1:
        sys.exit('not one number of that time')
    data = data.replace(number, bytes(4)).replace(found[2], b'Thu Jan  1 00:00:00 1970')
    with open(sys.argv[1], 'wb') as file:
        file.write(data)


if __name__ == '__main__':
    main()
