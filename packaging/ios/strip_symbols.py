#!/usr/bin/env python3
"""Removes the local symbols and their names, which are half of the library. Symbols that the loader
needs are kept, and no code or data moves.

usage: strip_symbols.py LINKED LIBRARY
"""
import struct
import sys

from macho import LC_DYSYMTAB, LC_SYMTAB, MachO

# Flags of entries of the indirect symbol table that do not refer to a symbol.
NO_SYMBOL = 0x80000000 | 0x40000000


def symbols_after(file, first):
    """Yields the name and the remaining bytes of each entry, from index first on."""
    command = file.offset_of(LC_SYMTAB)
    start, count, strings = (file.word(command + offset) for offset in (8, 12, 16))
    size = 16 if file.is_64_bit else 12
    for at in range(start + first * size, start + count * size, size):
        name = strings + file.word(at)
        yield bytes(file.data[name:file.data.index(0, name)]), bytes(file.data[at + 4:at + size])


def strip(data):
    file = MachO(data)
    table, dynamic = file.offset_of(LC_SYMTAB), file.offset_of(LC_DYSYMTAB)
    first_local, locals_ = file.word(dynamic + 8), file.word(dynamic + 12)
    if first_local != 0:
        raise ValueError('the local symbols are not the first ones')
    indirect, count = file.word(dynamic + 56), file.word(dynamic + 60)
    start = file.word(table + 8)
    if not start < indirect < file.word(table + 16):
        raise ValueError('the tables of symbols and strings are not the last ones')
    entries, strings = b'', b'\0'
    for name, rest in symbols_after(file, locals_):
        entries += struct.pack('<I', len(strings)) + rest
        strings += name + b'\0'
    indices = b''.join(
        struct.pack('<I', index if index & NO_SYMBOL else index - locals_)
        for index in struct.unpack_from(f'<{count}I', file.data, indirect))
    file.set_word(table + 12, file.word(table + 12) - locals_)
    file.set_word(table + 16, start + len(entries) + len(indices))
    file.set_word(table + 20, len(strings))
    file.set_word(dynamic + 12, 0)
    # The indices of the first defined and the first undefined symbol.
    for field in (16, 24):
        file.set_word(dynamic + field, file.word(dynamic + field) - locals_)
    file.set_word(dynamic + 56, start + len(entries))
    del file.data[start:]
    file.data += entries + indices + strings
    last = file.segment('__LINKEDIT')
    file.resize_segment(last, last.size, len(file.data) - last.file_offset)
    return file.data


def main():
    linked, library = sys.argv[1:]
    with open(linked, 'rb') as file:
        stripped = strip(file.read())
    with open(library, 'wb') as file:
        file.write(stripped)


if __name__ == '__main__':
    main()
