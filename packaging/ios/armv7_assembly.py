#!/usr/bin/env python3
"""Rewrites a file of the compiler's assembly, in place, to avoid errors of the linker:

- It does not bind pointers to other libraries' symbols in their own section, so they become data.
- It replaces a data label that is not a symbol by the start of the section, so labels of data
  become symbols.
- It resolves pointers to wrong symbols if some are private and others are not, so all symbols
  become private to the library.
- It fails to read the section with the Objective-C image info, so that section is renamed.

usage: armv7_assembly.py FILE.s VERSION-OF-THIS-SCRIPT
"""
import re
import sys

SECTION_NAME = '__objc_imageinfo'
SECTION_NAME_FOR_LINKER = '__objc_imagenote'


def data_labels(text):
    """Returns the assembler's local labels, which start with L, outside of code."""
    labels = set()
    is_code = False
    for line in text.splitlines():
        if line.startswith('\t.section\t'):
            is_code = 'pure_instructions' in line
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
