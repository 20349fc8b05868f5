"""Runs the command lines that README.md and the man pages show, as they stand.

usage: documentation_test.py DIRECTORY-OF-THE-PROGRAMS
"""
import gzip
import os
import re
import shutil
import subprocess
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '../fixture'))
from device import PROGRAMS, RED_GREEN, Device

PROJECT = os.path.join(os.path.dirname(os.path.abspath(__file__)), '../..')
ROFF = {r'\-': '-', r'\(aq': "'", r'\(ga': '`', r'\e': '\\'}


def lines_of_readme():
    with open(os.path.join(PROJECT, 'README.md'), encoding='utf-8') as file:
        return re.findall(r'^    (lumora .*)', file.read(), re.M)


def lines_of_man_page(name):
    page = os.path.join(PROGRAMS, '../packaging/linux', name + '.gz')
    with gzip.open(page, 'rt', encoding='utf-8') as file:
        text = file.read()
    for escape, letter in ROFF.items():
        text = text.replace(escape, letter)
    return [line for block in re.findall(r'^\.nf\n(.*?)^\.fi', text, re.M | re.S)
            for line in block.splitlines()]


class Documentation(Device):
    """A home screen without a display, and the files that the lines name."""

    def setUp(self):
        super().setUp()
        self.environment = dict(os.environ, LUMORA_ROOT=self.root, HOME=self.folder,
                                PATH=PROGRAMS + ':' + os.environ['PATH'])
        for name in ('DISPLAY', 'WAYLAND_DISPLAY', 'XDG_CONFIG_HOME'):
            self.environment.pop(name, None)
        for name in ('rain.gif', 'cat.gif'):
            self.file(name, RED_GREEN)
        os.symlink(os.path.join(PROGRAMS, 'test-extension.so'),
                   os.path.join(self.folder, 'my-extension.so'))
        self.file('my-script.txt', b'set cat.gif\nexpect locations.shared.set true\n')

    def bash(self, line, **variables):
        return subprocess.run(['bash', '-c', line], cwd=self.folder, capture_output=True, text=True,
                              timeout=120, env=dict(self.environment, **variables))

    def check(self, line):
        """Runs the line. One that needs a desktop, or none that runs, must be refused with one line of
        text."""
        if line.startswith('lumora run'):
            # It gets a device of its own, and ends by itself.
            done = self.bash(line.replace('run', 'run --for 1', 1), LUMORA_ROOT=self.root + '-2')
        else:
            done = self.bash(line)
        if re.search('--display desktop|toggle|--output|forget', line):
            self.assertEqual((done.returncode, done.stderr.count('\n')), (1, 1), (line, done))
            self.assertRegex(done.stderr, 'DISPLAY|desktop|output|lumora stop')
        else:
            self.assertEqual((done.returncode, done.stderr), (0, ''), line)

    def test_shows_lines_that_work(self):
        self.start()
        lines = [*lines_of_readme(), *lines_of_man_page('lumora.1'), *lines_of_man_page('springboard.1')]
        self.assertGreater(len(lines), 30)
        for line in dict.fromkeys(lines):
            if 'record' in line and not shutil.which('ffmpeg'):
                continue
            with self.subTest(line):
                self.check(line)

    def test_shows_a_script_that_plays(self):
        self.start()
        script = self.file('script.txt', '\n'.join(lines_of_man_page('lumora-play.5')).encode())
        self.assertTrue(self.ok('play', script).endswith('\n4 expectations held\n'))


if __name__ == '__main__':
    unittest.main(verbosity=2)
