"""Inspects what scripts/device builds: the library's load commands, symbols and signature, and the
package.

usage: structure_test.py FOLDER-OF-THE-PROJECT
"""
import glob
import hashlib
import io
import os
import plistlib
import re
import struct
import subprocess
import sys
import tarfile
import tempfile
import unittest

PROJECT = sys.argv.pop()
sys.path.insert(0, os.path.join(PROJECT, 'packaging/ios'))
from link_armv7 import read_stub
from macho import MachO
BUILDS = {'arm64': 'build/ios/bin', 'armv7': 'build/ios-armv7/bin'}
INSTALLED = 'Library/MobileSubstrate/DynamicLibraries/'
PAGE = 'Library/PreferenceLoader/Preferences/'


def output(*words):
    return subprocess.run(words, capture_output=True, text=True, check=True).stdout


def stubs(processor):
    """Yields the install name and the symbols of every library that ours links against."""
    for path in glob.glob(os.path.join(PROJECT, 'packaging/ios/stubs/*.tbd')):
        install_name, symbols = read_stub(path, processor)
        yield install_name, set(symbols)


def bytes_of(path):
    with open(path, 'rb') as file:
        return file.read()


def leb(data, at):
    """Reads an unsigned LEB128 number. Returns it and the offset of what follows."""
    number = shift = 0
    while True:
        number |= (data[at] & 0x7f) << shift
        shift, at = shift + 7, at + 1
        if data[at - 1] < 0x80:
            return number, at


def built(processor, name):
    return os.path.join(PROJECT, BUILDS[processor], name)


class FirstCalls:
    """A file's lazily bound calls: each goes through a stub to a pointer, which at first leads to a
    helper that makes the loader bind the pointer according to an entry of a table."""

    def __init__(self, library):
        self.file = MachO(bytes_of(library))
        self.segments = list(self.file.segments())
        self.table = self.file.word(self.file.offset_of(0x80000022) + 32)
        names = output('llvm-objdump-19', '--macho', '--indirect-symbols', library)
        self.named = {int(address, 16): name for address, name in
                      re.findall(r'^0x([0-9a-f]+) +\d+ (\S+)$', names, re.MULTILINE)}
        rebases = output('llvm-objdump-19', '--macho', '--rebase', library)
        self.rebased = {int(address, 16) for address in re.findall(r'0x([0-9A-F]+)  pointer', rebases)}

    def section(self, name):
        """Returns the addresses of a section's entries. Only the size of stubs is in the header."""
        at = next(at for at in self.file.sections() if
                  self.file.data[at:at + 16].rstrip(b'\0') == name.encode())
        size = 8 if self.file.is_64_bit else 4
        start, length = (int.from_bytes(self.file.data[at + 32 + size * each:][:size], 'little')
                         for each in (0, 1))
        stub = self.file.word(at + (72 if self.file.is_64_bit else 64))
        return range(start, start + length, stub or size)

    def at(self, address, words=1):
        """Returns the words at an address."""
        inside = next(each for each in self.segments if 0 <= address - each.address < each.file_size)
        place = inside.file_offset + address - inside.address
        return struct.unpack_from(f'<{words}I', self.file.data, place)

    def pointer_at(self, address):
        low, *high = self.at(address, 2 if self.file.is_64_bit else 1)
        return low + sum(word << 32 for word in high)

    def pointer_of_stub(self, stub):
        if self.file.is_64_bit:
            page, load, jump = self.at(stub, 3)
            assert (page & 0x9f00001f, load & 0xffc003ff, jump) == (0x90000010, 0xf9400210, 0xd61f0200)
            pages = (page >> 29 & 3) | (page >> 5 & 0x7ffff) << 2
            return (stub & ~0xfff) + (pages << 12) + (load >> 10 & 0xfff) * 8
        *code, distance = self.at(stub, 4)
        assert code == [0xe59fc004, 0xe08fc00c, 0xe59cf000], code
        return (stub + 12 + distance) & 0xffffffff

    def entry_of_helper(self, helper):
        """Returns the name and the pointer of the table entry that the helper passes to the loader."""
        load, branch, at = self.at(helper, 3)
        if self.file.is_64_bit:
            assert (load, branch >> 26) == (0x18000050, 5)
            target = helper + 4 + 4 * ((branch & 0x3ffffff) - ((branch & 0x2000000) << 1))
        else:
            assert (load, branch >> 24) == (0xe59fc000, 0xea)
            target = helper + 12 + 4 * ((branch & 0xffffff) - ((branch & 0x800000) << 1))
        assert target == self.section('__stub_helper').start, hex(target)
        data, at = self.file.data, self.table + at
        name = place = None
        while data[at] != 0x90:
            opcode, small, at = data[at] & 0xf0, data[at] & 0xf, at + 1
            if opcode == 0x40:
                end = data.index(0, at)
                name, at = data[at:end].decode(), end + 1
            elif opcode == 0x70:
                offset, at = leb(data, at)
                place = self.segments[small].address + offset
            else:
                assert opcode == 0x10, hex(opcode)
        return name, place


def check_signature(data, identifier):
    """Checks every hash of every code directory. Returns the hash algorithms in their order."""
    command = data.find(struct.pack('<II', 0x1d, 16))
    start = struct.unpack_from('<I', data, command + 8)[0]
    magic, _, count = struct.unpack_from('>III', data, start)
    assert magic == 0xfade0cc0, hex(magic)
    blobs = dict(struct.unpack_from('>II', data, start + 12 + 8 * each) for each in range(count))
    algorithms = []
    for slot in (0, 0x1000):
        at = start + blobs[slot]
        (magic, _, _, flags, hashes, name, special, pages, limit, size, kind, _,
         page_bits) = struct.unpack_from('>IIIIIIIIIBBBB', data, at)
        assert (magic, flags, limit) == (0xfade0c02, 2, start), (hex(magic), flags, limit)
        algorithms.append({1: 'sha1', 2: 'sha256'}[kind])
        assert data[at + name:].startswith(identifier.encode() + b'\0')
        page = 1 << page_bits
        parts = [data[offset:min(offset + page, limit)] for offset in range(0, limit, page)]
        assert pages == len(parts)
        requirements = start + blobs[2]
        length = struct.unpack_from('>I', data, requirements + 4)[0]
        expected = {index: part for index, part in enumerate(parts)}
        expected[-2] = data[requirements:requirements + length]
        assert special == 2
        for index, part in expected.items():
            stored = data[at + hashes + index * size:at + hashes + (index + 1) * size]
            assert stored == hashlib.new(algorithms[-1], part).digest(), (algorithms[-1], index)
    return algorithms


class Arm64Library(unittest.TestCase):
    processor, name, initializers, other_libraries = 'arm64', 'Lumora8.dylib', 1, set()
    identifier = 'com.brightfen.lumora'

    def setUp(self):
        self.library = built(self.processor, self.name)
        self.headers = output('llvm-objdump-19', '--macho', '--private-headers', self.library)

    def test_loads_on_the_oldest_supported_system(self):
        commands = re.findall(r'cmd (LC_\w+)', self.headers)
        self.assertIn('LC_DYLD_INFO_ONLY', commands)
        self.assertNotIn('LC_DYLD_CHAINED_FIXUPS', commands)
        self.assertNotIn('LC_BUILD_VERSION', commands)
        for needed in ('LC_CODE_SIGNATURE', 'LC_UUID'):
            self.assertEqual(commands.count(needed), 1, needed)
        self.assertNotRegex(self.headers, r'cryptid [^0]')
        segments = [(each.address, each.size) for each in MachO(bytes_of(self.library)).segments()]
        for (address, size), (following, _) in zip(segments, segments[1:]):
            self.assertEqual(address + size, following)
        self.assertRegex(self.headers, r'LC_VERSION_MIN_IPHONEOS\n.*\n *version 8\.0\n')
        self.check_kind()

    def check_kind(self):
        self.assertRegex(self.headers, r'LC_ID_DYLIB\n.*\n *name /' + INSTALLED + 'Lumora8.dylib ')

    def test_needs_only_libraries_and_symbols_in_the_stubs(self):
        known = dict(stubs(self.processor))
        loaded = re.findall(r'LC_LOAD_DYLIB\n.*\n *name (\S+) ', self.headers)
        self.assertEqual({re.sub('.*/', '', name) for name in set(known) - set(loaded)},
                         self.other_libraries)
        needed = set(output('llvm-nm-19', '--undefined-only', '--just-symbol-name',
                            self.library).split())
        self.assertEqual(needed - set().union(*known.values()), set())

    def test_binds_every_first_call_to_its_symbol(self):
        calls = FirstCalls(self.library)
        pointers = calls.section('__la_symbol_ptr')
        stubs = {calls.pointer_of_stub(stub): stub for stub in calls.section('__stubs')}
        self.assertEqual(set(stubs), set(pointers))
        for pointer in pointers:
            name = calls.named[pointer]
            self.assertEqual(calls.named[stubs[pointer]], name)
            self.assertIn(pointer, calls.rebased)
            self.assertEqual(calls.entry_of_helper(calls.pointer_at(pointer)), (name, pointer))

    def test_has_its_initializers_and_no_exports(self):
        section = output('llvm-objdump-19', '--macho', '--section=__DATA,__mod_init_func',
                         self.library)
        self.assertEqual(len(re.findall(r'^0x', section, re.MULTILINE)), self.initializers, section)
        symbols = output('llvm-nm-19', '--extern-only', '--defined-only', self.library)
        # The linker exports the start of every program.
        self.assertEqual(set(symbols.split()[2::3]) - {'__mh_execute_header'}, set())

    def test_contains_no_build_path(self):
        self.assertNotIn(PROJECT.encode(), bytes_of(self.library))

    def test_has_no_symbols_but_a_complete_map(self):
        names = output('llvm-nm-19', '--defined-only', self.library)
        self.assertLessEqual(names.count('\n'), 1, names)
        uuid = re.search(r'uuid (\S+)', self.headers)[1]
        mapped = bytes_of(os.path.join(PROJECT, f'build/device-package/maps/{uuid}.map')).decode()
        addresses = {int(line.split()[0], 16) for line in mapped.splitlines()}
        starts = re.findall(r'^([0-9a-f]+)$', output('llvm-objdump-19', '--macho',
                                                     '--function-starts', self.library), re.MULTILINE)
        self.assertGreater(len(starts), 300)
        self.assertLessEqual({int(start, 16) for start in starts}, addresses)

    def test_builds_reproducibly(self):
        made = bytes_of(self.library)
        os.remove(self.library)
        output('cmake', '--build', os.path.dirname(os.path.dirname(self.library)))
        self.assertEqual(bytes_of(self.library), made)

    def test_is_signed_for_old_and_new_systems(self):
        signed = bytes_of(self.library)
        self.assertEqual(check_signature(signed, self.identifier), ['sha1', 'sha256'])
        changed = bytearray(signed)
        changed[0x5000] ^= 1
        with self.assertRaises(AssertionError):
            check_signature(bytes(changed), self.identifier)


class Armv7Library(Arm64Library):
    processor = 'armv7'

    def test_links_only_objects_with_private_symbols(self):
        """The linker resolves pointers to wrong symbols if only some are private to the library."""
        objects = glob.glob(os.path.join(PROJECT, 'build/ios-armv7/[a-z]*/**/*.obj'), recursive=True)
        self.assertGreater(len(objects), 40)
        symbols = output('llvm-nm-19', '--format=darwin', '--defined-only', *objects)
        self.assertRegex(symbols, r'\) (weak )?private external ')
        self.assertNotRegex(symbols, r'\) (weak )?external ')


class Arm64Program(Arm64Library):
    name, other_libraries = 'lumora', {'AppSupport', 'CoreImage', 'QuartzCore', 'CydiaSubstrate'}
    identifier = 'com.brightfen.lumora.command'
    # The command-line parser has constants in each file that uses it.
    initializers = 20

    def check_kind(self):
        self.assertRegex(self.headers, r'EXECUTE .*\bPIE\b')
        self.assertRegex(self.headers, r'LC_LOAD_DYLINKER\n.*\n *name /usr/lib/dyld ')
        self.assertEqual(self.headers.count('cmd LC_MAIN'), 1)


class Armv7Program(Arm64Program):
    processor = 'armv7'


class Package(unittest.TestCase):
    path, = glob.glob(os.path.join(PROJECT, 'build/device-package/*.deb'))

    def test_states_its_name_and_dependencies(self):
        fields = dict(line.split(': ', 1) for line in output('dpkg-deb', '-f', self.path).splitlines()
                      if not line.startswith(' '))
        self.assertEqual(fields['Package'], 'com.brightfen.lumora')
        self.assertEqual(fields['Architecture'], 'iphoneos-arm')
        self.assertEqual(fields['Recommends'], 'preferenceloader')
        self.assertEqual(fields['Depends'], 'mobilesubstrate, firmware (>= 8.0), firmware (<< 14.0)')
        name = f'com.brightfen.lumora_{fields["Version"]}_iphoneos-arm.deb'
        self.assertEqual(os.path.basename(self.path), name)

    def test_contains_library_command_page_and_help(self):
        files = {}
        archive = subprocess.run(['dpkg-deb', '--fsys-tarfile', self.path], capture_output=True,
                                 check=True).stdout
        with tarfile.open(fileobj=io.BytesIO(archive)) as tar:
            for member in tar:
                self.assertEqual((member.uid, member.gid, member.mtime), (0, 0, 0), member.name)
                if member.isfile():
                    files[member.name.removeprefix('./')] = tar.extractfile(member).read()
                    self.assertNotIn(PROJECT.encode(), files[member.name.removeprefix('./')])
        documents = 'usr/share/doc/com.brightfen.lumora/'
        self.assertEqual(set(files), {
            INSTALLED + 'Lumora8.dylib', INSTALLED + 'Lumora8.plist', 'usr/bin/lumora',
            PAGE + 'Lumora.plist', documents + 'help.txt', documents + 'copyright'})
        for name in (INSTALLED + 'Lumora8.dylib', 'usr/bin/lumora'):
            self.check_processors(os.path.basename(name), files[name])
        self.assertEqual(plistlib.loads(files[INSTALLED + 'Lumora8.plist']),
                         {'Filter': {'Bundles': ['com.apple.springboard'],
                                     'CoreFoundationVersion': [1140.1, 1740]}})

    def check_processors(self, name, data):
        with tempfile.TemporaryDirectory() as folder:
            both = os.path.join(folder, 'both')
            with open(both, 'wb') as file:
                file.write(data)
            self.assertEqual(set(output('llvm-lipo-19', '-archs', both).split()), set(BUILDS))
            for processor in BUILDS:
                one = os.path.join(folder, processor)
                output('llvm-lipo-19', '-thin', processor, both, '-output', one)
                self.assertEqual(bytes_of(one), bytes_of(built(processor, name)))

    def test_offers_to_restart_the_home_screen(self):
        with tempfile.TemporaryDirectory() as folder:
            output('dpkg-deb', '--control', self.path, folder)
            for script, action in (('postinst', 'configure'), ('postrm', 'remove')):
                path = os.path.join(folder, script)
                self.assertIn('killall SpringBoard', output('sh', path, action))
                reading, writing = os.pipe()
                subprocess.run(['sh', path, action], check=True, pass_fds=[writing],
                               stdout=subprocess.DEVNULL,
                               env={'CYDIA': f'{writing} 1', 'PATH': os.environ['PATH']})
                os.close(writing)
                with os.fdopen(reading) as file:
                    self.assertEqual(file.read(), 'finish:restart\n')

    def test_is_readable_by_old_package_managers(self):
        self.assertEqual(output('ar', 't', self.path).split(),
                         ['debian-binary', 'control.tar.gz', 'data.tar.gz'])


class Sources(unittest.TestCase):
    def test_check_the_system_only_in_the_backends(self):
        files = output('git', '-C', PROJECT, 'ls-files', 'src').split()
        asking = [name for name in files if not re.match('src/platform/(linux|ios)/', name) and
                  re.search(r'#\s*(el)?if.*(__linux|__APPLE__|TARGET_OS|__unix|GNUSTEP)',
                            bytes_of(os.path.join(PROJECT, name)).decode())]
        self.assertEqual(asking, [])


if __name__ == '__main__':
    unittest.main()
