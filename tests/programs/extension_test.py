"""Tests what developers of extensions use: loading libraries, views, traces, crash reports.

usage: extension_test.py DIRECTORY-OF-THE-PROGRAMS
"""
import json
import os
import re
import signal
import subprocess
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '../fixture'))
from bus_service import start_bus
from device import LUMORA, PROGRAMS, Device

EXTENSION = os.path.join(PROGRAMS, 'test-extension.so')
PROJECT = os.path.join(os.path.dirname(os.path.abspath(__file__)), '../..')
SPRINGBOARD = os.path.join(PROGRAMS, 'springboard')
LOADED = subprocess.run(['readelf', '-dW', LUMORA], capture_output=True, text=True, check=True).stdout


class Extension(Device):
    def hooks(self):
        """Returns the lines of the trace without their times."""
        return [line.split(' ', 1)[1] for line in self.ok('trace', '--once').splitlines()]

    def test_is_loaded_in_place_of_the_own_library_and_in_order(self):
        for words, libraries in (([], ['Lumora8.so']), (['--library', 'none'], []),
                                 (['--library', os.path.relpath(EXTENSION)], ['test-extension.so']),
                                 (['--library', EXTENSION, '--library', 'lumora'],
                                  ['test-extension.so', 'Lumora8.so'])):
            self.start(*words)
            found = [line.split('(')[-1].rstrip(')') for line in self.hooks()]
            self.assertEqual(list(dict.fromkeys(found)), libraries)
            self.ok('stop')
            self.assertEqual(self.host.wait(20), 0)
            self.host.communicate()
        # Only Lumora's library takes a GIF.
        self.start('--library', EXTENSION)
        self.assertIn('add `--library lumora`', self.fails(1, 'set', 'shared', self.gif))
        self.assertFalse(self.shared()['set'])
        self.ok('stop')
        self.host.communicate(timeout=20)
        for words in (['none', 'lumora'], ['none', None]):
            options = [each for word in words if word for each in ('--library', word)]
            self.fails(2, 'run', *options, self.gif)
        self.assertIn('No such file', self.fails(1, 'run', '--library', 'missing.so'))

    def test_sees_the_tree_of_views(self):
        self.start('--library', EXTENSION)
        lines = self.ok('views').splitlines()
        self.assertEqual(lines[0], 'UIView (platform::UIView) 390x844 at (0, 0)')
        self.assertIn('  SBDockView (host::DockView) 390x200 at (0, 644)', lines)
        wallpaper = next(line for line in lines if 'SBFWallpaperView' in line)
        self.assertTrue(wallpaper.startswith('    SBF'), wallpaper)
        views = json.loads(self.ok('views', '--json'))
        self.assertEqual(len(views), len(lines))
        self.assertIsNone(views[0]['parent'])
        above = {view['class']: view['parent'] for view in views}
        self.assertEqual(views[above['SBFWallpaperView']]['parent'], 0)

    def test_sees_its_hooks_and_the_messages(self):
        self.start('--library', EXTENSION, '--library', 'lumora')
        own = ' (test-extension.so)'
        hooks = self.hooks()
        self.assertEqual(hooks[:9], [
            'hook missed: no method dockHeight in SBDockView; it has: dealloc; '
            'class methods: defaultHeight' + own,
            'hook missed: no class method dockHeight in SBDockView; it has: defaultHeight; '
            'methods: dealloc' + own,
            'hook taken: class method defaultHeight of SBDockView' + own,
            'no class SBNothing; there are: SBDockView, SBFWallpaperView, '
            'SBWallpaperController, SpringBoard, UIView' + own,
            'hook missed: defaultHeight of no class' + own,
            'no variable _view in SBWallpaperController; it has: _homescreenWallpaperView, '
            '_lockscreenWallpaperView, _sharedWallpaperView' + own,
            'message missed: no class method height in SBDockView; it has: defaultHeight; '
            'methods: dealloc' + own,
            'hook missed: defaultHeight of no class' + own,
            'method added: added to SBDockView' + own])
        self.assertEqual(hooks[9], 'method not added: SBDockView has added' + own)
        self.ok('set', 'shared', self.gif)
        with subprocess.Popen([LUMORA, '--root', self.root, 'trace'], stdout=subprocess.PIPE,
                              text=True) as trace:
            seen = [trace.stdout.readline().split(' ', 1)[1].strip() for _ in hooks]
            self.assertEqual(seen, hooks)
            self.ok('app', 'open')
            self.ok('post', 'the.end')
            live = []
            while not live or live[-1] != 'notification: the.end':
                live.append(trace.stdout.readline().split(' ', 1)[1].strip())
            trace.send_signal(signal.SIGINT)
            self.assertEqual(trace.wait(10), 0)
        pause = 'kLWGIFViewShouldPauseNotification'
        center = 'com.brightfen.lumora.gifview.SHARED'
        self.assertLess(live.index(f'message sent: {pause} to {center}'),
                        live.index(f'message received: {pause} at {center}'))

    @unittest.skipIf('san.so' in LOADED, 'sanitizers report crashes themselves')
    def test_is_named_when_it_crashes(self):
        for name, number, problem in (
                ('write', signal.SIGSEGV, 'Segmentation fault'),
                ('overflow', signal.SIGSEGV, 'Segmentation fault'),
                ('abort', signal.SIGABRT, 'Aborted'),
                ('throw', signal.SIGABRT, 'uncaught exception'),
                ('at', signal.SIGABRT, 'uncaught exception'),
                ('allocate', signal.SIGABRT, 'uncaught exception'),
                ('throwLater', signal.SIGABRT, 'uncaught exception'),
                ('exit', signal.SIGABRT, 'exit')):
            self.start('--library', EXTENSION)
            self.lumora('post', 'test.' + name)
            _, errors = self.host.communicate(timeout=30)
            self.assertEqual(self.host.returncode, 1, name)
            self.assertIn(f'springboard: {problem} in {EXTENSION}', errors, name)
            self.assertEqual(errors.count('springboard: '), 1, errors)
            self.assertRegex(errors, r'(?m)^\S*test-extension\.so\(.*\[0x[0-9a-f]+\]$', name)
            self.assertIn(f'ended by signal {number.value}\n', errors)
            if name in ('throw', 'throwLater'):
                self.assertIn('out of luck' if name == 'throw' else 'too late', errors)


class Example(Device):
    """The example extension, built against an installation."""

    def run_command(self, *words, **variables):
        done = subprocess.run(words, capture_output=True, text=True, cwd=self.folder,
                              env=dict(os.environ, **variables))
        self.assertEqual(done.returncode, 0, done)
        return done.stdout.split()

    def checks(self, prefix, library):
        """Loads the library into the installed home screen."""
        lumora = [os.path.join(prefix, 'bin/lumora'), '--root', self.root]
        self.host = subprocess.Popen(
            [*lumora, 'run', '--display', 'headless', '--clock', 'manual', '--library', library],
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        self.run_command(*lumora, 'wait')
        script = os.path.join(prefix, 'share/doc/lumora/examples/extension/badge-test.txt')
        played = self.run_command(*lumora, 'play', script)
        self.assertEqual(played[-3:], ['4', 'expectations', 'held'])
        self.run_command(*lumora, 'stop')
        self.assertEqual(self.host.communicate(timeout=20)[1], '')

    def test_is_built_with_cmake_and_with_pkg_config(self):
        installed, prefix = (os.path.join(self.folder, name) for name in ('installed', 'moved'))
        self.run_command('cmake', '--install', os.path.dirname(PROGRAMS), '--prefix', installed)
        os.rename(installed, prefix)
        source = os.path.join(prefix, 'share/doc/lumora/examples/extension')
        self.run_command('cmake', '-S', source, '-B', 'built', '-DCMAKE_PREFIX_PATH=' + prefix)
        self.run_command('cmake', '--build', 'built')
        self.checks(prefix, os.path.join(self.folder, 'built/badge.so'))
        paths = ':'.join(place for place, _, files in os.walk(prefix) if 'lumora.pc' in files)
        flags = self.run_command('pkg-config', '--cflags', '--libs', 'lumora', PKG_CONFIG_PATH=paths)
        self.run_command('c++', '-shared', '-fPIC', os.path.join(source, 'badge.cpp'), *flags, '-o',
                         'badge.so')
        self.checks(prefix, os.path.join(self.folder, 'badge.so'))


class Guide(Device):
    def test_shows_lines_that_work(self):
        """Runs all command lines of docs/extensions.md in their order, in a folder like the project's."""
        with open(os.path.join(PROJECT, 'docs/extensions.md'), encoding='utf-8') as file:
            lines = re.findall(r'^    ((?:cmake|export|c\+\+|~|lumora) ?.*)', file.read(), re.M)
        self.assertGreater(len(lines), 8)
        os.mkdir(os.path.join(self.folder, 'build'))
        os.symlink(os.path.dirname(PROGRAMS), os.path.join(self.folder, 'build/release'))
        os.symlink(os.path.join(PROJECT, 'examples'), os.path.join(self.folder, 'examples'))
        script = '\n'.join(line if '--background' in line else
                           line.replace(' run ', ' run --display headless --for 1 ') for line in lines)
        path = os.path.join(self.folder, '.local/bin') + ':' + os.environ['PATH']
        done = subprocess.run(['bash', '-ec', script], cwd=self.folder, capture_output=True, text=True,
                              timeout=120, env=dict(os.environ, HOME=self.folder, PATH=path,
                                                    LUMORA_ROOT=self.root))
        self.assertEqual((done.returncode, done.stderr), (0, ''), done)
        self.assertIn('\n4 expectations held\n', done.stdout)
        self.assertTrue(os.path.exists(os.path.join(self.folder, 'badge.so')))


class HomeScreenAlone(Device):
    def test_says_its_version_and_when_it_is_ready(self):
        version = subprocess.run([SPRINGBOARD, '--version'], capture_output=True, text=True, check=True)
        self.assertEqual(version.stdout, self.ok('--version').replace('lumora', 'springboard'))
        refused = subprocess.run([SPRINGBOARD], capture_output=True, text=True)
        self.assertEqual((refused.returncode, refused.stderr), (
            2, 'springboard: --root is required\nFor usage, run: springboard --help\n'))
        os.mkdir(self.root)
        bus, address = start_bus(self.folder)
        with bus:
            with subprocess.Popen([SPRINGBOARD, '--root', self.root, '--bus', address, '--display',
                                   'headless'], stdout=subprocess.PIPE, text=True) as alone:
                self.assertEqual(alone.stdout.readline(),
                                 f'home screen ready (headless, files in {self.root})\n')
                alone.terminate()
                self.assertEqual(alone.wait(20), 0)
            bus.terminate()


if __name__ == '__main__':
    unittest.main(verbosity=2)
