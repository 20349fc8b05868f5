#!/usr/bin/env python3
"""Links the library or the program for 32-bit processors. The only available linker that supports them cannot read
text stubs or one of the sections. So the stubs are turned into libraries without code, and the
section, which armv7_assembly.py has renamed, gets its original name back.

usage: link_armv7.py LINKER-OPTION... -o FILE OBJECT.obj... STUB.tbd...
"""
import os
import re
import subprocess
import sys
import tempfile

from armv7_assembly import SECTION_NAME, SECTION_NAME_FOR_LINKER
from macho import MachO

LINKER = ['ld64.lld.darwinold-13', '-arch', 'armv7', '-ios_version_min', '8.0', '-sdk_version',
          '8.0']
ASSEMBLER = ['clang++-19', '-target', 'armv7-apple-ios8.0', '-c']


def run_linker(*words):
    # The linker leaves memory between strings uninitialized. With this variable its contents do not
    # depend on addresses, so the result is reproducible.
    environment = dict(os.environ, MALLOC_PERTURB_='255')
    subprocess.run([*LINKER, *words], check=True, env=environment)


def read_stub(path, processor):
    """Returns the install name, and the symbols that the library has for this processor."""
    with open(path) as file:
        head, *exports = file.read().split('\n  - targets: ')
    symbols = []
    for text in exports:
        if processor + '-ios' not in text.partition('\n')[0]:
            continue
        symbols += re.findall(r'^      - (\S+)$', text, re.MULTILINE)
        for classes in re.findall(r'objc-classes: \[ (.*) \]', text):
            for name in classes.split(', '):
                symbols += ['_OBJC_CLASS_$_' + name, '_OBJC_METACLASS_$_' + name]
    return re.search(r"install-name: '(.*)'", head)[1], symbols


def make_library(stub, folder, others):
    install_name, symbols = read_stub(stub, 'armv7')
    base = os.path.join(folder, os.path.basename(stub))
    with open(base + '.s', 'w') as file:
        file.write('\t.data\n')
        for symbol in symbols:
            file.write(f'\t.globl\t{symbol}\n{symbol}:\n\t.long\t0\n')
    subprocess.run([*ASSEMBLER, base + '.s', '-o', base + '.o'], check=True)
    run_linker('-dylib', '-install_name', install_name, '-o', base + '.dylib', base + '.o', *others)
    return base + '.dylib'


def restore_section_name(data):
    file = MachO(data)
    for section in file.sections():
        if file.data[section:section + 16].rstrip(b'\0').decode() == SECTION_NAME_FOR_LINKER:
            file.data[section:section + 16] = SECTION_NAME.encode().ljust(16, b'\0')
    return file.data


def main():
    at = sys.argv.index('-o')
    options, linked, inputs = sys.argv[1:at], sys.argv[at + 1], sys.argv[at + 2:]
    objects = [path for path in inputs if not path.endswith('.tbd')]
    # The system library comes first, because all others need it.
    stubs = sorted((path for path in inputs if path.endswith('.tbd')),
                   key=lambda path: (os.path.basename(path) != 'libSystem.tbd', path))
    with tempfile.TemporaryDirectory() as folder:
        libraries = []
        for stub in stubs:
            libraries.append(make_library(stub, folder, libraries[:1]))
        # Exports nothing: the library is only mapped by the loader, and the program only run.
        run_linker(*options, '-exported_symbols_list', os.devnull, '-o', linked, *objects,
                   *libraries)
    with open(linked, 'rb') as file:
        restored = restore_section_name(file.read())
    with open(linked, 'wb') as file:
        file.write(restored)


if __name__ == '__main__':
    main()
