#!/usr/bin/env python3
"""Rewrites one file of the compiler's assembly, in place, for a linker that cannot deal with all of
it: pointers to other libraries' symbols become plain data, which it does bind; labels of data become
symbols, as of a label without one it finds the section's start only; all symbols become private to
the library, as it takes pointers to wrong ones where private and other symbols are mixed; and the
section of the Objective-C run-time's notes gets a name that it does not look into.

usage: armv7_assembly.py FILE.s VERSION-OF-THIS-SCRIPT
"""
import re
import sys

SECTION_NAME = '__objc_imageinfo'
SECTION_NAME_FOR_LINKER = '__objc_imagenote'


def data_labels(text):
    """The assembler's own labels, which begin with L, outside of code."""
    labels = set()
    is_code = False
    for line in text.splitlines():
        if section := re.match(r'\t\.section\t(\S+),', line):
            is_code = section[1].startswith('__TEXT,__text')
        elif (label := re.match(r'L([\w$.]+):', line)) and not is_code:
            labels.add(label[1])
    return labels


def rewrite(text):
    text = text.replace('__DATA,__nl_symbol_ptr,non_lazy_symbol_pointers', '__DATA,__nlptr')
    text = re.sub(r'\t\.indirect_symbol\t(\S+)\n\t\.long\t0', r'\t.long\t\1', text)
    text = text.replace('__DATA,' + SECTION_NAME, '__DATA,' + SECTION_NAME_FOR_LINKER)
    text = re.sub(r'^(\t\.globl\t(.*))$', r'\1\n\t.private_extern\t\2', text, flags=re.MULTILINE)
    labels = data_labels(text)
    return re.sub(r'\bL([\w$.]+)', lambda name: ('l' if name[1] in labels else 'L') + name[1], text)


def main():
    path, _ = sys.argv[1:]
    with open(path) as file:
        text = file.read()
    with open(path, 'w') as file:
        file.write(rewrite(text))


if __name__ == '__main__':
    main()
