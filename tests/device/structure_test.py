"""Looks into what scripts/device has made: the library's load commands, its symbols and signature,
and the package.

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
sys.path.insert(0, os.path.join(PROJECT, 'device'))
from link_armv7 import read_stub
LIBRARIES = {'arm64': os.path.join(PROJECT, 'build/ios/bin/Lumora8.dylib'),
             'armv7': os.path.join(PROJECT, 'build/ios-armv7/bin/Lumora8.dylib')}
INSTALLED = 'Library/MobileSubstrate/DynamicLibraries/'


def output(*words):
    return subprocess.run(words, capture_output=True, text=True, check=True).stdout


def stubs(processor):
    """Install name and symbols of every library that we link against."""
    for path in glob.glob(os.path.join(PROJECT, 'device/stubs/*.tbd')):
        install_name, symbols = read_stub(path, processor)
        yield install_name, set(symbols)


def bytes_of(path):
    with open(path, 'rb') as file:
        return file.read()


def check_signature(data):
    """Every hash of every code directory, worked out anew; the algorithms found, in order."""
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
        assert data[at + name:].startswith(b'com.brightfen.lumora\0')
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
    processor = 'arm64'

    def setUp(self):
        self.library = LIBRARIES[self.processor]
        self.headers = output('llvm-objdump-19', '--macho', '--private-headers', self.library)

    def test_loads_on_the_oldest_system_that_we_name(self):
        commands = re.findall(r'cmd (LC_\w+)', self.headers)
        self.assertIn('LC_DYLD_INFO_ONLY', commands)
        self.assertNotIn('LC_DYLD_CHAINED_FIXUPS', commands)
        self.assertNotIn('LC_BUILD_VERSION', commands)
        for needed in ('LC_CODE_SIGNATURE', 'LC_UUID'):
            self.assertEqual(commands.count(needed), 1, needed)
        self.assertNotRegex(self.headers, r'cryptid [^0]')
        self.assertRegex(self.headers, r'LC_VERSION_MIN_IPHONEOS\n.*\n *version 8\.0\n')
        self.assertRegex(self.headers, r'LC_ID_DYLIB\n.*\n *name /' + INSTALLED + 'Lumora8.dylib ')

    def test_needs_only_the_libraries_and_symbols_that_the_stubs_name(self):
        known = dict(stubs(self.processor))
        loaded = re.findall(r'LC_LOAD_DYLIB\n.*\n *name (\S+) ', self.headers)
        self.assertEqual(set(loaded), set(known))
        needed = set(output('llvm-nm-19', '--undefined-only', '--just-symbol-name',
                            self.library).split())
        self.assertEqual(needed - set().union(*known.values()), set())

    def test_has_one_initialiser_and_exports_nothing(self):
        section = output('llvm-objdump-19', '--macho', '--section=__DATA,__mod_init_func',
                         self.library)
        self.assertEqual(len(re.findall(r'^0x', section, re.MULTILINE)), 1, section)
        symbols = output('llvm-nm-19', '--extern-only', '--defined-only', self.library)
        self.assertEqual(symbols, '')

    def test_tells_nothing_of_where_it_was_built(self):
        self.assertNotIn(PROJECT.encode(), bytes_of(self.library))

    def test_has_no_names_but_a_map_that_names_every_function(self):
        names = output('llvm-nm-19', '--defined-only', self.library)
        self.assertLessEqual(names.count('\n'), 1, names)
        uuid = re.search(r'uuid (\S+)', self.headers)[1]
        mapped = bytes_of(os.path.join(PROJECT, f'build/device-package/maps/{uuid}.map')).decode()
        addresses = {int(line.split()[0], 16) for line in mapped.splitlines()}
        starts = re.findall(r'^([0-9a-f]+)$', output('llvm-objdump-19', '--macho',
                                                     '--function-starts', self.library), re.MULTILINE)
        self.assertGreater(len(starts), 300)
        self.assertLessEqual({int(start, 16) for start in starts}, addresses)

    def test_is_the_same_when_made_again(self):
        made = bytes_of(self.library)
        os.remove(self.library)
        output('cmake', '--build', os.path.dirname(os.path.dirname(self.library)))
        self.assertEqual(bytes_of(self.library), made)

    def test_is_signed_for_old_systems_and_new_ones(self):
        signed = bytes_of(self.library)
        self.assertEqual(check_signature(signed), ['sha1', 'sha256'])
        changed = bytearray(signed)
        changed[0x5000] ^= 1
        with self.assertRaises(AssertionError):
            check_signature(bytes(changed))


class Armv7Library(Arm64Library):
    processor = 'armv7'


class Package(unittest.TestCase):
    path, = glob.glob(os.path.join(PROJECT, 'build/device-package/*.deb'))

    def test_says_what_it_is_and_needs(self):
        fields = dict(line.split(': ', 1) for line in output('dpkg-deb', '-f', self.path).splitlines()
                      if not line.startswith(' '))
        self.assertEqual(fields['Package'], 'com.brightfen.lumora')
        self.assertEqual(fields['Architecture'], 'iphoneos-arm')
        self.assertEqual(fields['Depends'], 'mobilesubstrate, firmware (>= 8.0), firmware (<< 14.0)')
        name = f'com.brightfen.lumora_{fields["Version"]}_iphoneos-arm.deb'
        self.assertEqual(os.path.basename(self.path), name)

    def test_holds_the_library_for_the_home_screen_and_nothing_else(self):
        files = {}
        archive = subprocess.run(['dpkg-deb', '--fsys-tarfile', self.path], capture_output=True,
                                 check=True).stdout
        with tarfile.open(fileobj=io.BytesIO(archive)) as tar:
            for member in tar:
                self.assertEqual((member.uid, member.gid, member.mtime), (0, 0, 0), member.name)
                if member.isfile():
                    files[member.name.removeprefix('./')] = tar.extractfile(member).read()
        self.assertEqual(set(files), {INSTALLED + 'Lumora8.dylib', INSTALLED + 'Lumora8.plist'})
        with tempfile.TemporaryDirectory() as folder:
            both = os.path.join(folder, 'both')
            with open(both, 'wb') as file:
                file.write(files[INSTALLED + 'Lumora8.dylib'])
            self.assertEqual(set(output('llvm-lipo-19', '-archs', both).split()), set(LIBRARIES))
            for processor, library in LIBRARIES.items():
                one = os.path.join(folder, processor)
                output('llvm-lipo-19', '-thin', processor, both, '-output', one)
                self.assertEqual(bytes_of(one), bytes_of(library))
        self.assertEqual(plistlib.loads(files[INSTALLED + 'Lumora8.plist']),
                         {'Filter': {'Bundles': ['com.apple.springboard'],
                                     'CoreFoundationVersion': [1140.1, 1740]}})

    def test_can_be_read_by_old_package_managers(self):
        self.assertEqual(output('ar', 't', self.path).split(),
                         ['debian-binary', 'control.tar.gz', 'data.tar.gz'])


class Sources(unittest.TestCase):
    def test_only_the_backends_ask_for_the_system(self):
        files = output('git', '-C', PROJECT, 'ls-files', 'src').split()
        asking = [name for name in files if not re.match('src/platform/(linux|ios)/', name) and
                  re.search(r'#\s*(el)?if.*(__linux|__APPLE__|TARGET_OS|__unix|GNUSTEP)',
                            bytes_of(os.path.join(PROJECT, name)).decode())]
        self.assertEqual(asking, [])


if __name__ == '__main__':
    unittest.main()
