"""Exchanges files between the device's own backend and the Linux programs.

usage: exchange_test.py EXCHANGE LUMORA-OF-THE-PHONE FOLDER-OF-THE-LINUX-PROGRAMS SAMPLE.gif
"""
import os
import plistlib
import subprocess
import sys
import tempfile
import unittest

EXCHANGE, PHONE, PROGRAMS, SAMPLE = sys.argv[1:]
IN_DEVICE = os.path.join(os.path.dirname(os.path.abspath(__file__)), 'in_device.sh')
LIST = 'mobile/Library/Lumora/Wallpaper_both/Wallpaper_both_durations.plist'
SETTINGS = 'mobile/Library/Preferences/com.brightfen.lumorapreferences.plist'


class Exchange(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory(prefix='lumora-exchange-')
        self.var = os.path.join(self.folder.name, 'var')
        os.mkdir(self.var)

    def tearDown(self):
        self.folder.cleanup()

    def device(self, *words):
        program = EXCHANGE if 'delays' in words[0] else PHONE
        environment = dict(os.environ, DEVICE_VAR=self.var)
        return subprocess.run([IN_DEVICE, program, *words], capture_output=True, text=True,
                              check=True, env=environment).stdout

    def linux(self, *words):
        return subprocess.run([os.path.join(PROGRAMS, 'lumora'), '--root', self.folder.name, *words],
                              capture_output=True, text=True, check=True).stdout

    def test_preserves_settings_in_both_directions(self):
        values = {'SHARED_GIF_SPEED': '2.5', 'SHARED_TEXT_FIELD_TEXT': 'a & b <c>',
                  'SAFARI_DIRECTORY': ''}
        for key, value in values.items():
            self.linux('put', key, value)
        for key, value in values.items():
            self.assertEqual(self.device('get', key), value + '\n')
            self.device('put', key, value + '!')
        for key, value in values.items():
            self.assertEqual(self.linux('get', key), value + '!\n')

    def test_reads_non_ascii_text_on_the_device(self):
        # Only written on Linux: unlike the device, GNUstep cannot store such a string in a list.
        self.linux('put', 'SHARED_TEXT_FIELD_TEXT', 'a\u00e4\u4e2d')
        self.assertEqual(self.device('get', 'SHARED_TEXT_FIELD_TEXT'), 'a\u00e4\u4e2d\n')

    def test_keeps_keys_that_others_stored(self):
        path = os.path.join(self.var, SETTINGS)
        os.makedirs(os.path.dirname(path))
        stored = {'NUMBER': 7, 'FLAG': True, 'LIST': ['x', {'y': 1.5}], 'TEXT': 'z'}
        # As XML: unlike the device, GNUstep cannot read a binary list here.
        with open(path, 'wb') as file:
            plistlib.dump(stored, file)
        self.device('put', 'TEXT', 'device')
        self.linux('put', 'OTHER', 'linux')
        with open(path, 'rb') as file:
            self.assertEqual(plistlib.load(file), {**stored, 'TEXT': 'device', 'OTHER': 'linux'})

    def test_gives_equal_delay_lists(self):
        cache = os.path.join(self.var, os.path.dirname(LIST))
        os.makedirs(os.path.dirname(cache))
        self.linux('frames', SAMPLE, cache)
        with open(os.path.join(self.var, LIST), 'rb') as file:
            delays = plistlib.load(file)
        self.assertEqual(self.device('delays', '/var/' + LIST).split(), delays)
        self.device('store-delays', '/var/' + LIST, *delays)
        with open(os.path.join(self.var, LIST), 'rb') as file:
            self.assertEqual(plistlib.load(file), delays)


if __name__ == '__main__':
    if subprocess.run([IN_DEVICE, 'true']).returncode == 77:
        sys.exit(77)
    unittest.main(argv=sys.argv[:1])
